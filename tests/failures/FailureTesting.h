// Helpers of the failure tests: making the platform refuse what the library asks of it (a
// window creation, the clipboard), and counting the heap blocks in use, so that a test sees
// that a failure leaks nothing.
#pragma once

#include <windows.h>

#include <malloc.h>

#include <functional>

#include <gtest/gtest.h>

namespace testing_failures {

// While it lives, every window that this thread tries to create is refused by the platform:
// a computer-based-training hook answers HCBT_CREATEWND with "no", so CreateWindowExA and
// CreateDialogIndirectParamA return null as they do for any refused creation.
class RefusedCreation {
public:
    RefusedCreation() {
        sRefused = 0;
        mHook = SetWindowsHookExA(WH_CBT, &RefusedCreation::onHook, nullptr, GetCurrentThreadId());
    }
    ~RefusedCreation() {
        if (mHook != nullptr)
            UnhookWindowsHookEx(mHook);
    }
    RefusedCreation(RefusedCreation const&) = delete;
    RefusedCreation& operator=(RefusedCreation const&) = delete;

    bool installed() const { return mHook != nullptr; }
    // The creations refused so far.
    static int refused() { return sRefused; }

private:
    static LRESULT CALLBACK onHook(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_CREATEWND) {
            ++sRefused;
            return 1;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK mHook;
    static inline int sRefused = 0;
};

// The blocks of the C runtime's heap in use (the library and the tests share the runtime).
inline long heapBlocksInUse() {
    _HEAPINFO info{};
    long count = 0;
    while (_heapwalk(&info) == _HEAPOK) {
        if (info._useflag == _USEDENTRY)
            ++count;
    }
    return count;
}

// How many more heap blocks are in use after running step `times` times than before (after
// two runs to warm up caches and shared empty objects). A leak of one block per run shows as
// at least `times`.
inline long heapGrowth(std::function<void()> const& step, int times = 100) {
    step();
    step();
    long const before = heapBlocksInUse();
    for (int i = 0; i < times; ++i)
        step();
    return heapBlocksInUse() - before;
}

// Keeps the clipboard open from a window of another thread while it lives, so that this
// thread's OpenClipboard fails as it does while another program holds the clipboard.
class ClipboardHolder {
public:
    ClipboardHolder() {
        mOpened = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        mRelease = CreateEventA(nullptr, TRUE, FALSE, nullptr);
        mThread = CreateThread(nullptr, 0, &ClipboardHolder::run, this, 0, nullptr);
        WaitForSingleObject(mOpened, 5000);
    }
    ~ClipboardHolder() {
        SetEvent(mRelease);
        WaitForSingleObject(mThread, 5000);
        CloseHandle(mThread);
        CloseHandle(mOpened);
        CloseHandle(mRelease);
    }
    ClipboardHolder(ClipboardHolder const&) = delete;
    ClipboardHolder& operator=(ClipboardHolder const&) = delete;

    // Whether the other thread has the clipboard open.
    bool holding() const { return mHolding; }

private:
    static DWORD WINAPI run(void* self) {
        auto* holder = static_cast<ClipboardHolder*>(self);
        HWND const owner = CreateWindowExA(0, "Static", "", 0, 0, 0, 10, 10, nullptr, nullptr,
                                           GetModuleHandleA(nullptr), nullptr);
        holder->mHolding = OpenClipboard(owner) != FALSE;
        SetEvent(holder->mOpened);
        WaitForSingleObject(holder->mRelease, INFINITE);
        if (holder->mHolding)
            CloseClipboard();
        DestroyWindow(owner);
        return 0;
    }

    HANDLE mOpened;
    HANDLE mRelease;
    HANDLE mThread;
    volatile bool mHolding = false;
};

} // namespace testing_failures
