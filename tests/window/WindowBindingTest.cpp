#include <gtest/gtest.h>

#include "BreakpointCounter.h"
#include "TestWindows.h"

using namespace testing_windows;

TEST(WindowBinding, LookupWithoutCreateOnAForeignWindowCreatesNothing) {
    HWND raw = rawWindow();
    EXPECT_EQ(GwWindow::window(raw, false), nullptr);
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_USERDATA), 0);
    EXPECT_EQ(GwWindow::window(raw, false), nullptr);
    DestroyWindow(raw);
}

TEST(WindowBinding, LookupWithCreateBindsAnObject) {
    HWND raw = rawWindow();
    LONG_PTR procedure = GetWindowLongPtrA(raw, GWLP_WNDPROC);
    GwWindow& object = GwWindow::window(raw);
    EXPECT_EQ(object.window(), raw);
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(&object));
    EXPECT_NE(GetWindowLongPtrA(raw, GWLP_WNDPROC), procedure);
    EXPECT_EQ(GwWindow::window(raw, false), &object);
    EXPECT_EQ(&GwWindow::window(raw), &object);
    EXPECT_TRUE(object.isA()->isSubclassOf(Class::lookup("GwWindow")));
    DestroyWindow(raw);
}

TEST(WindowBinding, NullHandleIsAProgrammingError) {
    BreakpointCounter breaks;
    EXPECT_EQ(GwWindow::window(nullptr, true), nullptr);
    EXPECT_EQ(breaks.count(), 0);
    GwWindow& none = GwWindow::window(nullptr);
    EXPECT_EQ(breaks.count(), 1);
    EXPECT_EQ(none.window(), nullptr);
}

TEST(WindowBinding, ObjectDeletesItselfWhenItsWindowIsDestroyed) {
    HWND raw = rawWindow();
    bool destroyed = false;
    struct Watch : GwEventHandler {
        explicit Watch(bool* flag) : GwEventHandler(true), flag(flag) {}
        ~Watch() override { *flag = true; }
        bool* flag;
    };
    auto* object = new DispatchingWindow(raw);
    object->add(new Watch(&destroyed));
    LONG_PTR procedure = reinterpret_cast<LONG_PTR>(&DefWindowProcA);
    DestroyWindow(raw);
    EXPECT_TRUE(destroyed) << "the counted handler lost its last reference";
    EXPECT_FALSE(IsWindow(raw));
    (void)procedure;
}

TEST(WindowBinding, DestroyingTheWindowReportsDestroyToHandlers) {
    HWND raw = rawWindow();
    Recorder recorder;
    (new DispatchingWindow(raw))->add(&recorder);
    DestroyWindow(raw);
    ASSERT_FALSE(recorder.calls.empty());
    EXPECT_EQ(recorder.calls.back().callback, "destroy");
}

namespace {

UINT const kProbe = WM_USER + 1; // answered 42 by the counting procedure
int gProbesSeen = 0;             // how often the counting procedure got kProbe

LRESULT CALLBACK countingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == kProbe) {
        ++gProbesSeen;
        return 42;
    }
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

// A top-level window whose own procedure counts kProbe.
HWND countingWindow() {
    static bool registered = false;
    if (!registered) {
        WNDCLASSA cls{};
        cls.lpfnWndProc = countingProc;
        cls.hInstance = GetModuleHandleA(nullptr);
        cls.lpszClassName = "VmGuiTestCounting";
        RegisterClassA(&cls);
        registered = true;
    }
    gProbesSeen = 0;
    return CreateWindowExA(0, "VmGuiTestCounting", "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr,
                           nullptr, GetModuleHandleA(nullptr), nullptr);
}

// A window object bound with the attaching constructor, with access to the protected parts.
class Bound : public GwControl {
public:
    Bound() = default;
    explicit Bound(HWND hwnd) : GwControl(hwnd) {}
    using GwWindow::callDefHandler;
    using GwWindow::setMsgHandler;

    // Lets go of the window without touching it (another object speaks for it).
    void forget() {
        mHandle = nullptr;
        mPrevProc = nullptr;
    }
    int calls = 0; // msgHandler calls

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        ++calls;
        return GwControl::msgHandler(msg, wParam, lParam);
    }
};

} // namespace

TEST(WindowBinding, LookupWithoutCreateLeavesTheWindowProcedureAlone) {
    HWND raw = countingWindow();
    HWND button = CreateWindowExA(0, "Button", "B", WS_CHILD | BS_PUSHBUTTON, 0, 0, 50, 20, raw,
                                  nullptr, GetModuleHandleA(nullptr), nullptr);
    LONG_PTR procedure = GetWindowLongPtrA(raw, GWLP_WNDPROC);
    LONG_PTR buttonProcedure = GetWindowLongPtrA(button, GWLP_WNDPROC);
    EXPECT_EQ(GwWindow::window(raw, false), nullptr);
    EXPECT_EQ(GwWindow::window(button, false), nullptr);
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_WNDPROC), procedure);
    EXPECT_EQ(GetWindowLongPtrA(button, GWLP_WNDPROC), buttonProcedure);
    EXPECT_EQ(GetWindowLongPtrA(button, GWLP_USERDATA), 0);
    EXPECT_EQ(SendMessageA(raw, kProbe, 0, 0), 42);
    EXPECT_EQ(gProbesSeen, 1);
    DestroyWindow(raw);
}

TEST(WindowBinding, BindingASubclassedWindowAgainKeepsTheFirstSavedProcedure) {
    HWND raw = countingWindow();
    auto* first = new Bound(raw);
    LONG_PTR library = GetWindowLongPtrA(raw, GWLP_WNDPROC);
    auto* second = new Bound(raw);
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(second));
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_WNDPROC), library);

    // The message reaches the second object once and the window's own procedure once:
    // neither a loop through the library's procedure nor a lost original.
    EXPECT_EQ(SendMessageA(raw, kProbe, 0, 0), 42);
    EXPECT_EQ(gProbesSeen, 1);
    EXPECT_EQ(second->calls, 1);
    EXPECT_EQ(first->calls, 0);

    first->forget();
    delete first;
    DestroyWindow(raw); // deletes the second object
    EXPECT_FALSE(IsWindow(raw));
}

TEST(WindowBinding, UnbindingRestoresTheOriginalProcedureAfterADoubleBinding) {
    HWND raw = countingWindow();
    LONG_PTR original = GetWindowLongPtrA(raw, GWLP_WNDPROC);
    auto* first = new Bound(raw);
    auto* second = new Bound(raw);
    second->setMsgHandler(false);
    EXPECT_EQ(GetWindowLongPtrA(raw, GWLP_WNDPROC), original);
    first->forget();
    delete first;
    delete second; // unbinds and destroys the window
    EXPECT_FALSE(IsWindow(raw));
}

TEST(WindowBinding, SendMessageCloseRunsTheClosePath) {
    HWND raw = rawWindow();
    Recorder recorder(false, GwResultHandled);
    auto* object = new DispatchingWindow(raw);
    object->add(&recorder);
    object->sendMessage(GwWindow::eClose);
    ASSERT_EQ(recorder.names(), std::vector<std::string>{"close"});
    EXPECT_EQ(recorder.calls[0].window, object);
    EXPECT_TRUE(IsWindow(raw)) << "a handler that handles the close keeps the window";
    DestroyWindow(raw);
}

TEST(WindowBinding, SendMessageCloseThatNobodyHandlesDestroysTheWindow) {
    HWND raw = rawWindow();
    Recorder recorder;
    auto* object = new DispatchingWindow(raw);
    object->add(&recorder);
    object->sendMessage(GwWindow::eClose);
    EXPECT_FALSE(IsWindow(raw)) << "the default close destroys the window";
    EXPECT_EQ(recorder.names(), (std::vector<std::string>{"close", "destroy"}));
}

TEST(WindowBinding, SendMessageWithAnyOtherTypeHasNoEffect) {
    HWND raw = countingWindow();
    Recorder recorder;
    auto* object = new Bound(raw);
    object->add(&recorder);
    for (int type : {0, 2, 3, 7, 0x10})
        object->sendMessage(static_cast<GwWindow::eMessageType>(type));
    EXPECT_EQ(object->calls, 0);
    EXPECT_TRUE(recorder.calls.empty());
    EXPECT_TRUE(IsWindow(raw));
    object->sendMessage(GwWindow::eClose);
    EXPECT_FALSE(IsWindow(raw)) << "type 1 runs the close path";
}

namespace {

// Notes, while it handles WM_CLOSE, whether the object was deleted under it.
class ClosingWindow : public GwControl {
public:
    explicit ClosingWindow(HWND hwnd) : GwControl(hwnd) {}
    ~ClosingWindow() override {
        sDeleted = true;
        if (sInClose)
            sDeletedWhileClosing = true;
    }
    static inline bool sInClose = false;
    static inline bool sDeleted = false;
    static inline bool sDeletedWhileClosing = false;

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg != WM_CLOSE)
            return GwControl::msgHandler(msg, wParam, lParam);
        sInClose = true;
        long long result = GwControl::msgHandler(msg, wParam, lParam);
        sInClose = false;
        return result;
    }
};

} // namespace

TEST(WindowBinding, CloseBySendMessageDeletesTheObjectOnlyAfterItsHandlerReturns) {
    HWND raw = rawWindow();
    ClosingWindow::sDeleted = ClosingWindow::sDeletedWhileClosing = false;
    auto* object = new ClosingWindow(raw);
    object->sendMessage(GwWindow::eClose);
    EXPECT_FALSE(IsWindow(raw));
    EXPECT_TRUE(ClosingWindow::sDeleted);
    EXPECT_FALSE(ClosingWindow::sDeletedWhileClosing);
}

TEST(WindowBinding, CloseByWin32DeletesTheObjectOnlyAfterItsHandlerReturns) {
    HWND raw = rawWindow();
    ClosingWindow::sDeleted = ClosingWindow::sDeletedWhileClosing = false;
    new ClosingWindow(raw);
    SendMessageA(raw, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(raw));
    EXPECT_TRUE(ClosingWindow::sDeleted);
    EXPECT_FALSE(ClosingWindow::sDeletedWhileClosing);
}

TEST(WindowBinding, MessageForALibraryWindowWithoutObjectBreaksAndAnswersZero) {
    HWND raw = countingWindow();
    auto* object = new Bound(raw);
    LONG_PTR bound = GetWindowLongPtrA(raw, GWLP_USERDATA);
    SetWindowLongPtrA(raw, GWLP_USERDATA, 0);
    {
        BreakpointCounter breaks;
        EXPECT_EQ(SendMessageA(raw, kProbe, 0, 0), 0);
        EXPECT_EQ(breaks.count(), 1);
    }
    EXPECT_EQ(gProbesSeen, 0) << "the message goes no further";
    EXPECT_EQ(object->calls, 0);
    SetWindowLongPtrA(raw, GWLP_USERDATA, bound);
    {
        BreakpointCounter breaks;
        EXPECT_EQ(SendMessageA(raw, kProbe, 0, 0), 42);
        EXPECT_EQ(breaks.count(), 0);
    }
    EXPECT_EQ(object->calls, 1);
    DestroyWindow(raw);
}

TEST(WindowBinding, DefaultHandlingWithoutSavedProcedureBreaksAndAnswersZero) {
    Bound unbound;
    {
        BreakpointCounter breaks;
        EXPECT_EQ(unbound.callDefHandler(kProbe, 0, 0), 0);
        EXPECT_EQ(breaks.count(), 1);
    }

    // Bound, but the subclassing undone: the window's own procedure is no longer saved.
    HWND raw = countingWindow();
    auto* object = new Bound(raw);
    {
        BreakpointCounter breaks;
        EXPECT_EQ(object->callDefHandler(kProbe, 0, 0), 42);
        EXPECT_EQ(breaks.count(), 0);
    }
    object->setMsgHandler(false);
    {
        BreakpointCounter breaks;
        EXPECT_EQ(object->callDefHandler(kProbe, 0, 0), 0);
        EXPECT_EQ(breaks.count(), 1);
    }
    EXPECT_EQ(gProbesSeen, 1);
    delete object; // destroys the window
    EXPECT_FALSE(IsWindow(raw));
}
