#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the sample launcher need.
# Does nothing when they are all present already.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev libgl-dev qt6-tools-dev qt6-l10n-tools
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth
  # the API reference's check (tests: ApiReference)
  doxygen
  # the desktop checks and the Debian packages (tests/desktop, scripts/package.sh)
  desktop-file-utils appstream lintian weston qt6-wayland
  groff-base man-db bash-completion dpkg-dev fakeroot file
  # the page read over the desktop's accessibility bus (tests: LauncherAccessibility)
  dbus at-spi2-core
)
if [ "${QFORMS_WITH_FUZZ:-0}" = 1 ]; then
  packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo=sudo
echo "Installing: ${missing[*]}"
$sudo apt-get update
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
