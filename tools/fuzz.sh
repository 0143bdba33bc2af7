#!/usr/bin/env bash
# Fuzzes the platform-neutral parsers with libFuzzer (clang, native build).
#
#     tools/fuzz.sh [TOTAL_SECONDS] [TARGET...]
#
# Configures and builds build-fuzz (or VMGUI_FUZZ_DIR) with clang, then runs each target
# (default: all of them) from its seed corpus in fuzz/, each for an equal share of
# TOTAL_SECONDS (default 280, so that the test command stays within five minutes of fuzzing):
#   rcdata_parser_fuzz  the attribute-data parser (corpus fuzz/corpus, dictionary rcdata.dict)
#   number_text_fuzz    the edit field's number reading and formatting (fuzz/number-corpus)
#   metafile_format_fuzz  the metafile context's file format detection (fuzz/corpus-metafile)
#   file_select_paths_fuzz  the file dialog's result buffer and filter (fuzz/file-select-corpus)
#   toolbar_resource_fuzz  the tool-bar resource reader and writer (fuzz/toolbar-corpus)
#   string_fuzz         the base library's String (fuzz/string-corpus)
#   fileio_fuzz         the base library's FileIO reading a foreign file (fuzz/fileio-corpus)
# VMGUI_WERROR=ON makes warnings errors, as the test command does.
# New inputs go to the build folder's corpus-TARGET, never into the sources; a crash or a
# broken property leaves its input in the build folder's artifacts/ and makes this script fail.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build="${VMGUI_FUZZ_DIR:-$root/build-fuzz}"
total="${1:-280}"
shift $(( $# > 0 ? 1 : 0 ))
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(rcdata_parser_fuzz number_text_fuzz metafile_format_fuzz file_select_paths_fuzz
        toolbar_resource_fuzz string_fuzz fileio_fuzz)
fi
seconds=$(( total / ${#targets[@]} ))
if [ "$seconds" -lt 1 ]; then
    seconds=1
fi

cc="${CC:-clang}"
cxx="${CXX:-clang++}"

generator=()
if command -v ninja >/dev/null 2>&1; then
    generator=(-G Ninja)
fi

cmake -S "$root" -B "$build" "${generator[@]}" \
    -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVMGUI_BUILD_TESTS=OFF \
    -DVMGUI_WERROR="${VMGUI_WERROR:-OFF}" >/dev/null
cmake --build "$build" --target "${targets[@]}"

mkdir -p "$build/artifacts"
for target in "${targets[@]}"; do
    program=$(find "$build" -name "$target" -type f -perm -u+x | head -n 1)
    if [ -z "$program" ]; then
        echo "fuzz.sh: $target was not built (is $cxx clang?)" >&2
        exit 1
    fi
    options=()
    case "$target" in
        rcdata_parser_fuzz) seeds="$root/fuzz/corpus"; options=(-dict="$root/fuzz/rcdata.dict") ;;
        number_text_fuzz) seeds="$root/fuzz/number-corpus" ;;
        metafile_format_fuzz) seeds="$root/fuzz/corpus-metafile" ;;
        file_select_paths_fuzz) seeds="$root/fuzz/file-select-corpus" ;;
        toolbar_resource_fuzz) seeds="$root/fuzz/toolbar-corpus" ;;
        string_fuzz) seeds="$root/fuzz/string-corpus" ;;
        fileio_fuzz) seeds="$root/fuzz/fileio-corpus" ;;
        *)
            echo "fuzz.sh: unknown target $target" >&2
            exit 2
            ;;
    esac
    mkdir -p "$build/corpus-$target"
    echo "fuzz.sh: running $program for $seconds s of $total s"
    "$program" "$build/corpus-$target" "$seeds" \
        "${options[@]}" \
        -max_total_time="$seconds" \
        -artifact_prefix="$build/artifacts/" \
        -print_final_stats=1
done
