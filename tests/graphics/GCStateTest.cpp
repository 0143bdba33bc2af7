// The state of a graphics context: colours and their locks, text mode, fonts, the window's
// events, the device's life, text placement, and drawing bitmaps and owner-drawn items.
#include <gtest/gtest.h>

#include <windows.h>

#include <cmath>
#include <memory>
#include <string>

#include <GwBitmap.h>
#include <GwButton.h>
#include <GwControl.h>
#include <GwEventData.h>
#include <GwGC.h>
#include <GwMessages.h>

#include "GraphicsTesting.h"

using namespace testing_graphics;

namespace {

double const kPi = 4.0 * std::atan(1.0);

LOGFONTA selectedFont(GwGC const& gc) {
    LOGFONTA font{};
    GetObjectA(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_FONT), sizeof font, &font);
    return font;
}

struct Box {
    long left = 100000, bottom = 100000, right = -100000, top = -100000;
};

Box markedBox(Canvas const& canvas) {
    Box box;
    for (POINT const& point : canvas.marked()) {
        box.left = std::min<long>(box.left, point.x);
        box.right = std::max<long>(box.right, point.x);
        box.bottom = std::min<long>(box.bottom, point.y);
        box.top = std::max<long>(box.top, point.y);
    }
    return box;
}

// A context that answers the escapement setFont chose.
class OrientationGuard {
public:
    explicit OrientationGuard(int value) : mSaved(GwGC::gdi_orientation) {
        GwGC::gdi_orientation = value;
    }
    ~OrientationGuard() { GwGC::gdi_orientation = mSaved; }

private:
    int mSaved;
};

} // namespace

TEST(GCState, AFreshContextHasTheInitialState) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    EXPECT_EQ(gc.foreground(), 0x02000000u);
    EXPECT_EQ(gc.background(), 0x02000000u);
    EXPECT_EQ(gc.textMode(), 0x100u);
    EXPECT_EQ(gc.lineWidth(), 0u);
    EXPECT_EQ(gc.lineStyle(), GwGC::eSolid);
    EXPECT_EQ(gc.patternStyle(), GwGC::ePatternSolid);
    EXPECT_EQ(gc.fixedForeground(), 0u);
    EXPECT_EQ(gc.fixedBackground(), 0u);
    EXPECT_EQ(GwGC::gdi_orientation, 0);
    HDC device = static_cast<HDC>(gc.device());
    EXPECT_EQ(GetMapMode(device), MM_ISOTROPIC);
    EXPECT_EQ(GetBkMode(device), TRANSPARENT);
    EXPECT_EQ(GetROP2(device), R2_COPYPEN);
    SIZE extent{};
    GetViewportExtEx(device, &extent);
    EXPECT_EQ(extent.cx, 1);
    EXPECT_EQ(extent.cy, -1);
    EXPECT_NE(GetCurrentObject(device, OBJ_PAL), GetStockObject(DEFAULT_PALETTE))
        << "the halftone palette is selected";
}

TEST(GCState, ColoursExchangeRedAndBlueUnlessBit31IsSet) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x00FF0000UL, 0);
    EXPECT_EQ(gc.foreground(), 0x000000FFu) << "red as a COLORREF";
    gc.drawPixel(5, 5);
    EXPECT_EQ(canvas.at(5, 5), kRed);
    EXPECT_EQ(GetTextColor(static_cast<HDC>(gc.device())), kRed);
    gc.setColor(0x800000FFUL, 0);
    EXPECT_EQ(gc.foreground(), 0x000000FFu) << "taken as it stands";
    gc.setColor(0x82000000UL, 0);
    EXPECT_EQ(gc.foreground(), 0x02000000u) << "palette flags pass through";
    gc.setColor(0x12345678UL, 1);
    EXPECT_EQ(gc.background(), 0x00785634u) << "the top byte is cleared";
    EXPECT_EQ(GetBkColor(static_cast<HDC>(gc.device())), 0x00785634u);
    gc.setColor(static_cast<unsigned char>(1), 2, 3, 0);
    EXPECT_EQ(gc.foreground(), static_cast<unsigned long>(RGB(1, 2, 3)));
    gc.setColor(static_cast<unsigned char>(0), 0, 255, 1);
    EXPECT_EQ(gc.background(), static_cast<unsigned long>(RGB(0, 0, 255)));
}

TEST(GCState, AFixedForegroundSurvivesSetColorAndItsLockCannotBeCleared) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColorMode(true, false, 0x0000FF00UL, 0);
    EXPECT_EQ(gc.foreground(), static_cast<unsigned long>(kGreen));
    EXPECT_EQ(gc.fixedForeground(), 0x80000000UL | kGreen);
    gc.setColor(0x00FF0000UL, 0);
    EXPECT_EQ(gc.foreground(), static_cast<unsigned long>(kGreen)) << "locked";
    gc.drawPixel(5, 5);
    EXPECT_EQ(canvas.at(5, 5), kGreen);
    bool fixForeground = false;
    bool fixBackground = true;
    unsigned long foreground = 0;
    unsigned long background = 1;
    gc.getColorMode(fixForeground, fixBackground, foreground, background);
    EXPECT_TRUE(fixForeground);
    EXPECT_FALSE(fixBackground);
    EXPECT_EQ(foreground, static_cast<unsigned long>(kGreen));
    EXPECT_EQ(background, 0u);

    gc.setColorMode(false, false, 0, 0);
    EXPECT_EQ(gc.foreground(), 0xFFFFFFFFUL);
    EXPECT_EQ(gc.background(), 0xFFFFFFFFUL);
    gc.getColorMode(fixForeground, fixBackground, foreground, background);
    EXPECT_TRUE(fixForeground) << "the lock stays";
    gc.setColor(0x000000FFUL, 0);
    EXPECT_EQ(gc.foreground(), 0xFFFFFFFFUL) << "still locked";

    gc.setColorMode(false, true, 0, 0x000000FFUL);
    EXPECT_EQ(gc.background(), static_cast<unsigned long>(kBlue));
    gc.setColor(0x00FF0000UL, 1);
    EXPECT_EQ(gc.background(), static_cast<unsigned long>(kBlue));
    gc.drawRectangle2D(20, 20, 30, 30, true);
    EXPECT_EQ(canvas.at(25, 25), kBlue);
}

TEST(GCState, TheTextModeKeepsThePlacementBitsAndNoClipUnlessBit30IsSet) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setTextMode(0x0000000F);
    EXPECT_EQ(gc.textMode(), 0x100u);
    gc.setTextMode(0x40000001);
    EXPECT_EQ(gc.textMode(), 0x40000000u);
    gc.setTextMode(0x90000000);
    EXPECT_EQ(gc.textMode(), 0x90000100u);
}

TEST(GCState, FontAngleZeroGivesEscapement3600) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Arial", 12, 0.0);
    LOGFONTA font = selectedFont(gc);
    EXPECT_EQ(font.lfEscapement, 3600);
    EXPECT_EQ(font.lfOrientation, 3600);
    EXPECT_STREQ(font.lfFaceName, "Arial");
    EXPECT_EQ(font.lfHeight,
              MulDiv(-12, GetDeviceCaps(static_cast<HDC>(gc.device()), LOGPIXELSY), 72));
    EXPECT_EQ(font.lfWeight, FW_NORMAL);
    EXPECT_EQ(font.lfCharSet, DEFAULT_CHARSET);
    gc.setFont("Arial", 12, kPi / 2);
    EXPECT_EQ(selectedFont(gc).lfEscapement, 2700);
    {
        OrientationGuard orientation(1);
        gc.setFont("Arial", 12, kPi / 2);
        EXPECT_EQ(selectedFont(gc).lfEscapement, 900);
        gc.setFont("Arial", 12, 0.0);
        EXPECT_EQ(selectedFont(gc).lfEscapement, 0);
    }
}

TEST(GCState, TheFontTableHoldsOneFontPerDescription) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Courier New", 17, 0.25);
    HGDIOBJ first = GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_FONT);
    int const count = GwGC::fontCount();
    gc.setFont("Courier New", 18, 0.25);
    EXPECT_EQ(GwGC::fontCount(), count + 1);
    gc.setFont("Courier New", 17, 0.25);
    EXPECT_EQ(GwGC::fontCount(), count + 1) << "found in the table";
    EXPECT_EQ(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_FONT), first);
    GwGC other(canvas.window(), nullptr);
    other.setFont("Courier New", 17, 0.25);
    EXPECT_EQ(GetCurrentObject(static_cast<HDC>(other.device()), OBJ_FONT), first)
        << "shared by every context";
}

TEST(GCState, ALongFaceNameIsCutToTheField) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    std::string const face(80, 'F');
    gc.setFont(face.c_str(), 10, 0.0);
    LOGFONTA font = selectedFont(gc);
    EXPECT_EQ(std::string(font.lfFaceName), std::string(31, 'F'));
}

TEST(GCState, TheOriginFollowsTheWindowsSize) {
    Canvas canvas(120, 100);
    GwGC gc(canvas.window(), nullptr);
    HDC device = static_cast<HDC>(gc.device());
    SetWindowPos(canvas.hwnd(), nullptr, 0, 0, 150, 130, SWP_NOMOVE | SWP_NOZORDER);
    POINT origin{};
    GetViewportOrgEx(device, &origin);
    EXPECT_EQ(origin.y, 130) << "moved by the size event";
    gc.drawPixel(3, 1);
    EXPECT_EQ(canvas.atDevice(3, 129), kBlack) << "y = 1 is the client's bottom row";

    // Without the event (a window object that keeps the context out of its listeners),
    // drawStart puts the origin right.
    canvas.window()->removeEvent(&gc);
    SetWindowPos(canvas.hwnd(), nullptr, 0, 0, 150, 90, SWP_NOMOVE | SWP_NOZORDER);
    GetViewportOrgEx(device, &origin);
    EXPECT_EQ(origin.y, 130);
    gc.drawStart();
    GetViewportOrgEx(device, &origin);
    EXPECT_EQ(origin.y, 90);
}

TEST(GCState, ADestroyedWindowIsForgotten) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    EXPECT_TRUE(canvas.window()->hasListener(&gc));
    canvas.window()->sendEvent(Event(2), nullptr, true);
    EXPECT_EQ(gc.window(), nullptr);
    EXPECT_EQ(gc.device(), nullptr) << "the device fetched from it went back";
    EXPECT_FALSE(canvas.window()->hasListener(&gc));
    gc.drawLine2D(1, 1, 50, 50); // no device: nothing happens
    gc.drawStart();
    EXPECT_EQ(gc.device(), nullptr) << "no window to fetch a device from";
}

TEST(GCState, DrawStopGivesAFetchedDeviceBackAndDrawStartFetchesIt) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawStop();
    EXPECT_EQ(gc.device(), nullptr);
    gc.drawStart();
    ASSERT_NE(gc.device(), nullptr);
    EXPECT_TRUE(gc.ownsDevice());
    EXPECT_EQ(GetMapMode(static_cast<HDC>(gc.device())), MM_ISOTROPIC) << "prepared";
    gc.drawPixel(9, 9);
    EXPECT_EQ(canvas.at(9, 9), kBlack);

    DibTarget target(50, 50);
    GwGC borrowed(canvas.window(), target.device());
    borrowed.drawStop();
    EXPECT_EQ(borrowed.device(), target.device()) << "a given device stays";
    EXPECT_EQ(GetMapMode(target.device()), MM_TEXT) << "restored";
}

TEST(GCState, AssignmentCopiesTheStateAndSharesTheDevice) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x00FF0000UL, 0);
    gc.setTextMode(0x40000000);
    gc.setLineStyle(GwGC::eDot, 2);
    gc.setColorMode(false, true, 0, 0x0000FFUL);
    GwGC copy(canvas.window(), nullptr);
    copy.drawStop();
    copy = gc;
    EXPECT_EQ(copy.device(), gc.device());
    EXPECT_EQ(copy.window(), gc.window());
    EXPECT_EQ(copy.textMode(), gc.textMode());
    EXPECT_EQ(copy.lineStyle(), GwGC::eDot);
    EXPECT_EQ(copy.lineWidth(), 2u);
    EXPECT_EQ(copy.fixedBackground(), gc.fixedBackground());
    copy.drawPixel(4, 4);
    EXPECT_EQ(canvas.at(4, 4), kBlack) << "the shared device draws with its own pen state";
    copy.drawStop(); // leaves the device to the original only in the copy's view
}

TEST(GCState, TheClassRecordMakesAContextOnTheWindowOfTheEventData) {
    Canvas canvas;
    Class const* record = Class::lookup("GwGC");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwGC::isa());
    EXPECT_EQ(record->createInstance(nullptr), nullptr);
    GwEventData none;
    EXPECT_EQ(record->createInstance(&none), nullptr);
    GwEventData data(canvas.hwnd());
    std::unique_ptr<Object> made(record->createInstance(&data));
    auto* gc = dynamic_cast<GwGC*>(made.get());
    ASSERT_NE(gc, nullptr);
    EXPECT_NE(gc->device(), nullptr);
    EXPECT_TRUE(gc->ownsDevice());
    gc->drawPixel(8, 8);
    EXPECT_EQ(canvas.at(8, 8), kBlack);
}

TEST(GCState, AContextOnAWindowOfAnotherKindLeavesItsUserDataAlone) {
    HWND hwnd =
        testing_windows::rawWindow(nullptr, 0, 0, 0, 60, 40, nullptr, WS_POPUP | WS_VISIBLE);
    testing_windows::WindowCloser closer{hwnd};
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0x5A5A5A5A); // the window's own data
    GwEventData data(hwnd);
    std::unique_ptr<GwGC> gc(GwGC::newInstance(&data));
    ASSERT_NE(gc, nullptr);
    EXPECT_EQ(gc->window(), hwnd);
    gc->drawPixel(1, 1);
    gc.reset();
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_USERDATA), 0x5A5A5A5A);
}

TEST(GCState, CalcTextMeasuresInLogicalUnits) {
    Canvas canvas(300, 100);
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Tahoma", 14, 0.0);
    GwDimension one = gc.calcText("Maß");
    GwDimension two = gc.calcText("MaßMaß");
    EXPECT_GT(one.width(), 0);
    EXPECT_GT(one.height(), 0) << "positive although the axis points up";
    EXPECT_GT(two.width(), one.width());
    EXPECT_EQ(two.height(), one.height());
}

TEST(GCState, TextAtAPointIsPlacedByTheFlags) {
    Canvas canvas(300, 120);
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Tahoma", 20, 0.0);
    String const text("Hallo");
    GwDimension const extent = gc.calcText(text);
    ASSERT_GT(extent.width(), 10);
    ASSERT_GT(extent.height(), 10);
    long const x = 150;
    long const y = 60;
    long const w = extent.width();
    long const h = extent.height();
    struct Case {
        unsigned int flags;
        long left, top; // where the text's box should start and its top
    };
    Case const cases[] = {
        {0x100, x, y},          // flags 0 would take the text mode: the point is top-left
        {0x1, x - w / 2, y},    // centred horizontally
        {0x2, x - w, y},        // right end
        {0x4, x, y + (h >> 1)}, // centred vertically
        {0x8, x, y + h},        // bottom edge on the point
        {0x5, x - w / 2, y + (h >> 1)},
    };
    for (Case const& one : cases) {
        SCOPED_TRACE(one.flags);
        canvas.clear();
        gc.drawText(text, GwPosition(x, y), one.flags);
        Box box = markedBox(canvas);
        ASSERT_LE(box.left, box.right) << "drawn";
        EXPECT_GE(box.left, one.left - 1);
        EXPECT_LE(box.right, one.left + w);
        EXPECT_LE(box.top, one.top);
        EXPECT_GE(box.bottom, one.top - h);
        EXPECT_LE(box.left, one.left + 4) << "starts at the placed point";
        EXPECT_GE(box.top, one.top - h / 2) << "reaches up to the placed top";
    }
}

TEST(GCState, TextAtAnAngleIsPlacedAlongTheAngle) {
    Canvas canvas(200, 300);
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Tahoma", 20, kPi / 2); // reading upwards
    String const text("Hallo");
    GwDimension const extent = gc.calcText(text);
    long const w = extent.width();
    ASSERT_GT(w, 20);
    // The right end on the point: the text runs up from w below it to the point.
    gc.drawText(text, GwPosition(100, 200), 0x2);
    Box box = markedBox(canvas);
    ASSERT_LE(box.bottom, box.top) << "drawn";
    EXPECT_GE(box.bottom, 200 - w - 2);
    EXPECT_LE(box.bottom, 200 - w + 6);
    EXPECT_LE(box.top, 201);
    EXPECT_GT(box.top, 200 - 8);
    EXPECT_LT(box.right - box.left, w / 2) << "upright, not level";

    // Centred: half the text below the point, half above.
    canvas.clear();
    gc.drawText(text, GwPosition(100, 150), 0x1);
    box = markedBox(canvas);
    EXPECT_NEAR((box.bottom + box.top) / 2.0, 150.0, 6.0);
}

TEST(GCState, TextInARectangleUsesTheFlagsOrTheTextMode) {
    Canvas canvas(300, 120);
    GwGC gc(canvas.window(), nullptr);
    gc.setFont("Tahoma", 20, 0.0);
    gc.setColor(0x000000FFUL, 0);
    gc.drawText("Hallo", GwRectangle(20, 60, 200, 40), 0);
    Box box = markedBox(canvas);
    ASSERT_LE(box.left, box.right);
    EXPECT_GE(box.left, 20);
    EXPECT_LE(box.top, 60) << "the rectangle's y is the text's top";
    int blue = 0;
    for (POINT const& point : canvas.marked())
        blue += canvas.at(point.x, point.y) == kBlue ? 1 : 0;
    EXPECT_GT(blue, 0) << "in the foreground colour";

    canvas.clear();
    gc.drawText("Hallo", GwRectangle(20, 60, 200, 40), DT_RIGHT);
    Box right = markedBox(canvas);
    EXPECT_GT(right.left, box.left + 50) << "DT_RIGHT moves the text to the right edge";
    EXPECT_LE(right.right, 220);
}

TEST(GCState, ABitmapDrawnOntoTheContextsDeviceLandsAtTheLogicalPoint) {
    Canvas canvas(64, 64);
    GwGC gc(canvas.window(), nullptr);
    HDC screen = GetDC(nullptr);
    HBITMAP handle = CreateCompatibleBitmap(screen, 3, 2);
    ReleaseDC(nullptr, screen);
    HDC memory = CreateCompatibleDC(nullptr);
    HGDIOBJ previous = SelectObject(memory, handle);
    COLORREF const pattern[2][3] = {{kRed, kGreen, kBlue}, {kBlack, kRed, kGreen}};
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 3; ++column)
            SetPixel(memory, column, row, pattern[row][column]);
    SelectObject(memory, previous);
    DeleteDC(memory);
    GwBitmap bitmap(1, handle);
    bitmap.draw(gc.device(), 10, 20, false);
    // The top-left pixel at the logical point, the rows going down the screen.
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_EQ(canvas.at(10 + column, 20 - row), pattern[row][column])
                << column << "," << row;
    EXPECT_EQ(canvas.markedCount(), 6);

    canvas.clear();
    GwBitmap(7).draw(gc.device(), 10, 20, false);
    GwBitmap(7).draw(gc.device(), 10, 20, true);
    EXPECT_EQ(canvas.markedCount(), 0) << "a bitmap without handle copies nothing";
}

TEST(GCState, AUserButtonPaintsItselfWhenItsParentIsAskedToDrawIt) {
    Canvas canvas(120, 100);
    testing_windows::ScopedApplication application;
    auto* button = new GwUserButton(*canvas.window(), 9, "Zeichnen"); // deleted with its window
    HWND hwnd = static_cast<HWND>(button->window());
    SetWindowPos(hwnd, nullptr, 10, 10, 40, 30, SWP_NOZORDER);
    ExposeRecorder recorder(GwResultHandled);
    recorder.painter = [](GwGC& gc, void*) {
        gc.setColor(0x000000FFUL, 1);
        gc.drawRectangle2D(0, 1, 39, 30, true);
    };
    button->add(&recorder);
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_BUTTON;
    draw.CtlID = 9;
    draw.hwndItem = hwnd;
    EXPECT_EQ(SendMessageA(canvas.hwnd(), WM_DRAWITEM, 9, reinterpret_cast<LPARAM>(&draw)), 1);
    ASSERT_EQ(recorder.calls.size(), 1u);
    EXPECT_EQ(recorder.calls[0].window, button);
    EXPECT_EQ(recorder.calls[0].flags, 0u);
    EXPECT_EQ(canvas.atDevice(30, 25), kBlue) << "painted by its handler";
    button->remove(&recorder);
}

TEST(GCState, AReflectedOwnerDrawReachesCbExposeWithAContextPerHandler) {
    Canvas canvas(120, 100);
    HWND child = testing_windows::rawWindow(canvas.hwnd(), 5, 10, 10, 40, 30);
    GwEventData data(child);
    GwControl* item = GwControl::newInstance(&data); // deleted with its window
    ExposeRecorder first;
    ExposeRecorder second;
    struct Paint {
        static void red(GwGC& gc, void*) {
            gc.setColor(0x00FF0000UL, 1);
            gc.drawRectangle2D(0, 1, 39, 30, true);
        }
    };
    first.painter = &Paint::red;
    item->add(&first);
    item->add(&second);
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_BUTTON;
    draw.CtlID = 5;
    draw.hwndItem = child;
    SendMessageA(canvas.hwnd(), WM_DRAWITEM, 5, reinterpret_cast<LPARAM>(&draw));
    ASSERT_EQ(first.calls.size(), 1u);
    ASSERT_EQ(second.calls.size(), 1u);
    EXPECT_EQ(first.calls[0].window, item);
    EXPECT_EQ(first.calls[0].flags, 0u);
    EXPECT_EQ(second.calls[0].flags, 0u);
    // The child covers the parent's rows 10 to 39: its inside is red now.
    EXPECT_EQ(canvas.atDevice(30, 25), kRed);
    EXPECT_EQ(canvas.atDevice(5, 25), kWhite) << "only the item's window";
    EXPECT_EQ(item->listenerCount(), 0) << "each context released after its call";

    second.result = GwResultHandled;
    EXPECT_EQ(SendMessageA(child, GwMsgDrawItem, 5, reinterpret_cast<LPARAM>(&draw)), 1)
        << "handled";
    EXPECT_EQ(second.calls.size(), 2u);
    item->remove(&first);
    item->remove(&second);
}
