# GoogleTest from its sources (Debian's /usr/src/googletest by default), built with the
# project's compiler, and a helper that adds one test executable per subsystem.
set(VMGUI_GTEST_SOURCE_DIR "/usr/src/googletest" CACHE PATH "GoogleTest source tree")

if(VMGUI_BUILD_TESTS)
    enable_testing()
    if(NOT TARGET GTest::gtest_main)
        if(NOT CMAKE_CROSSCOMPILING)
            find_package(GTest CONFIG QUIET)
        endif()
        if(NOT TARGET GTest::gtest_main AND EXISTS ${VMGUI_GTEST_SOURCE_DIR}/CMakeLists.txt)
            set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
            set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
            set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
            add_subdirectory(${VMGUI_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
            if(NOT TARGET GTest::gtest_main)
                add_library(GTest::gtest_main ALIAS gtest_main)
            endif()
        endif()
        if(NOT TARGET GTest::gtest_main)
            message(WARNING "GoogleTest not found: set VMGUI_GTEST_SOURCE_DIR; tests are off")
            set(VMGUI_BUILD_TESTS OFF)
        endif()
    endif()
endif()

# The function that registers a test program, run through Wine when cross compiling; the
# same file is installed with the package for the tests of applications.
set(VMGUI_WINE_RUN "${CMAKE_CURRENT_LIST_DIR}/../tools/wine-run.sh")
set(VMGUI_DLL_DIRS "") # the DLLs lie beside the tests, in <build>/bin
include(${CMAKE_CURRENT_LIST_DIR}/VmGuiWineTest.cmake)

# vmgui_add_test(NAME source... LIBS lib... ARGS arg...): one GoogleTest executable, one CTest
# entry.
function(vmgui_add_test name)
    cmake_parse_arguments(ARG "" "" "LIBS;ARGS" ${ARGN})
    add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE GTest::gtest_main ${ARG_LIBS})
    vmgui_warnings(${name})
    vmgui_add_wine_test(${name} ARGS --gtest_color=no ${ARG_ARGS})
endfunction()
