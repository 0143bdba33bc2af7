// Helpers of the control tests: a fixture with the application and a top-level parent that
// reflects its children's notifications, a button procedure that counts what reaches the
// platform, and a bitmap of two colours (clicks, typing and pixels come from the kit).
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>

#include <GwButton.h>
#include <GwEditField.h>
#include <GwStatic.h>
#include <GwWindowClass.h>

#include <VmGuiTesting/Pixels.h>

#include "TestWindows.h"

namespace testing_controls {

using namespace testing_windows;

inline HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// The application (start-up hooks: the known window classes, "GwWM_Message") and a visible
// top-level window whose object reflects WM_COMMAND and WM_DRAWITEM to its children.
class ControlTest : public ::testing::Test {
protected:
    void SetUp() override {
        mApplication = std::make_unique<ScopedApplication>();
        mTop = std::make_unique<TopLevel>();
        SetWindowPos(mTop->hwnd, nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOMOVE);
        ShowWindow(mTop->hwnd, SW_SHOW);
    }
    void TearDown() override {
        mTop.reset();
        pumpMessages();
        mApplication.reset();
    }

    GwWindow& parent() { return *mTop->window; }
    HWND parentHwnd() const { return mTop->hwnd; }

    // A raw child of the parent, of a platform class, with the style and identifier.
    HWND rawChild(char const* cls, DWORD style, int id, char const* text = "") {
        return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 80, 20,
                               mTop->hwnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               GetModuleHandleA(nullptr), nullptr);
    }

    std::unique_ptr<ScopedApplication> mApplication;
    std::unique_ptr<TopLevel> mTop;
};

// How often a window procedure that counts has seen one message.
struct ProcedureCount {
    static inline WNDPROC original = nullptr;
    static inline UINT watched = 0;
    static inline int seen = 0;

    static LRESULT CALLBACK procedure(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
        if (msg == watched)
            ++seen;
        return CallWindowProcA(original, hwnd, msg, wParam, lParam);
    }
    // Puts the counting procedure in front of the window's own one.
    static void install(HWND hwnd, UINT message) {
        watched = message;
        seen = 0;
        original = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
            hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ProcedureCount::procedure)));
    }
};

// A bitmap of the screen's format: its left half one colour, its right half another.
inline HBITMAP twoColourBitmap(int width, int height, COLORREF left, COLORREF right) {
    HDC const screen = GetDC(nullptr);
    HDC const memory = CreateCompatibleDC(screen);
    HBITMAP const bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    HGDIOBJ const before = SelectObject(memory, bitmap);
    RECT const leftHalf{0, 0, width / 2, height};
    RECT const rightHalf{width / 2, 0, width, height};
    HBRUSH const leftBrush = CreateSolidBrush(left);
    HBRUSH const rightBrush = CreateSolidBrush(right);
    FillRect(memory, &leftHalf, leftBrush);
    FillRect(memory, &rightHalf, rightBrush);
    DeleteObject(leftBrush);
    DeleteObject(rightBrush);
    SelectObject(memory, before);
    DeleteDC(memory);
    return bitmap;
}

inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

} // namespace testing_controls
