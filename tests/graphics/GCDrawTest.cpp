// Drawing through a graphics context on a window, read back pixel by pixel in the library's
// upward coordinates.
#include <gtest/gtest.h>

#include <windows.h>

#include <cmath>

#include <GwGC.h>

#include "GraphicsTesting.h"

using namespace testing_graphics;

namespace {

// Whether some pixel within one unit of (x, y) is not white.
bool markedNear(Canvas const& canvas, int x, int y) {
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if (canvas.at(x + dx, y + dy) != kWhite)
                return true;
    return false;
}

class ArcCentre : public GwGC {
public:
    static bool centre(GwPosition a, GwPosition b, GwPosition c, GwPosition& out) {
        return compArcMidPoint(a, b, c, out);
    }
};

} // namespace

TEST(GCDraw, TheOriginIsTheBottomLeftCornerOfTheClientArea) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    ASSERT_NE(gc.device(), nullptr);
    EXPECT_TRUE(gc.ownsDevice());
    EXPECT_EQ(gc.window(), canvas.hwnd());
    POINT points[2] = {{0, 0}, {7, 1}};
    LPtoDP(static_cast<HDC>(gc.device()), points, 2);
    EXPECT_EQ(points[0].x, 0);
    EXPECT_EQ(points[0].y, canvas.height());
    EXPECT_EQ(points[1].x, 7);
    EXPECT_EQ(points[1].y, canvas.height() - 1) << "y grows upwards";
    gc.drawPixel(7, 1);
    EXPECT_EQ(canvas.atDevice(7, canvas.height() - 1), kBlack);
    EXPECT_EQ(canvas.markedCount(), 1);
}

TEST(GCDraw, AContextOnAGivenDeviceDrawsThereWithoutOwningIt) {
    Canvas canvas(64, 48);
    DibTarget target(64, 48);
    {
        GwGC gc(canvas.window(), target.device());
        EXPECT_EQ(gc.device(), target.device());
        EXPECT_FALSE(gc.ownsDevice());
        gc.setColor(0x00FF0000, 0);
        gc.drawPixel(GwPosition(3, 5));
    }
    EXPECT_EQ(target.at(3, 5), 0xFF0000u);
    EXPECT_EQ(canvas.markedCount(), 0) << "nothing reaches the window";
    // The device is given back in its old state.
    EXPECT_EQ(GetMapMode(target.device()), MM_TEXT);
    EXPECT_NE(GetObjectType(target.device()), 0u);
}

TEST(GCDraw, ALineLightsItsEndPixel) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawLine(GwPosition(10, 10), GwPosition(50, 10));
    EXPECT_EQ(canvas.at(10, 10), kBlack);
    EXPECT_EQ(canvas.at(30, 10), kBlack);
    EXPECT_EQ(canvas.at(50, 10), kBlack) << "the end point";
    EXPECT_EQ(canvas.at(51, 10), kWhite);
    EXPECT_EQ(canvas.markedCount(), 41);

    canvas.clear();
    gc.drawLine2D(20, 20, 20, 60);
    EXPECT_EQ(canvas.at(20, 60), kBlack);
    EXPECT_EQ(canvas.at(20, 61), kWhite);
    EXPECT_EQ(canvas.markedCount(), 41);
}

TEST(GCDraw, AnOutlinePolygonWithEqualEndsIsNotClosedAgain) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    // Drawn inverting, a second closing line would invert the corner pixel back to white.
    long closed[] = {10, 10, 50, 10, 50, 50, 10, 10};
    gc.drawPolygonXor2D(4, closed, false);
    EXPECT_EQ(canvas.at(10, 10), kBlack);
    EXPECT_EQ(canvas.at(30, 30), kBlack) << "the diagonal back to the start";

    canvas.clear();
    GwPosition open[] = {GwPosition(10, 10), GwPosition(50, 10), GwPosition(50, 50)};
    gc.drawPolygon(open, 3, false);
    EXPECT_EQ(canvas.at(30, 30), kBlack) << "closed from the first to the last point";
    EXPECT_EQ(canvas.at(50, 50), kBlack);
    EXPECT_EQ(canvas.at(10, 10), kBlack);
}

TEST(GCDraw, APolylineLeavesItsLastPointOpen) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    GwPosition points[] = {GwPosition(10, 10), GwPosition(40, 10), GwPosition(40, 40)};
    gc.drawPolyline(points, 3);
    EXPECT_EQ(canvas.at(10, 10), kBlack);
    EXPECT_EQ(canvas.at(40, 10), kBlack);
    EXPECT_EQ(canvas.at(40, 39), kBlack);
    EXPECT_EQ(canvas.at(40, 40), kWhite);
    EXPECT_EQ(canvas.at(25, 25), kWhite) << "not closed";
}

TEST(GCDraw, AFilledTwoCornerRectangleCoversTheSecondCornersRowAndColumn) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x0000FF00, 1); // green brush
    gc.drawRectangle(GwPosition(10, 10), GwPosition(30, 20), true);
    EXPECT_NE(canvas.at(30, 20), kWhite) << "b's row and column";
    EXPECT_NE(canvas.at(30, 15), kWhite) << "b's column";
    EXPECT_EQ(canvas.at(20, 15), kGreen) << "the inside in the background colour";
    EXPECT_EQ(canvas.at(31, 15), kWhite);

    canvas.clear();
    gc.drawRectangle(GwRectangle(10, 10, 20, 10), true);
    EXPECT_EQ(canvas.at(30, 20), kWhite) << "the same corners as a rectangle: b not covered";
    EXPECT_EQ(canvas.at(30, 15), kWhite);
    EXPECT_NE(canvas.at(29, 15), kWhite);
    EXPECT_EQ(canvas.at(20, 15), kGreen);
}

TEST(GCDraw, ARectangleOutlineRunsThroughBothCorners) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawRectangle(GwPosition(10, 10), GwPosition(30, 20), false);
    EXPECT_EQ(canvas.at(10, 10), kBlack);
    EXPECT_EQ(canvas.at(30, 20), kBlack);
    EXPECT_EQ(canvas.at(10, 20), kBlack);
    EXPECT_EQ(canvas.at(30, 10), kBlack);
    EXPECT_EQ(canvas.at(20, 15), kWhite);
    EXPECT_EQ(canvas.markedCount(), 2 * 20 + 2 * 10);

    canvas.clear();
    gc.drawRectangle(GwRectangle(10, 10, 20, 10), false);
    EXPECT_EQ(canvas.at(30, 20), kBlack);
    EXPECT_EQ(canvas.markedCount(), 2 * 20 + 2 * 10);
}

TEST(GCDraw, ACircleReachesItsRadiusInAllFourDirections) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawCircle(GwPosition(50, 50), 20, false);
    EXPECT_TRUE(markedNear(canvas, 30, 50)) << "left";
    EXPECT_TRUE(markedNear(canvas, 70, 50)) << "right";
    EXPECT_TRUE(markedNear(canvas, 50, 30)) << "bottom";
    EXPECT_TRUE(markedNear(canvas, 50, 70)) << "top";
    EXPECT_EQ(canvas.at(50, 50), kWhite) << "not filled";
    EXPECT_FALSE(markedNear(canvas, 50, 74));
    EXPECT_FALSE(markedNear(canvas, 26, 50));
    for (POINT const& point : canvas.marked()) {
        double distance = std::hypot(point.x - 50.0, point.y - 50.0);
        EXPECT_NEAR(distance, 20.0, 2.0) << point.x << "," << point.y;
    }

    canvas.clear();
    gc.setColor(0x000000FF, 1);
    gc.drawCircle2D(50, 50, 20, true);
    EXPECT_EQ(canvas.at(50, 50), kBlue) << "filled in the background colour";
    EXPECT_EQ(canvas.at(50, 62), kBlue);
    EXPECT_EQ(canvas.at(50, 75), kWhite);
}

TEST(GCDraw, AnArcRunsThroughItsMiddlePoint) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    // Upper half: from the left through the top to the right.
    gc.drawArc(GwPosition(20, 50), GwPosition(50, 80), GwPosition(80, 50));
    EXPECT_TRUE(markedNear(canvas, 50, 80));
    EXPECT_FALSE(markedNear(canvas, 50, 20)) << "not the lower half";

    // The same points in the other order draw the same arc.
    canvas.clear();
    gc.drawArc2D(80, 50, 50, 80, 20, 50);
    EXPECT_TRUE(markedNear(canvas, 50, 80));
    EXPECT_FALSE(markedNear(canvas, 50, 20));

    // Lower half.
    canvas.clear();
    gc.drawArc(GwPosition(20, 50), GwPosition(50, 20), GwPosition(80, 50));
    EXPECT_TRUE(markedNear(canvas, 50, 20));
    EXPECT_FALSE(markedNear(canvas, 50, 80));
}

TEST(GCDraw, ThreeCollinearPointsDrawNoArc) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawArc(GwPosition(10, 10), GwPosition(30, 30), GwPosition(50, 50));
    gc.drawArc(GwPosition(10, 40), GwPosition(30, 40), GwPosition(60, 40));
    gc.drawArc(GwPosition(10, 10), GwPosition(10, 10), GwPosition(10, 10));
    EXPECT_EQ(canvas.markedCount(), 0);
}

TEST(GCDraw, TheArcCentreIsFoundInEveryArrangement) {
    GwPosition centre;
    // Two points share an x, two share a y, none share either.
    ASSERT_TRUE(
        ArcCentre::centre(GwPosition(0, 10), GwPosition(0, -10), GwPosition(10, 0), centre));
    EXPECT_EQ(centre, GwPosition(0, 0));
    ASSERT_TRUE(
        ArcCentre::centre(GwPosition(-10, 0), GwPosition(10, 0), GwPosition(0, 10), centre));
    EXPECT_EQ(centre, GwPosition(0, 0));
    ASSERT_TRUE(
        ArcCentre::centre(GwPosition(53, 80), GwPosition(80, 53), GwPosition(20, 50), centre));
    EXPECT_NEAR(centre.x(), 50, 1);
    EXPECT_NEAR(centre.y(), 50, 1);
    // Rounded by adding a half: the centre of (0,0), (1,0), (0,1) is (0.5, 0.5).
    ASSERT_TRUE(ArcCentre::centre(GwPosition(0, 0), GwPosition(1, 0), GwPosition(0, 1), centre));
    EXPECT_EQ(centre, GwPosition(1, 1));
    EXPECT_FALSE(ArcCentre::centre(GwPosition(0, 0), GwPosition(5, 5), GwPosition(9, 9), centre));
    EXPECT_FALSE(ArcCentre::centre(GwPosition(3, 3), GwPosition(3, 3), GwPosition(8, 1), centre));
}

TEST(GCDraw, AMarkerIsAStarOfFourLines) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.drawMarker(GwPosition(40, 40), 7);
    for (POINT const& tip : {POINT{36, 40}, POINT{44, 40}, POINT{40, 36}, POINT{40, 44},
                             POINT{36, 36}, POINT{44, 44}, POINT{36, 44}, POINT{44, 36}})
        EXPECT_EQ(canvas.at(tip.x, tip.y), kBlack) << tip.x << "," << tip.y;
    EXPECT_EQ(canvas.at(40, 40), kBlack);
    EXPECT_EQ(canvas.at(45, 40), kWhite);
    EXPECT_EQ(canvas.at(38, 41), kWhite);
    EXPECT_EQ(canvas.markedCount(), 4 * 9 - 3);
}

TEST(GCDraw, EveryInvertingFormDrawnTwiceRestoresThePixels) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x00FF0000, 0);
    long zigzag[] = {10, 10, 30, 40, 50, 10, 70, 40};
    long triangle[] = {10, 10, 60, 10, 35, 50};
    struct Shape {
        char const* name;
        void (*draw)(GwGC&, long*, long*);
    };
    Shape const shapes[] = {
        {"line", [](GwGC& g, long*, long*) { g.drawLineXor2D(10, 10, 80, 60); }},
        {"arc", [](GwGC& g, long*, long*) { g.drawArcXor2D(20, 50, 50, 80, 80, 50); }},
        {"circle", [](GwGC& g, long*, long*) { g.drawCircleXor2D(50, 50, 20, false); }},
        {"filled circle", [](GwGC& g, long*, long*) { g.drawCircleXor2D(50, 50, 20, true); }},
        {"rectangle", [](GwGC& g, long*, long*) { g.drawRectangleXor2D(10, 10, 60, 40, false); }},
        {"filled rectangle",
         [](GwGC& g, long*, long*) { g.drawRectangleXor2D(10, 10, 60, 40, true); }},
        {"polyline", [](GwGC& g, long* z, long*) { g.drawPolylineXor2D(4, z); }},
        {"polygon", [](GwGC& g, long*, long* t) { g.drawPolygonXor2D(3, t, false); }},
        {"filled polygon", [](GwGC& g, long*, long* t) { g.drawPolygonXor2D(3, t, true); }},
        {"marker", [](GwGC& g, long*, long*) { g.drawMarkerXor(40, 40, 0); }},
    };
    for (Shape const& shape : shapes) {
        SCOPED_TRACE(shape.name);
        canvas.clear();
        shape.draw(gc, zigzag, triangle);
        EXPECT_GT(canvas.markedCount(), 0);
        shape.draw(gc, zigzag, triangle);
        EXPECT_EQ(canvas.markedCount(), 0);
        EXPECT_EQ(GetROP2(static_cast<HDC>(gc.device())), R2_COPYPEN) << "copying again";
    }
}

TEST(GCDraw, TheDrawModesInvertOrLeaveThePixels) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    HDC device = static_cast<HDC>(gc.device());
    gc.setDrawMode(GwGC::eNop);
    EXPECT_EQ(GetROP2(device), R2_NOP);
    gc.drawLine2D(10, 10, 50, 10);
    EXPECT_EQ(canvas.at(30, 10), kWhite);
    gc.setDrawMode(GwGC::eXor);
    EXPECT_EQ(GetROP2(device), R2_NOT);
    gc.setDrawMode(GwGC::eInvert);
    EXPECT_EQ(GetROP2(device), R2_NOT);
    gc.drawLine2D(10, 10, 50, 10);
    EXPECT_EQ(canvas.at(30, 10), kBlack) << "white inverted";
    gc.setDrawMode(GwGC::eCopy);
    EXPECT_EQ(GetROP2(device), R2_COPYPEN);

    EXPECT_EQ(GetBkMode(device), TRANSPARENT) << "prepared";
    gc.setDrawMode(GwGC::eCopy, true);
    EXPECT_EQ(GetBkMode(device), OPAQUE);
    gc.setDrawMode(GwGC::eInvert, true);
    EXPECT_EQ(GetBkMode(device), OPAQUE) << "modes 1 and 2 change nothing";
    gc.setDrawMode(GwGC::eNop, true);
    EXPECT_EQ(GetBkMode(device), TRANSPARENT);
    EXPECT_EQ(GetROP2(device), R2_COPYPEN) << "the background flag leaves the raster operation";
}

TEST(GCDraw, LineStyleAndWidthMakeThePen) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x000000FF, 0);
    gc.setLineStyle(GwGC::eSolid, 5);
    EXPECT_EQ(gc.lineWidth(), 5u);
    LOGPEN pen{};
    GetObjectA(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_PEN), sizeof pen, &pen);
    EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(PS_SOLID));
    EXPECT_EQ(pen.lopnWidth.x, 5);
    EXPECT_EQ(pen.lopnColor, RGB(0, 0, 255));
    gc.drawLine2D(10, 50, 90, 50);
    EXPECT_EQ(canvas.at(50, 52), kBlue) << "five pixels wide";
    EXPECT_EQ(canvas.at(50, 48), kBlue);
    EXPECT_EQ(canvas.at(50, 55), kWhite);

    gc.setLineStyle(GwGC::eDash, 0);
    GetObjectA(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_PEN), sizeof pen, &pen);
    EXPECT_EQ(pen.lopnStyle, static_cast<UINT>(PS_DASH));
    canvas.clear();
    gc.drawLine2D(10, 20, 110, 20);
    int lit = 0;
    for (int x = 10; x < 110; ++x)
        lit += canvas.at(x, 20) == kBlue ? 1 : 0;
    EXPECT_GT(lit, 20);
    EXPECT_LT(lit, 95) << "dashed: gaps along the line";
}

TEST(GCDraw, APatternMakesAHatchedBrushInTheBackgroundColour) {
    Canvas canvas;
    GwGC gc(canvas.window(), nullptr);
    gc.setColor(0x00FF0000, 1);
    gc.setPatternStyle(GwGC::ePatternCross);
    LOGBRUSH brush{};
    GetObjectA(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_BRUSH), sizeof brush, &brush);
    EXPECT_EQ(brush.lbStyle, static_cast<UINT>(BS_HATCHED));
    EXPECT_EQ(brush.lbHatch, static_cast<ULONG_PTR>(HS_CROSS));
    EXPECT_EQ(brush.lbColor, RGB(255, 0, 0));
    gc.drawRectangle2D(10, 10, 60, 60, true);
    int red = 0;
    int white = 0;
    for (int y = 15; y < 55; ++y)
        for (int x = 15; x < 55; ++x) {
            red += canvas.at(x, y) == kRed ? 1 : 0;
            white += canvas.at(x, y) == kWhite ? 1 : 0;
        }
    EXPECT_GT(red, 100) << "hatch lines";
    EXPECT_GT(white, 800) << "transparent between them";

    gc.setPatternStyle(GwGC::ePatternSolid);
    GetObjectA(GetCurrentObject(static_cast<HDC>(gc.device()), OBJ_BRUSH), sizeof brush, &brush);
    EXPECT_EQ(brush.lbStyle, static_cast<UINT>(BS_SOLID));
    canvas.clear();
    gc.drawRectangle2D(10, 10, 60, 60, true);
    EXPECT_EQ(canvas.at(30, 30), kRed);
}
