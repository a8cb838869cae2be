#!/usr/bin/env bash
# The README's embedding example is the file examples/embedding/main.cpp, and,
# run against the sample host folder after the launcher's first start made the
# demo installations, it finds the game and shows the whole page.
# Usage: run-example.sh README EXAMPLE_SOURCE EXAMPLE_PROGRAM LAUNCHER HOST_FOLDER
set -euo pipefail
readme=$1 source=$2 example=$3 launcher=$4 host=$5

block=$(awk '/^```cpp$/ { inside = 1; text = ""; next }
             inside && /^```$/ { inside = 0; if (text ~ /qforms-embedding-example/) print text; next }
             inside { text = text $0 "\n" }' "$readme")
if [ "$block" != "$(cat "$source")" ]; then
  echo "README's embedding example differs from $source:" >&2
  diff <(printf '%s\n' "$block") "$source" >&2 || true
  exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data QT_QPA_PLATFORM=offscreen
"$launcher" --screenshot "$work/launcher.png" >/dev/null 2>&1

output=$("$example" "$host" --screenshot "$work/page.png" 2>&1)
echo "$output"
grep -q '^"green" " Emberfall' <<<"$output" || { echo "no found game in the output" >&2; exit 1; }
# The page is the view at its design size (6735 x 4215 twips, 449 x 281
# pixels at 96 DPI) above the buttons: a layout that gave it no room shows less.
size=$(python3 -c 'import struct,sys; d=open(sys.argv[1],"rb").read(24); print(*struct.unpack(">II", d[16:24]))' "$work/page.png")
read -r width height <<<"$size"
echo "page: ${width}x${height}"
[ "$width" -ge 449 ] && [ "$height" -ge 281 ] || { echo "the page is too small" >&2; exit 1; }
