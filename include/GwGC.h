// The drawing surface of a window: a device context with an upward y axis.
#pragma once

#include <String.h>

#include "GwGeometry.h"
#include "GwObject.h"
#include "GwStartup.h"

class GwWindow;

// The drawing surface of a window, with an upward y axis.
//
// A GwGC wraps the device context (HDC) of a window. Preparing the device fixes the
// coordinate system: one logical unit is one pixel, logical (0, 0) is the bottom-left corner
// of the client area and y grows upwards. Every context selects the process-wide halftone
// palette. The context listens to its window: a resize moves the origin back to the client's
// bottom edge, a destruction notice makes it forget the window.
//
// Colours are given as 0x00RRGGBB (bit 31 clear), or as a COLORREF taken as it stands when
// bit 31 is set. The pen draws in the foreground colour, the brush (and so every filled
// shape) paints in the background colour.
//
// Fonts are shared process-wide: one HFONT per distinct LOGFONTA, kept until the library
// shuts down (GwGC::GwRegister). Face names longer than the 31 characters a LOGFONTA holds
// are cut.
//
// No drawing call reports failure. A context without a device draws nothing.
class VMGUI_API GwGC : public GwObject {
    GW_DECLARE_CLASS(GwGC)

public:
    // 0 copies, 1 and 2 invert, 3 leaves the pixels alone; with the background flag, 0
    // makes the text background opaque and 3 transparent.
    enum eDrawMode : int { eCopy = 0, eInvert = 1, eXor = 2, eNop = 3 };
    // The Win32 pen style (PS_SOLID, PS_DASH ...), passed to the pen unchanged.
    enum eLineStyle : int {
        eSolid = 0,
        eDash = 1,
        eDot = 2,
        eDashDot = 3,
        eDashDotDot = 4,
        eNull = 5
    };
    // 0 a solid brush; k from 1 on the hatched brush with Win32 hatch style k - 1.
    enum ePatternStyle : int {
        ePatternSolid = 0,
        ePatternHorizontal = 1,
        ePatternVertical = 2,
        ePatternFDiagonal = 3,
        ePatternBDiagonal = 4,
        ePatternCross = 5,
        ePatternDiagCross = 6
    };
    // Placement flags of drawText at a point (and, with bit 30, no DT_NOCLIP).
    enum eTextPlacement : unsigned int {
        eCenterX = 0x1, // the point is the text's horizontal centre
        eRightX = 0x2,  // the point is the text's right end
        eCenterY = 0x4, // the point is the text's vertical centre
        eBottomY = 0x8, // the point is on the text's bottom edge
        eClip = 0x40000000
    };

    // Empties the font and palette tables when the library shuts down.
    class VMGUI_API GwRegister : public GwStartup {
    public:
        bool exitInstance() override;
    };

    // Draws into window (which the context listens to). With a null device the context
    // fetches the window's device itself (GetDC) and gives it back at destruction; otherwise
    // it prepares and uses the given device (HDC) without owning it.
    GwGC(GwWindow const* window, void* device);
    // Takes every setting and the device and window of other (the device is then shared).
    GwGC& operator=(GwGC const& other);
    ~GwGC() override;

    // Type 2 from the window: forget it. Type 3 from a window: the origin follows the
    // client's new bottom edge.
    void receiveEvent(Object* sender, Event const& event, EventData const* data) override;

    // With a device: moves the origin back to the client's bottom edge when it is elsewhere.
    // Without one: fetches the window's device and prepares it.
    virtual GwGC& drawStart();
    // Restores the device's state; a device the context fetched itself is given back.
    virtual GwGC& drawStop();

    // which 0: the foreground (pen, text, pixels); otherwise the background (brush, text
    // background). A fixed colour does not change.
    virtual GwGC& setColor(unsigned long color, int which = 0);
    // An explicit COLORREF of the three components.
    virtual GwGC& setColor(unsigned char red, unsigned char green, unsigned char blue,
                           int which = 0);
    // size in points, angle in radians counter-clockwise.
    virtual GwGC& setFont(String const& face, int size, double angle = 0.0);
    // How drawing combines with the pixels (eDrawMode); with background, whether text
    // backgrounds are painted.
    virtual GwGC& setDrawMode(eDrawMode mode, bool background = false);
    // The pen's style and width (0: one pixel).
    virtual GwGC& setLineStyle(eLineStyle style, unsigned int width = 0);
    // The brush that filled shapes are painted with.
    virtual GwGC& setPatternStyle(ePatternStyle pattern);
    // Keeps the top four bits of flags (the placement) and DT_NOCLIP unless bit 30 is set.
    virtual GwGC& setTextMode(unsigned int flags);
    // Fixes (locks) the foreground and/or background colour. Not fixing one sets that colour
    // to 0xFFFFFFFF and leaves an existing lock in place: a lock cannot be cleared.
    virtual GwGC& setColorMode(bool fixForeground, bool fixBackground, unsigned long foreground,
                               unsigned long background);
    // Whether each colour is fixed, and the fixed colours (COLORREF, low 24 bits).
    virtual GwGC& getColorMode(bool& fixForeground, bool& fixBackground, unsigned long& foreground,
                               unsigned long& background);

    // Text in a rectangle (DrawTextExA). flags 0: the text mode.
    virtual GwGC& drawText(String const& text, GwRectangle const& rectangle,
                           unsigned int flags = 0);
    // Text at a point, placed by the flags of eTextPlacement (0: the text mode's) along the
    // font's angle.
    virtual GwGC& drawText(String const& text, GwPosition const& position, unsigned int flags = 0);
    // Width and height of the text in logical units.
    virtual GwDimension calcText(String const& text);

    // A line that includes its end point. The end point is set to the foreground colour
    // while the draw mode copies; in the other modes it is combined like the line itself.
    virtual GwGC& drawLine(GwPosition const& from, GwPosition const& to);
    // The arc of the circle through the three points from a through b to c. Nothing for
    // collinear or coincident points.
    virtual GwGC& drawArc(GwPosition const& a, GwPosition const& b, GwPosition const& c);
    // A circle around centre, its outline or filled with the brush.
    virtual GwGC& drawCircle(GwPosition const& centre, int radius, bool filled = false);
    // One pixel in the foreground colour.
    virtual void drawPixel(long x, long y);
    virtual GwGC& drawPixel(GwPosition const& position);
    // Filled: x to x + width and y to y + height, the far edges excluded. Outline: the
    // rectangle through the four corners.
    virtual GwGC& drawRectangle(GwRectangle const& rectangle, bool filled = false);
    // Filled: both corners' rows and columns included. Outline: through the four corners.
    virtual GwGC& drawRectangle(GwPosition const& a, GwPosition const& b, bool filled = false);
    // Lines through count points in turn (nothing for none).
    virtual GwGC& drawPolyline(GwPosition const* points, int count);
    // An outline is closed by a line from the last point to the first unless they are equal.
    virtual GwGC& drawPolygon(GwPosition const* points, int count, bool filled = false);
    // A star of four lines reaching 4 units from the point; type is not used.
    virtual void drawMarker(long x, long y, int type);
    virtual GwGC& drawMarker(GwPosition const& position, int type);
    // drawLine, drawArc, drawCircle and drawRectangle (by two corners) on plain numbers.
    virtual void drawLine2D(long x1, long y1, long x2, long y2);
    virtual void drawArc2D(long ax, long ay, long bx, long by, long cx, long cy);
    virtual void drawCircle2D(long x, long y, long radius, bool filled);
    virtual void drawRectangle2D(long x1, long y1, long x2, long y2, bool filled);
    // xy holds count pairs of x and y.
    virtual void drawPolyline2D(long count, long* xy);
    // drawPolygon on count pairs of x and y.
    virtual void drawPolygon2D(long count, long* xy, bool filled);

    // The same, drawn inverting (R2_NOT); the draw mode is back to copying afterwards, so
    // drawing the same shape twice restores the pixels.
    void drawLineXor2D(long x1, long y1, long x2, long y2);
    void drawArcXor2D(long ax, long ay, long bx, long by, long cx, long cy);
    void drawCircleXor2D(long x, long y, long radius, bool filled);
    void drawRectangleXor2D(long x1, long y1, long x2, long y2, bool filled);
    void drawPolylineXor2D(long count, long* xy);
    void drawPolygonXor2D(long count, long* xy, bool filled);
    void drawMarkerXor(long x, long y, int type);

    // The device (HDC), null while the context holds none.
    void* device() const { return mDevice; }
    // The window drawn into (HWND), null when there is none or it was destroyed.
    void* window() const { return mWindow; }
    // Whether the context gives the device back when it ends.
    bool ownsDevice() const { return mOwnsDevice; }
    // The current colours as COLORREFs.
    unsigned long foreground() const { return mForeground; }
    unsigned long background() const { return mBackground; }
    // The fixed colours (see getColorMode).
    unsigned long fixedForeground() const { return mFixedForeground; }
    unsigned long fixedBackground() const { return mFixedBackground; }
    // The settings as last set: text mode, pen style and width, brush pattern.
    unsigned int textMode() const { return mTextMode; }
    eLineStyle lineStyle() const { return mLineStyle; }
    unsigned int lineWidth() const { return mLineWidth; }
    ePatternStyle patternStyle() const { return mPatternStyle; }

    // A context on the window that the GwEventData carries; null without one.
    static GwGC* newInstance(EventData const* data);
    // How many distinct fonts the process-wide table holds.
    static int fontCount();

    // Non-zero: font angles count as they stand; zero: they are mirrored (3600 - tenths),
    // because the device's y axis is inverted.
    static int gdi_orientation;
    // Frees the process-wide fonts and palettes when the library shuts down.
    static GwRegister gStartup;

protected:
    // Fetches the window's device (HWND) itself and prepares it.
    explicit GwGC(void* window);
    // No device and no window, owning (drawStart may fetch a device).
    GwGC();
    // An empty context without device; nothing of the source is taken.
    GwGC(GwGC const& other);

    // The centre of the circle through three points; false when there is none (collinear
    // or coincident points).
    static bool compArcMidPoint(GwPosition const& a, GwPosition const& b, GwPosition const& c,
                                GwPosition& centre);
    // The device steps every constructor and drawStart perform.
    void prepareDevice();
    // The LOGFONTA of setFont with the given escapement, selected through the font table.
    void selectFont(String const& face, int size, double angle, long escapement);
    // A y of the library's axis in the device's logical coordinates: itself, or base - y
    // while the context draws onto a y-down device (a metafile recording).
    long deviceY(long y) const { return mFlipY ? mFlipBase - y : y; }
    // Turns the y flip on (onto a y-down device base units high) or off.
    void setFlipY(bool on, long base) {
        mFlipY = on;
        mFlipBase = base;
    }
    // Selects a new pen or brush, deleting the one the context selected before.
    void selectPen(void* pen);
    void selectBrush(void* brush);
    // Restores the device's saved state and deletes the pen and brush the context made.
    void restoreDevice();
    // The DT_ format of drawText in a rectangle.
    unsigned int rectangleFormat(unsigned int flags) const;
    // Deletes the pen and brush the context made, which no device may hold selected any more.
    void releasePenAndBrush();

    void* mDevice;                  // the HDC, null without one
    bool mOwnsDevice : 1;           // the context releases the device when it ends
    void* mWindow;                  // the window's HWND, null for a device of its own
    unsigned long mForeground;      // the pen and text colour
    unsigned long mBackground;      // the brush and text background colour
    unsigned int mTextMode;         // the flags of setTextMode
    unsigned int mLineWidth;        // the pen width
    eLineStyle mLineStyle;          // the pen style
    ePatternStyle mPatternStyle;    // the brush pattern
    double mTextSin;                // sine of the text angle
    double mTextCos;                // cosine of the text angle
    unsigned long mFixedForeground; // the fixed foreground (see fixedForeground)
    unsigned long mFixedBackground; // the fixed background (see fixedBackground)

private:
    friend class GwGCWMF;

    void* mPen;   // the pen this context made and selected, or null
    void* mBrush; // the brush this context made and selected, or null
    bool mFlipY;
    long mFlipBase;
    // The vertical resolution of the device the fonts were last made for (setFont asks the
    // device only when it changed).
    void* mDpiDevice;
    int mDpiY;
};
