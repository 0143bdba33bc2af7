// A list, a combo box and a tab control in a modal dialog loaded from a template whose
// attribute data names their classes; the mapping of the platform classes to the library's;
// the select events of real input reaching the dialog's handlers with the control.
#include <gtest/gtest.h>

#include <GwComboBox.h>
#include <GwDialog.h>
#include <GwListBox.h>
#include <GwResource.h>
#include <GwTab.h>

#include "ListTesting.h"

using namespace testing_lists;

namespace {

unsigned long long const kDialog = 7160;
int const kList = 7161;
int const kCombo = 7162;
int const kTab = 7163;

// Ends the dialog once it has heard of a selection in both the list and the combo box.
class Selections : public Recorder {
public:
    explicit Selections(GwDialog* dialog) : mDialog(dialog) {}
    int cbSelect(GwWindow& window) override {
        Recorder::cbSelect(window);
        if (dynamic_cast<GwListBox*>(&window) != nullptr)
            list = &window;
        if (dynamic_cast<GwComboBox*>(&window) != nullptr)
            combo = &window;
        if (list != nullptr && combo != nullptr)
            mDialog->setVisible(false);
        return GwResultContinue;
    }
    GwWindow* list = nullptr;
    GwWindow* combo = nullptr;

private:
    GwDialog* mDialog;
};

class ListsDialogTest : public ::testing::Test {
protected:
    void TearDown() override {
        if (mDialog != nullptr && IsWindow(hwndOf(*mDialog)))
            DestroyWindow(hwndOf(*mDialog));
        pumpMessages();
    }
    GwDialog* load() {
        mDialog = dynamic_cast<GwDialog*>(GwResource().loadDialog(kDialog, nullptr));
        return mDialog;
    }

    ScopedApplication mApplication;
    GwDialog* mDialog = nullptr;
};

// Hides the dialog after a while, so that no test waits for ever.
struct Deadline {
    explicit Deadline(GwDialog* dialog) {
        sDialog = dialog;
        mTimer = SetTimer(nullptr, 0, 4000, &Deadline::onTimer);
    }
    ~Deadline() {
        KillTimer(nullptr, mTimer);
        sDialog = nullptr;
    }
    static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) {
        sTimedOut = true;
        if (sDialog != nullptr)
            sDialog->setVisible(false);
    }
    UINT_PTR mTimer;
    static inline GwDialog* sDialog = nullptr;
    static inline bool sTimedOut = false;
};

} // namespace

TEST_F(ListsDialogTest, PlatformClassesMapToTheListClasses) {
    HWND parent = rawWindow();
    WindowCloser closer{parent};
    struct Case {
        char const* platform;
        DWORD style;
        Class const* expected;
    } const cases[] = {{"ListBox", LBS_HASSTRINGS, GwListBox::isa()},
                       {"ComboBox", CBS_DROPDOWN, GwComboBox::isa()},
                       {"SysTabControl32", 0, GwTab::isa()}};
    for (Case const& one : cases) {
        HWND hwnd = CreateWindowExA(0, one.platform, "", WS_CHILD | one.style, 0, 0, 100, 100,
                                    parent, nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(hwnd, nullptr) << one.platform;
        GwWindow& object = GwWindow::window(hwnd);
        EXPECT_EQ(object.isA(), one.expected) << one.platform;
    }
}

TEST_F(ListsDialogTest, TheTemplatesAttributeDataGivesTheControlsTheirClasses) {
    GwDialog* dialog = load();
    ASSERT_NE(dialog, nullptr);
    HWND hwnd = hwndOf(*dialog);
    auto* list = dynamic_cast<GwListBox*>(GwWindow::window(GetDlgItem(hwnd, kList), false));
    auto* combo = dynamic_cast<GwComboBox*>(GwWindow::window(GetDlgItem(hwnd, kCombo), false));
    auto* tab = dynamic_cast<GwTab*>(GwWindow::window(GetDlgItem(hwnd, kTab), false));
    ASSERT_NE(list, nullptr);
    ASSERT_NE(combo, nullptr);
    ASSERT_NE(tab, nullptr);
    EXPECT_EQ(list->sorting(), GwWindow::eUnsorted) << "whatever the template's LBS_SORT says";
    EXPECT_NE(combo->editPart(), nullptr);
    tab->add(GwTabItem(7164, 7101)).add(GwTabItem(7165, 7102));
    EXPECT_EQ(tab->size(), 2);
    EXPECT_NE(styleOf(GetDlgItem(hwnd, 7165)) & WS_VISIBLE, 0) << "the current tab's page";
    EXPECT_EQ(styleOf(GetDlgItem(hwnd, 7164)) & WS_VISIBLE, 0);
    EXPECT_EQ(GetWindow(GetDlgItem(hwnd, 7165), GW_HWNDNEXT), GetDlgItem(hwnd, kTab))
        << "the sibling page lies above the tab control";
}

TEST_F(ListsDialogTest, ClickAndKeyboardSelectionsReachTheModalDialogsHandlers) {
    GwDialog* dialog = load();
    ASSERT_NE(dialog, nullptr);
    HWND hwnd = hwndOf(*dialog);
    auto& list = dynamic_cast<GwListBox&>(GwWindow::window(GetDlgItem(hwnd, kList)));
    auto& combo = dynamic_cast<GwComboBox&>(GwWindow::window(GetDlgItem(hwnd, kCombo)));
    list.add(GwTextItem(1, "Hauptstraße")).add(GwTextItem(2, "Bahnhofstraße"));
    combo.add(GwTextItem(8, "8 pt")).add(GwTextItem(10, "10 pt")).add(GwTextItem(12, "12 pt"));
    combo.selectAt(0, true);

    Selections selections(dialog);
    dialog->add(&selections);
    clickLine(hwndOf(list), 1);
    HWND edit = FindWindowExA(hwndOf(combo), nullptr, "Edit", nullptr);
    PostMessageA(edit, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(edit, WM_KEYUP, VK_DOWN, 0xC0000001);
    Deadline deadline(dialog);
    dialog->setModal(true);
    dialog->setVisible(true); // returns when the handler has seen both selections
    EXPECT_FALSE(Deadline::sTimedOut);
    EXPECT_EQ(selections.list, &list);
    EXPECT_EQ(selections.combo, &combo);
    EXPECT_EQ(list.selected(), 2u);
    EXPECT_EQ(combo.selected(), 10u);
    dialog->remove(&selections);
}
