#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test.
# QFORMS_BUILD_DIR and extra CMake arguments (e.g. -DQFORMS_SANITIZE=ON) may be given.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh "$@"
build="${QFORMS_BUILD_DIR:-build}"
QT_QPA_PLATFORM=offscreen ctest --test-dir "$build" --output-on-failure -j"$(nproc)"
