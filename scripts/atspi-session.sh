#!/bin/sh
# Runs a command as a screen reader's user would: on a private X display and
# D-Bus session, with the desktop's accessibility bus started and Qt's AT-SPI
# bridge on. Needs xvfb, dbus and at-spi2-core.
#
#   scripts/atspi-session.sh build/tests/qforms_view_tests --gtest_filter='LauncherAccessibility.*'
#   scripts/atspi-session.sh scripts/atspi-tree.py build/apps/launcher/qforms-launcher --game 1
set -eu
for need in xvfb-run:xvfb dbus-run-session:dbus dbus-send:dbus \
            /usr/libexec/at-spi-bus-launcher:at-spi2-core; do
    if ! command -v "${need%%:*}" >/dev/null; then
        echo "${need%%:*} is missing: install the Debian package ${need#*:} (scripts/install-deps.sh does)" >&2
        exit 1
    fi
done
if [ "${1:-}" != "--inside" ]; then
    exec xvfb-run -a dbus-run-session -- "$0" --inside "$@"
fi
shift
# A desktop session starts the bus at login; Qt only waits for it to appear.
/usr/libexec/at-spi-bus-launcher --launch-immediately &
bus=$!
trap 'kill "$bus" 2>/dev/null || true' EXIT
for _ in $(seq 50); do
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.NameHasOwner string:org.a11y.Bus 2>/dev/null | grep -q true && break
    sleep 0.1
done
QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$@"
