# vmgui_rctoolbar(<output.rc> <input.txt>)
#
# Runs rctoolbar at build time (through CMAKE_CROSSCOMPILING_EMULATOR, that is Wine, when
# cross compiling) to turn the tool-bar text <input.txt> into the resource script
# <output.rc> of type-241 resources. Paths, rebuilding and the use from a resource script
# are those of vmgui_rcattr (VmGuiRcAttr.cmake):
#
#     vmgui_rctoolbar(data/toolbars.rc data/toolbars.txt)
#     set_source_files_properties(data/app.rc PROPERTIES
#         OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/data/toolbars.rc)
#     target_include_directories(my_target PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/data)
include_guard(GLOBAL)
include(${CMAKE_CURRENT_LIST_DIR}/VmGuiRcAttr.cmake)

function(vmgui_rctoolbar output input)
    vmgui_rc_tool(rctoolbar "tool-bar resources" "${output}" "${input}")
endfunction()
