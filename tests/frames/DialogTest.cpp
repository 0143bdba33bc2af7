// The dialog: its window and class, modeless and modal showing with nested loops, the
// results of OK, Cancel, push buttons and closing, the help button, the keyboard navigation
// through IsDialogMessageA, positions from the bottom of the screen, and the click of a push
// button in a modal dialog loaded from a template, from the mouse to the handlers.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <GwControl.h>
#include <GwDialog.h>
#include <GwEventData.h>
#include <GwResource.h>

#include "BreakpointCounter.h"
#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

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

// A dialog without window, as the protected constructor makes it.
class WindowlessDialog : public GwDialog {
public:
    WindowlessDialog() = default;
};

// Identifiers of the test resources (data/frames.rc).
constexpr unsigned long long kButtonsDialog = 7000; // edit 1002, OK, Cancel, 1001, 1003, help
constexpr unsigned long long kChildDialog = 7001;   // a child window with OK and Cancel
constexpr unsigned long long kMenuBar = 7050;
constexpr int kEdit = 1002;
constexpr int kNext = 1001;  // push button with a DialogTestButton
constexpr int kCheck = 1003; // check box with a DialogTestButton

constexpr unsigned long long kNoId = ~0ull;

HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// The child window with the text (the help button has identifier 0, like other windows).
HWND childWithText(HWND parent, char const* text) {
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (textOf(child) == text)
            return child;
    }
    return nullptr;
}

// How often the handler's callback was called.
long count(Recorder const& handler, std::string const& callback) {
    std::vector<std::string> const names = handler.names();
    return static_cast<long>(std::count(names.begin(), names.end(), callback));
}

bool quitQueued() {
    MSG msg;
    return PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE) != FALSE;
}

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

} // namespace

GW_CLASS_MAKES(DialogTestButton, "DialogTestButton", "GwControl")

// ---- The window and the class

TEST_F(DialogTest, CreatesAHiddenWindowOfTheDialogClass) {
    GwDialog* const dialog = make(4711);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_NE(hwnd, nullptr) << "the identifier must not be taken for a menu handle";
    EXPECT_EQ(GetClassWord(hwnd, GCW_ATOM), 32770);
    EXPECT_EQ(textOf(hwnd), "DialogFenster");
    EXPECT_EQ(styleOf(hwnd) & WS_OVERLAPPEDWINDOW, WS_OVERLAPPEDWINDOW);
    EXPECT_EQ(styleOf(hwnd) & WS_CHILD, 0);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_EQ(GetMenu(hwnd), nullptr);
    EXPECT_EQ(GetWindow(hwnd, GW_OWNER), nullptr);
    EXPECT_EQ(GwWindow::window(hwnd, false), dialog);
    EXPECT_EQ(dialog->id(), 4711u);
    EXPECT_FALSE(dialog->modal());
    EXPECT_EQ(dialog->result(), -1);
    EXPECT_EQ(dialog->isA(), GwDialog::isa());
}

TEST_F(DialogTest, OwnedDialogIsOwnedByTheFramesWindowAndTakesItsHelpFile) {
    GwFrame owner(1, 0, false);
    owner.setHelpFile("owner.chm");
    GwDialog* const dialog = make(12, &owner);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(GetWindow(hwnd, GW_OWNER), hwndOf(owner));
    EXPECT_EQ(dialog->owner(), owner.window());
    EXPECT_EQ(std::string(dialog->helpFile().c_str()), "owner.chm");
    EXPECT_EQ(dialog->id(), 12u);
    EXPECT_EQ(dialog->result(), -1);
    DestroyWindow(hwnd); // before its owner goes
}

TEST_F(DialogTest, LoadedDialogTakesTheHelpFileOfItsParentFrame) {
    GwFrame owner(1, 0, false);
    owner.setHelpFile("owner.chm");
    GwDialog* const dialog = load(kChildDialog, &owner);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(std::string(dialog->helpFile().c_str()), "owner.chm");
    DestroyWindow(hwndOf(*dialog)); // before its owner goes
}

TEST_F(DialogTest, HelpFileOfTheAttributeDataReplacesTheParentFrames) {
    GwFrame owner(1, 0, false);
    owner.setHelpFile("owner.chm");
    GwDialog* const dialog = load(7002, &owner);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(std::string(dialog->helpFile().c_str()), "eigene.hlp");
    DestroyWindow(hwndOf(*dialog));

    GwDialog* const alone = load(7002);
    ASSERT_NE(alone, nullptr);
    EXPECT_EQ(std::string(alone->helpFile().c_str()), "eigene.hlp");
}

TEST_F(DialogTest, ClassRecordMakesADialogOnlyForAWindowHandle) {
    Class const* const record = Class::lookup("GwDialog");
    ASSERT_EQ(record, GwDialog::isa());
    EXPECT_TRUE(record->isSubclassOf(GwFrame::isa()));

    GwEventData const empty;
    EXPECT_EQ(Class::createInstance(record, &empty), nullptr);
    EXPECT_EQ(Class::createInstance(record, nullptr), nullptr);

    HWND const raw = CreateWindowExA(0, "#32770", "roh", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100,
                                     nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(raw, nullptr);
    mWindows.push_back(raw);
    GwEventData const data(raw);
    auto* const dialog = dynamic_cast<GwDialog*>(Class::createInstance(record, &data));
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GwWindow::window(raw, false), dialog);
    EXPECT_EQ(dialog->id(), kNoId);
    EXPECT_FALSE(dialog->modal());
    EXPECT_EQ(dialog->result(), -1);
}

TEST_F(DialogTest, HasNoMenuBar) {
    GwFrame frame(1, 0, false);
    frame.setMenuBar(kMenuBar);
    ASSERT_NE(frame.menuBar(), nullptr) << "the menu of the test resources";

    GwDialog* const dialog = make(2);
    static_cast<GwFrame*>(dialog)->setMenuBar(kMenuBar);
    EXPECT_EQ(dialog->menuBar(), nullptr);
    EXPECT_EQ(GetMenu(hwndOf(*dialog)), nullptr);
}

TEST_F(DialogTest, SetModalTakesEffectOnlyWhileHidden) {
    GwDialog* const dialog = make(3);
    dialog->setModal(true);
    EXPECT_TRUE(dialog->modal());
    dialog->setModal(false);
    EXPECT_FALSE(dialog->modal());

    dialog->setVisible(true); // modeless
    ASSERT_TRUE(IsWindowVisible(hwndOf(*dialog)));
    dialog->setModal(true);
    EXPECT_FALSE(dialog->modal()) << "ignored while visible";
    dialog->setVisible(false);
    EXPECT_FALSE(IsWindowVisible(hwndOf(*dialog)));
    dialog->setModal(true);
    EXPECT_TRUE(dialog->modal());
}

TEST_F(DialogTest, LoadedFromATemplateWithButtonsOfTheAttributeDataClass) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    EXPECT_EQ(GetClassWord(hwnd, GCW_ATOM), 32770);
    EXPECT_EQ(dialog->id(), kButtonsDialog);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_NE(dynamic_cast<DialogTestButton*>(GwWindow::window(GetDlgItem(hwnd, kNext), false)),
              nullptr);
    EXPECT_NE(dynamic_cast<DialogTestButton*>(GwWindow::window(GetDlgItem(hwnd, kCheck), false)),
              nullptr);
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, IDOK), false), nullptr);
    EXPECT_EQ(GwWindow::window(GetDlgItem(hwnd, IDCANCEL), false), nullptr);
    EXPECT_EQ(GwWindow::window(childWithText(hwnd, "Hilfe"), false), nullptr);
}

// ---- Modeless

TEST_F(DialogTest, ModelessShowingReturnsAtOnceAndHidingHides) {
    GwDialog* const dialog = make(4);
    HWND const hwnd = hwndOf(*dialog);
    dialog->setVisible(true);
    EXPECT_TRUE(IsWindowVisible(hwnd));
    EXPECT_FALSE(quitQueued());
    dialog->setVisible(true); // already visible: raised again
    EXPECT_TRUE(IsWindowVisible(hwnd));
    dialog->setVisible(false);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_FALSE(quitQueued()) << "a modeless dialog runs no loop to end";
    dialog->setVisible(false); // not visible: nothing
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_EQ(dialog->result(), -1);
}

TEST_F(DialogTest, ShowingKeepsTheDialogOnTheScreen) {
    // The dialog class's own procedure moves a dialog onto the screen on DM_REPOSITION.
    HWND const probe = CreateWindowExA(0, "#32770", "", WS_OVERLAPPEDWINDOW, -5000, -5000, 300, 200,
                                       nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(probe, DM_REPOSITION, 0, 0);
    RECT probed{};
    GetWindowRect(probe, &probed);
    DestroyWindow(probe);
    if (probed.left < 0)
        GTEST_SKIP() << "the dialog class here leaves DM_REPOSITION unanswered (Wine); "
                        "Windows moves the dialog into the desktop area";

    GwDialog* const dialog = make(5);
    HWND const hwnd = hwndOf(*dialog);
    SetWindowPos(hwnd, nullptr, -5000, -5000, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    dialog->setVisible(true);
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    EXPECT_GE(rect.left, 0);
    EXPECT_GE(rect.top, 0);
    dialog->setVisible(false);
}

TEST_F(DialogTest, ModelessOkEndsTheDialogWithResult1) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    dialog->setVisible(true);
    ASSERT_TRUE(IsWindowVisible(hwnd));
    SendMessageA(GetDlgItem(hwnd, IDOK), BM_CLICK, 0, 0);
    EXPECT_EQ(dialog->result(), 1);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_FALSE(quitQueued());
}

TEST_F(DialogTest, ResultStaysWhenTheDialogIsShownAgain) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_TRUE(runModal(*dialog, {Script::once([hwnd] {
        PostMessageA(GetDlgItem(hwnd, IDCANCEL), BM_CLICK, 0, 0);
    })}));
    EXPECT_EQ(dialog->result(), 2);
    dialog->setModal(false);
    dialog->setVisible(true);
    EXPECT_EQ(dialog->result(), 2);
    dialog->setVisible(false);
    EXPECT_EQ(dialog->result(), 2);
}

// ---- Modal: results

TEST_F(DialogTest, OkAndCancelWithoutObjectsEndTheDialogWithResults1And2) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const ok = GetDlgItem(hwnd, IDOK);
    HWND const cancel = GetDlgItem(hwnd, IDCANCEL);
    ASSERT_EQ(GwWindow::window(ok, false), nullptr);
    ASSERT_EQ(GwWindow::window(cancel, false), nullptr);

    bool visibleInLoop = false;
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] {
        visibleInLoop = IsWindowVisible(hwnd) != FALSE;
        PostMessageA(ok, BM_CLICK, 0, 0);
    })}));
    EXPECT_TRUE(visibleInLoop);
    EXPECT_EQ(dialog->result(), 1);
    EXPECT_FALSE(IsWindowVisible(hwnd)) << "the loop hides the dialog when it ends";

    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { PostMessageA(cancel, BM_CLICK, 0, 0); })}));
    EXPECT_EQ(dialog->result(), 2);
    EXPECT_FALSE(IsWindowVisible(hwnd));
}

TEST_F(DialogTest, BoundOkButtonWhoseHandlerTakesTheCommandDoesNotEndTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const ok = GetDlgItem(hwnd, IDOK);
    auto* const button = new DialogTestButton(ok);
    Recorder taker(false, GwResultHandled);
    button->add(&taker);

    bool stillOpen = false;
    int resultMeanwhile = 0;
    ASSERT_TRUE(runModal(
        *dialog, {Script::once([&] { PostMessageA(ok, BM_CLICK, 0, 0); }), Script::once([&] {
                      stillOpen = IsWindowVisible(hwnd) != FALSE;
                      resultMeanwhile = dialog->result();
                      PostMessageA(hwnd, WM_CLOSE, 0, 0);
                  })}));
    EXPECT_EQ(count(taker, "activate"), 1);
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(resultMeanwhile, -1);
    EXPECT_EQ(dialog->result(), 2) << "closed in the end";
    DestroyWindow(hwnd); // before the handler goes
}

TEST_F(DialogTest, BoundPushButtonThatNobodyTakesEndsTheDialogWithItsIdentifier) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const next = GetDlgItem(hwnd, kNext);
    GwWindow* const button = GwWindow::window(next, false);
    ASSERT_NE(button, nullptr);
    Recorder listener(false, GwResultContinue);
    button->add(&listener);

    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { PostMessageA(next, BM_CLICK, 0, 0); })}));
    EXPECT_EQ(count(listener, "activate"), 1);
    EXPECT_EQ(dialog->result(), kNext);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    DestroyWindow(hwnd);
}

TEST_F(DialogTest, PushButtonWithIdentifier0OpensHelpInsteadOfEndingTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    dialog->setHelpFile("dialog.chm");
    HWND const help = childWithText(hwnd, "Hilfe");
    ASSERT_NE(help, nullptr);
    ASSERT_EQ(GetDlgCtrlID(help), 0);
    ASSERT_EQ(GwWindow::window(help, false), nullptr);

    bool stillOpen = false;
    std::size_t shellCalls = 0;
    ASSERT_TRUE(runModal(
        *dialog, {Script::once([&] { PostMessageA(help, BM_CLICK, 0, 0); }), Script::once([&] {
                      stillOpen = IsWindowVisible(hwnd) != FALSE;
                      shellCalls = gHelpCalls.shell.size();
                      PostMessageA(GetDlgItem(hwnd, IDCANCEL), BM_CLICK, 0, 0);
                  })}));
    EXPECT_TRUE(stillOpen);
    ASSERT_EQ(shellCalls, 1u);
    EXPECT_EQ(gHelpCalls.shell[0].file, std::string(dialog->helpPath().c_str()));
    EXPECT_EQ(gHelpCalls.shell[0].operation, "");
    EXPECT_EQ(gHelpCalls.shell[0].show, SW_SHOW);
    EXPECT_TRUE(gHelpCalls.requests().empty()) << "no WinHelp call";
    EXPECT_EQ(dialog->result(), 2) << "ended by Cancel, not by the help button";
}

TEST_F(DialogTest, BoundHelpButtonThatNobodyTakesOpensHelpToo) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const help = childWithText(hwnd, "Hilfe");
    ASSERT_NE(help, nullptr);
    auto* const button = new DialogTestButton(help);
    Recorder listener(false, GwResultContinue);
    button->add(&listener);

    bool stillOpen = false;
    ASSERT_TRUE(runModal(
        *dialog, {Script::once([&] { PostMessageA(help, BM_CLICK, 0, 0); }), Script::once([&] {
                      stillOpen = IsWindowVisible(hwnd) != FALSE;
                      PostMessageA(hwnd, WM_CLOSE, 0, 0);
                  })}));
    EXPECT_EQ(count(listener, "activate"), 1);
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(gHelpCalls.shell.size(), 1u);
    EXPECT_EQ(dialog->result(), 2);
    DestroyWindow(hwnd);
}

TEST_F(DialogTest, ClosingWithTheCloseBoxYieldsResult2) {
    GwDialog* const dialog = make(6);
    HWND const hwnd = hwndOf(*dialog);
    Recorder listener(false, GwResultContinue);
    dialog->add(&listener);
    // The close box sends the system command, which the default procedure turns into
    // WM_CLOSE.
    ASSERT_TRUE(
        runModal(*dialog, {Script::once([&] { PostMessageA(hwnd, WM_SYSCOMMAND, SC_CLOSE, 0); })}));
    EXPECT_EQ(dialog->result(), 2);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_TRUE(IsWindow(hwnd)) << "closing only hides the dialog";
    EXPECT_EQ(count(listener, "close"), 1);
    DestroyWindow(hwnd);
}

TEST_F(DialogTest, CloseTakenByAHandlerKeepsTheDialogOpen) {
    GwDialog* const dialog = make(7);
    HWND const hwnd = hwndOf(*dialog);
    Recorder keeper(false, GwResultHandled);
    dialog->add(&keeper);

    bool stillOpen = false;
    ASSERT_TRUE(runModal(
        *dialog, {Script::once([&] { PostMessageA(hwnd, WM_CLOSE, 0, 0); }), Script::once([&] {
                      stillOpen = IsWindowVisible(hwnd) != FALSE;
                      dialog->setVisible(false);
                  })}));
    EXPECT_TRUE(stillOpen);
    EXPECT_EQ(dialog->result(), -1);
    EXPECT_EQ(count(keeper, "close"), 1);
    DestroyWindow(hwnd);
}

TEST_F(DialogTest, CommandOfAControlOtherThanAPushButtonIsDispatchedWithoutEndingTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    HWND const check = GetDlgItem(hwnd, kCheck);
    GwWindow* const checkBox = GwWindow::window(check, false);
    ASSERT_NE(checkBox, nullptr);
    Recorder listener(false, GwResultContinue);
    checkBox->add(&listener);

    dialog->setVisible(true); // modeless
    SendMessageA(check, BM_CLICK, 0, 0);
    EXPECT_EQ(count(listener, "activate"), 1);
    EXPECT_EQ(SendMessageA(check, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_TRUE(IsWindowVisible(hwnd));
    EXPECT_EQ(dialog->result(), -1);
    DestroyWindow(hwnd);
}

TEST_F(DialogTest, CommandsWithoutControlDoNotEndTheDialog) {
    GwDialog* const dialog = load(kButtonsDialog);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    dialog->setVisible(true);
    // lParam 0: a menu or accelerator command; lParam 1: ignored.
    SendMessageA(hwnd, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    EXPECT_EQ(SendMessageA(hwnd, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 1), 0);
    EXPECT_TRUE(IsWindowVisible(hwnd));
    EXPECT_EQ(dialog->result(), -1);
}

TEST_F(DialogTest, ChildDialogIsOnlyShownOrHiddenAndNeverEndsItself) {
    GwFrame frame(1, 0, false);
    GwDialog* const dialog = load(kChildDialog, &frame);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    ASSERT_NE(styleOf(hwnd) & WS_CHILD, 0);
    ASSERT_EQ(GetParent(hwnd), hwndOf(frame));

    dialog->setVisible(false);
    EXPECT_EQ(styleOf(hwnd) & WS_VISIBLE, 0);
    dialog->setModal(true);
    ASSERT_TRUE(dialog->modal());
    dialog->setVisible(true); // returns at once: no loop for a child
    EXPECT_NE(styleOf(hwnd) & WS_VISIBLE, 0);
    EXPECT_FALSE(quitQueued());

    SendMessageA(GetDlgItem(hwnd, IDOK), BM_CLICK, 0, 0);
    EXPECT_EQ(dialog->result(), -1);
    EXPECT_EQ(SendMessageA(hwnd, WM_CLOSE, 0, 0), 0);
    EXPECT_EQ(dialog->result(), -1);
    EXPECT_NE(styleOf(hwnd) & WS_VISIBLE, 0);

    dialog->setVisible(false);
    EXPECT_EQ(styleOf(hwnd) & WS_VISIBLE, 0);
    EXPECT_FALSE(quitQueued()) << "hiding a child dialog ends no loop";
    DestroyWindow(hwnd); // before the frame goes
}

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

// ---- Positions

// What the library's GetSystemMetrics calls see while a test pretends a screen 1080 pixels
// high.
int WINAPI screen1080(int index) {
    return index == SM_CYSCREEN ? 1080 : GetSystemMetrics(index);
}

TEST_F(DialogTest, PositionCountsFromTheBottomOfThe1080PixelScreen) {
    GwDialog* const dialog = make(30);
    HWND const hwnd = hwndOf(*dialog);
    SetWindowPos(hwnd, nullptr, 40, 0, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    ImportHook const screen(GetModuleHandleA("VmGui.dll"), "user32.dll", "GetSystemMetrics",
                            reinterpret_cast<void*>(&screen1080));
    ASSERT_TRUE(screen.installed());

    EXPECT_EQ(dialog->position(), GwPosition(40, 880));
    long x = 0, y = 0;
    dialog->position(x, y);
    EXPECT_EQ(x, 40);
    EXPECT_EQ(y, 880);

    dialog->setPosition(GwPosition(70, 500));
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    EXPECT_EQ(rect.left, 70);
    EXPECT_EQ(rect.bottom, 1080 - 500);
    EXPECT_EQ(rect.bottom - rect.top, 200) << "the size stays";
    EXPECT_EQ(dialog->position(), GwPosition(70, 500));

    dialog->setPosition(10, 880);
    GetWindowRect(hwnd, &rect);
    EXPECT_EQ(rect.left, 10);
    EXPECT_EQ(rect.top, 0);
}

TEST_F(DialogTest, PositionCountsFromTheBottomOfTheScreen) {
    GwDialog* const dialog = make(31);
    HWND const hwnd = hwndOf(*dialog);
    SetWindowPos(hwnd, nullptr, 25, 30, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    int const screen = GetSystemMetrics(SM_CYSCREEN);
    EXPECT_EQ(dialog->position(), GwPosition(25, screen - 230));
    dialog->setPosition(GwPosition(60, 100));
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    EXPECT_EQ(rect.left, 60);
    EXPECT_EQ(rect.bottom, screen - 100);
}

TEST_F(DialogTest, ChildDialogPositionsAreThoseOfItsParentsClientArea) {
    GwFrame frame(1, 0, false);
    resize(hwndOf(frame), 400, 300);
    GwDialog* const dialog = load(kChildDialog, &frame);
    ASSERT_NE(dialog, nullptr);
    HWND const hwnd = hwndOf(*dialog);
    SetWindowPos(hwnd, nullptr, 15, 20, 120, 60, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client = clientRect(hwndOf(frame));
    EXPECT_EQ(dialog->position(), GwPosition(15, client.bottom - 80));
    dialog->setPosition(GwPosition(5, 10));
    RECT const rect = rectInParent(hwnd);
    EXPECT_EQ(rect.left, 5);
    EXPECT_EQ(rect.bottom, client.bottom - 10);
    DestroyWindow(hwnd);
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
