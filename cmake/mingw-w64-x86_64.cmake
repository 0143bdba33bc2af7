# Cross compiling for Windows x86-64 with MinGW-w64 (posix thread model).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(_triplet x86_64-w64-mingw32)
find_program(CMAKE_C_COMPILER NAMES ${_triplet}-gcc-posix ${_triplet}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${_triplet}-g++-posix ${_triplet}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${_triplet}-windres windres REQUIRED)

include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-sysroot.cmake)
