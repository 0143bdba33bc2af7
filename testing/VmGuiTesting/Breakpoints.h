// Counting the debugger breaks (DebugBreak) a test provokes.
#pragma once

#include <windows.h>

namespace vmgui_testing {

// Counts the debugger breaks (DebugBreak) raised on any thread while it lives and resumes
// past each one, so that code which reports a programming error with DebugBreak can be
// tested. A vectored exception handler sees the break first; one counter at a time.
class BreakpointCounter {
public:
    BreakpointCounter() {
        sCount = 0;
        mHandle = AddVectoredExceptionHandler(1, &BreakpointCounter::onException);
    }
    ~BreakpointCounter() { RemoveVectoredExceptionHandler(mHandle); }
    BreakpointCounter(BreakpointCounter const&) = delete;
    BreakpointCounter& operator=(BreakpointCounter const&) = delete;

    long count() const { return sCount; }

private:
    static LONG CALLBACK onException(EXCEPTION_POINTERS* info) {
        if (info->ExceptionRecord->ExceptionCode != EXCEPTION_BREAKPOINT)
            return EXCEPTION_CONTINUE_SEARCH;
        ++sCount;
        // The instruction pointer is left on the int3 instruction: step over it.
        auto* ip = reinterpret_cast<unsigned char const*>(info->ContextRecord->Rip);
        if (*ip == 0xCC)
            ++info->ContextRecord->Rip;
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    PVOID mHandle;
    static inline long sCount = 0;
};

} // namespace vmgui_testing
