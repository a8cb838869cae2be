#!/usr/bin/env bash
# The installed menu entry, icon and AppStream metainfo: valid, and named by one
# application id. Usage: validate.sh BUILD_DIR PROJECT_VERSION
. "$(dirname "$0")/common.sh"
need desktop-file-validate desktop-file-utils
need appstreamcli appstream
build=$1 version=$2
id=org.qforms.Launcher

install_tree "$build"
desktop="$root/share/applications/$id.desktop"
metainfo="$root/share/metainfo/$id.metainfo.xml"
[ -f "$desktop" ] || fail "no menu entry $desktop installed"
[ -f "$metainfo" ] || fail "no metainfo $metainfo installed"
[ -f "$root/share/icons/hicolor/scalable/apps/$id.svg" ] || fail "no icon $id.svg installed"

echo "== desktop-file-validate $id.desktop"
desktop-file-validate "$desktop" || fail "desktop-file-validate found errors"
echo "== appstreamcli validate --pedantic --no-net $id.metainfo.xml"
appstreamcli validate --pedantic --no-net "$metainfo" || fail "appstreamcli found errors"
# The tree check also sees that the launchable names an installed entry.
echo "== appstreamcli validate-tree --no-net"
appstreamcli validate-tree --no-net "$work/root" || fail "appstreamcli validate-tree found errors"

grep -qx "Icon=$id" "$desktop" || fail "the menu entry's icon is not $id"
grep -q "<id>$id</id>" "$metainfo" || fail "the metainfo's id is not $id"
grep -q "<launchable type=\"desktop-id\">$id.desktop</launchable>" "$metainfo" ||
    fail "the metainfo does not launch $id.desktop"
grep -q "<release version=\"$version\"" "$metainfo" ||
    fail "the metainfo has no release $version (the project's version)"
grep -qx "Exec=qforms-launcher" "$desktop" && [ -x "$root/bin/qforms-launcher" ] ||
    fail "the menu entry does not start the installed qforms-launcher"
echo "menu entry, icon and metainfo agree on $id"
