# Cross compiling for Windows x86-64 with clang, on the MinGW-w64 headers and import libraries
# and the C++ library of the MinGW-w64 GCC (posix thread model): the same runtime DLLs as the
# GCC build, another compiler front end.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(_triplet x86_64-w64-mingw32)
find_program(CMAKE_C_COMPILER NAMES clang REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES clang++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${_triplet}-windres windres REQUIRED)
set(CMAKE_C_COMPILER_TARGET ${_triplet})
set(CMAKE_CXX_COMPILER_TARGET ${_triplet})
set(CMAKE_ASM_COMPILER_TARGET ${_triplet})

# clang does not recognise GCC's "12-posix" folder as a version, so it finds neither the C++
# headers nor the libraries of the MinGW-w64 GCC by itself: name the newest posix one.
file(GLOB _gcc_dirs LIST_DIRECTORIES true /usr/lib/gcc/${_triplet}/*-posix)
list(SORT _gcc_dirs COMPARE NATURAL ORDER DESCENDING)
list(GET _gcc_dirs 0 _gcc_dir)
if(NOT IS_DIRECTORY "${_gcc_dir}/include/c++")
    message(FATAL_ERROR "No posix-thread MinGW-w64 GCC under /usr/lib/gcc/${_triplet}")
endif()
set(_cxx_includes "-isystem ${_gcc_dir}/include/c++ -isystem ${_gcc_dir}/include/c++/${_triplet} -isystem ${_gcc_dir}/include/c++/backward")
set(CMAKE_CXX_FLAGS_INIT "${_cxx_includes}")
# The libraries of that GCC; its posix thread model needs winpthreads, which -pthread links
# (the GCC driver adds it by itself).
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L${_gcc_dir} -pthread")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-L${_gcc_dir} -pthread")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-L${_gcc_dir} -pthread")
# Where the runtime DLLs that the programs load are found (see MinGWRuntime.cmake).
set(VMGUI_MINGW_RUNTIME_DIRS ${_gcc_dir} /usr/${_triplet}/lib)

include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-sysroot.cmake)
