#!/bin/bash
# The archive of this machine's Debian is found in entries of either form.
# Usage: debian_archive_test.sh DEBIAN_ARCHIVE
set -euo pipefail
program=$1
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
apt=$(mktemp -d)
trap 'rm -rf "$apt"' EXIT
mkdir "$apt/sources.list.d"

# FILE EXPECTED: what is found when the entries on standard input are all there are.
expect() {
    local found
    cat >"$apt/$1"
    found=$("$program" "$apt" | sed 's/ *$//') || found=none
    rm "$apt/$1"
    [[ $found == "$2" ]] || { echo "expected '$2', found '$found'" >&2 && exit 1; }
}

expect sources.list "$suite one/debian/" <<END
# deb zero/debian $suite main
deb-src two/debian $suite main
deb three/debian-security $suite main
deb four/debian elsewhen main
deb one/debian/ $suite main
END
expect sources.list.d/a.list "$suite one/debian /keys/a.gpg" <<END
deb [ arch=amd64 signed-by=/keys/a.gpg ] one/debian $suite main contrib
END
expect sources.list.d/a.sources "$suite one/debian /keys/a.gpg" <<END
Types: deb
URIs: two/debian
Suites: $suite
Enabled: no

# the first
Types: deb-src deb
# of two
URIs: three/other
 one/debian
Suites: elsewhen $suite
Components: main
Signed-By: /keys/a.gpg
END
expect sources.list.d/a.sources "$suite one/debian" <<END
types: deb
uris: one/debian
suites: $suite
signed-by:
 -----BEGIN PGP PUBLIC KEY BLOCK-----
END
expect sources.list none <<END
deb one/debian elsewhen main
END
