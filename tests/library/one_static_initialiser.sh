#!/bin/sh
# Loading the library may run one static initialiser, the settings registry's. An entry more in the list
# belongs to the C runtime.
set -eu
library=$1

names=$(nm "$library" | awk '$3 ~ /^_GLOBAL__(sub_)?I/ {print $3}')
[ "$names" = "_GLOBAL__sub_I_bas_user_defaults.cpp" ] || {
    echo "static initialisers found:"
    echo "$names"
    exit 1
}
bytes=$(readelf -SW "$library" | awk '{for (i = 1; i <= NF; i++) if ($i == ".init_array") print $(i + 4)}')
[ "$((0x$bytes))" -eq 16 ] || {
    echo "the list of initialisers has $((0x$bytes)) bytes, not 16"
    exit 1
}
