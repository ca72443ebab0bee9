#!/usr/bin/env bash
# run.sh PROGRAMS SECONDS: runs every fuzz target for so long, from its committed corpus; what is found on the way is kept
# beside the programs, not in the sources.
set -euo pipefail
programs=$1
seconds=$2
here=$(cd "$(dirname "$0")" && pwd)
status=0
for program in "$programs"/*_fuzz; do
    name=$(basename "$program" _fuzz)
    found=$programs/../found/$name
    mkdir -p "$found"
    printf '== %s\n' "$name"
    "$program" -max_total_time="$seconds" -print_final_stats=1 -rss_limit_mb=2048 -timeout=10 \
        -artifact_prefix="$found/" "$found" "$here/corpus/$name" 2>&1 |
        { grep -E '^stat::number|ERROR|SUMMARY|artifact_prefix' || true; } || status=1
done
exit $status
