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

// How many pixels of the client area (or of the part of it in area) have the colour.
inline long countPixels(HWND hwnd, COLORREF colour, RECT const* area = nullptr) {
    RECT client{};
    GetClientRect(hwnd, &client);
    if (area != nullptr)
        IntersectRect(&client, &client, area);
    long count = 0;
    HDC const device = GetDC(hwnd);
    for (int y = client.top; y < client.bottom; ++y) {
        for (int x = client.left; x < client.right; ++x)
            count += GetPixel(device, x, y) == colour ? 1 : 0;
    }
    ReleaseDC(hwnd, device);
    return count;
}

} // namespace vmgui_testing
