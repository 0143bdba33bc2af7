// The dispatcher's input messages: keys and characters, mouse moves and the wheel, timers,
// and entering and leaving windows as the mouse moves.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "DispatchTesting.h"
#include "TestWindows.h"

using namespace testing_dispatch;
using namespace testing_windows;

// Keys

using DispatchKeys = DispatchFixture;

TEST_F(DispatchKeys, VirtualKeysMapToTheLibrarysKeyCodes) {
    struct Key {
        WPARAM virtualKey;
        unsigned int code;
    };
    std::vector<Key> table{{VK_BACK, 1},   {VK_CLEAR, 2},   {VK_DELETE, 3}, {VK_DOWN, 4},
                           {VK_END, 5},    {VK_ESCAPE, 7},  {VK_HOME, 32},  {VK_INSERT, 33},
                           {VK_LEFT, 34},  {VK_RETURN, 35}, {VK_NEXT, 36},  {VK_PRIOR, 37},
                           {VK_PRINT, 38}, {VK_RIGHT, 39},  {VK_SPACE, 40}, {VK_TAB, 42},
                           {VK_UP, 43},    {VK_F1, 8},      {VK_F24, 31}};
    for (WPARAM f = VK_F1; f <= VK_F24; ++f)
        table.push_back({f, static_cast<unsigned int>(f - VK_F1 + 8)});
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    for (Key const& key : table) {
        recorder.calls.clear();
        SendMessageA(w.hwnd, WM_KEYDOWN, key.virtualKey, 1);
        ASSERT_EQ(recorder.calls.size(), 1u) << "virtual key " << key.virtualKey;
        EXPECT_EQ(recorder.calls[0].callback, "key");
        EXPECT_EQ(recorder.calls[0].a, key.code) << "virtual key " << key.virtualKey;
        EXPECT_EQ(recorder.lastState, 0x20000000u);
        EXPECT_EQ(recorder.calls[0].window, w.window);
    }
}

TEST_F(DispatchKeys, OtherVirtualKeysProduceNoKeyEvent) {
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    for (WPARAM key : {WPARAM('A'), WPARAM('Z'), WPARAM('0'), WPARAM(VK_SHIFT), WPARAM(VK_CONTROL),
                       WPARAM(VK_MENU), WPARAM(VK_SNAPSHOT), WPARAM(VK_SELECT), WPARAM(VK_EXECUTE),
                       WPARAM(VK_HELP), WPARAM(VK_NUMPAD5), WPARAM(VK_LWIN), WPARAM(VK_CAPITAL)})
        EXPECT_EQ(w.window->dispatchEvent(WM_KEYDOWN, key, 1), 0) << "virtual key " << key;
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(DispatchKeys, LetterKeyDownIsIgnoredAndItsCharacterIsReported) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    // The key as the system queues it (scan code of A, repeat count 1); the message loop
    // translates it into a character.
    PostMessageA(w.hwnd, WM_KEYDOWN, 'A', 0x001E0001);
    runLoopFor(50);
    ASSERT_EQ(recorder.names(), Names{"key"});
    EXPECT_EQ(recorder.calls[0].a, static_cast<unsigned int>('a'));
    EXPECT_EQ(recorder.lastState, 0x10000000u);
}

TEST_F(DispatchKeys, CharacterIsTheLowWordAndHandledWhenAHandlerSaysSo) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    EXPECT_EQ(w.window->dispatchEvent(WM_CHAR, 0x12340000 | 0xE4, 1), 0);
    recorder.result = GwResultContinue | GwResultHandled;
    EXPECT_EQ(w.window->dispatchEvent(WM_CHAR, '7', 1), 1);
    EXPECT_EQ(w.window->dispatchEvent(WM_KEYDOWN, VK_RETURN, 1), 1);
    ASSERT_EQ(recorder.calls.size(), 3u);
    EXPECT_EQ(recorder.calls[0].a, 0xE4u);
    EXPECT_EQ(recorder.calls[1].a, static_cast<unsigned int>('7'));
    EXPECT_EQ(recorder.calls[2].a, 35u);
}

TEST_F(DispatchKeys, ShiftAndControlAreAddedToTheKeyState) {
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    setKeysDown({VK_SHIFT});
    SendMessageA(w.hwnd, WM_KEYDOWN, VK_HOME, 1);
    EXPECT_EQ(recorder.lastState, 0x20000000u | 0x1000000u);
    setKeysDown({VK_CONTROL});
    SendMessageA(w.hwnd, WM_KEYDOWN, VK_HOME, 1);
    EXPECT_EQ(recorder.lastState, 0x20000000u | 0x4000000u);
    setKeysDown({VK_SHIFT, VK_CONTROL});
    SendMessageA(w.hwnd, WM_CHAR, 'q', 1);
    EXPECT_EQ(recorder.lastState, 0x10000000u | 0x1000000u | 0x4000000u);
    setKeysDown({VK_MENU});
    SendMessageA(w.hwnd, WM_KEYDOWN, VK_HOME, 1);
    EXPECT_EQ(recorder.lastState, 0x20000000u) << "Alt counts only for the system keys";
    EXPECT_EQ(recorder.calls.size(), 4u);
}

TEST_F(DispatchKeys, SystemKeysAddAlt) {
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    SendMessageA(w.hwnd, WM_SYSKEYDOWN, VK_F10, 0x20000001);
    ASSERT_EQ(recorder.calls.size(), 1u);
    EXPECT_EQ(recorder.calls[0].a, 17u);
    EXPECT_EQ(recorder.lastState, 0x20000000u | 0x2000000u);
    setKeysDown({VK_SHIFT});
    SendMessageA(w.hwnd, WM_SYSCHAR, 'x', 0x20000001);
    ASSERT_EQ(recorder.calls.size(), 2u);
    EXPECT_EQ(recorder.calls[1].a, static_cast<unsigned int>('x'));
    EXPECT_EQ(recorder.lastState, 0x10000000u | 0x2000000u | 0x1000000u);
}

TEST_F(DispatchKeys, KeyReleasesAndDeadCharactersProduceNothing) {
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    EXPECT_EQ(w.window->dispatchEvent(WM_KEYUP, VK_RETURN, 0xC0000001), 0);
    EXPECT_EQ(w.window->dispatchEvent(WM_SYSKEYUP, VK_F10, 0xE0000001), 0);
    EXPECT_EQ(w.window->dispatchEvent(WM_DEADCHAR, '^', 1), 0);
    SendMessageA(w.hwnd, WM_KEYUP, VK_ESCAPE, 0xC0000001);
    EXPECT_TRUE(recorder.calls.empty());
}

// Mouse movement and wheel

using DispatchMouse = DispatchFixture;

TEST_F(DispatchMouse, MovePositionIsBottomUp) {
    Recorder recorder;
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND child = rawWindow(top, 1, 5, 5, 200, 100);
    (new DispatchingWindow(child))->add(&recorder);
    SendMessageA(child, WM_MOUSEMOVE, 0, MAKELPARAM(10, 30));
    SendMessageA(child, WM_MOUSEMOVE, 0, MAKELPARAM(0, 0));
    ASSERT_EQ(recorder.names(), (Names{"enter", "move", "move"}));
    EXPECT_EQ(recorder.calls[1].position, GwPosition(10, 70));
    EXPECT_EQ(recorder.calls[2].position, GwPosition(0, 100));
}

TEST_F(DispatchMouse, MoveStateHoldsOnlyTheModifiers) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    SendMessageA(w.hwnd, WM_MOUSEMOVE, MK_LBUTTON | MK_SHIFT, MAKELPARAM(1, 1));
    SendMessageA(w.hwnd, WM_MOUSEMOVE, MK_RBUTTON | MK_MBUTTON | MK_CONTROL, MAKELPARAM(1, 1));
    SendMessageA(w.hwnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(1, 1));
    setKeysDown({VK_MENU});
    SendMessageA(w.hwnd, WM_MOUSEMOVE, MK_SHIFT | MK_CONTROL, MAKELPARAM(1, 1));
    std::vector<unsigned int> states;
    for (Call const& call : recorder.calls) {
        if (call.callback == "move")
            states.push_back(call.a);
    }
    EXPECT_EQ(states, (std::vector<unsigned int>{0x1000000, 0x4000000, 0,
                                                 0x1000000 | 0x2000000 | 0x4000000}));
}

TEST_F(DispatchMouse, WheelPointIsConvertedFromScreenToClient) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    // Placed so that the screen coordinates are negative: they are signed 16-bit values.
    SetWindowPos(w.hwnd, nullptr, -300, -250, 200, 150, SWP_NOZORDER | SWP_NOACTIVATE);
    POINT point{30, 40};
    ClientToScreen(w.hwnd, &point);
    ASSERT_LT(point.y, 0);
    recorder.calls.clear();
    SendMessageA(w.hwnd, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)),
                 MAKELPARAM(point.x, point.y));
    ASSERT_EQ(recorder.names(), Names{"wheel"});
    EXPECT_EQ(recorder.calls[0].position, GwPosition(30, clientHeight(w.hwnd) - 40));
    EXPECT_EQ(recorder.lastDelta, -120);
    EXPECT_EQ(recorder.calls[0].a, 0u);
}

TEST_F(DispatchMouse, WheelDeltaIsSignedAndHeldButtonsArePressedBits) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    POINT point{0, 0};
    ClientToScreen(w.hwnd, &point);
    LPARAM at = MAKELPARAM(point.x, point.y);
    SendMessageA(w.hwnd, WM_MOUSEWHEEL, MAKEWPARAM(MK_LBUTTON | MK_MBUTTON, 240), at);
    ASSERT_EQ(recorder.calls.size(), 1u);
    EXPECT_EQ(recorder.lastDelta, 240);
    EXPECT_EQ(recorder.calls[0].a, 0x2u | 0x200u);
    SendMessageA(w.hwnd, WM_MOUSEWHEEL,
                 MAKEWPARAM(MK_RBUTTON | MK_SHIFT | MK_CONTROL, static_cast<WORD>(-360)), at);
    ASSERT_EQ(recorder.calls.size(), 2u);
    EXPECT_EQ(recorder.lastDelta, -360);
    EXPECT_EQ(recorder.calls[1].a, 0x20u | 0x1000000u | 0x4000000u);
}

// Timers

using DispatchTimers = DispatchFixture;

TEST_F(DispatchTimers, ClickTimerIdentifiersOnlyKillTheirTimer) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    for (UINT_PTR id : {1, 2, 3}) {
        SetTimer(w.hwnd, id, 60000, nullptr);
        SendMessageA(w.hwnd, WM_TIMER, id, 0);
        EXPECT_FALSE(KillTimer(w.hwnd, id)) << "timer " << id << " was killed";
    }
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(DispatchTimers, OtherTimerIdentifiersCallTheTimerCallback) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    SetTimer(w.hwnd, 4, 60000, nullptr);
    for (WPARAM id : {0, 4, 1000})
        SendMessageA(w.hwnd, WM_TIMER, id, 0);
    EXPECT_EQ(recorder.names(), (Names{"timer", "timer", "timer"}));
    EXPECT_EQ(recorder.calls[0].window, w.window);
    EXPECT_TRUE(KillTimer(w.hwnd, 4)) << "the window's own timers keep running";
}

TEST_F(DispatchTimers, StartedTimerReachesTheHandlerThroughTheMessageLoop) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    w.window->startTimer(20);
    runLoopFor(150);
    std::size_t ticks = recorder.calls.size();
    EXPECT_GE(ticks, 2u);
    EXPECT_EQ(recorder.names(), Names(ticks, "timer"));
    w.window->stopTimer();
    runLoopFor(60);
    EXPECT_EQ(recorder.calls.size(), ticks) << "no tick after stopTimer";
}

// Entering and leaving

using DispatchEnterLeave = DispatchFixture;

TEST_F(DispatchEnterLeave, MovingBetweenSiblingsLeavesOneAndEntersTheOther) {
    TwoSiblings s;
    SendMessageA(s.left, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(GwWindow::mEnterWindow, s.leftObject);
    SendMessageA(s.left, WM_MOUSEMOVE, 0, MAKELPARAM(6, 5));
    SendMessageA(s.right, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(GwWindow::mEnterWindow, s.rightObject);
    EXPECT_EQ(s.order, (Names{"left:enter", "left:move", "left:move", "left:leave", "right:enter",
                              "right:move"}));
    ASSERT_EQ(s.leftRecorder.calls.size(), 4u);
    EXPECT_EQ(s.leftRecorder.calls[3].window, s.leftObject);
    EXPECT_EQ(s.rightRecorder.calls[0].window, s.rightObject);
}

TEST_F(DispatchEnterLeave, NonClientMoveLeavesTheEnteredWindow) {
    TwoSiblings s;
    SendMessageA(s.left, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    s.leftObject->dispatchEvent(WM_NCMOUSEMOVE, HTBORDER, 0);
    EXPECT_EQ(GwWindow::mEnterWindow, s.leftObject) << "its own non-client area: still inside";
    s.topObject->dispatchEvent(WM_NCMOUSEMOVE, HTCAPTION, 0);
    EXPECT_EQ(GwWindow::mEnterWindow, nullptr);
    EXPECT_EQ(s.order, (Names{"left:enter", "left:move", "left:leave"}));
    s.topObject->dispatchEvent(WM_NCMOUSEMOVE, HTCAPTION, 0);
    EXPECT_EQ(s.order.size(), 3u) << "nothing left to leave";
}

TEST_F(DispatchEnterLeave, DestroyedEnteredWindowIsForgotten) {
    TwoSiblings s;
    SendMessageA(s.left, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    DestroyWindow(s.left);
    EXPECT_EQ(GwWindow::mEnterWindow, nullptr);
    s.order.clear();
    SendMessageA(s.right, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(s.order, (Names{"right:enter", "right:move"})) << "no leave for the window gone";
}

// Control events: reflection and bubbling
