// Attaching event handlers to windows: table slots, reference counts, the default callbacks
// and who deletes a handler when.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include "BreakpointCounter.h"
#include "TestWindows.h"

using namespace testing_windows;

namespace {

using Names = std::vector<std::string>;

// A recorder that counts its deletions.
class Tracked : public Recorder {
public:
    Tracked(bool counted, int* deleted) : Recorder(counted), mDeleted(deleted) {}
    ~Tracked() override { ++*mDeleted; }

private:
    int* mDeleted;
};

// A handler that overrides nothing.
class Plain : public GwEventHandler {
public:
    explicit Plain(bool counted = false) : GwEventHandler(counted) {}
};

// The handlers in a window's table, slot by slot.
std::vector<GwEventHandler*> slots(GwWindow const& window) {
    std::vector<GwEventHandler*> out;
    if (GwObjectTable<GwEventHandler> const* table = window.handlers()) {
        for (std::int32_t i = 0; i < table->count(); ++i)
            out.push_back(table->at(i));
    }
    return out;
}

void notify(HWND hwnd) {
    SendMessageA(hwnd, GwMsgNotify, 1, 0);
}

} // namespace

// Attaching and detaching

TEST(HandlerAttach, SameCountedHandlerTwiceTakesOneSlotAndTwoReferences) {
    int deleted = 0;
    auto* handler = new Tracked(true, &deleted);
    TopLevel w;
    w.window->add(handler).add(handler);
    EXPECT_EQ(slots(*w.window), std::vector<GwEventHandler*>{handler});
    EXPECT_EQ(handler->refCount(), 2);
    notify(w.hwnd);
    EXPECT_EQ(handler->names(), Names{"notify"}) << "one slot: called once";
    DestroyWindow(w.hwnd);
    EXPECT_EQ(deleted, 0) << "a destroyed window releases one reference per slot";
    EXPECT_EQ(handler->refCount(), 1);
    EXPECT_EQ(handler->release(), 0);
    EXPECT_EQ(deleted, 1);
}

TEST(HandlerAttach, TableStartsWithTwoSlotsAndGrowsByAHundred) {
    Recorder a, b, c;
    TopLevel w;
    EXPECT_EQ(w.window->handlers(), nullptr);
    w.window->add(&a);
    ASSERT_NE(w.window->handlers(), nullptr);
    EXPECT_EQ(w.window->handlers()->capacity(), 2);
    w.window->add(&b).add(&c);
    EXPECT_EQ(w.window->handlers()->capacity(), 102);
    EXPECT_EQ(slots(*w.window), (std::vector<GwEventHandler*>{&a, &b, &c}));
}

TEST(HandlerAttach, OneRemoveEmptiesTheSlotAndKeepsTheHandlerAlive) {
    int deleted = 0;
    auto* handler = new Tracked(true, &deleted);
    TopLevel w;
    w.window->add(handler).add(handler);
    w.window->remove(handler);
    EXPECT_EQ(w.window->handlers(), nullptr) << "the emptied table is freed";
    EXPECT_FALSE(handler->hasListener(w.window));
    notify(w.hwnd);
    EXPECT_TRUE(handler->calls.empty()) << "the window no longer calls it";
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(handler->refCount(), 1);
    DestroyWindow(w.hwnd);
    EXPECT_EQ(deleted, 0) << "the destroyed window had no reference left to release";
    EXPECT_EQ(handler->release(), 0);
    EXPECT_EQ(deleted, 1);
}

TEST(HandlerAttach, LastRemoveDeletesACountedHandler) {
    int deleted = 0;
    auto* handler = new Tracked(true, &deleted);
    TopLevel w;
    w.window->add(handler);
    EXPECT_EQ(handler->refCount(), 1);
    w.window->remove(handler);
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(w.window->handlers(), nullptr);
}

TEST(HandlerAttach, RemovingMovesTheOthersToTheFrontInTheirOrder) {
    Names order;
    Recorder a(false, GwResultContinue, &order, "a");
    Recorder b(false, GwResultContinue, &order, "b");
    Recorder c(false, GwResultContinue, &order, "c");
    TopLevel w;
    w.window->add(&a).add(&b).add(&c);
    w.window->remove(&b);
    EXPECT_EQ(slots(*w.window), (std::vector<GwEventHandler*>{&a, &c}));
    notify(w.hwnd);
    EXPECT_EQ(order, (Names{"c:notify", "a:notify"}));
    w.window->add(&b);
    EXPECT_EQ(slots(*w.window), (std::vector<GwEventHandler*>{&a, &c, &b}));
}

TEST(HandlerAttach, RemovingNothingChangesNothing) {
    int deleted = 0;
    auto* handler = new Tracked(true, &deleted);
    handler->addRef();
    TopLevel w;
    w.window->remove(nullptr);
    w.window->remove(handler); // a window without handlers
    EXPECT_EQ(handler->refCount(), 1);
    EXPECT_EQ(w.window->handlers(), nullptr);
    w.window->add(handler);
    w.window->remove(nullptr);
    EXPECT_EQ(slots(*w.window), std::vector<GwEventHandler*>{handler});
    EXPECT_EQ(handler->refCount(), 2);
    EXPECT_EQ(handler->release(), 1);
    DestroyWindow(w.hwnd);
    EXPECT_EQ(deleted, 1);
}

TEST(HandlerAttach, UncountedHandlerAnswersZeroToAddRefAndRelease) {
    Recorder handler(false);
    EXPECT_FALSE(handler.counted());
    EXPECT_EQ(handler.addRef(), 0);
    EXPECT_EQ(handler.addRef(), 0);
    EXPECT_EQ(handler.refCount(), 0);
    EXPECT_EQ(handler.release(), 0);
    EXPECT_EQ(handler.refCount(), 0);
    TopLevel w;
    w.window->add(&handler).add(&handler);
    EXPECT_EQ(handler.refCount(), 0);
    EXPECT_EQ(slots(*w.window), std::vector<GwEventHandler*>{&handler});
    w.window->remove(&handler);
    EXPECT_EQ(handler.refCount(), 0);
    EXPECT_EQ(handler.release(), 0) << "still alive and still uncounted";
}

TEST(HandlerAttach, DeletingAnUncountedHandlerDetachesItFromEveryWindow) {
    BreakpointCounter breaks;
    Recorder other;
    TopLevel first;
    TopLevel second;
    auto* handler = new Recorder(false);
    first.window->add(handler);
    second.window->add(&other).add(handler);
    delete handler;
    EXPECT_EQ(first.window->handlers(), nullptr);
    EXPECT_EQ(slots(*second.window), std::vector<GwEventHandler*>{&other});
    notify(first.hwnd);
    notify(second.hwnd);
    SendMessageA(first.hwnd, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_EQ(other.names(), Names{"notify"});
    EXPECT_EQ(breaks.count(), 0);
}

// The callbacks of a handler that overrides nothing

TEST(HandlerDefaults, ActivationOfOkAndCancelIsHandled) {
    Plain plain;
    HWND top = rawWindow();
    WindowCloser closer{top};
    new DispatchingWindow(top);
    for (int id : {IDOK, IDCANCEL, 3}) {
        HWND button = rawWindow(top, id, 0, 0, 60, 20, "BUTTON", WS_CHILD | WS_VISIBLE);
        auto* control = new DispatchingWindow(button);
        control->add(&plain);
        EXPECT_EQ(control->dispatchEvent(GwMsgActivate, 0, 0), id == 3 ? 0 : 1) << "id " << id;
        EXPECT_EQ(control->dispatchFrameEvent(GwMsgFrameEvent, 2, control, nullptr), id != 3);
    }
}

TEST(HandlerDefaults, ClickOnOkIsClaimedBeforeTheTopLevelWindowHearsIt) {
    Plain plain;
    Recorder topRecorder;
    HWND top = rawWindow();
    WindowCloser closer{top};
    (new DispatchingWindow(top))->add(&topRecorder);
    HWND ok = rawWindow(top, IDOK, 0, 0, 60, 20, "BUTTON", WS_CHILD | WS_VISIBLE);
    HWND other = rawWindow(top, 3, 0, 30, 60, 20, "BUTTON", WS_CHILD | WS_VISIBLE);
    (new DispatchingWindow(ok))->add(&plain);
    (new DispatchingWindow(other))->add(&plain);
    auto activations = [&] {
        std::vector<GwWindow*> out;
        for (Call const& call : topRecorder.calls) {
            if (call.callback == "activate")
                out.push_back(call.window);
        }
        return out;
    };
    SendMessageA(ok, BM_CLICK, 0, 0);
    EXPECT_TRUE(activations().empty());
    SendMessageA(other, BM_CLICK, 0, 0);
    EXPECT_EQ(activations(), std::vector<GwWindow*>{GwWindow::window(other, false)});
}

TEST(HandlerDefaults, DefaultCallbacksAnswerContinue) {
    Plain plain;
    TopLevel w;
    GwWindow& window = *w.window;
    GwPosition at(1, 2);
    EXPECT_EQ(plain.cbActivate(window), 1) << "the window's id is 0";
    EXPECT_EQ(plain.cbButton(window, at, 0x2), 1);
    EXPECT_EQ(plain.cbClose(window), 1);
    EXPECT_EQ(plain.cbDestroy(window), 1);
    EXPECT_EQ(plain.cbEnter(window), 1);
    EXPECT_EQ(plain.cbFocusIn(window), 1);
    EXPECT_EQ(plain.cbFocusOut(window), 1);
    EXPECT_EQ(plain.cbHide(window), 1);
    EXPECT_EQ(plain.cbKey(window, 35, 0x20000000), 1);
    EXPECT_EQ(plain.cbLeave(window), 1);
    EXPECT_EQ(plain.cbMouseMove(window, at, 0), 1);
    EXPECT_EQ(plain.cbMouseWheel(window, at, 0, 120), 1);
    EXPECT_EQ(plain.cbResize(window), 1);
    EXPECT_EQ(plain.cbSelect(window), 1);
    EXPECT_EQ(plain.cbShow(window), 1);
    EXPECT_EQ(plain.cbTimer(window), 1);
    EXPECT_EQ(plain.cbValue(window, 7), 1);
    EXPECT_EQ(plain.cbNotify(window, 7), 1);
}

TEST(HandlerDefaults, HandlerOverridingNothingNeitherClaimsNorStops) {
    Plain plain;
    Recorder earlier;
    TopLevel w;
    w.window->add(&earlier).add(&plain);
    EXPECT_EQ(w.window->dispatchEvent(WM_KEYDOWN, VK_RETURN, 1), 0);
    EXPECT_EQ(w.window->dispatchEvent(WM_CHAR, 'a', 1), 0);
    EXPECT_EQ(w.window->dispatchEvent(WM_LBUTTONDOWN, MK_LBUTTON, 0), 0);
    SendMessageA(w.hwnd, WM_CLOSE, 0, 0);
    EXPECT_EQ(earlier.names(), (Names{"key", "key", "button", "close", "destroy"}));
    EXPECT_FALSE(IsWindow(w.hwnd)) << "the close went on to the default procedure";
}

// Lifetime

TEST(HandlerLifetime, DestroyedWindowReleasesCountedHandlersAndLeavesUncountedOnes) {
    int countedDeleted = 0;
    int uncountedDeleted = 0;
    auto* counted = new Tracked(true, &countedDeleted);
    Tracked uncounted(false, &uncountedDeleted);
    TopLevel first;
    TopLevel second;
    first.window->add(counted).add(&uncounted);
    second.window->add(counted).add(&uncounted);
    EXPECT_EQ(counted->refCount(), 2);
    DestroyWindow(first.hwnd);
    EXPECT_EQ(countedDeleted, 0);
    EXPECT_EQ(counted->refCount(), 1);
    EXPECT_FALSE(uncounted.hasListener(first.window));
    DestroyWindow(second.hwnd);
    EXPECT_EQ(countedDeleted, 1);
    EXPECT_EQ(uncountedDeleted, 0);
    EXPECT_EQ(uncounted.listenerCount(), 0);
    EXPECT_EQ(uncounted.names(), (Names{"destroy", "destroy"}));
}

TEST(HandlerLifetime, DeletingAStillAttachedCountedHandlerBreaksAndIsForgotten) {
    BreakpointCounter breaks;
    int deleted = 0;
    Recorder other;
    auto* handler = new Tracked(true, &deleted);
    TopLevel w;
    w.window->add(&other).add(handler);
    delete handler;
    EXPECT_EQ(breaks.count(), 1);
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(slots(*w.window), std::vector<GwEventHandler*>{&other});
    notify(w.hwnd);
    EXPECT_EQ(other.names(), Names{"notify"});
    DestroyWindow(w.hwnd);
    EXPECT_EQ(deleted, 1) << "the window did not release it again";
    EXPECT_EQ(breaks.count(), 1);
}
