// Mouse buttons: pressed and released events, and the click detector's 200 ms timers, driven
// through the library's own message loop.
#include <gtest/gtest.h>

#include <windows.h>

#include <vector>

#include "BreakpointCounter.h"
#include "TestWindows.h"

using namespace testing_windows;

namespace {

std::vector<unsigned int> states(Recorder const& recorder) {
    std::vector<unsigned int> out;
    for (Call const& call : recorder.calls) {
        EXPECT_EQ(call.callback, "button");
        out.push_back(call.a);
    }
    return out;
}

// The mouse messages of one button and the state bits they produce.
struct Button {
    UINT down, up, doubleClick, click;
    WPARAM held;
    unsigned int pressed, released, clicked, doubleClicked;
};

Button const kLeft{
    WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, GwMsgLeftClick, MK_LBUTTON, 0x2, 0x1, 0x4, 0x8};
Button const kRight{
    WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, GwMsgRightClick, MK_RBUTTON, 0x20, 0x10,
    0x40,           0x80};
Button const kMiddle{
    WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, GwMsgMiddleClick, MK_MBUTTON, 0x200, 0x100,
    0x400,          0x800};

LPARAM const kPoint = MAKELPARAM(12, 30);

// Posts the button message named by the timer's identifier: a release that comes late.
void CALLBACK postLateRelease(HWND hwnd, UINT, UINT_PTR id, DWORD) {
    KillTimer(hwnd, id);
    PostMessageA(hwnd, static_cast<UINT>(id), 0, kPoint);
}

// A window whose handler records every button event.
struct ClickFixture {
    ClickFixture() : hwnd(rawWindow()), closer{hwnd}, window(new DispatchingWindow(hwnd)) {
        window->add(&recorder);
    }
    Recorder recorder;
    HWND hwnd;
    WindowCloser closer;
    DispatchingWindow* window;
};

void expectQuickClick(Button const& button) {
    ClickFixture f;
    PostMessageA(f.hwnd, button.down, button.held, kPoint);
    PostMessageA(f.hwnd, button.up, 0, kPoint);
    runLoopFor(100);
    EXPECT_EQ(states(f.recorder),
              (std::vector<unsigned int>{button.pressed, button.released, button.clicked}));
}

void expectHeldPress(Button const& button) {
    ClickFixture f;
    PostMessageA(f.hwnd, button.down, button.held, kPoint);
    SetTimer(f.hwnd, button.up, 350, &postLateRelease);
    runLoopFor(450);
    EXPECT_EQ(states(f.recorder), (std::vector<unsigned int>{button.pressed, button.released}));
}

void expectDoubleClick(Button const& button) {
    ClickFixture f;
    SendMessageA(f.hwnd, button.doubleClick, button.held, kPoint);
    SendMessageA(f.hwnd, button.up, 0, kPoint);
    MSG posted;
    EXPECT_FALSE(PeekMessageA(&posted, f.hwnd, button.click, button.click, PM_REMOVE))
        << "a double-click starts no click timer, so its release is no click";
    EXPECT_EQ(states(f.recorder),
              (std::vector<unsigned int>{button.doubleClicked, button.released}));
}

} // namespace

TEST(Click, QuickLeftClickGivesPressedReleasedThenClick) {
    expectQuickClick(kLeft);
}

TEST(Click, QuickRightClickGivesPressedReleasedThenClick) {
    expectQuickClick(kRight);
}

TEST(Click, QuickMiddleClickGivesPressedReleasedThenClick) {
    expectQuickClick(kMiddle);
}

TEST(Click, LeftButtonHeldLongerThanTheClickTimeGivesNoClick) {
    expectHeldPress(kLeft);
}

TEST(Click, RightButtonHeldLongerThanTheClickTimeGivesNoClick) {
    expectHeldPress(kRight);
}

TEST(Click, MiddleButtonHeldLongerThanTheClickTimeGivesNoClick) {
    expectHeldPress(kMiddle);
}

TEST(Click, LeftDoubleClickCarriesTheDoubleClickBit) {
    expectDoubleClick(kLeft);
}

TEST(Click, RightDoubleClickCarriesTheDoubleClickBit) {
    expectDoubleClick(kRight);
}

TEST(Click, MiddleDoubleClickCarriesTheDoubleClickBit) {
    expectDoubleClick(kMiddle);
}

TEST(Click, ReleaseWithinTheClickTimePostsTheClickMessage) {
    ClickFixture f;
    SendMessageA(f.hwnd, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, kPoint);
    SendMessageA(f.hwnd, WM_RBUTTONUP, MK_SHIFT, kPoint);
    MSG posted;
    ASSERT_TRUE(PeekMessageA(&posted, f.hwnd, GwMsgRightClick, GwMsgRightClick, PM_REMOVE));
    EXPECT_EQ(posted.wParam, static_cast<WPARAM>(MK_SHIFT));
    EXPECT_EQ(posted.lParam, kPoint);
    EXPECT_FALSE(KillTimer(f.hwnd, 2)) << "the release stopped the click timer";
}

TEST(Click, ClickTimerRunsFromPressToRelease) {
    ClickFixture f;
    SendMessageA(f.hwnd, WM_MBUTTONDOWN, MK_MBUTTON, kPoint);
    EXPECT_TRUE(KillTimer(f.hwnd, 3)) << "the press started the middle button's timer";
    EXPECT_FALSE(KillTimer(f.hwnd, 1));
    EXPECT_FALSE(KillTimer(f.hwnd, 2));
}

TEST(Click, ButtonsAreTimedIndependently) {
    ClickFixture f;
    // Left held past the click time while right is clicked quickly.
    PostMessageA(f.hwnd, WM_LBUTTONDOWN, MK_LBUTTON, kPoint);
    PostMessageA(f.hwnd, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, kPoint);
    PostMessageA(f.hwnd, WM_RBUTTONUP, MK_LBUTTON, kPoint);
    SetTimer(f.hwnd, WM_LBUTTONUP, 350, &postLateRelease);
    runLoopFor(450);
    EXPECT_EQ(states(f.recorder), (std::vector<unsigned int>{0x2, 0x20, 0x10, 0x40, 0x1}));
}

TEST(Click, ClickTimersCallNoTimerCallback) {
    ClickFixture f;
    PostMessageA(f.hwnd, WM_LBUTTONDOWN, MK_LBUTTON, kPoint);
    runLoopFor(250);
    ASSERT_EQ(states(f.recorder), (std::vector<unsigned int>{0x2}));
    EXPECT_FALSE(KillTimer(f.hwnd, 1)) << "the fired click timer was killed";
}

TEST(Click, ButtonPositionIsBottomUpAndStateCarriesModifiers) {
    ClickFixture f;
    SendMessageA(f.hwnd, WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, MAKELPARAM(5, 20));
    SendMessageA(f.hwnd, WM_LBUTTONUP, MK_SHIFT, MAKELPARAM(7, 25));
    ASSERT_EQ(f.recorder.calls.size(), 2u);
    int height = clientHeight(f.hwnd);
    EXPECT_EQ(f.recorder.calls[0].a, 0x2u | 0x4000000u);
    EXPECT_EQ(f.recorder.calls[0].position, GwPosition(5, height - 20));
    EXPECT_EQ(f.recorder.calls[1].a, 0x1u | 0x1000000u);
    EXPECT_EQ(f.recorder.calls[1].position, GwPosition(7, height - 25));
    EXPECT_EQ(f.recorder.calls[0].window, f.window);
}

TEST(Click, ClickCarriesThePositionAndModifiersOfTheRelease) {
    ClickFixture f;
    PostMessageA(f.hwnd, WM_LBUTTONDOWN, MK_LBUTTON, kPoint);
    PostMessageA(f.hwnd, WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(40, 10));
    runLoopFor(100);
    ASSERT_EQ(f.recorder.calls.size(), 3u);
    EXPECT_EQ(f.recorder.calls[2].a, 0x4u | 0x4000000u);
    EXPECT_EQ(f.recorder.calls[2].position, GwPosition(40, clientHeight(f.hwnd) - 10));
}

TEST(Click, ButtonEventIsHandledOnlyWhenAHandlerSaysSo) {
    ClickFixture f;
    EXPECT_EQ(f.window->dispatchEvent(WM_LBUTTONDOWN, MK_LBUTTON, kPoint), 0);
    f.recorder.result = GwResultContinue | GwResultHandled;
    EXPECT_EQ(f.window->dispatchEvent(WM_LBUTTONUP, 0, kPoint), 1);
    EXPECT_EQ(f.window->dispatchEvent(GwMsgLeftClick, 0, kPoint), 1);
    EXPECT_EQ(states(f.recorder), (std::vector<unsigned int>{0x2, 0x1, 0x4}));
}

TEST(Click, WindowDestroyedByThePressCallbackGetsNoFurtherEvents) {
    struct Destroyer : Recorder {
        int cbButton(GwWindow& w, GwPosition const& p, unsigned int state) override {
            Recorder::cbButton(w, p, state);
            DestroyWindow(static_cast<HWND>(w.window()));
            return GwResultContinue;
        }
    };
    struct CountedWindow : DispatchingWindow {
        CountedWindow(HWND hwnd, int* deleted) : DispatchingWindow(hwnd), deleted(deleted) {}
        ~CountedWindow() override { ++*deleted; }
        int* deleted;
    };
    BreakpointCounter breaks;
    Destroyer destroyer;
    int deleted = 0;
    HWND hwnd = rawWindow();
    WindowCloser closer{hwnd};
    (new CountedWindow(hwnd, &deleted))->add(&destroyer);
    PostMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, kPoint);
    PostMessageA(hwnd, WM_LBUTTONUP, 0, kPoint);
    runLoopFor(300);
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(destroyer.names(), (std::vector<std::string>{"button", "destroy"}));
    EXPECT_EQ(breaks.count(), 0);
}
