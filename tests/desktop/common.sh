# shellcheck shell=bash
# Shared by the desktop tests: sourced, not run.
set -euo pipefail

fail()
{
    echo "FAIL: $*" >&2
    exit 1
}

# need TOOL PACKAGE: a missing tool fails the test and says what to install.
need()
{
    command -v "$1" >/dev/null ||
        fail "$1 is missing: install $1 (Debian package $2), e.g. with scripts/install-deps.sh"
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# install_tree BUILD_DIR: installs the build into $work/root (prefix /usr) and
# sets $root to that prefix.
install_tree()
{
    DESTDIR="$work/root" cmake --install "$1" --prefix /usr >/dev/null
    root="$work/root/usr"
}

# options_in TEXT: every -x and --word option the text names, one a line.
options_in()
{
    grep -oE -- '(^|[^[:alnum:]-])--?[a-z][a-z-]*' <<<"$1" | sed -E 's/^[^-]+//' | sort -u
}
