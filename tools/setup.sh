#!/usr/bin/env bash
# Installs, only when missing, what building and testing VmGui needs on Debian:
# CMake, Ninja, the MinGW-w64 cross compiler (posix threads), Wine, GoogleTest's sources,
# the host compilers for the native sanitizer and fuzzing builds of VmBase, clang (which
# also builds the Windows targets, on the MinGW-w64 headers and libraries) and Doxygen for
# the API reference.
#
# With --demo, also what tools/run-demo.sh needs to show the demo program: a virtual X
# server, ImageMagick for the screenshots, Wine's own fonts (the symbols of the caption
# buttons and the dialog fonts of Windows), and the German locale that the demo runs in.
set -euo pipefail

demo=false
for argument in "$@"; do
    case "$argument" in
        --demo) demo=true ;;
        *)
            echo "usage: setup.sh [--demo]" >&2
            exit 2
            ;;
    esac
done

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
    doxygen
)
if [ "$demo" = true ]; then
    packages+=(
        xvfb
        imagemagick
        fonts-wine
        locales
    )
fi

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$package")
    fi
done

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi

if [ ${#missing[@]} -eq 0 ]; then
    echo "setup: everything needed is installed"
else
    echo "setup: installing ${missing[*]}"
    $sudo apt-get update -q
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# The demo's texts are German: Wine takes its locale (code page 1252, German button texts)
# from the environment, which needs the locale to exist.
if [ "$demo" = true ] && ! locale -a 2>/dev/null | grep -qix 'de_DE\.utf-\?8'; then
    echo "setup: generating the locale de_DE.UTF-8"
    $sudo localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
