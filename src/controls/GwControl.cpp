#include "GwControl.h"

#include <windows.h>

#include "GwEventData.h"

GW_CLASS_MAKES(GwControl, "GwControl", "GwWindow")

namespace {

bool styleBit(void* hwnd, LONG bit) {
    return (GetWindowLongA(static_cast<HWND>(hwnd), GWL_STYLE) & bit) != 0;
}

void setStyleBit(void* hwnd, LONG bit, bool on) {
    auto handle = static_cast<HWND>(hwnd);
    LONG style = GetWindowLongA(handle, GWL_STYLE);
    SetWindowLongA(handle, GWL_STYLE, on ? style | bit : style & ~bit);
}

} // namespace

GwControl::GwControl(void* hwnd) : GwWindow(hwnd) {}

GwControl::GwControl(GwControl const& source) : GwWindow() {
    auto original = static_cast<HWND>(source.mHandle);
    if (original == nullptr)
        return;
    RECT rect{};
    GetWindowRect(original, &rect);
    int width = rect.right - rect.left;
    int height = rect.bottom - rect.top;
    HWND parent = GetParent(original);
    POINT topLeft{rect.left, rect.top};
    MapWindowPoints(nullptr, parent, &topLeft, 1);

    char text[256] = {};
    GetWindowTextA(original, text, sizeof text);
    char className[256] = {};
    GetClassNameA(original, className, sizeof className);

    HWND copy = CreateWindowExA(
        static_cast<DWORD>(GetWindowLongA(original, GWL_EXSTYLE)), className, text,
        static_cast<DWORD>(GetWindowLongA(original, GWL_STYLE)), topLeft.x, topLeft.y, width,
        height, parent, reinterpret_cast<HMENU>(GetWindowLongPtrA(original, GWLP_ID)),
        GetModuleHandleA(nullptr), nullptr);
    SetWindowPos(copy, original, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    attach(copy);
}

GwControl& GwControl::operator=(GwControl const& other) {
    GwWindow::operator=(other);
    return *this;
}

GwControl::~GwControl() = default;

GwControl& GwControl::add(GwEventHandler* handler) {
    GwWindow::add(handler);
    return *this;
}

GwControl& GwControl::remove(GwEventHandler* handler) {
    GwWindow::remove(handler);
    return *this;
}

GwControl& GwControl::setTabstop(bool on) {
    setStyleBit(mHandle, WS_TABSTOP, on);
    return *this;
}

bool GwControl::tabstop() const {
    return styleBit(mHandle, WS_TABSTOP);
}

GwControl& GwControl::setGroup(bool on) {
    setStyleBit(mHandle, WS_GROUP, on);
    return *this;
}

bool GwControl::group() const {
    return styleBit(mHandle, WS_GROUP);
}

GwControl& GwControl::setControlFont() {
    if (mHandle == nullptr)
        return *this;
    HWND parent = GetParent(static_cast<HWND>(mHandle));
    if (parent != nullptr && (GetWindowLongA(parent, GWL_STYLE) & DS_SETFONT) != 0) {
        LRESULT font = SendMessageA(parent, WM_GETFONT, 0, 0);
        SendMessageA(static_cast<HWND>(mHandle), WM_SETFONT, static_cast<WPARAM>(font), TRUE);
    }
    return *this;
}

void GwControl::createControl(unsigned long exStyle, char const* className, char const* text,
                              unsigned long style, GwWindow const& parent, unsigned long long id) {
    HWND const hwnd = CreateWindowExA(
        exStyle, className, text, style, 0, 0, 0, 0, static_cast<HWND>(parent.window()),
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    attach(hwnd);
}

GwControl* GwControl::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwControl(hwnd) : nullptr;
}
