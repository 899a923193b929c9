#!/bin/bash
# Runs a command on an X display of its own, and with a bus for assistive technology of its own, both made
# for it and gone with it.
set -eu
work=$(mktemp -d)
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/display" >"$work/log" 2>&1 &
server=$!
trap 'kill "$server" 2>/dev/null; wait "$server" 2>/dev/null || true; rm -rf "$work"' EXIT
for _ in $(seq 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
[ -s "$work/display" ] || { cat "$work/log"; echo "there is no display"; exit 1; }
unset WAYLAND_DISPLAY
export DISPLAY=":$(cat "$work/display")" QT_QPA_PLATFORM=xcb
unset QT_SCALE_FACTOR
export XDG_RUNTIME_DIR=$work QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
dbus-run-session -- bash -eu -c '
    dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
        org.a11y.Bus.GetAddress >/dev/null # starts it
    "$@"' command "$@"
