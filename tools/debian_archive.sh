#!/bin/bash
# debian_archive.sh [FOLDER]: prints where this machine's own apt gets its Debian from, as
# "SUITE URI KEYRING"; without a keyring where the entry names no file. Reads entries of one line
# and those of several; from FOLDER where that is given, which is otherwise /etc/apt. Fails when
# there is no such entry.
set -euo pipefail
apt=${1:-/etc/apt}
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")

# FILES: what is in them, whichever of them there are.
contents() { cat "$@" 2>/dev/null || true; }

# deb [signed-by=KEYRING] URI SUITE COMPONENT...
of_one_line() {
    contents "$apt"/sources.list "$apt"/sources.list.d/*.list | awk '
        $1 == "deb" {
            keyring = ""
            if (match($0, /\[[^]]*\]/)) {
                options = substr($0, RSTART, RLENGTH)
                sub(/\[[^]]*\]/, "")
                if (match(options, /signed-by=[^] ,]*/))
                    keyring = substr(options, RSTART + 10, RLENGTH - 10)
            }
            print $3, $2, keyring
        }'
}

# Paragraphs of "Name: values"; a line that begins with a blank goes on with the values.
of_several_lines() {
    contents "$apt"/sources.list.d/*.sources | awk -v RS= -F '\n' '
        {
            delete field
            for (i = 1; i <= NF; ++i) {
                if ($i ~ /^#/) continue
                value = $i
                if ($i !~ /^[ \t]/) {
                    name = tolower(substr($i, 1, index($i, ":") - 1))
                    sub(/^[^:]*:/, "", value)
                }
                field[name] = field[name] " " value
            }
            if (field["types"] !~ /(^| )deb( |$)/ || tolower(field["enabled"]) ~ /no|false|0/) next
            uris = split(field["uris"], uri, " ")
            suites = split(field["suites"], suite, " ")
            keyring = field["signed-by"] ~ /^ *\// ? field["signed-by"] : ""
            for (i = 1; i <= uris; ++i)
                for (j = 1; j <= suites; ++j) print suite[j], uri[i], keyring
        }'
}

{ of_one_line && of_several_lines; } | awk -v suite="$suite" '
    !found && $1 == suite && $2 ~ /\/debian\/?$/ { print $1, $2, $3; found = 1 }
    END { exit !found }'
