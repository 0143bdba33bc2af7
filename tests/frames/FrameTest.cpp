// The frame window: its class, construction, styles, showing, client, keys, mouse, closing.
#include <gtest/gtest.h>

#include <string>

#include <GwEventData.h>
#include <GwItem.h>

#include "BreakpointCounter.h"
#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

constexpr unsigned long long kNoId = ~0ull;

class FrameTest : public FrameFixture {};

// Ends a message loop that nothing else ended.
bool gTimedOut = false;
void CALLBACK endLoopLate(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    gTimedOut = true;
    PostQuitMessage(1);
}

} // namespace

TEST_F(FrameTest, WindowClassIsRegisteredAtStartUp) {
    WNDCLASSA cls{};
    ASSERT_TRUE(GetClassInfoA(GetModuleHandleA(nullptr), "GwFrame", &cls));
    EXPECT_EQ(cls.style, 0x2Bu);
    EXPECT_EQ(cls.cbClsExtra, 0);
    EXPECT_EQ(cls.cbWndExtra, 0);
    EXPECT_EQ(cls.hIcon, nullptr);
    EXPECT_EQ(cls.hCursor, LoadCursorA(nullptr, IDC_ARROW));
    EXPECT_EQ(cls.hbrBackground, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    EXPECT_EQ(cls.lpszMenuName, nullptr);
}

TEST_F(FrameTest, RegistrationIsKeptWhenTheClassExists) {
    GwFrame::GwRegister again;
    EXPECT_TRUE(again.initInstance());
    WNDCLASSA cls{};
    EXPECT_TRUE(GetClassInfoA(GetModuleHandleA(nullptr), "GwFrame", &cls));
    EXPECT_TRUE(again.exitInstance());
}

TEST_F(FrameTest, ConstructionCreatesAHiddenOverlappedFrameWithAStatusBar) {
    auto* frame = new TestFrame(7, 0);
    HWND hwnd = frame->hwnd();
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "GwFrame");
    EXPECT_EQ(textOf(hwnd), "Mainwindow");
    EXPECT_EQ(styleOf(hwnd) & 0x06CF0000, 0x06CF0000);
    EXPECT_FALSE(IsWindowVisible(hwnd));
    EXPECT_EQ(frame->id(), 7u);
    EXPECT_EQ(GwWindow::window(hwnd, false), frame);
    EXPECT_EQ(frame->owner(), nullptr);
    EXPECT_EQ(frame->menuBar(), nullptr);
    EXPECT_EQ(GetMenu(hwnd), nullptr);
    // The status bar is a child with identifier 0xFE01 and its record is the first bar.
    HWND status = GetDlgItem(hwnd, 0xFE01);
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(frame->statusWindow(), status);
    EXPECT_EQ(classNameOf(status), "msctls_statusbar32");
    ASSERT_NE(frame->statusBar(), nullptr);
    EXPECT_EQ(frame->statusBar()->window(), status);
    ASSERT_NE(frame->bars(), nullptr);
    ASSERT_NE(frame->bars()->at(0), nullptr);
    EXPECT_EQ(frame->bars()->at(0)->bar, frame->statusBar());
    EXPECT_EQ(frame->bars()->at(0)->side, GwWindow::eBottom);
    delete frame;
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_FALSE(IsWindow(status));
}

TEST_F(FrameTest, StatusBarFlagDecidesTheStatusBar) {
    auto* with = new TestFrame(1, 0, true);
    auto* without = new TestFrame(2, 0, false);
    EXPECT_NE(with->statusWindow(), nullptr);
    EXPECT_EQ(without->statusWindow(), nullptr);
    EXPECT_EQ(GetDlgItem(without->hwnd(), 0xFE01), nullptr);
    EXPECT_EQ(without->bars(), nullptr);
    delete with;
    delete without;
}

TEST_F(FrameTest, OwnedFramesHaveTheOwnerAndItsHelpFileButNoStatusBarByDefault) {
    auto* owner = new TestFrame(1, 0, false);
    owner->setHelpFile("owner.hlp");
    auto* owned = new TestFrame(*owner, 2, 0);
    auto* ownedWithBar = new TestFrame(*owner, 3, 0, true);
    EXPECT_EQ(GetWindow(owned->hwnd(), GW_OWNER), owner->hwnd());
    EXPECT_EQ(owned->owner(), owner->hwnd());
    EXPECT_EQ(owned->helpFile(), String("owner.hlp"));
    EXPECT_EQ(owned->statusWindow(), nullptr);
    EXPECT_NE(ownedWithBar->statusWindow(), nullptr);
    EXPECT_EQ(ownedWithBar->helpFile(), String("owner.hlp"));
    delete owned;
    delete ownedWithBar;
    delete owner;
}

TEST_F(FrameTest, FactoryWrapsAnExistingWindowWithoutTables) {
    HWND hwnd = rawWindow();
    GwEventData data(hwnd);
    auto* frame = dynamic_cast<GwFrame*>(Class::createInstance(GwFrame::isa(), &data));
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->window(), hwnd);
    EXPECT_EQ(GwWindow::window(hwnd, false), frame);
    EXPECT_EQ(frame->id(), kNoId);
    EXPECT_EQ(frame->bars(), nullptr);
    EXPECT_EQ(frame->menuBar(), nullptr);
    EXPECT_EQ(frame->client(), nullptr);
    EXPECT_EQ(frame->statusWindow(), nullptr);

    GwEventData empty;
    EXPECT_EQ(GwFrame::newInstance(&empty), nullptr);
    EXPECT_EQ(GwFrame::newInstance(nullptr), nullptr);
    EXPECT_EQ(Class::lookup("GwFrame"), GwFrame::isa());
    EXPECT_TRUE(GwFrame::isa()->isSubclassOf(GwWindow::isa()));
    DestroyWindow(hwnd); // deletes the object
}

TEST_F(FrameTest, SetIdOfATopLevelFrameKeepsTheWindowIdentifier) {
    auto* frame = new TestFrame(5, 0, false);
    frame->setId(0x1234);
    EXPECT_EQ(frame->id(), 0x1234u);
    EXPECT_EQ(GetWindowLongPtrA(frame->hwnd(), GWLP_ID), 0);
    delete frame;
}

TEST_F(FrameTest, SetIdOfAChildFrameSetsTheWindowIdentifier) {
    auto* parent = new TestFrame(1, 0, false);
    HWND child = rawWindow(parent->hwnd(), 3);
    auto* frame = TestFrame::wrap(child);
    frame->setId(0x77);
    EXPECT_EQ(frame->id(), 0x77u);
    EXPECT_EQ(GetWindowLongPtrA(child, GWLP_ID), 0x77);
    delete parent; // and the child with its object
}

TEST_F(FrameTest, CopyHasNoWindowButTheValues) {
    auto* frame = new TestFrame(9, 0, false);
    frame->setHelpFile("copy.hlp");
    GwFrame copy(*frame);
    EXPECT_EQ(copy.window(), nullptr);
    EXPECT_EQ(copy.id(), 9u);
    EXPECT_EQ(copy.helpFile(), String("copy.hlp"));
    EXPECT_EQ(copy.menuBar(), nullptr);
    delete frame;
}

TEST_F(FrameTest, FrameStyleFromAnIntShiftsTheLowWordByThree) {
    auto* frame = new TestFrame(1, 0, false);
    HWND hwnd = frame->hwnd();
    frame->setFrameStyle(0x800);
    EXPECT_EQ(extendedStyleOf(hwnd) & 0x4000, 0x4000);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_CONTEXTHELP, 0);
    // The high word is cleared of the boxes and the system menu: none asked for here.
    EXPECT_EQ(styleOf(hwnd) & 0xB0000, 0);

    frame->setFrameStyle(0x8000 | 0x10000 | 0x80000);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_APPWINDOW, WS_EX_APPWINDOW);
    EXPECT_EQ(styleOf(hwnd) & 0xB0000, WS_MAXIMIZEBOX | WS_SYSMENU);
    delete frame;
}

TEST_F(FrameTest, FrameStyleFlagSetsItsOwnBit) {
    auto* frame = new TestFrame(1, 0, false);
    HWND hwnd = frame->hwnd();
    frame->setFrameStyle(GwFrame::eContextHelp, true);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_CONTEXTHELP, WS_EX_CONTEXTHELP);
    EXPECT_EQ(extendedStyleOf(hwnd) & 0x4000, 0);
    frame->setFrameStyle(GwFrame::eContextHelp, false);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_CONTEXTHELP, 0);

    frame->setFrameStyle(GwFrame::eTaskBarButton, true);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_APPWINDOW, WS_EX_APPWINDOW);
    frame->setFrameStyle(GwFrame::eMinimizeBox, false);
    EXPECT_EQ(styleOf(hwnd) & WS_MINIMIZEBOX, 0);
    EXPECT_EQ(styleOf(hwnd) & WS_MAXIMIZEBOX, WS_MAXIMIZEBOX);
    frame->setFrameStyle(GwFrame::eSystemMenu, false);
    EXPECT_EQ(styleOf(hwnd) & WS_SYSMENU, 0);
    frame->setFrameStyle(GwFrame::eSystemMenu, true);
    EXPECT_EQ(styleOf(hwnd) & WS_SYSMENU, WS_SYSMENU);

    LONG const style = styleOf(hwnd);
    LONG const extended = extendedStyleOf(hwnd);
    frame->setFrameStyle(static_cast<GwFrame::eFrameStyle>(0x40), true);
    EXPECT_EQ(styleOf(hwnd), style);
    EXPECT_EQ(extendedStyleOf(hwnd), extended);
    delete frame;
}

TEST_F(FrameTest, BorderStyles) {
    auto* frame = new TestFrame(1, 0, false);
    HWND hwnd = frame->hwnd();
    frame->setBorderStyle(GwFrame::eNoBorder);
    EXPECT_EQ(styleOf(hwnd) & 0xC40000, 0);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_DLGMODALFRAME, 0);
    frame->setBorderStyle(GwFrame::eSizingBorder);
    EXPECT_EQ(styleOf(hwnd) & 0xC40000, WS_CAPTION | WS_THICKFRAME);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_DLGMODALFRAME, 0);
    frame->setBorderStyle(GwFrame::eDialogBorder);
    EXPECT_EQ(styleOf(hwnd) & 0xC40000, WS_CAPTION);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_DLGMODALFRAME, WS_EX_DLGMODALFRAME);
    frame->setBorderStyle(GwFrame::eCaptionOnly);
    EXPECT_EQ(styleOf(hwnd) & 0xC40000, WS_CAPTION);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_DLGMODALFRAME, 0);
    // Values beyond 3 are as 0.
    frame->setBorderStyle(static_cast<GwFrame::eBorderStyle>(9));
    EXPECT_EQ(styleOf(hwnd) & 0xC40000, 0);
    delete frame;
}

TEST_F(FrameTest, DropFiles) {
    auto* frame = new TestFrame(1, 0, false);
    HWND hwnd = frame->hwnd();
    frame->setDropFilesEnabled(true);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_ACCEPTFILES, WS_EX_ACCEPTFILES);
    // The style is set first; DragAcceptFiles(FALSE) then takes it away again.
    frame->setDropFilesEnabled(false);
    EXPECT_EQ(extendedStyleOf(hwnd) & WS_EX_ACCEPTFILES, 0);
    delete frame;
}

TEST_F(FrameTest, ShowingAndHiding) {
    auto* owner = new TestFrame(1, 0, false);
    auto* frame = new TestFrame(*owner, 2, 0);
    owner->setVisible(true);
    EXPECT_TRUE(IsWindowVisible(owner->hwnd()));
    frame->setVisible(true);
    EXPECT_TRUE(IsWindowVisible(frame->hwnd()));
    EXPECT_TRUE(frame->visible());
    EXPECT_EQ(GetForegroundWindow(), frame->hwnd());
    frame->setVisible(false);
    EXPECT_FALSE(IsWindowVisible(frame->hwnd()));
    EXPECT_EQ(GetForegroundWindow(), owner->hwnd());
    delete frame;
    delete owner;
}

TEST_F(FrameTest, DeletingAnOwnedFrameGivesTheForegroundToTheOwner) {
    auto* owner = new TestFrame(1, 0, false);
    auto* frame = new TestFrame(*owner, 2, 0);
    owner->setVisible(true);
    frame->setVisible(true);
    ASSERT_EQ(GetForegroundWindow(), frame->hwnd());
    HWND hwnd = frame->hwnd();
    delete frame;
    EXPECT_EQ(GetForegroundWindow(), owner->hwnd());
    // The frame told WinHelp that it is going.
    ASSERT_FALSE(gHelpCalls.winHelp.empty());
    EXPECT_EQ(gHelpCalls.winHelp.back().command, static_cast<UINT>(HELP_QUIT));
    EXPECT_EQ(gHelpCalls.winHelp.back().window, hwnd);
    EXPECT_EQ(gHelpCalls.winHelp.back().file, "");
    delete owner;
}

TEST_F(FrameTest, IconsComeFromTheResourceModule) {
    // The shell library carries icons; the resource holds it by file name.
    GwResource shell(String("shell32.dll"));
    HMODULE module = static_cast<HMODULE>(shell.module());
    ASSERT_NE(module, nullptr);
    HICON expected = LoadIconA(module, MAKEINTRESOURCEA(1));
    if (expected == nullptr)
        GTEST_SKIP() << "the shell library of this system has no icon 1";
    auto* frame = new TestFrame(1, 0, false);
    frame->setIcon(1, shell);
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageA(frame->hwnd(), WM_GETICON, ICON_BIG, 0)),
              expected);
    // An icon the module lacks sets none.
    frame->setIcon(0x7FFF, shell);
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_GETICON, ICON_BIG, 0), 0);
    delete frame;
}

TEST_F(FrameTest, ClosingAFrameThatNobodyKeepsEndsTheLoop) {
    auto* frame = new TestFrame(1, 0, false);
    frame->setVisible(true);
    PostMessageA(frame->hwnd(), WM_CLOSE, 0, 0);
    // A later message tells whether the loop went on after the close.
    PostMessageA(frame->hwnd(), WM_USER + 1, 0, 0);
    gTimedOut = false;
    UINT_PTR timer = SetTimer(nullptr, 0, 2000, &endLoopLate);
    GwWindow::msgLoop();
    KillTimer(nullptr, timer);
    EXPECT_FALSE(gTimedOut);
    // Closing ends the loop but leaves the window.
    EXPECT_TRUE(IsWindow(frame->hwnd()));
    delete frame;
}

TEST_F(FrameTest, AHandlerThatTakesTheCloseKeepsTheLoopRunning) {
    auto* frame = new TestFrame(1, 0, false);
    Recorder keeper(false, GwResultHandled);
    frame->add(&keeper);
    SendMessageA(frame->hwnd(), WM_CLOSE, 0, 0);
    EXPECT_EQ(keeper.names(), std::vector<std::string>{"close"});
    MSG msg;
    EXPECT_FALSE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));

    Recorder passer;
    frame->remove(&keeper);
    frame->add(&passer);
    SendMessageA(frame->hwnd(), WM_CLOSE, 0, 0);
    EXPECT_EQ(passer.names(), std::vector<std::string>{"close"});
    EXPECT_TRUE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    frame->remove(&passer);
    delete frame;
}

TEST_F(FrameTest, KeysGoToTheClient) {
    auto* frame = new TestFrame(1, 0, false);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 5));
    Recorder inClient(false, GwResultHandled);
    Recorder inFrame(false, GwResultHandled);
    client->add(&inClient);
    frame->add(&inFrame);
    frame->setClient(client);
    inClient.calls.clear();                                     // the layout placed the client
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_CHAR, 'a', 0), 0); // the client's answer
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_KEYDOWN, VK_RETURN, 0), 0);
    EXPECT_EQ(inClient.names(), (std::vector<std::string>{"key", "key"}));
    EXPECT_TRUE(inFrame.calls.empty());
    client->remove(&inClient);
    frame->setClient(nullptr);

    // Without a client the frame's handlers get the keys; taken keys answer 1.
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_CHAR, 'b', 0), 1);
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_SYSKEYDOWN, VK_ESCAPE, 0), 1);
    ASSERT_EQ(inFrame.calls.size(), 2u);
    EXPECT_EQ(inFrame.calls[0].a, static_cast<unsigned int>('b'));
    EXPECT_EQ(inFrame.calls[1].a, 7u);
    EXPECT_NE(inFrame.lastState & 0x2000000u, 0u); // Alt
    frame->remove(&inFrame);
    delete frame;
}

TEST_F(FrameTest, CommandsFromControlsAreReflectedAndLParamOneIsIgnored) {
    auto* frame = new TestFrame(1, 0, false);
    auto* button = new DispatchingWindow(rawWindow(frame->hwnd(), 11));
    Recorder inFrame;
    frame->add(&inFrame);
    SendMessageA(frame->hwnd(), WM_COMMAND, 11, reinterpret_cast<LPARAM>(button->window()));
    // The control's activate bubbles to the frame's handlers with the control as window.
    ASSERT_EQ(inFrame.names(), std::vector<std::string>{"activate"});
    EXPECT_EQ(inFrame.calls[0].window, button);
    inFrame.calls.clear();
    EXPECT_EQ(SendMessageA(frame->hwnd(), WM_COMMAND, 11, 1), 0);
    EXPECT_TRUE(inFrame.calls.empty());
    frame->remove(&inFrame);
    delete frame;
}

TEST_F(FrameTest, MouseMovingFromAControlIntoItsFrameLeavesTheControlOnly) {
    auto* frame = new TestFrame(1, 0, false);
    auto* control = new DispatchingWindow(rawWindow(frame->hwnd(), 4, 10, 10, 50, 20));
    Recorder inControl;
    Recorder inFrame;
    control->add(&inControl);
    frame->add(&inFrame);
    SendMessageA(static_cast<HWND>(control->window()), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(inControl.names(), (std::vector<std::string>{"enter", "move"}));
    EXPECT_EQ(GwWindow::mEnterWindow, control);
    inControl.calls.clear();

    SendMessageA(frame->hwnd(), WM_MOUSEMOVE, 0, MAKELPARAM(100, 100));
    ASSERT_EQ(inControl.names(), std::vector<std::string>{"leave"});
    EXPECT_EQ(inControl.calls[0].window, control);
    // The frame sees the move, and neither enters nor leaves.
    EXPECT_EQ(inFrame.names(), std::vector<std::string>{"move"});
    EXPECT_EQ(GwWindow::mEnterWindow, nullptr);

    // A move over the frame's border leaves the control as well.
    SendMessageA(static_cast<HWND>(control->window()), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    inControl.calls.clear();
    inFrame.calls.clear();
    SendMessageA(frame->hwnd(), WM_NCMOUSEMOVE, HTCAPTION, MAKELPARAM(100, 100));
    EXPECT_EQ(inControl.names(), std::vector<std::string>{"leave"});
    EXPECT_TRUE(inFrame.calls.empty());
    control->remove(&inControl);
    frame->remove(&inFrame);
    delete frame;
}

TEST_F(FrameTest, FocusGoesToTheClient) {
    auto* frame = new TestFrame(1, 0, false);
    frame->setVisible(true);
    SetFocus(frame->hwnd());
    ASSERT_EQ(GetFocus(), frame->hwnd());
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 5));
    frame->setClient(client);
    EXPECT_EQ(frame->client(), client);
    EXPECT_EQ(GetFocus(), client->window());
    SetFocus(nullptr);
    SendMessageA(frame->hwnd(), WM_SETFOCUS, 0, 0);
    EXPECT_EQ(GetFocus(), client->window());
    delete frame;
}

TEST_F(FrameTest, ClientIsForgottenWhenItGoes) {
    auto* frame = new TestFrame(1, 0, false);
    auto* client = new DispatchingWindow(rawWindow(frame->hwnd(), 5));
    frame->setClient(client);
    EXPECT_TRUE(client->hasListener(frame));
    DestroyWindow(static_cast<HWND>(client->window())); // the object goes with its window
    EXPECT_EQ(frame->client(), nullptr);

    auto* second = new DispatchingWindow(rawWindow(frame->hwnd(), 6));
    frame->setClient(second);
    delete second;
    EXPECT_EQ(frame->client(), nullptr);
    // Laying out without the client is safe.
    resize(frame->hwnd(), 300, 200);
    delete frame;
}

TEST_F(FrameTest, ReplacingTheClientStopsListeningToTheOldOne) {
    auto* frame = new TestFrame(1, 0, false);
    auto* first = new DispatchingWindow(rawWindow(frame->hwnd(), 5));
    auto* second = new DispatchingWindow(rawWindow(frame->hwnd(), 6));
    frame->setClient(first);
    frame->setClient(second);
    EXPECT_FALSE(first->hasListener(frame));
    EXPECT_TRUE(second->hasListener(frame));
    delete frame;
}

TEST_F(FrameTest, AnEventHandlerThatGoesIsDetached) {
    auto* frame = new TestFrame(1, 0, false);
    auto* handler = new Recorder(false);
    frame->add(handler);
    ASSERT_NE(frame->handlers(), nullptr);
    delete handler;
    EXPECT_EQ(frame->handlers(), nullptr);
    delete frame;
}

TEST_F(FrameTest, ItemsAreIgnored) {
    auto* frame = new TestFrame(1, 0, false);
    GwItem item(3);
    EXPECT_EQ(&frame->add(item), frame);
    EXPECT_EQ(&frame->remove(item), frame);
    delete frame;
}
