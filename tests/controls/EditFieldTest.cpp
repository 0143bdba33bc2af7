// The edit field: its window, the correction when the focus leaves after a change, the
// formats and their deliberate differences, the modify flag, input offered to the handlers
// first, and bad input of every kind.
#include <gtest/gtest.h>

#include <windows.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include <GwEditField.h>
#include <GwEventData.h>
#include <GwMessages.h>

#include "ControlsTesting.h"

using namespace testing_controls;

namespace {

// A field, and a second control to take the focus from it, in the test's parent.
class EditFieldTest : public ControlTest {
protected:
    void SetUp() override {
        ControlTest::SetUp();
        mField = std::make_unique<GwEditField>(parent(), 100);
        SetWindowPos(edit(), nullptr, 10, 10, 200, 22, SWP_NOZORDER);
        mOther = rawChild("Button", BS_PUSHBUTTON | WS_TABSTOP, 101, "Weiter");
        SetWindowPos(mOther, nullptr, 10, 40, 80, 22, SWP_NOZORDER);
        SetActiveWindow(parentHwnd());
    }
    void TearDown() override {
        mField.reset();
        ControlTest::TearDown();
    }

    HWND edit() const { return hwndOf(*mField); }
    std::string text() const { return textOf(edit()); }

    // The user types the text into the field (replacing what it held) and leaves it.
    void typeAndLeave(std::string const& typed) {
        SetForegroundWindow(parentHwnd());
        SetFocus(edit());
        ASSERT_EQ(GetFocus(), edit());
        SendMessageA(edit(), EM_SETSEL, 0, -1);
        PostMessageA(edit(), WM_KEYDOWN, VK_DELETE, 1);
        pumpMessages();
        type(edit(), typed);
        SetFocus(mOther);
        pumpMessages();
    }

    std::unique_ptr<GwEditField> mField;
    HWND mOther = nullptr;
};

} // namespace

// ---- The window

TEST_F(EditFieldTest, TheFieldIsAnEmptyEditWindowWithItsStyles) {
    ASSERT_NE(edit(), nullptr);
    EXPECT_EQ(classNameOf(edit()), "Edit");
    EXPECT_EQ(styleOf(edit()) & 0xFFFF0FFF, 0x50830080);
    EXPECT_NE(extendedStyleOf(edit()) & WS_EX_CLIENTEDGE, 0);
    EXPECT_EQ(GetDlgCtrlID(edit()), 100);
    EXPECT_EQ(text(), "");
    EXPECT_EQ(mField->format(), String(""));
    EXPECT_EQ(mField->defaultValue(), 0.0);
    EXPECT_EQ(mField->minValue(), 0.0);
    EXPECT_EQ(mField->maxValue(), 0.0);
    EXPECT_EQ(GwWindow::window(edit(), false), mField.get());
}

TEST_F(EditFieldTest, ACopyClonesTheWindowAndTakesFormatValuesAndFlags) {
    mField->setFormat("%ld").setDefaultValue(4).setMinValue(2).setMaxValue(9);
    mField->checkMinValue(true).checkFormat(true);
    GwEditField copy(*mField);
    ASSERT_NE(copy.window(), nullptr);
    EXPECT_NE(copy.window(), mField->window());
    EXPECT_EQ(copy.format(), String("%ld"));
    EXPECT_EQ(copy.defaultValue(), 4.0);
    EXPECT_EQ(copy.minValue(), 2.0);
    EXPECT_EQ(copy.maxValue(), 9.0);
    // The copy corrects as the original does.
    copy.setText("abc");
    copy.setMinValue(2);
    EXPECT_EQ(textOf(hwndOf(copy)), "4");
}

// ---- Correction at focus loss

TEST_F(EditFieldTest, BelowTheMinimumBecomesTheMinimumAtFocusLoss) {
    mField->setFormat("%ld").setMinValue(1).checkMinValue(true).checkFormat(true);
    typeAndLeave("0");
    EXPECT_EQ(text(), "1");
}

TEST_F(EditFieldTest, TextWithoutNumberBecomesTheDefaultValueForDecimalFormats) {
    mField->setFormat("%ld").setMinValue(1).checkMinValue(true).setDefaultValue(17.9);
    mField->checkFormat(true);
    typeAndLeave("abc");
    EXPECT_EQ(text(), "17") << "truncated toward zero";
}

TEST_F(EditFieldTest, AboveTheMaximumBecomesTheMaximum) {
    mField->setFormat("%ld").setMaxValue(36.7).checkMaxValue(true).checkFormat(true);
    typeAndLeave("99");
    EXPECT_EQ(text(), "36");
    typeAndLeave("-5");
    EXPECT_EQ(text(), "-5") << "no minimum switched on";
}

TEST_F(EditFieldTest, FloatingFormatsIgnoreTheMinimumAndAcceptADecimalComma) {
    mField->setFormat("%.2lf").setMinValue(5).checkMinValue(true).checkFormat(true);
    typeAndLeave("3");
    EXPECT_EQ(text(), "3.00");
    typeAndLeave("3,5");
    EXPECT_EQ(text(), "3.50");
    mField->setDefaultValue(8);
    typeAndLeave("nichts");
    EXPECT_EQ(text(), "0.00") << "the default is not used either";
    mField->setMaxValue(4.25).checkMaxValue(true);
    typeAndLeave("7,5");
    EXPECT_EQ(text(), "4.25");
}

TEST_F(EditFieldTest, HexFormatsGiveZeroWithoutDigitsWhateverTheDefault) {
    mField->setFormat("%lx").setDefaultValue(12).setMinValue(100).checkMinValue(true);
    mField->checkFormat(true);
    typeAndLeave("zz");
    EXPECT_EQ(text(), "0");
    typeAndLeave("1F");
    EXPECT_EQ(text(), "1f") << "the minimum has no effect";
    mField->setMaxValue(16).checkMaxValue(true);
    typeAndLeave("ff");
    EXPECT_EQ(text(), "10");
}

TEST_F(EditFieldTest, WithoutAChangeLeavingTheFieldCorrectsNothing) {
    mField->setText("5");
    mField->setFormat("%ld").setMinValue(9).checkMinValue(true).checkFormat(true);
    EXPECT_EQ(text(), "9");
    mField->setText("abc");
    mField->changed(); // reading the flag clears it: as if the user had not typed
    SetFocus(edit());
    pumpMessages();
    SetFocus(mOther);
    pumpMessages();
    EXPECT_EQ(text(), "abc");
}

TEST_F(EditFieldTest, CorrectionRunsWhenFormatBoundsAndFlagsAreSet) {
    mField->setText("7,9");
    mField->setFormat("%.1lf");
    EXPECT_EQ(text(), "7,9") << "correction is off";
    mField->checkFormat(true);
    EXPECT_EQ(text(), "7.9");
    mField->setMaxValue(5);
    EXPECT_EQ(text(), "7.9") << "the maximum is off";
    mField->checkMaxValue(true);
    EXPECT_EQ(text(), "5.0");
    mField->setFormat("%ld");
    EXPECT_EQ(text(), "5");
    mField->setText("1");
    mField->setMinValue(3);
    EXPECT_EQ(text(), "1");
    mField->checkMinValue(true);
    EXPECT_EQ(text(), "3");
    mField->setDefaultValue(9); // no correction
    mField->setText("x");
    mField->setDefaultValue(10);
    EXPECT_EQ(text(), "x");
}

TEST_F(EditFieldTest, AFormatWithoutRecognisedConversionSendsTheFocusBack) {
    mField->setFormat("%d").checkFormat(true);
    typeAndLeave("12");
    EXPECT_EQ(text(), "12") << "nothing corrected";
    EXPECT_EQ(GetFocus(), edit());
    EXPECT_TRUE(mField->changed()) << "the modify flag stays set";
}

TEST_F(EditFieldTest, AFormatThatCannotBeAppliedSafelyCountsAsNoConversion) {
    for (char const* unsafe : {"%ld %ld", "%s ld", "%n ld", "ld %", "%*ld", "%300ld", "%lf%lx",
                               "%.999lf", "%ls %ld", "%lld"}) {
        mField->checkFormat(false);
        mField->setText("42");
        mField->setFormat(unsafe).checkFormat(true);
        EXPECT_EQ(text(), "42") << unsafe;
        mField->setValue(7L);
        EXPECT_EQ(text(), "42") << unsafe << ": nothing is written";
        typeAndLeave("5");
        EXPECT_EQ(GetFocus(), edit()) << unsafe;
        EXPECT_EQ(text(), "5") << unsafe;
    }
}

TEST_F(EditFieldTest, ChangedAnswersOnceAfterAnEdit) {
    SetFocus(edit());
    type(edit(), "1");
    EXPECT_TRUE(mField->changed());
    EXPECT_FALSE(mField->changed());
}

TEST_F(EditFieldTest, TextLongerThan255CharactersIsCutBeforeParsing) {
    mField->setFormat("%ld").checkFormat(true);
    // 253 spaces and five digits: the cut leaves the first two digits.
    typeAndLeave(std::string(253, ' ') + "12345");
    EXPECT_EQ(text(), "12");
}

// ---- Values in and out

TEST_F(EditFieldTest, SetValueWritesWithTheFormatOrItsDefault) {
    mField->setValue(2.5);
    EXPECT_EQ(text(), "2.5");
    mField->setValue(7L);
    EXPECT_EQ(text(), "7");
    mField->setValue(7);
    EXPECT_EQ(text(), "7");
    mField->setFormat("%.3lf");
    mField->setValue(2.5);
    EXPECT_EQ(text(), "2.500");
    mField->setValue(-3L);
    EXPECT_EQ(text(), "-3.000");
    mField->setFormat("Nr. %05ld").setMaxValue(1).checkMaxValue(true);
    mField->setValue(42L);
    EXPECT_EQ(text(), "Nr. 00042") << "no bounds applied";
    mField->setFormat("%#lx");
    mField->setValue(255L);
    EXPECT_EQ(text(), "0xff");
}

TEST_F(EditFieldTest, TheConversionsReadTheText) {
    mField->setText("3,25");
    EXPECT_EQ(static_cast<double>(*mField), 3.25);
    mField->setText("-17 Stück");
    EXPECT_EQ(static_cast<long>(*mField), -17L) << "an empty format reads decimal";
    mField->setFormat("%lx");
    mField->setText("ff");
    EXPECT_EQ(static_cast<long>(*mField), 255L);
    mField->setFormat("%lf");
    EXPECT_EQ(static_cast<long>(*mField), 0L);
    mField->setText("abc");
    EXPECT_EQ(static_cast<double>(*mField), 0.0);
}

TEST_F(EditFieldTest, NumbersAreReadAndWrittenWithAFullStopWhateverTheProcessLocale) {
    char const* const german = std::setlocale(LC_ALL, "German");
    char const* const germanToo = german != nullptr ? german : std::setlocale(LC_ALL, "de-DE");
    struct Restore {
        ~Restore() { std::setlocale(LC_ALL, "C"); }
    } restore;
    if (germanToo == nullptr)
        GTEST_SKIP() << "no German locale can be set in this process";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    mField->setFormat("%.2lf").checkFormat(true);
    typeAndLeave("3,5");
    EXPECT_EQ(text(), "3.50");
    typeAndLeave("1234.5");
    EXPECT_EQ(text(), "1234.50");
    mField->setValue(2.5);
    EXPECT_EQ(text(), "2.50");
    mField->setText("2.75");
    EXPECT_EQ(static_cast<double>(*mField), 2.75);
}

TEST_F(EditFieldTest, NanInfinityAndHugeNumbersGetTheCLibrarysResult) {
    mField->setFormat("%lg").checkFormat(true);
    typeAndLeave("nan");
    EXPECT_EQ(text(), "nan");
    typeAndLeave("-inf");
    EXPECT_EQ(text(), "-inf");
    typeAndLeave("1e999");
    EXPECT_EQ(text(), "inf");
    mField->setMaxValue(100).checkMaxValue(true);
    typeAndLeave("1e999");
    EXPECT_EQ(text(), "100");
    mField->setFormat("%ld").checkMaxValue(false);
    typeAndLeave("99999999999");
    EXPECT_EQ(text(), "2147483647");
    typeAndLeave("-99999999999");
    EXPECT_EQ(text(), "-2147483648");
    mField->setFormat("%lx");
    typeAndLeave("123456789");
    EXPECT_EQ(text(), "ffffffff");
    mField->setFormat("%lf");
    mField->setValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(text(), "nan");
    mField->setValue(1e300);
    EXPECT_EQ(text(), "nan") << "301 digits do not fit: nothing is written";
    mField->setFormat("%ld").setDefaultValue(std::numeric_limits<double>::infinity());
    typeAndLeave("");
    EXPECT_EQ(text(), "2147483647") << "the default held to the 32-bit range";
}

TEST_F(EditFieldTest, SetSelectionSelectsTheRange) {
    mField->setText("Fußgängerzone");
    mField->setSelection(2, 5);
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 2u);
    EXPECT_EQ(end, 5u);
}

// ---- Input offered to the handlers first

namespace {

// Takes every character typed, and notes them.
class KeyTaker : public Recorder {
public:
    KeyTaker() : Recorder(false, GwResultHandled) {}
};

} // namespace

TEST_F(EditFieldTest, AKeystrokeTakenByAHandlerNeverReachesThePlatformControl) {
    KeyTaker taker;
    mField->add(&taker);
    SetFocus(edit());
    type(edit(), "xy");
    EXPECT_EQ(text(), "");
    EXPECT_GE(taker.calls.size(), 2u);
    EXPECT_FALSE(mField->changed());
    mField->remove(&taker);
    Recorder listener; // continues: the platform sees the key
    mField->add(&listener);
    type(edit(), "z");
    EXPECT_EQ(text(), "z");
    EXPECT_FALSE(listener.calls.empty());
    mField->remove(&listener);
}

TEST_F(EditFieldTest, AMouseClickTakenByAHandlerDoesNotMoveTheCaret) {
    mField->setText("abcdef");
    mField->setSelection(0, 0);
    KeyTaker taker;
    mField->add(&taker);
    click(edit(), 150, 10);
    DWORD start = 99;
    SendMessageA(edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    EXPECT_EQ(start, 0u);
    EXPECT_FALSE(taker.calls.empty());
    mField->remove(&taker);
}

TEST_F(EditFieldTest, EditNotificationsGiveNoEvents) {
    Recorder recorder;
    parent().add(&recorder);
    mField->add(&recorder);
    mField->setFormat("%ld").checkFormat(true);
    typeAndLeave("5");
    for (Call const& call : recorder.calls) {
        EXPECT_NE(call.callback, "activate");
        EXPECT_NE(call.callback, "value");
        EXPECT_NE(call.callback, "select");
    }
    mField->remove(&recorder);
    parent().remove(&recorder);
}

TEST_F(EditFieldTest, FactoryBindsOnlyToAHandle) {
    EXPECT_EQ(GwEditField::newInstance(nullptr), nullptr);
    HWND const raw = rawChild("Edit", ES_AUTOHSCROLL, 5);
    GwEventData const data(raw);
    GwEditField* const field = GwEditField::newInstance(&data);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->format(), String(""));
    EXPECT_EQ(GwWindow::window(raw, true), field);
    EXPECT_STREQ(GwWindow::window(rawChild("Edit", 0, 6), true)->isA()->name(), "GwEditField");
    DestroyWindow(raw);
}
