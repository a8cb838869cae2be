#!/usr/bin/env bash
# Builds the Debian packages (libqforms1, libqforms-dev, qforms-tools) into
# $QFORMS_BUILD_DIR/packages, checks that they hold every installed file, and
# runs lintian on them. Installs what is missing first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh "$@"
build="${QFORMS_BUILD_DIR:-build}"
packages="$build/packages"
rm -rf "$packages"
(cd "$build" && cpack -G DEB -B "$PWD/packages")
rm -rf "$packages/_CPack_Packages"

# A file installed without a component, or with one that has no package,
# would silently be left out: every file of a full install must be in a package.
check=$(mktemp -d)
trap 'rm -rf "$check"' EXIT
DESTDIR="$check/install" cmake --install "$build" --prefix /usr >/dev/null
(cd "$check/install" && find . ! -type d | sed 's|^\.||' | sort) >"$check/installed"
for deb in "$packages"/*.deb; do
  dpkg-deb --fsys-tarfile "$deb" | tar -t | grep -v '/$' | sed 's|^\./|/|'
done | sort >"$check/packaged"
missing=$(comm -23 "$check/installed" "$check/packaged")
if [ -n "$missing" ]; then
  echo "Installed but in no package (give their install rules a COMPONENT):" >&2
  echo "$missing" >&2
  exit 1
fi

for deb in "$packages"/*.deb; do
  echo "== $(basename "$deb")"
  dpkg-deb --field "$deb" Package Version Depends
done
echo "== lintian"
lintian --display-info "$packages"/*.deb
echo "Packages in $packages; lintian found no errors."
