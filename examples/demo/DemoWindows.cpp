// The demo's windows and handlers: the text window, the main frame, the multiple-document
// frame, the handler of both frames and the handler of the settings dialog.
#include "DemoApplication.h"

#include <windows.h>

#include "DemoFiles.h"
#include "resource.h"

GW_CLASS_NONE(DemoText, "DemoText", "GwControl")
GW_CLASS_NONE(DemoFrame, "DemoFrame", "GwFrame")
GW_CLASS_NONE(DemoMDIFrame, "DemoMDIFrame", "GwMDIFrame")
GW_CLASS_NONE(DemoCommands, "DemoCommands", "GwEventHandler")
GW_CLASS_NONE(DemoSettingsHandler, "DemoSettingsHandler", "GwEventHandler")

namespace {

constexpr unsigned long long kMainId = 1;
constexpr unsigned long long kMDIId = 2;

// The first three documents have texts of their own.
constexpr int kWrittenDocuments = 3;

HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

DemoApplication& app() {
    return DemoApplication::demo();
}

// Places a top-level window with its top-left corner at (left, top) of the screen. The
// library counts positions from the bottom of the screen, upward.
void place(GwWindow& window, long left, long top, long width, long height) {
    long const screenHeight = app().systemValue(GwApplication::eScreenHeight);
    window.setDimension(width, height);
    window.setPosition(left, screenHeight - top - height);
}

} // namespace

// --- DemoText -------------------------------------------------------------------------------

DemoText::DemoText(GwWindow& parent, String const& text) : GwControl(createWindow(parent, text)) {
    app().enrol(this);
}

DemoText::~DemoText() {
    app().forget(this);
}

void* DemoText::createWindow(GwWindow& parent, String const& text) {
    DWORD const style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL |
                        ES_WANTRETURN | ES_NOHIDESEL;
    return CreateWindowExA(WS_EX_CLIENTEDGE, "EDIT", text.c_str(), style, 0, 0, 0, 0,
                           hwndOf(parent), reinterpret_cast<HMENU>(IDC_TEXT),
                           GetModuleHandleA(nullptr), nullptr);
}

void DemoText::setFont(void* font) {
    SendMessageA(hwndOf(*this), WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

// --- DemoFrame ------------------------------------------------------------------------------

DemoFrame::DemoFrame() : GwFrame(kMainId, IDR_MAIN_MENU) {
    setMenuStyle(eFileMenu | eHelpMenu);
    setText(app().text(IDS_TITLE));
    setClient(new DemoText(*this, app().lines(IDS_WELCOME)));
    place(*this, 40, 30, 760, 520);
}

void DemoFrame::showReady() {
    demoStatus(*this, app().text(IDS_READY));
}

long long DemoFrame::msgHandler(unsigned long long msg, unsigned long long wParam,
                                long long lParam) {
    if (msg == WM_CTLCOLOREDIT) {
        // The text window is drawn in the text colour chosen with "Textfarbe...".
        auto const device = reinterpret_cast<HDC>(wParam);
        unsigned long const colour = demoTextColor();
        SetTextColor(device, RGB((colour >> 16) & 0xFF, (colour >> 8) & 0xFF, colour & 0xFF));
        SetBkColor(device, GetSysColor(COLOR_WINDOW));
        return reinterpret_cast<long long>(GetSysColorBrush(COLOR_WINDOW));
    }
    long long const answer = GwFrame::msgHandler(msg, wParam, lParam);
    if (msg == WM_EXITMENULOOP)
        showReady();
    return answer;
}

// --- DemoMDIFrame ---------------------------------------------------------------------------

DemoMDIFrame::DemoMDIFrame()
    : GwMDIFrame(kMDIId, IDR_MDI_MENU, eFileMenu | eWindowMenu | eHelpMenu), mDocuments(0) {
    // The frame hands the client its own window where WM_MDISETMENU expects the frame menu,
    // and the client refuses the message. Hand it the window menu ("Fenster", before "Hilfe")
    // here, so that the menu lists the documents.
    if (GwMenu* const bar = menuBar()) {
        GwMenu* const windowMenu = bar->itemAt(bar->size() - 2).menu();
        if (windowMenu != nullptr && mdiClient() != nullptr)
            SendMessageA(hwndOf(*mdiClient()), WM_MDISETMENU, 0,
                         reinterpret_cast<LPARAM>(windowMenu->window()));
        DrawMenuBar(hwndOf(*this));
    }
    setText(app().text(IDS_MDI_TITLE));
    place(*this, 60, 50, 900, 600);
}

// Tiling places the children in their order from the top: the last one made goes first.
void DemoMDIFrame::addFirstDocuments() {
    for (int number = kWrittenDocuments; number >= 1; --number)
        addDocument(number);
    mDocuments = kWrittenDocuments;
    mdiClient()->setArrange(GwMDIClient::eTileVertical);
}

GwMDIChildFrame& DemoMDIFrame::addDocument() {
    return addDocument(++mDocuments);
}

GwMDIChildFrame& DemoMDIFrame::addDocument(int number) {
    auto* const document = new GwMDIChildFrame(*this);
    String text;
    if (number <= kWrittenDocuments) {
        unsigned const first = IDS_DOCUMENT + 10 * static_cast<unsigned>(number);
        document->setText(app().text(first));
        text = app().lines(first + 1);
    } else {
        document->setText(app().format(IDS_NEW_DOCUMENT, number));
        text = app().format(IDS_NEW_DOCUMENT + 1, number) + "\r\n\r\n" +
               app().text(IDS_NEW_DOCUMENT + 3);
    }
    document->setClient(new DemoText(*document, text));
    document->setVisible(true);
    // The window menu lists the child with the title it had when it was made (none): have
    // the client list the titles again.
    SendMessageA(hwndOf(*mdiClient()), WM_MDIREFRESHMENU, 0, 0);
    DrawMenuBar(hwndOf(*this));
    return *document;
}

void DemoMDIFrame::showReady() {
    demoStatus(*this, app().text(IDS_MDI_READY));
}

long long DemoMDIFrame::msgHandler(unsigned long long msg, unsigned long long wParam,
                                   long long lParam) {
    long long const answer = GwMDIFrame::msgHandler(msg, wParam, lParam);
    if (msg == WM_EXITMENULOOP)
        showReady();
    return answer;
}

// --- DemoCommands ---------------------------------------------------------------------------

DemoCommands::DemoCommands(GwFrame& frame, bool main) : mFrame(&frame), mMain(main) {}

// A chosen menu command reaches the frame's handlers as an activation of the menu, whose
// selected() tells the command. Commands the demo does not take go on to the library.
int DemoCommands::cbActivate(GwWindow& window) {
    auto* const menu = dynamic_cast<GwMenu*>(&window);
    if (menu == nullptr)
        return GwResultContinue;
    if (app().command(*mFrame, menu->selected()))
        return GwResultHandled | GwResultStop;
    return GwResultContinue;
}

int DemoCommands::cbTimer(GwWindow&) {
    app().tick(*mFrame);
    return GwResultContinue;
}

// Closing the main window ends the program (the frame does that when nobody keeps it); a
// second window only goes.
int DemoCommands::cbClose(GwWindow& window) {
    if (mMain)
        return GwResultContinue;
    DestroyWindow(hwndOf(window));
    return GwResultHandled | GwResultStop;
}

int DemoCommands::cbDestroy(GwWindow&) {
    app().forget(mFrame);
    return GwResultContinue;
}

// --- DemoSettingsHandler --------------------------------------------------------------------

int DemoSettingsHandler::cbActivate(GwWindow& window) {
    auto* const dialog = dynamic_cast<GwDialog*>(window.root(false));
    if (dialog == nullptr)
        return GwResultContinue;
    switch (window.id()) {
    case IDOK: {
        // Enter presses OK without leaving the field, so the size is checked here too.
        auto* const field = dynamic_cast<GwEditField*>(dialog->child(IDC_FONT_SIZE));
        long const points = field != nullptr ? static_cast<long>(*field) : 0;
        if (points < kSmallestPoints || points > kLargestPoints) {
            GwMessageBox box(dialog);
            box.setText(app().text(IDS_MESSAGE_TITLE));
            box.setMessage(app().text(IDS_BAD_SIZE));
            box.setIconStyle(GwMessageBox::eIconExclamation);
            box.setVisible(true);
            if (field != nullptr)
                field->setFocus();
            return GwResultHandled | GwResultStop; // the dialog stays
        }
        auto const* const bold = dynamic_cast<GwButton const*>(dialog->child(IDC_BOLD));
        int face = 0;
        for (int id = IDC_FACE_SANS; id <= IDC_FACE_MONO; ++id) {
            auto const* const radio = dynamic_cast<GwButton const*>(dialog->child(id));
            if (radio != nullptr && radio->value() == GwWindow::eChecked)
                face = id - IDC_FACE_SANS;
        }
        app().setFont(static_cast<int>(points),
                      bold != nullptr && bold->value() == GwWindow::eChecked, face);
        dialog->setResult(IDOK);
        dialog->setVisible(false);
        return GwResultHandled | GwResultStop;
    }
    case IDCANCEL:
        dialog->setResult(IDCANCEL);
        dialog->setVisible(false);
        return GwResultHandled | GwResultStop;
    default:
        return GwResultContinue;
    }
}
