#!/usr/bin/env bash
# rows_test.sh SOURCES: what ARCHITECTURE.md says of where rows are made is true: the lines that add values stand in Group
# files, or in files that it names.
set -euo pipefail
cd "$1"

files=$(grep -rlE 'row(->|\.)add(ULong|String|Float|DateTime)\([A-Z]' linux)
[ "$(grep -c 'Group\.cpp$' <<<"$files")" -ge 10 ] || { echo "rows_test: rows are added in another way than it knows"; exit 1; }
named=$(grep -v '^linux/[A-Za-z]*Group\.cpp$' <<<"$files" || true)
for file in $named; do
    grep -qF "\`$file\`" docs/ARCHITECTURE.md || { echo "rows_test: ARCHITECTURE.md does not name $file"; exit 1; }
done
