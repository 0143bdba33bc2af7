#!/usr/bin/env bash
# Sets up the machine, builds everything with warnings as errors and runs all tests:
#   1. the Windows build (VmBase.dll, VmGui.dll, tests, tools, the API reference) with
#      MinGW-w64 GCC; its soak program then runs in the background, in a Wine prefix of its
#      own, while the steps below go on (step 6 waits for it);
#   2. VmBase, the platform-neutral pieces (the parsers, the object model's core) and the
#      resource-script writers natively under AddressSanitizer and
#      UndefinedBehaviorSanitizer, and the fuzz targets for a bounded time;
#   3. installation and a consumer project built against the installed CMake package, whose
#      own tests (its program, and a dialog of its own driven by the installed test kit) run
#      under Wine;
#   4. the same build, installation and consumer with clang on the MinGW-w64 headers and
#      libraries, warnings as errors, and its tests under Wine;
#   5. every test executable of the GCC build under Wine, headless, among them the README's
#      first program, driven until it ends by itself; CTest's summary ends the output;
#   6. the end of the soak run: VMGUI_SOAK_CYCLES cycles (10,000 unless set; about 0.12 s
#      each on a 2-core machine), failing when anything grew after the warm-up; its report
#      is printed and kept in <build>/soak.log.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${VMGUI_BUILD_DIR:-$root/build}"
native="$build-native"
clang="$build-clang"
jobs=$(nproc)

bash "$root/tools/setup.sh"

echo "== Windows build"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVMGUI_WERROR=ON \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" >/dev/null
cmake --build "$build" -j "$jobs"

# The soak program runs in a prefix of its own (its own Wine server and desktop, so that its
# windows never take the focus from a test), with its output in a file and no terminal.
echo "== Soak under Wine, in the background: ${VMGUI_SOAK_CYCLES:-10000} cycles"
soak_log="$build/soak.log"
VMGUI_WINEPREFIX="$build/wineprefix-soak" "$root/tools/wine-run.sh" "$build/bin/soak.exe" \
    "${VMGUI_SOAK_CYCLES:-10000}" </dev/null >"$soak_log" 2>&1 &
soak_pid=$!
stop_soak() {
    if kill -0 "$soak_pid" 2>/dev/null; then
        kill "$soak_pid" 2>/dev/null || true
        WINEPREFIX="$build/wineprefix-soak" wineserver -k </dev/null >/dev/null 2>&1 || true
    fi
}
trap stop_soak EXIT

echo "== VmBase, the platform-neutral pieces and the script writers, native, with sanitizers"
cmake -S "$root" -B "$native" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVMGUI_SANITIZE=ON \
    -DVMGUI_WERROR=ON -DCMAKE_CXX_COMPILER=g++ -DCMAKE_C_COMPILER=gcc >/dev/null
cmake --build "$native" -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir "$native" --output-on-failure -j "$jobs"

echo "== Fuzzing the parsers"
# VMGUI_FUZZ_SECONDS is the time of all targets together, shared equally among them.
VMGUI_WERROR=ON VMGUI_FUZZ_DIR="$build-fuzz" bash "$root/tools/fuzz.sh" "${VMGUI_FUZZ_SECONDS:-280}"

# Installs a Windows build to <build>/install, builds the consumer against it with the same
# toolchain file and runs its tests (its program, and its own dialog tested with
# VmGui::Testing) through the installed Wine wrapper, with the installed DLLs, in the build's
# prefix.
install_and_consume() {
    local tree="$1" toolchain="$2"
    shift 2
    rm -rf "$tree/install"
    cmake --install "$tree" --prefix "$tree/install" >/dev/null
    cmake -S "$root/examples/consumer" -B "$tree/consumer" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_PREFIX_PATH="$tree/install" \
        -DVMGUI_WINEPREFIX="$tree/wineprefix" "$@" >/dev/null
    # Its tool-bar resource is written by the installed rctoolbar, run through Wine.
    VMGUI_WINEPREFIX="$tree/wineprefix" cmake --build "$tree/consumer"
    ctest --test-dir "$tree/consumer" --output-on-failure
}

echo "== Installed package and a consumer"
install_and_consume "$build" "$root/cmake/mingw-w64-x86_64.cmake"

echo "== Windows build with clang, warnings as errors"
cmake -S "$root" -B "$clang" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/clang-mingw-w64-x86_64.cmake" \
    -DVMGUI_WERROR=ON -DVMGUI_BUILD_DOCS=OFF >/dev/null
cmake --build "$clang" -j "$jobs"
install_and_consume "$clang" "$root/cmake/clang-mingw-w64-x86_64.cmake" \
    -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
echo "== Tests of the clang build under Wine"
ctest --test-dir "$clang" --output-on-failure -j "$jobs"

echo "== Tests under Wine"
ctest --test-dir "$build" --output-on-failure -j "$jobs"

echo "== Soak under Wine: waiting for its end"
soak_status=0
wait "$soak_pid" || soak_status=$?
tr -d '\r' <"$soak_log"
if [ "$soak_status" -ne 0 ]; then
    echo "The soak run failed (exit code $soak_status)." >&2
    exit 1
fi
