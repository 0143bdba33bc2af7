// Control bars: the size a bar asks of its frame, and the drag gesture.
#include "GwControlBar.h"

#include <windows.h>

#include <cstdio>

#include "GwEventData.h"
#include "GwMessages.h"

GW_CLASS_NULL(GwControlBar, "GwControlBar", "GwWindow")
GW_CLASS_MAKES(GwDockBar, "GwDockBar", "GwControlBar")

namespace {

// The fixed message number that the drag loop offers foreign messages to their window with.
constexpr UINT kPreTranslate = 0x1002;

void trace(char const* line) {
    std::fputs(line, stdout);
    std::fflush(stdout);
}

} // namespace

GwControlBar::GwControlBar() : GwWindow() {}

GwControlBar::GwControlBar(void* handle) : GwWindow(handle) {}

GwControlBar::GwControlBar(GwControlBar const& other) : GwWindow(other) {}

GwControlBar::GwControlBar(GwControlBar&& other) : GwWindow(other) {}

GwControlBar& GwControlBar::operator=(GwControlBar const& other) {
    GwWindow::operator=(other);
    return *this;
}

GwControlBar& GwControlBar::operator=(GwControlBar&& other) {
    GwWindow::operator=(other);
    return *this;
}

// Tells the listeners (the frame that stacks the bar) that it is going away (event type 2).
GwControlBar::~GwControlBar() {
    sendEvent(Event(GwEventHandlerGone), nullptr, true);
}

GwDimension GwControlBar::calculate(eCalculate, int, GwObjectTable<GwRectangle>*) {
    return dimension();
}

// The focus rectangle is drawn with XOR on the desktop: every move erases the last one and
// draws the next, and the end erases the last one drawn.
GwControlBar& GwControlBar::dragBegin(GwPosition& start) {
    HWND const bar = static_cast<HWND>(mHandle);
    GwWindow* const top = root(false);
    POINT pointer{static_cast<LONG>(start.x()), translateY(static_cast<int>(start.y()), true)};

    HDC const dc = GetDCEx(GetDesktopWindow(), nullptr, DCX_WINDOW | DCX_CACHE);
    RECT tracking{};
    GetWindowRect(bar, &tracking);
    RECT frame{};
    if (top != nullptr)
        GetWindowRect(static_cast<HWND>(top->window()), &frame); // read, not used

    SetCapture(bar);
    DrawFocusRect(dc, &tracking);
    std::printf("GwControlBar::dragBegin DesktopDC[%p]\n", static_cast<void*>(dc));
    std::fflush(stdout);

    while (bar != nullptr && GetCapture() == bar) {
        MSG msg{};
        if (GetMessageA(&msg, nullptr, 0, 0) == -1)
            break;
        if (msg.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(msg.wParam)); // for the application's loop
            break;
        }
        switch (msg.message) {
        case WM_KEYDOWN:
            trace("-->KeyDown\n");
            if (msg.wParam == VK_ESCAPE) {
                trace("-->ReleaseCapture [ESC]\n");
                ReleaseCapture();
            }
            break;
        case WM_KEYUP:
            trace("-->KeyUp\n");
            break;
        case WM_MOUSEMOVE: {
            // Unsigned words: a pointer left of or above the bar gives values near 65535.
            POINT const next{static_cast<LONG>(LOWORD(msg.lParam)),
                             static_cast<LONG>(HIWORD(msg.lParam))};
            LONG const dx = pointer.x - next.x;
            LONG const dy = pointer.y - next.y;
            DrawFocusRect(dc, &tracking);
            OffsetRect(&tracking, -dx, -dy);
            DrawFocusRect(dc, &tracking);
            pointer = next;
            break;
        }
        case WM_LBUTTONUP:
            trace("-->ReleaseCapture\n");
            ReleaseCapture();
            break;
        default:
            if (SendMessageA(msg.hwnd, kPreTranslate, 0, reinterpret_cast<LPARAM>(&msg)) == 0) {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
            break;
        }
    }

    trace("-->dragEnd\n");
    DrawFocusRect(dc, &tracking);
    ReleaseDC(nullptr, dc);
    return *this;
}

GwDockBar::GwDockBar() : GwControlBar() {}

GwDockBar::GwDockBar(void* handle) : GwControlBar(handle) {}

GwDockBar::GwDockBar(GwDockBar const& other) : GwControlBar(other) {}

GwDockBar& GwDockBar::operator=(GwDockBar const& other) {
    GwControlBar::operator=(other);
    return *this;
}

GwDockBar::~GwDockBar() = default;

GwDockBar* GwDockBar::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwDockBar(handle) : nullptr;
}
