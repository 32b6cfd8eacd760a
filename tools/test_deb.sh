#!/bin/bash
# test_deb.sh PACKAGE: installs a .deb in a fresh Debian with no more than it depends on, has a user
# take the tour there, in a network that has nothing but its loopback interface, and purges it. The
# Debian is that of this machine, from where its own apt has it.
set -euo pipefail
self=$(readlink -f "$0")
cd "$(dirname "$0")/.."

fail() {
    echo "$*" >&2
    exit 1
}

quietly() {
    "$@" >"$work/log" 2>&1 || { tail -20 "$work/log" >&2 && return 1; }
}

in_root() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

names() { in_root find / -xdev -iname '*sontaro*' -not -path '/home/*' -not -path '/proc/*'; }

# Runs on a virtual display; all that goes with it ends with this process.
tour() {
    root=$1
    ip link set lo up
    mount -t proc proc "$root/proc"
    install -o 1000 -m 600 "$XAUTHORITY" "$root/home/user/.Xauthority"
    chroot --userspec=1000:1000 "$root" env -i HOME=/home/user LANG=zh_CN.UTF-8 DISPLAY="$DISPLAY" \
        sontaro --demo --tour /home/user/pictures
}

if [[ $1 == tour ]]; then
    tour "$2"
    exit
fi

work=$(mktemp -d)
root=$work/root
trap 'rm -rf --one-file-system "$work"' EXIT

archive=$(tools/debian_archive.sh) || fail "The entries of apt name no archive of this Debian."
read -r suite uri keyring <<<"$archive"
quietly debootstrap --variant=minbase ${keyring:+--keyring="$keyring"} "$suite" "$root" "$uri"
install -d -o 1000 -g 1000 "$root/home/user"
cp "$1" "$root/sontaro.deb"
quietly in_root apt-get install -y --no-install-recommends /sontaro.deb
rm "$root/sontaro.deb"

quietly unshare --net --mount tools/headless.sh "$self" tour "$root"
pictures=("$root"/home/user/pictures/*.png)
((${#pictures[@]} >= 21)) || fail "The tour left only ${#pictures[@]} pictures."

in_root sontaro-cli --help | grep -q restore || fail "sontaro-cli tells no commands."
[[ -s $root/usr/share/bash-completion/completions/sontaro-cli ]] || fail "There is no completion."

quietly in_root apt-get purge -y sontaro
[[ -z $(names) ]] || fail "Left behind: $(names)"
