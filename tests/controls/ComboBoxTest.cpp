// The combo box: its window and edit part, lines managed as in the list box, the last
// selection that changed() compares with, the focus and selection events, and typed text
// corrected by the edit part.
#include <gtest/gtest.h>

#include <memory>

#include <GwComboBox.h>
#include <GwEditField.h>
#include <GwListBox.h>
#include <GwWindowClass.h>

#include "ListTesting.h"

using namespace testing_lists;

namespace {

class TestComboBox : public GwComboBox {
public:
    using GwComboBox::GwComboBox;
    using GwComboBox::msgHandler;
};

using Texts = std::vector<std::string>;

Texts comboTexts(HWND combo) {
    return lineTexts(combo, CB_GETLBTEXT, CB_GETLBTEXTLEN, CB_GETCOUNT);
}

HWND editChild(HWND combo) {
    return FindWindowExA(combo, nullptr, "Edit", nullptr);
}

class ComboBoxTest : public ListFixture {
protected:
    void TearDown() override { DestroyWindow(mTop.hwnd); } // before the spies go

    GwComboBox* make() {
        auto* combo = new GwComboBox(*mTop.window, 400);
        SetWindowPos(hwndOf(*combo), nullptr, 10, 10, 160, 200, SWP_NOZORDER);
        return combo;
    }
    HWND rawCombo(DWORD style) {
        return CreateWindowExA(0, "ComboBox", "", WS_CHILD | WS_VISIBLE | style, 10, 10, 160, 200,
                               mTop.hwnd, reinterpret_cast<HMENU>(401), GetModuleHandleA(nullptr),
                               nullptr);
    }
    GwComboBox* wrap(HWND raw) {
        GwEventData data(raw);
        return dynamic_cast<GwComboBox*>(Class::createInstance(GwComboBox::isa(), &data));
    }
    // Sends the combo box the reflected notification, as its parent does.
    static void notify(GwComboBox* combo, WORD code) {
        SendMessageA(hwndOf(*combo), GwMsgCommand, MAKEWPARAM(400, code),
                     reinterpret_cast<LPARAM>(hwndOf(*combo)));
    }
    // The user presses the down key in the edit part of the shown combo box.
    void pressDownInEditPart(GwComboBox* combo) {
        ShowWindow(mTop.hwnd, SW_SHOW);
        SetForegroundWindow(mTop.hwnd);
        HWND edit = editChild(hwndOf(*combo));
        SetFocus(edit);
        PostMessageA(edit, WM_KEYDOWN, VK_DOWN, 1);
        PostMessageA(edit, WM_KEYUP, VK_DOWN, 0xC0000001);
        pumpMessages();
    }
    std::vector<std::unique_ptr<Spy>> mSpies;
};

} // namespace

// ---- The window and the edit part

TEST_F(ComboBoxTest, CreatesADropDownComboBoxAndFindsItsEditPart) {
    GwComboBox* combo = make();
    HWND hwnd = hwndOf(*combo);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(classNameOf(hwnd), "ComboBox");
    EXPECT_EQ(static_cast<DWORD>(styleOf(hwnd)) & ~WS_HSCROLL, 0x50130002u & ~WS_HSCROLL);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_ID), 400);
    GwEditField* edit = combo->editPart();
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->window(), editChild(hwnd));
    EXPECT_EQ(GwWindow::window(editChild(hwnd), false), edit) << "bound by the child factory";
    EXPECT_FALSE(combo->changed());
}

TEST_F(ComboBoxTest, WrappingFindsTheEditPartAndUsesAnObjectItAlreadyHas) {
    HWND raw = rawCombo(CBS_DROPDOWN);
    GwWindow* existing = GwWindowClass::createChild(editChild(raw));
    ASSERT_NE(dynamic_cast<GwEditField*>(existing), nullptr);
    GwComboBox* combo = wrap(raw);
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->editPart(), existing);
    EXPECT_EQ(GwComboBox::newInstance(nullptr), nullptr);
}

TEST_F(ComboBoxTest, ADropDownListHasNoEditPart) {
    GwComboBox* combo = wrap(rawCombo(CBS_DROPDOWNLIST));
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->editPart(), nullptr);
    combo->add(GwTextItem(1, "eins"));
    combo->selectAt(0, true);
    EXPECT_TRUE(combo->changed());
    EXPECT_FALSE(combo->changed());
}

TEST_F(ComboBoxTest, EditPartOperationsForwardToTheEditField) {
    GwComboBox* combo = make();
    HWND edit = editChild(hwndOf(*combo));
    combo->setValue(2.5);
    EXPECT_EQ(textOf(edit), "2.5");
    combo->setValue(7L);
    EXPECT_EQ(textOf(edit), "7");
    EXPECT_EQ(static_cast<long>(*combo), 7);
    EXPECT_DOUBLE_EQ(static_cast<double>(*combo), 7.0);
    combo->setFormat("%.2lf").checkFormat(true);
    EXPECT_STREQ(combo->format(), "%.2lf");
    EXPECT_EQ(textOf(edit), "7.00") << "switching the check on rewrites the text";
    combo->setMaxValue(5).checkMaxValue(true);
    EXPECT_EQ(textOf(edit), "5.00");
    combo->setMinValue(1).setDefaultValue(3);
    EXPECT_DOUBLE_EQ(combo->minValue(), 1);
    EXPECT_DOUBLE_EQ(combo->maxValue(), 5);
    EXPECT_DOUBLE_EQ(combo->defaultValue(), 3);
    combo->checkMinValue(true);
    combo->setSelection(1, 3);
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 1u);
    EXPECT_EQ(end, 3u);
}

TEST_F(ComboBoxTest, TypedTextIsCorrectedByTheEditPartsFormatAndBoundsOnFocusLoss) {
    GwComboBox* combo = make();
    HWND other = CreateWindowExA(0, "Edit", "", WS_CHILD | WS_VISIBLE, 10, 250, 80, 20, mTop.hwnd,
                                 nullptr, GetModuleHandleA(nullptr), nullptr);
    combo->setFormat("%ld").setMinValue(1).setMaxValue(99).setDefaultValue(42);
    combo->checkMinValue(true).checkMaxValue(true).checkFormat(true);
    HWND edit = editChild(hwndOf(*combo));
    ShowWindow(mTop.hwnd, SW_SHOW);
    SetForegroundWindow(mTop.hwnd);
    for (char const* typed : {"0", "123", "abc", "17"}) {
        SetFocus(edit);
        SetWindowTextA(edit, "");
        for (char const* c = typed; *c != '\0'; ++c)
            SendMessageA(edit, WM_CHAR, static_cast<WPARAM>(*c), 1);
        EXPECT_EQ(textOf(edit), typed);
        SetFocus(other);
        pumpMessages();
        std::string const expected = std::string(typed) == "0"     ? "1"
                                     : std::string(typed) == "123" ? "99"
                                     : std::string(typed) == "abc" ? "42"
                                                                   : "17";
        EXPECT_EQ(textOf(edit), expected) << "typed " << typed;
    }
}

// ---- Lines

TEST_F(ComboBoxTest, LinesFollowTheListBoxRules) {
    GwComboBox* combo = make();
    HWND hwnd = hwndOf(*combo);
    combo->add(CountedItem(1, "Amselweg")).add(CountedItem(2, "Buchenweg"));
    combo->addAt(0, CountedItem(3, "Zedernweg"));
    EXPECT_EQ(comboTexts(hwnd), (Texts{"Amselweg", "Buchenweg", "Zedernweg"}));
    combo->add(CountedItem(2, "Buchenweg"));
    EXPECT_EQ(comboTexts(hwnd), (Texts{"Amselweg", "Buchenweg", "Zedernweg"}));
    EXPECT_EQ(CountedItem::live, 3);
    EXPECT_EQ(SendMessageA(hwnd, CB_GETITEMDATA, 1, 0), reinterpret_cast<LRESULT>(&combo->item(2)));
    combo->add(String("Ulmenweg"), 1);
    EXPECT_EQ(comboTexts(hwnd), (Texts{"Amselweg", "Ulmenweg", "Buchenweg", "Zedernweg"}));
    EXPECT_EQ(combo->size(), 4);
    EXPECT_EQ(combo->sizeOf(), 4);
    combo->remove(1ull).remove(CountedItem(3, "Zedernweg")).removeAt(5).removeAt(-1);
    EXPECT_EQ(comboTexts(hwnd), (Texts{"Ulmenweg", "Buchenweg"}));
    EXPECT_EQ(CountedItem::live, 1);
    combo->removeAt(1);
    EXPECT_EQ(CountedItem::live, 0);
    combo->remove();
    EXPECT_EQ(combo->size(), 0);
}

TEST_F(ComboBoxTest, LookupsShareTheEmptyItemsOfTheListBox) {
    GwComboBox* combo = make();
    GwListBox list(*mTop.window, 1, false, GwWindow::eUnsorted);
    EXPECT_EQ(&combo->item(5), &list.item(5));
    EXPECT_EQ(&combo->itemAt(0), &list.itemAt(0));
    EXPECT_NE(&combo->item(5), &combo->itemAt(0));
}

TEST_F(ComboBoxTest, SetSortingMakesLaterAddsUseAddStringAndSortingFollowsTheStyle) {
    HWND raw = rawCombo(CBS_DROPDOWN);
    mSpies.push_back(std::make_unique<Spy>(raw));
    Spy& spy = *mSpies.back();
    GwComboBox* combo = wrap(raw);
    EXPECT_EQ(combo->sorting(), GwWindow::eUnsorted);
    combo->add(GwTextItem(1, "b"));
    EXPECT_EQ(spy.of(CB_INSERTSTRING).size(), 1u);
    combo->setSorting(GwWindow::eSorted);
    EXPECT_NE(styleOf(raw) & CBS_SORT, 0);
    EXPECT_EQ(combo->sorting(), GwWindow::eSorted);
    combo->add(GwTextItem(2, "a"));
    EXPECT_EQ(spy.of(CB_ADDSTRING).size(), 1u);
    EXPECT_EQ(spy.of(CB_INSERTSTRING).size(), 1u);
    SetWindowLongA(raw, GWL_STYLE, styleOf(raw) & ~CBS_SORT); // outside the library
    EXPECT_EQ(combo->sorting(), GwWindow::eUnsorted);
    combo->add(GwTextItem(3, "c"));
    EXPECT_EQ(spy.of(CB_INSERTSTRING).size(), 2u);
    EXPECT_EQ(combo->item(2).text(), String("a"));
}

TEST_F(ComboBoxTest, LinesOfOtherCodeAreNoMatchAndTheEndDeletesEveryCopy) {
    GwComboBox* combo = make();
    HWND hwnd = hwndOf(*combo);
    combo->add(CountedItem(1, "a"));
    SendMessageA(hwnd, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("fremd"));
    combo->add(CountedItem(2, "b"));
    EXPECT_EQ(comboTexts(hwnd), (Texts{"fremd", "a", "b"}));
    EXPECT_EQ(&combo->itemAt(0), &combo->itemAt(-1));
    EXPECT_EQ(combo->item(2).text(), String("b"));
    SendMessageA(hwnd, CB_DELETESTRING, 1, 0); // the line of item 1, by other code
    EXPECT_EQ(&combo->item(1), &combo->item(77));
    EXPECT_EQ(CountedItem::live, 2) << "kept until the end";
    for (unsigned long long id = 10; id < 1010; ++id)
        combo->add(CountedItem(id, "viele"));
    DestroyWindow(hwnd);
    EXPECT_EQ(CountedItem::live, 0);
}

// ---- Selection and changed()

TEST_F(ComboBoxTest, SelectionByIdentifierItemAndPosition) {
    GwComboBox* combo = make();
    combo->add(GwTextItem(10, "a")).add(GwTextItem(20, "b")).add(GwTextItem(30, "c"));
    EXPECT_EQ(combo->selected(), ~0ull);
    combo->select(20ull, true);
    EXPECT_EQ(combo->selectedAt(), 1);
    EXPECT_EQ(combo->selected(), 20u);
    EXPECT_TRUE(combo->selected(20ull));
    EXPECT_TRUE(combo->selected(GwTextItem(20, "b")));
    EXPECT_FALSE(combo->selected(30ull));
    EXPECT_TRUE(combo->selectedAt(1));
    combo->setSelected(GwTextItem(30, "c"), true);
    EXPECT_EQ(combo->selectedAt(), 2);
    combo->select(99ull, false);
    EXPECT_EQ(combo->selectedAt(), 2);
    combo->select(10ull, false);
    EXPECT_EQ(combo->selectedAt(), -1);
    combo->selectAt(0, true);
    EXPECT_EQ(combo->selected(), 10u);
    combo->setSelectedAt(2, false);
    EXPECT_EQ(combo->selectedAt(), -1);
}

TEST_F(ComboBoxTest, ChangedComparesWithTheLineThatTheFirstSelChangeRecorded) {
    GwComboBox* combo = make();
    combo->add(String("a")).add(String("b")).add(String("c"));
    EXPECT_FALSE(combo->changed()) << "no selection: -1 both";
    combo->selectAt(1, true);
    notify(combo, CBN_SELCHANGE); // records line 1 before the event
    EXPECT_FALSE(combo->changed()) << "the line that the notification recorded";
    combo->selectAt(2, true);
    EXPECT_TRUE(combo->changed());
    EXPECT_FALSE(combo->changed()) << "reported once";
    combo->selectAt(0, true);
    notify(combo, CBN_SELCHANGE); // the last selection is set already: kept
    EXPECT_TRUE(combo->changed());
    EXPECT_FALSE(combo->changed());
}

TEST_F(ComboBoxTest, TypingIntoTheEditPartMakesChangedTrueAndResetsTheModifyFlag) {
    GwComboBox* combo = make();
    HWND edit = editChild(hwndOf(*combo));
    EXPECT_FALSE(combo->changed());
    SendMessageA(edit, WM_CHAR, 'x', 1);
    EXPECT_NE(SendMessageA(edit, EM_GETMODIFY, 0, 0), 0);
    EXPECT_TRUE(combo->changed());
    EXPECT_EQ(SendMessageA(edit, EM_GETMODIFY, 0, 0), 0);
    EXPECT_FALSE(combo->changed());
}

TEST_F(ComboBoxTest, CopyClonesAnEmptyComboBoxThatNamesTheSourcesEditPart) {
    GwComboBox* combo = make();
    combo->add(String("a"));
    combo->selectAt(0, true);
    notify(combo, CBN_SELCHANGE);
    GwComboBox copy(*combo);
    ASSERT_NE(copy.window(), nullptr);
    EXPECT_NE(copy.window(), combo->window());
    EXPECT_EQ(copy.size(), 0);
    EXPECT_EQ(copy.editPart(), combo->editPart());
    EXPECT_TRUE(copy.changed()) << "last selection 0 taken over, nothing selected here";
}

// ---- Events

TEST_F(ComboBoxTest, TheOwnSetFocusReachesNoHandlerAndEachCbnSetFocusGivesOneFocusIn) {
    HWND raw = rawCombo(CBS_DROPDOWN);
    mSpies.push_back(std::make_unique<Spy>(raw));
    Spy& spy = *mSpies.back();
    GwComboBox* combo = wrap(raw);
    Recorder own;
    combo->add(&own);
    ShowWindow(mTop.hwnd, SW_SHOW);
    SetForegroundWindow(mTop.hwnd);
    SetFocus(raw); // the platform hands the focus on to the edit part
    pumpMessages();
    EXPECT_FALSE(spy.of(WM_SETFOCUS).empty()) << "the combo box had the focus itself";
    EXPECT_EQ(GetFocus(), editChild(raw));
    EXPECT_EQ(own.names(), (std::vector<std::string>{"focusin"})) << "from CBN_SETFOCUS only";
    own.calls.clear();
    notify(combo, CBN_SETFOCUS);
    notify(combo, CBN_KILLFOCUS);
    notify(combo, CBN_SETFOCUS);
    EXPECT_EQ(own.names(), (std::vector<std::string>{"focusin", "focusout", "focusin"}));
    combo->remove(&own);
}

TEST_F(ComboBoxTest, KeyboardInputSendsTheSelectEventToTheTopLevelHandlers) {
    GwComboBox* combo = make();
    combo->add(GwTextItem(1, "Eins")).add(GwTextItem(2, "Zwei")).add(GwTextItem(3, "Drei"));
    combo->selectAt(0, true);
    Recorder top;
    mTop.window->add(&top);
    pressDownInEditPart(combo);
    EXPECT_EQ(combo->selected(), 2u);
    ASSERT_EQ(count(top, "select"), 1);
    for (Call const& call : top.calls) {
        if (call.callback == "select") {
            EXPECT_EQ(call.window, combo);
        }
    }
    EXPECT_FALSE(combo->changed()) << "the first selection change recorded the new line";
    mTop.window->remove(&top);
}

TEST_F(ComboBoxTest, DoubleClickNotificationGivesTheActivateEvent) {
    GwComboBox* combo = make();
    Recorder top;
    mTop.window->add(&top);
    notify(combo, CBN_DBLCLK);
    notify(combo, CBN_EDITCHANGE);
    notify(combo, CBN_DROPDOWN);
    EXPECT_EQ(top.names(), (std::vector<std::string>{"activate"}));
    mTop.window->remove(&top);
}

TEST_F(ComboBoxTest, LinesChangedBehindTheComboBoxAreReadAfresh) {
    GwComboBox* combo = make();
    HWND hwnd = hwndOf(*combo);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(hwnd, &info));
    combo->add(CountedItem(1, "a")).add(CountedItem(2, "b"));
    // Straight to the combo box's own list, past its procedure.
    SendMessageA(info.hwndList, LB_DELETESTRING, 0, 0);
    combo->add(CountedItem(3, "c")); // appended where the platform put it
    EXPECT_EQ(comboTexts(hwnd), (Texts{"b", "c"}));
    EXPECT_EQ(&combo->item(3), &combo->itemAt(1));
    EXPECT_EQ(&combo->item(1), &combo->item(99)) << "its line is gone";
    SendMessageA(info.hwndList, LB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("fremd"));
    combo->add(CountedItem(2, "b")); // replaces the line of b where it is now
    EXPECT_EQ(comboTexts(hwnd), (Texts{"fremd", "b", "c"}));
    EXPECT_EQ(&combo->item(2), &combo->itemAt(1));
    combo->add(CountedItem(4, "d"));
    EXPECT_EQ(comboTexts(hwnd), (Texts{"fremd", "b", "c", "d"}));
    DestroyWindow(hwnd);
    EXPECT_EQ(CountedItem::live, 0);
}

namespace {

// Removes the selected line, and the line with identifier 1, while the selection changes.
class RemovesComboSelection : public GwEventHandler {
public:
    int cbSelect(GwWindow& window) override {
        auto& combo = dynamic_cast<GwComboBox&>(window);
        combo.removeAt(combo.selectedAt());
        combo.remove(1ull);
        ++calls;
        return GwResultContinue;
    }
    int calls = 0;
};

} // namespace

TEST_F(ComboBoxTest, RemovingLinesInTheSelectHandlerIsSafe) {
    GwComboBox* combo = make();
    combo->add(CountedItem(1, "a")).add(CountedItem(2, "b")).add(CountedItem(3, "c"));
    combo->selectAt(0, true);
    RemovesComboSelection remover;
    combo->add(&remover);
    // Keyboard input moves the selection to the second line: the handler removes it and the
    // first one.
    pressDownInEditPart(combo);
    EXPECT_EQ(remover.calls, 1);
    EXPECT_EQ(comboTexts(hwndOf(*combo)), (Texts{"c"}));
    EXPECT_EQ(CountedItem::live, 1);
    combo->remove(&remover);
}
