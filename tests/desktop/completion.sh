#!/usr/bin/env bash
# The installed bash completion offers what the programs' own --help names.
# Usage: completion.sh BUILD_DIR
. "$(dirname "$0")/common.sh"
bash_completion=/usr/share/bash-completion/bash_completion
[ -f "$bash_completion" ] ||
    fail "$bash_completion is missing: install bash-completion (Debian package bash-completion)"
install_tree "$1"
completions="$root/share/bash-completion/completions"
[ -f "$completions/qforms" ] && [ -f "$completions/qforms-launcher" ] ||
    fail "no completion installed in $completions"

set +u # bash-completion reads unset variables
. "$bash_completion"
. "$completions/qforms"
. "$completions/qforms-launcher"

# offers LINE: what the completion offers for LINE (its last word is being
# typed), sorted, one a line.
offers()
{
    read -ra COMP_WORDS <<<"$1"
    [[ $1 == *" " ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMP_LINE=$1 COMP_POINT=${#1}
    COMPREPLY=()
    local function
    function=$(complete -p "${COMP_WORDS[0]}" | sed -E 's/.*-F ([^ ]+).*/\1/')
    "$function" "${COMP_WORDS[0]}" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
    printf '%s\n' "${COMPREPLY[@]}" | sed '/^$/d' | sort -u
}

# expect LINE WANTED: the completion offers exactly WANTED (one a line, sorted).
expect()
{
    local got
    got=$(offers "$1")
    [ "$got" = "$2" ] || fail "for \"$1\" the completion offers"$'\n'"$got"$'\n'"instead of"$'\n'"$2"
    echo "ok: \"$1\" -> $(tr '\n' ' ' <<<"$got")"
}

# contains LINE WANTED: the completion offers at least WANTED.
contains()
{
    local missing
    missing=$(comm -13 <(offers "$1") <(printf '%s\n' $2 | sort -u))
    [ -z "$missing" ] || fail "for \"$1\" the completion misses: $missing"
    echo "ok: \"$1\" offers $(tr '\n' ' ' <<<"$2")"
}

cli_help=$(QT_QPA_PLATFORM=offscreen "$root/bin/qforms" --help)
launcher_help=$(QT_QPA_PLATFORM=offscreen "$root/bin/qforms-launcher" --help)
synopsis() { grep -E "^  qforms $1 " <<<"$cli_help"; }

commands=$(sed -nE 's/^  qforms ([a-z]+).*/\1/p' <<<"$cli_help" | sort -u)
expect "qforms " "$(printf '%s\n' $commands --help --version | sort -u)"
expect "qforms lint --" "$(options_in "$(synopsis lint)" | grep -- '^--')"
contains "qforms preview -" "$(options_in "$(synopsis preview)")"
expect "qforms read --" "$(options_in "$(synopsis read)")"
expect "qforms lint --format " "$(printf '%s\n' json text)"
expect "qforms-launcher --" "$(options_in "$launcher_help" | grep -- '^--')"
# "in language <index> (0 English, 1 Deutsch)", which the help may wrap.
languages=$(tr -s ' \n' ' ' <<<"$launcher_help" | grep -oE 'language <index> \([^)]*\)' |
    grep -oE '[0-9]+ [[:alpha:]]' | cut -d' ' -f1 | sort -u)
[ -n "$languages" ] || fail "qforms-launcher --help names no languages"
expect "qforms-launcher --language " "$languages"

# File names: game data files for the tool, pictures for the launcher.
mkdir -p "$work/files/sub"
touch "$work/files/game.qgd" "$work/files/notes.txt" "$work/files/page.png"
cd "$work/files"
expect "qforms lint " "$(printf '%s\n' game.qgd sub)"
expect "qforms preview game.qgd -o " "$(printf '%s\n' page.png sub)"
expect "qforms-launcher --screenshot " "$(printf '%s\n' page.png sub)"
