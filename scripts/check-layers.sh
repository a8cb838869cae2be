#!/usr/bin/env bash
# Checks the layering of src/: each folder includes only itself and the folders
# below it, no subsystem reaches the published qForms class, and qForms.h
# publishes none of the internals. With --graph, prints the include graph
# between folders instead ("from -> to: count").
set -euo pipefail
cd "${QFORMS_SRC_DIR:-$(dirname "$0")/../src}"

# folder: the folders it may include besides itself.
declare -A allowed=(
  [platform]=""
  [toolkit]="platform"
  [context]="toolkit platform"
  [gamedata]="context toolkit platform"
  [rules]="gamedata context toolkit platform"
  [mods]="gamedata context toolkit platform"
  [detect]="mods gamedata context toolkit platform"
  [settings]="detect mods gamedata context toolkit platform"
  [dialogs]="detect mods gamedata context toolkit platform"
  [control]="settings dialogs detect mods rules gamedata context toolkit platform"
  [launch]="control settings dialogs detect mods rules gamedata context toolkit platform"
  [view]="control settings dialogs detect mods rules gamedata context toolkit platform"
)

edges() {
  for file in $(find . -name '*.h' -o -name '*.cpp' | sort); do
    from=$(dirname "${file#./}")
    { grep -oE '^#include "[a-z]+/' "$file" || true; } | sed -E 's/^#include "//; s#/$##' |
      while read -r to; do echo "$from $to ${file#./}"; done
  done
}

if [ "${1:-}" = --graph ]; then
  edges | awk '$1 != $2 { print $1 " -> " $2 }' | sort | uniq -c | awk '{ print $2, $3, $4 ": " $1 }'
  exit 0
fi

bad=0
while read -r from to file; do
  [ "$from" = "$to" ] && continue
  if [[ " ${allowed[$from]-} " != *" $to "* ]]; then
    echo "$file: $from may not include $to" >&2
    bad=1
  fi
done < <(edges)

if grep -rln '"control/qForms.h"' gamedata rules settings detect mods dialogs context; then
  echo "^ these subsystem files include control/qForms.h" >&2
  bad=1
fi

internals='profileRead|gameDataRead|gameDataPath|customControlRead|lastProfileReadLength|languageText\(|strProfileBuffer|intProfileLength|detectPakVersion|applyVisualFunction|ListModFolders|AddModEntry'
if grep -nE "$internals" control/qForms.h; then
  echo "^ control/qForms.h declares internals" >&2
  bad=1
fi
[ "$bad" = 0 ] && echo "layers: ok"
exit "$bad"
