// Helpers shared by the window tests: raw windows, a window object that routes every
// message through the dispatcher and a recording event handler. The message loop, input,
// dialogs and the questions about raw windows come from the application test kit
// (VmGuiTesting), whose names this namespace takes in.
#pragma once

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

#include <GwApplication.h>
#include <GwControl.h>
#include <GwEventHandler.h>
#include <GwGeometry.h>
#include <GwMessages.h>
#include <GwWindow.h>

#include <VmGuiTesting/Input.h>
#include <VmGuiTesting/Loop.h>
#include <VmGuiTesting/Script.h>
#include <VmGuiTesting/WindowQueries.h>

namespace testing_windows {

using namespace vmgui_testing;

inline char const* rawClassName() {
    static bool registered = false;
    if (!registered) {
        WNDCLASSA cls{};
        cls.lpfnWndProc = DefWindowProcA;
        cls.hInstance = GetModuleHandleA(nullptr);
        cls.lpszClassName = "VmGuiTestRaw";
        cls.style = CS_DBLCLKS;
        RegisterClassA(&cls);
        registered = true;
    }
    return "VmGuiTestRaw";
}

// A top-level window (WS_OVERLAPPEDWINDOW) or a child of parent, with a raw procedure.
inline HWND rawWindow(HWND parent = nullptr, int id = 0, int x = 0, int y = 0, int width = 200,
                      int height = 100, char const* cls = nullptr, DWORD style = 0) {
    if (cls == nullptr)
        cls = rawClassName();
    if (style == 0)
        style = parent != nullptr ? WS_CHILD | WS_VISIBLE : WS_OVERLAPPEDWINDOW;
    return CreateWindowExA(0, cls, "", style, x, y, width, height, parent,
                           parent != nullptr ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(id))
                                             : nullptr,
                           GetModuleHandleA(nullptr), nullptr);
}

// A window object that, like the library's frames and controls do, hands the input
// messages to the dispatcher before the default handling.
class DispatchingWindow : public GwControl {
public:
    explicit DispatchingWindow(HWND hwnd) : GwControl(hwnd) {}
    using GwWindow::dispatchEvent;
    using GwWindow::dispatchFrameEvent;
    using GwWindow::msgHandler;

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if ((msg >= WM_KEYFIRST && msg <= WM_KEYLAST) ||
            (msg >= WM_LBUTTONDOWN && msg <= WM_MBUTTONDBLCLK) || msg == WM_CLOSE ||
            (msg >= GwMsgCommand && msg <= GwMsgNotify)) {
            if (dispatchEvent(msg, wParam, lParam) != 0)
                return 0;
        }
        return GwControl::msgHandler(msg, wParam, lParam);
    }
};

// A top-level window with a bound object.
struct TopLevel {
    TopLevel() : hwnd(rawWindow()), closer{hwnd}, window(new DispatchingWindow(hwnd)) {}
    HWND hwnd;
    WindowCloser closer;
    DispatchingWindow* window;
};

// A push button of the tests: it turns the reflected click into the activate event, which
// bubbles to its top-level window, as the library's buttons do.
class StandInButton : public GwControl {
public:
    explicit StandInButton(void* hwnd) : GwControl(hwnd) {}

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == GwMsgCommand)
            return HIWORD(wParam) == BN_CLICKED ? dispatchEvent(GwMsgCommand, 0, 0) : 0;
        return GwControl::msgHandler(msg, wParam, lParam);
    }
};

// One recorded callback.
struct Call {
    std::string callback;
    GwWindow* window;
    unsigned int a; // state, key, value or code
    GwPosition position;
};

// Records every callback and answers with a configurable result.
class Recorder : public GwEventHandler {
public:
    explicit Recorder(bool counted = false, int result = GwResultContinue,
                      std::vector<std::string>* order = nullptr, std::string name = "")
        : GwEventHandler(counted), result(result), mOrder(order), mName(std::move(name)) {}

    int cbActivate(GwWindow& w) override { return record("activate", w); }
    int cbButton(GwWindow& w, GwPosition const& p, unsigned int state) override {
        return record("button", w, state, p);
    }
    int cbClose(GwWindow& w) override { return record("close", w); }
    int cbDestroy(GwWindow& w) override { return record("destroy", w); }
    int cbEnter(GwWindow& w) override { return record("enter", w); }
    int cbFocusIn(GwWindow& w) override { return record("focusin", w); }
    int cbFocusOut(GwWindow& w) override { return record("focusout", w); }
    int cbHide(GwWindow& w) override { return record("hide", w); }
    int cbKey(GwWindow& w, unsigned int key, unsigned int state) override {
        calls.push_back({"key", &w, key, GwPosition()});
        lastState = state;
        note("key");
        return result;
    }
    int cbLeave(GwWindow& w) override { return record("leave", w); }
    int cbMouseMove(GwWindow& w, GwPosition const& p, unsigned int state) override {
        return record("move", w, state, p);
    }
    int cbMouseWheel(GwWindow& w, GwPosition const& p, unsigned int state, int delta) override {
        lastDelta = delta;
        return record("wheel", w, state, p);
    }
    int cbResize(GwWindow& w) override { return record("resize", w); }
    int cbSelect(GwWindow& w) override { return record("select", w); }
    int cbShow(GwWindow& w) override { return record("show", w); }
    int cbTimer(GwWindow& w) override { return record("timer", w); }
    int cbValue(GwWindow& w, unsigned int value) override { return record("value", w, value); }
    int cbNotify(GwWindow& w, unsigned int code) override { return record("notify", w, code); }

    std::vector<std::string> names() const {
        std::vector<std::string> out;
        for (Call const& call : calls)
            out.push_back(call.callback);
        return out;
    }

    int result;
    std::vector<Call> calls;
    unsigned int lastState = 0;
    int lastDelta = 0;

private:
    int record(char const* name, GwWindow& w, unsigned int a = 0, GwPosition p = GwPosition()) {
        calls.push_back({name, &w, a, p});
        note(name);
        return result;
    }
    void note(char const* name) {
        if (mOrder != nullptr)
            mOrder->push_back(mName + ":" + name);
    }

    std::vector<std::string>* mOrder;
    std::string mName;
};

// The activations among the callbacks that recorders noted in order as "name:callback" (a
// click also moves the focus).
inline std::vector<std::string> activations(std::vector<std::string> const& order) {
    std::vector<std::string> out;
    for (std::string const& one : order) {
        if (one.ends_with(":activate"))
            out.push_back(one);
    }
    return out;
}

// An application object for the length of a test: constructing it runs the start-up hooks
// (among them the registration of "GwWM_Message", GwWindow::message()), destroying it runs
// their ends.
class ScopedApplication : public GwApplication {
public:
    ScopedApplication() = default;
};

} // namespace testing_windows

// Readable values in test failure messages.
inline void PrintTo(GwPosition const& position, std::ostream* out) {
    *out << "(" << position.x() << ", " << position.y() << ")";
}
inline void PrintTo(GwDimension const& dimension, std::ostream* out) {
    *out << dimension.width() << " x " << dimension.height();
}
