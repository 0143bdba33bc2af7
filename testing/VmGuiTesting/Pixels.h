// Pixels of a window read back, so that a test sees what was drawn.
#pragma once

#include <windows.h>

namespace vmgui_testing {

// The colour of a pixel of the window's client area, as the window's surface holds it
// (CLR_INVALID outside the surface). Paint first (UpdateWindow or the loop) to read what the
// window's handlers drew.
inline COLORREF pixelOf(HWND hwnd, int x, int y) {
    HDC const device = GetDC(hwnd);
    COLORREF const colour = GetPixel(device, x, y);
    ReleaseDC(hwnd, device);
    return colour;
}

} // namespace vmgui_testing
