// MDI frames: the frame and its client, child frames, the window menu and its commands,
// arranging and closing the children, and the MDI keys in the message loop.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <memory>
#include <utility>
#include <vector>

#include <GwEventData.h>
#include <GwMDIFrame.h>

#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

// An MDI frame whose protected parts the tests reach.
class TestMDIFrame : public GwMDIFrame {
public:
    using GwMDIFrame::callDefHandler;
    using GwMDIFrame::closeAll;
    using GwMDIFrame::GwMDIFrame;
    using GwMDIFrame::msgHandler;
    using GwMDIFrame::msgHandlerCommand;

    HWND hwnd() const { return static_cast<HWND>(window()); }
    HWND clientWindow() const {
        return mdiClient() != nullptr ? static_cast<HWND>(mdiClient()->window()) : nullptr;
    }

    // The library's file menu (menu 100 of the library's resources) as the menu bar.
    void useLibraryMenuBar() {
        setResource(GwThisDll::current().resource());
        setMenuBar(100);
    }
};

// Set when a child's object is deleted; shared, since the object may outlive the test body.
using Flag = std::shared_ptr<bool>;

// A child frame that tells when its object is deleted.
class TrackedChild : public GwMDIChildFrame {
public:
    TrackedChild(GwMDIFrame& frame, Flag* deleted) : GwMDIChildFrame(frame) {
        *deleted = std::make_shared<bool>(false);
        mDeleted = *deleted;
    }
    ~TrackedChild() override { *mDeleted = true; }

    using GwMDIChildFrame::callDefHandler;
    using GwMDIChildFrame::msgHandler;

    HWND hwnd() const { return static_cast<HWND>(window()); }

private:
    Flag mDeleted;
};

HWND activeChild(HWND client) {
    return reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
}

// The bytes of a menu entry's text, as the menu holds them (Windows-1252).
std::string menuText(HMENU menu, UINT item, UINT flags) {
    char text[128] = {};
    GetMenuStringA(menu, item, text, sizeof text, flags);
    return text;
}

int width(RECT const& rect) {
    return rect.right - rect.left;
}

int height(RECT const& rect) {
    return rect.bottom - rect.top;
}

// The callbacks among names that are one of wanted, in their order.
std::vector<std::string> only(std::vector<std::string> const& names,
                              std::vector<std::string> const& wanted) {
    std::vector<std::string> out;
    for (std::string const& name : names) {
        if (std::find(wanted.begin(), wanted.end(), name) != wanted.end())
            out.push_back(name);
    }
    return out;
}

// A queued key-down message of key for window, as the message loop hands it over.
MSG keyDown(HWND window, WPARAM key) {
    MSG msg{};
    msg.hwnd = window;
    msg.message = WM_KEYDOWN;
    msg.wParam = key;
    msg.lParam = 1;
    return msg;
}

// Ends a message loop that nothing else ended.
bool gTimedOut = false;
void CALLBACK endLoopLate(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    gTimedOut = true;
    PostQuitMessage(1);
}

// The WM_MDISETMENU messages sent to one window while the recorder lives.
class SetMenuRecorder {
public:
    explicit SetMenuRecorder(HWND target) {
        sTarget = target;
        sCalls.clear();
        mHook = SetWindowsHookExA(WH_CALLWNDPROC, &record, nullptr, GetCurrentThreadId());
    }
    ~SetMenuRecorder() {
        if (mHook != nullptr)
            UnhookWindowsHookEx(mHook);
    }
    SetMenuRecorder(SetMenuRecorder const&) = delete;
    SetMenuRecorder& operator=(SetMenuRecorder const&) = delete;

    bool hooked() const { return mHook != nullptr; }
    static std::vector<std::pair<WPARAM, LPARAM>> const& calls() { return sCalls; }

private:
    static LRESULT CALLBACK record(int code, WPARAM wParam, LPARAM lParam) {
        auto const* message = reinterpret_cast<CWPSTRUCT const*>(lParam);
        if (code == HC_ACTION && message != nullptr && message->hwnd == sTarget &&
            message->message == WM_MDISETMENU)
            sCalls.emplace_back(message->wParam, message->lParam);
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    HHOOK mHook = nullptr;
    static inline HWND sTarget = nullptr;
    static inline std::vector<std::pair<WPARAM, LPARAM>> sCalls;
};

class MDITest : public FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        frame = new TestMDIFrame(1);
        hwnd = frame->hwnd();
        client = frame->clientWindow();
        ASSERT_NE(hwnd, nullptr);
        ASSERT_NE(client, nullptr);
    }
    void TearDown() override {
        delete frame;
        setModifierKeys(false, false);
        FrameFixture::TearDown();
        quitPosted();
    }

    // Shows the frame at a fixed size.
    void showFrame() {
        SetWindowPos(hwnd, nullptr, 10, 10, 640, 480, SWP_NOZORDER | SWP_NOACTIVATE);
        frame->setVisible(true);
    }

    // A new, shown child; the latest one is the active child.
    TrackedChild* addChild(Flag* deleted) {
        auto* child = new TrackedChild(*frame, deleted);
        child->setVisible(true);
        return child;
    }

    // The window menu merged into the library's file menu bar: [Datei, Fenster, Hilfe].
    HMENU mergeWindowMenu() {
        frame->useLibraryMenuBar();
        frame->setMenuStyle(GwFrame::eWindowMenu | GwFrame::eHelpMenu);
        HMENU const bar = GetMenu(hwnd);
        return GetMenuItemCount(bar) == 3 ? GetSubMenu(bar, 1) : nullptr;
    }

    // Chooses a command from a popup menu as the user does: the entry is selected, then
    // its command arrives.
    void choose(HMENU popup, unsigned int command) {
        SendMessageA(hwnd, WM_MENUSELECT, MAKEWPARAM(command, MF_STRING),
                     reinterpret_cast<LPARAM>(popup));
        SendMessageA(hwnd, WM_COMMAND, MAKEWPARAM(command, 0), 0);
    }

    TestMDIFrame* frame = nullptr;
    HWND hwnd = nullptr;
    HWND client = nullptr;
};

} // namespace

// --- Class records ----------------------------------------------------------------------------

TEST_F(MDITest, ClassRecordsNameTheirParentsAndMakeInstances) {
    struct Row {
        char const* name;
        Class const* parent;
    };
    for (Row const& row : {Row{"GwMDIFrame", GwFrame::isa()}, Row{"GwMDIClient", GwWindow::isa()},
                           Row{"GwMDIChildFrame", GwFrame::isa()}}) {
        Class const* record = Class::lookup(row.name);
        ASSERT_NE(record, nullptr) << row.name;
        EXPECT_TRUE(record->isSubclassOf(row.parent)) << row.name;
        GwEventData none;
        EXPECT_EQ(record->createInstance(&none), nullptr) << row.name;
    }
    EXPECT_EQ(frame->isA(), Class::lookup("GwMDIFrame"));
    EXPECT_EQ(frame->mdiClient()->isA(), Class::lookup("GwMDIClient"));

    HWND raw = rawWindow();
    GwEventData data(raw);
    Object* made = Class::lookup("GwMDIFrame")->createInstance(&data);
    ASSERT_NE(dynamic_cast<GwMDIFrame*>(made), nullptr);
    EXPECT_EQ(GwWindow::window(raw, false), made);
    EXPECT_EQ(static_cast<GwMDIFrame*>(made)->id(), ~0ull);
    DestroyWindow(raw);
    EXPECT_FALSE(IsWindow(raw));
}

// --- Construction -----------------------------------------------------------------------------

TEST_F(MDITest, ClientIsAnMdiClientControlWithIdentifierFD01) {
    EXPECT_EQ(GetDlgItem(hwnd, 0xFD01), client);
    EXPECT_EQ(GetDlgCtrlID(client), 0xFD01);
    EXPECT_STRCASEEQ(classNameOf(client).c_str(), "MDIClient");
    EXPECT_EQ(styleOf(client) & (WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN),
              WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN);
    EXPECT_NE(extendedStyleOf(client) & WS_EX_CLIENTEDGE, 0);
    EXPECT_EQ(GetParent(client), hwnd);
    EXPECT_EQ(GwWindow::window(client, false), frame->mdiClient());
    EXPECT_EQ(frame->client(), frame->mdiClient());
    EXPECT_EQ(frame->id(), 1u);
    EXPECT_STREQ(classNameOf(hwnd).c_str(), "GwFrame");
}

TEST_F(MDITest, OwnerlessFramesHaveAStatusBarBelowTheClient) {
    ASSERT_NE(frame->statusWindow(), nullptr);
    showFrame();
    RECT const area = clientRect(hwnd);
    RECT const status = rectInParent(static_cast<HWND>(frame->statusWindow()));
    RECT const placed = rectInParent(client);
    EXPECT_EQ(placed.left, 0);
    EXPECT_EQ(placed.top, 0);
    EXPECT_EQ(placed.right, area.right);
    EXPECT_EQ(placed.bottom, status.top);
    EXPECT_EQ(status.bottom, area.bottom);

    for (auto* other : {new TestMDIFrame(2, 0), new TestMDIFrame(3, 0, 0)}) {
        EXPECT_NE(other->statusWindow(), nullptr);
        EXPECT_NE(other->clientWindow(), nullptr);
        delete other;
    }
}

TEST_F(MDITest, OwnedFramesHaveTheOwnerAndNoStatusBar) {
    frame->setHelpFile("mdi.hlp");
    for (auto* owned : {new TestMDIFrame(*frame, 2), new TestMDIFrame(*frame, 3, 0),
                        new TestMDIFrame(*frame, 4, 0, GwFrame::eWindowMenu)}) {
        EXPECT_EQ(GetWindow(owned->hwnd(), GW_OWNER), hwnd);
        EXPECT_EQ(owned->statusWindow(), nullptr);
        EXPECT_EQ(owned->helpFile(), String("mdi.hlp"));
        EXPECT_EQ(GetDlgCtrlID(owned->clientWindow()), 0xFD01);
        delete owned;
    }
}

TEST_F(MDITest, ChildrenAreNumberedFromFF00AndBecomeActive) {
    frame->setHelpFile("child.hlp");
    Flag firstDeleted, secondDeleted;
    auto* first = new TrackedChild(*frame, &firstDeleted);
    HWND const one = first->hwnd();
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(GetParent(one), client);
    EXPECT_STREQ(classNameOf(one).c_str(), "GwFrame");
    EXPECT_NE(extendedStyleOf(one) & WS_EX_MDICHILD, 0);
    EXPECT_NE(styleOf(one) & WS_CHILD, 0);
    EXPECT_EQ(GetDlgCtrlID(one), 0xFF00);
    EXPECT_EQ(first->id(), 0xFF00u);
    EXPECT_EQ(first->helpFile(), String("child.hlp"));
    EXPECT_EQ(first->statusWindow(), nullptr);
    EXPECT_EQ(GwWindow::window(one, false), first);
    EXPECT_EQ(activeChild(client), one);
    EXPECT_EQ(frame->mdiClient()->active(), first);

    auto* second = new TrackedChild(*frame, &secondDeleted);
    EXPECT_EQ(GetDlgCtrlID(second->hwnd()), 0xFF01);
    EXPECT_EQ(second->id(), 0xFF01u);
    EXPECT_EQ(activeChild(client), second->hwnd());
    EXPECT_EQ(frame->mdiClient()->active(), second);

    // The child's own identifier leaves the window's, which the client numbered, alone.
    first->setId(5);
    EXPECT_EQ(first->id(), 5u);
    EXPECT_EQ(GetDlgCtrlID(one), 0xFF00);

    delete frame;
    frame = nullptr;
    EXPECT_FALSE(IsWindow(one));
    EXPECT_TRUE(*firstDeleted);
    EXPECT_TRUE(*secondDeleted);
}

TEST_F(MDITest, DeletingAChildDestroysItsWindowThroughTheClient) {
    Flag firstDeleted, secondDeleted;
    auto* first = addChild(&firstDeleted);
    auto* second = addChild(&secondDeleted);
    HWND const gone = second->hwnd();
    delete second;
    EXPECT_FALSE(IsWindow(gone));
    EXPECT_EQ(activeChild(client), first->hwnd());
    EXPECT_EQ(GetWindow(client, GW_CHILD), first->hwnd());
    EXPECT_FALSE(*firstDeleted);
}

TEST_F(MDITest, DestroyingTheFrameWindowTakesClientChildrenAndObjectsWithIt) {
    Flag deleted;
    HWND const child = addChild(&deleted)->hwnd();
    Recorder recorder;
    frame->add(&recorder);
    DestroyWindow(hwnd);
    frame = nullptr; // the frame object went with its window
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_FALSE(IsWindow(client));
    EXPECT_FALSE(IsWindow(child));
    EXPECT_TRUE(*deleted);
    EXPECT_EQ(only(recorder.names(), {"destroy"}), std::vector<std::string>{"destroy"});
    EXPECT_FALSE(quitPosted());
}

// --- Client -----------------------------------------------------------------------------------

TEST_F(MDITest, SetClientWithAPlainWindowLeavesTheMdiClientInPlace) {
    GwMDIClient* const mdi = frame->mdiClient();
    auto* plain = new DispatchingWindow(rawWindow(hwnd, 77, 0, 0, 50, 50));
    frame->setClient(plain);
    EXPECT_EQ(frame->client(), mdi);
    EXPECT_EQ(frame->mdiClient(), mdi);
    frame->setClient(nullptr);
    EXPECT_EQ(frame->client(), mdi);

    // Another MDI client is taken.
    auto* second = new GwMDIClient(*frame, 0xFD02);
    frame->setClient(second);
    EXPECT_EQ(frame->mdiClient(), second);
}

TEST_F(MDITest, AFrameForgetsItsClientWhenTheClientWindowGoes) {
    DestroyWindow(client);
    EXPECT_EQ(frame->client(), nullptr);
    EXPECT_EQ(frame->mdiClient(), nullptr);
    // Without a client the default handling is DefWindowProcA.
    EXPECT_EQ(frame->callDefHandler(WM_GETTEXTLENGTH, 0, 0), 10); // "Mainwindow"
}

TEST_F(MDITest, ClientTakesTheSecondLastPopupOfTheBarAsWindowMenu) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    int const entries = GetMenuItemCount(windowMenu);
    auto* second = new GwMDIClient(*frame, 0xFD02);
    frame->setClient(second);
    showFrame();
    Flag deleted;
    TrackedChild* child = addChild(&deleted);
    child->setText("Dokument");
    SendMessageA(static_cast<HWND>(second->window()), WM_MDIREFRESHMENU, 0, 0);
    // The client lists its child in the window menu, under the child's identifier.
    ASSERT_GT(GetMenuItemCount(windowMenu), entries);
    EXPECT_NE(menuText(windowMenu, 0xFF00, MF_BYCOMMAND).find("Dokument"), std::string::npos);
}

TEST_F(MDITest, ClientButtonsKeysAndClicksGoToItsHandlersFirst) {
    Recorder taker(false, GwResultHandled);
    frame->mdiClient()->add(&taker);
    EXPECT_EQ(SendMessageA(client, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(SendMessageA(client, WM_RBUTTONUP, 0, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(SendMessageA(client, WM_MBUTTONDBLCLK, MK_MBUTTON, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(SendMessageA(client, GwMsgLeftClick, 0, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(SendMessageA(client, WM_CHAR, 'a', 1), 1);
    EXPECT_EQ(SendMessageA(client, WM_SYSCHAR, 'b', 1), 1);
    EXPECT_EQ(SendMessageA(client, WM_KEYDOWN, VK_HOME, 1), 1);
    ASSERT_EQ(taker.calls.size(), 7u);
    EXPECT_EQ(taker.calls[0].callback, "button");
    EXPECT_EQ(taker.calls[0].a & 0x2, 0x2u);
    EXPECT_EQ(taker.calls[3].a & 0x4, 0x4u);
    EXPECT_EQ(taker.calls[4].callback, "key");
    EXPECT_EQ(taker.calls[4].a, unsigned('a'));
    EXPECT_EQ(taker.calls[6].a, 32u);

    // The frame hands its keys to the client.
    SendMessageA(hwnd, WM_CHAR, 'z', 1);
    ASSERT_EQ(taker.calls.size(), 8u);
    EXPECT_EQ(taker.calls[7].a, unsigned('z'));

    // Untaken, the control's own procedure answers.
    taker.result = GwResultContinue;
    EXPECT_EQ(SendMessageA(client, WM_CHAR, 'c', 1), 0);
    EXPECT_EQ(taker.calls.size(), 9u);
    frame->mdiClient()->remove(&taker);
    KillTimer(client, 1);
}

TEST_F(MDITest, ClientActivatesMaximizesAndRestoresChildren) {
    showFrame();
    Flag d1, d2, d3;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    TrackedChild* three = addChild(&d3);
    GwMDIClient& mdi = *frame->mdiClient();
    ASSERT_EQ(mdi.active(), three);

    mdi.setActive(*one);
    EXPECT_EQ(mdi.active(), one);
    mdi.setActive(*two);
    EXPECT_EQ(mdi.active(), two);

    mdi.setMaximized(*two, true);
    EXPECT_TRUE(IsZoomed(two->hwnd()));
    mdi.setMaximized(*two, false);
    EXPECT_FALSE(IsZoomed(two->hwnd()));

    // Forward from a child activates another child, and backward returns to it.
    mdi.setActive(*two, true);
    GwMDIChildFrame* const next = mdi.active();
    EXPECT_NE(next, two);
    EXPECT_NE(next, nullptr);
    mdi.setActive(false);
    EXPECT_EQ(mdi.active(), two);
    mdi.setActive(true);
    EXPECT_EQ(mdi.active(), next);
}

TEST_F(MDITest, ActiveIsNullWithoutChildOrForAForeignChild) {
    EXPECT_EQ(frame->mdiClient()->active(), nullptr);
    // A child window of another class gets an object, but not a child frame.
    WNDCLASSA cls{};
    cls.lpfnWndProc = DefMDIChildProcA;
    cls.hInstance = GetModuleHandleA(nullptr);
    cls.lpszClassName = "VmGuiTestMDIChild";
    RegisterClassA(&cls);
    MDICREATESTRUCTA create{};
    create.szClass = "VmGuiTestMDIChild";
    create.szTitle = "fremd";
    create.hOwner = GetModuleHandleA(nullptr);
    create.x = create.y = create.cx = create.cy = CW_USEDEFAULT;
    create.style = WS_VISIBLE;
    HWND const foreign = reinterpret_cast<HWND>(
        SendMessageA(client, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&create)));
    ASSERT_NE(foreign, nullptr);
    SendMessageA(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(foreign), 0);
    ASSERT_EQ(activeChild(client), foreign);
    EXPECT_EQ(frame->mdiClient()->active(), nullptr);
    EXPECT_NE(GwWindow::window(foreign, false), nullptr);
}

TEST_F(MDITest, ChildActivatesMaximizesAndRestoresItself) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    one->setActive(true);
    EXPECT_EQ(activeChild(client), one->hwnd());
    one->setActive(false);
    EXPECT_EQ(activeChild(client), two->hwnd());
    two->setMaximized(true);
    EXPECT_TRUE(IsZoomed(two->hwnd()));
    two->setMaximized(false);
    EXPECT_FALSE(IsZoomed(two->hwnd()));
}

// --- Frame messages ---------------------------------------------------------------------------

TEST_F(MDITest, MoveAndSizeAreAnsweredWithoutTheDefaultFrameProcedure) {
    showFrame();
    RECT const before = rectInParent(client);
    EXPECT_EQ(SendMessageA(hwnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(50, 40)), 0);
    EXPECT_EQ(SendMessageA(hwnd, WM_MOVE, 0, MAKELPARAM(3, 3)), 0);
    RECT const after = rectInParent(client);
    EXPECT_EQ(after.right, before.right);
    EXPECT_EQ(after.bottom, before.bottom);
    // A real resize still lays the client out.
    resize(hwnd, 500, 300);
    EXPECT_EQ(rectInParent(client).right, clientRect(hwnd).right);
}

TEST_F(MDITest, DefaultHandlingIsTheDefaultFrameProcedure) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    ASSERT_EQ(activeChild(client), two->hwnd());
    // A command of no menu goes to DefFrameProcA, which activates the child it names.
    SendMessageA(hwnd, WM_COMMAND, MAKEWPARAM(0xFF00, 0), 0);
    EXPECT_EQ(activeChild(client), one->hwnd());
    EXPECT_EQ(frame->callDefHandler(WM_COMMAND, MAKEWPARAM(0xFF01, 0), 0), 0);
    EXPECT_EQ(activeChild(client), two->hwnd());
}

TEST_F(MDITest, ChildDefaultHandlingIsTheDefaultChildProcedure) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    ASSERT_EQ(activeChild(client), two->hwnd());
    // DefMDIChildProcA knows the MDI system commands.
    SendMessageA(two->hwnd(), WM_SYSCOMMAND, SC_NEXTWINDOW, 0);
    EXPECT_EQ(activeChild(client), one->hwnd());
    SendMessageA(one->hwnd(), WM_SYSCOMMAND, SC_MAXIMIZE, 0);
    EXPECT_TRUE(IsZoomed(one->hwnd()));
}

TEST_F(MDITest, ClosingAChildThatNoHandlerKeepsDeletesItsObject) {
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    HWND const gone = two->hwnd();
    Recorder recorder;
    two->add(&recorder);
    SendMessageA(gone, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(gone));
    EXPECT_TRUE(*d2);
    EXPECT_EQ(only(recorder.names(), {"close", "destroy"}),
              (std::vector<std::string>{"close", "destroy"}));
    EXPECT_EQ(GetWindow(client, GW_CHILD), one->hwnd());
    // A child is no top-level frame: closing it does not end the loop.
    EXPECT_FALSE(quitPosted());
    EXPECT_FALSE(*d1);

    // GwWindow::sendMessage(eClose) closes it the same way.
    HWND const last = one->hwnd();
    one->sendMessage(GwWindow::eClose);
    EXPECT_FALSE(IsWindow(last));
    EXPECT_TRUE(*d1);
    EXPECT_FALSE(quitPosted());
}

TEST_F(MDITest, AChildKeptByAHandlerStays) {
    Flag deleted;
    TrackedChild* child = addChild(&deleted);
    Recorder keeper(false, GwResultHandled);
    child->add(&keeper);
    EXPECT_EQ(SendMessageA(child->hwnd(), WM_CLOSE, 0, 0), 0);
    EXPECT_TRUE(IsWindow(child->hwnd()));
    EXPECT_FALSE(*deleted);
    EXPECT_EQ(keeper.names(), std::vector<std::string>{"close"});
    child->remove(&keeper);
}

TEST_F(MDITest, ClosingTheFrameThatNoHandlerKeepsEndsTheApplication) {
    Flag deleted;
    addChild(&deleted);
    Recorder recorder;
    frame->add(&recorder);
    gTimedOut = false;
    UINT_PTR const timer = SetTimer(nullptr, 0, 3000, &endLoopLate);
    PostMessageA(hwnd, WM_CLOSE, 0, 0);
    mApplication.run();
    KillTimer(nullptr, timer);
    EXPECT_FALSE(gTimedOut);
    // The frame asks its handlers, then the frame's handling asks them again.
    EXPECT_EQ(recorder.names(), (std::vector<std::string>{"close", "close"}));
    EXPECT_TRUE(IsWindow(hwnd));
    frame->remove(&recorder);
}

TEST_F(MDITest, AFrameKeptByAHandlerIsAskedOnceAndTheLoopGoesOn) {
    Recorder keeper(false, GwResultHandled);
    frame->add(&keeper);
    gTimedOut = false;
    UINT_PTR const timer = SetTimer(nullptr, 0, 200, &endLoopLate);
    PostMessageA(hwnd, WM_CLOSE, 0, 0);
    GwWindow::msgLoop();
    KillTimer(nullptr, timer);
    EXPECT_TRUE(gTimedOut);
    EXPECT_EQ(keeper.names(), std::vector<std::string>{"close"});
    frame->remove(&keeper);
}

TEST_F(MDITest, BubbledEventsReachTheActiveChildBeforeTheFrame) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    std::vector<std::string> order;
    Recorder controlRecorder(false, GwResultContinue, &order, "control");
    Recorder oneRecorder(false, GwResultContinue, &order, "one");
    Recorder frameRecorder(false, GwResultContinue, &order, "frame");
    auto* control = new DispatchingWindow(rawWindow(one->hwnd(), 10, 0, 0, 40, 20));
    control->add(&controlRecorder);
    one->add(&oneRecorder);
    frame->add(&frameRecorder);

    SendMessageA(static_cast<HWND>(control->window()), GwMsgActivate, 0, 0);
    EXPECT_EQ(order,
              (std::vector<std::string>{"control:activate", "one:activate", "frame:activate"}));
    ASSERT_EQ(oneRecorder.calls.size(), 1u);
    EXPECT_EQ(oneRecorder.calls[0].window, control);

    // The active child is asked, whichever child the control is in.
    TrackedChild* two = addChild(&d2);
    Recorder twoRecorder(false, GwResultContinue, &order, "two");
    two->add(&twoRecorder);
    order.clear();
    SendMessageA(static_cast<HWND>(control->window()), GwMsgSelect, 0, 0);
    EXPECT_EQ(order, (std::vector<std::string>{"control:select", "two:select", "frame:select"}));

    // A child handler that takes the event ends the bubbling.
    twoRecorder.result = GwResultHandled;
    order.clear();
    SendMessageA(static_cast<HWND>(control->window()), GwMsgValue, 3, 0);
    EXPECT_EQ(order, (std::vector<std::string>{"control:value", "two:value"}));

    frame->remove(&frameRecorder);
    one->remove(&oneRecorder);
    two->remove(&twoRecorder);
    control->remove(&controlRecorder);
}

// --- Window menu ------------------------------------------------------------------------------

TEST_F(MDITest, WindowMenuHoldsTheLibraryEntriesInGerman) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    HMENU const bar = GetMenu(hwnd);
    EXPECT_EQ(menuText(bar, 0, MF_BYPOSITION), "&Datei");
    EXPECT_EQ(menuText(bar, 1, MF_BYPOSITION), "F&enster");
    EXPECT_EQ(menuText(bar, 2, MF_BYPOSITION), "&Hilfe");
    ASSERT_EQ(GetMenuItemCount(windowMenu), 7);
    struct Entry {
        UINT id;
        char const* text; // Windows-1252
    };
    Entry const entries[] = {{0xF861, "&Untereinander"},
                             {0xF862, "&Nebeneinander"},
                             {0xF863, "\xDC&berlappend"},
                             {0xF864, "&Kacheln"},
                             {0xF865, "&Symbole anordnen"},
                             {0xF866, "&Alle schlie\xDF"
                                      "en"}};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(GetMenuItemID(windowMenu, i), entries[i].id);
        EXPECT_EQ(menuText(windowMenu, entries[i].id, MF_BYCOMMAND), entries[i].text);
    }
    EXPECT_NE(GetMenuState(windowMenu, 5, MF_BYPOSITION) & MF_SEPARATOR, 0u);
    EXPECT_EQ(GetMenuItemID(windowMenu, 6), 0xF866u);
    EXPECT_EQ(menuText(windowMenu, 0xF866, MF_BYCOMMAND), entries[5].text);
    EXPECT_EQ(frame->menuStyle(), GwFrame::eWindowMenu | GwFrame::eHelpMenu);
}

TEST_F(MDITest, MergingTheWindowMenuHandsItToTheClient) {
    SetMenuRecorder recorder(client);
    ASSERT_TRUE(recorder.hooked());
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    ASSERT_EQ(SetMenuRecorder::calls().size(), 1u);
    // wParam carries the frame's window, not a menu.
    EXPECT_EQ(SetMenuRecorder::calls()[0].first, reinterpret_cast<WPARAM>(hwnd));
    EXPECT_EQ(SetMenuRecorder::calls()[0].second, reinterpret_cast<LPARAM>(windowMenu));

    // Without the help menu, the window menu is the last popup.
    frame->setMenuStyle(GwFrame::eWindowMenu);
    HMENU const bar = GetMenu(hwnd);
    ASSERT_EQ(GetMenuItemCount(bar), 2);
    EXPECT_EQ(menuText(bar, 1, MF_BYPOSITION), "F&enster");
    ASSERT_EQ(SetMenuRecorder::calls().size(), 2u);
    EXPECT_EQ(SetMenuRecorder::calls()[1].second, reinterpret_cast<LPARAM>(GetSubMenu(bar, 1)));

    // Without the window menu the client hears nothing.
    frame->setMenuStyle(0);
    EXPECT_EQ(GetMenuItemCount(bar), 1);
    EXPECT_EQ(SetMenuRecorder::calls().size(), 2u);
}

TEST_F(MDITest, MenuStyleWithoutMenuBarIsNotEvenStored) {
    frame->setMenuStyle(GwFrame::eWindowMenu);
    EXPECT_EQ(frame->menuStyle(), 0);
    EXPECT_EQ(GetMenu(hwnd), nullptr);
    auto* styled = new TestMDIFrame(2, 0, GwFrame::eWindowMenu | GwFrame::eFileMenu);
    EXPECT_EQ(styled->menuStyle(), 0);
    delete styled;
}

TEST_F(MDITest, WindowMenuCommandsAreHandled) {
    for (unsigned long long id :
         {0xF861ull, 0xF862ull, 0xF863ull, 0xF864ull, 0xF865ull, 0xF866ull, 0xFF0Aull, 0xF880ull})
        EXPECT_TRUE(frame->msgHandlerCommand(id)) << std::hex << id;
    // The children's entries are left to the default frame procedure.
    for (unsigned long long id = 0xFF00; id <= 0xFF09; ++id)
        EXPECT_FALSE(frame->msgHandlerCommand(id)) << std::hex << id;
    EXPECT_FALSE(frame->msgHandlerCommand(0xF867));
    EXPECT_FALSE(frame->msgHandlerCommand(0x1234));
    gHelpCalls.clear();
}

TEST_F(MDITest, UntereinanderAndKachelnTileTheChildrenOneBelowTheOther) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    for (unsigned int command : {0xF861u, 0xF864u}) {
        SetWindowPos(one->hwnd(), nullptr, 5, 5, 100, 80, SWP_NOZORDER | SWP_NOACTIVATE);
        SetWindowPos(two->hwnd(), nullptr, 9, 9, 120, 90, SWP_NOZORDER | SWP_NOACTIVATE);
        choose(windowMenu, command);
        // Measured afterwards: the client drops its scroll bars when it tiles.
        RECT const area = clientRect(client);
        RECT const a = rectInParent(one->hwnd());
        RECT const b = rectInParent(two->hwnd());
        EXPECT_EQ(width(a), width(area)) << std::hex << command;
        EXPECT_EQ(width(b), width(area)) << std::hex << command;
        EXPECT_EQ(a.left, 0);
        EXPECT_EQ(b.left, 0);
        EXPECT_EQ(height(a), height(b));
        EXPECT_NEAR(height(a) + height(b), height(area), 1); // rows of whole pixels
        EXPECT_NE(a.top, b.top);
    }
}

TEST_F(MDITest, NebeneinanderTilesTheChildrenSideBySide) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    choose(windowMenu, 0xF862);
    RECT const area = clientRect(client);
    RECT const a = rectInParent(one->hwnd());
    RECT const b = rectInParent(two->hwnd());
    EXPECT_EQ(height(a), height(area));
    EXPECT_EQ(height(b), height(area));
    EXPECT_EQ(a.top, 0);
    EXPECT_EQ(b.top, 0);
    EXPECT_EQ(width(a), width(b));
    EXPECT_NEAR(width(a) + width(b), width(area), 1); // columns of whole pixels
    EXPECT_NE(a.left, b.left);
}

TEST_F(MDITest, UeberlappendCascadesTheChildren) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    choose(windowMenu, 0xF862); // side by side first, so that cascading moves them
    choose(windowMenu, 0xF863);
    RECT const a = rectInParent(one->hwnd());
    RECT const b = rectInParent(two->hwnd());
    EXPECT_EQ(width(a), width(b));
    EXPECT_EQ(height(a), height(b));
    int const dx = b.left - a.left;
    int const dy = b.top - a.top;
    EXPECT_NE(dx, 0);
    EXPECT_EQ(dx, dy);
    // The active child lies on top, the furthest down the cascade.
    EXPECT_EQ(activeChild(client), two->hwnd());
    EXPECT_GT(dx, 0);
}

TEST_F(MDITest, SymboleAnordnenArrangesTheMinimizedChildren) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    ShowWindow(one->hwnd(), SW_MINIMIZE);
    ShowWindow(two->hwnd(), SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(one->hwnd()));
    ASSERT_TRUE(IsIconic(two->hwnd()));
    SetWindowPos(one->hwnd(), nullptr, 200, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SetWindowPos(two->hwnd(), nullptr, 300, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    choose(windowMenu, 0xF865);
    RECT const area = clientRect(client);
    RECT const a = rectInParent(one->hwnd());
    RECT const b = rectInParent(two->hwnd());
    // One row along the bottom edge, from the left.
    EXPECT_EQ(a.bottom, b.bottom);
    EXPECT_LE(a.bottom, area.bottom);
    EXPECT_GT(a.bottom, area.bottom - 2 * height(a));
    EXPECT_LT(std::min(a.left, b.left), width(a));
    EXPECT_NE(a.left, b.left);
}

TEST_F(MDITest, ArrangeOperationsOfTheClient) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    GwMDIClient& mdi = *frame->mdiClient();

    mdi.setArrange(GwMDIClient::eTileVertical);
    RECT const area = clientRect(client); // without the scroll bars, which tiling drops
    EXPECT_EQ(height(rectInParent(one->hwnd())), height(area));
    EXPECT_NEAR(width(rectInParent(one->hwnd())) * 2, width(area), 1);

    mdi.setArrange(GwMDIClient::eTileHorizontal);
    EXPECT_EQ(width(rectInParent(one->hwnd())), width(area));
    EXPECT_NEAR(height(rectInParent(two->hwnd())) * 2, height(area), 1);

    // Unknown arrangements do nothing.
    RECT const before = rectInParent(one->hwnd());
    mdi.setArrange(static_cast<GwMDIClient::eArrangeType>(0));
    mdi.setArrange(static_cast<GwMDIClient::eArrangeType>(5));
    RECT const after = rectInParent(one->hwnd());
    EXPECT_EQ(after.left, before.left);
    EXPECT_EQ(after.top, before.top);
    EXPECT_EQ(width(after), width(before));

    mdi.setArrange(GwMDIClient::eCascade);
    RECT const a = rectInParent(one->hwnd());
    RECT const b = rectInParent(two->hwnd());
    EXPECT_EQ(width(a), width(b));
    EXPECT_EQ(b.left - a.left, b.top - a.top);
    EXPECT_NE(b.left, a.left);

    // Disabled children are skipped when tiling.
    EnableWindow(one->hwnd(), FALSE);
    mdi.setArrange(GwMDIClient::eTileVertical);
    EXPECT_EQ(width(rectInParent(two->hwnd())), width(area));
}

// --- Close all --------------------------------------------------------------------------------

namespace {

// Refuses to close and notes whether the client window was shown meanwhile.
class Refuser : public Recorder {
public:
    explicit Refuser(HWND client) : Recorder(false, GwResultHandled), mClient(client) {}
    int cbClose(GwWindow& window) override {
        clientShownDuringClose = (GetWindowLongA(mClient, GWL_STYLE) & WS_VISIBLE) != 0;
        return Recorder::cbClose(window);
    }
    bool clientShownDuringClose = true;

private:
    HWND mClient;
};

} // namespace

TEST_F(MDITest, AlleSchliessenDestroysEvenAChildThatRefusesToClose) {
    HMENU const windowMenu = mergeWindowMenu();
    ASSERT_NE(windowMenu, nullptr);
    showFrame();
    Flag d1, d2, d3;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    addChild(&d3);
    Recorder accepting;
    Refuser refusing(client);
    one->add(&accepting);
    two->add(&refusing);

    choose(windowMenu, 0xF866);
    EXPECT_EQ(GetWindow(client, GW_CHILD), nullptr);
    EXPECT_TRUE(*d1);
    EXPECT_TRUE(*d2);
    EXPECT_TRUE(*d3);
    // The refusing child was asked, then destroyed through the client.
    std::vector<std::string> const closed{"close", "destroy"};
    EXPECT_EQ(only(refusing.names(), closed), closed);
    EXPECT_EQ(only(accepting.names(), closed), closed);
    // The client was hidden while the children went, and is shown again.
    EXPECT_FALSE(refusing.clientShownDuringClose);
    EXPECT_NE(styleOf(client) & WS_VISIBLE, 0);
    EXPECT_EQ(activeChild(client), nullptr);
    EXPECT_FALSE(quitPosted());
    EXPECT_TRUE(IsWindow(hwnd));
}

TEST_F(MDITest, CloseAllLeavesAHiddenClientHidden) {
    Flag d1;
    addChild(&d1);
    ShowWindow(client, SW_HIDE);
    frame->closeAll();
    EXPECT_TRUE(*d1);
    EXPECT_EQ(styleOf(client) & WS_VISIBLE, 0);
    // Without children there is nothing to do.
    ShowWindow(client, SW_SHOW);
    frame->closeAll();
    EXPECT_NE(styleOf(client) & WS_VISIBLE, 0);
}

// --- Pre-translation and the MDI keys ----------------------------------------------------------

TEST_F(MDITest, PreTranslationTakesTheMdiKeysOnly) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    unsigned int const code = GwWindow::gGwWM_Message;

    MSG plain = keyDown(two->hwnd(), VK_F4);
    EXPECT_EQ(SendMessageA(hwnd, code, GwCodePreTranslate, reinterpret_cast<LPARAM>(&plain)), 0);
    EXPECT_TRUE(IsWindow(two->hwnd()));

    setModifierKeys(true, false);
    MSG closeKey = keyDown(two->hwnd(), VK_F4);
    HWND const closed = two->hwnd();
    EXPECT_EQ(SendMessageA(hwnd, code, GwCodePreTranslate, reinterpret_cast<LPARAM>(&closeKey)), 1);
    EXPECT_FALSE(IsWindow(closed));
    EXPECT_TRUE(*d2);

    // A child frame asks TranslateMDISysAccel of its client too.
    MSG viaChild = keyDown(one->hwnd(), VK_F4);
    EXPECT_EQ(
        SendMessageA(one->hwnd(), code, GwCodePreTranslate, reinterpret_cast<LPARAM>(&viaChild)),
        1);
    EXPECT_TRUE(*d1);
    setModifierKeys(false, false);
    MSG other = keyDown(hwnd, 'A');
    EXPECT_EQ(SendMessageA(hwnd, code, GwCodePreTranslate, reinterpret_cast<LPARAM>(&other)), 0);
}

TEST_F(MDITest, PreTranslationWithoutClientTakesEveryMessage) {
    DestroyWindow(client);
    MSG other = keyDown(hwnd, 'A');
    EXPECT_EQ(SendMessageA(hwnd, GwWindow::gGwWM_Message, GwCodePreTranslate,
                           reinterpret_cast<LPARAM>(&other)),
              1);
}

TEST_F(MDITest, ControlF4InTheLoopClosesTheActiveChild) {
    showFrame();
    Flag d1, d2;
    TrackedChild* one = addChild(&d1);
    TrackedChild* two = addChild(&d2);
    Recorder keys;
    two->add(&keys);
    HWND const closed = two->hwnd();
    setModifierKeys(true, false);
    PostMessageA(closed, WM_KEYDOWN, VK_F4, 1);
    runLoopFor(150);
    EXPECT_FALSE(IsWindow(closed));
    EXPECT_TRUE(*d2);
    // The key itself was taken: the child's handlers saw the close, but no key.
    EXPECT_EQ(only(keys.names(), {"key", "close", "destroy"}),
              (std::vector<std::string>{"close", "destroy"}));
    EXPECT_EQ(activeChild(client), one->hwnd());
    EXPECT_FALSE(*d1);
}

TEST_F(MDITest, F4WithoutControlReachesTheChild) {
    showFrame();
    Flag d1;
    TrackedChild* one = addChild(&d1);
    Recorder keys;
    one->add(&keys);
    PostMessageA(one->hwnd(), WM_KEYDOWN, VK_F4, 1);
    runLoopFor(150);
    EXPECT_TRUE(IsWindow(one->hwnd()));
    ASSERT_EQ(only(keys.names(), {"key", "close"}), std::vector<std::string>{"key"});
    auto const key = std::find_if(keys.calls.begin(), keys.calls.end(),
                                  [](Call const& call) { return call.callback == "key"; });
    EXPECT_EQ(key->a, 11u); // F4
    one->remove(&keys);
}

TEST_F(MDITest, ControlF6InTheLoopCyclesThroughTheChildren) {
    showFrame();
    Flag d1, d2, d3;
    HWND const one = addChild(&d1)->hwnd();
    HWND const two = addChild(&d2)->hwnd();
    HWND const three = addChild(&d3)->hwnd();
    ASSERT_EQ(activeChild(client), three);
    auto press = [this](bool shift) {
        setModifierKeys(true, shift);
        PostMessageA(activeChild(client), WM_KEYDOWN, VK_F6, 1);
        runLoopFor(60);
        return activeChild(client);
    };
    // Ctrl+F6 goes on to the next document in the order the children were made, from the
    // newest round to the oldest (SC_PREVWINDOW brings the bottom child to the top).
    EXPECT_EQ(press(false), one);
    EXPECT_EQ(press(false), two);
    EXPECT_EQ(press(false), three);
    // Ctrl+Shift+F6 goes back the other way.
    EXPECT_EQ(press(true), two);
    EXPECT_EQ(press(true), one);
    EXPECT_EQ(press(true), three);
    EXPECT_FALSE(*d1 || *d2 || *d3);
}
