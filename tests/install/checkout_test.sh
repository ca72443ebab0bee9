#!/usr/bin/env bash
# checkout_test.sh SOURCES COMPILER: the sources configure wherever they lie, also below folders whose names mean something
# within them.
set -euo pipefail
sources=$1
compiler=$2
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT
checkout=$top/tables/catalog/invhw
mkdir -p "$checkout"
tar -C "$sources" --exclude=./build --exclude=./.git -cf - . | tar -C "$checkout" -xf -
cmake -G Ninja -S "$checkout" -B "$top/build" -DCMAKE_CXX_COMPILER="$compiler" -DINVHW_TESTS=OFF >/dev/null
inputs=$(ninja -C "$top/build" -t inputs bin/invhw)
for folder in com SMBIOS codeset linux scanner; do
    grep -q "/$folder/.*\.cpp$" <<<"$inputs" || { echo "checkout_test: the program is built without $folder/" >&2; exit 1; }
done
! grep -q '\.dir/tables/' <<<"$inputs" || { echo "checkout_test: the tables' generator is in the program" >&2; exit 1; }
echo "a checkout below a folder called tables configures"
