#!/usr/bin/env bash
# Times the sample launcher from start to its first paint, and its peak memory,
# with a library of GAMES games made from the three sample definitions.
#   bench/launcher-startup.sh [build folder] [games]
# Needs hyperfine (Debian package hyperfine). Use a release build for figures.
set -euo pipefail
build="${1:-build}"
games="${2:-1000}"
launcher="$build/apps/launcher/qforms-launcher"
host="$build/apps/launcher/host"
[ -x "$launcher" ] || { echo "Build the launcher first: $launcher is missing." >&2; exit 1; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
config="$work/launcher.ini"
{
  printf '[Games]\nCount=%d\n' "$games"
  for ((i = 1; i <= games; i++)); do
    sample=$(( (i - 1) % 3 + 1 ))
    # The sample's section, renamed: each copy is its own game with its own settings.
    sed -n "/^\[Game$sample\]/,/^\$/p" "$host/launcher.ini" |
      sed -e "s/^\[Game$sample\]/[Game$i]/" -e "s/^Name=\(.*\)/Name=\1 $i/"
    echo
  done
} >"$config"

export XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_CACHE_HOME="$work/cache"
export QT_QPA_PLATFORM=offscreen
run="$launcher --config $config --quit-after-paint"
$run 2>/dev/null # the first start makes the sample installations and stores their folders

hyperfine --warmup 2 --runs 15 --export-json "$work/times.json" "$run" >&2
python3 - "$work/times.json" <<'PY'
import json, statistics, sys
times = json.load(open(sys.argv[1]))["results"][0]["times"]
print(f"start to first paint: median {statistics.median(times) * 1000:.0f} ms")
PY
for _ in 1 2 3 4 5; do /usr/bin/time -f %M $run 2>&1 >/dev/null | tail -1; done |
  sort -n | sed -n 3p | awk '{ printf "peak memory: median %.0f MB\n", $1 / 1024 }'
