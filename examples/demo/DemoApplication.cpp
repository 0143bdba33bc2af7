// The demo's application: command line, windows, menu commands, the font of the text
// windows, and the timed start-up steps of --show, --ready-file and --exit-after.
#include "DemoApplication.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "DemoDrawing.h"
#include "DemoFiles.h"
#include "DemoGallery.h"
#include "DemoLists.h"
#include "DemoToolBars.h"
#include "resource.h"

GW_CLASS_NONE(DemoApplication, "DemoApplication", "GwApplication")

namespace {

// The timer of the start-up steps: four ticks a second.
constexpr long kTickMilliseconds = 250;
constexpr int kTicksPerSecond = 1000 / kTickMilliseconds;
// --show acts on the second tick; the ready file follows a second and a half later, when
// the menu or dialog has been drawn.
constexpr int kShowTick = 2;
constexpr int kReadyTick = kShowTick + 6;

// The font sizes of the "Größe" menu.
struct SizeEntry {
    unsigned long long command;
    int points;
};
constexpr SizeEntry kSizes[] = {
    {ID_SIZE_SMALL, 8},
    {ID_SIZE_MEDIUM, 10},
    {ID_SIZE_LARGE, 14},
};
constexpr int kDefaultPoints = 10;

// The library's help menu entry "%s-&Info" and its dialog in the library's resources.
constexpr unsigned long long kInfoCommand = 0xF886;
constexpr unsigned long long kInfoDialog = 100;
// The library's file menu entry "&Neu".
constexpr unsigned long long kNewCommand = 0xF820;

HWND hwndOf(GwWindow const& window) {
    return static_cast<HWND>(window.window());
}

// The first occurrence of what in text replaced by with.
String replaced(String const& text, char const* what, String const& with) {
    std::size_t const at = text.find(String(what));
    if (at == String::npos)
        return text;
    return text.substr(0, at) + with + text.substr(at + std::strlen(what));
}

String decimal(int number) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%d", number);
    return String(digits);
}

} // namespace

void demoStatus(GwFrame& frame, String const& text) {
    // The frame writes into the status bar's simple-mode part, which the bar shows only in
    // simple mode: switch it on first.
    HWND const hwnd = hwndOf(frame);
    auto const message = static_cast<UINT>(GwWindow::message());
    SendMessageA(hwnd, message, GwCodeStatusSimple, 1);
    SendMessageA(hwnd, message, GwCodeStatusText, reinterpret_cast<LPARAM>(text.c_str()));
}

DemoApplication::DemoApplication()
    : mStartMDI(false), mExitAfter(0), mMain(nullptr), mMDI(nullptr), mDialog(nullptr),
      mFont(nullptr), mPoints(kDefaultPoints), mBold(false), mFace(0), mTicks(0), mQuitting(false) {
}

DemoApplication::~DemoApplication() {
    if (mFont != nullptr)
        DeleteObject(static_cast<HFONT>(mFont));
}

DemoApplication& DemoApplication::demo() {
    return static_cast<DemoApplication&>(GwApplication::current());
}

bool DemoApplication::parseArguments() {
    for (int i = 1; i < argc(); ++i) {
        std::string const argument = argv(i);
        char const* const value = argv(i + 1);
        if (argument == "--mdi") {
            mStartMDI = true;
        } else if (argument == "--show" && value != nullptr &&
                   (std::strcmp(value, "menu") == 0 || std::strcmp(value, "dialog") == 0 ||
                    std::strcmp(value, "drawing") == 0 || std::strcmp(value, "lists") == 0 ||
                    std::strcmp(value, "open") == 0 || std::strcmp(value, "color") == 0 ||
                    std::strcmp(value, "message") == 0 || std::strcmp(value, "toolbar") == 0 ||
                    demoGalleryShows(value))) {
            mShow = value;
            ++i;
        } else if (argument == "--exit-after" && value != nullptr && std::atoi(value) > 0) {
            mExitAfter = std::atoi(value);
            ++i;
        } else if (argument == "--ready-file" && value != nullptr) {
            mReadyFile = value;
            ++i;
        } else {
            std::fprintf(stderr, "%s\n", text(IDS_USAGE).c_str());
            return false;
        }
    }
    return true;
}

bool DemoApplication::initInstance() {
    setName(text(IDS_APP_NAME));
    if (!parseArguments()) {
        setResult(2);
        return false;
    }
    setFont(kDefaultPoints, false);
    GwFrame& first = mStartMDI ? static_cast<GwFrame&>(openMDI()) : openMain();
    if (!mShow.empty() || mExitAfter > 0 || !mReadyFile.empty())
        startTour(first);
    return true;
}

bool DemoApplication::exitInstance() {
    // The windows that are left go with their objects; the text windows leave with them.
    delete mMDI;
    mMDI = nullptr;
    delete mMain;
    mMain = nullptr;
    return true;
}

String DemoApplication::text(unsigned id) const {
    return resource(true).loadString(id);
}

String DemoApplication::format(unsigned id, int number, String const& extra) const {
    return replaced(replaced(text(id), "%d", decimal(number)), "%s", extra);
}

String DemoApplication::lines(unsigned first) const {
    String all;
    for (unsigned id = first;; ++id) {
        String const line = text(id);
        if (line.empty())
            break;
        if (id != first)
            all += "\r\n";
        // A line of one blank stands for an empty line (an empty string ends the text).
        if (line != " ")
            all += line;
    }
    return all;
}

DemoFrame& DemoApplication::openMain() {
    if (mMain == nullptr) {
        mMain = new DemoFrame;
        mMain->add(new DemoCommands(*mMain, true));
        demoAddToolBars(*mMain);
    }
    mMain->setVisible(true);
    mMain->showReady();
    return *mMain;
}

DemoMDIFrame& DemoApplication::openMDI() {
    if (mMDI == nullptr) {
        mMDI = new DemoMDIFrame;
        // Started with --mdi, the frame is the program's main window.
        mMDI->add(new DemoCommands(*mMDI, mMain == nullptr));
        mMDI->setVisible(true);
        mMDI->addFirstDocuments();
    }
    mMDI->setVisible(true);
    mMDI->showReady();
    return *mMDI;
}

void DemoApplication::forget(GwFrame* frame) {
    if (frame == mMain)
        mMain = nullptr;
    if (frame == mMDI)
        mMDI = nullptr;
}

void DemoApplication::enrol(DemoText* text) {
    mTexts.push_back(text);
    text->setFont(mFont);
}

void DemoApplication::forget(DemoText* text) {
    mTexts.erase(std::remove(mTexts.begin(), mTexts.end(), text), mTexts.end());
}

// Outline faces, so that every size and the bold weight are drawn as asked; the family
// picks a like face where the named one is missing.
void DemoApplication::setFont(int points, bool bold, int face) {
    struct Face {
        char const* name;
        BYTE family;
    } static const faces[] = {{"Arial", VARIABLE_PITCH | FF_SWISS},
                              {"Times New Roman", VARIABLE_PITCH | FF_ROMAN},
                              {"Courier New", FIXED_PITCH | FF_MODERN}};
    if (face < 0 || face > 2)
        face = 0;
    HDC const screen = GetDC(nullptr);
    int const height = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
    ReleaseDC(nullptr, screen);
    HFONT const font = CreateFontA(height, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                                   DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                   DEFAULT_QUALITY, faces[face].family, faces[face].name);
    if (font == nullptr)
        return;
    for (DemoText* text : mTexts)
        text->setFont(font);
    if (mFont != nullptr)
        DeleteObject(static_cast<HFONT>(mFont));
    mFont = font;
    mPoints = points;
    mBold = bold;
    mFace = face;

    // The "Größe" menus check the entry of the size, or none for another size.
    for (GwFrame* frame : {static_cast<GwFrame*>(mMain), static_cast<GwFrame*>(mMDI)}) {
        if (frame == nullptr || frame->menuBar() == nullptr)
            continue;
        for (SizeEntry const& size : kSizes)
            frame->menuBar()->setChecked(size.command, size.points == points);
    }
}

bool DemoApplication::command(GwFrame& frame, unsigned long long id) {
    switch (id) {
    case ID_SETTINGS:
        openSettings(frame);
        return true;
    case ID_MESSAGE:
        showMessage(frame);
        return true;
    case ID_MDI:
        openMDI();
        return true;
    case ID_RESET_SIZE:
        frame.setDimension(760, 520);
        return true;
    case ID_SIZE_SMALL:
    case ID_SIZE_MEDIUM:
    case ID_SIZE_LARGE:
        for (SizeEntry const& size : kSizes) {
            if (size.command == id)
                setFont(size.points, mBold);
        }
        demoStatus(frame, format(IDS_SIZE_CHANGED, mPoints));
        return true;
    case ID_NEW_DOCUMENT:
    case kNewCommand:
        if (auto* mdi = dynamic_cast<DemoMDIFrame*>(&frame)) {
            mdi->addDocument();
            return true;
        }
        return false; // the main frame leaves "Neu" to the library
    case kInfoCommand:
        showInfo(frame);
        return true;
    default:
        return demoDrawingCommand(frame, id) || demoListsCommand(frame, id) ||
               demoFilesCommand(frame, id);
    }
}

// The dialog comes from its template; the attribute data of the same identifier gives each
// control an object of the library's class for it, so that their events reach the dialog's
// handler. The size field corrects itself when it is left: it holds whole points from 6 to
// 36. setVisible(true) returns when the handler has ended the dialog.
void DemoApplication::openSettings(GwFrame& owner) {
    if (mDialog != nullptr)
        return;
    auto* const dialog = dynamic_cast<GwDialog*>(resource(true).loadDialog(IDD_SETTINGS, &owner));
    if (dialog == nullptr)
        return;
    if (auto* const size = dynamic_cast<GwEditField*>(dialog->child(IDC_FONT_SIZE))) {
        size->setValue(static_cast<long>(mPoints));
        size->setFormat("%ld").setDefaultValue(mPoints);
        size->setMinValue(kSmallestPoints).setMaxValue(kLargestPoints);
        size->checkMinValue(true).checkMaxValue(true).checkFormat(true);
    }
    if (auto* const bold = dynamic_cast<GwButton*>(dialog->child(IDC_BOLD)))
        bold->setValue(mBold ? GwWindow::eChecked : GwWindow::eUnchecked);
    if (auto* const face = dynamic_cast<GwButton*>(dialog->child(IDC_FACE_SANS + mFace)))
        face->setValue(GwWindow::eChecked);
    if (auto* const picture = dynamic_cast<GwImage*>(dialog->child(IDC_PICTURE)))
        picture->setImage(IDB_PAGE, resource(true), GwImage::eBitmap, true);
    dialog->add(new DemoSettingsHandler);
    dialog->setModal(true);

    mDialog = dialog;
    dialog->setVisible(true);
    mDialog = nullptr;

    int const result = dialog->result();
    delete dialog;
    if (mQuitting) {
        exit();
        return;
    }
    String details = mBold ? text(IDS_BOLD) : String();
    details += text(IDS_FACE_SANS + static_cast<unsigned>(mFace));
    demoStatus(owner, result == IDOK ? format(IDS_SETTINGS_DONE, mPoints, details)
                                     : text(IDS_SETTINGS_KEPT));
}

void DemoApplication::showMessage(GwFrame& owner) {
    GwMessageBox box(&owner);
    box.setText(text(IDS_MESSAGE_TITLE));
    box.setMessage(text(IDS_MESSAGE_TEXT));
    box.setButtonStyle(GwMessageBox::eYesNo);
    box.setIconStyle(GwMessageBox::eIconQuestion);
    box.setVisible(true);
    if (box.result() == IDYES) {
        setFont(14, mBold);
        demoStatus(owner, text(IDS_ANSWER_YES));
    } else {
        demoStatus(owner, text(IDS_ANSWER_NO));
    }
}

// The library's own "Info" box, from the library's resources.
void DemoApplication::showInfo(GwFrame& owner) {
    GwResource const library = GwThisDll::current().resource();
    auto* const info = dynamic_cast<GwDialog*>(library.loadDialog(kInfoDialog, &owner));
    if (info == nullptr)
        return;
    info->setModal(true);
    info->setVisible(true);
    delete info;
}

void DemoApplication::startTour(GwFrame& frame) {
    frame.startTimer(kTickMilliseconds);
}

void DemoApplication::tick(GwFrame& frame) {
    // The steps may run nested: the settings dialog runs its own loop, in which the
    // following ticks arrive.
    int const now = ++mTicks;
    if (now == kShowTick) {
        if (mShow == "menu") {
            // As Alt+A ("Ansicht"), or Alt+E ("Fenster") in the multiple-document frame: the
            // menu opens with its first entry selected.
            char const key = dynamic_cast<DemoMDIFrame*>(&frame) != nullptr ? 'e' : 'a';
            PostMessageA(hwndOf(frame), WM_SYSCOMMAND, SC_KEYMENU, key);
        } else if (mShow == "dialog") {
            openSettings(frame);
        } else if (mShow == "drawing") {
            command(frame, ID_DRAWING);
        } else if (mShow == "lists") {
            command(frame, ID_LISTS);
        } else if (mShow == "open") {
            command(frame, 0xF821); // the library's "Öffnen..."
        } else if (mShow == "color") {
            command(frame, ID_TEXT_COLOR);
        } else if (mShow == "message") {
            command(frame, ID_MESSAGE);
        } else if (mShow == "toolbar") {
            demoShowToolTip(frame);
        } else {
            demoGalleryShow(frame, mShow);
        }
    }
    if (now == kReadyTick && !mReadyFile.empty()) {
        if (std::FILE* file = std::fopen(mReadyFile.c_str(), "w")) {
            std::fputs("ready\n", file);
            std::fclose(file);
        }
    }
    if (mExitAfter > 0 && now == mExitAfter * kTicksPerSecond) {
        frame.stopTimer();
        requestQuit();
    }
}

void DemoApplication::requestQuit() {
    mQuitting = true;
    EndMenu();
    demoCancelCommonDialog();
    if (mDialog != nullptr) {
        // Ends the dialog's loop; openSettings ends the program's loop after it.
        mDialog->setResult(IDCANCEL);
        mDialog->setVisible(false);
        return;
    }
    exit();
}
