// Running the message loop in a test: the queued messages now, the library's loop for a time,
// or the library's loop until a condition holds.
#pragma once

#include <windows.h>

#include <functional>
#include <utility>

#include <GwWindow.h>

namespace vmgui_testing {

// Dispatches the queued messages of this thread until none is left; does not wait for more.
inline void pumpMessages() {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

// Runs the library's message loop (GwWindow::msgLoop) until the milliseconds have passed. A
// thread timer posts the quit message that ends the loop; a loop ended earlier by another
// quit message takes the timer with it, so that no late quit ends a later loop.
inline void runLoopFor(UINT milliseconds) {
    struct Quit {
        static void CALLBACK onTimer(HWND, UINT, UINT_PTR id, DWORD) {
            KillTimer(nullptr, id);
            PostQuitMessage(0);
        }
    };
    UINT_PTR const timer = SetTimer(nullptr, 0, milliseconds, &Quit::onTimer);
    GwWindow::msgLoop();
    KillTimer(nullptr, timer);
}

namespace detail {

// A wait of runLoopUntil: its condition, its deadline and its outcome. One timer asks the
// innermost wait.
struct LoopWait {
    LoopWait(std::function<bool()> condition, DWORD deadline)
        : condition(std::move(condition)), deadline(deadline) {}

    std::function<bool()> condition;
    DWORD deadline;
    bool met = false;
    bool ended = false;
    static inline LoopWait* current = nullptr;

    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        LoopWait* const wait = current;
        if (wait == nullptr || wait->ended)
            return;
        wait->met = wait->condition();
        if (wait->met || static_cast<LONG>(GetTickCount() - wait->deadline) >= 0) {
            wait->ended = true;
            PostQuitMessage(0);
        }
    }
};

} // namespace detail

// Runs the library's message loop until condition answers true (asked first at once, then
// every interval milliseconds from a thread timer) or until limit milliseconds have passed;
// answers whether the condition held. Handlers, modal dialogs and message boxes run
// meanwhile as in the application.
inline bool runLoopUntil(std::function<bool()> condition, DWORD limit = 5000, UINT interval = 20) {
    if (condition())
        return true;
    detail::LoopWait wait(std::move(condition), GetTickCount() + limit);
    detail::LoopWait* const outer = detail::LoopWait::current;
    detail::LoopWait::current = &wait;
    UINT_PTR const timer = SetTimer(nullptr, 0, interval, &detail::LoopWait::onTimer);
    GwWindow::msgLoop();
    KillTimer(nullptr, timer);
    detail::LoopWait::current = outer;
    return wait.met || wait.condition();
}

} // namespace vmgui_testing
