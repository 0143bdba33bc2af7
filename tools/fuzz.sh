#!/usr/bin/env bash
# Fuzzes a parser of untrusted bytes with libFuzzer (clang, native build).
#
#     tools/fuzz.sh [SECONDS] [extra libFuzzer options...]
#
# VMGUI_FUZZ_TARGET chooses the target: rcdata_parser_fuzz (the attribute-data parser, the
# default, seeds in fuzz/corpus) or metafile_format_fuzz (metafile format detection, seeds
# in fuzz/corpus-metafile). Configures and builds build-fuzz (or VMGUI_FUZZ_DIR) with clang,
# then runs the target for SECONDS (default 60) from its seed corpus. New inputs go to the
# build folder's corpus, never into the sources; a crash or a broken property leaves its
# input in the build folder's artifacts/ and makes this script fail.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build="${VMGUI_FUZZ_DIR:-$root/build-fuzz}"
seconds="${1:-60}"
target="${VMGUI_FUZZ_TARGET:-rcdata_parser_fuzz}"
case "$target" in
    rcdata_parser_fuzz)
        seeds="$root/fuzz/corpus"
        options=(-dict="$root/fuzz/rcdata.dict")
        ;;
    metafile_format_fuzz)
        seeds="$root/fuzz/corpus-metafile"
        options=()
        ;;
    *)
        echo "fuzz.sh: unknown target '$target'" >&2
        exit 2
        ;;
esac
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
cmake --build "$build" --target "$target"

program=$(find "$build" -name "$target" -type f -perm -u+x | head -n 1)
if [ -z "$program" ]; then
    echo "fuzz.sh: $target was not built (is $cxx clang?)" >&2
    exit 1
fi

corpus="$build/corpus-$target"
mkdir -p "$corpus" "$build/artifacts"
echo "fuzz.sh: running $program for $seconds s"
"$program" "$corpus" "$seeds" \
    "${options[@]}" \
    -max_total_time="$seconds" \
    -artifact_prefix="$build/artifacts/" \
    -print_final_stats=1 \
    "$@"
