// The loops of modal dialogs: the disabled owner, nested loops and what ends them, the
// keyboard navigation through IsDialogMessageA, and the click of a push button in a modal
// dialog loaded from a template, from the mouse to the handlers.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <GwDialog.h>

#include "BreakpointCounter.h"
#include "DialogTesting.h"

using namespace testing_dialogs;
using namespace testing_frames;
using namespace testing_windows;

namespace {

// A dialog without window, as the protected constructor makes it.
class WindowlessDialog : public GwDialog {
public:
    WindowlessDialog() = default;
};

// Records the activation and ends the dialog with a result.
class EndsDialog : public Recorder {
public:
    EndsDialog(GwDialog* dialog, int endResult, std::vector<std::string>* order = nullptr,
               std::string name = "")
        : Recorder(false, GwResultContinue, order, std::move(name)), mDialog(dialog),
          mEndResult(endResult) {}

    int cbActivate(GwWindow& w) override {
        Recorder::cbActivate(w);
        mDialog->setResult(mEndResult);
        mDialog->setVisible(false);
        return GwResultHandled;
    }

private:
    GwDialog* mDialog;
    int mEndResult;
};

} // namespace

// ---- Modal: loops and owner

TEST_F(DialogTest, OwnerIsDisabledWhileTheLoopRunsAndActivatedAfterwards) {
    GwFrame owner(1, 0, false);
    HWND const ownerHwnd = hwndOf(owner);
    SetWindowLongA(ownerHwnd, GWL_STYLE, styleOf(ownerHwnd) & ~WS_MINIMIZEBOX);
    ShowWindow(ownerHwnd, SW_SHOW);
    LONG const ownerStyle = styleOf(ownerHwnd);
    GwDialog* const dialog = make(8, &owner);
    HWND const hwnd = hwndOf(*dialog);

    LONG styleMeanwhile = 0;
    bool enabledMeanwhile = true;
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] {
        styleMeanwhile = styleOf(ownerHwnd);
        enabledMeanwhile = IsWindowEnabled(ownerHwnd) != FALSE;
        PostMessageA(hwnd, WM_CLOSE, 0, 0);
    })}));
    EXPECT_EQ(styleMeanwhile, ownerStyle | WS_DISABLED);
    EXPECT_FALSE(enabledMeanwhile);
    EXPECT_EQ(styleOf(ownerHwnd), ownerStyle) << "the owner's style comes back exactly";
    EXPECT_EQ(GetActiveWindow(), ownerHwnd);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    DestroyWindow(hwnd);
}

// Shows a modal dialog from a timer handler of another modal dialog.
class ShowsInnerOnTimer : public Recorder {
public:
    ShowsInnerOnTimer(GwDialog* inner, std::vector<std::string>* order)
        : Recorder(false, GwResultContinue), mInner(inner), mOrder(order) {}

    int cbTimer(GwWindow& w) override {
        w.stopTimer();
        mOrder->push_back("inner shown");
        mInner->setModal(true);
        mInner->setVisible(true);
        mOrder->push_back("inner returned");
        return GwResultHandled;
    }

private:
    GwDialog* mInner;
    std::vector<std::string>* mOrder;
};

TEST_F(DialogTest, ModalDialogShownFromAHandlerOfAnotherNestsAndHidingTheInnerEndsOnlyItsLoop) {
    GwDialog* const outer = make(20);
    GwDialog* const inner = make(21, outer);
    HWND const outerHwnd = hwndOf(*outer);
    HWND const innerHwnd = hwndOf(*inner);
    std::vector<std::string> order;
    ShowsInnerOnTimer starter(inner, &order);
    outer->add(&starter);
    outer->startTimer(10);

    bool outerOpenDuringInner = false;
    bool outerDisabledDuringInner = false;
    bool outerOpenAfterInner = false;
    bool innerOpenAfterInner = true;
    outer->setModal(true);
    {
        Script script(
            {[&] { return IsWindowVisible(innerHwnd) != FALSE; }, // inner loop runs
             Script::once([&] {
                 outerOpenDuringInner = IsWindowVisible(outerHwnd) != FALSE;
                 outerDisabledDuringInner = IsWindowEnabled(outerHwnd) == FALSE;
                 order.push_back("hide inner");
                 inner->setVisible(false);
             }),
             [&] { return std::find(order.begin(), order.end(), "inner returned") != order.end(); },
             Script::once([&] {
                 outerOpenAfterInner = IsWindowVisible(outerHwnd) != FALSE;
                 innerOpenAfterInner = IsWindowVisible(innerHwnd) != FALSE;
                 order.push_back("hide outer");
                 outer->setVisible(false);
             })});
        outer->setVisible(true);
        order.push_back("outer returned");
        ASSERT_FALSE(script.timedOut());
        EXPECT_TRUE(script.finished());
    }
    EXPECT_EQ(order, (std::vector<std::string>{"inner shown", "hide inner", "inner returned",
                                               "hide outer", "outer returned"}));
    EXPECT_TRUE(outerOpenDuringInner);
    EXPECT_TRUE(outerDisabledDuringInner) << "the inner dialog is owned by the outer one";
    EXPECT_TRUE(outerOpenAfterInner) << "the outer loop goes on";
    EXPECT_FALSE(innerOpenAfterInner);
    EXPECT_FALSE(IsWindowVisible(outerHwnd));
    EXPECT_TRUE(IsWindowEnabled(outerHwnd));
    DestroyWindow(innerHwnd);
    DestroyWindow(outerHwnd);
}

TEST_F(DialogTest, DestroyingTheWindowOfAModalDialogEndsItsLoop) {
    GwFrame owner(1, 0, false);
    HWND const ownerHwnd = hwndOf(owner);
    LONG const ownerStyle = styleOf(ownerHwnd);
    GwDialog* const dialog = make(9, &owner);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { DestroyWindow(hwnd); })}));
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(styleOf(ownerHwnd), ownerStyle);
}

TEST_F(DialogTest, DeletingAModalDialogEndsItsLoop) {
    GwDialog* const dialog = make(10);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { delete dialog; })}));
    EXPECT_FALSE(IsWindow(hwnd));
}

TEST_F(DialogTest, DialogWithoutWindowShowsNothingAndRaisesNothing) {
    BreakpointCounter breaks;
    WindowlessDialog dialog;
    EXPECT_EQ(dialog.window(), nullptr);
    EXPECT_EQ(dialog.result(), -1);
    dialog.setModal(true);
    EXPECT_TRUE(dialog.modal());
    dialog.setVisible(true); // returns at once: no loop for nothing
    dialog.setVisible(false);
    EXPECT_FALSE(quitQueued());
    EXPECT_EQ(breaks.count(), 0);
}

// ---- Keyboard navigation through the loop's pre-translation

TEST_F(DialogTest, PreTranslationAnswersWithIsDialogMessage) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    dialog->setVisible(true);
    HWND const edit = GetDlgItem(hwnd, kEdit);
    SetFocus(edit);
    ASSERT_EQ(GetFocus(), edit);

    MSG tab{edit, WM_KEYDOWN, VK_TAB, 1, 0, {0, 0}};
    EXPECT_NE(
        SendMessageA(hwnd, GwWindow::message(), GwCodePreTranslate, reinterpret_cast<LPARAM>(&tab)),
        0);
    EXPECT_EQ(GetFocus(), GetDlgItem(hwnd, IDOK)) << "Tab moved to the next tab stop";

    HWND const stranger = rawWindow();
    MSG other{stranger, WM_KEYDOWN, VK_TAB, 1, 0, {0, 0}};
    EXPECT_EQ(SendMessageA(hwnd, GwWindow::message(), GwCodePreTranslate,
                           reinterpret_cast<LPARAM>(&other)),
              0)
        << "a message for another window is not the dialog's";
    DestroyWindow(stranger);
}

TEST_F(DialogTest, TabInTheModalLoopMovesTheFocus) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const edit = GetDlgItem(hwnd, kEdit);
    HWND focusAfterTab = nullptr;
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] {
                                       SetFocus(edit);
                                       PostMessageA(edit, WM_KEYDOWN, VK_TAB, 1);
                                   }),
                                   Script::once([&] {
                                       focusAfterTab = GetFocus();
                                       PostMessageA(hwnd, WM_CLOSE, 0, 0);
                                   })}));
    EXPECT_EQ(focusAfterTab, GetDlgItem(hwnd, IDOK));
    EXPECT_EQ(dialog->result(), 2);
}

TEST_F(DialogTest, EscapeInTheModalLoopCancelsTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_TRUE(runModalWithKeyInEdit(*dialog, VK_ESCAPE));
    EXPECT_EQ(dialog->result(), 2);
    EXPECT_FALSE(IsWindowVisible(hwnd));
}

TEST_F(DialogTest, EnterInTheModalLoopPressesTheDefaultButton) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_TRUE(runModalWithKeyInEdit(*dialog, VK_RETURN));
    EXPECT_EQ(dialog->result(), 1);
    EXPECT_FALSE(IsWindowVisible(hwnd));
}

// ---- End to end: a click in a modal dialog from a template

TEST_F(DialogTest, ClickInAModalDialogReachesTheButtonsHandlersThenTheDialogsAndEndsIt) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const next = GetDlgItem(hwnd, kNext);
    GwWindow* const button = GwWindow::window(next, false);
    ASSERT_NE(dynamic_cast<DialogTestButton*>(button), nullptr) << "made by the attribute data";

    std::vector<std::string> order;
    Recorder older(false, GwResultContinue, &order, "older");
    Recorder newer(false, GwResultContinue, &order, "newer");
    EndsDialog ender(dialog, 42, &order, "dialog");
    button->add(&older);
    button->add(&newer);
    dialog->add(&ender);

    // The mouse: pressed and released inside the button, queued for the dialog's loop.
    LPARAM const inside = MAKELPARAM(5, 5);
    PostMessageA(next, WM_LBUTTONDOWN, MK_LBUTTON, inside);
    PostMessageA(next, WM_LBUTTONUP, 0, inside);
    Script script({}, 3000);
    dialog->setModal(true);
    dialog->setVisible(true); // returns when the handler has ended the dialog
    ASSERT_FALSE(script.timedOut()) << "the click did not end the dialog";

    EXPECT_EQ(activations(order),
              (std::vector<std::string>{"newer:activate", "older:activate", "dialog:activate"}));
    for (Recorder const* handler :
         {static_cast<Recorder const*>(&older), static_cast<Recorder const*>(&newer),
          static_cast<Recorder const*>(&ender)}) {
        for (Call const& call : handler->calls) {
            if (call.callback == "activate") {
                EXPECT_EQ(call.window, button) << "every handler hears of the button";
            }
        }
    }
    EXPECT_EQ(dialog->result(), 42);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    DestroyWindow(hwnd); // before the handlers go
}

TEST_F(DialogTest, ClickTakenByTheButtonsHandlerNeitherReachesNorEndsTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const next = GetDlgItem(hwnd, kNext);
    GwWindow* const button = GwWindow::window(next, false);
    ASSERT_NE(button, nullptr);

    std::vector<std::string> order;
    Recorder taker(false, GwResultHandled, &order, "button");
    Recorder dialogListener(false, GwResultContinue, &order, "dialog");
    button->add(&taker);
    dialog->add(&dialogListener);

    bool stillOpen = false;
    LPARAM const inside = MAKELPARAM(5, 5);
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] {
                                       PostMessageA(next, WM_LBUTTONDOWN, MK_LBUTTON, inside);
                                       PostMessageA(next, WM_LBUTTONUP, 0, inside);
                                   }),
                                   Script::once([&] {
                                       stillOpen = IsWindowVisible(hwnd) != FALSE;
                                       dialog->setVisible(false);
                                   })}));
    EXPECT_EQ(activations(order), std::vector<std::string>{"button:activate"});
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(dialog->result(), -1);
    DestroyWindow(hwnd);
}
