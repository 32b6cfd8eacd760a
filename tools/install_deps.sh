#!/bin/bash
# install_deps.sh [windows] [package]: installs the Debian 12 packages that are missing; with these
# words, those for the Windows build and for making and proving packages. Says nothing when there
# are none.
set -euo pipefail

packages=(
    # build
    g++ cmake ninja-build ccache pkg-config
    libwxgtk3.2-dev libglib2.0-dev libfontconfig-dev libjsoncpp-dev libfmt-dev
    libcli11-dev
    # windows on a virtual display: the tour, the tests and the pictures they leave
    xvfb xauth xdotool x11-utils fonts-noto-cjk adwaita-icon-theme librsvg2-common
    # tests and measurements
    libgtest-dev libgmock-dev libx11-dev dbus-daemon at-spi2-core jq groff-base
    # checks
    clang-14 libclang-rt-14-dev clang-tidy-14 clang-format-14
)
if [[ " $* " == *" windows "* ]]; then
    packages+=(
        g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev librsvg2-bin icoutils
        wine wine64 locales iproute2
    )
fi
if [[ " $* " == *" package "* ]]; then
    packages+=(nsis netpbm zip unzip lintian appstream debootstrap)
fi

# dpkg-query fails when it has never heard of one of them; what it prints is enough.
installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
    [[ $'\n'$installed$'\n' == *$'\n'"$package installed"$'\n'* ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

echo "Packages to install: ${missing[*]}"
as_root=(env DEBIAN_FRONTEND=noninteractive)
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "Installing them takes root, and there is no sudo. Run this as root:" >&2
        echo "    apt-get update && apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo "${as_root[@]}")
fi
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
