#!/usr/bin/env bash
# Installs what is missing, builds the sample launcher and starts it.
# Without a display it runs on a virtual one (Xvfb), which nobody sees.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
build="${QFORMS_BUILD_DIR:-build}"
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="${QFORMS_BUILD_TYPE:-RelWithDebInfo}"
cmake --build "$build" -j"$(nproc)" --target qforms-launcher
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display found: starting the launcher on a virtual X display." >&2
  exec xvfb-run -a "$build/apps/launcher/qforms-launcher" "$@"
fi
exec "$build/apps/launcher/qforms-launcher" "$@"
