// The message box: its fields and style masks, and the boxes it shows: buttons, icon, title
// and message, task-modal without owner, the owner disabled only while the box is up, and
// the answer. Every box is answered from a thread timer that runs in MessageBoxA's own loop.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <GwMessageBox.h>

#include <VmGuiTesting/Dialogs.h>

#include "FrameTesting.h"

using namespace testing_frames;
using namespace testing_windows;

namespace {

std::string text(String const& string) {
    return string.c_str();
}

// What a message box showed.
struct BoxSeen {
    bool found = false;
    std::string title;
    std::vector<int> buttons;         // identifiers of the visible push buttons, ascending
    std::vector<std::string> statics; // texts of the visible static controls
    HICON icon = nullptr;             // the icon of the visible icon control, if any
    HWND owner = nullptr;
    LONG extendedStyle = 0;
    int defaultButton = 0; // DM_GETDEFID
};

// Answers every message box of this thread from a thread timer, which MessageBoxA's own
// loop dispatches: notes what the first one shows, runs the probe and then presses the
// button `press` by posting its command, again at every tick until the box has gone.
class BoxAnswerer {
public:
    explicit BoxAnswerer(int press, std::function<void(HWND)> probe = {})
        : mAnswerer(
              press,
              [this, probe = std::move(probe)](HWND box) {
                  note(box);
                  if (probe)
                      probe(box);
              },
              nullptr, DialogAnswerer::Answer::Every, INFINITE) {}

    BoxSeen seen;

private:
    void note(HWND box) {
        seen.found = true;
        seen.title = textOf(box);
        seen.owner = GetWindow(box, GW_OWNER);
        seen.extendedStyle = GetWindowLongA(box, GWL_EXSTYLE);
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            if (!IsWindowVisible(child))
                continue;
            std::string const cls = classNameOf(child);
            LONG const style = styleOf(child);
            if (_stricmp(cls.c_str(), "Button") == 0) {
                LONG const type = style & 0xF;
                if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON)
                    seen.buttons.push_back(GetDlgCtrlID(child));
                if (type == BS_DEFPUSHBUTTON)
                    seen.defaultButton = GetDlgCtrlID(child);
            } else if (_stricmp(cls.c_str(), "Static") == 0) {
                if ((style & SS_TYPEMASK) == SS_ICON)
                    seen.icon = reinterpret_cast<HICON>(SendMessageA(child, STM_GETICON, 0, 0));
                else
                    seen.statics.push_back(textOf(child));
            }
        }
        std::sort(seen.buttons.begin(), seen.buttons.end());
    }

    DialogAnswerer mAnswerer;
};

bool shows(BoxSeen const& seen, std::string const& message) {
    return std::find(seen.statics.begin(), seen.statics.end(), message) != seen.statics.end();
}

class MessageBoxTest : public FrameFixture {};

} // namespace

// ---- The object

TEST_F(MessageBoxTest, NewBoxHasTheDefaultStyleNoTextsAndResult2) {
    GwMessageBox box(nullptr);
    EXPECT_EQ(box.style(), 0x31u) << "a single OK button and the exclamation icon";
    EXPECT_EQ(box.result(), 2);
    EXPECT_FALSE(box.modal());
    EXPECT_EQ(text(box.message()), "");
    EXPECT_EQ(text(box.title()), "");
    EXPECT_EQ(box.ownerFrame(), nullptr);
    EXPECT_EQ(box.window(), nullptr) << "the box has no window of its own";
    EXPECT_EQ(box.isA(), GwMessageBox::isa());
}

TEST_F(MessageBoxTest, ClassRecordMakesABoxWithoutOwner) {
    Class const* const record = Class::lookup("GwMessageBox");
    ASSERT_EQ(record, GwMessageBox::isa());
    EXPECT_TRUE(record->isSubclassOf(GwDialog::isa()));
    Object* const made = Class::createInstance(record, nullptr);
    auto* const box = dynamic_cast<GwMessageBox*>(made);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->ownerFrame(), nullptr);
    EXPECT_EQ(box->style(), 0x31u);
    EXPECT_EQ(box->result(), 2);
    delete made;
}

TEST_F(MessageBoxTest, SetTextWritesTheTitleAndSetMessageTheMessage) {
    GwMessageBox box;
    box.setText("Titel").setMessage("Nachricht");
    EXPECT_EQ(text(box.title()), "Titel");
    EXPECT_EQ(text(box.message()), "Nachricht");
    EXPECT_EQ(text(box.text()), "Titel");
}

TEST_F(MessageBoxTest, ButtonStyleReplacesTheLow4BitsAndClearsEveryBitAbove15) {
    GwMessageBox box;
    box.setButtonStyle(GwMessageBox::eYesNo);
    EXPECT_EQ(box.style(), 0x35u);
    box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(0x40000 | 2));
    EXPECT_EQ(box.style(), 0x40032u) << "the argument's own high bits are kept";
    box.setButtonStyle(GwMessageBox::eOk);
    EXPECT_EQ(box.style(), 0x31u) << "the bits above 15 are cleared";
}

TEST_F(MessageBoxTest, IconStyleReplacesBits4To7AndClearsEveryBitAbove15) {
    GwMessageBox box;
    box.setIconStyle(GwMessageBox::eIconQuestion);
    EXPECT_EQ(box.style(), 0x21u);
    box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(0x40000 | 6));
    ASSERT_EQ(box.style(), 0x40026u);
    box.setIconStyle(GwMessageBox::eIconHand);
    EXPECT_EQ(box.style(), 0x16u) << "buttons kept, bits above 15 cleared";
    box.setIconStyle(static_cast<GwMessageBox::eIconStyle>(0x100 | 0x40));
    EXPECT_EQ(box.style(), 0x146u) << "bits 8 to 15 of the argument stay";
}

TEST_F(MessageBoxTest, CopiesTakeEveryFieldWithTheModalFlagAndTheResult) {
    GwFrame owner(1, 0, false);
    GwMessageBox box(&owner);
    box.setMessage("Text").setText("Titel");
    box.setButtonStyle(GwMessageBox::eYesNoCancel).setIconStyle(GwMessageBox::eIconAsterisk);
    box.setModal(true);
    box.setResult(7);

    GwMessageBox const copy(box);
    EXPECT_EQ(text(copy.message()), "Text");
    EXPECT_EQ(text(copy.title()), "Titel");
    EXPECT_EQ(copy.ownerFrame(), &owner);
    EXPECT_EQ(copy.style(), 0x46u);
    EXPECT_TRUE(copy.modal());
    EXPECT_EQ(copy.result(), 7);

    GwMessageBox moved(std::move(box));
    EXPECT_EQ(text(moved.message()), "Text");
    EXPECT_EQ(moved.ownerFrame(), &owner);
    EXPECT_EQ(moved.style(), 0x46u);
    EXPECT_TRUE(moved.modal());
    EXPECT_EQ(moved.result(), 7);

    GwMessageBox assigned;
    assigned = copy;
    EXPECT_EQ(text(assigned.title()), "Titel");
    EXPECT_EQ(assigned.style(), 0x46u);
    EXPECT_EQ(assigned.result(), 7);
}

// ---- The box shown

TEST_F(MessageBoxTest, DefaultBoxShowsASingleOkButtonTheExclamationIconAndNoTitle) {
    GwMessageBox box;
    box.setMessage("Achtung");
    BoxAnswerer answerer(IDOK);
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.buttons, std::vector<int>{IDOK});
    EXPECT_EQ(answerer.seen.icon, LoadIconA(nullptr, IDI_EXCLAMATION));
    EXPECT_EQ(answerer.seen.title, "");
    EXPECT_TRUE(shows(answerer.seen, "Achtung"));
    EXPECT_EQ(box.result(), IDOK);
}

TEST_F(MessageBoxTest, ButtonStyles1And0BothGiveASingleOkButton) {
    for (unsigned int style : {1u, 0u}) {
        GwMessageBox box;
        box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(style));
        BoxAnswerer answerer(IDOK);
        box.setVisible(true);
        ASSERT_TRUE(answerer.seen.found) << "style " << style;
        EXPECT_EQ(answerer.seen.buttons, std::vector<int>{IDOK}) << "style " << style;
        EXPECT_EQ(box.result(), IDOK);
    }
}

TEST_F(MessageBoxTest, EachButtonStyleShowsItsButtonsAndAnswersWithThePressedOne) {
    struct Case {
        unsigned int style;
        std::vector<int> buttons; // ascending
        int press;
    };
    std::vector<Case> const cases = {
        {2, {IDOK, IDCANCEL}, IDCANCEL},
        {3, {IDCANCEL, IDRETRY}, IDRETRY},
        {4, {IDABORT, IDRETRY, IDIGNORE}, IDIGNORE},
        {5, {IDYES, IDNO}, IDNO},
        {6, {IDCANCEL, IDYES, IDNO}, IDYES},
        {7, {IDOK}, IDOK},
        {15, {IDOK}, IDOK},
    };
    for (Case const& one : cases) {
        GwMessageBox box;
        box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(one.style));
        BoxAnswerer answerer(one.press);
        box.setVisible(true);
        ASSERT_TRUE(answerer.seen.found) << "style " << one.style;
        EXPECT_EQ(answerer.seen.buttons, one.buttons) << "style " << one.style;
        EXPECT_EQ(box.result(), one.press) << "style " << one.style;
    }
}

TEST_F(MessageBoxTest, IconStylesShowTheirIcons) {
    struct Case {
        GwMessageBox::eIconStyle style;
        LPCSTR icon;
    };
    for (Case const& one :
         {Case{GwMessageBox::eIconHand, IDI_HAND}, Case{GwMessageBox::eIconQuestion, IDI_QUESTION},
          Case{GwMessageBox::eIconExclamation, IDI_EXCLAMATION},
          Case{GwMessageBox::eIconAsterisk, IDI_ASTERISK}}) {
        GwMessageBox box;
        box.setIconStyle(one.style);
        BoxAnswerer answerer(IDOK);
        box.setVisible(true);
        ASSERT_TRUE(answerer.seen.found);
        EXPECT_EQ(answerer.seen.icon, LoadIconA(nullptr, one.icon)) << "icon " << one.style;
    }
}

TEST_F(MessageBoxTest, TitleAndMessageAreShown) {
    GwMessageBox box;
    box.setText("Frage").setMessage("Wirklich?");
    BoxAnswerer answerer(IDOK);
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.title, "Frage");
    EXPECT_TRUE(shows(answerer.seen, "Wirklich?"));
}

TEST_F(MessageBoxTest, StyleBits8To15ReachTheBoxAsTheyStand) {
    GwMessageBox box;
    box.setButtonStyle(GwMessageBox::eOkCancel);
    // MB_DEFBUTTON2 (0x100) rides along with the icon.
    box.setIconStyle(static_cast<GwMessageBox::eIconStyle>(MB_DEFBUTTON2 | MB_ICONQUESTION));
    BoxAnswerer answerer(IDOK);
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.defaultButton, IDCANCEL) << "the second button is the default";
    EXPECT_EQ(answerer.seen.icon, LoadIconA(nullptr, IDI_QUESTION));
}

TEST_F(MessageBoxTest, BitsAbove15NeverReachTheBox) {
    // What MB_TOPMOST (0x40000) does to a box when it is passed.
    LONG topMostPassed = 0;
    {
        BoxAnswerer answerer(IDOK);
        MessageBoxA(nullptr, "direkt", "", MB_OK | MB_TOPMOST);
        ASSERT_TRUE(answerer.seen.found);
        topMostPassed = answerer.seen.extendedStyle & WS_EX_TOPMOST;
    }
    if (topMostPassed == 0)
        GTEST_SKIP() << "MB_TOPMOST gives no WS_EX_TOPMOST box here (Wine), so its absence "
                        "shows nothing; Windows creates the box with WS_EX_TOPMOST";

    GwMessageBox box;
    box.setButtonStyle(static_cast<GwMessageBox::eButtonStyle>(MB_TOPMOST | 1));
    ASSERT_EQ(box.style(), 0x40031u);
    BoxAnswerer answerer(IDOK);
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.extendedStyle & WS_EX_TOPMOST, 0);
    EXPECT_EQ(answerer.seen.buttons, std::vector<int>{IDOK});
}

TEST_F(MessageBoxTest, ShowingWhateverTheArgumentShowsTheBox) {
    GwMessageBox box;
    box.setButtonStyle(GwMessageBox::eYesNo);
    BoxAnswerer answerer(IDYES);
    box.setVisible(false);
    EXPECT_TRUE(answerer.seen.found);
    EXPECT_EQ(box.result(), IDYES);
}

TEST_F(MessageBoxTest, BoxWithoutOwnerIsTaskModal) {
    HWND const other = rawWindow();
    ShowWindow(other, SW_SHOW);
    ASSERT_TRUE(IsWindowEnabled(other));

    GwMessageBox box;
    bool otherEnabledMeanwhile = true;
    BoxAnswerer answerer(IDOK,
                         [&](HWND) { otherEnabledMeanwhile = IsWindowEnabled(other) != FALSE; });
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.owner, nullptr);
    EXPECT_FALSE(otherEnabledMeanwhile) << "every window of the thread is disabled";
    EXPECT_TRUE(IsWindowEnabled(other)) << "and enabled again afterwards";
    DestroyWindow(other);
}

TEST_F(MessageBoxTest, OwnerIsDisabledOnlyWhileTheBoxIsUpAndItsStyleIsRestoredExactly) {
    GwFrame owner(1, 0, false);
    HWND const ownerHwnd = static_cast<HWND>(owner.window());
    SetWindowLongA(ownerHwnd, GWL_STYLE, styleOf(ownerHwnd) & ~WS_MINIMIZEBOX);
    ShowWindow(ownerHwnd, SW_SHOW);
    LONG const ownerStyle = styleOf(ownerHwnd);
    HWND const other = rawWindow();
    ShowWindow(other, SW_SHOW);

    GwMessageBox box(&owner);
    box.setButtonStyle(GwMessageBox::eYesNoCancel);
    LONG styleMeanwhile = 0;
    bool otherEnabledMeanwhile = false;
    BoxAnswerer answerer(IDNO, [&](HWND) {
        styleMeanwhile = styleOf(ownerHwnd);
        otherEnabledMeanwhile = IsWindowEnabled(other) != FALSE;
    });
    EXPECT_EQ(styleOf(ownerHwnd) & WS_DISABLED, 0);
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_EQ(answerer.seen.owner, ownerHwnd);
    EXPECT_EQ(styleMeanwhile, ownerStyle | WS_DISABLED);
    EXPECT_TRUE(otherEnabledMeanwhile) << "with an owner the box is not task-modal";
    EXPECT_EQ(styleOf(ownerHwnd), ownerStyle);
    EXPECT_EQ(box.result(), IDNO);
    DestroyWindow(other);
}

TEST_F(MessageBoxTest, TheWindowActiveBeforeIsActivatedAgain) {
    HWND const first = rawWindow();
    ShowWindow(first, SW_SHOW);
    SetActiveWindow(first);
    ASSERT_EQ(GetActiveWindow(), first);

    GwMessageBox box;
    HWND activeMeanwhile = nullptr;
    BoxAnswerer answerer(IDOK, [&](HWND) { activeMeanwhile = GetActiveWindow(); });
    box.setVisible(true);
    ASSERT_TRUE(answerer.seen.found);
    EXPECT_NE(activeMeanwhile, first) << "the box was active meanwhile";
    EXPECT_EQ(GetActiveWindow(), first);
    DestroyWindow(first);
}
