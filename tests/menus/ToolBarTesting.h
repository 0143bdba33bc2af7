// Helpers of the tool-bar tests: a frame with a status bar, bars whose protected parts the
// tests reach, objects that count their live instances, and what Win32 says about buttons.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include <gtest/gtest.h>

#include <GwComboBox.h>
#include <GwToolBar.h>

#include "FrameTesting.h"

namespace testing_toolbars {

using testing_frames::TestFrame;

// A tool bar that opens its protected parts and counts its live objects.
class TestToolBar : public GwToolBar {
public:
    TestToolBar(GwWindow& parent, unsigned long long id) : GwToolBar(parent, id) { ++alive; }
    ~TestToolBar() override { --alive; }
    using GwToolBar::debugLayout;
    using GwToolBar::msgHandler;
    using GwToolBar::toolHitTest;

    HWND hwnd() const { return static_cast<HWND>(window()); }

    static inline int alive = 0;
};

// A combo box that counts its live objects (and its deletions, to see a second one).
class CountedCombo : public GwComboBox {
public:
    CountedCombo(GwWindow& parent, unsigned long long id) : GwComboBox(parent, id) { ++alive; }
    ~CountedCombo() override {
        --alive;
        ++deleted;
    }
    HWND hwnd() const { return static_cast<HWND>(window()); }

    static inline int alive = 0;
    static inline int deleted = 0;
};

inline TBBUTTON buttonAt(HWND bar, int index) {
    TBBUTTON button{};
    SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    return button;
}

inline RECT itemRect(HWND bar, int index) {
    RECT rect{};
    SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

inline int buttonCount(HWND bar) {
    return static_cast<int>(SendMessageA(bar, TB_BUTTONCOUNT, 0, 0));
}

// The status bar's simple-mode text (read at index 0 while the bar is in simple mode).
inline std::string statusText(HWND status) {
    char text[256] = {};
    SendMessageA(status, SB_GETTEXTA, 0, reinterpret_cast<LPARAM>(text));
    return text;
}

// Every tool-bar test runs with an application and a visible frame of 400 x 300 with a
// status bar; the frame is deleted at the end (unless a test destroyed its window).
class ToolBarFixture : public testing_frames::FrameFixture {
protected:
    void SetUp() override {
        FrameFixture::SetUp();
        TestToolBar::alive = 0;
        CountedCombo::alive = 0;
        CountedCombo::deleted = 0;
        frame = new TestFrame(1, 0, true);
        SetWindowPos(frame->hwnd(), nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
        ShowWindow(frame->hwnd(), SW_SHOWNOACTIVATE);
    }
    void TearDown() override {
        delete frame;
        frame = nullptr;
        FrameFixture::TearDown();
    }

    // A bar on the frame with buttons of button x 22 pixels (images 16 x 15).
    TestToolBar* makeBar(unsigned long long id = 0x70, int button = 23) {
        auto* bar = new TestToolBar(*frame, id);
        SendMessageA(bar->hwnd(), TB_SETBITMAPSIZE, 0, MAKELONG(16, 15));
        SendMessageA(bar->hwnd(), TB_SETBUTTONSIZE, 0, MAKELONG(button, 22));
        return bar;
    }

    HWND statusWindow() const { return static_cast<HWND>(frame->statusBar()->window()); }

    TestFrame* frame = nullptr;
};

} // namespace testing_toolbars
