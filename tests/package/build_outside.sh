#!/bin/sh
# Installs the built library into a folder of its own, builds a project against it that knows nothing of
# this one, and runs what came out.
set -eu
build=$1
project=$2
compiler=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/installed" >/dev/null
cmake -S "$project" -B "$work/build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$work/installed" >/dev/null
cmake --build "$work/build"
"$work/build/settings_only" "$work/settings.json"

# Opens its window and stays until it is told to go.
status=0
QT_QPA_PLATFORM=offscreen timeout 3 "$work/build/ten_lines" || status=$?
[ "$status" -eq 124 ]

# The interface of the settings store drags nothing of Qt in, nor of the layer above it.
headers=$("$compiler" -std=c++20 -M -I "$work/installed/include/tessaline" "$project/settings_only.cpp")
if echo "$headers" | grep -E '/qt6/|/NS[A-Z][A-Za-z]*\.h'; then
    echo "the settings store needs more than itself"
    exit 1
fi
