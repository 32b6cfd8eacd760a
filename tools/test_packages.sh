#!/bin/bash
# Proves the packages in build/packages/: installs each where nothing of Sontaro is, runs it from
# there, and removes it again.
set -euo pipefail
cd "$(dirname "$0")/.."

step() {
    echo "== $1"
    shift
    "$@" || {
        echo "FAILED" >&2
        exit 1
    }
}

package=(build/packages/*.deb)
if ((EUID == 0)); then as_root=(); else as_root=(sudo); fi
step "lintian" lintian --fail-on error,warning "${package[@]}"
step "AppStream metadata" appstreamcli validate --no-net \
    build/release/packaging/linux/sontaro.metainfo.xml
step "the .deb in a fresh Debian 12" "${as_root[@]}" tools/test_deb.sh "${package[@]}"
rm -rf build/wine  # for a Windows in which nothing was ever installed
step "the zip under Wine" tools/windows/wine.sh tools/windows/test_zip.sh
step "the installer under Wine" tools/windows/wine.sh tools/windows/test_installer.sh
echo "The packages hold."
