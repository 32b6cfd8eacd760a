#!/bin/bash
# Makes the packages in build/packages/: a .deb, and for Windows an installer and a zip. Tells the
# size and the SHA-256 of each. Packing the same programs again gives the same bytes.
set -euo pipefail
cd "$(dirname "$0")/.."
umask 022

packages=$PWD/build/packages
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l packaging/linux/debian/changelog -S Timestamp)
export SOURCE_DATE_EPOCH
rm -rf "$packages"
mkdir -p "$packages"

tools/build.sh release sontaro sontaro-cli sontaro-player package_texts
cpack --config build/release/CPackConfig.cmake -B build/cpack >build/cpack.log 2>&1 || {
    cat build/cpack.log >&2
    exit 1
}
mv build/cpack/*.deb "$packages"
tools/windows/package.sh "$packages"

echo
cd "$packages"
for package in *; do
    printf '%s  %s bytes\n    SHA-256 %s\n' "$package" "$(stat -c %s "$package")" \
        "$(sha256sum <"$package" | cut -d' ' -f1)"
done
