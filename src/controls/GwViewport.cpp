#include "GwViewport.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwGC.h"
#include "GwMessages.h"
#include "window/GwInputMessages.h"

bool GwViewport::gOwnDC = false;
GwViewport::GwRegister GwViewport::gStartup;

GW_CLASS_MAKES(GwViewport, "GwViewport", "GwControl")

namespace {

char const kClassName[] = "GwViewport";
unsigned long const kSystemColor = 0xFFFFFFFFUL;

} // namespace

bool GwViewport::GwRegister::initInstance() {
    setDeviceMode(false);
    return true;
}

bool GwViewport::setDeviceMode(bool ownDC) {
    gOwnDC = ownDC;
    HINSTANCE module = GetModuleHandleA(nullptr);
    WNDCLASSA existing{};
    if (GetClassInfoA(module, kClassName, &existing)) {
        UnregisterClassA(kClassName, module);
        if (GetClassInfoA(module, kClassName, &existing))
            return false; // viewport windows still exist
    }
    WNDCLASSA cls{};
    cls.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | (ownDC ? CS_OWNDC : 0);
    cls.lpfnWndProc = DefWindowProcA;
    cls.hInstance = module;
    cls.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    cls.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_WINDOW + 1));
    cls.lpszClassName = kClassName;
    RegisterClassA(&cls);
    return true;
}

GwViewport::GwViewport(void* hwnd)
    : GwControl(hwnd), mReserved(0), mGC(nullptr), mColor(kSystemColor) {}

GwViewport::GwViewport(GwWindow& parent, unsigned long long id) : GwViewport() {
    create(parent.window(), id);
}

GwViewport::GwViewport(GwWindow* parent, unsigned long long id) : GwViewport() {
    if (parent == nullptr) {
        DebugBreak();
        return;
    }
    create(parent->window(), id);
}

GwViewport::GwViewport(GwViewport const& source)
    : GwControl(source), mReserved(0), mGC(nullptr), mColor(kSystemColor) {}

GwViewport& GwViewport::operator=(GwViewport const& other) {
    GwControl::operator=(other);
    mColor = other.mColor;
    return *this;
}

void GwViewport::create(void* parent, unsigned long long id) {
    // Deliberately without WS_TABSTOP and WS_GROUP.
    HWND hwnd = CreateWindowExA(
        WS_EX_CLIENTEDGE, kClassName, "", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN,
        0, 0, 10, 10, static_cast<HWND>(parent), nullptr, GetModuleHandleA(nullptr), nullptr);
    if (hwnd == nullptr)
        return;
    SetWindowLongPtrA(hwnd, GWLP_ID, static_cast<LONG_PTR>(id));
    attach(hwnd);
}

GwViewport::~GwViewport() {
    sendEvent(Event(2), nullptr, true);
    delete mGC;
    mGC = nullptr;
}

GwViewport* GwViewport::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwViewport(hwnd) : nullptr;
}

GwGC* GwViewport::gc() {
    if (mGC == nullptr)
        mGC = new GwGC(this, nullptr);
    return mGC;
}

GwViewport& GwViewport::setColor(unsigned long color) {
    mColor = color;
    return *this;
}

unsigned long GwViewport::backgroundRef() const {
    unsigned long color =
        mColor == kSystemColor ? static_cast<unsigned long>(GetSysColor(COLOR_WINDOW)) : mColor;
    // Red and blue are exchanged for the system colour too, as for every colour without
    // bit 31.
    if ((color & 0x80000000UL) == 0)
        return ((color & 0xFFUL) << 16) | (color & 0xFF00UL) | ((color >> 16) & 0xFFUL);
    return color & 0x7FFFFFFFUL;
}

void GwViewport::paint() {
    HWND hwnd = static_cast<HWND>(mHandle);
    // In own-device mode the window's private device context (the one BeginPaint answers
    // too) is the context's device.
    HDC own = gOwnDC ? GetDC(hwnd) : nullptr;
    {
        GwGC gc(this, own);
        auto const context = reinterpret_cast<unsigned long long>(&gc);
        HDC device = static_cast<HDC>(gc.device());

        SelectClipRgn(device, nullptr);
        dispatchEvent(WM_PAINT, context, 1);

        PAINTSTRUCT paint{};
        if (BeginPaint(hwnd, &paint) != nullptr && device != nullptr) {
            RECT client{};
            GetClientRect(hwnd, &client);
            long const h = client.bottom;
            RECT const& invalid = paint.rcPaint;
            // The clip rectangle is in device units, the fill rectangle in the context's
            // upward logical units. A private device context answers the invalid rectangle
            // in its logical units (y up), the shared one in device units: so the clip
            // rectangle is mirrored about the client height in the first mode and the fill
            // rectangle in the second. The rows a private context's rectangles reach beyond
            // the invalid area are outside its paint clipping anyway.
            RECT clip;
            RECT fill;
            if (gOwnDC) {
                clip = {invalid.left, h - invalid.top, invalid.right, h - invalid.bottom + 1};
                fill = {invalid.left, invalid.top, invalid.right, invalid.bottom - 1};
            } else {
                clip = invalid;
                fill = {invalid.left, h - invalid.bottom, invalid.right, h - invalid.top};
            }
            HRGN clipRegion = CreateRectRgnIndirect(&clip);
            if (paint.fErase) {
                unsigned long const color = backgroundRef();
                if (gc.fixedBackground() == 0)
                    gc.setColor(color | 0x80000000UL, 1);
                SetBkColor(device, color);
                HRGN fillRegion = CreateRectRgnIndirect(&fill);
                PaintRgn(device, fillRegion);
                DeleteObject(fillRegion);
            }
            SelectClipRgn(device, clipRegion);
            dispatchEvent(WM_PAINT, context, 0);
            SelectClipRgn(device, nullptr);
            DeleteObject(clipRegion);
        }
        EndPaint(hwnd, &paint);
        dispatchEvent(WM_PAINT, context, 2);
    } // the context leaves the window's listeners and restores the device
    if (own != nullptr)
        ReleaseDC(hwnd, own);
}

long long GwViewport::msgHandler(unsigned long long msg, unsigned long long wParam,
                                 long long lParam) {
    if (msg == WM_LBUTTONDOWN || msg == WM_RBUTTONDOWN || msg == WM_MBUTTONDOWN)
        SetFocus(static_cast<HWND>(mHandle)); // before the handlers see the press
    if (gwIsInputMessage(msg) || msg == WM_MOUSEWHEEL) {
        if (dispatchEvent(msg, wParam, lParam) != 0)
            return 1;
        // The handlers have seen the wheel already: only the default handling is left.
        if (msg == WM_MOUSEWHEEL)
            return callDefHandler(msg, wParam, lParam);
        return GwControl::msgHandler(msg, wParam, lParam);
    }
    switch (msg) {
    case WM_ERASEBKGND:
        return 0; // the paint protocol fills the background
    case WM_WINDOWPOSCHANGED: {
        auto const* position = reinterpret_cast<WINDOWPOS const*>(lParam);
        if (position != nullptr && (position->flags & SWP_NOSIZE) == 0) {
            delete mGC;
            mGC = nullptr;
        }
        return GwControl::msgHandler(msg, wParam, lParam);
    }
    case WM_PAINT:
        paint();
        return 0;
    default:
        return GwControl::msgHandler(msg, wParam, lParam);
    }
}
