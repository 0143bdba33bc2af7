// The file and colour commands of the demo.
#include "DemoFiles.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

#include "DemoApplication.h"
#include "resource.h"

namespace {

// The library's file menu entries.
constexpr unsigned long long kOpenCommand = 0xF821;
constexpr unsigned long long kSaveCommand = 0xF822;
constexpr unsigned long long kSaveAsCommand = 0xF823;

unsigned long gTextColor = 0x00000000UL;

DemoApplication& app() {
    return DemoApplication::demo();
}

// The text of the frame's text window, or nothing.
String clientText(GwFrame& frame) {
    HWND const text = GetDlgItem(static_cast<HWND>(frame.window()), IDC_TEXT);
    if (text == nullptr)
        return String();
    int const length = GetWindowTextLengthA(text);
    String result;
    if (length > 0) {
        char* const buffer = new char[static_cast<std::size_t>(length) + 1];
        GetWindowTextA(text, buffer, length + 1);
        result = String(buffer);
        delete[] buffer;
    }
    return result;
}

void openFile(GwFrame& frame) {
    GwFileSelect dialog(frame);
    dialog.setFilter(app().text(IDS_TEXT_FILTER));
    dialog.setVisible(true);
    if (dialog.result() == 0) {
        demoStatus(frame, app().text(IDS_FILE_CANCELLED));
        return;
    }
    demoStatus(frame, app().format(IDS_FILE_CHOSEN, 0, dialog.file()));
}

void saveFile(GwFrame& frame) {
    GwFileSelect dialog(frame);
    dialog.setFilter(app().text(IDS_TEXT_FILTER));
    dialog.setSaveAs(true);
    dialog.setStyle(GwFileSelect::eOverwritePrompt, true);
    dialog.setFile("text.txt");
    dialog.setVisible(true);
    if (dialog.result() == 0) {
        demoStatus(frame, app().text(IDS_FILE_CANCELLED));
        return;
    }
    String const path = dialog.file();
    String const text = clientText(frame);
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    bool const written =
        file != nullptr && std::fwrite(text.c_str(), 1, text.size(), file) == text.size();
    if (file != nullptr)
        std::fclose(file);
    demoStatus(frame, app().format(written ? IDS_EXPORTED : IDS_FILE_NOT_WRITTEN, 0, path));
}

void chooseColor(GwFrame& frame) {
    GwColorSelect dialog(frame, gTextColor);
    dialog.setVisible(true);
    if (dialog.result() == 0) {
        demoStatus(frame, app().text(IDS_COLOR_KEPT));
        return;
    }
    gTextColor = dialog.color();
    HWND const text = GetDlgItem(static_cast<HWND>(frame.window()), IDC_TEXT);
    if (text != nullptr)
        InvalidateRect(text, nullptr, TRUE);
    char hex[16];
    std::snprintf(hex, sizeof hex, "#%06lX", gTextColor & 0xFFFFFFUL);
    demoStatus(frame, app().format(IDS_COLOR_CHOSEN, 0, hex));
}

BOOL CALLBACK cancelDialog(HWND hwnd, LPARAM) {
    char name[16] = {};
    GetClassNameA(hwnd, name, sizeof name);
    if (IsWindowVisible(hwnd) && std::strcmp(name, "#32770") == 0)
        PostMessageA(hwnd, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
}

} // namespace

bool demoFilesCommand(GwFrame& frame, unsigned long long id) {
    switch (id) {
    case kOpenCommand:
        openFile(frame);
        return true;
    case kSaveCommand:
    case kSaveAsCommand:
        saveFile(frame);
        return true;
    case ID_TEXT_COLOR:
        chooseColor(frame);
        return true;
    default:
        return false;
    }
}

unsigned long demoTextColor() {
    return gTextColor;
}

void demoCancelCommonDialog() {
    EnumThreadWindows(GetCurrentThreadId(), &cancelDialog, 0);
}
