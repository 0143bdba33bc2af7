// The viewport: its window class and device mode, its window, the paint protocol, input and
// focus, and its cached graphics context.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include <GwEventData.h>
#include <GwGC.h>
#include <GwMessages.h>
#include <GwViewport.h>

#include "BreakpointCounter.h"
#include "GraphicsTesting.h"

using namespace testing_graphics;

namespace {

UINT classStyle() {
    WNDCLASSA cls{};
    if (!GetClassInfoA(GetModuleHandleA(nullptr), "GwViewport", &cls))
        return 0;
    return cls.style;
}

// A viewport made from a handle, with its message handler in reach.
class ViewportProbe : public GwViewport {
public:
    explicit ViewportProbe(void* hwnd) : GwViewport(hwnd) {}
    using GwViewport::msgHandler;
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == WM_CONTEXTMENU)
            ++contextMenus;
        return GwViewport::msgHandler(msg, wParam, lParam);
    }
    int contextMenus = 0;
};

// Listens for the events an object sends.
class Listener : public Object {
public:
    void receiveEvent(Object*, Event const& event, EventData const*) override {
        types.push_back(event.type());
    }
    std::vector<long> types;
};

// An application (the start-up hooks register the window class) and a parent frame.
class ViewportTest : public ::testing::Test {
protected:
    void TearDown() override { GwViewport::setDeviceMode(false); }

    // A viewport at (x, y) of the parent's client area, width by height pixels of window.
    GwViewport* makeViewport(int x = 20, int y = 10, int width = 80, int height = 60) {
        auto* viewport = new GwViewport(*canvas.window(), 42); // deleted with its window
        SetWindowPos(static_cast<HWND>(viewport->window()), nullptr, x, y, width, height,
                     SWP_NOZORDER);
        return viewport;
    }
    static HWND hwndOf(GwViewport* viewport) { return static_cast<HWND>(viewport->window()); }
    // The viewport's client area as the parent's device rectangle.
    RECT clientInParent(GwViewport* viewport) const {
        RECT client{};
        GetClientRect(hwndOf(viewport), &client);
        MapWindowPoints(hwndOf(viewport), canvas.hwnd(), reinterpret_cast<POINT*>(&client), 2);
        return client;
    }
    // Validates everything and paints the viewport's client area in one colour directly.
    void settle(GwViewport* viewport, COLORREF color) {
        UpdateWindow(hwndOf(viewport));
        HDC device = GetDC(hwndOf(viewport));
        RECT client{};
        GetClientRect(hwndOf(viewport), &client);
        HBRUSH brush = CreateSolidBrush(color);
        FillRect(device, &client, brush);
        DeleteObject(brush);
        ReleaseDC(hwndOf(viewport), device);
    }

    testing_windows::ScopedApplication application;
    Canvas canvas{200, 150};
};

void paintAllRed(GwGC& gc, void*) {
    gc.setColor(0x00FF0000UL, 1);
    gc.setColor(0x00FF0000UL, 0);
    gc.drawRectangle2D(-50, -50, 500, 500, true);
}

} // namespace

TEST_F(ViewportTest, TheWindowClassIsRegisteredAtStartUp) {
    WNDCLASSA cls{};
    ASSERT_TRUE(GetClassInfoA(GetModuleHandleA(nullptr), "GwViewport", &cls));
    EXPECT_EQ(cls.style, static_cast<UINT>(CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS));
    EXPECT_EQ(cls.style, 11u);
    EXPECT_EQ(cls.lpfnWndProc, &DefWindowProcA);
    EXPECT_EQ(cls.cbClsExtra, 0);
    EXPECT_EQ(cls.cbWndExtra, 0);
    EXPECT_EQ(cls.hIcon, nullptr);
    EXPECT_EQ(cls.hCursor, LoadCursorA(nullptr, IDC_ARROW));
    EXPECT_EQ(cls.hbrBackground, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(6)));
    EXPECT_FALSE(GwViewport::gOwnDC);
}

TEST_F(ViewportTest, TheDeviceModeReregistersTheClassOnlyWhileNoViewportExists) {
    EXPECT_TRUE(GwViewport::setDeviceMode(true));
    EXPECT_TRUE(GwViewport::gOwnDC);
    EXPECT_EQ(classStyle(), 43u) << "with CS_OWNDC";
    GwViewport* viewport = makeViewport();
    EXPECT_EQ(static_cast<UINT>(GetClassLongA(hwndOf(viewport), GCL_STYLE)), 43u);

    EXPECT_FALSE(GwViewport::setDeviceMode(false)) << "a viewport window exists";
    EXPECT_FALSE(GwViewport::gOwnDC) << "the mode is stored all the same";
    EXPECT_EQ(classStyle(), 43u) << "the old registration stays";

    DestroyWindow(hwndOf(viewport));
    EXPECT_TRUE(GwViewport::setDeviceMode(false));
    EXPECT_EQ(classStyle(), 11u);
}

TEST_F(ViewportTest, TheCreatingConstructorMakesAVisibleChildOfTheClass) {
    auto* viewport = new GwViewport(*canvas.window(), 0x1234);
    HWND hwnd = hwndOf(viewport);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(testing_windows::classNameOf(hwnd), "GwViewport");
    EXPECT_EQ(GetParent(hwnd), canvas.hwnd());
    EXPECT_EQ(static_cast<DWORD>(testing_windows::styleOf(hwnd)), 0x56000000u)
        << "child, visible, clipping siblings and children; no tab stop, no group";
    EXPECT_EQ(testing_windows::extendedStyleOf(hwnd) & WS_EX_CLIENTEDGE, WS_EX_CLIENTEDGE);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_ID), 0x1234);
    EXPECT_EQ(viewport->id(), 0x1234u);
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    EXPECT_EQ(rect.right - rect.left, 10);
    EXPECT_EQ(rect.bottom - rect.top, 10);
    EXPECT_EQ(GwWindow::window(hwnd, false), viewport);
    EXPECT_EQ(viewport->color(), 0xFFFFFFFFUL);
    EXPECT_EQ(viewport->isA(), GwViewport::isa());
    EXPECT_EQ(testing_windows::textOf(hwnd), "");

    auto* second = new GwViewport(canvas.window(), 7);
    EXPECT_NE(second->window(), nullptr);
    EXPECT_EQ(second->id(), 7u);
}

TEST_F(ViewportTest, ANullParentStopsInTheDebuggerAndMakesNoWindow) {
    BreakpointCounter breaks;
    GwViewport viewport(static_cast<GwWindow*>(nullptr), 3);
    EXPECT_EQ(breaks.count(), 1);
    EXPECT_EQ(viewport.window(), nullptr);
}

TEST_F(ViewportTest, TheClassRecordAttachesToTheWindowOfTheEventData) {
    HWND hwnd = CreateWindowExA(0, "GwViewport", "", WS_CHILD | WS_VISIBLE, 0, 0, 30, 30,
                                canvas.hwnd(), nullptr, GetModuleHandleA(nullptr), nullptr);
    ASSERT_NE(hwnd, nullptr);
    Class const* record = Class::lookup("GwViewport");
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->parentNames()[0], "GwControl");
    GwEventData none;
    EXPECT_EQ(record->createInstance(&none), nullptr);
    GwEventData data(hwnd);
    Object* made = record->createInstance(&data);
    auto* viewport = dynamic_cast<GwViewport*>(made);
    ASSERT_NE(viewport, nullptr);
    EXPECT_EQ(viewport->window(), hwnd);
    EXPECT_EQ(GwWindow::window(hwnd, false), viewport);
    EXPECT_EQ(viewport->color(), 0xFFFFFFFFUL);
}

TEST_F(ViewportTest, ACopyClonesTheWindow) {
    GwViewport* viewport = makeViewport();
    auto* copy = new GwViewport(*viewport);
    ASSERT_NE(copy->window(), nullptr);
    EXPECT_NE(copy->window(), viewport->window());
    EXPECT_EQ(testing_windows::classNameOf(hwndOf(copy)), "GwViewport");
    EXPECT_EQ(testing_windows::styleOf(hwndOf(copy)), testing_windows::styleOf(hwndOf(viewport)));
    EXPECT_EQ(copy->id(), 42u);
}

TEST_F(ViewportTest, HandlersSeeThePhasesOneZeroTwoForOnePaint) {
    for (bool own : {false, true}) {
        SCOPED_TRACE(own ? "own device context" : "shared device context");
        ASSERT_TRUE(GwViewport::setDeviceMode(own));
        GwViewport* viewport = makeViewport();
        UpdateWindow(hwndOf(viewport));
        ExposeRecorder recorder;
        viewport->add(&recorder);
        InvalidateRect(hwndOf(viewport), nullptr, TRUE);
        UpdateWindow(hwndOf(viewport));
        EXPECT_EQ(recorder.phases(), (std::vector<unsigned int>{1, 0, 2}));
        for (Expose const& call : recorder.calls) {
            EXPECT_EQ(call.window, viewport);
            EXPECT_EQ(call.gc, recorder.calls[0].gc) << "one context for the message";
        }
        RECT update{};
        EXPECT_FALSE(GetUpdateRect(hwndOf(viewport), &update, FALSE)) << "validated";
        viewport->remove(&recorder);
        DestroyWindow(hwndOf(viewport));
    }
}

TEST_F(ViewportTest, PhaseZeroComesOnlyWhenBeginPaintSucceeds) {
    HWND gone = testing_windows::rawWindow();
    DestroyWindow(gone);
    ViewportProbe probe(gone); // bound to a handle that no longer names a window
    ExposeRecorder recorder;
    probe.add(&recorder);
    EXPECT_EQ(probe.msgHandler(WM_PAINT, 0, 0), 0);
    EXPECT_EQ(recorder.phases(), (std::vector<unsigned int>{1, 2}));
    probe.remove(&recorder);
}

TEST_F(ViewportTest, PaintingOutsideTheInvalidRectangleDoesNotReachTheScreen) {
    for (bool own : {false, true}) {
        SCOPED_TRACE(own ? "own device context" : "shared device context");
        ASSERT_TRUE(GwViewport::setDeviceMode(own));
        GwViewport* viewport = makeViewport();
        settle(viewport, kGreen);
        ExposeRecorder recorder;
        recorder.painter = &paintAllRed;
        viewport->add(&recorder);
        RECT invalid{10, 20, 30, 35};
        InvalidateRect(hwndOf(viewport), &invalid, TRUE);
        UpdateWindow(hwndOf(viewport));
        RECT client = clientInParent(viewport);
        int outsideRed = 0;
        int insideRed = 0;
        int insideCount = 0;
        for (int row = client.top; row < client.bottom; ++row)
            for (int x = client.left; x < client.right; ++x) {
                bool inside = x - client.left >= invalid.left && x - client.left < invalid.right &&
                              row - client.top >= invalid.top && row - client.top < invalid.bottom;
                bool red = canvas.atDevice(x, row) == kRed;
                insideCount += inside ? 1 : 0;
                insideRed += inside && red ? 1 : 0;
                outsideRed += !inside && red ? 1 : 0;
            }
        EXPECT_EQ(outsideRed, 0);
        EXPECT_EQ(insideRed, insideCount) << "the whole invalid rectangle is painted";
        EXPECT_EQ(canvas.atDevice(client.left + 5, client.top + 5), kGreen) << "left alone";
        viewport->remove(&recorder);
        DestroyWindow(hwndOf(viewport));
    }
}

TEST_F(ViewportTest, TheInvalidAreaIsFilledWithTheBackgroundColour) {
    for (bool own : {false, true}) {
        SCOPED_TRACE(own ? "own device context" : "shared device context");
        ASSERT_TRUE(GwViewport::setDeviceMode(own));
        GwViewport* viewport = makeViewport();
        struct Case {
            unsigned long color;
            COLORREF expected;
        };
        COLORREF const window = GetSysColor(COLOR_WINDOW);
        COLORREF const windowSwapped =
            ((window & 0xFF) << 16) | (window & 0xFF00) | ((window >> 16) & 0xFF);
        for (Case one : {Case{0x0000FF00UL, kGreen}, Case{0x000000FFUL, kBlue},
                         Case{0x800000FFUL, kRed}, Case{0xFFFFFFFFUL, windowSwapped}}) {
            SCOPED_TRACE(one.color);
            settle(viewport, RGB(1, 2, 3));
            viewport->setColor(one.color);
            EXPECT_EQ(viewport->color(), one.color);
            EXPECT_EQ(canvas.atDevice(clientInParent(viewport).left + 3,
                                      clientInParent(viewport).top + 3),
                      RGB(1, 2, 3))
                << "no repaint by setColor";
            RECT invalid{5, 5, 40, 30};
            InvalidateRect(hwndOf(viewport), &invalid, TRUE);
            UpdateWindow(hwndOf(viewport));
            RECT client = clientInParent(viewport);
            EXPECT_EQ(canvas.atDevice(client.left + 5, client.top + 5), one.expected);
            EXPECT_EQ(canvas.atDevice(client.left + 39, client.top + 29), one.expected);
            EXPECT_EQ(canvas.atDevice(client.left + 40, client.top + 29), RGB(1, 2, 3));
            EXPECT_EQ(canvas.atDevice(client.left + 39, client.top + 30), RGB(1, 2, 3));
            EXPECT_EQ(canvas.atDevice(client.left + 4, client.top + 4), RGB(1, 2, 3));
        }
        DestroyWindow(hwndOf(viewport));
    }
}

TEST_F(ViewportTest, WithoutTheEraseFlagNothingIsFilled) {
    GwViewport* viewport = makeViewport();
    settle(viewport, RGB(1, 2, 3));
    viewport->setColor(0x00FF0000UL);
    InvalidateRect(hwndOf(viewport), nullptr, FALSE);
    UpdateWindow(hwndOf(viewport));
    RECT client = clientInParent(viewport);
    EXPECT_EQ(canvas.atDevice(client.left + 5, client.top + 5), RGB(1, 2, 3));
}

TEST_F(ViewportTest, AClickGivesTheFocusBeforeTheHandlersSeeIt) {
    GwViewport* viewport = makeViewport();
    SetFocus(canvas.hwnd());
    struct FocusAtClick : testing_windows::Recorder {
        HWND focus = nullptr;
        int cbButton(GwWindow& w, GwPosition const& p, unsigned int state) override {
            focus = GetFocus();
            return Recorder::cbButton(w, p, state);
        }
    } recorder;
    viewport->add(&recorder);
    SendMessageA(hwndOf(viewport), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(recorder.focus, hwndOf(viewport));
    ASSERT_EQ(recorder.calls.size(), 2u) << "focus in, then the button";
    EXPECT_EQ(recorder.calls[0].callback, "focusin");
    EXPECT_EQ(recorder.calls[1].callback, "button");
    SendMessageA(hwndOf(viewport), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    for (UINT message : {WM_RBUTTONDOWN, WM_MBUTTONDOWN}) {
        SetFocus(canvas.hwnd());
        recorder.focus = nullptr;
        SendMessageA(hwndOf(viewport), message, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(recorder.focus, hwndOf(viewport)) << message;
    }
    viewport->remove(&recorder);
}

TEST_F(ViewportTest, AClickConsumedByAHandlerIsNotPassedOn) {
    HWND hwnd = CreateWindowExA(0, "GwViewport", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                                canvas.hwnd(), nullptr, GetModuleHandleA(nullptr), nullptr);
    auto* probe = new ViewportProbe(hwnd); // deleted with its window
    testing_windows::Recorder recorder(false, GwResultContinue);
    probe->add(&recorder);
    // The default handling of a right button release asks for a context menu.
    EXPECT_EQ(SendMessageA(hwnd, WM_RBUTTONUP, 0, MAKELPARAM(5, 5)), 0);
    EXPECT_EQ(probe->contextMenus, 1) << "not consumed: passed on";
    recorder.result = GwResultHandled;
    EXPECT_EQ(SendMessageA(hwnd, WM_RBUTTONUP, 0, MAKELPARAM(5, 5)), 1);
    EXPECT_EQ(probe->contextMenus, 1) << "consumed";
    EXPECT_EQ(SendMessageA(hwnd, WM_KEYDOWN, VK_LEFT, 0), 1);
    EXPECT_EQ(SendMessageA(hwnd, WM_CHAR, 'a', 0), 1);
    probe->remove(&recorder);
}

TEST_F(ViewportTest, TheWheelReachesTheHandlersOnce) {
    GwViewport* viewport = makeViewport();
    testing_windows::Recorder recorder;
    viewport->add(&recorder);
    POINT screen{30, 30};
    ClientToScreen(hwndOf(viewport), &screen);
    SendMessageA(hwndOf(viewport), WM_MOUSEWHEEL, MAKEWPARAM(0, 120),
                 MAKELPARAM(screen.x, screen.y));
    EXPECT_EQ(recorder.names(), (std::vector<std::string>{"wheel"}));
    EXPECT_EQ(recorder.lastDelta, 120);
    viewport->remove(&recorder);
}

TEST_F(ViewportTest, ResizingDropsTheCachedContextMovingKeepsIt) {
    GwViewport* viewport = makeViewport();
    GwGC* cached = viewport->gc();
    ASSERT_NE(cached, nullptr);
    EXPECT_EQ(static_cast<GwGC*>(*viewport), cached);
    EXPECT_EQ(&static_cast<GwGC&>(*viewport), cached);
    EXPECT_EQ(cached->window(), viewport->window());
    EXPECT_TRUE(viewport->hasListener(cached));

    SetWindowPos(hwndOf(viewport), nullptr, 30, 30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_TRUE(viewport->hasListener(cached)) << "moved: kept";
    EXPECT_EQ(viewport->gc(), cached);

    SetWindowPos(hwndOf(viewport), nullptr, 0, 0, 90, 70, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(viewport->listenerCount(), 0) << "resized: the cached context is gone";
    GwGC* remade = viewport->gc();
    ASSERT_NE(remade, nullptr);
    RECT client{};
    GetClientRect(hwndOf(viewport), &client);
    POINT origin{};
    GetViewportOrgEx(static_cast<HDC>(remade->device()), &origin);
    EXPECT_EQ(origin.y, client.bottom) << "made for the new size";
}

TEST_F(ViewportTest, DestructionTellsTheListenersAndForgetsTheCachedContext) {
    GwViewport* viewport = makeViewport();
    Listener listener;
    viewport->addEvent(&listener);
    GwGC own(viewport, nullptr);
    ASSERT_NE(own.device(), nullptr);
    viewport->gc();
    DestroyWindow(hwndOf(viewport));
    EXPECT_EQ(listener.types, (std::vector<long>{2}));
    EXPECT_EQ(own.window(), nullptr) << "a context on the viewport forgets it";
    EXPECT_EQ(own.device(), nullptr);
}

TEST_F(ViewportTest, TheCachedContextDrawsInUpwardCoordinates) {
    GwViewport* viewport = makeViewport(20, 10, 80, 60);
    settle(viewport, kWhite);
    GwGC& gc = *viewport;
    gc.setColor(0x00FF0000UL, 0);
    gc.drawPixel(3, 1);
    RECT client = clientInParent(viewport);
    EXPECT_EQ(canvas.atDevice(client.left + 3, client.bottom - 1), kRed);
}
