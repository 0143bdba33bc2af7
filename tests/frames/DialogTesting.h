// Helpers of the dialog tests: a push button class that the test templates name, the
// identifiers of those templates, a script of steps run while modal loops run, and the
// fixture that destroys the dialogs of a test.
#pragma once

#include <windows.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <GwControl.h>
#include <GwDialog.h>
#include <GwEventData.h>
#include <GwResource.h>

#include "FrameTesting.h"
#include <VmGuiTesting/Script.h>

namespace testing_dialogs {

using namespace testing_frames;
using namespace testing_windows;
using testing_windows::Script;

// The tests' push button with a class record of its own: the attribute data of the test
// dialogs names it for some of their controls.
class DialogTestButton : public StandInButton {
    GW_DECLARE_CLASS(DialogTestButton)

public:
    explicit DialogTestButton(void* hwnd) : StandInButton(hwnd) {}
    DialogTestButton(DialogTestButton const& other) = default;
    DialogTestButton& operator=(DialogTestButton const& other) = default;

    static DialogTestButton* newInstance(EventData const* data) {
        void* const hwnd = GwEventData::windowOf(data);
        return hwnd != nullptr ? new DialogTestButton(hwnd) : nullptr;
    }
};

// Identifiers of the test resources (data/frames.rc).
inline constexpr unsigned long long kButtonsDialog =
    7000;                                                // edit 1002, OK, Cancel, 1001, 1003, help
inline constexpr unsigned long long kChildDialog = 7001; // a child window with OK and Cancel
inline constexpr unsigned long long kMenuBar = 7050;
inline constexpr int kEdit = 1002;
inline constexpr int kNext = 1001;  // push button with a DialogTestButton
inline constexpr int kCheck = 1003; // check box with a DialogTestButton

inline constexpr unsigned long long kNoId = ~0ull;

inline HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// How often the handler's callback was called.
inline long count(Recorder const& handler, std::string const& callback) {
    std::vector<std::string> const names = handler.names();
    return static_cast<long>(std::count(names.begin(), names.end(), callback));
}

inline bool quitQueued() {
    MSG msg;
    return PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
}

class DialogTest : public FrameFixture {
protected:
    void TearDown() override {
        for (HWND hwnd : mWindows) {
            if (IsWindow(hwnd))
                DestroyWindow(hwnd); // deletes the object
        }
        FrameFixture::TearDown();
    }

    // The dialog of the template, destroyed at the end of the test.
    GwDialog* load(unsigned long long id, GwWindow const* parent = nullptr) {
        GwWindow* const window = mResource.loadDialog(id, parent);
        if (window == nullptr)
            return nullptr;
        mWindows.push_back(hwndOf(*window));
        return dynamic_cast<GwDialog*>(window);
    }
    // A new dialog, destroyed at the end of the test.
    GwDialog* make(unsigned long long id, GwFrame* owner = nullptr) {
        auto* const dialog = owner != nullptr ? new GwDialog(id, *owner) : new GwDialog(id);
        mWindows.push_back(hwndOf(*dialog));
        return dialog;
    }

    // Shows the dialog modally while the script runs; false when the script timed out.
    static bool runModal(GwDialog& dialog, std::vector<Script::Step> steps) {
        Script script(std::move(steps));
        dialog.setModal(true);
        dialog.setVisible(true);
        return !script.timedOut();
    }

    // Runs the dialog's modal loop, in which the edit control gets the focus and then a key.
    static bool runModalWithKeyInEdit(GwDialog& dialog, WPARAM key) {
        HWND const edit = GetDlgItem(hwndOf(dialog), kEdit);
        return runModal(dialog, {Script::once([edit, key] {
                            SetFocus(edit);
                            PostMessageA(edit, WM_KEYDOWN, key, 1);
                        })});
    }

    GwResource mResource;
    std::vector<HWND> mWindows;
};

} // namespace testing_dialogs
