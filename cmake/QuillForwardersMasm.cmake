# Writes the forwarders of the editor library's entry points for MASM (the MSVC build) from
# the one list src/editor/QuillEntries.inc, with the same layout as QuillForwarders.S: each
# export loads the address of its lookup name into r10 and enters one shared thunk, which
# keeps rcx, rdx, r8, r9 and xmm0 to xmm3, asks gwQuillResolve for the entry point and jumps
# to it. Also writes the module-definition file that exports the names.
#
#     cmake -DENTRIES=QuillEntries.inc -DASM=out.asm -DDEF=out.def -P QuillForwardersMasm.cmake
file(STRINGS "${ENTRIES}" lines REGEX "^QUILL_(ENTRY|DECORATED)\\(")
set(data "")
set(code "")
set(exports "")
foreach(line IN LISTS lines)
    if(line MATCHES "^QUILL_ENTRY\\(([A-Za-z0-9_]+)\\)")
        set(name "${CMAKE_MATCH_1}")
        set(lookup "${name}")
    elseif(line MATCHES "^QUILL_DECORATED\\(([A-Za-z0-9_]+), *([0-9]+)\\)")
        set(name "${CMAKE_MATCH_1}")
        set(lookup "_${name}@${CMAKE_MATCH_2}")
    else()
        message(FATAL_ERROR "${ENTRIES}: cannot read '${line}'")
    endif()
    string(APPEND data "quill_lookup_${name} db '${lookup}', 0\n")
    string(APPEND code "${name} proc\n    lea r10, quill_lookup_${name}\n    jmp gwQuillForward\n${name} endp\n\n")
    string(APPEND exports "    ${name}\n")
endforeach()
list(LENGTH lines count)
file(WRITE "${ASM}" "; Written from QuillEntries.inc by QuillForwardersMasm.cmake: ${count} forwarders.
extern gwQuillResolve:proc

.const
${data}
.code
gwQuillForward proc frame
    sub rsp, 88h
    .allocstack 88h
    .endprolog
    mov [rsp + 60h], rcx
    mov [rsp + 68h], rdx
    mov [rsp + 70h], r8
    mov [rsp + 78h], r9
    movdqu xmmword ptr [rsp + 20h], xmm0
    movdqu xmmword ptr [rsp + 30h], xmm1
    movdqu xmmword ptr [rsp + 40h], xmm2
    movdqu xmmword ptr [rsp + 50h], xmm3
    mov rcx, r10
    call gwQuillResolve
    movdqu xmm0, xmmword ptr [rsp + 20h]
    movdqu xmm1, xmmword ptr [rsp + 30h]
    movdqu xmm2, xmmword ptr [rsp + 40h]
    movdqu xmm3, xmmword ptr [rsp + 50h]
    mov rcx, [rsp + 60h]
    mov rdx, [rsp + 68h]
    mov r8, [rsp + 70h]
    mov r9, [rsp + 78h]
    add rsp, 88h
    jmp rax
gwQuillForward endp

${code}end
")
file(WRITE "${DEF}" "; Written from QuillEntries.inc by QuillForwardersMasm.cmake.\nEXPORTS\n${exports}")
