#!/usr/bin/env bash
# Fuzzes the attribute-data parser with libFuzzer (clang, native build).
#
#     tools/fuzz.sh [SECONDS] [extra libFuzzer options...]
#
# Configures and builds build-fuzz (or VMGUI_FUZZ_DIR) with clang, then runs
# rcdata_parser_fuzz for SECONDS (default 60) from the seed corpus fuzz/corpus. New inputs
# go to the build folder's corpus, never into the sources; a crash or a broken property
# leaves its input in the build folder's artifacts/ and makes this script fail.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build="${VMGUI_FUZZ_DIR:-$root/build-fuzz}"
seconds="${1:-60}"
shift $(( $# > 0 ? 1 : 0 ))

cc="${CC:-clang}"
cxx="${CXX:-clang++}"

generator=()
if command -v ninja >/dev/null 2>&1; then
    generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
    -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVMGUI_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target rcdata_parser_fuzz

program=$(find "$build" -name rcdata_parser_fuzz -type f -perm -u+x | head -n 1)
if [ -z "$program" ]; then
    echo "fuzz.sh: rcdata_parser_fuzz was not built (is $cxx clang?)" >&2
    exit 1
fi

mkdir -p "$build/corpus" "$build/artifacts"
echo "fuzz.sh: running $program for $seconds s"
"$program" "$build/corpus" "$root/fuzz/corpus" \
    -dict="$root/fuzz/rcdata.dict" \
    -max_total_time="$seconds" \
    -artifact_prefix="$build/artifacts/" \
    -print_final_stats=1 \
    "$@"
