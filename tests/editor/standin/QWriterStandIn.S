// The entry points of the stand-in editor library (x86-64, GNU assembler). Each export
// loads the name it is exported under into r10 and enters the shared recorder, which puts
// the four argument registers into the caller's home area, so that they and the stack
// arguments after them lie in one row, keeps xmm0 to xmm3, and hands both to
// quillStandInRecord. Its result comes back in rax, and quillStandInDouble in xmm0.
    .intel_syntax noprefix

#define QUILL_STANDIN(name, exported, lookup)                                                  \
    .section .rdata, "dr";                                                                     \
    quill_name_##name: lookup;                                                                 \
    .text;                                                                                     \
    .def quill_standin_##name; .scl 2; .type 32; .endef;                                       \
    .globl quill_standin_##name;                                                               \
    .p2align 4;                                                                                \
    quill_standin_##name: lea r10, [rip + quill_name_##name];                                  \
    jmp quillStandInEntry;                                                                     \
    .section .drectve;                                                                         \
    .ascii " -export:";                                                                        \
    exported;                                                                                  \
    .ascii "=quill_standin_";                                                                  \
    .ascii #name;

#define QUILL_ENTRY(name) QUILL_STANDIN(name, .ascii #name, .asciz #name)
#define QUILL_DECORATED(name, bytes)                                                           \
    QUILL_STANDIN(name, .ascii "\"_"; .ascii #name; .ascii "@"; .ascii #bytes; .ascii "\"",    \
                  .ascii "_"; .ascii #name; .ascii "@"; .asciz #bytes)

#include "QuillEntries.inc"

    .text
    .p2align 4
    .def quillStandInEntry; .scl 3; .type 32; .endef
    .seh_proc quillStandInEntry
quillStandInEntry:
    mov [rsp + 0x08], rcx
    mov [rsp + 0x10], rdx
    mov [rsp + 0x18], r8
    mov [rsp + 0x20], r9
    sub rsp, 0x58
    .seh_stackalloc 0x58
    .seh_endprologue
    movsd [rsp + 0x20], xmm0
    movsd [rsp + 0x28], xmm1
    movsd [rsp + 0x30], xmm2
    movsd [rsp + 0x38], xmm3
    mov rcx, r10
    lea rdx, [rsp + 0x60]
    lea r8, [rsp + 0x20]
    call quillStandInRecord
    movsd xmm0, [rip + quillStandInDouble]
    add rsp, 0x58
    ret
    .seh_endproc
