#include "GwBitmap.h"

#include <windows.h>

#include "GwWindow.h"

GW_CLASS_MAKES(GwBitmap, "GwBitmap", "GwObject")

GwBitmap::GwBitmap() : mHandle(nullptr), mId(0), mShares(nullptr) {}

GwBitmap::GwBitmap(unsigned long long id) : mHandle(nullptr), mId(id), mShares(nullptr) {}

GwBitmap::GwBitmap(unsigned long long id, void* handle)
    : mHandle(handle), mId(id), mShares(handle != nullptr ? new long(1) : nullptr) {}

GwBitmap::GwBitmap(GwBitmap const& other)
    : GwObject(other), mHandle(other.mHandle), mId(other.mId), mShares(other.mShares) {
    if (mShares != nullptr)
        ++*mShares;
}

GwBitmap& GwBitmap::operator=(GwBitmap const& other) {
    GwObject::operator=(other);
    if (mShares != other.mShares) {
        if (other.mShares != nullptr)
            ++*other.mShares;
        release();
        mHandle = other.mHandle;
        mShares = other.mShares;
    }
    mId = other.mId;
    return *this;
}

GwBitmap::~GwBitmap() {
    release();
}

void GwBitmap::release() {
    if (mShares != nullptr && --*mShares == 0) {
        DeleteObject(static_cast<HBITMAP>(mHandle));
        delete mShares;
    }
    mHandle = nullptr;
    mShares = nullptr;
}

unsigned long long GwBitmap::id() const {
    return mId;
}

GwBitmap* GwBitmap::newInstance(EventData const*) {
    return new GwBitmap();
}

void GwBitmap::draw(void* device, short x, short y, bool invert) const {
    if (mHandle == nullptr || device == nullptr)
        return;
    HDC const target = static_cast<HDC>(device);
    BITMAP info = {};
    if (GetObjectA(static_cast<HBITMAP>(mHandle), sizeof info, &info) == 0)
        return;
    HDC const memory = CreateCompatibleDC(target);
    if (memory == nullptr)
        return;
    // The memory device gets the target's mapping but keeps its origins at 0, so that the
    // bitmap's device size and origin read there as logical units of the target.
    SetMapMode(memory, GetMapMode(target));
    SIZE extent = {};
    if (GetWindowExtEx(target, &extent))
        SetWindowExtEx(memory, extent.cx, extent.cy, nullptr);
    if (GetViewportExtEx(target, &extent))
        SetViewportExtEx(memory, extent.cx, extent.cy, nullptr);
    HGDIOBJ const previous = SelectObject(memory, static_cast<HBITMAP>(mHandle));
    POINT points[2] = {{info.bmWidth, info.bmHeight}, {0, 0}};
    DPtoLP(memory, points, 2);
    BitBlt(target, x, y, points[0].x, points[0].y, memory, points[1].x, points[1].y,
           invert ? SRCINVERT : SRCCOPY);
    SelectObject(memory, previous);
    DeleteDC(memory);
}

void GwBitmap::draw(GwWindow& window, short x, short y, bool invert) const {
    HWND const hwnd = static_cast<HWND>(window.window());
    if (hwnd == nullptr || mHandle == nullptr)
        return;
    HDC const device = GetDC(hwnd);
    if (device == nullptr)
        return;
    draw(device, x, y, invert);
    ReleaseDC(hwnd, device);
}
