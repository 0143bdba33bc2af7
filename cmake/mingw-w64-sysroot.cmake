# What both Windows toolchain files share: the MinGW-w64 sysroot to search and Wine to run
# what the build makes. Included by them after they set _triplet.
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
