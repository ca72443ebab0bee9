#!/usr/bin/env bash
# test.sh PACKAGES: tries the packages as a new user would. Each Debian package is installed in a fresh Debian of its
# processor (debootstrap, in a folder of its own) and the program scans there, in several locales and folders, and under
# its systemd; each archive is unpacked into a folder of any name and runs from there.
set -euo pipefail
packages=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
roots=$packages/../package-roots
mkdir -p "$roots"
roots=$(cd "$roots" && pwd)

fail() {
    printf 'package test: %s\n' "$*" >&2
    exit 1
}

# whole FILE: a whole report with the group that every machine has.
whole() {
    [ "$(tail -n 1 "$1")" = "</serviceDataList>" ] && grep -q '<OperatingSystem version="1">' "$1"
}

# A Debian of the processor with nothing but systemd added, kept for the next time.
fresh_debian() {
    [ -x "$root/lib/systemd/systemd" ] && return
    rm -rf "$root"
    debootstrap --variant=minbase --include=systemd-sysv,dbus --arch="$architecture" bookworm "$root" \
        >"$roots/$architecture.log" 2>&1 || fail "debootstrap $architecture, see $roots/$architecture.log"
}

scans_anywhere() {
    local locale folder
    for locale in C C.UTF-8 xx_YY.nowhere; do
        for folder in / /tmp /var/lib; do
            chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=$locale \
                sh -c "cd $folder && rm -f libInvHW.log && invhw >/tmp/report.xml 2>/tmp/errors && test -s libInvHW.log" ||
                fail "$architecture, locale $locale, folder $folder"
            whole "$root/tmp/report.xml" || fail "$architecture, locale $locale, folder $folder: no whole report"
        done
    done
    mkdir -p "$root/tmp/state"
    chroot "$root" env -i PATH=/usr/bin:/bin /usr/sbin/invhw-report /tmp/state || fail "$architecture: invhw-report"
    whole "$root/tmp/state/report.xml" || fail "$architecture: invhw-report leaves no whole report"
}

# The program's own functions begin with a landing pad; those of the compiler's libraries alone are fewer than 1000.
is_hardened() {
    local pads
    pads=$(objdump -d "$root/usr/lib/invhw/bin/invhw" | grep -cE '\bendbr(32|64)\b' || true)
    [ "$pads" -gt 1000 ] || fail "$architecture: $pads landing pads: built without -fcf-protection"
}

# The units are well-formed, and as exposed as the documents say.
units_are_good() {
    local units said rated
    units=$(mktemp -d)
    cp "$root"/lib/systemd/system/invhw.* "$units"
    sed -i "s#/usr/sbin/invhw#$root/usr/lib/invhw/bin/invhw#" "$units/invhw.service"
    systemd-analyze --man=no verify "$units/invhw.service" "$units/invhw.timer" || fail "$architecture: units"
    rated=$(systemd-analyze security --offline=true --no-pager "$units/invhw.service" |
        sed -n 's/.*exposure level.*: \([0-9.]*\) .*/\1/p')
    said=$(sed -n 's/.*rates the unit \([0-9.]*\) .*/\1/p' "$here/../docs/SECURITY.md")
    [ "$rated" = "${said:-nothing}" ] || fail "the unit is rated $rated, SECURITY.md says '$said'"
    rm -r "$units"
}

try_debian_package() {
    cp "$packages"/invhw_*_"$architecture".deb "$packages"/libinvhw-dev_*_"$architecture".deb "$root/tmp/"
    chroot "$root" dpkg -i "/tmp/$(cd "$packages" && ls invhw_*_"$architecture".deb)" >/dev/null
    scans_anywhere
    is_hardened
    units_are_good
    "$here/service_test.sh" "$root"
    chroot "$root" dpkg -r invhw >/dev/null
    [ ! -e "$root/usr/sbin/invhw" ] || fail "$architecture: the removed package leaves the program"
    echo "package test: $architecture package installs, scans and goes"
}

try_archive() {
    local place="$roots/any folder $architecture" tree pc prefix
    rm -rf "$place"
    mkdir -p "$place/run"
    tar -xzf "$packages"/invhw-*-"$architecture".tar.gz -C "$place"
    tree=$(cd "$place"/invhw-* && pwd)
    (cd "$place/run" && env -i "$tree/sbin/invhw" >report.xml 2>errors)
    whole "$place/run/report.xml" || fail "$architecture archive: no whole report"
    pc=$(find "$tree" -name invhw.pc)
    prefix=$(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --variable=prefix invhw)
    [ "$(cd "${prefix//\\/}" && pwd)" = "$tree" ] || # it marks blanks with a backslash
        fail "$architecture archive: pkg-config does not find the tree"
    rm -rf "$place"
    echo "package test: $architecture archive runs from any folder"
}

for architecture in amd64 i386; do
    root=$roots/$architecture
    fresh_debian
    try_debian_package
    try_archive
done
