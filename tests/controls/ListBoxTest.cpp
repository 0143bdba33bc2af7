// The list box: its window, lines backed by item copies, replacement and the deliberate
// rules of adding, selection in both modes, the shared empty items, lines changed by other
// code, the events of real clicks and the end of the copies.
#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include <GwListBox.h>

#include "ListTesting.h"

using namespace testing_lists;

GW_CLASS_MAKES(testing_lists::CountedItem, "CountedItem", "GwTextItem")

namespace {

DWORD const kBaseStyle = 0x50330141;
// The platform shows and hides the scroll bars as the lines need them, and with them these
// style bits.
DWORD const kScrollBars = WS_VSCROLL | WS_HSCROLL;

DWORD styleWithoutScrollBars(HWND hwnd) {
    return static_cast<DWORD>(styleOf(hwnd)) & ~kScrollBars;
}

class TestListBox : public GwListBox {
public:
    using GwListBox::GwListBox;
    using GwListBox::msgHandler;
};

class ListBoxTest : public ListFixture {
protected:
    // The windows go before the spies that watch them.
    void TearDown() override { DestroyWindow(mTop.hwnd); }

    GwListBox* make(bool multiple = false, GwWindow::eSorting sorting = GwWindow::eUnsorted) {
        auto* list = new GwListBox(*mTop.window, 300, multiple, sorting);
        list->setPosition(0, 0);
        list->setDimension(180, 160);
        return list;
    }
    // A raw list box with the style, watched by a spy and then wrapped by the factory.
    GwListBox* wrap(DWORD style, Spy*& spy) {
        HWND raw = CreateWindowExA(0, "ListBox", "", WS_CHILD | WS_VISIBLE | style, 0, 0, 180, 160,
                                   mTop.hwnd, reinterpret_cast<HMENU>(301),
                                   GetModuleHandleA(nullptr), nullptr);
        mSpies.push_back(std::make_unique<Spy>(raw));
        spy = mSpies.back().get();
        GwEventData data(raw);
        return dynamic_cast<GwListBox*>(Class::createInstance(GwListBox::isa(), &data));
    }
    static std::vector<unsigned long long> ids(GwListBox const& list) {
        std::vector<unsigned long long> out;
        for (int i = 0; i < list.size(); ++i)
            out.push_back(list.itemAt(i).id());
        return out;
    }
    std::vector<std::unique_ptr<Spy>> mSpies;
};

using Ids = std::vector<unsigned long long>;
using Texts = std::vector<std::string>;

} // namespace

// ---- The window

TEST_F(ListBoxTest, CreatesAListBoxChildWithTheStyleOfItsMode) {
    GwListBox* single = make();
    HWND hwnd = hwndOf(*single);
    ASSERT_NE(hwnd, nullptr);
    EXPECT_EQ(GetParent(hwnd), mTop.hwnd);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_ID), 300);
    EXPECT_EQ(classNameOf(hwnd), "ListBox");
    EXPECT_EQ(styleWithoutScrollBars(hwnd), kBaseStyle & ~kScrollBars);
    EXPECT_EQ(GetWindowLongPtrA(hwnd, GWLP_USERDATA), reinterpret_cast<LONG_PTR>(single));
    EXPECT_FALSE(single->multipleSelection());
    EXPECT_EQ(single->sorting(), GwWindow::eUnsorted);

    GwListBox* both = make(true, GwWindow::eSorted);
    EXPECT_EQ(styleWithoutScrollBars(hwndOf(*both)),
              (kBaseStyle | 0x0808 | LBS_SORT) & ~kScrollBars);
    EXPECT_TRUE(both->multipleSelection());
    EXPECT_EQ(both->sorting(), GwWindow::eSorted);
}

TEST_F(ListBoxTest, FactoryWrapsOnlyAHandleAndTakesTheSelectionModeFromTheStyle) {
    EXPECT_EQ(GwListBox::newInstance(nullptr), nullptr);
    GwEventData none;
    EXPECT_EQ(GwListBox::newInstance(&none), nullptr);
    Spy* spy = nullptr;
    GwListBox* extended = wrap(LBS_HASSTRINGS | LBS_EXTENDEDSEL, spy);
    ASSERT_NE(extended, nullptr);
    EXPECT_TRUE(extended->multipleSelection());
    GwListBox* plain = wrap(LBS_HASSTRINGS, spy);
    EXPECT_FALSE(plain->multipleSelection());
}

TEST_F(ListBoxTest, CopyClonesAnEmptyListWithTheModesAndAssignmentSharesTheLines) {
    GwListBox* list = make(true, GwWindow::eSorted);
    list->add(GwTextItem(1, "Eins"));
    GwListBox copy(*list);
    ASSERT_NE(copy.window(), nullptr);
    EXPECT_NE(copy.window(), list->window());
    EXPECT_EQ(copy.size(), 0);
    EXPECT_TRUE(copy.multipleSelection());
    EXPECT_EQ(copy.sorting(), GwWindow::eSorted);
    EXPECT_EQ(static_cast<DWORD>(styleOf(hwndOf(copy))),
              static_cast<DWORD>(styleOf(hwndOf(*list))));

    auto* holder = new TestListBox();
    static_cast<GwListBox&>(*holder) = *list; // now both name the first window and share its lines
    EXPECT_EQ(holder->window(), list->window());
    EXPECT_EQ(holder->item(1).text(), String("Eins"));
    EXPECT_EQ(&holder->item(1), &list->item(1));
    holder->add(GwTextItem(2, "Zwei"));
    EXPECT_EQ(&holder->item(2), &list->item(2));
    *holder = TestListBox(); // names no window again
    delete holder;
    EXPECT_EQ(list->size(), 2);
}

// ---- Lines and copies

TEST_F(ListBoxTest, AddShowsTheTextAndKeepsACopyAsItemData) {
    GwListBox* list = make();
    GwTextItem eins(5, "Eins");
    list->add(eins).add(GwTextItem(6, "Zwei"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Eins", "Zwei"}));
    GwItem const& stored = list->item(5);
    EXPECT_NE(&stored, &eins);
    EXPECT_EQ(stored.isA(), GwTextItem::isa());
    EXPECT_EQ(stored.text(), String("Eins"));
    EXPECT_EQ(SendMessageA(hwndOf(*list), LB_GETITEMDATA, 0, 0),
              reinterpret_cast<LRESULT>(&stored));
    EXPECT_EQ(&list->itemAt(1), &list->item(6));
    EXPECT_EQ(list->size(), 2);
    EXPECT_EQ(list->sizeOf(), 2);
}

TEST_F(ListBoxTest, AddOfATextMakesATextItemWithAFreshIdentifier) {
    GwListBox* list = make();
    unsigned int const next = GwItem::gItemId;
    list->add(String("Hauptstraße"));
    EXPECT_EQ(list->itemAt(0).id(), next);
    EXPECT_EQ(list->itemAt(0).text(), String("Hauptstraße"));
    list->add(String("Bahnhofstraße"), 0);
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Hauptstraße", "Bahnhofstraße"}));
}

TEST_F(ListBoxTest, AddAtZeroOnANonEmptyListAppends) {
    GwListBox* list = make();
    list->add(GwTextItem(1, "a")).add(GwTextItem(2, "b"));
    list->addAt(0, GwTextItem(3, "c"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"a", "b", "c"}));
    list->addAt(1, GwTextItem(4, "d"));
    list->add(GwTextItem(5, "e"), -3);
    list->addAt(99, GwTextItem(6, "f"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"a", "d", "b", "c", "e", "f"}));
}

TEST_F(ListBoxTest, AddAtReplacesAnEqualLineAtThatPosition) {
    GwListBox* list = make();
    list->add(CountedItem(1, "a")).add(CountedItem(2, "b")).add(CountedItem(3, "c"));
    EXPECT_EQ(CountedItem::live, 3);
    list->addAt(1, CountedItem(2, "b"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"a", "b", "c"}));
    EXPECT_EQ(CountedItem::live, 3) << "the old copy is deleted";
    list->addAt(1, CountedItem(2, "B")); // not equal: inserted before it
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"a", "B", "b", "c"}));
}

TEST_F(ListBoxTest, AddingAnEqualItemReplacesTheLineInPlaceAndDeletesTheOldCopy) {
    GwListBox* list = make();
    list->add(CountedItem(1, "Eins")).add(CountedItem(2, "Zwei")).add(CountedItem(3, "Drei"));
    GwItem const* before = &list->item(2);
    list->add(CountedItem(2, "Zwei"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Eins", "Zwei", "Drei"}));
    EXPECT_EQ(CountedItem::live, 3);
    EXPECT_EQ(list->itemAt(1).id(), 2u);
    EXPECT_NE(&list->item(2), before) << "a new copy";
    // Same identifier, another text: not equal for text items, so a second line.
    list->add(CountedItem(2, "zwei"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Eins", "Zwei", "Drei", "zwei"}));
    EXPECT_EQ(&list->item(2), &list->itemAt(1)) << "the first line with the identifier";
}

TEST_F(ListBoxTest, AnItemWithoutIdentifierIsAlwaysAppended) {
    GwListBox* list = make();
    list->add(GwTextItem(~0ull, "x")).add(GwTextItem(~0ull, "x"));
    EXPECT_EQ(list->size(), 2);
}

TEST_F(ListBoxTest, ComparingWithACopyOfAnotherItemClassRaisesBadCastAndChangesNothing) {
    GwListBox* list = make();
    list->add(GwItem(7));
    EXPECT_THROW(list->add(GwTextItem(7, "sieben")), std::bad_cast);
    EXPECT_EQ(list->size(), 1);
    // A plain item compares by identifier only: it replaces a text item's line.
    list->add(GwTextItem(8, "acht"));
    list->add(GwItem(8));
    EXPECT_EQ(list->size(), 2);
    EXPECT_EQ(list->itemAt(1).isA(), GwItem::isa());
}

TEST_F(ListBoxTest, SortedListPlacesLinesByTextAndSetSortingSwitchesIt) {
    GwListBox* list = make(false, GwWindow::eSorted);
    list->add(GwTextItem(1, "Mitte")).add(GwTextItem(2, "Anfang")).add(GwTextItem(3, "Zuletzt"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Anfang", "Mitte", "Zuletzt"}));
    EXPECT_EQ(list->item(2).text(), String("Anfang"));
    list->add(GwTextItem(1, "Mitte")); // replaced: placed by its text again
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Anfang", "Mitte", "Zuletzt"}));

    list->setSorting(GwWindow::eUnsorted);
    EXPECT_EQ(styleOf(hwndOf(*list)) & LBS_SORT, 0);
    EXPECT_EQ(list->sorting(), GwWindow::eUnsorted);
    list->add(GwTextItem(4, "Aaa"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Anfang", "Mitte", "Zuletzt", "Aaa"}));
    list->setSorting(GwWindow::eSorted);
    EXPECT_NE(styleOf(hwndOf(*list)) & LBS_SORT, 0);
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Anfang", "Mitte", "Zuletzt", "Aaa"}))
        << "the lines keep their order";
}

TEST_F(ListBoxTest, ListWrappedWithSortStyleReportsSortingZeroAndAppendsUnsorted) {
    Spy* spy = nullptr;
    GwListBox* list = wrap(LBS_HASSTRINGS | LBS_SORT | LBS_NOTIFY, spy);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->sorting(), GwWindow::eUnsorted);
    list->add(GwTextItem(1, "Zeppelinstraße")).add(GwTextItem(2, "Amselweg"));
    EXPECT_EQ(lineTexts(hwndOf(*list)), (Texts{"Zeppelinstraße", "Amselweg"}));
    EXPECT_TRUE(spy->of(LB_ADDSTRING).empty());
    ASSERT_EQ(spy->of(LB_INSERTSTRING).size(), 2u);
    EXPECT_EQ(static_cast<int>(spy->of(LB_INSERTSTRING)[1].wParam), -1);
}

TEST_F(ListBoxTest, RemovalsByIdentifierItemAndPositionDeleteTheirCopies) {
    GwListBox* list = make();
    for (unsigned long long id = 1; id <= 5; ++id)
        list->add(CountedItem(id, "z"));
    EXPECT_EQ(CountedItem::live, 5);
    list->remove(3ull);
    EXPECT_EQ(ids(*list), (Ids{1, 2, 4, 5}));
    list->remove(CountedItem(4, "z"));
    EXPECT_EQ(ids(*list), (Ids{1, 2, 5}));
    list->remove(CountedItem(5, "anders")); // not equal: stays
    EXPECT_EQ(ids(*list), (Ids{1, 2, 5}));
    list->removeAt(0);
    EXPECT_EQ(ids(*list), (Ids{2, 5}));
    EXPECT_EQ(CountedItem::live, 2);
    list->removeAt(2).removeAt(-1).remove(99ull);
    EXPECT_EQ(ids(*list), (Ids{2, 5}));
    list->remove();
    EXPECT_EQ(list->size(), 0);
    EXPECT_EQ(CountedItem::live, 0);
}

TEST_F(ListBoxTest, RemoveAllClearsEachLinesItemDataBeforeTheReset) {
    Spy* spy = nullptr;
    GwListBox* list = wrap(LBS_HASSTRINGS, spy);
    list->add(GwTextItem(1, "a")).add(GwTextItem(2, "b"));
    spy->sent.clear();
    list->remove();
    std::vector<Spy::Sent> const cleared = spy->of(LB_SETITEMDATA);
    ASSERT_EQ(cleared.size(), 2u);
    EXPECT_EQ(cleared[0].lParam, 0);
    EXPECT_EQ(cleared[1].wParam, 1u);
    ASSERT_EQ(spy->of(LB_RESETCONTENT).size(), 1u);
}

// ---- Lookups and the shared empty items

TEST_F(ListBoxTest, LookupsOutOfRangeAnswerTheSharedEmptyItems) {
    GwListBox* list = make();
    GwItem const& unknownOnEmpty = list->item(42);
    list->add(GwTextItem(1, "a")).add(GwTextItem(2, "b"));
    GwItem const& before = list->itemAt(-1);
    EXPECT_EQ(&list->itemAt(2), &before);
    EXPECT_EQ(&list->itemAt(-1000), &before);
    GwItem const& unknown = list->item(42);
    EXPECT_EQ(&unknown, &unknownOnEmpty);
    EXPECT_NE(&unknown, &before) << "two different shared items";
    EXPECT_EQ(unknown.text(), String(""));
    GwListBox* other = make();
    EXPECT_EQ(&other->itemAt(0), &before) << "shared by every list";
}

TEST_F(ListBoxTest, TopIndexIsThePlatforms) {
    GwListBox* list = make();
    for (int i = 0; i < 40; ++i)
        list->add(String("Zeile"));
    list->setTopIndex(12);
    EXPECT_EQ(list->topIndex(), 12);
    EXPECT_EQ(SendMessageA(hwndOf(*list), LB_GETTOPINDEX, 0, 0), 12);
}

// ---- Selection

TEST_F(ListBoxTest, SingleSelectionSelectsFoundLinesAndAnswersIdentifiers) {
    GwListBox* list = make();
    list->add(GwTextItem(10, "a")).add(GwTextItem(20, "b")).add(GwTextItem(30, "c"));
    EXPECT_EQ(list->selected(), ~0ull);
    EXPECT_EQ(list->selectedAt(), -1);
    list->select(20ull, true);
    EXPECT_EQ(SendMessageA(hwndOf(*list), LB_GETCURSEL, 0, 0), 1);
    EXPECT_EQ(list->selected(), 20u);
    EXPECT_TRUE(list->selected(20ull));
    EXPECT_TRUE(list->selected(GwTextItem(20, "b")));
    EXPECT_FALSE(list->selected(GwTextItem(20, "B")));
    EXPECT_FALSE(list->selected(10ull));
    EXPECT_FALSE(list->selected(99ull));
    EXPECT_TRUE(list->selectedAt(1));
    list->setSelected(GwTextItem(30, "c"), true);
    EXPECT_EQ(list->selectedAt(), 2);
    list->select(99ull, false); // not found: nothing
    EXPECT_EQ(list->selectedAt(), 2);
    list->select(10ull, false); // found: nothing selected any more
    EXPECT_EQ(list->selectedAt(), -1);
    list->selectAt(0, true);
    EXPECT_EQ(list->selected(), 10u);
    list->setSelectedAt(0, false);
    EXPECT_EQ(list->selectedAt(), -1);
}

TEST_F(ListBoxTest, SelectTrueOnASingleSelectionListSelectsTheLastLine) {
    GwListBox* list = make();
    list->add(String("a")).add(String("b")).add(String("c"));
    list->select(true);
    EXPECT_EQ(list->selectedAt(), 2);
    list->select(false);
    EXPECT_EQ(list->selectedAt(), -1);
}

TEST_F(ListBoxTest, SelectTrueOnAnEmptySingleSelectionListSendsSetCurSelMinusOne) {
    Spy* spy = nullptr;
    GwListBox* list = wrap(LBS_HASSTRINGS, spy);
    spy->sent.clear();
    list->select(true);
    std::vector<Spy::Sent> const sent = spy->of(LB_SETCURSEL);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(static_cast<int>(sent[0].wParam), -1);
    EXPECT_EQ(list->selectedAt(), -1);
}

TEST_F(ListBoxTest, MultipleSelectionSelectedAnswersThePositionOfTheFirstSelectedLine) {
    GwListBox* list = make(true);
    for (unsigned long long id = 100; id < 107; ++id)
        list->add(GwTextItem(id, "x"));
    EXPECT_EQ(list->selected(), ~0ull);
    list->selectAt(5, true).select(102ull, true);
    EXPECT_EQ(list->selected(), 2u) << "a position, not the identifier 102";
    EXPECT_EQ(list->selectedAt(), 2);
    EXPECT_TRUE(list->selected(105ull));
    EXPECT_TRUE(list->selected(GwTextItem(105, "x")));
    EXPECT_FALSE(list->selected(101ull));
    list->select(102ull, false);
    EXPECT_EQ(list->selected(), 5u);
    list->select(true);
    EXPECT_EQ(SendMessageA(hwndOf(*list), LB_GETSELCOUNT, 0, 0), 7);
    list->select(false);
    EXPECT_EQ(SendMessageA(hwndOf(*list), LB_GETSELCOUNT, 0, 0), 0);
    EXPECT_EQ(list->selectedAt(), -1);
}

// ---- Lines of other code

TEST_F(ListBoxTest, LinesAddedByOtherCodeWithoutItemDataAreNoMatch) {
    GwListBox* list = make();
    HWND hwnd = hwndOf(*list);
    list->add(GwTextItem(1, "a"));
    SendMessageA(hwnd, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("fremd"));
    SendMessageA(hwnd, LB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("oben"));
    list->add(GwTextItem(2, "b"));
    EXPECT_EQ(lineTexts(hwnd), (Texts{"oben", "a", "fremd", "b"}));
    EXPECT_EQ(&list->item(2), &list->itemAt(3));
    EXPECT_EQ(list->item(1).text(), String("a"));
    EXPECT_EQ(&list->itemAt(0), &list->itemAt(-1)) << "no copy: the shared empty item";
    GwItem const& empty = list->itemAt(0);
    // Not even the identifier of the shared empty item finds the line without data.
    EXPECT_EQ(&list->item(empty.id()), &list->item(987654));
    list->selectAt(2, true);
    EXPECT_EQ(list->selected(), ~0ull) << "a line without item has no identifier";
    list->removeAt(0);
    EXPECT_EQ(lineTexts(hwnd), (Texts{"a", "fremd", "b"}));
    list->remove(2ull);
    EXPECT_EQ(lineTexts(hwnd), (Texts{"a", "fremd"}));
}

TEST_F(ListBoxTest, ItemDataSetByOtherCodeIsNeitherReadNorDeleted) {
    GwListBox* list = make();
    HWND hwnd = hwndOf(*list);
    list->add(CountedItem(1, "a")).add(CountedItem(2, "b"));
    GwTextItem foreign(2, "b");
    SendMessageA(hwnd, LB_SETITEMDATA, 1, reinterpret_cast<LPARAM>(&foreign));
    SendMessageA(hwnd, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x"));
    SendMessageA(hwnd, LB_SETITEMDATA, 2, 12345); // not a pointer at all
    EXPECT_EQ(&list->item(2), &list->item(99)) << "not the list's copy: no match";
    list->add(CountedItem(3, "c"));
    EXPECT_EQ(list->size(), 4);
    list->remove();
    EXPECT_EQ(foreign.text(), String("b")) << "left alone";
    EXPECT_EQ(CountedItem::live, 0) << "the displaced copy was kept and is deleted now";
}

TEST_F(ListBoxTest, ALineDeletedByOtherCodeKeepsItsCopyUntilTheListEnds) {
    GwListBox* list = make();
    HWND hwnd = hwndOf(*list);
    list->add(CountedItem(1, "a")).add(CountedItem(2, "b")).add(CountedItem(3, "c"));
    auto const* held =
        reinterpret_cast<CountedItem const*>(SendMessageA(hwnd, LB_GETITEMDATA, 1, 0));
    SendMessageA(hwnd, LB_DELETESTRING, 1, 0);
    EXPECT_EQ(held->text(), String("b")) << "still alive for the code that deleted the line";
    EXPECT_EQ(CountedItem::live, 3);
    EXPECT_EQ(ids(*list), (Ids{1, 3}));
    EXPECT_EQ(&list->item(2), &list->item(99));
    SendMessageA(hwnd, LB_RESETCONTENT, 0, 0);
    EXPECT_EQ(list->size(), 0);
    list->add(CountedItem(4, "d"));
    EXPECT_EQ(list->itemAt(0).id(), 4u);
    DestroyWindow(hwnd);
    EXPECT_EQ(CountedItem::live, 0);
}

TEST_F(ListBoxTest, LinesOfAWrappedListAreFound) {
    HWND raw = CreateWindowExA(0, "ListBox", "", WS_CHILD | LBS_HASSTRINGS, 0, 0, 100, 100,
                               mTop.hwnd, nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(raw, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("vorher"));
    GwEventData data(raw);
    auto* list = dynamic_cast<GwListBox*>(Class::createInstance(GwListBox::isa(), &data));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->size(), 1);
    list->add(GwTextItem(8, "acht"));
    EXPECT_EQ(lineTexts(raw), (Texts{"vorher", "acht"}));
    EXPECT_EQ(list->item(8).text(), String("acht"));
}

// ---- The end of the copies

TEST_F(ListBoxTest, DestroyingAListWithAThousandLinesLeavesNoCopy) {
    GwListBox* list = make();
    for (unsigned long long id = 0; id < 1000; ++id)
        list->add(CountedItem(id, "Zeile"));
    EXPECT_EQ(CountedItem::live, 1000);
    DestroyWindow(hwndOf(*list)); // the object deletes itself
    EXPECT_EQ(CountedItem::live, 0);
}

TEST_F(ListBoxTest, DeletingAListObjectDeletesItsCopiesAndItsWindow) {
    GwListBox* list = make();
    HWND hwnd = hwndOf(*list);
    for (unsigned long long id = 0; id < 1000; ++id)
        list->add(CountedItem(id, "Zeile"));
    delete list;
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_EQ(CountedItem::live, 0);
}

TEST_F(ListBoxTest, DestroyingTheParentDeletesTheCopies) {
    GwListBox* list = make();
    list->add(CountedItem(1, "a"));
    DestroyWindow(mTop.hwnd);
    EXPECT_EQ(CountedItem::live, 0);
}

// ---- Events

TEST_F(ListBoxTest, AClickOnALineSendsTheSelectEventToTheTopLevelHandlers) {
    GwListBox* list = make();
    list->add(GwTextItem(1, "Eins")).add(GwTextItem(2, "Zwei")).add(GwTextItem(3, "Drei"));
    Recorder top;
    mTop.window->add(&top);
    Recorder own;
    list->add(&own);
    ShowWindow(mTop.hwnd, SW_SHOW);
    LPARAM const at = clickLine(hwndOf(*list), 1);
    pumpMessages();
    EXPECT_EQ(list->selected(), 2u);
    ASSERT_EQ(count(top, "select"), 1);
    EXPECT_EQ(count(own, "select"), 1);
    for (Call const& call : top.calls) {
        if (call.callback == "select") {
            EXPECT_EQ(call.window, list);
        }
    }
    // A double click gives the activate event.
    PostMessageA(hwndOf(*list), WM_LBUTTONDBLCLK, MK_LBUTTON, at);
    PostMessageA(hwndOf(*list), WM_LBUTTONUP, 0, at);
    pumpMessages();
    EXPECT_EQ(count(top, "activate"), 1);
    list->remove(&own);
    mTop.window->remove(&top);
}

TEST_F(ListBoxTest, OtherNotificationsGiveNoEvent) {
    auto* list = static_cast<TestListBox*>(make());
    Recorder top;
    mTop.window->add(&top);
    EXPECT_EQ(list->msgHandler(GwMsgCommand, MAKEWPARAM(300, LBN_SETFOCUS), 0), 0);
    EXPECT_EQ(list->msgHandler(GwMsgCommand, MAKEWPARAM(300, LBN_SELCANCEL), 0), 0);
    EXPECT_TRUE(top.calls.empty());
    list->msgHandler(GwMsgCommand, MAKEWPARAM(300, LBN_SELCHANGE), 0);
    EXPECT_EQ(top.names(), (std::vector<std::string>{"select"}));
    mTop.window->remove(&top);
}

namespace {

// Removes the selected line when it hears of the selection.
class RemovesSelection : public GwEventHandler {
public:
    int cbSelect(GwWindow& window) override {
        auto& list = dynamic_cast<GwListBox&>(window);
        list.removeAt(list.selectedAt());
        list.remove(1ull);
        ++calls;
        return GwResultContinue;
    }
    int calls = 0;
};

} // namespace

TEST_F(ListBoxTest, RemovingLinesInTheSelectHandlerIsSafe) {
    GwListBox* list = make();
    list->add(CountedItem(1, "a")).add(CountedItem(2, "b")).add(CountedItem(3, "c"));
    RemovesSelection remover;
    list->add(&remover);
    ShowWindow(mTop.hwnd, SW_SHOW);
    clickLine(hwndOf(*list), 2);
    pumpMessages();
    EXPECT_EQ(remover.calls, 1);
    EXPECT_EQ(ids(*list), (Ids{2}));
    EXPECT_EQ(CountedItem::live, 1);
    list->remove(&remover);
}
