#!/usr/bin/env bash
# The texts that are made of the table of commands: the README has the list, groff understands the
# manual page, and bash completes by what it is given.
# Usage: command_texts.sh MAKE_TEXTS README
set -euo pipefail
make_texts=$1 readme=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

sed -n '/^| command | what it does |$/,/^$/p' "$readme" | sed '/^$/d' >"$work/readme"
"$make_texts" list | diff "$work/readme" - || fail "the README has another list of commands"

"$make_texts" man 2026-11-22 >"$work/page"
complaints=$(groff -man -Tutf8 -ww -z "$work/page" 2>&1)
[ -z "$complaints" ] || fail "groff complains: $complaints"

"$make_texts" completion >"$work/completion"
# shellcheck disable=SC1091
source "$work/completion"

# completes EXPECTED WORD...: the last word is the one that is typed.
completes() {
    local expected=$1
    shift
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
    _sontaro_cli 2>/dev/null
    [ "${COMPREPLY[*]}" = "$expected" ] || fail "$*: ${COMPREPLY[*]}, not $expected"
}
completes "restore" sontaro-cli re
completes "osd" sontaro-cli get o
completes "pause" sontaro-cli control pa
completes "--keep" sontaro-cli backup --k
completes "subtitles" sontaro-cli -p x get su
completes "" sontaro-cli find -p a
completes "zh" sontaro-cli find --language z
