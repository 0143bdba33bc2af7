// The gallery's dialog of every control kind: its template (gallery.rc) gives each control an
// object of its library class through the attribute data; the lists are filled, the buttons
// set, the picture loaded, and the owner-drawn button drawn by a handler. Shown modelessly,
// so that it goes with its owner when the program ends.
#include "DemoGallery.h"

#include <windows.h>

#include "DemoApplication.h"
#include "DemoGalleryIds.h"
#include "resource.h"

namespace {

// Draws the owner-drawn button: a blue face with its text.
class DemoUserButtonPainter : public GwEventHandler {
public:
    int cbExpose(GwWindow& window, GwGC& gc, unsigned int flags) override {
        if (flags != 0)
            return GwResultContinue;
        RECT client{};
        GetClientRect(static_cast<HWND>(window.window()), &client);
        GwRectangle const all(0, 0, client.right, client.bottom);
        gc.setColor(40, 90, 170);    // the pen
        gc.setColor(40, 90, 170, 1); // the brush and the text's background
        gc.drawRectangle(all, true);
        gc.setColor(255, 255, 255);
        gc.drawText(window.text(), GwPosition(client.right / 2, client.bottom / 2),
                    GwGC::eCenterX | GwGC::eCenterY);
        return GwResultHandled;
    }
};

// Windows-1252 texts.
char const* const kStreets[] = {"Bahnhofstra\xDF"
                                "e",
                                "Marktplatz",
                                "Schlo\xDF"
                                "allee",
                                "Am M\xFChlbach",
                                "K\xF6nigsweg",
                                "Lindenstra\xDF"
                                "e"};
char const* const kColours[] = {"Schwarz", "Wei\xDF", "Gr\xFCn", "Blau"};

template <class Control> Control* control(GwDialog& dialog, int id) {
    return dynamic_cast<Control*>(dialog.child(static_cast<unsigned long long>(id)));
}

void showControls(GwFrame& owner) {
    DemoApplication& app = DemoApplication::demo();
    auto* const dialog =
        dynamic_cast<GwDialog*>(app.resource(true).loadDialog(IDD_CONTROLS, &owner));
    if (dialog == nullptr)
        return;
    if (auto* const toggle = control<GwButton>(*dialog, IDC_G_TOGGLE))
        toggle->setValue(GwWindow::eChecked);
    if (auto* const three = control<GwButton>(*dialog, IDC_G_THREE))
        three->setValue(GwWindow::eIndeterminate);
    if (auto* const second = control<GwButton>(*dialog, IDC_G_SECOND))
        second->setValue(GwWindow::eChecked);
    if (auto* const user = control<GwButton>(*dialog, IDC_G_USER))
        user->add(new DemoUserButtonPainter);
    if (auto* const number = control<GwEditField>(*dialog, IDC_G_NUMBER))
        number->setFormat("%ld").setValue(12L);
    if (auto* const picture = control<GwImage>(*dialog, IDC_G_IMAGE))
        picture->setImage(IDB_PAGE, app.resource(true), GwImage::eBitmap, true);
    if (auto* const list = control<GwListBox>(*dialog, IDC_G_LIST)) {
        unsigned long long id = 1;
        for (char const* street : kStreets)
            list->add(GwTextItem(id++, street));
        list->setSelected(2, true);
    }
    if (auto* const combo = control<GwComboBox>(*dialog, IDC_G_COMBO)) {
        unsigned long long id = 1;
        for (char const* colour : kColours)
            combo->add(GwTextItem(id++, colour));
        combo->setSelected(3, true);
    }
    // Placed beside the owner's top-left corner; the library counts from the screen's bottom.
    RECT owned{};
    GetWindowRect(static_cast<HWND>(owner.window()), &owned);
    RECT own{};
    GetWindowRect(static_cast<HWND>(dialog->window()), &own);
    long const screenHeight = app.systemValue(GwApplication::eScreenHeight);
    dialog->setPosition(owned.left + 60, screenHeight - (owned.top + 60) - (own.bottom - own.top));
    dialog->setModal(false);
    dialog->setVisible(true);
}

} // namespace

bool demoGalleryShows(std::string const& view) {
    return view == "controls";
}

bool demoGalleryShow(GwFrame& frame, std::string const& view) {
    if (view != "controls")
        return false;
    showControls(frame);
    return true;
}
