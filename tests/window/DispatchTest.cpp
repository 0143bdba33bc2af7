// The dispatcher: which callbacks each message produces, in which order, with which
// arguments, how control events are reflected and bubble to the top-level window, the
// window state callbacks, and windows or handlers that go while a message is dispatched.
#include <gtest/gtest.h>

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "BreakpointCounter.h"
#include "DispatchTesting.h"
#include "TestWindows.h"

using namespace testing_dispatch;
using namespace testing_windows;

namespace {

// A recorder that answers some callbacks with results of their own.
class Scripted : public Recorder {
public:
    Scripted(Names* order, std::string name) : Recorder(false, GwResultContinue, order, name) {}

    int cbHide(GwWindow& w) override { return answer("hide", Recorder::cbHide(w)); }
    int cbShow(GwWindow& w) override { return answer("show", Recorder::cbShow(w)); }
    int cbResize(GwWindow& w) override { return answer("resize", Recorder::cbResize(w)); }

    std::map<std::string, int> answers;

private:
    int answer(char const* callback, int otherwise) {
        auto found = answers.find(callback);
        return found != answers.end() ? found->second : otherwise;
    }
};

// A window object that logs the messages it receives and can answer some of them itself.
class LoggingWindow : public DispatchingWindow {
public:
    explicit LoggingWindow(HWND hwnd) : DispatchingWindow(hwnd) {}

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        log.push_back({msg, wParam, lParam});
        auto found = answers.find(msg);
        if (found != answers.end())
            return found->second;
        return DispatchingWindow::msgHandler(msg, wParam, lParam);
    }

    bool received(unsigned long long msg) const {
        for (Entry const& entry : log) {
            if (entry.msg == msg)
                return true;
        }
        return false;
    }

    struct Entry {
        unsigned long long msg;
        unsigned long long wParam;
        long long lParam;
    };
    std::vector<Entry> log;
    std::map<unsigned long long, long long> answers;
};

// The messages that reach a raw window without an object.
std::vector<UINT> gRawMessages;

LRESULT CALLBACK loggingProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    gRawMessages.push_back(msg);
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

char const* loggingClass() {
    static bool registered = false;
    if (!registered) {
        WNDCLASSA cls{};
        cls.lpfnWndProc = loggingProc;
        cls.hInstance = GetModuleHandleA(nullptr);
        cls.lpszClassName = "VmGuiTestLogging";
        RegisterClassA(&cls);
        registered = true;
    }
    return "VmGuiTestLogging";
}

bool rawReceived(UINT msg) {
    for (UINT one : gRawMessages) {
        if (one == msg)
            return true;
    }
    return false;
}

// A window whose handler table can be given an empty slot.
class SlotWindow : public DispatchingWindow {
public:
    explicit SlotWindow(HWND hwnd) : DispatchingWindow(hwnd) {}
    void emptySlotOf(GwEventHandler* handler) { mHandlers->remove(handler); }
    void refillSlot(GwEventHandler* handler) { mHandlers->add(handler); }
};

// A top-level window with a bound button control, each with a recorder writing to one list.
struct ControlInWindow {
    ControlInWindow()
        : top(rawWindow()), closer{top},
          control(rawWindow(top, 3, 10, 10, 80, 24, "BUTTON", WS_CHILD | WS_VISIBLE)),
          topObject(new DispatchingWindow(top)), controlObject(new DispatchingWindow(control)),
          topRecorder(false, GwResultContinue, &order, "top"),
          controlRecorder(false, GwResultContinue, &order, "control") {
        topObject->add(&topRecorder);
        controlObject->add(&controlRecorder);
    }
    HWND top;
    WindowCloser closer;
    HWND control;
    DispatchingWindow* topObject;
    DispatchingWindow* controlObject;
    Names order;
    Recorder topRecorder;
    Recorder controlRecorder;
};

} // namespace

// Handler order and result flags

using DispatchOrder = DispatchFixture;

TEST_F(DispatchOrder, HandlersAreCalledLastAddedFirst) {
    Names order;
    Recorder a(false, GwResultContinue, &order, "a");
    Recorder b(false, GwResultContinue, &order, "b");
    Recorder c(false, GwResultContinue, &order, "c");
    TopLevel w;
    w.window->add(&a).add(&b).add(&c);
    SendMessageA(w.hwnd, GwMsgNotify, 5, 0);
    EXPECT_EQ(order, (Names{"c:notify", "b:notify", "a:notify"}));
}

TEST_F(DispatchOrder, ManyHandlersAreAllCalledLastAddedFirst) {
    Names order;
    std::vector<std::unique_ptr<Recorder>> recorders;
    TopLevel w;
    for (int i = 0; i < 150; ++i) {
        recorders.push_back(
            std::make_unique<Recorder>(false, GwResultContinue, &order, std::to_string(i)));
        w.window->add(recorders.back().get());
    }
    SendMessageA(w.hwnd, GwMsgNotify, 5, 0);
    Names expected;
    for (int i = 149; i >= 0; --i)
        expected.push_back(std::to_string(i) + ":notify");
    EXPECT_EQ(order, expected);
    DestroyWindow(w.hwnd);
}

TEST_F(DispatchOrder, StopFromTheLaterHandlerKeepsTheEarlierOneUncalled) {
    Recorder earlier;
    Recorder later(false, GwResultStop);
    TopLevel w;
    w.window->add(&earlier).add(&later);
    SendMessageA(w.hwnd, GwMsgNotify, 5, 0);
    SendMessageA(w.hwnd, WM_CHAR, 'x', 0);
    SendMessageA(w.hwnd, WM_LBUTTONDOWN, MK_LBUTTON, 0);
    SendMessageA(w.hwnd, WM_SETFOCUS, 0, 0);
    EXPECT_EQ(later.names(), (Names{"notify", "key", "button", "focusin"}));
    EXPECT_TRUE(earlier.calls.empty());
}

TEST_F(DispatchOrder, EmptySlotEndsTheWalk) {
    Names order;
    Recorder a(false, GwResultContinue, &order, "a");
    Recorder b(false, GwResultContinue, &order, "b");
    Recorder c(false, GwResultContinue, &order, "c");
    HWND hwnd = rawWindow();
    WindowCloser closer{hwnd};
    auto* window = new SlotWindow(hwnd);
    window->add(&a).add(&b).add(&c);
    window->emptySlotOf(&b);
    SendMessageA(hwnd, GwMsgNotify, 5, 0);
    window->refillSlot(&b);
    SendMessageA(hwnd, GwMsgNotify, 6, 0);
    EXPECT_EQ(order, (Names{"c:notify", "c:notify", "b:notify", "a:notify"}));
}

TEST_F(DispatchOrder, ResultsAreCombinedAndHandledMakesDispatchAnswerOne) {
    Recorder earlier;
    Recorder later;
    TopLevel w;
    w.window->add(&earlier).add(&later);
    EXPECT_EQ(w.window->dispatchEvent(WM_CLOSE, 0, 0), 0);
    earlier.result = GwResultHandled;
    EXPECT_EQ(w.window->dispatchEvent(WM_CLOSE, 0, 0), 1) << "the earlier handler's flag counts";
    earlier.result = GwResultContinue;
    later.result = GwResultContinue | GwResultHandled;
    EXPECT_EQ(w.window->dispatchEvent(WM_CLOSE, 0, 0), 1);
    later.result = GwResultNoBubble;
    EXPECT_EQ(w.window->dispatchEvent(WM_CLOSE, 0, 0), 0) << "flag 8 claims nothing";
    EXPECT_EQ(earlier.calls.size(), 4u);
    EXPECT_EQ(later.calls.size(), 4u);
}

TEST_F(DispatchOrder, WindowWithoutHandlersHandlesNothing) {
    TopLevel w;
    EXPECT_EQ(w.window->handlers(), nullptr);
    EXPECT_EQ(w.window->dispatchEvent(WM_KEYDOWN, VK_RETURN, 0), 0);
    EXPECT_EQ(w.window->dispatchEvent(WM_LBUTTONDOWN, MK_LBUTTON, 0), 0);
    SendMessageA(w.hwnd, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(w.hwnd)) << "unhandled, the close went on to the default procedure";
}

TEST_F(DispatchOrder, UnknownMessageProducesNoCallback) {
    Recorder recorder(false, GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    EXPECT_EQ(w.window->dispatchEvent(WM_USER + 77, 1, 2), 0);
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(DispatchOrder, CloseHandledByAHandlerKeepsTheWindow) {
    Recorder recorder(false, GwResultContinue | GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    SendMessageA(w.hwnd, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(w.hwnd));
    recorder.result = GwResultContinue;
    SendMessageA(w.hwnd, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(w.hwnd));
    EXPECT_EQ(recorder.names(), (Names{"close", "close", "destroy"}));
}

using DispatchBubbling = DispatchFixture;

TEST_F(DispatchBubbling, CommandOfABoundControlReachesTheControlThenItsTopLevelWindow) {
    ControlInWindow c;
    SendMessageA(c.top, WM_COMMAND, MAKEWPARAM(3, BN_CLICKED), reinterpret_cast<LPARAM>(c.control));
    EXPECT_EQ(c.order, (Names{"control:activate", "top:activate"}));
    ASSERT_EQ(c.topRecorder.calls.size(), 1u);
    EXPECT_EQ(c.topRecorder.calls[0].window, c.controlObject);
    EXPECT_EQ(c.controlRecorder.calls[0].window, c.controlObject);
}

TEST_F(DispatchBubbling, ClickedButtonActivatesThroughItsTopLevelWindow) {
    ControlInWindow c;
    SendMessageA(c.control, BM_CLICK, 0, 0);
    Names activations;
    for (std::string const& entry : c.order) {
        if (entry.find(":activate") != std::string::npos)
            activations.push_back(entry);
    }
    EXPECT_EQ(activations, (Names{"control:activate", "top:activate"}));
    ASSERT_FALSE(c.topRecorder.calls.empty());
    EXPECT_EQ(c.topRecorder.calls.back().window, c.controlObject);
}

TEST_F(DispatchBubbling, CommandWithoutABoundControlIsNotReflected) {
    ControlInWindow c;
    gRawMessages.clear();
    HWND raw = rawWindow(c.top, 4, 0, 0, 10, 10, loggingClass());
    gRawMessages.clear();
    SendMessageA(c.top, WM_COMMAND, MAKEWPARAM(4, BN_CLICKED), reinterpret_cast<LPARAM>(raw));
    SendMessageA(c.top, WM_COMMAND, MAKEWPARAM(40, 0), 0);
    EXPECT_FALSE(rawReceived(GwMsgCommand));
    EXPECT_TRUE(c.order.empty());
}

TEST_F(DispatchBubbling, HandledByTheControlStopsBubbling) {
    ControlInWindow c;
    c.controlRecorder.result = GwResultContinue | GwResultHandled;
    EXPECT_EQ(c.controlObject->dispatchEvent(GwMsgActivate, 0, 0), 1);
    EXPECT_EQ(c.order, Names{"control:activate"});
}

TEST_F(DispatchBubbling, NoBubbleFlagStopsBubblingWithoutClaiming) {
    ControlInWindow c;
    c.controlRecorder.result = GwResultContinue | GwResultNoBubble;
    EXPECT_EQ(c.controlObject->dispatchEvent(GwMsgSelect, 0, 0), 0);
    EXPECT_EQ(c.order, Names{"control:select"});
}

TEST_F(DispatchBubbling, StopOnlyEndsTheControlsOwnWalk) {
    ControlInWindow c;
    Recorder later(false, GwResultStop, &c.order, "later");
    c.controlObject->add(&later);
    EXPECT_EQ(c.controlObject->dispatchEvent(GwMsgActivate, 0, 0), 0);
    EXPECT_EQ(c.order, (Names{"later:activate", "top:activate"}));
}

TEST_F(DispatchBubbling, HandledByTheTopLevelWindowIsTheControlsAnswer) {
    ControlInWindow c;
    c.topRecorder.result = GwResultHandled;
    EXPECT_EQ(c.controlObject->dispatchEvent(GwMsgSelect, 0, 0), 1);
    EXPECT_EQ(c.controlObject->dispatchEvent(GwMsgCommand, MAKEWPARAM(3, BN_CLICKED), 0), 1);
    EXPECT_EQ(c.order, (Names{"control:select", "top:select", "control:activate", "top:activate"}));
}

TEST_F(DispatchBubbling, ActivateSelectAndValueBubbleToTheirCallbacks) {
    ControlInWindow c;
    SendMessageA(c.control, GwMsgActivate, 0, 0);
    SendMessageA(c.control, GwMsgSelect, 0, 0);
    SendMessageA(c.control, GwMsgValue, 0x70025, 0);
    EXPECT_EQ(c.order, (Names{"control:activate", "top:activate", "control:select", "top:select",
                              "control:value", "top:value"}));
    ASSERT_EQ(c.topRecorder.calls.size(), 3u);
    EXPECT_EQ(c.controlRecorder.calls[2].a, 0x25u) << "the low word of the value";
    EXPECT_EQ(c.topRecorder.calls[2].a, 0x25u);
    for (Call const& call : c.topRecorder.calls)
        EXPECT_EQ(call.window, c.controlObject);
}

TEST_F(DispatchBubbling, ControlEventsSkipIntermediateChildWindows) {
    Names order;
    Recorder topRecorder(false, GwResultContinue, &order, "top");
    Recorder panelRecorder(false, GwResultContinue, &order, "panel");
    Recorder controlRecorder(false, GwResultContinue, &order, "control");
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND panel = rawWindow(top, 1, 0, 0, 150, 80);
    HWND control = rawWindow(panel, 2, 0, 0, 50, 20);
    (new DispatchingWindow(top))->add(&topRecorder);
    (new DispatchingWindow(panel))->add(&panelRecorder);
    (new DispatchingWindow(control))->add(&controlRecorder);
    SendMessageA(control, GwMsgValue, 9, 0);
    EXPECT_EQ(order, (Names{"control:value", "top:value"}));
}

TEST_F(DispatchBubbling, FrameEventCallsShowHideOrActivateByTheLowWord) {
    ControlInWindow c;
    auto source = reinterpret_cast<LPARAM>(c.controlObject);
    SendMessageA(c.top, GwMsgFrameEvent, 0x10000, source);
    SendMessageA(c.top, GwMsgFrameEvent, 0x20001, source);
    SendMessageA(c.top, GwMsgFrameEvent, 2, source);
    EXPECT_EQ(c.order, (Names{"control:show", "top:show", "control:hide", "top:hide",
                              "control:activate", "top:activate"}));
    for (Call const& call : c.topRecorder.calls)
        EXPECT_EQ(call.window, c.controlObject);
    c.topRecorder.result = GwResultHandled;
    EXPECT_EQ(c.topObject->dispatchEvent(GwMsgFrameEvent, 1, source), 1);
}

TEST_F(DispatchBubbling, FrameDispatchVisitsSourceThenExtraThenOwnHandlers) {
    ControlInWindow c;
    HWND other = rawWindow(c.top, 7, 0, 50, 50, 20);
    auto* extra = new DispatchingWindow(other);
    Recorder extraRecorder(false, GwResultContinue, &c.order, "extra");
    extra->add(&extraRecorder);
    EXPECT_FALSE(c.topObject->dispatchFrameEvent(GwMsgValue, 12, c.controlObject, extra));
    EXPECT_EQ(c.order, (Names{"control:value", "extra:value", "top:value"}));
    ASSERT_EQ(extraRecorder.calls.size(), 1u);
    EXPECT_EQ(extraRecorder.calls[0].window, c.controlObject);
    EXPECT_EQ(extraRecorder.calls[0].a, 12u);

    c.order.clear();
    extraRecorder.result = GwResultNoBubble;
    EXPECT_FALSE(c.topObject->dispatchFrameEvent(GwMsgSelect, 0, c.controlObject, extra));
    EXPECT_EQ(c.order, (Names{"control:select", "extra:select"}));

    c.order.clear();
    extraRecorder.result = GwResultHandled;
    EXPECT_TRUE(c.topObject->dispatchFrameEvent(GwMsgActivate, 0, c.controlObject, extra));
    EXPECT_EQ(c.order, (Names{"control:activate", "extra:activate"}));

    c.order.clear();
    c.controlRecorder.result = GwResultNoBubble;
    EXPECT_FALSE(c.topObject->dispatchFrameEvent(GwMsgActivate, 0, c.controlObject, extra));
    EXPECT_EQ(c.order, Names{"control:activate"});
}

TEST_F(DispatchBubbling, NotifyIsReflectedToTheBoundControl) {
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND control = rawWindow(top, 5);
    new DispatchingWindow(top);
    auto* logging = new LoggingWindow(control);
    logging->answers[GwMsgNotifyReflected] = 0x77;
    NMHDR header{control, 5, static_cast<UINT>(-2)};
    auto address = reinterpret_cast<LPARAM>(&header);
    EXPECT_EQ(SendMessageA(top, WM_NOTIFY, 5, address), 0x77);
    ASSERT_EQ(logging->log.size(), 1u);
    EXPECT_EQ(logging->log[0].msg, static_cast<unsigned long long>(GwMsgNotifyReflected));
    EXPECT_EQ(logging->log[0].wParam, 5u);
    EXPECT_EQ(logging->log[0].lParam, address);
}

TEST_F(DispatchBubbling, NotifyOfAnUnboundControlIsNotReflected) {
    HWND top = rawWindow();
    WindowCloser closer{top};
    new DispatchingWindow(top);
    HWND raw = rawWindow(top, 6, 0, 0, 10, 10, loggingClass());
    gRawMessages.clear();
    NMHDR header{raw, 6, static_cast<UINT>(-2)};
    EXPECT_EQ(SendMessageA(top, WM_NOTIFY, 6, reinterpret_cast<LPARAM>(&header)), 0);
    EXPECT_FALSE(rawReceived(GwMsgNotifyReflected));
}

TEST_F(DispatchBubbling, DrawItemIsReflectedToTheBoundItemWindow) {
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND item = rawWindow(top, 8);
    new DispatchingWindow(top);
    auto* logging = new LoggingWindow(item);
    logging->answers[GwMsgDrawItem] = 1;
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_BUTTON;
    draw.CtlID = 8;
    draw.hwndItem = item;
    auto address = reinterpret_cast<LPARAM>(&draw);
    EXPECT_EQ(SendMessageA(top, WM_DRAWITEM, 8, address), TRUE);
    ASSERT_EQ(logging->log.size(), 1u);
    EXPECT_EQ(logging->log[0].msg, static_cast<unsigned long long>(GwMsgDrawItem));
    EXPECT_EQ(logging->log[0].wParam, 8u);
    EXPECT_EQ(logging->log[0].lParam, address);
}

TEST_F(DispatchBubbling, DrawItemOfAnUnboundItemWindowIsNotReflected) {
    HWND top = rawWindow();
    WindowCloser closer{top};
    auto* logging = new LoggingWindow(top);
    HWND raw = rawWindow(top, 9, 0, 0, 10, 10, loggingClass());
    gRawMessages.clear();
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_BUTTON;
    draw.hwndItem = raw;
    SendMessageA(top, WM_DRAWITEM, 9, reinterpret_cast<LPARAM>(&draw));
    draw.hwndItem = top; // the window itself: nothing to reflect
    SendMessageA(top, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw));
    EXPECT_FALSE(rawReceived(GwMsgDrawItem));
    EXPECT_FALSE(logging->received(GwMsgDrawItem));
}

// Position, size, visibility and focus

using DispatchWindowState = DispatchFixture;

TEST_F(DispatchWindowState, PositionChangeHidesUntilAStopThenShowsUntilAStop) {
    Names order;
    Scripted a(&order, "a");
    Scripted b(&order, "b");
    Scripted c(&order, "c");
    Scripted d(&order, "d");
    c.answers["hide"] = GwResultStop;
    b.answers["show"] = GwResultStop;
    TopLevel w;
    w.window->add(&a).add(&b).add(&c).add(&d);
    WINDOWPOS position{w.hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER};
    SendMessageA(w.hwnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    EXPECT_EQ(order, (Names{"d:hide", "c:hide", "b:show"}));
}

TEST_F(DispatchWindowState, SizeChangeResizesUntilAStopAndTellsTheListeners) {
    struct Listener : Object {
        void receiveEvent(Object* sender, Event const& event, EventData const*) override {
            events.push_back({sender, event.type()});
        }
        std::vector<std::pair<Object*, long>> events;
    };
    Names order;
    Scripted a(&order, "a");
    Scripted b(&order, "b");
    Scripted c(&order, "c");
    b.answers["resize"] = GwResultStop;
    Listener listener;
    TopLevel w;
    w.window->add(&a).add(&b).add(&c);
    w.window->addEvent(&listener);
    SetWindowPos(w.hwnd, nullptr, 0, 0, 320, 240, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(order, (Names{"c:hide", "b:hide", "a:hide", "c:resize", "b:resize"}));
    ASSERT_EQ(listener.events.size(), 1u);
    EXPECT_EQ(listener.events[0].first, w.window);
    EXPECT_EQ(listener.events[0].second, 3);
    w.window->removeEvent(&listener);
}

TEST_F(DispatchWindowState, MoveWithoutSizeChangeNeitherResizesNorTellsTheListeners) {
    struct Listener : Object {
        void receiveEvent(Object*, Event const&, EventData const*) override { ++events; }
        int events = 0;
    };
    Names order;
    Scripted a(&order, "a");
    Listener listener;
    TopLevel w;
    w.window->add(&a);
    w.window->addEvent(&listener);
    SetWindowPos(w.hwnd, nullptr, 40, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_EQ(order, Names{"a:hide"});
    EXPECT_EQ(listener.events, 0);
    w.window->removeEvent(&listener);
}

TEST_F(DispatchWindowState, ShowWindowMessageCallsShowOrHide) {
    Recorder recorder;
    TopLevel w;
    w.window->add(&recorder);
    SendMessageA(w.hwnd, WM_SHOWWINDOW, TRUE, 0);
    SendMessageA(w.hwnd, WM_SHOWWINDOW, FALSE, 0);
    SendMessageA(w.hwnd, WM_SHOWWINDOW, FALSE, SW_PARENTCLOSING);
    EXPECT_EQ(recorder.names(), (Names{"show", "hide", "hide"}));
}

TEST_F(DispatchWindowState, ShowingAChildWindowCallsShowFirst) {
    Recorder recorder;
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND child = rawWindow(top, 1, 0, 0, 50, 50, nullptr, WS_CHILD);
    (new DispatchingWindow(child))->add(&recorder);
    ShowWindow(child, SW_SHOW);
    ASSERT_FALSE(recorder.calls.empty());
    EXPECT_EQ(recorder.calls.front().callback, "show");
    recorder.calls.clear();
    ShowWindow(child, SW_HIDE);
    ASSERT_FALSE(recorder.calls.empty());
    EXPECT_EQ(recorder.calls.front().callback, "hide");
}

TEST_F(DispatchWindowState, FocusMovingBetweenChildrenCallsFocusOutThenIn) {
    TwoSiblings s;
    ShowWindow(s.top, SW_SHOW);
    SetFocus(s.left);
    ASSERT_EQ(GetFocus(), s.left);
    s.order.clear();
    SetFocus(s.right);
    EXPECT_EQ(s.order, (Names{"left:focusout", "right:focusin"}));
}

TEST_F(DispatchWindowState, NotificationCallsNotifyWithTheLowWord) {
    Recorder recorder(false, GwResultHandled);
    TopLevel w;
    w.window->add(&recorder);
    EXPECT_EQ(w.window->dispatchEvent(GwMsgNotify, 0xABCD0042, 0), 0);
    ASSERT_EQ(recorder.names(), Names{"notify"});
    EXPECT_EQ(recorder.calls[0].a, 0x42u);
    EXPECT_EQ(recorder.calls[0].window, w.window);
}

// Handlers that change the window while it dispatches

using DispatchReentrancy = DispatchFixture;

TEST_F(DispatchReentrancy, HandlerRemovedDuringTheWalkIsNotCalled) {
    struct Remover : Recorder {
        GwEventHandler* victim = nullptr;
        int cbNotify(GwWindow& w, unsigned int code) override {
            Recorder::cbNotify(w, code);
            w.remove(victim);
            return GwResultContinue;
        }
    };
    struct Counted : Recorder {
        explicit Counted(int* deleted) : Recorder(true), deleted(deleted) {}
        ~Counted() override { ++*deleted; }
        int* deleted;
    };
    Recorder first;
    int deleted = 0;
    auto* second = new Counted(&deleted);
    Remover remover;
    TopLevel w;
    w.window->add(&first).add(second).add(&remover);
    remover.victim = &first;
    SendMessageA(w.hwnd, GwMsgNotify, 1, 0);
    EXPECT_TRUE(first.calls.empty());
    EXPECT_EQ(second->names(), Names{"notify"});

    remover.victim = second; // counted: the removal deletes it
    SendMessageA(w.hwnd, GwMsgNotify, 2, 0);
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(remover.calls.size(), 2u);
    ASSERT_NE(w.window->handlers(), nullptr);
    EXPECT_EQ(w.window->handlers()->count(), 1);
}

TEST_F(DispatchReentrancy, HandlerDestroyingItsWindowEndsTheWalkAndTheObjectGoesOnce) {
    struct Destroyer : Recorder {
        int cbClose(GwWindow& w) override {
            Recorder::cbClose(w);
            DestroyWindow(static_cast<HWND>(w.window()));
            return GwResultContinue;
        }
    };
    struct CountedWindow : DispatchingWindow {
        CountedWindow(HWND hwnd, int* deleted) : DispatchingWindow(hwnd), deleted(deleted) {}
        ~CountedWindow() override { ++*deleted; }
        int* deleted;
    };
    struct Counted : GwEventHandler {
        explicit Counted(int* deleted) : GwEventHandler(true), deleted(deleted) {}
        ~Counted() override { ++*deleted; }
        int* deleted;
    };
    BreakpointCounter breaks;
    Recorder earlier;
    Destroyer destroyer;
    int windowsDeleted = 0;
    int handlersDeleted = 0;
    HWND hwnd = rawWindow();
    WindowCloser closer{hwnd};
    auto* window = new CountedWindow(hwnd, &windowsDeleted);
    window->add(new Counted(&handlersDeleted)).add(&earlier).add(&destroyer);
    SendMessageA(hwnd, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(windowsDeleted, 1);
    EXPECT_EQ(handlersDeleted, 1);
    EXPECT_EQ(destroyer.names(), (Names{"close", "destroy"}));
    EXPECT_EQ(earlier.names(), Names{"destroy"}) << "the close walk ended with the window";
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(DispatchReentrancy, ControlHandlerDestroyingTheTopLevelWindowWhileBubbling) {
    struct Closer : Recorder {
        HWND top = nullptr;
        int cbActivate(GwWindow& w) override {
            Recorder::cbActivate(w);
            DestroyWindow(top);
            return GwResultContinue | GwResultHandled;
        }
    };
    struct CountedWindow : DispatchingWindow {
        CountedWindow(HWND hwnd, int* deleted) : DispatchingWindow(hwnd), deleted(deleted) {}
        ~CountedWindow() override { ++*deleted; }
        int* deleted;
    };
    BreakpointCounter breaks;
    Closer closerHandler;
    Recorder topRecorder;
    int deleted = 0;
    HWND top = rawWindow();
    WindowCloser closer{top};
    HWND control = rawWindow(top, 3, 0, 0, 50, 20, "BUTTON", WS_CHILD | WS_VISIBLE);
    closerHandler.top = top;
    (new CountedWindow(top, &deleted))->add(&topRecorder);
    (new CountedWindow(control, &deleted))->add(&closerHandler);
    SendMessageA(top, WM_COMMAND, MAKEWPARAM(3, BN_CLICKED), reinterpret_cast<LPARAM>(control));
    EXPECT_FALSE(IsWindow(top));
    EXPECT_EQ(deleted, 2);
    EXPECT_EQ(closerHandler.names(), (Names{"activate", "destroy"}));
    EXPECT_EQ(topRecorder.names(), Names{"destroy"});
    EXPECT_EQ(breaks.count(), 0);
}

TEST_F(DispatchReentrancy, WindowDestroyedWhileHidingGetsNoResize) {
    struct Destroyer : Recorder {
        int cbHide(GwWindow& w) override {
            Recorder::cbHide(w);
            DestroyWindow(static_cast<HWND>(w.window()));
            return GwResultContinue;
        }
    };
    struct Listener : Object {
        void receiveEvent(Object*, Event const&, EventData const*) override { ++events; }
        int events = 0;
    };
    BreakpointCounter breaks;
    Recorder earlier;
    Destroyer destroyer;
    Listener listener;
    TopLevel w;
    w.window->add(&earlier).add(&destroyer);
    w.window->addEvent(&listener);
    WINDOWPOS position{w.hwnd, nullptr, 0, 0, 300, 200, SWP_NOMOVE | SWP_NOZORDER};
    SendMessageA(w.hwnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    EXPECT_FALSE(IsWindow(w.hwnd));
    EXPECT_EQ(destroyer.names(), (Names{"hide", "destroy"}));
    EXPECT_EQ(earlier.names(), Names{"destroy"});
    EXPECT_EQ(listener.events, 0);
    EXPECT_EQ(breaks.count(), 0);
}
