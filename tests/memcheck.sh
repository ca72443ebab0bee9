#!/usr/bin/env bash
# memcheck.sh BUILD-FOLDER: scans of recorded machines under Valgrind: no error, and nothing lost. What is still reachable at
# the end is the C++ runtime's emergency pool, the player of the machine, and the tables and code sets of the process.
set -euo pipefail
build=$1
machines=$(cd "$(dirname "$0")/machines" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
status=0
for machine in redhat9-kernel24 scsi-server firmware-server modern-server; do
    echo "== $machine"
    (cd "$folder" && rm -f ./* && env -i PATH="$PATH" valgrind --quiet --trace-children=yes --leak-check=full \
        --errors-for-leak-kinds=definite,indirect --error-exitcode=1 env -i FAKEMACHINE="$machines/$machine" \
        FAKEMACHINE_PASS="$build" LC_ALL=C.UTF-8 TZ=UTC0 LD_PRELOAD="$build/lib/libfakemachine.so" "$build/bin/invhw" >report.xml) ||
        status=1
    grep -q '</serviceDataList>' "$folder/report.xml" || status=1
done
[ $status -eq 0 ] && echo "memcheck: no error, nothing lost"
exit $status
