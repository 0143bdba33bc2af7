# vmgui_rcattr(<output.rc> <input.txt>)
#
# Runs rcattr at build time (through CMAKE_CROSSCOMPILING_EMULATOR, that is Wine, when
# cross compiling) to turn the attribute text <input.txt> into the resource script
# <output.rc>. A relative <output.rc> is taken in the current binary folder, a relative
# <input.txt> in the current source folder. The output is rebuilt when the input or rcattr
# changes. A resource script that #includes it needs, in the same folder's CMakeLists:
#
#     vmgui_rcattr(data/attributes.rc data/attributes.txt)
#     set_source_files_properties(data/test.rc PROPERTIES
#         OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/data/attributes.rc)
#     target_include_directories(my_target PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/data)
include_guard(GLOBAL)

# vmgui_rc_tool(<tool> <what> <output.rc> <input.txt>): the build-time run of one of the
# resource-script tools (rcattr, rctoolbar), as described above.
function(vmgui_rc_tool name what output input)
    get_filename_component(output "${output}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
    get_filename_component(input "${input}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    get_filename_component(folder "${output}" DIRECTORY)
    # The tool of this build, or the installed one of find_package(VmGui).
    set(tool ${name})
    if(TARGET VmGui::${name})
        set(tool VmGui::${name})
    endif()
    add_custom_command(
        OUTPUT "${output}"
        COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}"
        COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${tool}> "${input}" "${output}"
        DEPENDS ${tool} "${input}"
        COMMENT "Writing ${what} ${output}"
        VERBATIM)
endfunction()

function(vmgui_rcattr output input)
    vmgui_rc_tool(rcattr "attribute data" "${output}" "${input}")
endfunction()
