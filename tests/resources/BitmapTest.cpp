#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <typeinfo>

#include <GwBitmap.h>
#include <GwResource.h>

#include "TestWindows.h"

namespace {

constexpr int kTarget = 64; // the drawing target is kTarget by kTarget pixels

COLORREF const kRed = RGB(255, 0, 0);
COLORREF const kGreen = RGB(0, 255, 0);
COLORREF const kBlue = RGB(0, 0, 255);
COLORREF const kWhite = RGB(255, 255, 255);

bool alive(HBITMAP handle) {
    return GetObjectType(handle) == OBJ_BITMAP;
}

HBITMAP newBitmap(int width = 2, int height = 2) {
    HDC screen = GetDC(nullptr);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

// A 3 by 2 bitmap: red, green, blue on top, then white, red, green.
HBITMAP patternBitmap() {
    HBITMAP bitmap = newBitmap(3, 2);
    HDC memory = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(memory, bitmap);
    SetPixel(memory, 0, 0, kRed);
    SetPixel(memory, 1, 0, kGreen);
    SetPixel(memory, 2, 0, kBlue);
    SetPixel(memory, 0, 1, kWhite);
    SetPixel(memory, 1, 1, kRed);
    SetPixel(memory, 2, 1, kGreen);
    SelectObject(memory, previous);
    DeleteDC(memory);
    return bitmap;
}

COLORREF const kPattern[2][3] = {{kRed, kGreen, kBlue}, {kWhite, kRed, kGreen}};

// A memory device with a white bitmap of kTarget by kTarget pixels.
class Target {
public:
    Target() {
        mDevice = CreateCompatibleDC(nullptr);
        mBitmap = newBitmap(kTarget, kTarget);
        mPrevious = SelectObject(mDevice, mBitmap);
        PatBlt(mDevice, 0, 0, kTarget, kTarget, WHITENESS);
    }
    ~Target() {
        SelectObject(mDevice, mPrevious);
        DeleteDC(mDevice);
        DeleteObject(mBitmap);
    }
    HDC device() const { return mDevice; }

    // The pixel at a device point, read without the device's mapping.
    COLORREF at(int x, int y) const {
        int saved = SaveDC(mDevice);
        SetMapMode(mDevice, MM_TEXT);
        SetViewportOrgEx(mDevice, 0, 0, nullptr);
        SetWindowOrgEx(mDevice, 0, 0, nullptr);
        COLORREF colour = GetPixel(mDevice, x, y);
        RestoreDC(mDevice, saved);
        return colour;
    }
    int nonWhite() const {
        int count = 0;
        for (int y = 0; y < kTarget; ++y)
            for (int x = 0; x < kTarget; ++x)
                count += at(x, y) != kWhite ? 1 : 0;
        return count;
    }
    // The device point of a logical point.
    POINT device(int x, int y) const {
        POINT point = {x, y};
        LPtoDP(mDevice, &point, 1);
        return point;
    }

private:
    HDC mDevice;
    HBITMAP mBitmap;
    HGDIOBJ mPrevious;
};

// The pattern's pixels lie at the device point origin, right and down from it.
void expectPatternAt(Target const& target, POINT origin) {
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(target.at(origin.x + column, origin.y + row), kPattern[row][column])
                << "pattern pixel " << column << "," << row;
    EXPECT_EQ(target.nonWhite(), 5) << "the pattern alone (one of its pixels is white)";
}

} // namespace

TEST(Bitmap, TheClassRecordMakesABitmapWithoutHandle) {
    Class const* record = Class::lookup("GwBitmap");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwBitmap::isa());
    EXPECT_STREQ(record->parentNames()[0], "GwObject");
    std::unique_ptr<Object> made(record->createInstance(nullptr));
    auto* bitmap = dynamic_cast<GwBitmap*>(made.get());
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->handle(), nullptr);
    EXPECT_EQ(bitmap->id(), 0u);
    EXPECT_EQ(bitmap->isA(), GwBitmap::isa());
}

TEST(Bitmap, ABitmapMadeFromAnIdentifierHasNoHandle) {
    GwBitmap bitmap(42);
    EXPECT_EQ(bitmap.id(), 42u);
    EXPECT_EQ(bitmap.handle(), nullptr);
}

TEST(Bitmap, ABitmapOwnsItsHandle) {
    HBITMAP handle = newBitmap();
    {
        GwBitmap bitmap(7, handle);
        EXPECT_EQ(bitmap.handle(), handle);
        EXPECT_EQ(bitmap.id(), 7u);
        EXPECT_TRUE(alive(handle));
    }
    EXPECT_FALSE(alive(handle));
}

TEST(Bitmap, CopiesShareTheHandleAndTheLastOneDeletesIt) {
    HBITMAP handle = newBitmap();
    auto original = std::make_unique<GwBitmap>(7, handle);
    auto copy = std::make_unique<GwBitmap>(*original);
    EXPECT_EQ(copy->handle(), handle);
    EXPECT_EQ(copy->id(), 7u);
    original.reset();
    EXPECT_TRUE(alive(handle)) << "the copy still refers to it";
    copy.reset();
    EXPECT_FALSE(alive(handle));
}

TEST(Bitmap, AssignmentSharesTheHandleAndReleasesTheOldOne) {
    HBITMAP first = newBitmap();
    HBITMAP second = newBitmap();
    auto a = std::make_unique<GwBitmap>(1, first);
    auto b = std::make_unique<GwBitmap>(2, second);
    *b = *a;
    EXPECT_FALSE(alive(second)) << "b held the only reference to it";
    EXPECT_EQ(b->handle(), first);
    EXPECT_EQ(b->id(), 1u);

    GwBitmap& self = *b;
    *b = self;
    EXPECT_TRUE(alive(first));
    EXPECT_EQ(b->handle(), first);

    a.reset();
    EXPECT_TRUE(alive(first));
    *b = GwBitmap(3);
    EXPECT_FALSE(alive(first));
    EXPECT_EQ(b->handle(), nullptr);
    EXPECT_EQ(b->id(), 3u);
}

TEST(Bitmap, AssignmentFromAnObjectChecksItsClass) {
    HBITMAP handle = newBitmap();
    GwBitmap source(5, handle);
    GwBitmap target;
    Object const& object = source;
    target = object;
    EXPECT_EQ(target.handle(), handle);
    GwResource resource;
    Object const& other = resource;
    EXPECT_THROW(target = other, std::bad_cast);
}

TEST(Bitmap, DrawCopiesTheBitmapToTheDevicePoint) {
    Target target;
    GwBitmap bitmap(1, patternBitmap());
    bitmap.draw(target.device(), 10, 20, false);
    expectPatternAt(target, POINT{10, 20});
}

TEST(Bitmap, DrawInvertedCombinesTheBitmapWithTheDevice) {
    Target target;
    GwBitmap bitmap(1, patternBitmap());
    bitmap.draw(target.device(), 10, 20, true);
    // On white, SRCINVERT gives the complement of each pixel.
    EXPECT_EQ(target.at(10, 20), RGB(0, 255, 255));
    EXPECT_EQ(target.at(11, 20), RGB(255, 0, 255));
    EXPECT_EQ(target.at(10, 21), RGB(0, 0, 0));
    bitmap.draw(target.device(), 10, 20, true);
    EXPECT_EQ(target.nonWhite(), 0) << "a second inverted copy restores the device";
}

// Logical units of a tenth of a millimetre, y upwards from the top of the device.
TEST(Bitmap, DrawOntoAMetricDeviceConvertsTheSizeIntoItsMapping) {
    Target target;
    SetMapMode(target.device(), MM_LOMETRIC);
    GwBitmap bitmap(1, patternBitmap());
    POINT logical = {40, -50};
    POINT corner = target.device(logical.x, logical.y);
    bitmap.draw(target.device(), static_cast<short>(logical.x), static_cast<short>(logical.y),
                false);
    expectPatternAt(target, corner);
}

// The mapping of the library's graphics contexts: y upwards from the bottom of the device.
TEST(Bitmap, DrawOntoAYUpDeviceLandsAtTheLogicalPoint) {
    for (int mode : {MM_ANISOTROPIC, MM_ISOTROPIC}) {
        Target target;
        SetMapMode(target.device(), mode);
        SetWindowExtEx(target.device(), 1, 1, nullptr);
        SetViewportExtEx(target.device(), 1, -1, nullptr);
        SetViewportOrgEx(target.device(), 0, kTarget, nullptr);
        POINT corner = target.device(10, 20);
        ASSERT_EQ(corner.x, 10);
        ASSERT_EQ(corner.y, kTarget - 20);
        GwBitmap bitmap(1, patternBitmap());
        bitmap.draw(target.device(), 10, 20, false);
        SCOPED_TRACE(mode == MM_ISOTROPIC ? "MM_ISOTROPIC" : "MM_ANISOTROPIC");
        expectPatternAt(target, corner);
    }
}

TEST(Bitmap, DrawingABitmapWithoutHandleCopiesNothing) {
    Target target;
    GwBitmap(9).draw(target.device(), 0, 0, false);
    GwBitmap(9).draw(target.device(), 0, 0, true);
    EXPECT_EQ(target.nonWhite(), 0);
}

TEST(Bitmap, DrawOntoAWindowUsesTheWindowsDevice) {
    HWND hwnd =
        testing_windows::rawWindow(nullptr, 0, 0, 0, 200, 100, nullptr, WS_POPUP | WS_VISIBLE);
    ASSERT_NE(hwnd, nullptr);
    auto* window = new testing_windows::DispatchingWindow(hwnd); // deleted with its window
    UpdateWindow(hwnd);
    HDC device = GetDC(hwnd);
    PatBlt(device, 0, 0, 200, 100, WHITENESS);
    GwBitmap bitmap(1, patternBitmap());
    bitmap.draw(*window, 10, 20, false);
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(GetPixel(device, 10 + column, 20 + row), kPattern[row][column])
                << "pattern pixel " << column << "," << row;
    EXPECT_EQ(GetPixel(device, 9, 20), kWhite);
    ReleaseDC(hwnd, device);
    DestroyWindow(hwnd);
}

TEST(Bitmap, DrawOntoAWindowObjectWithoutWindowDoesNothing) {
    auto* window = new testing_windows::DispatchingWindow(nullptr);
    GwBitmap bitmap(1, patternBitmap());
    bitmap.draw(*window, 0, 0, false); // must not draw onto the screen
    EXPECT_EQ(window->window(), nullptr);
    delete window;
}
