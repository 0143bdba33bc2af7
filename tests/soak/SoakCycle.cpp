#include "SoakCycle.h"

#include <windows.h>

#include <psapi.h>

#include <cstdio>

#include <String.h>

#include <GwButton.h>
#include <GwComboBox.h>
#include <GwDialog.h>
#include <GwEditField.h>
#include <GwEventHandler.h>
#include <GwFrame.h>
#include <GwGC.h>
#include <GwGCWMF.h>
#include <GwGeometry.h>
#include <GwItem.h>
#include <GwListBox.h>
#include <GwMenu.h>
#include <GwObject.h>
#include <GwResource.h>
#include <GwStatic.h>
#include <GwStatusBar.h>
#include <GwTab.h>
#include <GwToolBar.h>
#include <GwViewport.h>

#include <VmGuiTesting/Loop.h>

#include "HandleCount.h"

namespace soak {
namespace {

int const kItems = 100;

// Draws into the viewport once per paint; counted, so the viewport's window owns it.
class Painter : public GwEventHandler {
public:
    explicit Painter(bool& painted) : mPainted(painted) {}
    int cbExpose(GwWindow&, GwGC& gc, unsigned int phase) override {
        if (phase == 0) {
            gc.setColor(0x2060A0);
            gc.drawRectangle(GwRectangle(4, 4, 40, 20), true);
            gc.drawLine(GwPosition(0, 0), GwPosition(60, 30));
            gc.drawText("Dauerlauf", GwPosition(8, 30));
            mPainted = true;
        }
        return GwResultContinue;
    }

private:
    bool& mPainted;
};

HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// The frame with its menu bar, the library's three menus merged in, and a status bar.
GwFrame* openFrame(CycleReport& report) {
    auto* frame = new GwFrame(kFrameId, kMenuBar, true); // deleted with its window
    frame->setMenuStyle(GwFrame::eFileMenu | GwFrame::eWindowMenu | GwFrame::eHelpMenu);
    frame->setText("Dauerlauf");
    report.frame = frame->window() != nullptr && frame->menuBar() != nullptr &&
                   frame->statusBar() != nullptr && GetMenuItemCount(GetMenu(hwndOf(*frame))) == 4;
    return frame;
}

// A tool bar along the top: the buttons and images of resource 700 and a combo box over a
// separator, owned by the bar from then on.
void addToolBar(GwFrame& frame, CycleReport& report) {
    auto* bar = new GwToolBar(frame, kToolBarId); // deleted with its window
    int index = -1;
    bar->load(kToolBar, GwResource(), 0xFF00FF, index);
    auto* combo = new GwComboBox(frame, kToolCombo);
    combo->setDimension(80, 120);
    for (int i = 8; i <= 16; i += 2) {
        char size[8];
        std::snprintf(size, sizeof(size), "%d pt", i);
        combo->add(GwTextItem(static_cast<unsigned long long>(i), size));
    }
    bar->add(GwToolBarItem(kToolCombo, *combo));
    frame.add(bar, GwWindow::eTop);
    report.toolBar = index == 0 && bar->sizeOf() == 4 &&
                     GetParent(static_cast<HWND>(combo->window())) == bar->window();
}

// The viewport as the frame's client, painted once with the frame shown.
GwViewport* paintViewport(GwFrame& frame, CycleReport& report) {
    auto* viewport = new GwViewport(frame, kViewportId); // deleted with its window
    viewport->add(new Painter(report.painted));
    frame.setClient(viewport);
    frame.setVisible(true);
    viewport->invalidate();
    viewport->update();
    return viewport;
}

template <class Control> Control* control(GwWindow& dialog, unsigned long long id) {
    return dynamic_cast<Control*>(dialog.child(id));
}

// The modeless dialog of the template: buttons of every type set, the edit field written,
// the combo and list box filled with 100 items, the image loaded, two tabs added.
GwDialog* openDialog(GwFrame& frame, CycleReport& report) {
    auto* dialog = dynamic_cast<GwDialog*>(GwResource().loadDialog(kDialog, &frame));
    if (dialog == nullptr)
        return nullptr;
    auto* toggle = control<GwToggleButton>(*dialog, 601);
    auto* threeState = control<Gw3StateButton>(*dialog, 602);
    auto* radio = control<GwRadioButton>(*dialog, 604);
    auto* user = control<GwUserButton>(*dialog, 605);
    auto* ownerDrawn = control<GwButton>(*dialog, 606);
    auto* push = control<GwPushButton>(*dialog, IDOK);
    auto* edit = control<GwEditField>(*dialog, 607);
    auto* combo = control<GwComboBox>(*dialog, 608);
    auto* list = control<GwListBox>(*dialog, 609);
    auto* text = control<GwText>(*dialog, 610);
    auto* group = control<GwGroupBox>(*dialog, 611);
    auto* image = control<GwImage>(*dialog, 612);
    auto* tab = control<GwTab>(*dialog, 613);
    if (toggle == nullptr || threeState == nullptr || radio == nullptr || user == nullptr ||
        ownerDrawn == nullptr || push == nullptr || edit == nullptr || combo == nullptr ||
        list == nullptr || text == nullptr || group == nullptr || image == nullptr ||
        tab == nullptr)
        return dialog;
    toggle->setValue(GwWindow::eChecked);
    threeState->setValue(GwWindow::eIndeterminate);
    radio->setValue(GwWindow::eChecked);
    edit->setText("Eingabe im Dauerlauf");
    text->setText("Text");
    group->setText("Gruppe");
    for (int i = 0; i < kItems; ++i) {
        char entry[32];
        std::snprintf(entry, sizeof(entry), "Eintrag %d", i);
        combo->add(GwTextItem(static_cast<unsigned long long>(i + 1), entry));
        list->add(GwTextItem(static_cast<unsigned long long>(i + 1), entry));
    }
    image->setImage(kBitmap, GwResource(), GwImage::eBitmap, false);
    tab->add(GwTabItem(614, 620)).add(GwTabItem(615, 621));
    dialog->setVisible(true);
    report.dialog = list->size() == kItems && combo->size() == kItems && tab->size() == 2 &&
                    SendMessageA(hwndOf(*image), STM_GETIMAGE, IMAGE_BITMAP, 0) != 0;
    return dialog;
}

// A small recording, played into the viewport.
void recordMetafile(GwViewport& viewport, CycleReport& report) {
    GwGCWMF recording;
    recording.setDimension(64, 48).record();
    recording.setColor(0xC00000);
    recording.drawRectangle(GwRectangle(2, 2, 30, 20), true);
    recording.drawCircle(GwPosition(40, 24), 10);
    recording.drawText("WMF", GwPosition(4, 30));
    recording.setPosition(0, 0);
    recording.play(*viewport.gc());
    report.metafile = recording.metafile() != nullptr;
}

void destroy(GwWindow* window) {
    if (window != nullptr && IsWindow(hwndOf(*window)))
        DestroyWindow(hwndOf(*window));
}

} // namespace

CycleReport runCycle() {
    CycleReport report;
    GwFrame* frame = openFrame(report);
    addToolBar(*frame, report);
    GwViewport* viewport = paintViewport(*frame, report);
    GwDialog* dialog = openDialog(*frame, report);
    vmgui_testing::pumpMessages();
    recordMetafile(*viewport, report);
    destroy(dialog);
    destroy(frame);
    vmgui_testing::pumpMessages();
    return report;
}

Figures measure() {
    Figures figures;
    figures.objects = GwObject::liveObjects();
    HandleCount const handles = countHandles();
    figures.user = handles.user;
    figures.gdi = handles.gdi;
    PROCESS_MEMORY_COUNTERS_EX memory{};
    memory.cb = sizeof(memory);
    if (GetProcessMemoryInfo(GetCurrentProcess(),
                             reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof(memory))) {
        // Wine leaves PrivateUsage at 0; PagefileUsage is the same commit charge.
        figures.privateBytes =
            memory.PrivateUsage != 0 ? memory.PrivateUsage : memory.PagefileUsage;
    }
    return figures;
}

bool countsFlat(Figures const& before, Figures const& after) {
    return after.objects == before.objects && after.user == before.user && after.gdi == before.gdi;
}

bool memoryFlat(Figures const& before, Figures const& after) {
    return after.privateBytes * 100 <= before.privateBytes * 101;
}

void print(std::FILE* out, char const* label, long long cycle, Figures const& figures) {
    std::fprintf(out, "%-8s cycle %7lld: objects %6ld  USER %5ld  GDI %5ld  private %10llu\n",
                 label, cycle, figures.objects, figures.user, figures.gdi, figures.privateBytes);
    std::fflush(out);
}

} // namespace soak
