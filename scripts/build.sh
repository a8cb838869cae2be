#!/usr/bin/env bash
# Installs what is missing, configures and builds into $QFORMS_BUILD_DIR
# (default build/), as $QFORMS_BUILD_TYPE (default RelWithDebInfo); only
# $QFORMS_BUILD_TARGET when set. Extra arguments go to CMake.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
build="${QFORMS_BUILD_DIR:-build}"
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="${QFORMS_BUILD_TYPE:-RelWithDebInfo}" "$@"
cmake --build "$build" -j"$(nproc)" ${QFORMS_BUILD_TARGET:+--target "$QFORMS_BUILD_TARGET"}
