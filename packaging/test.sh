#!/usr/bin/env bash
# test.sh PACKAGES: tries the packages as a new user would. Each Debian package is installed in a fresh Debian of its
# processor (debootstrap, in a folder of its own) and the program scans there, in several locales and folders; each
# archive is unpacked into a folder of any name and runs from there.
set -euo pipefail
packages=$(cd "$1" && pwd)
roots=$packages/../package-roots
mkdir -p "$roots"

fail() {
    printf 'package test: %s\n' "$*" >&2
    exit 1
}

# whole FILE: a whole report with the group that every machine has.
whole() {
    [ "$(tail -c 18 "$1")" = "</serviceDataList>" ] && grep -q '<OperatingSystem version="1">' "$1"
}

for architecture in amd64 i386; do
    root=$roots/$architecture
    [ -f "$root/etc/debian_version" ] ||
        debootstrap --variant=minbase --arch="$architecture" bookworm "$root" >"$roots/$architecture.log" 2>&1 ||
        fail "debootstrap $architecture, see $roots/$architecture.log"
    cp "$packages"/invhw_*_"$architecture".deb "$packages"/libinvhw-dev_*_"$architecture".deb "$root/tmp/"
    chroot "$root" dpkg -i "/tmp/$(cd "$packages" && ls invhw_*_"$architecture".deb)" >/dev/null
    for locale in C C.UTF-8 xx_YY.nowhere; do
        for folder in / /tmp /var/lib; do
            chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=$locale \
                sh -c "cd $folder && rm -f libInvHW.log && invhw >/tmp/report.xml 2>/tmp/errors && test -s libInvHW.log" ||
                fail "$architecture, locale $locale, folder $folder"
            whole "$root/tmp/report.xml" || fail "$architecture, locale $locale, folder $folder: no whole report"
        done
    done
    units=$(mktemp -d)
    cp "$root"/lib/systemd/system/invhw.* "$units"
    sed -i "s#/usr/sbin/invhw#$root/usr/lib/invhw/bin/invhw#" "$units/invhw.service"
    systemd-analyze --man=no verify "$units/invhw.service" "$units/invhw.timer" || fail "$architecture: units"
    rm -r "$units"
    chroot "$root" dpkg -r invhw >/dev/null
    [ ! -e "$root/usr/sbin/invhw" ] || fail "$architecture: the removed package leaves the program"
    echo "package test: $architecture package installs, scans and goes"

    place="$roots/any folder $architecture"
    rm -rf "$place"
    mkdir -p "$place/run"
    tar -xzf "$packages"/invhw-*-"$architecture".tar.gz -C "$place"
    (cd "$place/run" && env -i "$place"/invhw-*/sbin/invhw >report.xml 2>errors)
    whole "$place/run/report.xml" || fail "$architecture archive: no whole report"
    # What a scan as root leaves where there is no physical memory to read; other tools do not survive it.
    [ ! -f /dev/mem ] || [ -s /dev/mem ] || rm -f /dev/mem
    rm -rf "$place"
    echo "package test: $architecture archive runs from any folder"
done
