# The MinGW runtime DLLs that our DLLs and programs load: copied beside them in the
# build tree and installed to bin/.
set(VMGUI_RUNTIME_DLLS "")
if(MINGW)
    foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(IS_ABSOLUTE "${path}" AND EXISTS "${path}")
            get_filename_component(path "${path}" REALPATH)
            file(COPY "${path}" DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
            list(APPEND VMGUI_RUNTIME_DLLS "${path}")
        endif()
    endforeach()
endif()
