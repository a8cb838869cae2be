#!/usr/bin/env bash
# The launcher starts under a real Wayland compositor (weston, headless), shows
# itself with the application id of its menu entry, and takes its picture.
# Usage: wayland.sh LAUNCHER
. "$(dirname "$0")/common.sh"
need weston weston
launcher=$1
plugin=$(find /usr/lib/*/qt6/plugins/platforms /usr/lib/qt6/plugins/platforms \
    -name 'libqwayland-generic.so' 2>/dev/null | head -n1 || true)
[ -n "$plugin" ] || fail "Qt's Wayland platform plugin is missing: install qt6-wayland (Debian package qt6-wayland)"

export XDG_RUNTIME_DIR="$work/runtime" XDG_CONFIG_HOME="$work/config"
export XDG_DATA_HOME="$work/data" XDG_CACHE_HOME="$work/cache"
mkdir -m 700 "$XDG_RUNTIME_DIR"
socket="qforms-test-$$"
weston --backend=headless-backend.so --socket="$socket" --idle-time=0 \
    --width=1280 --height=800 >"$work/weston.log" 2>&1 &
weston_pid=$!
trap 'kill "$weston_pid" 2>/dev/null; wait "$weston_pid" 2>/dev/null; rm -rf "$work"' EXIT
for _ in $(seq 100); do
    [ -S "$XDG_RUNTIME_DIR/$socket" ] && break
    kill -0 "$weston_pid" 2>/dev/null || fail "weston did not start:"$'\n'"$(cat "$work/weston.log")"
    sleep 0.1
done
[ -S "$XDG_RUNTIME_DIR/$socket" ] || fail "weston made no socket in 10 s:"$'\n'"$(cat "$work/weston.log")"

shot="$work/shot.png"
status=0
# Under the sanitizers, libwayland-client and Qt's Wayland plugin keep a few
# allocations to the end, which are theirs: leaks are the other tests' business.
ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0" \
env -u DISPLAY QT_QPA_PLATFORM=wayland WAYLAND_DISPLAY="$socket" WAYLAND_DEBUG=client \
    timeout 60 "$launcher" --game 1 --screenshot "$shot" >"$work/launcher.log" 2>&1 || status=$?
[ "$status" -eq 0 ] || fail "the launcher exited with $status:"$'\n'"$(grep -v '^\[' "$work/launcher.log" | tail -n 20)"
# The compositor matches the window to org.qforms.Launcher.desktop by this id.
grep -q 'set_app_id("org.qforms.Launcher")' "$work/launcher.log" ||
    fail "the window did not tell the compositor the application id org.qforms.Launcher"
grep -q 'xdg_toplevel@[0-9]*.set_title("Quillmarsh 2' "$work/launcher.log" ||
    fail "no Wayland toplevel window titled Quillmarsh 2 was made"

[ -s "$shot" ] || fail "no picture written"
[ "$(head -c 8 "$shot" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] || fail "the picture is no PNG"
# Width and height stand big-endian in the PNG's header chunk.
width=$((16#$(od -An -tx1 -j16 -N4 "$shot" | tr -d ' \n')))
height=$((16#$(od -An -tx1 -j20 -N4 "$shot" | tr -d ' \n')))
((width >= 400 && width <= 4000 && height >= 250 && height <= 3000)) ||
    fail "the picture is ${width}x${height}, not the size of the launcher's window"
echo "the launcher ran under weston (Wayland) and took its picture: ${width}x${height}, $(stat -c %s "$shot") bytes"
