#!/usr/bin/env bash
# Builds the packages into build/packages/ and tries them: lintian, a fresh Debian, a second build in another folder.
set -euo pipefail
cd "$(dirname "$0")/.."
out=$PWD/build/packages
rm -rf "$out"
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
packaging/make.sh "$out"
lintian --fail-on error,warning "$out"/*.deb
packaging/test.sh "$out"
packaging/reproducible.sh "$out"
ls -l "$out"
