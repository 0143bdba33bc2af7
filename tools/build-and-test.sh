#!/usr/bin/env bash
# Sets up the machine, builds everything with warnings as errors and runs all tests:
#   1. VmBase and the platform-neutral pieces natively under AddressSanitizer and
#      UndefinedBehaviorSanitizer, and the parsers' fuzz targets for a bounded time;
#   2. the Windows build (VmBase.dll, VmGui.dll, tests, tools) with MinGW-w64;
#   3. installation and a consumer project built against the installed CMake package;
#   4. every test executable under Wine, headless; CTest's summary ends the output.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build="${VMGUI_BUILD_DIR:-$root/build}"
native="$build-native"
jobs=$(nproc)

bash "$root/tools/setup.sh"

echo "== VmBase and the platform-neutral pieces, native, with sanitizers"
cmake -S "$root" -B "$native" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVMGUI_SANITIZE=ON \
    -DVMGUI_WERROR=ON -DCMAKE_CXX_COMPILER=g++ -DCMAKE_C_COMPILER=gcc >/dev/null
cmake --build "$native" -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir "$native" --output-on-failure -j "$jobs"

echo "== Fuzzing the parsers"
# VMGUI_FUZZ_SECONDS is the time of all targets together, shared equally among them.
VMGUI_WERROR=ON VMGUI_FUZZ_DIR="$build-fuzz" bash "$root/tools/fuzz.sh" "${VMGUI_FUZZ_SECONDS:-280}"

echo "== Windows build"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVMGUI_WERROR=ON \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" >/dev/null
cmake --build "$build" -j "$jobs"

echo "== Installed package and a consumer"
rm -rf "$build/install"
cmake --install "$build" --prefix "$build/install" >/dev/null
cmake -S "$root/examples/consumer" -B "$build/consumer" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" \
    -DCMAKE_PREFIX_PATH="$build/install" >/dev/null
cmake --build "$build/consumer"
cp "$build/install/bin/"*.dll "$build/consumer/"
VMGUI_WINEPREFIX="$build/wineprefix" "$root/tools/wine-run.sh" "$build/consumer/consumer.exe"

echo "== Tests under Wine"
ctest --test-dir "$build" --output-on-failure -j "$jobs"
