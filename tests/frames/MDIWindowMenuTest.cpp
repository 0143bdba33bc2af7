// The window menu of MDI frames and its commands, arranging and closing all children, and
// the MDI keys in the message loop.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <GwMDIFrame.h>

#include "MDITesting.h"

using namespace testing_frames;
using namespace testing_mdi;
using namespace testing_windows;

namespace {

int width(RECT const& rect) {
    return rect.right - rect.left;
}

int height(RECT const& rect) {
    return rect.bottom - rect.top;
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

} // namespace

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
