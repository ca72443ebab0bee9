#!/usr/bin/env bash
# install_test.sh BUILD COMPILER FLAGS: installs the build into a temporary folder, runs the installed program from there
# in several locales and as the README's job of cron does, and builds and runs the example with the installed CMake package
# and with pkg-config.
set -euo pipefail
build=$1
compiler=$2
flags=$3
sources=$(cd "$(dirname "$0")/../.." && pwd)
example=$sources/examples/list-groups
top=$(mktemp -d)
trap 'rm -rf "$top"' EXIT

fail() {
    printf 'install_test: %s\n' "$*" >&2
    exit 1
}

# Installed in one place and moved to another: nothing may know where it was put first.
cmake --install "$build" --prefix "$top/first" >/dev/null
mv "$top/first" "$top/usr"

for locale in C C.UTF-8 xx_YY.nowhere; do
    mkdir "$top/scan"
    (cd "$top/scan" && env -i PATH="$PATH" LC_ALL="$locale" "$top/usr/sbin/invhw" >report.xml)
    tail -c 18 "$top/scan/report.xml" | grep -qx '</serviceDataList>' || fail "no whole report in locale $locale"
    [ -s "$top/scan/libInvHW.log" ] || fail "no log in locale $locale"
    rm -r "$top/scan"
done
job=$(sed -n 's/^15 3 \* \* \*  root  //p' "$sources/README.md")
mkdir "$top/state"
job=${job//\/opt\/invhw/$top/usr}
env -i PATH=/usr/bin:/bin sh -c "${job//\/var\/lib\/invhw/$top/state}"
[ "$(tail -n 1 "$top/state/report.xml")" = "</serviceDataList>" ] || fail "no whole report from the README's job"
[ -f "$top/usr/lib/invhw/generic/codeset/ANSIX341968" ] || fail "the tables are not where the program looks for them"

cmake -G Ninja -S "$example" -B "$top/example" -DCMAKE_PREFIX_PATH="$top/usr" -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$top/example" >/dev/null
(cd "$top/example" && ./list-groups >groups.txt)
grep -qx 'Operating System' "$top/example/groups.txt" || fail "the example lists no groups"
grep -q '^  Name  *' "$top/example/groups.txt" || fail "the example prints no row"

pc=$(find "$top/usr" -name invhw.pc)
libs=$(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --libs --cflags invhw)
case $libs in
*-std=*) fail "pkg-config forces a language standard: $libs" ;;
esac
# shellcheck disable=SC2086 # a list of words
"$compiler" $flags "$example/main.cpp" $libs -o "$top/by-pkg-config"
(cd "$top" && ./by-pkg-config | cmp -s - <(cd "$top/example" && ./list-groups)) ||
    printf 'install_test: two scans differ, as they may when the machine changes\n'
echo "installed program and example run"
