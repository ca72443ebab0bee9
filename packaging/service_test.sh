#!/usr/bin/env bash
# service_test.sh ROOT: boots the Debian in the folder, where the package is installed, in a container and starts the service
# under its systemd: with room, on a full disk, which the last report must outlive, and with room again.
set -euo pipefail
root=$1

fail() {
    printf 'service test: %s\n' "$*" >&2
    exit 1
}

container=(systemd-nspawn --quiet --directory="$root" --machine=invhw-service-test --register=no --private-network
    --link-journal=no)
# Only a systemd gives the container a unit of its own.
[ -d /run/systemd/system ] || container+=(--keep-unit)
if ! "${container[@]}" /bin/true >/dev/null 2>&1; then
    echo "service test: no container can be had here, so the service is not tried under a live systemd"
    exit 0
fi

cat >"$root/root/service-test" <<'END'
#!/bin/sh
exec >/root/service-test.log 2>&1
folder=/var/lib/invhw

# What the service wrote since the boot.
journal() {
    journalctl --sync
    journalctl --boot --unit=invhw.service --output=cat --no-pager
}

fail() {
    journal
    echo "$*"
    exit 1
}

whole_report() {
    systemctl start invhw.service || fail "$1: the unit fails"
    [ "$(tail -n 1 $folder/report.xml)" = "</serviceDataList>" ] || fail "$1: no whole report"
    [ -s $folder/libInvHW.log ] || fail "$1: no log"
}

told() { journal | grep -q "$1" || fail "the journal does not say '$1'"; }

systemctl start invhw.timer && systemctl is-active invhw.timer || fail "the timer does not start"
whole_report "with room"
mount -t tmpfs -o size=256k,mode=700 none $folder || fail "no small disk"
echo "the last report" >$folder/report.xml
head -c 245760 /dev/zero >$folder/filler
! systemctl start invhw.service || fail "the unit does not fail on a full disk"
[ "$(systemctl show -P Result invhw.service)" = exit-code ] || fail "the unit fails in another way"
[ "$(cat $folder/report.xml)" = "the last report" ] || fail "the last report is gone"
[ -z "$(find $folder -name '*.new*')" ] || fail "an unfinished report is left"
told "No space left on device"
told "^invhw-report: .*the last report in $folder stays\$"
rm $folder/filler
whole_report "with room again"
echo "passed"
END
chmod +x "$root/root/service-test"
cat >"$root/etc/systemd/system/service-test.service" <<'END'
[Unit]
Requires=basic.target
After=basic.target
[Service]
Type=oneshot
ExecStart=/root/service-test
ExecStopPost=/bin/systemctl --no-block poweroff
END
rm -f "$root/root/service-test.log"
rm -rf "$root/var/lib/invhw"
timeout --kill-after=10 180 "${container[@]}" --boot systemd.unit=service-test.service >"$root/root/boot.log" 2>&1 ||
    fail "the container does not boot or end, see $root/root/boot.log"
[ "$(tail -n 1 "$root/root/service-test.log")" = "passed" ] || fail "$(cat "$root/root/service-test.log")"
echo "service test: under a live systemd the last report outlives a full disk"
