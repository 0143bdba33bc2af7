// Helpers of the frame tests: a frame that opens its protected parts, control bars of a
// chosen size, a recorder of the help calls the library makes, and a stdout capture.
#pragma once

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <GwControlBar.h>
#include <GwFrame.h>
#include <GwMenu.h>
#include <GwMessages.h>
#include <GwResource.h>
#include <GwStatusBar.h>
#include <GwThisDll.h>

#include "ImportHook.h"
#include "TestWindows.h"

namespace testing_frames {

using testing_windows::ImportHook;

// One WinHelpA call of the library.
struct WinHelpCall {
    HWND window;
    std::string file; // "" for a null file
    UINT command;
    ULONG_PTR data;
};

// One ShellExecuteA call of the library.
struct ShellCall {
    std::string operation; // "" for null
    std::string file;
    std::string parameters;
    INT show;
};

// The library's WinHelpA and ShellExecuteA calls go here for the whole test program: they
// are recorded and nothing is opened.
class HelpCalls {
public:
    static HelpCalls& instance() {
        static HelpCalls calls;
        return calls;
    }

    std::vector<WinHelpCall> winHelp;
    std::vector<ShellCall> shell;

    void clear() {
        winHelp.clear();
        shell.clear();
    }
    // The calls with a command other than HELP_QUIT (which every frame makes as it goes).
    std::vector<WinHelpCall> requests() const {
        std::vector<WinHelpCall> out;
        for (WinHelpCall const& call : winHelp) {
            if (call.command != HELP_QUIT)
                out.push_back(call);
        }
        return out;
    }
    bool hooked() const { return mWinHelp.installed() && mShell.installed(); }

private:
    HelpCalls()
        : mWinHelp(library(), "user32.dll", "WinHelpA", reinterpret_cast<void*>(&fakeWinHelp)),
          mShell(library(), "shell32.dll", "ShellExecuteA",
                 reinterpret_cast<void*>(&fakeShellExecute)) {}

    static HMODULE library() { return GetModuleHandleA("VmGui.dll"); }
    static std::string text(char const* value) { return value != nullptr ? value : ""; }

    static BOOL WINAPI fakeWinHelp(HWND window, LPCSTR file, UINT command, ULONG_PTR data) {
        instance().winHelp.push_back({window, text(file), command, data});
        return TRUE;
    }
    static HINSTANCE WINAPI fakeShellExecute(HWND, LPCSTR operation, LPCSTR file, LPCSTR parameters,
                                             LPCSTR, INT show) {
        instance().shell.push_back({text(operation), text(file), text(parameters), show});
        return reinterpret_cast<HINSTANCE>(static_cast<INT_PTR>(42));
    }

    ImportHook mWinHelp;
    ImportHook mShell;
};

// Installed before any test runs.
inline HelpCalls& gHelpCalls = HelpCalls::instance();

// A frame whose protected parts the tests reach.
class TestFrame : public GwFrame {
public:
    using GwFrame::GwFrame;
    using GwFrame::layout;
    using GwFrame::msgHandlerCommand;
    using GwFrame::msgHandlerMenu;
    using GwFrame::msgHandlerStatusText;
    using GwFrame::removeStack;
    using GwFrame::setStatusBar;

    // A frame object for an existing window, as the class record's factory makes it.
    static TestFrame* wrap(HWND hwnd) { return new TestFrame(static_cast<void*>(hwnd)); }

    HWND hwnd() const { return static_cast<HWND>(window()); }

    // Makes bar the menu bar (owned by the frame from now on), as setMenuBar would.
    void installMenuBar(GwMenu* bar) {
        mMenuBar = bar;
        SetMenu(hwnd(), static_cast<HMENU>(bar->window()));
    }
    // Puts menu into the menu cache (owned by the frame from now on).
    void cacheMenu(GwMenu* menu) {
        if (mMenuCache == nullptr)
            mMenuCache = new GwObjectTable<GwMenu>(20);
        mMenuCache->add(menu);
    }
    GwObjectTable<GwMenu> const* menuCache() const { return mMenuCache; }

    // The 0x100B events the frame dispatched: wParam and the menu in lParam.
    std::vector<std::pair<unsigned long long, GwMenu*>> menuEvents;

protected:
    explicit TestFrame(void* handle) : GwFrame(handle) {}

    long long dispatchEvent(unsigned long long msg, unsigned long long wParam,
                            long long lParam) override {
        if (msg == GwMsgFrameEvent)
            menuEvents.emplace_back(wParam, reinterpret_cast<GwMenu*>(lParam));
        return GwFrame::dispatchEvent(msg, wParam, lParam);
    }
};

// A control bar around a child window of parent that asks for a fixed size and records
// what it was asked.
class FixedBar : public GwControlBar {
public:
    FixedBar(HWND parent, long width, long height)
        : GwControlBar(testing_windows::rawWindow(parent, 0, 0, 0, 10, 10)), size(width, height) {}

    GwDimension calculate(eCalculate kind, int limit, GwObjectTable<GwRectangle>* parts) override {
        calls.push_back({kind, limit});
        EXPECT_EQ(parts, nullptr);
        return size;
    }

    HWND hwnd() const { return static_cast<HWND>(window()); }

    GwDimension size;
    std::vector<std::pair<int, int>> calls; // kind, limit
};

// A window's rectangle in its parent's client coordinates.
inline RECT rectInParent(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    MapWindowPoints(nullptr, GetParent(hwnd), reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

inline RECT clientRect(HWND hwnd) {
    RECT rect{};
    GetClientRect(hwnd, &rect);
    return rect;
}

// Sets the outer size of a frame (which lays it out).
inline void resize(HWND hwnd, int width, int height) {
    SetWindowPos(hwnd, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Takes a quit message from the queue, if one was posted.
inline bool quitPosted() {
    MSG msg;
    return PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
}

// Redirects the process's standard output into a temporary file until text() is called.
class StdoutCapture {
public:
    StdoutCapture() {
        char directory[MAX_PATH] = {};
        GetTempPathA(MAX_PATH, directory);
        char file[MAX_PATH] = {};
        GetTempFileNameA(directory, "gwo", 0, file);
        mPath = file;
        std::fflush(stdout);
        mSaved = _dup(_fileno(stdout));
        int const redirected = _open(mPath.c_str(), _O_WRONLY | _O_TRUNC | _O_BINARY);
        _dup2(redirected, _fileno(stdout));
        _close(redirected);
    }
    ~StdoutCapture() { restore(); }
    StdoutCapture(StdoutCapture const&) = delete;
    StdoutCapture& operator=(StdoutCapture const&) = delete;

    // Ends the capture and answers what was written.
    std::string text() {
        restore();
        std::ifstream in(mPath, std::ios::binary);
        std::stringstream content;
        content << in.rdbuf();
        in.close();
        DeleteFileA(mPath.c_str());
        return content.str();
    }

    // The captured text in lines (without their line feeds).
    std::vector<std::string> lines() {
        std::vector<std::string> out;
        std::istringstream in(text());
        for (std::string line; std::getline(in, line);)
            out.push_back(line);
        return out;
    }

private:
    void restore() {
        if (mSaved < 0)
            return;
        std::fflush(stdout);
        _dup2(mSaved, _fileno(stdout));
        _close(mSaved);
        mSaved = -1;
    }

    std::string mPath;
    int mSaved = -1;
};

// Every frame test runs with an application (the start-up hooks register "GwWM_Message" and
// the window class "GwFrame"), a clean help record and the help mode 0.
class FrameFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(gHelpCalls.hooked());
        gHelpCalls.clear();
        GwFrame::gHelpMode = 0;
        testing_windows::setModifierKeys(false, false);
    }
    void TearDown() override {
        testing_windows::pumpMessages();
        GwFrame::gHelpMode = 0;
    }

    testing_windows::ScopedApplication mApplication;
};

} // namespace testing_frames
