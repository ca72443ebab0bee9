#!/usr/bin/env bash
# reproducible.sh PACKAGES: builds the packages once more, from a copy of the sources in a folder of another name and with
# another umask, locale and time zone: they must be the given ones, byte for byte. SOURCE_DATE_EPOCH is theirs.
set -euo pipefail
packages=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
copy=$(mktemp -d)
trap 'rm -rf "$copy"' EXIT
mkdir "$copy/another place"
git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents -t "$copy/another place"
(umask 077 && TZ=Asia/Tokyo LC_ALL=C "$copy/another place/packaging/make.sh" "$copy/packages")

differ=0
for package in "$packages"/*; do
    cmp "$package" "$copy/packages/$(basename "$package")" || differ=1
done
[ "$(ls "$packages")" = "$(ls "$copy/packages")" ] || differ=1
[ $differ -eq 0 ] || { echo "package test: a second build gives other packages" >&2; exit 1; }
echo "package test: a second build in another folder gives the same bytes"
