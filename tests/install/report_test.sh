#!/usr/bin/env bash
# report_test.sh BIN: the command that keeps a report in a folder, as it stands in BIN beside the scanner: what it does when
# all goes well, and that the last report outlives a full disk, a scan that is killed and a folder that is not there.
set -euo pipefail
bin=$(cd "$1" && pwd)
self=$(cd "$(dirname "$0")" && pwd)/$(basename "$0")

# In a mount namespace of its own, for small disks that nobody else sees; some containers allow none.
namespace=(unshare --mount)
[ "$EUID" -eq 0 ] || namespace+=(--map-root-user)
if [ $# -eq 1 ]; then
    ! "${namespace[@]}" true 2>/dev/null || exec "${namespace[@]}" "$self" "$bin" small-disks
fi
small_disks=${2-}
top=$(mktemp -d)
trap 'umount -q "$top/disk" 2>/dev/null || true; rm -rf "$top"' EXIT
mkdir "$top/disk" "$top/stub"

fail() {
    printf 'report_test: %s\n' "$*" >&2
    [ ! -s "$top/errors" ] || cat "$top/errors" >&2
    exit 1
}

# disk SIZE: a disk of so many kB, where that can be had, with nothing but the last report on it.
disk() {
    umount -q "$top/disk" 2>/dev/null || true
    rm -rf "$top/disk"
    mkdir "$top/disk"
    [ -z "$small_disks" ] || mount -t tmpfs -o size="$1k" none "$top/disk"
    echo "the last report" >"$top/disk/report.xml"
}

# report STATUS [PROGRAM]: runs the command on the disk; its status and what it leaves must be as they should.
report() {
    local status=0
    "${2-$bin/invhw-report}" "$top/disk" 2>"$top/errors" || status=$?
    [ "$status" -eq "$1" ] || fail "status $status instead of $1"
    [ -z "$(find "$top/disk" -name '*.new*')" ] || fail "an unfinished report is left behind"
}

last_report_stays() {
    [ "$(cat "$top/disk/report.xml")" = "the last report" ] || fail "$1: the last report is gone"
    grep -q "^invhw-report: .*the last report in $top/disk stays\$" "$top/errors" || fail "$1: no word of it"
}

whole_report() {
    [ "$(tail -n 1 "$top/disk/report.xml")" = "</serviceDataList>" ] || fail "$1: no whole report"
    [ ! -s "$top/errors" ] || fail "$1: errors"
}

# scanner COMMANDS: a scanner that does what the shell commands say, in the disk's folder, beside a copy of the command.
scanner() {
    printf '#!/bin/sh\n%s\n' "$1" >"$top/stub/invhw"
    chmod +x "$top/stub/invhw"
    cp "$bin/invhw-report" "$top/stub"
}

disk 16384
report 0
whole_report "room enough"
[ -s "$top/disk/libInvHW.log" ] || fail "no log beside the report"

full_disks() {
    # A full disk, whatever the report finds free: nothing, some pages of it, not quite enough. The log takes its part too.
    size=$(($(stat -c %s "$top/disk/report.xml") / 1024))
    for free in 0 4 $((size / 2)); do
        disk 1024
        head -c $(((1024 - 4 - free) * 1024)) /dev/zero >"$top/disk/filler"
        report 1
        last_report_stays "$free kB free"
        grep -q 'No space left on device' "$top/errors" || fail "$free kB free: the reason is not told"
    done

    # Space that comes back during the scan would leave a hole in a report that ends as it should.
    scanner 'head -c 400000 /dev/zero; rm filler; printf "\n</serviceDataList>"'
    disk 512
    head -c 300000 /dev/zero >"$top/disk/filler"
    report 1 "$top/stub/invhw-report"
    last_report_stays "a hole"
    grep -q 'No space left on device' "$top/errors" || fail "a hole: the reason is not told"
}
[ -z "$small_disks" ] || full_disks

scanner 'printf "\n<serviceDataList>\n</serviceData>"; kill -KILL $$'
disk 512
report 1 "$top/stub/invhw-report"
last_report_stays "a killed scan"

scanner 'exit 0'
report 1 "$top/stub/invhw-report"
last_report_stays "an empty report"

# What was killed left its file; what still runs keeps it; a link planted under the name is not followed.
scanner 'printf "\n<serviceDataList>\n\n</serviceDataList>"'
sleep 0 &
gone=$!
wait "$gone"
touch "$top/disk/report.xml.new.$gone" "$top/victim"
(ln -s "$top/victim" "$top/disk/report.xml.new.$BASHPID" && exec "$top/stub/invhw-report" "$top/disk" 2>"$top/errors")
whole_report "a planted link"
[ ! -s "$top/victim" ] || fail "the report went through a link"
[ ! -L "$top/disk/report.xml" ] || fail "the report is a link"
[ ! -e "$top/disk/report.xml.new.$gone" ] || fail "the file of a killed scan is left"
touch "$top/disk/report.xml.new.$$"
"$top/stub/invhw-report" "$top/disk"
[ -e "$top/disk/report.xml.new.$$" ] || fail "the file of another scan is removed"

status=0
(cd "$top" && "$bin/invhw-report" nowhere) 2>"$top/errors" || status=$?
[ "$status" -eq 1 ] || fail "no folder: status $status"
[ ! -e "$top/libInvHW.log" ] || fail "scans elsewhere when there is no folder"
for words in "" "a b"; do
    status=0
    # shellcheck disable=SC2086 # a list of words
    "$bin/invhw-report" $words 2>"$top/errors" || status=$?
    [ "$status" -eq 2 ] || fail "called with '$words': status $status"
    grep -q '^usage: ' "$top/errors" || fail "called with '$words': no word of it"
done
if [ -z "$small_disks" ]; then
    echo "report_test: no mount namespace can be had, so no full disk was tried"
    exit 77
fi
echo "the last report stays until there is a whole one"
