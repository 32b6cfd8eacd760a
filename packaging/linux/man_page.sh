#!/bin/bash
# man_page.sh TEMPLATE PROGRAM OUTPUT: writes a compressed manual page: the template, and at its
# comment "options" those that the program's own help lists.
set -euo pipefail
template=$1 program=$2 output=$3

options() {
    "$program" --help | awk '
        { gsub(/\\/, "\\e"); gsub(/-/, "\\-") }
        /^  [^ ]/ { match($0, /[^ ]  +/); print ".TP\n.B " substr($0, 3, RSTART - 2)
                    print substr($0, RSTART + RLENGTH) }
        /^   / { sub(/^ +/, ""); print }'
}

sed -e '/^\.\\" options$/{r '<(options) -e 'd}' "$template" | gzip -9n >"$output"
