// The forwarders of the editor library's entry points (x86-64, GNU assembler, Windows
// calling convention). Each export loads the address of its lookup name into r10, which no
// call uses for an argument, and enters the shared thunk. The thunk keeps the argument
// registers (rcx, rdx, r8, r9, xmm0 to xmm3), asks gwQuillResolve for the editor's entry
// point and jumps to it with the registers and the stack exactly as the caller left them:
// stack arguments and the return address are untouched, and the entry point returns
// straight to the caller with its result in rax or xmm0.
    .intel_syntax noprefix

#define QUILL_FORWARDER(name, lookup)                                                          \
    .section .rdata, "dr";                                                                     \
    quill_lookup_##name: lookup;                                                               \
    .text;                                                                                     \
    .globl name;                                                                               \
    .def name; .scl 2; .type 32; .endef;                                                       \
    .p2align 4;                                                                                \
    name: lea r10, [rip + quill_lookup_##name];                                                \
    jmp gwQuillForward;                                                                        \
    .section .drectve;                                                                         \
    .ascii " -export:";                                                                        \
    .ascii #name;

#define QUILL_ENTRY(name) QUILL_FORWARDER(name, .asciz #name)
#define QUILL_DECORATED(name, bytes)                                                           \
    QUILL_FORWARDER(name, .ascii "_"; .ascii #name; .ascii "@"; .asciz #bytes)

#include "QuillEntries.inc"

    .text
    .p2align 4
    .def gwQuillForward; .scl 3; .type 32; .endef
    .seh_proc gwQuillForward
gwQuillForward:
    sub rsp, 0x88
    .seh_stackalloc 0x88
    .seh_endprologue
    mov [rsp + 0x60], rcx
    mov [rsp + 0x68], rdx
    mov [rsp + 0x70], r8
    mov [rsp + 0x78], r9
    movdqu [rsp + 0x20], xmm0
    movdqu [rsp + 0x30], xmm1
    movdqu [rsp + 0x40], xmm2
    movdqu [rsp + 0x50], xmm3
    mov rcx, r10
    call gwQuillResolve
    movdqu xmm0, [rsp + 0x20]
    movdqu xmm1, [rsp + 0x30]
    movdqu xmm2, [rsp + 0x40]
    movdqu xmm3, [rsp + 0x50]
    mov rcx, [rsp + 0x60]
    mov rdx, [rsp + 0x68]
    mov r8, [rsp + 0x70]
    mov r9, [rsp + 0x78]
    add rsp, 0x88
    jmp rax
    .seh_endproc
