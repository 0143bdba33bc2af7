# vmgui_add_wine_test(<target> [NAME <test>] [ARGS <argument>...] [TIMEOUT <seconds>]
#                     [DLL_DIRS <folder>...])
#
# Registers the test program <target> with CTest (under the name <test>, by default the
# target's name). Cross compiled for Windows on another host, the test runs through the Wine
# wrapper wine-run.sh: in a Wine prefix of its own in this build (VMGUI_WINEPREFIX, by default
# <build>/wineprefix), booted once with Wine's null graphics driver so that windows, timers
# and GDI work without a display, with one persistent Wine server for the whole run and Wine's
# background services detached from the test's output. VmGui's DLLs and those of DLL_DIRS are
# found through WINEPATH. Built on Windows, the test runs directly with those folders in PATH.
# Tests take turns on the one desktop (RESOURCE_LOCK desktop), so that no other test program
# takes the keyboard focus from a test's windows.
#
# What the function needs is set before this file is included: VMGUI_WINE_RUN, the wrapper,
# and VMGUI_DLL_DIRS, the folders of VmGui's DLLs (empty when they lie beside the tests).
include_guard(GLOBAL)

set_property(GLOBAL PROPERTY VMGUI_WINE_RUN "${VMGUI_WINE_RUN}")
set_property(GLOBAL PROPERTY VMGUI_DLL_DIRS "${VMGUI_DLL_DIRS}")
set(VMGUI_WINEPREFIX "${CMAKE_BINARY_DIR}/wineprefix" CACHE PATH
    "The Wine prefix of the tests run through Wine")

function(vmgui_add_wine_test target)
    cmake_parse_arguments(ARG "" "NAME;TIMEOUT" "ARGS;DLL_DIRS" ${ARGN})
    if(NOT ARG_NAME)
        set(ARG_NAME ${target})
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 600)
    endif()
    get_property(wine_run GLOBAL PROPERTY VMGUI_WINE_RUN)
    get_property(dll_dirs GLOBAL PROPERTY VMGUI_DLL_DIRS)
    list(APPEND dll_dirs ${ARG_DLL_DIRS})

    if(CMAKE_SYSTEM_NAME STREQUAL "Windows" AND NOT CMAKE_HOST_WIN32)
        if(NOT wine_run)
            message(FATAL_ERROR "vmgui_add_wine_test: VMGUI_WINE_RUN names no Wine wrapper")
        endif()
        add_test(NAME ${ARG_NAME} COMMAND ${wine_run} $<TARGET_FILE:${target}> ${ARG_ARGS})
        # The wrapper turns the folders (separated by colons) into WINEPATH.
        string(REPLACE ";" ":" dll_path "${dll_dirs}")
        set_tests_properties(${ARG_NAME} PROPERTIES ENVIRONMENT
            "VMGUI_WINEPREFIX=${VMGUI_WINEPREFIX};VMGUI_DLL_DIRS=${dll_path}")
    else()
        add_test(NAME ${ARG_NAME} COMMAND ${target} ${ARG_ARGS})
        if(CMAKE_HOST_WIN32 AND dll_dirs)
            set(modifications "")
            foreach(folder IN LISTS dll_dirs)
                file(TO_NATIVE_PATH "${folder}" folder)
                list(APPEND modifications "PATH=path_list_prepend:${folder}")
            endforeach()
            set_tests_properties(${ARG_NAME} PROPERTIES
                ENVIRONMENT_MODIFICATION "${modifications}")
        endif()
    endif()
    set_tests_properties(${ARG_NAME} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
    if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
        set_tests_properties(${ARG_NAME} PROPERTIES RESOURCE_LOCK desktop)
    endif()
endfunction()
