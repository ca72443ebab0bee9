#!/usr/bin/env bash
# make.sh FOLDER: builds the packages from this checkout into the folder: Debian packages and a relocatable archive, for
# x86-64 and for 32-bit x86. The same sources, compiler and SOURCE_DATE_EPOCH (seconds: the time of all packed files) give
# the same bytes, wherever and whenever they are built.
set -euo pipefail
mkdir -p "$1"
out=$(cd "$1" && pwd)
cd "$(dirname "$0")/.."
: "${SOURCE_DATE_EPOCH:?is not set: the time of the last commit, git log -1 --format=%ct}"
export LC_ALL=C.UTF-8 TZ=UTC0
umask 022

# package ARCHITECTURE FLAGS LIBDIR
package() {
    local architecture=$1 flags=$2 libdir=$3 build=build/package-$1
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_INSTALL_LIBDIR="$libdir" -DINVHW_TESTS=OFF -DINVHW_CTL=OFF -DINVHW_DEBIAN_ARCH="$architecture" >&2
    cmake --build "$build" -j "$(nproc)" >&2
    (cd "$build" && cpack -B "$out" >&2)
}

hardening="-D_FORTIFY_SOURCE=2 -fstack-protector-strong -fcf-protection -Wl,-z,relro,-z,now"
package amd64 "$hardening" lib/x86_64-linux-gnu
package i386 "-m32 $hardening" lib/i386-linux-gnu
rm -rf "$out/_CPack_Packages"
