#include "GwGC.h"

#include <windows.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_map>
#include <vector>

#include "GwEventData.h"
#include "GwMessages.h"
#include "GwObjectTable.h"
#include "GwWindow.h"

int GwGC::gdi_orientation = 0;
GwGC::GwRegister GwGC::gStartup;

GW_CLASS_MAKES(GwGC, "GwGC", "GwObject")

static_assert(sizeof(GwPosition) == sizeof(POINT), "positions are handed to GDI as POINTs");
static_assert(sizeof(long) == sizeof(LONG), "coordinate pairs are handed to GDI as POINTs");

namespace {

double const kPi = 4.0 * std::atan(1.0);
COLORREF const kInitialColor = 0x02000000; // palette-relative black
unsigned int const kNoClip = DT_NOCLIP;    // 0x100
unsigned int const kKeepClip = 0x40000000; // bit 30: leave DT_NOCLIP out

HDC dc(void* device) {
    return static_cast<HDC>(device);
}

// The process-wide tables: palettes (the first is the halftone palette), each handle in a
// cell of its own, and fonts, one HFONT per distinct LOGFONTA. The font index finds a
// record without walking the table; the table keeps one record per LOGFONTA, so the index
// answers what a walk would.
struct FontRecord {
    LOGFONTA font;
    HFONT handle;
};

// The whole LOGFONTA, compared byte for byte and hashed (FNV-1a over 32-bit words).
struct FontKeyHash {
    std::size_t operator()(LOGFONTA const& font) const {
        static_assert(sizeof(LOGFONTA) % 4 == 0, "hashed in 32-bit words");
        auto const* bytes = reinterpret_cast<unsigned char const*>(&font);
        std::uint64_t hash = 14695981039346656037ull;
        for (std::size_t i = 0; i < sizeof font; i += 4) {
            std::uint32_t word;
            std::memcpy(&word, bytes + i, 4);
            hash = (hash ^ word) * 1099511628211ull;
        }
        return static_cast<std::size_t>(hash ^ (hash >> 32));
    }
};

struct FontKeyEqual {
    bool operator()(LOGFONTA const& a, LOGFONTA const& b) const {
        return std::memcmp(&a, &b, sizeof a) == 0;
    }
};

using FontIndex = std::unordered_map<LOGFONTA, FontRecord*, FontKeyHash, FontKeyEqual>;

GwObjectTable<HPALETTE>* gPalettes = nullptr;
GwObjectTable<FontRecord>* gFonts = nullptr;
FontIndex* gFontIndex = nullptr;

HPALETTE halftonePalette(HDC device) {
    if (gPalettes == nullptr)
        gPalettes = new GwObjectTable<HPALETTE>();
    if (gPalettes->count() == 0 || gPalettes->at(0) == nullptr) {
        HPALETTE palette = CreateHalftonePalette(device);
        if (palette == nullptr)
            return nullptr;
        gPalettes->add(new HPALETTE(palette));
    }
    return *gPalettes->at(0);
}

HFONT tableFont(LOGFONTA const& font) {
    if (gFontIndex == nullptr) {
        gFonts = new GwObjectTable<FontRecord>();
        gFontIndex = new FontIndex();
    }
    auto found = gFontIndex->find(font);
    if (found != gFontIndex->end())
        return found->second->handle;
    HFONT handle = CreateFontIndirectA(&font);
    if (handle == nullptr)
        return nullptr;
    auto* record = new FontRecord{font, handle};
    gFonts->add(record);
    gFontIndex->emplace(font, record);
    return handle;
}

long rounded(double value) {
    return static_cast<long>(value + 0.5);
}

// 0x00RRGGBB, or with bit 31 a COLORREF as it stands.
COLORREF colorRef(unsigned long color) {
    if ((color & 0x80000000UL) != 0)
        return color & 0x7FFFFFFFUL;
    return ((color & 0xFFUL) << 16) | (color & 0xFF00UL) | ((color >> 16) & 0xFFUL);
}

DRAWTEXTPARAMS textParams() {
    DRAWTEXTPARAMS params{};
    params.cbSize = 20;
    params.iTabLength = 2;
    return params;
}

void drawTextEx(HDC device, String const& text, RECT& rect, unsigned int format) {
    DRAWTEXTPARAMS params = textParams();
    DrawTextExA(device, const_cast<char*>(text.c_str()), static_cast<int>(text.size()), &rect,
                format, &params);
}

// The end point of a line or outline. While copying it is set to the colour; in the other
// draw modes it goes through the raster operation like the rest of the line, so that an
// inverting shape drawn twice leaves no pixel behind.
void endPixel(HDC device, long x, long y, COLORREF color) {
    if (GetROP2(device) == R2_COPYPEN) {
        SetPixel(device, x, y, color);
        return;
    }
    MoveToEx(device, x, y, nullptr);
    LineTo(device, x + 1, y);
}

// The intersection of the perpendicular bisectors of the chords p1-q1 and p2-q2, with
// Cramer's rule; false for a zero divisor.
bool bisectorCrossing(GwPosition const& p1, GwPosition const& q1, GwPosition const& p2,
                      GwPosition const& q2, GwPosition& centre) {
    // 2 (q - p) . X = |q|^2 - |p|^2 for each chord.
    double const a1 = 2.0 * (q1.x() - p1.x());
    double const b1 = 2.0 * (q1.y() - p1.y());
    double const c1 = double(q1.x()) * q1.x() + double(q1.y()) * q1.y() - double(p1.x()) * p1.x() -
                      double(p1.y()) * p1.y();
    double const a2 = 2.0 * (q2.x() - p2.x());
    double const b2 = 2.0 * (q2.y() - p2.y());
    double const c2 = double(q2.x()) * q2.x() + double(q2.y()) * q2.y() - double(p2.x()) * p2.x() -
                      double(p2.y()) * p2.y();
    double const divisor = a1 * b2 - a2 * b1;
    if (divisor == 0.0)
        return false;
    centre =
        GwPosition(rounded((c1 * b2 - c2 * b1) / divisor), rounded((a1 * c2 - a2 * c1) / divisor));
    return true;
}

} // namespace

bool GwGC::GwRegister::exitInstance() {
    if (gFonts != nullptr) {
        for (std::int32_t i = 0; i < gFonts->count(); ++i) {
            if (FontRecord* record = gFonts->at(i)) {
                DeleteObject(record->handle);
                delete record;
            }
        }
        delete gFonts;
        delete gFontIndex;
        gFonts = nullptr;
        gFontIndex = nullptr;
    }
    if (gPalettes != nullptr) {
        for (std::int32_t i = 0; i < gPalettes->count(); ++i) {
            if (HPALETTE* cell = gPalettes->at(i)) {
                DeleteObject(*cell);
                delete cell;
            }
        }
        delete gPalettes;
        gPalettes = nullptr;
    }
    return true;
}

GwGC::GwGC()
    : mDevice(nullptr), mOwnsDevice(true), mWindow(nullptr), mForeground(kInitialColor),
      mBackground(kInitialColor), mTextMode(kNoClip), mLineWidth(0), mLineStyle(eSolid),
      mPatternStyle(ePatternSolid), mTextSin(0.0), mTextCos(1.0), mFixedForeground(0),
      mFixedBackground(0), mPen(nullptr), mBrush(nullptr), mFlipY(false), mFlipBase(0),
      mDpiDevice(nullptr), mDpiY(96) {}

GwGC::GwGC(GwWindow const* window, void* device) : GwGC() {
    if (window != nullptr) {
        mWindow = window->window();
        const_cast<GwWindow*>(window)->addEvent(this);
    }
    if (device == nullptr) {
        mDevice = mWindow != nullptr ? GetDC(static_cast<HWND>(mWindow)) : nullptr;
        mOwnsDevice = true;
    } else {
        mDevice = device;
        mOwnsDevice = false;
    }
    prepareDevice();
}

GwGC::GwGC(void* window) : GwGC() {
    mWindow = window;
    mDevice = window != nullptr ? GetDC(static_cast<HWND>(window)) : nullptr;
    prepareDevice();
}

GwGC::GwGC(GwGC const& other) : GwGC() {
    static_cast<void>(other);
    mOwnsDevice = false;
}

GwGC& GwGC::operator=(GwGC const& other) {
    if (this == &other)
        return *this;
    GwObject::operator=(other);
    mDevice = other.mDevice;
    mOwnsDevice = other.mOwnsDevice;
    mWindow = other.mWindow;
    mForeground = other.mForeground;
    mBackground = other.mBackground;
    mTextMode = other.mTextMode;
    mLineWidth = other.mLineWidth;
    mLineStyle = other.mLineStyle;
    mPatternStyle = other.mPatternStyle;
    mTextSin = other.mTextSin;
    mTextCos = other.mTextCos;
    mFixedForeground = other.mFixedForeground;
    mFixedBackground = other.mFixedBackground;
    // The pen and brush stay with the context that made them.
    mPen = nullptr;
    mBrush = nullptr;
    return *this;
}

GwGC::~GwGC() {
    // The context leaves the window's listeners in Object's destructor, which detaches from
    // every sender: safe also when the window object is gone or the handle's user data
    // belongs to a window of another kind.
    if (mDevice != nullptr) {
        restoreDevice();
        if (mOwnsDevice)
            ReleaseDC(static_cast<HWND>(mWindow), dc(mDevice));
        mDevice = nullptr;
    }
}

GwGC* GwGC::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwGC(hwnd) : nullptr;
}

int GwGC::fontCount() {
    return gFonts != nullptr ? static_cast<int>(gFontIndex->size()) : 0;
}

void GwGC::prepareDevice() {
    HDC device = dc(mDevice);
    if (device == nullptr)
        return;
    HPALETTE palette = halftonePalette(device);
    SaveDC(device);
    if (palette != nullptr) {
        SelectPalette(device, palette, TRUE);
        RealizePalette(device);
    }
    SetBkMode(device, TRANSPARENT);
    SetROP2(device, R2_COPYPEN);
    SetMapMode(device, MM_ISOTROPIC);
    SetWindowExtEx(device, 1, 1, nullptr);
    SetViewportExtEx(device, 1, -1, nullptr);
    RECT client{};
    GetClientRect(static_cast<HWND>(mWindow), &client);
    SetViewportOrgEx(device, 0, client.bottom, nullptr);
}

void GwGC::restoreDevice() {
    HDC device = dc(mDevice);
    if (device == nullptr)
        return;
    RestoreDC(device, -1);
    // Deselected by the restore: no longer in use.
    releasePenAndBrush();
}

void GwGC::releasePenAndBrush() {
    if (mPen != nullptr)
        DeleteObject(static_cast<HPEN>(mPen));
    if (mBrush != nullptr)
        DeleteObject(static_cast<HBRUSH>(mBrush));
    mPen = nullptr;
    mBrush = nullptr;
}

void GwGC::receiveEvent(Object* sender, Event const& event, EventData const* data) {
    auto* window = dynamic_cast<GwWindow*>(sender);
    if (window != nullptr && event.type() == 2) {
        // The window is going away: a device fetched from it goes back now.
        window->removeEvent(this);
        if (mDevice != nullptr && mOwnsDevice && mWindow != nullptr) {
            restoreDevice();
            ReleaseDC(static_cast<HWND>(mWindow), dc(mDevice));
            mDevice = nullptr;
        }
        mWindow = nullptr;
        return;
    }
    if (window != nullptr && event.type() == GwEventWindowResized) {
        if (mWindow != nullptr && mDevice != nullptr) {
            RECT client{};
            GetClientRect(static_cast<HWND>(mWindow), &client);
            SetViewportOrgEx(dc(mDevice), 0, client.bottom, nullptr);
        }
        return;
    }
    GwObject::receiveEvent(sender, event, data);
}

GwGC& GwGC::drawStart() {
    if (mDevice != nullptr) {
        POINT origin{};
        GetViewportOrgEx(dc(mDevice), &origin);
        RECT client{};
        GetClientRect(static_cast<HWND>(mWindow), &client);
        if (origin.y != client.bottom)
            SetViewportOrgEx(dc(mDevice), 0, client.bottom, nullptr);
    } else if (mWindow != nullptr) {
        // Never the screen's device: a context without a window stays without a device.
        mDevice = GetDC(static_cast<HWND>(mWindow));
        mOwnsDevice = true;
        prepareDevice();
    }
    return *this;
}

GwGC& GwGC::drawStop() {
    if (mDevice == nullptr)
        return *this;
    restoreDevice();
    if (mOwnsDevice) {
        ReleaseDC(static_cast<HWND>(mWindow), dc(mDevice));
        mDevice = nullptr;
    }
    return *this;
}

GwGC& GwGC::setColor(unsigned long color, int which) {
    COLORREF const value = colorRef(color);
    if (which != 0) {
        if ((mFixedBackground & 0x80000000UL) != 0)
            return *this;
        mBackground = value;
        setPatternStyle(mPatternStyle);
        SetBkColor(dc(mDevice), value);
    } else {
        if ((mFixedForeground & 0x80000000UL) != 0)
            return *this;
        mForeground = value;
        setLineStyle(mLineStyle, mLineWidth);
        SetTextColor(dc(mDevice), value);
    }
    return *this;
}

GwGC& GwGC::setColor(unsigned char red, unsigned char green, unsigned char blue, int which) {
    return setColor(0x80000000UL | (static_cast<unsigned long>(blue) << 16) |
                        (static_cast<unsigned long>(green) << 8) | red,
                    which);
}

GwGC& GwGC::setColorMode(bool fixForeground, bool fixBackground, unsigned long foreground,
                         unsigned long background) {
    if (fixForeground) {
        mFixedForeground = 0;
        setColor(foreground, 0);
        mFixedForeground = mForeground | 0x80000000UL;
    } else {
        mForeground = 0xFFFFFFFFUL;
    }
    if (fixBackground) {
        mFixedBackground = 0;
        setColor(background, 1);
        mFixedBackground = mBackground | 0x80000000UL;
    } else {
        mBackground = 0xFFFFFFFFUL;
    }
    return *this;
}

GwGC& GwGC::getColorMode(bool& fixForeground, bool& fixBackground, unsigned long& foreground,
                         unsigned long& background) {
    fixForeground = (mFixedForeground & 0x80000000UL) != 0;
    fixBackground = (mFixedBackground & 0x80000000UL) != 0;
    foreground = mFixedForeground & 0xFFFFFFUL;
    background = mFixedBackground & 0xFFFFFFUL;
    return *this;
}

void GwGC::selectPen(void* pen) {
    if (pen == nullptr)
        return;
    HGDIOBJ previous = SelectObject(dc(mDevice), static_cast<HPEN>(pen));
    if (previous != nullptr && previous == mPen)
        DeleteObject(previous);
    mPen = pen;
}

void GwGC::selectBrush(void* brush) {
    if (brush == nullptr)
        return;
    HGDIOBJ previous = SelectObject(dc(mDevice), static_cast<HBRUSH>(brush));
    if (previous != nullptr && previous == mBrush)
        DeleteObject(previous);
    mBrush = brush;
}

GwGC& GwGC::setLineStyle(eLineStyle style, unsigned int width) {
    mLineStyle = style;
    mLineWidth = width;
    if (mDevice == nullptr)
        return *this;
    LOGPEN pen{};
    pen.lopnStyle = static_cast<UINT>(style);
    pen.lopnWidth.x = static_cast<LONG>(width);
    pen.lopnWidth.y = static_cast<LONG>(width);
    pen.lopnColor = mForeground;
    selectPen(CreatePenIndirect(&pen));
    return *this;
}

GwGC& GwGC::setPatternStyle(ePatternStyle pattern) {
    mPatternStyle = pattern;
    if (mDevice == nullptr)
        return *this;
    LOGBRUSH brush{};
    brush.lbStyle = pattern != ePatternSolid ? BS_HATCHED : BS_SOLID;
    brush.lbColor = mBackground;
    brush.lbHatch = pattern != ePatternSolid ? static_cast<ULONG_PTR>(pattern - 1) : 0;
    selectBrush(CreateBrushIndirect(&brush));
    return *this;
}

GwGC& GwGC::setDrawMode(eDrawMode mode, bool background) {
    HDC device = dc(mDevice);
    if (background) {
        if (mode == eCopy)
            SetBkMode(device, OPAQUE);
        else if (mode == eNop)
            SetBkMode(device, TRANSPARENT);
        return *this;
    }
    switch (mode) {
    case eCopy:
        SetROP2(device, R2_COPYPEN);
        break;
    case eInvert:
    case eXor:
        SetROP2(device, R2_NOT);
        break;
    case eNop:
        SetROP2(device, R2_NOP);
        break;
    }
    return *this;
}

GwGC& GwGC::setTextMode(unsigned int flags) {
    mTextMode = (flags & 0xF0000000U) | ((flags & kKeepClip) != 0 ? 0 : kNoClip);
    return *this;
}

GwGC& GwGC::setFont(String const& face, int size, double angle) {
    double const tenths = angle * 1800.0 / kPi;
    long const escapement = rounded(gdi_orientation != 0 ? tenths : 3600.0 - tenths);
    selectFont(face, size, angle, escapement);
    return *this;
}

void GwGC::selectFont(String const& face, int size, double angle, long escapement) {
    LOGFONTA font;
    std::memset(&font, 0, sizeof font); // compared byte for byte, padding included
    HDC device = dc(mDevice);
    if (device != nullptr && device != mDpiDevice) {
        mDpiY = GetDeviceCaps(device, LOGPIXELSY);
        mDpiDevice = device;
    }
    font.lfHeight = MulDiv(-size, mDpiY, 72);
    font.lfEscapement = escapement;
    font.lfOrientation = escapement;
    font.lfWeight = FW_NORMAL;
    font.lfCharSet = DEFAULT_CHARSET;
    // Cut to the field: a longer face name is never copied past it.
    std::strncpy(font.lfFaceName, face.c_str(), sizeof font.lfFaceName - 1);
    // Level text, the common case, needs no trigonometry.
    mTextSin = angle == 0.0 ? 0.0 : std::sin(angle);
    mTextCos = angle == 0.0 ? 1.0 : std::cos(angle);
    HFONT handle = tableFont(font);
    if (handle != nullptr && device != nullptr)
        SelectObject(device, handle);
}

unsigned int GwGC::rectangleFormat(unsigned int flags) const {
    unsigned int format =
        flags == 0 ? mTextMode : ((flags | ((flags & kKeepClip) != 0 ? 0 : kNoClip)) & 0x0FFFFFFF);
    return format | DT_NOPREFIX | DT_EXPANDTABS;
}

GwGC& GwGC::drawText(String const& text, GwRectangle const& rectangle, unsigned int flags) {
    RECT rect{rectangle.x(), deviceY(rectangle.y()), rectangle.x() + rectangle.width(),
              deviceY(rectangle.y() + rectangle.height())};
    drawTextEx(dc(mDevice), text, rect, rectangleFormat(flags));
    return *this;
}

GwDimension GwGC::calcText(String const& text) {
    RECT rect{};
    // Without a device there is nothing to measure with: an empty extent. (Wine's DrawTextExA
    // fills the rectangle with undefined values when measuring on a null device.)
    if (mDevice == nullptr)
        return GwDimension(0, 0);
    drawTextEx(dc(mDevice), text, rect, DT_CALCRECT | DT_NOPREFIX | DT_EXPANDTABS);
    return GwDimension(rect.right, -rect.bottom);
}

GwGC& GwGC::drawText(String const& text, GwPosition const& position, unsigned int flags) {
    GwDimension const extent = calcText(text);
    unsigned int const placement = flags != 0 ? flags : mTextMode;
    long x = position.x();
    long y = position.y();
    if ((placement & (eCenterY | eBottomY)) != 0) {
        long const h = (placement & eCenterY) != 0 ? extent.height() >> 1 : extent.height();
        x -= rounded(mTextSin * h);
        y += rounded(mTextCos * h);
    }
    if ((placement & (eCenterX | eRightX)) != 0) {
        long const w = (placement & eCenterX) != 0 ? extent.width() / 2 : extent.width();
        x -= rounded(mTextCos * w);
        y -= rounded(mTextSin * w);
    }
    RECT rect{x, deviceY(y), x + 1, deviceY(y) + 1};
    drawTextEx(dc(mDevice), text, rect, DT_NOCLIP | DT_NOPREFIX | DT_EXPANDTABS);
    return *this;
}

void GwGC::drawLine2D(long x1, long y1, long x2, long y2) {
    HDC device = dc(mDevice);
    MoveToEx(device, x1, deviceY(y1), nullptr);
    LineTo(device, x2, deviceY(y2));
    endPixel(device, x2, deviceY(y2), mForeground);
}

GwGC& GwGC::drawLine(GwPosition const& from, GwPosition const& to) {
    GwGC::drawLine2D(from.x(), from.y(), to.x(), to.y());
    return *this;
}

void GwGC::drawPixel(long x, long y) {
    SetPixel(dc(mDevice), x, deviceY(y), mForeground);
}

GwGC& GwGC::drawPixel(GwPosition const& position) {
    GwGC::drawPixel(position.x(), position.y());
    return *this;
}

bool GwGC::compArcMidPoint(GwPosition const& a, GwPosition const& b, GwPosition const& c,
                           GwPosition& centre) {
    return bisectorCrossing(a, b, b, c, centre) || bisectorCrossing(a, b, a, c, centre) ||
           bisectorCrossing(a, c, b, c, centre);
}

void GwGC::drawArc2D(long ax, long ay, long bx, long by, long cx, long cy) {
    GwPosition const a(ax, deviceY(ay));
    GwPosition const b(bx, deviceY(by));
    GwPosition const c(cx, deviceY(cy));
    GwPosition centre;
    if (!compArcMidPoint(a, b, c, centre))
        return;
    double const dx = double(a.x()) - centre.x();
    double const dy = double(a.y()) - centre.y();
    long const r = rounded(std::sqrt(dx * dx + dy * dy));
    double const cross = double(b.x() - a.x()) * double(c.y() - a.y()) -
                         double(c.x() - a.x()) * double(b.y() - a.y());
    GwPosition const& start = cross > 0 ? a : c;
    GwPosition const& end = cross > 0 ? c : a;
    Arc(dc(mDevice), centre.x() - r, centre.y() + r, centre.x() + r, centre.y() - r, start.x(),
        start.y(), end.x(), end.y());
}

GwGC& GwGC::drawArc(GwPosition const& a, GwPosition const& b, GwPosition const& c) {
    GwGC::drawArc2D(a.x(), a.y(), b.x(), b.y(), c.x(), c.y());
    return *this;
}

void GwGC::drawCircle2D(long x, long y, long radius, bool filled) {
    HDC device = dc(mDevice);
    long const top = deviceY(y) + radius;
    long const bottom = deviceY(y) - radius;
    if (filled)
        Ellipse(device, x - radius, top, x + radius, bottom);
    else
        Arc(device, x - radius, top, x + radius, bottom, x - radius, top, x - radius, top);
}

GwGC& GwGC::drawCircle(GwPosition const& centre, int radius, bool filled) {
    GwGC::drawCircle2D(centre.x(), centre.y(), radius, filled);
    return *this;
}

namespace {

void outline(HDC device, long x1, long y1, long x2, long y2) {
    POINT const corners[5] = {{x1, y1}, {x1, y2}, {x2, y2}, {x2, y1}, {x1, y1}};
    Polyline(device, corners, 5);
}

} // namespace

void GwGC::drawRectangle2D(long x1, long y1, long x2, long y2, bool filled) {
    if (filled)
        Rectangle(dc(mDevice), x1, deviceY(y1), x2 + 1, deviceY(y2 + 1));
    else
        outline(dc(mDevice), x1, deviceY(y1), x2, deviceY(y2));
}

GwGC& GwGC::drawRectangle(GwPosition const& a, GwPosition const& b, bool filled) {
    GwGC::drawRectangle2D(a.x(), a.y(), b.x(), b.y(), filled);
    return *this;
}

GwGC& GwGC::drawRectangle(GwRectangle const& rectangle, bool filled) {
    long const x1 = rectangle.x();
    long const x2 = rectangle.x() + rectangle.width();
    long const y1 = deviceY(rectangle.y());
    long const y2 = deviceY(rectangle.y() + rectangle.height());
    if (filled)
        Rectangle(dc(mDevice), x1, y1, x2, y2);
    else
        outline(dc(mDevice), x1, y1, x2, y2);
    return *this;
}

namespace {

// Coordinate pairs as POINTs of the device, through the y flip when there is one.
class DevicePoints {
public:
    template <class Flip>
    DevicePoints(long const* xy, long count, bool flip, Flip deviceY)
        : mPoints(reinterpret_cast<POINT const*>(xy)) {
        if (flip && xy != nullptr && count > 0) {
            mCopy.assign(mPoints, mPoints + count);
            for (POINT& point : mCopy)
                point.y = deviceY(point.y);
            mPoints = mCopy.data();
        }
    }
    POINT const* data() const { return mPoints; }

private:
    POINT const* mPoints;
    std::vector<POINT> mCopy;
};

} // namespace

void GwGC::drawPolyline2D(long count, long* xy) {
    if (xy == nullptr || count <= 0)
        return;
    DevicePoints points(xy, count, mFlipY, [this](long y) { return deviceY(y); });
    Polyline(dc(mDevice), points.data(), static_cast<int>(count));
}

GwGC& GwGC::drawPolyline(GwPosition const* points, int count) {
    GwGC::drawPolyline2D(count, reinterpret_cast<long*>(const_cast<GwPosition*>(points)));
    return *this;
}

void GwGC::drawPolygon2D(long count, long* xy, bool filled) {
    if (xy == nullptr || count <= 0)
        return;
    DevicePoints points(xy, count, mFlipY, [this](long y) { return deviceY(y); });
    HDC device = dc(mDevice);
    POINT const* p = points.data();
    if (filled) {
        Polygon(device, p, static_cast<int>(count));
        return;
    }
    Polyline(device, p, static_cast<int>(count));
    POINT const& first = p[0];
    POINT const& last = p[count - 1];
    if (first.x != last.x || first.y != last.y) {
        MoveToEx(device, first.x, first.y, nullptr);
        LineTo(device, last.x, last.y);
        endPixel(device, last.x, last.y, mForeground);
    }
}

GwGC& GwGC::drawPolygon(GwPosition const* points, int count, bool filled) {
    GwGC::drawPolygon2D(count, reinterpret_cast<long*>(const_cast<GwPosition*>(points)), filled);
    return *this;
}

void GwGC::drawMarker(long x, long y, int) {
    GwGC::drawLine2D(x - 4, y, x + 4, y);
    GwGC::drawLine2D(x, y - 4, x, y + 4);
    GwGC::drawLine2D(x - 4, y - 4, x + 4, y + 4);
    GwGC::drawLine2D(x - 4, y + 4, x + 4, y - 4);
}

GwGC& GwGC::drawMarker(GwPosition const& position, int type) {
    GwGC::drawMarker(position.x(), position.y(), type);
    return *this;
}

void GwGC::drawLineXor2D(long x1, long y1, long x2, long y2) {
    setDrawMode(eInvert, false);
    drawLine2D(x1, y1, x2, y2);
    setDrawMode(eCopy, false);
}

void GwGC::drawArcXor2D(long ax, long ay, long bx, long by, long cx, long cy) {
    setDrawMode(eInvert, false);
    drawArc2D(ax, ay, bx, by, cx, cy);
    setDrawMode(eCopy, false);
}

void GwGC::drawCircleXor2D(long x, long y, long radius, bool filled) {
    setDrawMode(eInvert, false);
    drawCircle2D(x, y, radius, filled);
    setDrawMode(eCopy, false);
}

void GwGC::drawRectangleXor2D(long x1, long y1, long x2, long y2, bool filled) {
    setDrawMode(eInvert, false);
    GwGC::drawRectangle2D(x1, y1, x2, y2, filled);
    setDrawMode(eCopy, false);
}

void GwGC::drawPolylineXor2D(long count, long* xy) {
    setDrawMode(eInvert, false);
    drawPolyline2D(count, xy);
    setDrawMode(eCopy, false);
}

void GwGC::drawPolygonXor2D(long count, long* xy, bool filled) {
    setDrawMode(eInvert, false);
    drawPolygon2D(count, xy, filled);
    setDrawMode(eCopy, false);
}

void GwGC::drawMarkerXor(long x, long y, int type) {
    setDrawMode(eInvert, false);
    drawMarker(x, y, type);
    setDrawMode(eCopy, false);
}
