// The lists view of the demo.
#include "DemoLists.h"

#include <windows.h>

#include "DemoApplication.h"
#include "resource.h"

namespace {

constexpr unsigned long long kListsId = 4;
constexpr unsigned long long kTabId = 4100;
constexpr unsigned long long kStreetsId = 4101; // the list box, the first page
constexpr unsigned long long kNoteId = 4103;    // the text, the third page

// Windows-1252 texts: the controls are ANSI windows.
char const* const kStreets[] = {"Hauptstra\xDF"
                                "e",
                                "Bahnhofstra\xDF"
                                "e",
                                "Schillerstra\xDF"
                                "e",
                                "Goethestra\xDF"
                                "e",
                                "Gartenweg",
                                "Am M\xFChlbach",
                                "Lindenallee",
                                "Rathausplatz",
                                "Kirchgasse",
                                "Fu\xDFg\xE4ngerzone",
                                "Schlossberg",
                                "Talstra\xDF"
                                "e"};
int const kSizes[] = {6, 8, 9, 10, 11, 12, 14, 16, 18, 20, 24, 28, 32, 36};

DemoApplication& app() {
    return DemoApplication::demo();
}

// The text of the current line of a list or combo box.
template <class Lines> String currentText(Lines const& lines) {
    int const position = lines.selectedAt();
    return position >= 0 ? lines.itemAt(position).text() : String();
}

// Reports the controls' events in the frame's status bar.
class DemoListEvents : public GwEventHandler {
public:
    explicit DemoListEvents(GwFrame& frame) : mFrame(frame) {}

    int cbSelect(GwWindow& window) override {
        if (auto const* list = dynamic_cast<GwListBox const*>(&window))
            demoStatus(mFrame, app().format(IDS_LIST_SELECTED, 0, currentText(*list)));
        else if (auto const* combo = dynamic_cast<GwComboBox const*>(&window))
            demoStatus(mFrame, app().format(IDS_SIZE_SELECTED, 0, currentText(*combo)));
        else if (auto const* tab = dynamic_cast<GwTab const*>(&window))
            demoStatus(mFrame,
                       app().format(IDS_TAB_SELECTED, 0, tab->itemAt(tab->selectedAt()).text()));
        return GwResultContinue;
    }
    int cbActivate(GwWindow& window) override {
        if (auto const* list = dynamic_cast<GwListBox const*>(&window))
            demoStatus(mFrame, app().format(IDS_LIST_ACTIVATED, 0, currentText(*list)));
        else if (auto const* combo = dynamic_cast<GwComboBox const*>(&window))
            demoStatus(mFrame, app().format(IDS_SIZE_SELECTED, 0, currentText(*combo)));
        return GwResultContinue;
    }

private:
    GwFrame& mFrame;
};

// A frame owned by the main frame, with the tab control as its client.
class DemoListsFrame : public GwFrame {
public:
    explicit DemoListsFrame(GwFrame& owner) : GwFrame(owner, kListsId, 0, true) {
        setText(app().text(IDS_LISTS_TITLE));
        setDimension(560, 400);

        // The pages: siblings of the tab control, and a dialog loaded from the template.
        auto* const streets = new GwListBox(*this, kStreetsId, false, GwWindow::eSorted);
        for (unsigned long long i = 0; i < sizeof kStreets / sizeof *kStreets; ++i)
            streets->add(GwTextItem(100 + i, kStreets[i]));
        auto* const note = new GwText(*this, kNoteId, app().text(IDS_LISTS_NOTE));

        mTab = new GwTab(*this, kTabId); // deleted with its window, as the pages are
        setClient(mTab);
        mTab->add(GwTabItem(kStreetsId, IDS_TAB_STREETS, kStreetsId));
        mTab->add(GwTabItem(IDD_SIZES_PAGE, IDS_TAB_SIZES, IDD_SIZES_PAGE));
        mTab->add(GwTabItem(kNoteId, IDS_TAB_NOTE, kNoteId));
        fillSizes();
        mTab->setSelectedAt(0);
        streets->setSelectedAt(0, true);
        // The controls made in code take the dialogs' font (a frame sets none of its own).
        auto const font = reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT));
        for (GwWindow* control : {static_cast<GwWindow*>(streets), static_cast<GwWindow*>(note),
                                  static_cast<GwWindow*>(mTab)})
            SendMessageA(static_cast<HWND>(control->window()), WM_SETFONT, font, TRUE);
        add(new DemoListEvents(*this));
        add(new DemoCommands(*this, false));
        demoStatus(*this, app().text(IDS_LISTS_READY));
    }
    ~DemoListsFrame() override;

private:
    // The combo box of the page loaded from the template: font sizes, typed ones corrected.
    void fillSizes() {
        HWND const page = GetDlgItem(static_cast<HWND>(window()), IDD_SIZES_PAGE);
        auto* const sizes =
            dynamic_cast<GwComboBox*>(GwWindow::window(GetDlgItem(page, IDC_SIZE_COMBO), true));
        if (sizes == nullptr)
            return;
        for (int points : kSizes) {
            char text[8];
            wsprintfA(text, "%d", points);
            sizes->add(GwTextItem(static_cast<unsigned long long>(points), text));
        }
        sizes->setFormat("%ld").setMinValue(kSmallestPoints).setMaxValue(kLargestPoints);
        sizes->checkMinValue(true).checkMaxValue(true).checkFormat(true);
        sizes->setSelected(static_cast<unsigned long long>(app().fontPoints()), true);
    }

    GwTab* mTab;
};

DemoListsFrame* gLists = nullptr; // the open lists view, if any

DemoListsFrame::~DemoListsFrame() {
    if (gLists == this)
        gLists = nullptr;
}

} // namespace

bool demoListsCommand(GwFrame& frame, unsigned long long id) {
    if (id != ID_LISTS)
        return false;
    if (gLists == nullptr)
        gLists = new DemoListsFrame(frame); // deleted with its window
    gLists->setVisible(true);
    return true;
}
