// MDI frames: the frame and its client, child frames, activating, maximizing and restoring
// them, closing children and the frame, and events bubbling through the active child.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <GwEventData.h>
#include <GwMDIFrame.h>

#include "MDITesting.h"

using namespace testing_frames;
using namespace testing_mdi;
using namespace testing_windows;

namespace {

// Ends a message loop that nothing else ended.
bool gTimedOut = false;
void CALLBACK endLoopLate(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    gTimedOut = true;
    PostQuitMessage(1);
}

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
