#!/bin/sh
# packages.sh FOLDER
# Installs the Debian packages of FOLDER in a clean root of the running distribution and does there what a
# stranger does. The root comes from debootstrap and is kept in FOLDER, with what was downloaded, for the
# next time. Needs root. Mounts are made in a namespace of their own, so that none is left behind.
set -eu

folder=$(cd "$1" && pwd)
cd "$(dirname "$0")/../.."
if [ "$(id -u)" -ne 0 ]; then
    echo "packages: a clean root can only be made by root" >&2
    exit 1
fi
scripts/setup debootstrap
. /etc/os-release
base=$folder/root-$VERSION_CODENAME
root=$folder/root
archives=$folder/archives

make_base() {
    components=main
    [ "$ID" != ubuntu ] || components=main,universe
    rm -rf "$base.part"
    debootstrap --variant=minbase --components="$components" "$VERSION_CODENAME" "$base.part"
    mv "$base.part" "$base"
}

make_root() {
    rm -rf --one-file-system "$root"
    cp -a "$base" "$root"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    mkdir -p "$archives" "$root/vmcore/tests" "$root/vmcore/examples/librarian"
    find "$archives" -name '*.deb' -exec cp -t "$root/var/cache/apt/archives" {} +
    cp "$folder"/*.deb "$root/vmcore"
    cp -r README.md docs "$root/vmcore"
    cp -r tests/install tests/e2e "$root/vmcore/tests"
    cp -r examples/librarian/data "$root/vmcore/examples/librarian"
    cp -r examples/sketch "$root/vmcore/examples"
}

in_root() {
    # shellcheck disable=SC2016 # expanded by the inner shell
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        ${http_proxy+"http_proxy=$http_proxy"} \
        unshare --mount --pid --fork --kill-child \
        sh -c 'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"' "$root" "$@"
}

# install PACKAGES...: ours come from /vmcore, with what they depend on.
install() {
    in_root apt-get install -y -qq -o Dpkg::Use-Pty=0 -o Dpkg::Options::=--force-unsafe-io \
        "$@" >"$folder/install.log" 2>&1 || {
        cat "$folder/install.log" >&2
        return 1
    }
    find "$root/var/cache/apt/archives" -name '*.deb' -exec cp -ut "$archives" {} +
}

our() {
    echo "/vmcore/$(basename "$folder/$1"_*.deb)"
}

[ -d "$base" ] || make_base
make_root
in_root apt-get update -qq

echo "== packages: the programs"
install "$(our libvmcore0)" "$(our vmcore-tools)" "$(our vmcore-librarian)" python3
in_root python3 /vmcore/tests/install/test_packages.py InstalledPrograms

echo "== packages: the development files"
install --no-install-recommends "$(our libvmcore-dev)" g++ cmake make pkg-config
in_root python3 /vmcore/tests/install/test_packages.py InstalledDevelopment
rm -rf --one-file-system "$root"
