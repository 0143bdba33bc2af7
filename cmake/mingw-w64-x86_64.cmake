# Cross compiling for Windows x86-64 with MinGW-w64 (posix thread model).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(_triplet x86_64-w64-mingw32)
find_program(CMAKE_C_COMPILER NAMES ${_triplet}-gcc-posix ${_triplet}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${_triplet}-g++-posix ${_triplet}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${_triplet}-windres windres REQUIRED)

set(CMAKE_FIND_ROOT_PATH /usr/${_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Packages of ours are installed in prefixes outside the sysroot (CMAKE_PREFIX_PATH).
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Tests and build-time tools run through Wine; the wrapper prepares a private prefix.
if(NOT DEFINED CMAKE_CROSSCOMPILING_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run.sh")
endif()
