#!/bin/bash
# package.sh FOLDER: builds the Windows programs, and from them the zip and the installer in FOLDER,
# with the times of $SOURCE_DATE_EPOCH. A part of tools/package.sh.
set -euo pipefail
packages=$(readlink -f "$1")
cd "$(dirname "$0")/../.."

# What is linked in statically, and the Debian package whose copyright file has its licence.
# wxWidgets has PCRE2 and NanoSVG in it, mingw-w64 has winpthreads.
linked_in=(
    wxwidgets=libwxgtk3.2-dev
    libpng=libpng16-16
    zlib=libz-mingw-w64-dev
    jsoncpp=libjsoncpp-dev
    fmt=libfmt-dev
    cli11=libcli11-dev
    gcc-runtime=g++-mingw-w64-x86-64-posix
    mingw-w64=mingw-w64-x86-64-dev
)

# Those files name licences that every Debian system has; a Windows system has none of them.
collect_licences() {
    local folder=$1 library name
    mkdir "$folder"
    cp LICENSE "$folder/sontaro.txt"
    for library in "${linked_in[@]}"; do
        cp "/usr/share/doc/${library#*=}/copyright" "$folder/${library%%=*}.txt"
    done
    grep -Eoh 'common-licenses/[A-Za-z0-9]+(-[0-9.]*[0-9])?' "$folder"/*.txt | sort -u |
        while IFS=/ read -r _ name; do
            cp "/usr/share/common-licenses/$name" "$folder/$name.txt"
        done
}

# The files of both packages, with the ends of lines that the system's oldest editors know.
stage() {
    local folder=$1
    mkdir "$folder"
    cp build/windows/src/app/sontaro.exe build/windows/src/cli/sontaro-cli.exe \
        build/windows/simulator/sontaro-player.exe "$folder"
    { printf '\xef\xbb\xbf' && sed "s/@VERSION@/$version/" packaging/windows/README.txt; } \
        >"$folder/README.txt"
    collect_licences "$folder/licences"
    sed -i 's/\r*$/\r/' "$folder/README.txt" "$folder"/licences/*.txt
}

# What stands beside the last page of the installer, at twice its size for fine displays.
draw_side() {
    rsvg-convert --width 192 --height 192 --left 68 --top 120 --page-width 328 --page-height 628 \
        --background-color '#16294d' resources/sontaro.svg | pngtopnm | ppmtobmp -quiet >"$1"
}

tools/windows/build.sh sontaro sontaro-cli sontaro-player
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=sontaro-$version-windows-x86_64
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
stage "$work/sontaro-$version"
draw_side "$work/side.bmp"
find "$work" -exec touch --date="@$SOURCE_DATE_EPOCH" {} +
(cd "$work" && find "sontaro-$version" | sort | TZ=UTC zip -qX9 "$packages/$name.zip" -@)
makensis -V2 -WX -DVERSION="$version" -DSTAGE="$work/sontaro-$version" \
    -DICON="$PWD/build/windows/src/app/sontaro.ico" -DSIDE="$work/side.bmp" \
    -DOUTPUT="$packages/$name-setup.exe" packaging/windows/sontaro.nsi
