// The colour dialog: colours in and out in the library's 0x00RRGGBB form, the custom colours
// kept between showings, and the platform's dialog confirmed and cancelled from a timer.
#include <gtest/gtest.h>

#include <windows.h>

#include <colordlg.h>

#include <string>
#include <typeinfo>

#include <GwColorSelect.h>
#include <GwFrame.h>

#include "DialogsTesting.h"

using namespace testing_dialogs;
using testing_windows::pumpMessages;

namespace {

class ColorSelectTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NE(mFrame.window(), nullptr); }
    void TearDown() override { pumpMessages(); }
    testing_windows::ScopedApplication mApplication;
    GwFrame mFrame{1, 0, false};
};

// Types a colour into the dialog's red, green and blue boxes.
void typeColour(HWND dialog, int r, int g, int b) {
    SetDlgItemInt(dialog, COLOR_RED, r, FALSE);
    SetDlgItemInt(dialog, COLOR_GREEN, g, FALSE);
    SetDlgItemInt(dialog, COLOR_BLUE, b, FALSE);
}

// The colour the dialog's red, green and blue boxes show, as 0x00RRGGBB.
unsigned long shownColour(HWND dialog) {
    return GetDlgItemInt(dialog, COLOR_RED, nullptr, FALSE) << 16 |
           GetDlgItemInt(dialog, COLOR_GREEN, nullptr, FALSE) << 8 |
           GetDlgItemInt(dialog, COLOR_BLUE, nullptr, FALSE);
}

} // namespace

TEST_F(ColorSelectTest, BytesReadBackAsRedInTheHighByte) {
    GwColorSelect dialog(mFrame, 0xFF, 0, 0);
    EXPECT_EQ(dialog.color(), 0x00FF0000ul);
    unsigned char r = 0, g = 1, b = 1;
    dialog.color(r, g, b);
    EXPECT_EQ(r, 0xFF);
    EXPECT_EQ(g, 0);
    EXPECT_EQ(b, 0);
    EXPECT_EQ(dialog.owner(), &mFrame);
    EXPECT_EQ(dialog.result(), -1);
}

TEST_F(ColorSelectTest, ColourTopByteIsIgnored) {
    GwColorSelect dialog(mFrame, 0xAA123456ul);
    EXPECT_EQ(dialog.color(), 0x00123456ul);
    unsigned char r = 0, g = 0, b = 0;
    dialog.color(r, g, b);
    EXPECT_EQ(r, 0x12);
    EXPECT_EQ(g, 0x34);
    EXPECT_EQ(b, 0x56);
    dialog.setColor(0x01, 0x02, 0x03);
    EXPECT_EQ(dialog.color(), 0x00010203ul);
    dialog.setColor(0xFF0000FFul);
    EXPECT_EQ(dialog.color(), 0x000000FFul);
}

TEST_F(ColorSelectTest, CustomColoursStartWhiteAndRoundTrip) {
    GwColorSelect dialog(mFrame, 0);
    unsigned long colours[16] = {};
    dialog.customColors(colours);
    for (unsigned long colour : colours)
        EXPECT_EQ(colour, 0x00FFFFFFul);
    unsigned long set[16];
    for (int i = 0; i < 16; ++i)
        set[i] = 0x00010203ul * static_cast<unsigned long>(i + 1);
    dialog.setCustomColors(set);
    dialog.customColors(colours);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(colours[i], set[i]) << i;
    // Null pointers are refused quietly.
    dialog.setCustomColors(nullptr);
    dialog.customColors(nullptr);
    dialog.customColors(colours);
    EXPECT_EQ(colours[15], set[15]);
}

TEST_F(ColorSelectTest, NewInstanceIsNull) {
    EXPECT_EQ(GwColorSelect::newInstance(nullptr), nullptr);
}

TEST_F(ColorSelectTest, CopyOwnsItsCustomColours) {
    GwColorSelect dialog(mFrame, 0x00102030ul);
    unsigned long set[16] = {0x00112233ul};
    dialog.setCustomColors(set);
    GwColorSelect copy(dialog);
    EXPECT_EQ(copy.color(), 0x00102030ul);
    EXPECT_EQ(copy.owner(), &mFrame);
    unsigned long other[16] = {0x00445566ul};
    copy.setCustomColors(other);
    unsigned long colours[16] = {};
    dialog.customColors(colours);
    EXPECT_EQ(colours[0], 0x00112233ul);
    GwColorSelect assigned(mFrame, 0);
    assigned = copy;
    assigned.customColors(colours);
    EXPECT_EQ(colours[0], 0x00445566ul);
    EXPECT_EQ(assigned.color(), 0x00102030ul);
    EXPECT_THROW(assigned = static_cast<Object const&>(mFrame), std::bad_cast);
}

TEST_F(ColorSelectTest, DialogStartsWithTheColourAndIsOwnedByTheFrame) {
    GwColorSelect dialog(mFrame, 0x00102030ul);
    unsigned long shown = 0;
    DialogDriver driver(IDOK, [&](HWND box) { shown = shownColour(box); });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_FALSE(driver.timedOut());
    EXPECT_EQ(driver.seen.owner, static_cast<HWND>(mFrame.window()));
    EXPECT_EQ(shown, 0x00102030ul);
    EXPECT_NE(dialog.result(), 0);
    EXPECT_EQ(dialog.color(), 0x00102030ul);
}

TEST_F(ColorSelectTest, ConfirmedDialogGivesTheChosenColour) {
    GwColorSelect dialog(mFrame, 0, 0, 0);
    DialogDriver driver(IDOK, [](HWND box) { typeColour(box, 0x12, 0x34, 0x56); });
    dialog.setVisible(false); // the argument is not looked at
    ASSERT_TRUE(driver.seen.found);
    EXPECT_NE(dialog.result(), 0);
    EXPECT_EQ(dialog.color(), 0x00123456ul);
}

TEST_F(ColorSelectTest, CancelledDialogLeavesTheColour) {
    GwColorSelect dialog(mFrame, 0x00ABCDEFul);
    DialogDriver driver(IDCANCEL, [](HWND box) { typeColour(box, 1, 2, 3); });
    dialog.setVisible(true);
    ASSERT_TRUE(driver.seen.found);
    EXPECT_EQ(dialog.result(), 0);
    EXPECT_EQ(dialog.color(), 0x00ABCDEFul);
}

TEST_F(ColorSelectTest, CustomColoursAreKeptBetweenShowings) {
    GwColorSelect dialog(mFrame, 0, 0, 0);
    unsigned long set[16];
    for (int i = 0; i < 16; ++i)
        set[i] = 0x00FFFFFFul;
    set[5] = 0x00ABCDEFul;
    dialog.setCustomColors(set);
    DialogDriver first(IDOK, [](HWND box) {
        typeColour(box, 0x20, 0x40, 0x60);
        pressButton(box, COLOR_ADD); // adds the current colour to the custom colours
    });
    dialog.setVisible(true);
    ASSERT_TRUE(first.seen.found);
    unsigned long colours[16] = {};
    dialog.customColors(colours);
    EXPECT_EQ(colours[0], 0x00204060ul);
    EXPECT_EQ(colours[1], 0x00FFFFFFul);
    EXPECT_EQ(colours[5], 0x00ABCDEFul);

    // The next showing gets them back and leaves them as they are.
    DialogDriver second(IDOK, [](HWND box) { typeColour(box, 0x01, 0x02, 0x03); });
    dialog.setVisible(true);
    ASSERT_TRUE(second.seen.found);
    EXPECT_EQ(dialog.color(), 0x00010203ul);
    dialog.customColors(colours);
    EXPECT_EQ(colours[0], 0x00204060ul);
    EXPECT_EQ(colours[5], 0x00ABCDEFul);
}

TEST_F(ColorSelectTest, ActiveWindowIsActiveAgainAfterwards) {
    GwColorSelect dialog(mFrame, 0);
    expectActiveAgainAfter(mFrame, dialog);
}
