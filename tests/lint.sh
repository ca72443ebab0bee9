#!/usr/bin/env bash
# lint.sh [--since COMMIT] [--deep]: everything that can be said about the sources without running them. With a commit the
# slow checks look at the sources of the product that changed since then only, and Clang builds nothing: a first look
# while writing, which leaves tests, and what a changed header does to others, to a whole run.
set -euo pipefail
cd "$(dirname "$0")/.."
status=0
since=
deep=
while [ $# -gt 0 ]; do
    case $1 in
    --since) since=$(git merge-base "${2:?--since needs a commit}" HEAD) && shift ;;
    --deep) deep=1 ;;
    *) printf 'lint: unknown option %s\n' "$1" >&2 && exit 2 ;;
    esac
    shift
done
fail() {
    printf 'lint: %s\n' "$*"
    status=1
}

sources() { git ls-files --cached --others --exclude-standard "${@:-*.cpp}" "*.h"; }

# The product's folders.
folders=(com SMBIOS linux codeset scanner report host tool)

# Sources of the product that the slow checks look at; of a changed header, the source of its name.
checked() {
    local all
    all=$(git ls-files "${folders[@]/%//*.cpp}")
    if [ -z "$since" ]; then
        printf '%s\n' "$all"
    else
        { git diff --name-only "$since"; git ls-files --others --exclude-standard; } | sed 's/\.h$/.cpp/' | sort -u |
            grep -xF "$all" || true
    fi
}

echo "== format"
sources "*.cpp" | xargs clang-format --dry-run -Werror || fail "clang-format (run it with -i)"

echo "== layers: scanner -> linux -> SMBIOS -> com, scanner -> codeset; tool -> host -> report -> com"
# forbid FOLDER INCLUDED...: no file of the folder includes one of the others.
forbid() {
    local folder=$1 other
    shift
    for other in "$@"; do
        ! grep -nE "^#include \"$other/" -r "$folder" --include='*.h' --include='*.cpp' || fail "$folder includes $other"
    done
}
forbid com SMBIOS linux codeset scanner tests
forbid SMBIOS linux codeset scanner tests
forbid linux codeset scanner tests
forbid codeset com SMBIOS linux scanner tests
forbid scanner tests
for folder in com SMBIOS linux codeset scanner; do
    forbid "$folder" report host tool
done
forbid report SMBIOS linux codeset scanner host tool tests
forbid host SMBIOS linux codeset scanner tool tests
forbid tool SMBIOS linux codeset scanner tests

# A room of linux/ includes itself, text/, SMBIOS and com; storage/ besides the device classes that stand above it because
# other programs include them from there. These classes do not look into storage/.
devices='DeviceNode|DriveGeometry|IDEDevices|floppyinfo|ideinfo|scsiinfo'
for room in linux/*/; do
    allowed="$room|linux/text/"
    [ "$room" != linux/storage/ ] || allowed+="|linux/($devices)\\.h\""
    ! grep -nE '^#include "linux/' -r "$room" --include='*.h' --include='*.cpp' | grep -vE "#include \"($allowed)" ||
        fail "$room includes another room of linux/"
done
! git ls-files 'linux/*' | grep -E "^linux/($devices)\.(h|cpp)$" | xargs grep -n '^#include "linux/storage/' ||
    fail "a device class includes linux/storage/"

# A room of host/ includes itself, text/, and the frame that stands above the rooms. Whether a machine is virtual its
# processors tell too, and a recorder walks paths as the root does, leaves the secrets of some files out, and redacts the
# firmware's table by its structures.
for room in host/*/; do
    allowed="$room|host/text/"
    [ "$room" != host/system/ ] || allowed+="|host/processor/"
    [ "$room" != host/record/ ] || allowed+="|host/root/|host/accounts/|host/printer/|host/firmware/"
    ! grep -nE '^#include "host/[a-z]+/' -r "$room" --include='*.h' --include='*.cpp' |
        grep -vE "#include \"($allowed)" || fail "$room includes another room of host/"
done

echo "== compiler warnings (Clang), frames above 16 KB among them"
# Without precompiled headers: every test has to name what it uses.
CI=true cmake --preset clang -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON >/dev/null
[ -n "$since" ] || CI=true cmake --build --preset clang -j "$(nproc)" -- -k 0 >build/clang.log || { grep -E 'error|warning' -A 5 build/clang.log; fail "Clang warns"; }
# A file that no pattern of the build finds, or whose header clang-tidy does not look at, would go unchecked without a word.
compiled=(com SMBIOS linux scanner report host tool tests/unit tests/scan)
for source in $(git ls-files "${compiled[@]/%//*.cpp}"); do
    grep -qF "$PWD/$source\"" build/clang/compile_commands.json || fail "$source is not compiled"
done
tidied=$(sed -n "s/^HeaderFilterRegex: '\(.*\)'$/\1/p" .clang-tidy)
! git ls-files "${folders[@]/%//*.h}" | sed 's|^|/|' | grep -vE "$tidied" ||
    fail "clang-tidy's HeaderFilterRegex misses headers"

echo "== clang-tidy"
# The C library's headers see the project's own folder named linux first where a file of theirs has the same name: none has.
# The second program is full of the library's templates, through which the analyzers of Clang and GCC walk for many
# minutes: they look at it with --deep only.
tidy() { xargs -r -P "$(nproc)" -n 4 clang-tidy --quiet -p build/clang "$@" 2>/dev/null; }
second='^(report|host|tool)/'
tables='^report/catalog/' # nothing to walk through
but() { grep -vE "$1" || true; }
checked | but "$second" | tidy || fail "clang-tidy"
checked | { grep -E "$second" || true; } | tidy ${deep:---checks=-clang-analyzer-*} || fail "clang-tidy"

echo "== cppcheck"
[ -z "$(checked)" ] || cppcheck --quiet --std=c++20 --language=c++ --inline-suppr --error-exitcode=1 -j "$(nproc)" -I . \
    --enable=warning,performance,portability --suppressions-list=tests/cppcheck-suppressions.txt \
    --file-list=<(checked) || fail "cppcheck"

echo "== GCC -fanalyzer"
# Left out are the checks that GCC 12 cannot make in C++: it knows neither that operator new throws (possible-null-*) nor
# objects that are returned or moved (use-of-uninitialized-value, malloc-leak, file-leak; AddressSanitizer and Valgrind look
# for these). Double and mismatched frees, use after free, descriptors, signal handlers, shifts and the rest are checked. Of
# vectors of records, which the second program is full of, it believes that they may copy to the null pointer of an empty one
# (null-dereference; Clang's analyzer looks for these).
analyze() {
    local unable=(possible-null-argument possible-null-dereference use-of-uninitialized-value malloc-leak file-leak)
    case $1 in
    report/* | host/* | tool/*) unable+=(null-dereference) ;;
    esac
    g++ -std=c++20 -O1 -fanalyzer "${unable[@]/#/-Wno-analyzer-}" -Werror -D_FILE_OFFSET_BITS=64 -I. \
        -isystem /usr/include/libxml2 -c "$1" -o /dev/null
}
export -f analyze
unwalked=$second
[ -z "$deep" ] || unwalked=$tables
checked | but "$unwalked" | xargs -r -P "$(nproc)" -I{} bash -c 'analyze {}' || fail "-fanalyzer"

[ $status -eq 0 ] && echo "lint: clean"
exit $status
