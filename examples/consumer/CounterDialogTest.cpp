// The consumer tests its own dialog with the library's test kit (VmGui::Testing): the dialog
// runs its modal loop as in the application, while steps from a timer click its button, press
// a key on it and end it by caption; the count, the shown text, the result, the dialog's
// pixels and the debugger breaks are checked. Run by CTest (vmgui_add_wine_test), headless
// under Wine on Linux.
#include <windows.h>

#include <cstdio>
#include <string>

#include <VmGui.h>
#include <VmGuiTesting.h>

#include "CounterDialog.h"
#include "resource.h"

using namespace vmgui_testing;

namespace {

// The application object runs the library's start-up (its window classes).
class TestApplication : public GwApplication {};

int gFailures = 0;

void expect(bool holds, char const* what) {
    std::printf("%s: %s\n", holds ? "ok" : "FAILED", what);
    if (!holds)
        ++gFailures;
}

// Two clicks and a space key on "Weiter", then OK pressed by its text in the dialog found by
// its caption: the dialog counts three presses, shows 3 and ends with IDOK.
void countsClicksAndKeysAndEndsWithOk() {
    CounterDialog dialog;
    auto* const hwnd = static_cast<HWND>(dialog.window());
    HWND const add = GetDlgItem(hwnd, IDC_ADD);
    HWND const shown = GetDlgItem(hwnd, IDC_COUNT);
    COLORREF background = CLR_INVALID;
    Script script({
        [&] { return findDialog("Z\xE4hler") == hwnd; }, // up, by its caption
        Script::once([&] { postClick(add); }),
        Script::once([&] { postClick(add); }),
        Script::once([&] {
            SetFocus(add);
            postKey(add, VK_SPACE); // the space key presses a push button
        }),
        [&] { return dialog.count() == 3; },
        Script::once([&] {
            UpdateWindow(hwnd);
            RECT client{};
            GetClientRect(hwnd, &client);
            background = pixelOf(hwnd, client.right - 2, client.bottom - 2);
            postButton(hwnd, "OK");
        }),
    });
    dialog.setVisible(true); // returns when the dialog has ended
    expect(!script.timedOut() && script.finished(), "the steps ran while the dialog was up");
    expect(dialog.count() == 3, "two clicks and a space key count three presses");
    expect(textOf(shown) == "3", "the dialog shows the count");
    expect(dialog.result() == IDOK, "OK ends the dialog with IDOK");
    expect(!IsWindowVisible(hwnd), "the ended dialog is hidden");
    expect(background == GetSysColor(COLOR_BTNFACE), "the dialog is painted in the face colour");
}

// The dialog answered from outside its loop by the kit's answerer: Abbrechen ends it with
// IDCANCEL and nothing counted.
void cancelEndsWithCancel() {
    CounterDialog dialog;
    DialogAnswerer answerer(IDCANCEL, {}, "Z\xE4hler");
    dialog.setVisible(true);
    expect(answerer.seen.found && !answerer.timedOut(), "the answerer found the dialog");
    expect(dialog.result() == IDCANCEL, "Abbrechen ends the dialog with IDCANCEL");
    expect(dialog.count() == 0, "nothing was counted");
}

// The loop run until a condition holds: a modeless dialog that a timer presses.
void modelessDialogCountsWhileTheLoopRuns() {
    CounterDialog dialog;
    dialog.setModal(false);
    dialog.setVisible(true);
    HWND const add = GetDlgItem(static_cast<HWND>(dialog.window()), IDC_ADD);
    postClick(add);
    expect(runLoopUntil([&] { return dialog.count() == 1; }, 3000),
           "the loop ran until the click was counted");
}

} // namespace

int main() {
    TestApplication application;
    BreakpointCounter breaks;
    countsClicksAndKeysAndEndsWithOk();
    cancelEndsWithCancel();
    modelessDialogCountsWhileTheLoopRuns();
    expect(breaks.count() == 0, "no debugger break on the way");
    std::printf("%d failed\n", gFailures);
    return gFailures == 0 ? 0 : 1;
}
