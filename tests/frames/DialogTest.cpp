// The dialog: its window and class, modeless and modal showing, the results of OK, Cancel,
// push buttons and closing, the help button, and positions from the bottom of the screen.
#include <gtest/gtest.h>

#include <windows.h>

#include <GwDialog.h>
#include <GwEventData.h>

#include "DialogTesting.h"

using namespace testing_dialogs;
using namespace testing_frames;
using namespace testing_windows;

namespace {

// The child window with the text (the help button has identifier 0, like other windows).
HWND childWithText(HWND parent, char const* text) {
    for (HWND child = GetWindow(parent, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (textOf(child) == text)
            return child;
    }
    return nullptr;
}

} // namespace

GW_CLASS_MAKES(testing_dialogs::DialogTestButton, "DialogTestButton", "GwControl")

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
