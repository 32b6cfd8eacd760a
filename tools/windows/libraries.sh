#!/bin/bash
# libraries.sh: builds the libraries that the Windows program is linked with, once, from the source
# packages of this Debian, and prints the folder they are in. They are kept outside the tree, in
# $SONTARO_CACHE or the user's cache folder, under a key of the installed versions and of the way
# they are built.
# libraries.sh --if-built: only prints the folder; fails when it is not complete.
set -euo pipefail
cd "$(dirname "$0")/../.."

packages=(libwxgtk3.2-dev libpng16-16 libjsoncpp-dev libfmt-dev libgtest-dev)
tools=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev)
recipe=(tools/windows/libraries.sh cmake/mingw.cmake)

versions=$(dpkg-query -W -f '${Package}=${Version}\n' "${packages[@]}" "${tools[@]}")
key=$({ echo "$versions" && cat "${recipe[@]}"; } | sha256sum | cut -c1-16)
prefix=${SONTARO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/sontaro}/windows-$key
toolchain=$PWD/cmake/mingw.cmake

if [[ -e $prefix/complete ]]; then
    echo "$prefix"
    exit 0
fi
[[ ${1:-} != --if-built ]] || exit 1

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The machine's own Debian entries, as entries of sources; without the security archive, whose
# sources not every mirror has.
write_source_lists() {
    mkdir "$work/lists" "$work/parts"
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
        sed -n '/\/debian\/\? / s/^deb /deb-src /p' >"$work/sources.list" || true
    cat /etc/apt/sources.list.d/*.sources 2>/dev/null |
        awk -v RS= -v ORS='\n\n' '/URIs:[^\n]*\/debian\/?(\n|$)/' |
        sed 's/^Types:.*/Types: deb-src/' >"$work/parts/debian.sources" || true
}

sources_of_debian() {
    apt-get -qq -o Dir::Etc::SourceList="$work/sources.list" \
        -o Dir::Etc::SourceParts="$work/parts" -o Dir::State::Lists="$work/lists" \
        -o APT::Sandbox::User="$(id -un)" "$@"
}

fetch() {
    write_source_lists
    sources_of_debian update
    (cd "$work" && sources_of_debian source libpng1.6 libjsoncpp fmtlib googletest wxwidgets3.2)
}

with_cmake() {
    local source=$1
    shift
    cmake -S "$work/$source"-*/ -B "$work/build-$source" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$work/build-$source" --target install
}

# Without what no window of ours uses. PNG serves the icons and the tour's pictures.
wxwidgets() {
    local source=("$work"/wxwidgets3.2-*/)
    mkdir "$work/build-wx"
    cd "$work/build-wx"
    "${source[0]}configure" --host=x86_64-w64-mingw32 --prefix="$prefix" --disable-shared \
        CC=x86_64-w64-mingw32-gcc-posix CXX=x86_64-w64-mingw32-g++-posix \
        CPPFLAGS="-I$prefix/include" LDFLAGS="-L$prefix/lib" \
        --with-regex=builtin --with-libpng=sys --with-zlib=sys --with-nanosvg \
        --without-libjpeg --without-libtiff --without-expat --without-opengl \
        --disable-aui --disable-html --disable-mediactrl --disable-ribbon --disable-richtext \
        --disable-stc --disable-webview
    make -j"$(nproc)"
    make install
}

build() {
    rm -rf "$prefix"
    mkdir -p "$prefix"
    export SONTARO_WINDOWS_LIBRARIES=$prefix
    fetch
    with_cmake libpng1.6 -DPNG_SHARED=OFF -DPNG_TESTS=OFF
    with_cmake libjsoncpp -DJSONCPP_WITH_TESTS=OFF -DJSONCPP_WITH_POST_BUILD_UNITTEST=OFF \
        -DBUILD_OBJECT_LIBS=OFF
    with_cmake fmtlib -DFMT_TEST=OFF -DFMT_DOC=OFF
    with_cmake googletest
    (wxwidgets)
    echo "$versions" >"$prefix/complete"
}

build >"$work/log" 2>&1 &  # aside: within a condition the shell would go on after an error
wait $! || {
    tail -40 "$work/log" >&2
    exit 1
}
echo "$prefix"
