#!/usr/bin/env bash
# readme_test.sh SOURCES: runs the commands that the README gives for reading a report, on a recorded report.
set -euo pipefail
sources=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp "$sources/tests/machines/redhat9-kernel24/expected.xml" "$folder/report.xml"
ln -s "$sources/docs" "$folder/docs"
cd "$folder"

commands=$(sed -n '/^## Read it/,/^## /p' "$sources/README.md" | grep -E '^xml(lint|starlet) ')
[ "$(wc -l <<<"$commands")" -eq 4 ] || { echo "readme_test: the README shows other commands than this test knows"; exit 1; }

run() { sed -n "$1p" <<<"$commands" | bash -euo pipefail; }
[ "$(run 1)" = "Red Hat Linux release 9 (Shrike) " ]
run 2
[ "$(run 3 | wc -l)" -eq "$(grep -c '<Partition version' report.xml)" ]
run 3 | grep -qx '/: [0-9]* kB'
[ "$(run 4)" = "WDC WD400BB-00DEA0" ]
echo "the README's commands read a report"
