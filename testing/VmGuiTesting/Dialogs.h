// Dialogs in a test: finding a dialog or message box by its caption, pressing one of its
// buttons, and an answerer that does both from a thread timer while the dialog's modal loop
// runs (a modal dialog, a message box or a common dialog returns only when it has ended).
#pragma once

#include <windows.h>

#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "WindowQueries.h"

namespace vmgui_testing {

// The platform's dialog class: dialogs from templates, message boxes, common dialogs.
inline constexpr char kDialogClass[] = "#32770";

// The first visible top-level window of the class (any when null) with exactly the caption
// (any when null), among the windows of this thread, or of the process when processId is
// not 0 (a program the test started); null when there is none.
inline HWND findTopLevel(char const* className, char const* caption, DWORD processId = 0) {
    struct Search {
        Search(char const* className, char const* caption, DWORD processId)
            : className(className), caption(caption), processId(processId) {}

        char const* className;
        char const* caption;
        DWORD processId;
        HWND found = nullptr;

        static BOOL CALLBACK next(HWND hwnd, LPARAM context) {
            auto* const search = reinterpret_cast<Search*>(context);
            if (search->processId != 0) {
                DWORD owner = 0;
                GetWindowThreadProcessId(hwnd, &owner);
                if (owner != search->processId)
                    return TRUE;
            }
            if (!IsWindowVisible(hwnd))
                return TRUE;
            if (search->className != nullptr && classNameOf(hwnd) != search->className)
                return TRUE;
            if (search->caption != nullptr && textOf(hwnd) != search->caption)
                return TRUE;
            search->found = hwnd;
            return FALSE;
        }
    };
    Search search(className, caption, processId);
    if (processId != 0)
        EnumWindows(&Search::next, reinterpret_cast<LPARAM>(&search));
    else
        EnumThreadWindows(GetCurrentThreadId(), &Search::next, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The first visible dialog or message box with the caption (any when null), of this thread
// or of the process.
inline HWND findDialog(char const* caption = nullptr, DWORD processId = 0) {
    return findTopLevel(kDialogClass, caption, processId);
}

// The child of the dialog whose text is text, ignoring the '&' of a mnemonic ("&Ja" is "Ja");
// null when there is none.
inline HWND childWithText(HWND dialog, char const* text) {
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        std::string shown = textOf(child);
        std::string plain;
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (shown[i] == '&' && i + 1 < shown.size())
                ++i;
            plain += shown[i];
        }
        if (plain == text || shown == text)
            return child;
    }
    return nullptr;
}

// Presses the dialog's button as a click does: the dialog gets WM_COMMAND with BN_CLICKED
// from the button, handled before this returns.
inline void pressButton(HWND dialog, int id) {
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// The same, posted for the running loop to handle (the form to use from a timer inside the
// dialog's own modal loop, or for a dialog of another process).
inline void postButton(HWND dialog, int id) {
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, id)));
}

// Posts the press of the button with the text ("OK", "&Ja" or "Ja"); false when the dialog
// has no such child.
inline bool postButton(HWND dialog, char const* text) {
    HWND const button = childWithText(dialog, text);
    if (button == nullptr)
        return false;
    postButton(dialog, GetDlgCtrlID(button));
    return true;
}

// What an answered dialog showed when it was found.
struct DialogSeen {
    bool found = false;
    std::string title;
    HWND owner = nullptr;
};

// Answers the dialogs of this thread from a thread timer, which the modal loop of a dialog,
// message box or common dialog runs: it waits for a visible dialog with the caption (any
// when null), notes what it shows, runs the probe on it (typing, choosing, looking) and
// posts the press of the button. Once answers the first dialog once; Every answers every
// dialog that is up, at every tick, for as long as the answerer lives (a box that ignores a
// press early is pressed again). When the time is up, every tick ends the innermost loop
// with the quit message, so that no test waits for ever (INFINITE: no limit). One answerer
// at a time.
class DialogAnswerer {
public:
    using Probe = std::function<void(HWND)>;
    enum class Answer { Once, Every };

    explicit DialogAnswerer(int button, Probe probe = {}, char const* caption = nullptr,
                            Answer answer = Answer::Once, DWORD limit = 8000)
        : mButton(button), mProbe(std::move(probe)), mCaption(caption != nullptr ? caption : ""),
          mAnyCaption(caption == nullptr), mAnswer(answer), mLimited(limit != INFINITE),
          mDeadline(GetTickCount() + limit) {
        sCurrent = this;
        mTimer = SetTimer(nullptr, 0, 30, &DialogAnswerer::onTimer);
    }
    ~DialogAnswerer() {
        KillTimer(nullptr, mTimer);
        if (sCurrent == this)
            sCurrent = nullptr;
    }
    DialogAnswerer(DialogAnswerer const&) = delete;
    DialogAnswerer& operator=(DialogAnswerer const&) = delete;

    // The first dialog answered.
    DialogSeen seen;

    bool timedOut() const { return mTimedOut; }
    // How many presses were posted.
    int presses() const { return mPresses; }

private:
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        DialogAnswerer* const answerer = sCurrent;
        if (answerer != nullptr)
            answerer->tick();
    }

    void tick() {
        if (mLimited && static_cast<LONG>(GetTickCount() - mDeadline) >= 0) {
            mTimedOut = true;
            PostQuitMessage(0);
            return;
        }
        if (mAnswer == Answer::Once && mPresses > 0)
            return;
        HWND const dialog = findDialog(mAnyCaption ? nullptr : mCaption.c_str());
        if (dialog == nullptr)
            return;
        if (!seen.found) {
            seen.found = true;
            seen.title = textOf(dialog);
            seen.owner = GetWindow(dialog, GW_OWNER);
            if (mProbe)
                mProbe(dialog);
        }
        postButton(dialog, mButton);
        ++mPresses;
    }

    int mButton;
    Probe mProbe;
    std::string mCaption;
    bool mAnyCaption;
    Answer mAnswer;
    bool mLimited;
    DWORD mDeadline;
    UINT_PTR mTimer = 0;
    bool mTimedOut = false;
    int mPresses = 0;
    static inline DialogAnswerer* sCurrent = nullptr;
};

} // namespace vmgui_testing
