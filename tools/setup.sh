#!/usr/bin/env bash
# Installs, only when missing, what building and testing VmGui needs on Debian:
# CMake, Ninja, the MinGW-w64 cross compiler (posix threads), Wine, GoogleTest's sources,
# and the host compilers for the native sanitizer and fuzzing builds of VmBase.
set -euo pipefail

packages=(
    cmake
    ninja-build
    g++
    clang
    libclang-rt-14-dev
    g++-mingw-w64-x86-64-posix
    binutils-mingw-w64-x86-64
    wine
    wine64
    googletest
    util-linux
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    echo "setup: everything needed is installed"
    exit 0
fi

echo "setup: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
$sudo apt-get update -q
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
