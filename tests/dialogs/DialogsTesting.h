// Helpers of the common-dialog tests: the kit's answerer for the platform's open, save and
// colour dialogs, and a temporary folder with files in it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <GwDialog.h>
#include <GwFrame.h>

#include <VmGuiTesting/Dialogs.h>

#include "TestWindows.h"

namespace testing_dialogs {

// Answers the platform's dialog from a thread timer (its modal loop runs the timer): notes
// what it shows, runs the action on it (typing, choosing) and presses the button (IDOK or
// IDCANCEL).
using DialogDriver = vmgui_testing::DialogAnswerer;
using vmgui_testing::pressButton;

// Shows a dialog from the active frame, activates the dialog while it is up and checks that
// the frame is active again afterwards.
inline void expectActiveAgainAfter(GwFrame& frame, GwDialog& dialog) {
    HWND const hwnd = static_cast<HWND>(frame.window());
    frame.GwWindow::setVisible(true);
    SetActiveWindow(hwnd);
    ASSERT_EQ(GetActiveWindow(), hwnd);
    HWND activeDuring = nullptr;
    DialogDriver driver(IDCANCEL, [&](HWND box) {
        SetActiveWindow(box);
        activeDuring = GetActiveWindow();
    });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_NE(activeDuring, hwnd);
    EXPECT_EQ(GetActiveWindow(), hwnd);
}

// Types the name into the file name box of an open or save dialog.
inline void typeFileName(HWND dialog, std::string const& name) {
    // The explorer-style dialog has a combo box (cmb13) for the name, older ones an edit (edt1).
    for (int id : {0x047c, 0x0480}) {
        HWND const box = GetDlgItem(dialog, id);
        if (box != nullptr)
            SetWindowTextA(box, name.c_str());
    }
}

// A fresh folder under the temporary folder, removed with its files at the end.
class TempFolder {
public:
    TempFolder() {
        char base[MAX_PATH] = {};
        GetTempPathA(sizeof base, base);
        char name[MAX_PATH] = {};
        GetTempFileNameA(base, "gfs", 0, name);
        DeleteFileA(name);
        CreateDirectoryA(name, nullptr);
        // The long form, as the dialogs give it.
        char full[MAX_PATH] = {};
        GetLongPathNameA(name, full, sizeof full);
        mPath = full[0] != '\0' ? full : name;
    }
    ~TempFolder() {
        for (std::string const& file : mFiles)
            DeleteFileA(file.c_str());
        RemoveDirectoryA(mPath.c_str());
    }
    TempFolder(TempFolder const&) = delete;
    TempFolder& operator=(TempFolder const&) = delete;

    std::string const& path() const { return mPath; }
    std::string file(std::string const& name) const { return mPath + "\\" + name; }
    // Creates an empty file; it and any file named with `expect` are deleted at the end.
    void create(std::string const& name) {
        HANDLE const file = CreateFileA(this->file(name).c_str(), GENERIC_WRITE, 0, nullptr,
                                        CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE)
            CloseHandle(file);
        expect(name);
    }
    void expect(std::string const& name) { mFiles.push_back(file(name)); }

private:
    std::string mPath;
    std::vector<std::string> mFiles;
};

} // namespace testing_dialogs
