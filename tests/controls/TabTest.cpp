// The tab control: its window, tabs backed by item copies, pages that are children,
// siblings or dialogs from a module, captions from the item or a string resource, the
// layout when the current tab changes, and the deliberate rules of adding and selection.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <memory>

#include <GwTab.h>

#include "ListTesting.h"

using namespace testing_lists;

namespace {

// A tab item that counts its live instances (its own class record makes the tab control copy
// it as what it is).
class CountedTabItem : public GwTabItem {
    GW_DECLARE_CLASS(CountedTabItem)

public:
    explicit CountedTabItem(unsigned long long id) : GwTabItem(id) { ++live; }
    CountedTabItem(CountedTabItem const& other) : GwTabItem(other) { ++live; }
    CountedTabItem& operator=(CountedTabItem const&) = default;
    ~CountedTabItem() override { --live; }

    static CountedTabItem* newInstance(EventData const* data) {
        auto const* eventData = dynamic_cast<GwEventData const*>(data);
        auto const* item =
            eventData != nullptr ? dynamic_cast<CountedTabItem const*>(eventData->item()) : nullptr;
        return item != nullptr ? new CountedTabItem(*item) : new CountedTabItem(0);
    }

    static inline int live = 0;
};

} // namespace

GW_CLASS_MAKES(CountedTabItem, "CountedTabItem", "GwTabItem")

namespace {

GwTabItem captioned(unsigned long long id, char const* caption) {
    GwTabItem item(id);
    item.setText(caption);
    return item;
}

std::string captionOf(HWND tab, int index) {
    char text[256] = {};
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(tab, TCM_GETITEMA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    return text;
}

RECT rectIn(HWND window, HWND reference) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, reference, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

bool sameRect(RECT const& a, RECT const& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// Whether the window itself is shown (its parents need not be).
bool shown(HWND window) {
    return (styleOf(window) & WS_VISIBLE) != 0;
}

// The position of a window among its siblings (0 the first, the top of the order).
int siblingIndex(HWND window) {
    int index = 0;
    for (HWND before = GetWindow(window, GW_HWNDPREV); before != nullptr;
         before = GetWindow(before, GW_HWNDPREV))
        ++index;
    return index;
}

class TabTest : public ListFixture {
protected:
    void SetUp() override {
        ListFixture::SetUp();
        CountedTabItem::live = 0;
        SetWindowPos(mTop.hwnd, nullptr, 0, 0, 500, 400, SWP_NOZORDER | SWP_NOMOVE);
        mTab = new GwTab(*mTop.window, 500);
        SetWindowPos(hwndOf(*mTab), nullptr, 10, 10, 300, 200, SWP_NOZORDER);
    }

    HWND tab() const { return hwndOf(*mTab); }
    // A page window with the identifier: a child of the tab control or of its parent.
    HWND page(int id, HWND parent) const {
        return CreateWindowExA(0, "Static", "Seite", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               GetModuleHandleA(nullptr), nullptr);
    }
    RECT displayArea() const {
        RECT area{};
        GetClientRect(tab(), &area);
        SendMessageA(tab(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
        return area;
    }

    GwTab* mTab = nullptr;
};

} // namespace

// ---- The window and the item

TEST_F(TabTest, CreatesATabControlChildWithTheStyle) {
    ASSERT_NE(tab(), nullptr);
    EXPECT_EQ(classNameOf(tab()), "SysTabControl32");
    EXPECT_EQ(static_cast<DWORD>(styleOf(tab())), 0x54030000u);
    EXPECT_EQ(GetParent(tab()), mTop.hwnd);
    EXPECT_EQ(GetWindowLongPtrA(tab(), GWLP_ID), 500);
    EXPECT_EQ(mTab->size(), 0);
    GwEventData none;
    EXPECT_EQ(GwTab::newInstance(&none), nullptr);
}

TEST_F(TabTest, TabItemConstructorsFillTheIdentifiersAndTheResourceName) {
    GwTabItem fresh;
    EXPECT_EQ(fresh.textId(), 0u);
    EXPECT_EQ(fresh.windowId(), 0u);
    GwTabItem one(7);
    EXPECT_EQ(one.id(), 7u);
    EXPECT_EQ(one.textId(), 7u);
    EXPECT_EQ(one.windowId(), 7u);
    GwTabItem two(7, 8);
    EXPECT_EQ(two.textId(), 8u);
    EXPECT_EQ(two.windowId(), 7u);
    GwTabItem three(7, 8, 9);
    EXPECT_EQ(three.windowId(), 9u);
    GwTabItem named(7, String("seiten.dll"));
    EXPECT_EQ(named.resource(), String("seiten.dll"));
    EXPECT_EQ(named.textId(), 7u);
    EXPECT_EQ(named.text(), String("")) << "the string names the module, not the caption";
    GwTabItem namedText(7, 8, String("seiten.dll"));
    EXPECT_EQ(namedText.textId(), 8u);
    EXPECT_EQ(namedText.windowId(), 7u);
    GwTabItem all(7, 8, 9, String("seiten.dll"));
    EXPECT_EQ(all.windowId(), 9u);
    EXPECT_EQ(all.resource(), String("seiten.dll"));
    all.setText("Titel").setTextId(1).setWindowId(2).setResource("x.dll");
    EXPECT_EQ(all.text(), String("Titel"));
    EXPECT_EQ(all.textId(), 1u);
    EXPECT_EQ(all.windowId(), 2u);
    EXPECT_EQ(all.resource(), String("x.dll"));
    EXPECT_TRUE(GwTabItem(7) == GwTabItem(7, 1, 2)) << "equal by identifier";

    GwEventData carried(all);
    std::unique_ptr<Object> copy(Class::createInstance(GwTabItem::isa(), &carried));
    auto* tabItem = dynamic_cast<GwTabItem*>(copy.get());
    ASSERT_NE(tabItem, nullptr);
    EXPECT_EQ(tabItem->text(), String("Titel"));
    EXPECT_EQ(tabItem->resource(), String("x.dll"));
    EXPECT_EQ(tabItem->windowId(), 2u);
}

// ---- Adding tabs and laying out pages

TEST_F(TabTest, EachAddMakesTheNewTabCurrentAndTheLayoutShowsOnlyItsPage) {
    HWND first = page(11, tab());
    HWND second = page(12, tab());
    Recorder top;
    mTop.window->add(&top);
    mTab->add(captioned(11, "Eins"));
    ASSERT_EQ(mTab->size(), 1);
    EXPECT_EQ(mTab->selectedAt(), 0);
    mTab->add(captioned(12, "Zwei"));
    ASSERT_EQ(mTab->size(), 2);
    EXPECT_EQ(mTab->selectedAt(), 1);
    EXPECT_FALSE(shown(first));
    EXPECT_TRUE(shown(second));
    EXPECT_TRUE(sameRect(rectIn(second, tab()), displayArea()));
    EXPECT_GE(count(top, "select"), 1);
    mTab->setSelectedAt(0);
    EXPECT_TRUE(shown(first));
    EXPECT_FALSE(shown(second));
    EXPECT_TRUE(sameRect(rectIn(first, tab()), displayArea()));
    for (Call const& call : top.calls)
        EXPECT_EQ(call.window, mTab);
    mTop.window->remove(&top);
}

TEST_F(TabTest, TheFirstAddedTabShowsItsPage) {
    HWND first = page(11, tab());
    mTab->add(captioned(11, "Eins"));
    EXPECT_EQ(mTab->selectedAt(), 0);
    EXPECT_TRUE(shown(first)) << "the page of the only tab";
}

TEST_F(TabTest, ATabWithoutPageAndWithoutDialogResourceIsNotAdded) {
    mTab->add(captioned(4711, "Nichts"));
    EXPECT_EQ(mTab->size(), 0);
    page(11, tab());
    mTab->add(captioned(11, "Eins"));
    mTab->addAt(1, captioned(4712, "Nichts"));
    EXPECT_EQ(mTab->size(), 1);
}

TEST_F(TabTest, ADialogPageIsLoadedFromTheExecutableAndTheCaptionFromAStringResource) {
    mTab->add(GwTabItem(7150, 7101));
    ASSERT_EQ(mTab->size(), 1);
    EXPECT_EQ(captionOf(tab(), 0), "Allgemein");
    HWND loaded = GetDlgItem(mTop.hwnd, 7150);
    ASSERT_NE(loaded, nullptr) << "the dialog is a child of the tab control's parent";
    EXPECT_EQ(textOf(GetDlgItem(loaded, 1)), "Seite aus der Vorlage");
    EXPECT_NE(GwWindow::window(loaded, false), nullptr) << "a library dialog";
}

TEST_F(TabTest, CaptionAndPageComeFromTheNamedModule) {
    page(6300, tab());
    mTab->add(GwTabItem(6300, 6001, String("test_resources.dll")));
    ASSERT_EQ(mTab->size(), 1);
    EXPECT_EQ(captionOf(tab(), 0), "Aus der Bibliothek");
    EXPECT_EQ(mTab->itemAt(0).id(), 6300u);
}

TEST_F(TabTest, TheItemsTextWinsAndAMissingStringGivesAnEmptyCaption) {
    page(11, tab());
    page(12, tab());
    GwTabItem text(11, 7101);
    text.setText("Eigener Titel");
    mTab->add(text).add(GwTabItem(12, 4999));
    EXPECT_EQ(captionOf(tab(), 0), "Eigener Titel");
    EXPECT_EQ(captionOf(tab(), 1), "");
    EXPECT_EQ(mTab->size(), 2);
}

TEST_F(TabTest, SiblingPageOfTheCurrentTabLiesAboveTheTabControlAndOthersAreHiddenAfterIt) {
    HWND first = page(21, mTop.hwnd);
    HWND second = page(22, mTop.hwnd);
    mTab->add(captioned(21, "Eins")).add(captioned(22, "Zwei"));
    EXPECT_TRUE(shown(second));
    EXPECT_FALSE(shown(first));
    EXPECT_EQ(GetWindow(second, GW_HWNDNEXT), tab()) << "the page right above the tab control";
    EXPECT_GT(siblingIndex(first), siblingIndex(tab()));
    RECT area = displayArea();
    MapWindowPoints(tab(), mTop.hwnd, reinterpret_cast<POINT*>(&area), 2);
    EXPECT_TRUE(sameRect(rectIn(second, mTop.hwnd), area));

    mTab->setSelected(21ull);
    EXPECT_TRUE(shown(first));
    EXPECT_FALSE(shown(second));
    EXPECT_EQ(GetWindow(first, GW_HWNDNEXT), tab());
    EXPECT_GT(siblingIndex(second), siblingIndex(tab()));
}

TEST_F(TabTest, AClickOnATabLaysOutThePagesAndSendsTheSelectEvent) {
    HWND first = page(11, tab());
    HWND second = page(12, tab());
    mTab->add(captioned(11, "Eins")).add(captioned(12, "Zwei"));
    Recorder top;
    mTop.window->add(&top);
    ShowWindow(mTop.hwnd, SW_SHOW);
    RECT caption{};
    SendMessageA(tab(), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&caption));
    LPARAM const at =
        MAKELPARAM((caption.left + caption.right) / 2, (caption.top + caption.bottom) / 2);
    PostMessageA(tab(), WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(tab(), WM_LBUTTONUP, 0, at);
    pumpMessages();
    EXPECT_EQ(mTab->selectedAt(), 0);
    EXPECT_TRUE(shown(first));
    EXPECT_FALSE(shown(second));
    EXPECT_EQ(count(top, "select"), 1);
    mTop.window->remove(&top);
}

TEST_F(TabTest, AddOfAnItemEqualToTheFirstTabMovesItToTheEnd) {
    for (int id : {11, 12, 13})
        page(id, tab());
    mTab->add(captioned(11, "Eins")).add(captioned(12, "Zwei")).add(captioned(13, "Drei"));
    mTab->add(captioned(11, "Eins neu"));
    ASSERT_EQ(mTab->size(), 3);
    EXPECT_EQ(mTab->itemAt(0).id(), 12u);
    EXPECT_EQ(mTab->itemAt(2).id(), 11u);
    EXPECT_EQ(captionOf(tab(), 2), "Eins neu");
    EXPECT_EQ(mTab->selectedAt(), 2);
    // An equal item of a middle tab keeps its place.
    mTab->add(captioned(13, "Drei neu"));
    EXPECT_EQ(mTab->itemAt(1).id(), 13u);
    EXPECT_EQ(captionOf(tab(), 1), "Drei neu");
}

TEST_F(TabTest, AddAtInsertsBeforeTheTabAtThePositionAndZeroAppends) {
    for (int id : {11, 12, 13, 14})
        page(id, tab());
    mTab->add(captioned(11, "a")).add(captioned(12, "b"));
    mTab->addAt(1, captioned(13, "c"));
    mTab->addAt(0, captioned(14, "d"));
    EXPECT_EQ(mTab->itemAt(0).id(), 11u);
    EXPECT_EQ(mTab->itemAt(1).id(), 13u);
    EXPECT_EQ(mTab->itemAt(2).id(), 12u);
    EXPECT_EQ(mTab->itemAt(3).id(), 14u);
    EXPECT_EQ(mTab->selectedAt(), 3);
    // The tab at the position is compared with the one past the last, never with itself.
    mTab->addAt(1, captioned(13, "c"));
    EXPECT_EQ(mTab->size(), 5);
}

TEST_F(TabTest, SelectedWithTheFirstTabCurrentAnswersZeroWhateverItsIdentifier) {
    page(31, tab());
    page(32, tab());
    mTab->add(captioned(31, "a")).add(captioned(32, "b"));
    EXPECT_EQ(mTab->selected(), 32u);
    mTab->setSelected(GwTabItem(31));
    EXPECT_EQ(mTab->selectedAt(), 0);
    EXPECT_EQ(mTab->selected(), 0u);
    EXPECT_TRUE(mTab->selected(31ull));
    EXPECT_TRUE(mTab->selected(GwTabItem(31)));
    EXPECT_FALSE(mTab->selected(32ull));
    EXPECT_FALSE(mTab->selected(99ull));
    EXPECT_TRUE(mTab->selectedAt(0));
    mTab->setSelected(99ull); // no such tab: nothing
    EXPECT_EQ(mTab->selectedAt(), 0);
}

TEST_F(TabTest, SelectionGoesThroughTheFocusMessage) {
    HWND raw =
        CreateWindowExA(0, WC_TABCONTROLA, "", WS_CHILD | WS_VISIBLE, 0, 0, 200, 100, mTop.hwnd,
                        reinterpret_cast<HMENU>(600), GetModuleHandleA(nullptr), nullptr);
    Spy spy(raw);
    GwEventData data(raw);
    auto* wrapped = dynamic_cast<GwTab*>(Class::createInstance(GwTab::isa(), &data));
    ASSERT_NE(wrapped, nullptr);
    page(41, raw);
    page(42, raw);
    wrapped->add(captioned(41, "a")).add(captioned(42, "b"));
    spy.sent.clear();
    wrapped->setSelected(41ull).setSelectedAt(1).setSelected(GwTabItem(41));
    EXPECT_EQ(spy.of(TCM_SETCURFOCUS).size(), 3u);
    EXPECT_TRUE(spy.of(TCM_SETCURSEL).empty());
    DestroyWindow(raw); // before the spy
}

TEST_F(TabTest, AnItemThatIsNoTabItemIsIgnored) {
    page(11, tab());
    mTab->add(GwTextItem(11, "kein Reiter"));
    mTab->addAt(0, GwItem(11));
    EXPECT_EQ(mTab->size(), 0);
}

TEST_F(TabTest, RemovalsDeleteCopiesAndLeavePagesAlone) {
    HWND pages[4];
    for (int i = 0; i < 4; ++i) {
        pages[i] = page(51 + i, tab());
        mTab->add(CountedTabItem(51 + i));
    }
    EXPECT_EQ(CountedTabItem::live, 4);
    mTab->remove(52ull);
    EXPECT_EQ(mTab->size(), 3);
    mTab->remove(CountedTabItem(53));
    mTab->removeAt(5).removeAt(-1).remove(99ull);
    EXPECT_EQ(mTab->size(), 2);
    EXPECT_EQ(CountedTabItem::live, 2);
    mTab->removeAt(0);
    EXPECT_EQ(mTab->itemAt(0).id(), 54u);
    EXPECT_TRUE(shown(pages[3])) << "removing tabs hides no page";
    mTab->remove();
    EXPECT_EQ(mTab->size(), 0);
    EXPECT_EQ(CountedTabItem::live, 0);
    for (HWND one : pages)
        EXPECT_TRUE(IsWindow(one));
}

TEST_F(TabTest, TheEndOfTheTabControlDeletesItsCopies) {
    for (int i = 0; i < 3; ++i) {
        page(61 + i, mTop.hwnd);
        mTab->add(CountedTabItem(61 + i));
    }
    EXPECT_EQ(CountedTabItem::live, 3);
    DestroyWindow(tab());
    EXPECT_EQ(CountedTabItem::live, 0);
    EXPECT_NE(GetDlgItem(mTop.hwnd, 61), nullptr) << "sibling pages stay";
}

TEST_F(TabTest, LookupsAnswerTheStoredCopyOrASharedEmptyItemPerOperation) {
    page(11, tab());
    GwTabItem eins = captioned(11, "Eins");
    mTab->add(eins);
    GwItem const& stored = mTab->item(11);
    EXPECT_NE(&stored, &eins);
    EXPECT_EQ(stored.text(), String("Eins"));
    EXPECT_EQ(&mTab->itemAt(0), &stored);
    GwItem const& noId = mTab->item(99);
    GwItem const& noPosition = mTab->itemAt(1);
    EXPECT_EQ(&mTab->itemAt(-1), &noPosition);
    EXPECT_NE(&noId, &noPosition);
    EXPECT_NE(&noId, &stored);
}

TEST_F(TabTest, TabsOfOtherCodeAreNoMatch) {
    page(11, tab());
    TCITEMA foreign{};
    foreign.mask = TCIF_TEXT | TCIF_PARAM;
    foreign.pszText = const_cast<char*>("fremd");
    foreign.lParam = 12345; // not a pointer
    SendMessageA(tab(), TCM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&foreign));
    mTab->add(captioned(11, "Eins"));
    EXPECT_EQ(mTab->size(), 2);
    EXPECT_EQ(mTab->itemAt(1).id(), 11u);
    EXPECT_EQ(&mTab->itemAt(0), &mTab->itemAt(-1));
    mTab->setSelectedAt(0); // the layout skips the tab without item
    EXPECT_EQ(mTab->selected(), 0u);
    mTab->remove();
    EXPECT_EQ(mTab->size(), 0);
}

namespace {

// Removes every tab when it hears of the selection.
class RemovesTabs : public GwEventHandler {
public:
    int cbSelect(GwWindow& window) override {
        dynamic_cast<GwTab&>(window).remove();
        ++calls;
        return GwResultContinue;
    }
    int calls = 0;
};

} // namespace

TEST_F(TabTest, RemovingTabsInTheSelectHandlerIsSafe) {
    page(11, tab());
    page(12, tab());
    mTab->add(CountedTabItem(11));
    RemovesTabs remover;
    mTab->add(&remover);
    mTab->add(CountedTabItem(12));
    EXPECT_GE(remover.calls, 1);
    EXPECT_EQ(mTab->size(), 0);
    EXPECT_EQ(CountedTabItem::live, 0);
    mTab->remove(&remover);
}
