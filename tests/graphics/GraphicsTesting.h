// Helpers of the graphics tests: a window to draw into with its bound object, pixels read
// back in the library's upward coordinates, and a recording event handler for expose calls.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include <GwEventHandler.h>
#include <GwGC.h>

#include <VmGuiTesting/Pixels.h>

#include "TestWindows.h"

namespace testing_graphics {

COLORREF const kWhite = RGB(255, 255, 255);
COLORREF const kBlack = RGB(0, 0, 0);
COLORREF const kRed = RGB(255, 0, 0);
COLORREF const kGreen = RGB(0, 255, 0);
COLORREF const kBlue = RGB(0, 0, 255);

// A visible borderless top-level window, width by height pixels of client area, bound to a
// window object, painted white.
class Canvas {
public:
    explicit Canvas(int width = 120, int height = 100)
        : mWidth(width), mHeight(height),
          mHwnd(testing_windows::rawWindow(nullptr, 0, 0, 0, width, height, nullptr,
                                           WS_POPUP | WS_VISIBLE)),
          mCloser{mHwnd}, mWindow(new testing_windows::DispatchingWindow(mHwnd)) {
        UpdateWindow(mHwnd);
        clear();
    }
    HWND hwnd() const { return mHwnd; }
    GwWindow* window() const { return mWindow; }
    int width() const { return mWidth; }
    int height() const { return mHeight; }

    void clear(COLORREF color = RGB(255, 255, 255)) const {
        HDC device = GetDC(mHwnd);
        HBRUSH brush = CreateSolidBrush(color);
        RECT all{0, 0, mWidth, mHeight};
        FillRect(device, &all, brush);
        DeleteObject(brush);
        ReleaseDC(mHwnd, device);
    }
    // The pixel at the library's point (x, y): device row height - y.
    COLORREF at(int x, int y) const { return atDevice(x, mHeight - y); }
    COLORREF atDevice(int x, int row) const { return vmgui_testing::pixelOf(mHwnd, x, row); }
    // The library points (x, y) whose pixel differs from white.
    std::vector<POINT> marked() const {
        std::vector<POINT> out;
        HDC device = GetDC(mHwnd);
        for (int row = 0; row < mHeight; ++row)
            for (int x = 0; x < mWidth; ++x)
                if (GetPixel(device, x, row) != kWhite)
                    out.push_back({x, mHeight - row});
        ReleaseDC(mHwnd, device);
        return out;
    }
    int markedCount() const { return static_cast<int>(marked().size()); }

private:
    int mWidth;
    int mHeight;
    HWND mHwnd;
    testing_windows::WindowCloser mCloser;
    GwWindow* mWindow; // deleted with its window
};

// A 32-bit top-down DIB section of width by height pixels, white, with its memory device.
class DibTarget {
public:
    DibTarget(int width, int height) : mWidth(width), mHeight(height) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        info.bmiHeader.biCompression = BI_RGB;
        mDevice = CreateCompatibleDC(nullptr);
        mBitmap = CreateDIBSection(mDevice, &info, DIB_RGB_COLORS, &mBits, nullptr, 0);
        mPrevious = SelectObject(mDevice, mBitmap);
        fill(0xFFFFFF);
    }
    ~DibTarget() {
        SelectObject(mDevice, mPrevious);
        DeleteObject(mBitmap);
        DeleteDC(mDevice);
    }
    DibTarget(DibTarget const&) = delete;
    DibTarget& operator=(DibTarget const&) = delete;

    HDC device() const { return mDevice; }
    void fill(unsigned int rgb) {
        GdiFlush();
        auto* pixels = static_cast<unsigned int*>(mBits);
        for (int i = 0; i < mWidth * mHeight; ++i)
            pixels[i] = rgb;
    }
    // The pixel at a device row, as 0x00RRGGBB from the DIB's bits.
    unsigned int bits(int x, int row) const {
        GdiFlush();
        return static_cast<unsigned int const*>(mBits)[row * mWidth + x] & 0xFFFFFF;
    }
    // The pixel at the library's point (x, y) of a window height rows high.
    unsigned int at(int x, int y) const { return bits(x, mHeight - y); }
    int width() const { return mWidth; }
    int height() const { return mHeight; }

private:
    int mWidth;
    int mHeight;
    HDC mDevice;
    HBITMAP mBitmap;
    HGDIOBJ mPrevious;
    void* mBits = nullptr;
};

// One expose call: the window, the context and the phase.
struct Expose {
    GwWindow* window;
    GwGC* gc;
    unsigned int flags;
};

// Records expose calls; an optional painter draws in phase 0.
class ExposeRecorder : public GwEventHandler {
public:
    using Painter = void (*)(GwGC& gc, void* context);

    explicit ExposeRecorder(int result = GwResultContinue)
        : GwEventHandler(false), result(result) {}
    int cbExpose(GwWindow& window, GwGC& gc, unsigned int flags) override {
        calls.push_back({&window, &gc, flags});
        if (flags == 0 && painter != nullptr)
            painter(gc, context);
        return result;
    }
    std::vector<unsigned int> phases() const {
        std::vector<unsigned int> out;
        for (Expose const& call : calls)
            out.push_back(call.flags);
        return out;
    }

    int result;
    std::vector<Expose> calls;
    Painter painter = nullptr;
    void* context = nullptr;
};

} // namespace testing_graphics
