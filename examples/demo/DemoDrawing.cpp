// The drawing view of the demo.
#include "DemoDrawing.h"

#include <windows.h>

#include <cmath>
#include <iterator>

#include "DemoApplication.h"
#include "resource.h"

namespace {

constexpr unsigned long long kDrawingId = 3;
constexpr unsigned long long kViewportId = 3001;

double const kPi = 4.0 * std::atan(1.0);

// Quarterly figures of the chart.
struct Bar {
    char const* label;
    long value;
};
// Windows-1252 texts: the library draws with the ANSI functions.
Bar const kBars[] = {
    {"J\xE4nner", 42}, {"Februar", 65}, {"M\xE4rz", 31}, {"April", 80}, {"Mai", 57}};

// The size of a window's client area.
GwDimension clientSize(GwWindow const& window) {
    RECT client{};
    GetClientRect(static_cast<HWND>(window.window()), &client);
    return GwDimension(client.right, client.bottom);
}

// The chart's handler: it draws in phase 0 of every paint.
class DemoChart : public GwEventHandler {
public:
    int cbExpose(GwWindow& window, GwGC& gc, unsigned int flags) override {
        if (flags != 0)
            return GwResultContinue;
        GwDimension const size = clientSize(window);
        demoDrawChart(gc, size.width(), size.height());
        return GwResultHandled;
    }
};

// A frame owned by the main frame, with the viewport as its client.
class DemoDrawingFrame : public GwFrame {
public:
    explicit DemoDrawingFrame(GwFrame& owner) : GwFrame(owner, kDrawingId, IDR_DRAWING_MENU, true) {
        setText(DemoApplication::demo().text(IDS_DRAWING_TITLE));
        mViewport = new GwViewport(*this, kViewportId); // deleted with its window
        mViewport->setColor(0x00FFFFF0UL);
        mViewport->add(new DemoChart);
        setClient(mViewport);
        setDimension(640, 460);
        add(new DemoCommands(*this, false));
    }
    ~DemoDrawingFrame() override;

    GwViewport& viewport() const { return *mViewport; }

private:
    GwViewport* mViewport;
};

DemoDrawingFrame* gDrawing = nullptr; // the open drawing view, if any

DemoDrawingFrame::~DemoDrawingFrame() {
    if (gDrawing == this)
        gDrawing = nullptr;
}

// The chart recorded into a metafile context of the viewport's size.
void record(GwGCWMF& metafile) {
    GwDimension const size = clientSize(gDrawing->viewport());
    metafile.setDimension(static_cast<int>(size.width()), static_cast<int>(size.height()));
    metafile.record();
    demoDrawChart(metafile, size.width(), size.height());
}

String exportPath(char const* name) {
    return DemoApplication::demo().path(GwApplication::eExecutableDirectory) + name;
}

} // namespace

void demoDrawChart(GwGC& gc, long width, long height) {
    long const left = 60;
    long const bottom = 50;
    long const right = width - 30;
    long const top = height - 50;
    if (right <= left + 50 || top <= bottom + 50)
        return;
    DemoApplication& app = DemoApplication::demo();

    // Title.
    gc.setColor(0x00203060UL, 0);
    gc.setFont("Tahoma", 14, 0.0);
    gc.drawText(app.text(IDS_CHART_TITLE), GwPosition(width / 2, height - 12), 0x1);

    // Bars, hatched and solid in turn, with their labels at an angle.
    long const slot = (right - left) / static_cast<long>(std::size(kBars));
    gc.setFont("Tahoma", 9, kPi / 6);
    for (std::size_t i = 0; i < std::size(kBars); ++i) {
        long const x = left + static_cast<long>(i) * slot + slot / 4;
        long const y = bottom + (top - bottom) * kBars[i].value / 100;
        gc.setColor(i % 2 == 0 ? 0x004A90D9UL : 0x00F5A623UL, 1);
        gc.setPatternStyle(i % 2 == 0 ? GwGC::ePatternSolid : GwGC::ePatternDiagCross);
        gc.setColor(0x00303030UL, 0);
        gc.drawRectangle(GwPosition(x, bottom + 1), GwPosition(x + slot / 2, y), true);
        gc.drawText(kBars[i].label, GwPosition(x, bottom - 6), 0x2);
    }
    gc.setPatternStyle(GwGC::ePatternSolid);

    // The trend through the tops of the bars, with a marker on each.
    GwPosition trend[std::size(kBars)];
    for (std::size_t i = 0; i < std::size(kBars); ++i)
        trend[i] = GwPosition(left + static_cast<long>(i) * slot + slot / 2,
                              bottom + (top - bottom) * kBars[i].value / 100 + 12);
    gc.setColor(0x00C0392BUL, 0);
    gc.setLineStyle(GwGC::eSolid, 2);
    gc.drawPolyline(trend, static_cast<int>(std::size(trend)));
    gc.setLineStyle(GwGC::eSolid, 0);
    for (GwPosition const& point : trend)
        gc.drawMarker(point, 0);

    // An arc over the best quarter.
    GwPosition const& best = trend[3];
    gc.setColor(0x0027AE60UL, 0);
    gc.drawArc(GwPosition(best.x() - 25, best.y() + 8), GwPosition(best.x(), best.y() + 30),
               GwPosition(best.x() + 25, best.y() + 8));
    gc.setFont("Tahoma", 9, 0.0);
    gc.drawText(app.text(IDS_CHART_BEST), GwPosition(best.x(), best.y() + 34), 0x1 | 0x8);

    // Axes with their captions, the vertical one upright.
    gc.setColor(0x00000000UL, 0);
    gc.drawLine(GwPosition(left, bottom), GwPosition(right, bottom));
    gc.drawLine(GwPosition(left, bottom), GwPosition(left, top));
    for (int step = 0; step <= 4; ++step) {
        long const y = bottom + (top - bottom) * step / 4;
        gc.drawLine(GwPosition(left - 4, y), GwPosition(left, y));
    }
    gc.setFont("Tahoma", 10, kPi / 2);
    gc.drawText(app.text(IDS_CHART_AXIS), GwPosition(left - 30, (bottom + top) / 2), 0x1 | 0x4);
}

bool demoDrawingCommand(GwFrame& frame, unsigned long long id) {
    DemoApplication& app = DemoApplication::demo();
    switch (id) {
    case ID_DRAWING:
        if (gDrawing == nullptr) {
            gDrawing = new DemoDrawingFrame(frame); // deleted with its window
        }
        gDrawing->setVisible(true);
        return true;
    case ID_EXPORT_EMF:
    case ID_EXPORT_WMF: {
        if (gDrawing == nullptr)
            return true;
        bool const enhanced = id == ID_EXPORT_EMF;
        String const file = exportPath(enhanced ? "zeichnung.emf" : "zeichnung.wmf");
        {
            GwGCWMF metafile(file.c_str(), enhanced, !enhanced);
            record(metafile);
        } // written here
        demoStatus(*gDrawing, app.format(IDS_EXPORTED, 0, file));
        return true;
    }
    case ID_COPY_DRAWING: {
        if (gDrawing == nullptr)
            return true;
        GwGCWMF metafile;
        record(metafile);
        metafile.setClipboard();
        demoStatus(*gDrawing, app.text(IDS_COPIED));
        return true;
    }
    default:
        return false;
    }
}
