# Writes the MASM forwarders of the editor library from the list and checks what the MSVC
# build would assemble and export: one procedure and one export per entry, 122 in all, the
# decorated lookup name of QuillDll_SetWatermarkText, and the shared thunk.
#
#     cmake -DSCRIPT=QuillForwardersMasm.cmake -DENTRIES=QuillEntries.inc -DOUT=dir -P this
file(MAKE_DIRECTORY "${OUT}")
execute_process(COMMAND ${CMAKE_COMMAND} -DENTRIES=${ENTRIES} -DASM=${OUT}/forwarders.asm
                        -DDEF=${OUT}/forwarders.def -P ${SCRIPT}
                RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "the generator failed: ${result}")
endif()
file(STRINGS "${OUT}/forwarders.asm" procedures REGEX "^QuillDll_[A-Za-z0-9_]+ proc$")
file(STRINGS "${OUT}/forwarders.def" exports REGEX "^    QuillDll_")
list(LENGTH procedures procedureCount)
list(LENGTH exports exportCount)
if(NOT procedureCount EQUAL 122 OR NOT exportCount EQUAL 122)
    message(FATAL_ERROR "${procedureCount} procedures and ${exportCount} exports, not 122")
endif()
file(READ "${OUT}/forwarders.asm" text)
foreach(expected "db '_QuillDll_SetWatermarkText@8', 0" "db 'QuillDll_AppIsIdle', 0"
                 "gwQuillForward proc frame" "call gwQuillResolve" "jmp rax")
    string(FIND "${text}" "${expected}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "missing: ${expected}")
    endif()
endforeach()
