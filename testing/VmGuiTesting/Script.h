// Steps of a test run from a thread timer while modal loops run (a modal dialog, a message
// box, a common dialog), so that a test can drive a window whose showing does not return
// until it has ended.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace vmgui_testing {

// Steps run one after the other from a thread timer, one per tick, while modal loops run. A
// step answers false to be run again at the next tick (to wait for something). A step may
// show a modal dialog itself: the following steps then run in that dialog's loop. When the
// time is up, every tick ends the innermost loop with the quit message, so that no test
// waits for ever.
class Script {
public:
    using Step = std::function<bool()>;

    explicit Script(std::vector<Step> steps, DWORD limit = 5000)
        : mSteps(std::move(steps)), mDeadline(GetTickCount() + limit) {
        sCurrent = this;
        mTimer = SetTimer(nullptr, 0, 30, &Script::onTimer);
    }
    ~Script() {
        KillTimer(nullptr, mTimer);
        sCurrent = nullptr;
    }
    Script(Script const&) = delete;
    Script& operator=(Script const&) = delete;

    // A step that always succeeds.
    static Step once(std::function<void()> action) {
        return [action = std::move(action)] {
            action();
            return true;
        };
    }

    bool timedOut() const { return mTimedOut; }
    bool finished() const { return mNext == mSteps.size(); }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        Script* const script = sCurrent;
        if (script == nullptr)
            return;
        if (static_cast<LONG>(GetTickCount() - script->mDeadline) >= 0) {
            script->mTimedOut = true;
            PostQuitMessage(0);
            return;
        }
        if (script->mNext == script->mSteps.size())
            return;
        // The next step is due before this one runs: a step that shows a modal dialog
        // returns only when the dialog has ended, and the steps after it run meanwhile, in
        // the dialog's loop.
        std::size_t const index = script->mNext++;
        if (!script->mSteps[index]() && script->mNext == index + 1)
            script->mNext = index; // again at the next tick
    }

    std::vector<Step> mSteps;
    std::size_t mNext = 0;
    DWORD mDeadline;
    UINT_PTR mTimer = 0;
    bool mTimedOut = false;
    static inline Script* sCurrent = nullptr;
};

} // namespace vmgui_testing
