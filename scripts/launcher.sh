#!/usr/bin/env bash
# Installs what is missing, builds the sample launcher and starts it.
# Without a display it only answers what needs no window (--screenshot,
# --print-command, --help, --version) and says how to see the window.
set -euo pipefail
cd "$(dirname "$0")/.."
QFORMS_BUILD_TARGET=qforms-launcher scripts/build.sh
build="${QFORMS_BUILD_DIR:-build}"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  for argument in "$@"; do
    case "$argument" in
      --screenshot|--screenshot=*|--print-command|--help|-h|--version|-v)
        QT_QPA_PLATFORM=offscreen exec "$build/apps/launcher/qforms-launcher" "$@" ;;
    esac
  done
  cat >&2 <<EOT
No display found, so nobody could see the launcher's window. Either
  - run this script in a desktop session (or over ssh -X), or
  - take a picture of the window instead:
      scripts/launcher.sh --game 3 --screenshot shot.png
  - or print the command it would start:
      scripts/launcher.sh --game 3 --print-command
EOT
  exit 1
fi
exec "$build/apps/launcher/qforms-launcher" "$@"
