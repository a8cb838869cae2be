#!/usr/bin/env bash
# The installed manual pages render without a warning and name every option and
# command the programs' own --help names. Usage: man.sh BUILD_DIR
. "$(dirname "$0")/common.sh"
need man man-db
need groff groff-base
install_tree "$1"

check_page()
{
    local page=$1 help=$2 text
    [ -f "$page" ] || fail "no manual page $page installed"
    # As lintian checks them: every groff warning counts.
    local warnings
    warnings=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [ -z "$warnings" ] || fail "$page renders with warnings:"$'\n'"$warnings"
    # Wide lines and no hyphenation, so that no option is broken in two.
    text=$(zcat "$page" | groff -man -Tascii -P-cbou -rLL=1000n -rHY=0 2>/dev/null)
    local option
    for option in $(options_in "$help"); do
        grep -qE -- "(^|[^[:alnum:]-])$option([^[:alnum:]-]|$)" <<<"$text" ||
            fail "$(basename "$page") does not document $option, which --help names"
    done
    echo "$(basename "$page"): renders cleanly, documents $(options_in "$help" | tr '\n' ' ')"
}

cli_help=$(QT_QPA_PLATFORM=offscreen "$root/bin/qforms" --help)
launcher_help=$(QT_QPA_PLATFORM=offscreen "$root/bin/qforms-launcher" --help)
check_page "$root/share/man/man1/qforms.1.gz" "$cli_help"
check_page "$root/share/man/man6/qforms-launcher.6.gz" "$launcher_help"

# Every command of the tool has its own entry under COMMANDS.
cli_page=$(zcat "$root/share/man/man1/qforms.1.gz" | groff -man -Tascii -P-cbou -rLL=1000n -rHY=0 2>/dev/null)
for command in $(sed -nE 's/^  qforms ([a-z]+).*/\1/p' <<<"$cli_help" | sort -u); do
    grep -qE "^ +$command([ ,]|$)" <<<"$cli_page" || fail "qforms.1 has no entry for the command $command"
done
echo "qforms.1 has an entry for every command"
