// Controls in a modal dialog loaded from a template whose attribute data names their classes:
// real clicks and keys in the dialog's own loop, and the events its handlers hear.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

#include <GwButton.h>
#include <GwDialog.h>
#include <GwEditField.h>
#include <GwResource.h>
#include <GwStatic.h>

#include <VmGuiTesting/Script.h>

#include "ControlsTesting.h"

using namespace testing_controls;

namespace {

constexpr unsigned long long kDialog = 8000;
constexpr int kBold = 8001;
constexpr int kLeft = 8002;
constexpr int kCentre = 8003;
constexpr int kRight = 8004; // no class in the attribute data
constexpr int kSize = 8010;
constexpr int kFrame = 8020;

class ControlDialogTest : public ControlTest {
protected:
    void TearDown() override {
        if (IsWindow(mDialogWindow))
            DestroyWindow(mDialogWindow); // deletes the dialog and its controls
        ControlTest::TearDown();
    }

    GwDialog* load() {
        GwWindow* const window = GwResource().loadDialog(kDialog, nullptr);
        if (window == nullptr)
            return nullptr;
        mDialogWindow = hwndOf(*window);
        return dynamic_cast<GwDialog*>(window);
    }
    HWND item(int id) const { return GetDlgItem(mDialogWindow, id); }
    GwWindow* object(int id) const { return GwWindow::window(item(id), false); }

    // Shows the dialog modally while the steps run; false when they timed out.
    static bool runModal(GwDialog& dialog, std::vector<Script::Step> steps) {
        Script script(std::move(steps));
        dialog.setModal(true);
        dialog.setVisible(true);
        return !script.timedOut();
    }

    static Script::Step close(GwDialog& dialog) {
        return Script::once([&dialog] { dialog.setVisible(false); });
    }

    HWND mDialogWindow = nullptr;
};

long count(Recorder const& recorder, std::string const& callback, GwWindow const* window) {
    long n = 0;
    for (Call const& call : recorder.calls)
        n += call.callback == callback && call.window == window ? 1 : 0;
    return n;
}

} // namespace

TEST_F(ControlDialogTest, TheAttributeDataGivesEachControlItsClass) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(object(IDOK)->isA(), GwPushButton::isa());
    EXPECT_EQ(object(IDCANCEL)->isA(), GwPushButton::isa());
    EXPECT_EQ(object(kBold)->isA(), GwToggleButton::isa());
    EXPECT_EQ(object(kLeft)->isA(), GwRadioButton::isa());
    EXPECT_EQ(object(kCentre)->isA(), GwRadioButton::isa());
    EXPECT_EQ(object(kSize)->isA(), GwEditField::isa());
    EXPECT_EQ(object(kFrame)->isA(), GwGroupBox::isa());
    EXPECT_EQ(object(kRight), nullptr) << "not named: no object until one is asked for";
}

TEST_F(ControlDialogTest, AClickOnACheckBoxGivesExactlyOneValueEventAndNoActivation) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    GwWindow* const bold = object(kBold);
    Recorder listener;
    dialog->add(&listener);
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { postClick(item(kBold)); }),
                                   Script::once([] {}), close(*dialog)}));
    ASSERT_EQ(count(listener, "value", bold), 1);
    for (Call const& call : listener.calls) {
        if (call.callback == "value") {
            EXPECT_EQ(call.a, 1u) << "checked";
        }
    }
    EXPECT_EQ(count(listener, "activate", bold), 0);
    EXPECT_EQ(SendMessageA(item(kBold), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(dialog->result(), -1) << "the dialog went on";
    dialog->remove(&listener);
}

TEST_F(ControlDialogTest, CheckingTheThirdRadioButtonClearsTheFirst) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    auto* const left = dynamic_cast<GwRadioButton*>(object(kLeft));
    ASSERT_NE(left, nullptr);
    left->setValue(GwWindow::eChecked);
    Recorder listener;
    dialog->add(&listener);
    ASSERT_TRUE(runModal(*dialog, {Script::once([&] { postClick(item(kRight)); }),
                                   Script::once([] {}), close(*dialog)}));
    EXPECT_EQ(SendMessageA(item(kRight), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(left->value(), GwWindow::eUnchecked);
    EXPECT_EQ(SendMessageA(item(kCentre), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    ASSERT_EQ(count(listener, "value", left), 1) << "the first one reports its change";
    EXPECT_EQ(SendMessageA(item(kBold), BM_GETCHECK, 0, 0), BST_UNCHECKED)
        << "a check box of another group is left alone";
    dialog->remove(&listener);
}

TEST_F(ControlDialogTest, CheckingALibraryRadioButtonClearsAForeignOneOfItsGroup) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    SendMessageA(item(kRight), BM_SETCHECK, BST_CHECKED, 0); // no object: the platform only
    auto* const centre = dynamic_cast<GwRadioButton*>(object(kCentre));
    ASSERT_NE(centre, nullptr);
    centre->setValue(GwWindow::eChecked);
    EXPECT_EQ(SendMessageA(item(kRight), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(object(kRight), nullptr);
}

TEST_F(ControlDialogTest, AnEditFieldIsCorrectedWhenTheUserTabsAway) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    auto* const size = dynamic_cast<GwEditField*>(object(kSize));
    ASSERT_NE(size, nullptr);
    size->setFormat("%ld").setMinValue(6).setMaxValue(36);
    size->checkMinValue(true).checkMaxValue(true).checkFormat(true);
    HWND const edit = item(kSize);
    HWND focusAfter = nullptr;
    ASSERT_TRUE(
        runModal(*dialog, {Script::once([&] {
                               SetFocus(edit);
                               SendMessageA(edit, EM_SETSEL, 0, -1);
                               for (char c : std::string("99"))
                                   PostMessageA(edit, WM_CHAR, c, 1);
                           }),
                           Script::once([&] {
                               // The key goes through the dialog's loop, where
                               // IsDialogMessageA moves the focus on.
                               PostMessageA(edit, WM_KEYDOWN, VK_TAB, 1);
                               PostMessageA(edit, WM_KEYUP, VK_TAB, 0xC0000001);
                           }),
                           Script::once([&] { focusAfter = GetFocus(); }), close(*dialog)}));
    EXPECT_NE(focusAfter, edit) << "the focus moved on";
    EXPECT_EQ(textOf(edit), "36");
}

TEST_F(ControlDialogTest, OkBoundAsAPushButtonGivesTheActivateEventAndEndsTheDialog) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    GwWindow* const ok = object(IDOK);
    // A handler that lets the command through: the dialog ends with the button's identifier.
    class Listener : public Recorder {
    public:
        int cbActivate(GwWindow& w) override {
            Recorder::cbActivate(w);
            return GwResultContinue;
        }
    } listener;
    dialog->add(&listener);
    Script script({Script::once([&] { postClick(item(IDOK)); })}, 3000);
    dialog->setModal(true);
    dialog->setVisible(true);
    ASSERT_FALSE(script.timedOut()) << "the click did not end the dialog";
    EXPECT_EQ(count(listener, "activate", ok), 1);
    EXPECT_EQ(dialog->result(), IDOK);
    dialog->remove(&listener);
}

TEST_F(ControlDialogTest, OnlyThePushButtonAndTheTextTakeOverTheDialogFont) {
    GwDialog* const dialog = load();
    ASSERT_NE(dialog, nullptr);
    auto const dialogFont = SendMessageA(mDialogWindow, WM_GETFONT, 0, 0);
    ASSERT_NE(dialogFont, 0);
    GwPushButton push(*dialog, 9001, "Weiter");
    GwText label(*dialog, 9002, "Beschriftung");
    GwEditField field(*dialog, 9003);
    GwToggleButton toggle(*dialog, 9004, "Fett");
    GwGroupBox box(*dialog, 9005, "Rahmen");
    EXPECT_EQ(SendMessageA(hwndOf(push), WM_GETFONT, 0, 0), dialogFont);
    EXPECT_EQ(SendMessageA(hwndOf(label), WM_GETFONT, 0, 0), dialogFont);
    EXPECT_EQ(SendMessageA(hwndOf(field), WM_GETFONT, 0, 0), dialogFont);
    EXPECT_NE(SendMessageA(hwndOf(toggle), WM_GETFONT, 0, 0), dialogFont);
    EXPECT_NE(SendMessageA(hwndOf(box), WM_GETFONT, 0, 0), dialogFont);
    // In a window that is no dialog built with its own font, nobody takes a font.
    GwPushButton plain(parent(), 9006, "Schlicht");
    EXPECT_NE(SendMessageA(hwndOf(plain), WM_GETFONT, 0, 0), dialogFont);
}
