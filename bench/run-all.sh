#!/usr/bin/env bash
# Every benchmark in one command: installs what is missing, builds a Release tree, runs each
# benchmark program under Wine pinned to one CPU (bench/run.sh) and prints one table of the
# figures, also written as Markdown to <build>/bench-table.md.
#     bash bench/run-all.sh            (Release tree in build-release)
# The programs' full reports go to <build>/bench-<name>.log.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${VMGUI_BENCH_BUILD_DIR:-$root/build-release}"

bash "$root/tools/setup.sh"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVMGUI_BUILD_BENCH=ON \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" >/dev/null
cmake --build "$build" --target benchmarks

rows="$build/bench-rows.txt"
: >"$rows"
for program in "$build"/bin/*_bench.exe; do
    name=$(basename "$program" .exe)
    echo "== $name" >&2
    if ! bash "$root/bench/run.sh" "$program" >"$build/bench-$name.log" 2>&1; then
        echo "$name failed; its report: $build/bench-$name.log" >&2
        tail -n 20 "$build/bench-$name.log" >&2
        exit 1
    fi
    tr -d '\r' <"$build/bench-$name.log" | grep '^ROW|' | sed "s/^ROW|/$name|/" >>"$rows"
done

machine=$(grep -m1 'model name' /proc/cpuinfo | sed 's/.*: //')
{
    echo "Measured $(date -u +%Y-%m-%d) on $machine, $(nproc) cores, $(wine --version 2>/dev/null),"
    echo "Release build, wineserver and benchmark pinned to one CPU."
    echo
    echo "| program | benchmark | library | raw Win32 (reference) | unit | ratio | target | met |"
    echo "|---|---|---:|---:|---|---:|---:|---|"
    awk -F'|' '{
        ratio = ($6 + 0 > 0) ? sprintf("%.2f", $6) : "-";
        reference = ($4 + 0 > 0) ? sprintf("%.1f", $4) : "-";
        if ($7 + 0 > 0) {
            target = sprintf("%.2f", $7);
            met = ($6 + 0 <= $7 + 0) ? "yes" : "no";
        } else {
            target = "-"; met = "-";
        }
        printf "| %s | %s | %.1f | %s | %s | %s | %s | %s |\n", $1, $2, $3, reference, $5, ratio, target, met
    }' "$rows"
} | tee "$build/bench-table.md"
