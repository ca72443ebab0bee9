#!/usr/bin/env bash
# Builds the packages into build/packages/: Debian packages and a relocatable archive, for x86-64 and for 32-bit x86, and
# checks the Debian ones with lintian.
set -euo pipefail
cd "$(dirname "$0")/.."
out=$PWD/build/packages
rm -rf "$out"
mkdir -p "$out"

# package ARCHITECTURE FLAGS LIBDIR
package() {
    local architecture=$1 flags=$2 libdir=$3 build=build/package-$1
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_INSTALL_LIBDIR="$libdir" -DINVHW_TESTS=OFF -DINVHW_DEBIAN_ARCH="$architecture" >&2
    cmake --build "$build" -j "$(nproc)" >&2
    (cd "$build" && cpack -B "$out" >&2)
}

hardening="-D_FORTIFY_SOURCE=2 -fstack-protector-strong -Wl,-z,relro,-z,now"
package amd64 "$hardening" lib/x86_64-linux-gnu
package i386 "-m32 $hardening" lib/i386-linux-gnu
rm -rf "$out/_CPack_Packages"
lintian --fail-on error,warning "$out"/*.deb
packaging/test.sh "$out"
ls -l "$out"
