#!/bin/bash
# No file names a host to fetch from: packages come from where the machine's own apt has them. An
# address may stand only where it is the name of a format.
set -euo pipefail
cd "$(dirname "$0")/.."

formats='https?://www\.(w3|debian)\.org/(2000/svg|doc/packaging-manuals/)'
hosts='(https?|ftp)://[^ ]|[a-z]\.debian\.[a-z]'
found=$(find . \( -name build -o -name .git \) -prune -o -type f -exec grep -InE "$hosts" {} + |
    sed -E "s#$formats##g" | grep -E "$hosts" || true)
[[ -z $found ]] || { echo "$found" >&2 && exit 1; }
