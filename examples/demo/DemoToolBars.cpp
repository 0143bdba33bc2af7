// The main frame's tool bars and the handler of their buttons.
#include "DemoToolBars.h"

#include <windows.h>

#include <commctrl.h>

#include "DemoApplication.h"
#include "resource.h"

namespace {

// The mask colour of the demo's own images.
constexpr unsigned long kMagenta = 0xFF00FF;
// A separator of this width starts a new group.
constexpr int kGroupGap = 8;
// The combo box of font sizes and the sizes it offers.
constexpr int kComboWidth = 60;
constexpr int kSizes[] = {8, 10, 14};

// The commands that the buttons stand for.
struct Button {
    unsigned long long id;
    unsigned long long command;
};
constexpr Button kButtons[] = {
    {ID_TB_NEW, 0xF820},         // the library's "Neu"
    {ID_TB_OPEN, 0xF821},        // the library's "Öffnen..."
    {ID_TB_SAVE, 0xF823},        // the library's "Speichern unter..."
    {ID_TB_DRAWING, ID_DRAWING}, // the demo's own images
    {ID_TB_LISTS, ID_LISTS},     {ID_TB_SETTINGS, ID_SETTINGS}, // the bar at the left edge
    {ID_TB_MESSAGE, ID_MESSAGE}, {ID_TB_INFO, 0xF886},          // the library's "%s-&Info"
};

// Clicks on the buttons run the commands; a size chosen in the combo box sets the font.
class DemoToolBarCommands : public GwEventHandler {
public:
    DemoToolBarCommands(GwFrame& frame, GwComboBox& sizes) : mFrame(&frame), mSizes(&sizes) {}

    int cbActivate(GwWindow& window) override {
        auto* const bar = dynamic_cast<GwToolBar*>(&window);
        if (bar == nullptr)
            return GwResultContinue;
        for (Button const& button : kButtons) {
            if (button.id == bar->selected()) {
                DemoApplication::demo().command(*mFrame, button.command);
                return GwResultHandled | GwResultStop;
            }
        }
        return GwResultContinue;
    }

    int cbSelect(GwWindow& window) override {
        if (&window != mSizes)
            return GwResultContinue;
        unsigned long long const points = mSizes->selected();
        if (points != ~0ull) {
            DemoApplication& app = DemoApplication::demo();
            app.setFont(static_cast<int>(points), app.fontBold());
        }
        return GwResultHandled | GwResultStop;
    }

private:
    GwFrame* mFrame;    // not owned: the handler goes with the frame
    GwComboBox* mSizes; // owned by the top bar
};

GwToolBar* gTopBar = nullptr;

} // namespace

void demoAddToolBars(GwFrame& frame) {
    // The top bar: the standard images first (indices 0 to 14), then the demo's own.
    auto* top = new GwToolBar(frame, ID_TOP_BAR);
    top->add(GwBitmap(), kMagenta);
    top->add(GwToolBarItem(ID_TB_NEW, STD_FILENEW))
        .add(GwToolBarItem(ID_TB_OPEN, STD_FILEOPEN))
        .add(GwToolBarItem(ID_TB_SAVE, STD_FILESAVE))
        .add(GwToolBarItem(ID_TB_GAP1, kGroupGap, GwToolBarItem::eSeparator));
    top->load(IDR_TOOLBAR, GwResource(), kMagenta);
    top->add(GwToolBarItem(ID_TB_GAP2, kGroupGap, GwToolBarItem::eSeparator));
    auto* sizes = new GwComboBox(frame, ID_TB_SIZES);
    sizes->setDimension(kComboWidth, 160);
    for (int points : kSizes) {
        char text[8];
        wsprintfA(text, "%d", points);
        sizes->add(GwTextItem(static_cast<unsigned long long>(points), String(text)));
    }
    sizes->setSelected(static_cast<unsigned long long>(DemoApplication::demo().fontPoints()), true);
    top->add(GwToolBarItem(ID_TB_SIZES, *sizes)); // the bar owns the combo box now
    frame.add(top, GwWindow::eTop);
    gTopBar = top;

    // The bar at the left edge: standard images again.
    auto* left = new GwToolBar(frame, ID_LEFT_BAR);
    left->add(GwBitmap(), kMagenta);
    left->add(GwToolBarItem(ID_TB_SETTINGS, STD_PROPERTIES))
        .add(GwToolBarItem(ID_TB_MESSAGE, STD_FIND))
        .add(GwToolBarItem(ID_TB_INFO, STD_HELP));
    frame.add(left, GwWindow::eLeft);

    frame.add(new DemoToolBarCommands(frame, *sizes));
}

void demoShowToolTip(GwFrame& frame) {
    if (gTopBar == nullptr)
        return;
    HWND const bar = static_cast<HWND>(gTopBar->window());
    RECT button{};
    SendMessageA(bar, TB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&button));
    POINT point{(button.left + button.right) / 2, (button.top + button.bottom) / 2};
    POINT screen = point;
    ClientToScreen(bar, &screen);
    SetForegroundWindow(static_cast<HWND>(frame.window()));
    SetCursorPos(screen.x, screen.y);
    PostMessageA(bar, WM_MOUSEMOVE, 0, MAKELPARAM(point.x, point.y));
}
