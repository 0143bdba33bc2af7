// GwMenu on real Win32 menus: entries, their states, the kinds of menu, copies, lookup,
// ownership of items and sub-menus, and opening a popup.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <typeinfo>
#include <vector>

#include <GwEventData.h>
#include <GwEventHandler.h>
#include <GwMenu.h>

#include "TestWindows.h"

namespace {

unsigned long long const kNoId = ~0ull;

HMENU handleOf(GwMenu const& menu) {
    return static_cast<HMENU>(menu.window());
}

std::int32_t menuCount() {
    return GwMenu::allMenus().count();
}

// Selects the masks add() uses for the lifetime of the object.
class MaskPath {
public:
    explicit MaskPath(bool stringMasks) : mSaved(GwWindow::m_bWin98_2000_ME) {
        GwWindow::m_bWin98_2000_ME = stringMasks;
    }
    ~MaskPath() { GwWindow::m_bWin98_2000_ME = mSaved; }
    MaskPath(MaskPath const&) = delete;
    MaskPath& operator=(MaskPath const&) = delete;

private:
    bool mSaved;
};

// What Win32 says about one entry.
struct Entry {
    bool exists = false;
    UINT type = 0;
    UINT state = 0;
    UINT id = 0;
    HMENU subMenu = nullptr;
    GwMenuItem* item = nullptr;
    std::string text;
};

Entry entryAt(HMENU menu, UINT position) {
    char text[256] = {};
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_DATA | MIIM_STRING;
    info.dwTypeData = text;
    info.cch = sizeof text;
    Entry entry;
    entry.exists = GetMenuItemInfoA(menu, position, TRUE, &info) != FALSE;
    if (!entry.exists)
        return entry;
    entry.type = info.fType;
    entry.state = info.fState;
    entry.id = info.wID;
    entry.subMenu = info.hSubMenu;
    entry.item = reinterpret_cast<GwMenuItem*>(info.dwItemData);
    entry.text = (info.fType & MFT_SEPARATOR) != 0 ? "" : text;
    return entry;
}

std::vector<UINT> idsOf(HMENU menu) {
    std::vector<UINT> ids;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        ids.push_back(entryAt(menu, static_cast<UINT>(at)).id);
    return ids;
}

std::vector<std::string> textsOf(HMENU menu) {
    std::vector<std::string> texts;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        texts.push_back(entryAt(menu, static_cast<UINT>(at)).text);
    return texts;
}

std::vector<bool> checksOf(HMENU menu) {
    std::vector<bool> checks;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        checks.push_back((entryAt(menu, static_cast<UINT>(at)).state & MFS_CHECKED) != 0);
    return checks;
}

// Appends an entry behind the menu's back, with an item copy as the menu keeps them (the
// menu owns it from then on): the way to get entries with equal identifiers.
void appendRaw(HMENU menu, UINT id, char const* text) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STATE | MIIM_ID | MIIM_TYPE | MIIM_DATA;
    info.fType = MFT_STRING;
    info.wID = id;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(new GwMenuItem(id, String(text)));
    info.dwTypeData = const_cast<char*>(text);
    InsertMenuItemA(menu, 0xFFFFFFFFu, TRUE, &info);
}

// A menu item class of its own, made through its own class record, that counts its live
// instances: shows which copies a menu makes and when it deletes them.
class CountedItem : public GwMenuItem {
public:
    CountedItem(unsigned long long id, char const* text, GwMenu* menu = nullptr)
        : GwMenuItem(id, String(text)) {
        if (menu != nullptr)
            setMenu(menu).setStyle(MF_POPUP);
        ++live;
    }
    CountedItem(CountedItem const& other) : GwMenuItem(other) { ++live; }
    ~CountedItem() override { --live; }

    ::Class const* isA() const override { return &record; }

    static ::Object* make(::EventData const* data) {
        auto const* eventData = dynamic_cast<GwEventData const*>(data);
        auto const* source =
            eventData != nullptr ? dynamic_cast<CountedItem const*>(eventData->item()) : nullptr;
        ++made;
        return source != nullptr ? new CountedItem(*source) : new CountedItem(kNoId, "");
    }

    static int live;
    static int made;
    static char const* parents[2];
    static ::Class record;
};

int CountedItem::live = 0;
int CountedItem::made = 0;
char const* CountedItem::parents[2] = {"GwMenuItem", nullptr};
::Class CountedItem::record("VmGuiTestCountedMenuItem", CountedItem::parents,
                            static_cast<long>(sizeof(CountedItem)), &CountedItem::make);

// Every test leaves allMenus as it found it and runs with the MIIM_TYPE masks unless it
// says otherwise.
class GwMenuTest : public ::testing::Test {
protected:
    void SetUp() override {
        mMenusBefore = menuCount();
        mItemsBefore = CountedItem::live;
    }
    void TearDown() override {
        EXPECT_EQ(menuCount(), mMenusBefore) << "a menu object was leaked or lost";
        EXPECT_EQ(CountedItem::live, mItemsBefore) << "an item copy was leaked";
    }

    MaskPath mMasks{false};
    std::int32_t mMenusBefore = 0;
    int mItemsBefore = 0;
};

// ---- construction, class record, copies ---------------------------------------------------

TEST_F(GwMenuTest, CreatingConstructorMakesAMenuBarOrAPopup) {
    GwMenu bar(5, false);
    GwMenu popup(6, true);
    GwMenu plain;
    for (GwMenu* menu : {&bar, &popup, &plain}) {
        EXPECT_TRUE(IsMenu(handleOf(*menu)));
        EXPECT_FALSE(menu->dynamic());
        EXPECT_EQ(menu->selected(), 0u);
        EXPECT_EQ(menu->position(), GwPosition(0, 0));
        EXPECT_EQ(menu->parent(), nullptr);
        EXPECT_EQ(menu->size(), 0);
        EXPECT_EQ(GwMenu::lookup(menu->window()), menu);
    }
    EXPECT_EQ(bar.id(), 5u);
    EXPECT_FALSE(bar.popup());
    EXPECT_EQ(popup.id(), 6u);
    EXPECT_TRUE(popup.popup());
    EXPECT_EQ(plain.id(), 0u);
    EXPECT_FALSE(plain.popup());
    EXPECT_EQ(menuCount(), mMenusBefore + 3);
}

TEST_F(GwMenuTest, WrappingConstructorTakesTheHandleAsItIs) {
    HMENU raw = CreatePopupMenu();
    auto* menu = new GwMenu(static_cast<void*>(raw));
    EXPECT_EQ(handleOf(*menu), raw);
    EXPECT_EQ(menu->id(), 0u);
    EXPECT_FALSE(menu->popup());
    EXPECT_FALSE(menu->dynamic());
    EXPECT_EQ(GwMenu::lookup(raw), menu);
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    delete menu;
    EXPECT_FALSE(IsMenu(raw));
    EXPECT_EQ(GwMenu::lookup(raw), nullptr);
}

TEST_F(GwMenuTest, AMenuWithoutHandleIsFoundOnceItGetsOne) {
    GwMenu menu(static_cast<void*>(nullptr));
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    EXPECT_EQ(GwMenu::lookup(nullptr), nullptr);
    menu.setPopup(true, true);
    ASSERT_NE(menu.window(), nullptr);
    EXPECT_EQ(GwMenu::lookup(menu.window()), &menu);
}

TEST_F(GwMenuTest, ClassRecordMakesAMenuForACarriedHandle) {
    Class const* record = Class::lookup("GwMenu");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwMenu::isa());
    ASSERT_NE(record->parentNames(), nullptr);
    EXPECT_STREQ(record->parentNames()[0], "GwWindow");
    EXPECT_TRUE(record->isSubclassOf(GwWindow::isa()));

    HMENU raw = CreateMenu();
    GwEventData const carrying(static_cast<void*>(raw));
    std::unique_ptr<Object> made(record->createInstance(&carrying));
    auto* menu = dynamic_cast<GwMenu*>(made.get());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(handleOf(*menu), raw);
    EXPECT_EQ(menu->isA(), record);
    EXPECT_EQ(GwMenu::lookup(raw), menu);

    GwEventData const empty;
    EventData const plain;
    EXPECT_EQ(GwMenu::newInstance(&empty), nullptr);
    EXPECT_EQ(GwMenu::newInstance(&plain), nullptr);
    EXPECT_EQ(GwMenu::newInstance(nullptr), nullptr);
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
}

TEST_F(GwMenuTest, CopySharesTheHandleAndIsNotRegistered) {
    GwMenu original(12, true);
    original.setDynamic(true).setSelected(99).setPosition(GwPosition(3, 4));
    original.add(GwMenuItem(1, String("One")));
    {
        GwMenu copy(original);
        EXPECT_EQ(copy.window(), original.window());
        EXPECT_EQ(copy.id(), 12u);
        EXPECT_TRUE(copy.popup());
        EXPECT_TRUE(copy.dynamic());
        EXPECT_EQ(copy.selected(), 99u);
        EXPECT_EQ(copy.position(), GwPosition(3, 4));
        EXPECT_EQ(copy.size(), 1);
        EXPECT_EQ(menuCount(), mMenusBefore + 1);
        EXPECT_EQ(GwMenu::lookup(original.window()), &original);
    }
    // Deleting the copy emptied and destroyed the shared menu.
    EXPECT_FALSE(IsMenu(handleOf(original)));
    EXPECT_EQ(GwMenu::lookup(original.window()), &original);
}

TEST_F(GwMenuTest, DeletingACopyDeletesTheSharedSubMenus) {
    auto* original = new GwMenu(1, false);
    auto* subMenu = new GwMenu(2, true);
    HMENU subHandle = handleOf(*subMenu);
    original->add(GwMenuItem(10, String("Sub"), subMenu));
    delete new GwMenu(*original);
    EXPECT_FALSE(IsMenu(subHandle));
    EXPECT_EQ(GwMenu::lookup(subHandle), nullptr);
    EXPECT_EQ(original->size(), -1); // its handle is gone
    delete original;
}

// ---- lookup and the table of menus --------------------------------------------------------

TEST_F(GwMenuTest, LookupOfNullOrAnUnknownHandleIsNull) {
    EXPECT_EQ(GwMenu::lookup(nullptr), nullptr);
    HMENU raw = CreateMenu();
    EXPECT_EQ(GwMenu::lookup(raw), nullptr);
    DestroyMenu(raw);
    // A copy is never the answer: only registered menus are.
    GwMenu registered(1, true);
    GwMenu copy(registered);
    EXPECT_EQ(GwMenu::lookup(copy.window()), &registered);
}

TEST_F(GwMenuTest, LookupAnswersTheFirstRegisteredMenuOfAHandle) {
    HMENU raw = CreatePopupMenu();
    auto* first = new GwMenu(static_cast<void*>(raw));
    auto* between = new GwMenu(7, true);
    auto* second = new GwMenu(static_cast<void*>(raw));
    EXPECT_EQ(GwMenu::lookup(raw), first);

    delete between; // the table packs: second moves down, first stays ahead of it
    EXPECT_EQ(GwMenu::lookup(raw), first);

    delete first;
    EXPECT_EQ(GwMenu::lookup(raw), second);

    auto* third = new GwMenu(static_cast<void*>(raw));
    EXPECT_EQ(GwMenu::lookup(raw), second);
    delete second;
    EXPECT_EQ(GwMenu::lookup(raw), third);
    delete third;
    EXPECT_EQ(GwMenu::lookup(raw), nullptr);
}

TEST_F(GwMenuTest, DeletingAMenuPacksTheTableInOrder) {
    std::int32_t const base = menuCount();
    auto* a = new GwMenu(1, true);
    auto* b = new GwMenu(2, true);
    auto* c = new GwMenu(3, true);
    GwObjectTable<GwMenu> const& table = GwMenu::allMenus();
    EXPECT_EQ(table.at(base), a);
    EXPECT_EQ(table.at(base + 1), b);
    EXPECT_EQ(table.at(base + 2), c);

    delete b;
    EXPECT_EQ(table.count(), base + 2);
    EXPECT_EQ(table.at(base), a);
    EXPECT_EQ(table.at(base + 1), c);

    auto* d = new GwMenu(4, true);
    EXPECT_EQ(table.at(base + 2), d);
    EXPECT_EQ(table.count(), base + 3);

    delete a;
    delete d;
    EXPECT_EQ(table.count(), base + 1);
    EXPECT_EQ(table.at(base), c);
    delete c;
    EXPECT_EQ(table.count(), base);
}

// The indexed lookup answers what a walk of allMenus from the first slot answers, through a
// long mix of wrapping, deleting and re-handling menus that share handles.
TEST_F(GwMenuTest, LookupAgreesWithAWalkOfTheTable) {
    auto walk = [](void* handle) -> GwMenu* {
        GwObjectTable<GwMenu> const& table = GwMenu::allMenus();
        for (std::int32_t slot = 0; slot < table.count(); ++slot) {
            if (table.at(slot) != nullptr && table.at(slot)->window() == handle)
                return table.at(slot);
        }
        return nullptr;
    };
    std::vector<void*> pool;
    for (int i = 0; i < 4; ++i)
        pool.push_back(CreatePopupMenu());
    std::vector<GwMenu*> live;
    std::mt19937 random(20240611);
    for (int step = 0; step < 400; ++step) {
        unsigned const action = random() % 10;
        if (action < 5 || live.empty()) {
            // Now and then a menu without handle, which gets one when it changes kind.
            std::size_t const pick = random() % (pool.size() + 1);
            live.push_back(new GwMenu(pick < pool.size() ? pool[pick] : nullptr));
        } else if (action < 9) {
            std::size_t const victim = random() % live.size();
            delete live[victim];
            live.erase(live.begin() + static_cast<std::ptrdiff_t>(victim));
        } else {
            GwMenu* menu = live[random() % live.size()];
            menu->setPopup(!menu->popup(), true); // a new handle for that menu
            pool.push_back(menu->window());
        }
        for (void* handle : pool)
            ASSERT_EQ(GwMenu::lookup(handle), walk(handle)) << "step " << step;
        for (GwMenu* menu : live) {
            if (menu->window() == nullptr)
                continue; // a null handle is never looked up
            ASSERT_EQ(GwMenu::lookup(menu->window()), walk(menu->window())) << "step " << step;
        }
    }
    for (GwMenu* menu : live)
        delete menu;
    for (void* handle : pool)
        EXPECT_EQ(GwMenu::lookup(handle), nullptr);
}

// ---- adding entries ------------------------------------------------------------------------

TEST_F(GwMenuTest, AddAppendsAnEntryWithItsOwnCopyOfTheItem) {
    GwMenu menu(1, true);
    GwMenuItem open(101, String("&Open"));
    GwMenuItem checked(102, 0, MFS_CHECKED);
    checked.setText(String("Checked"));
    EXPECT_EQ(&menu.add(open), &menu);
    menu.add(checked);
    ASSERT_EQ(menu.size(), 2);

    Entry first = entryAt(handleOf(menu), 0);
    EXPECT_EQ(first.id, 101u);
    EXPECT_EQ(first.text, "&Open");
    EXPECT_EQ(first.type, static_cast<UINT>(MFT_STRING));
    ASSERT_NE(first.item, nullptr);
    EXPECT_NE(first.item, &open);
    EXPECT_EQ(first.item->id(), 101u);
    EXPECT_STREQ(first.item->text().c_str(), "&Open");
    EXPECT_EQ(&menu.itemAt(0), first.item);
    EXPECT_EQ(&menu.item(101), first.item);

    Entry second = entryAt(handleOf(menu), 1);
    EXPECT_EQ(second.id, 102u);
    EXPECT_NE(second.state & MFS_CHECKED, 0u);
    EXPECT_TRUE(menu.checked(102));
}

TEST_F(GwMenuTest, AddMakesTheCopyThroughTheItemsClassFactory) {
    GwMenu menu(1, true);
    int const madeBefore = CountedItem::made;
    {
        CountedItem item(5, "Counted");
        menu.add(item);
        EXPECT_EQ(CountedItem::made, madeBefore + 1);
        EXPECT_EQ(CountedItem::live, mItemsBefore + 2);
    }
    EXPECT_EQ(CountedItem::live, mItemsBefore + 1); // the menu's copy
    auto const* stored = dynamic_cast<CountedItem const*>(&menu.item(5));
    ASSERT_NE(stored, nullptr);
    EXPECT_STREQ(stored->text().c_str(), "Counted");
    menu.remove(5ull);
    EXPECT_EQ(CountedItem::live, mItemsBefore);
}

TEST_F(GwMenuTest, AddOfAnItemOfAnotherClassThrowsBadCast) {
    GwMenu menu(1, true);
    EXPECT_THROW(menu.add(GwItem(5)), std::bad_cast);
    EXPECT_THROW(menu.add(GwTextItem(5, String("text"))), std::bad_cast);
    EXPECT_EQ(menu.size(), 0);
}

TEST_F(GwMenuTest, AddReplacesTheEntryWithTheSameIdentifierInPlace) {
    GwMenu menu(1, true);
    menu.add(CountedItem(1, "One")).add(CountedItem(2, "Two")).add(CountedItem(3, "Three"));
    EXPECT_EQ(CountedItem::live, mItemsBefore + 3);
    menu.add(CountedItem(2, "Deux"));
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{1, 2, 3}));
    EXPECT_EQ(textsOf(handleOf(menu)), (std::vector<std::string>{"One", "Deux", "Three"}));
    EXPECT_STREQ(menu.item(2).text().c_str(), "Deux");
    EXPECT_EQ(CountedItem::live, mItemsBefore + 3); // the replaced entry's copy is gone
}

TEST_F(GwMenuTest, AddOfAnItemWithoutIdentifierAlwaysAppends) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One")));
    menu.add(GwMenuItem());
    menu.add(GwMenuItem(2, String("Two")));
    menu.add(GwMenuItem());
    menu.add(GwMenuItem(kNoId, String("No id")));
    ASSERT_EQ(menu.size(), 5);
    EXPECT_EQ(entryAt(handleOf(menu), 1).type, static_cast<UINT>(MFT_SEPARATOR));
    EXPECT_EQ(entryAt(handleOf(menu), 3).type, static_cast<UINT>(MFT_SEPARATOR));
    EXPECT_EQ(entryAt(handleOf(menu), 4).text, "No id");
}

TEST_F(GwMenuTest, AddDoesNotLookAtTheEntryThatMovedIntoAFreedPosition) {
    GwMenu menu(1, true);
    appendRaw(handleOf(menu), 5, "a");
    appendRaw(handleOf(menu), 5, "b");
    appendRaw(handleOf(menu), 6, "c");
    menu.add(GwMenuItem(5, String("new")));
    // "a" went, "b" moved into its position behind the walk and stays.
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{5, 5, 6}));
    EXPECT_EQ(textsOf(handleOf(menu)), (std::vector<std::string>{"new", "b", "c"}));
}

TEST_F(GwMenuTest, AddInsertsWhereTheLastEqualEntryWasFound) {
    GwMenu menu(1, true);
    appendRaw(handleOf(menu), 5, "a");
    appendRaw(handleOf(menu), 6, "b");
    appendRaw(handleOf(menu), 5, "c");
    appendRaw(handleOf(menu), 7, "d");
    menu.add(GwMenuItem(5, String("new")));
    EXPECT_EQ(textsOf(handleOf(menu)), (std::vector<std::string>{"b", "new", "d"}));
}

TEST_F(GwMenuTest, AddOfAnItemWithASubMenuLinksTheSubMenu) {
    GwMenu bar(1, false);
    auto* file = new GwMenu(2, true);
    bar.add(GwMenuItem(10, String("&File"), file));
    Entry entry = entryAt(handleOf(bar), 0);
    EXPECT_EQ(entry.subMenu, handleOf(*file));
    EXPECT_EQ(entry.text, "&File");
    EXPECT_EQ(bar.itemAt(0).menu(), file);
    EXPECT_EQ(bar.itemAt(0).menuId(), 2u);
}

TEST_F(GwMenuTest, TypeMasksApplyTheStyle) {
    MaskPath typeMasks(false);
    GwMenu menu(1, true);
    menu.add(GwMenuItem());
    menu.add(GwMenuItem(2, 0x200));
    menu.add(GwMenuItem(3, String("Text")));
    EXPECT_EQ(entryAt(handleOf(menu), 0).type, static_cast<UINT>(MFT_SEPARATOR));
    EXPECT_EQ(entryAt(handleOf(menu), 1).type, static_cast<UINT>(MFT_RADIOCHECK));
    EXPECT_EQ(entryAt(handleOf(menu), 2).text, "Text");
}

TEST_F(GwMenuTest, StringMasksLeaveTheStyleUnapplied) {
    MaskPath stringMasks(true);
    ASSERT_TRUE(GwWindow::getWin98_2000_ME());
    GwMenu menu(1, true);
    menu.add(GwMenuItem());
    menu.add(GwMenuItem(2, 0x200));
    menu.add(GwMenuItem(3, String("Text")));
    Entry separator = entryAt(handleOf(menu), 0);
    EXPECT_EQ(separator.type, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(separator.text, "");
    EXPECT_EQ(entryAt(handleOf(menu), 1).type, static_cast<UINT>(MFT_STRING));
    EXPECT_EQ(entryAt(handleOf(menu), 2).text, "Text");
    // The stored item learns the menu's view of it when it is read back.
    EXPECT_EQ(menu.itemAt(0).style(), 0);
}

TEST_F(GwMenuTest, TheStartupHookSelectsTheStringMasks) {
    MaskPath restore(false);
    ASSERT_FALSE(GwWindow::getWin98_2000_ME());
    GwWindow::gStartup.initInstance();
    EXPECT_TRUE(GwWindow::getWin98_2000_ME());
    GwMenu menu(1, true);
    menu.add(GwMenuItem());
    EXPECT_EQ(entryAt(handleOf(menu), 0).type, static_cast<UINT>(MFT_STRING));
}

TEST_F(GwMenuTest, AddOfARadioItemThatReplacesAnEntryChecksItAndUnchecksItsGroup) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED));
    menu.add(GwMenuItem(2, 0x200));
    menu.add(GwMenuItem(3, 0x200));
    // Appended radio items keep the state they were given.
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{true, false, false}));
    menu.add(GwMenuItem(2, 0x200));
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, true, false}));
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{1, 2, 3}));
}

TEST_F(GwMenuTest, AnAppendedRadioItemIsLeftAsItsStateSays) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED));
    menu.add(GwMenuItem(2, 0x200, MFS_CHECKED));
    menu.add(GwMenuItem(3, 0x200));
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{true, true, false}));
}

TEST_F(GwMenuTest, WithStringMasksAReplacingRadioItemIsCheckedAlone) {
    MaskPath stringMasks(true);
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED));
    menu.add(GwMenuItem(2, 0x200));
    menu.add(GwMenuItem(2, 0x200));
    // The entries are no radio entries for Windows: no group is formed.
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{true, true}));
}

TEST_F(GwMenuTest, AddAtInsertsAtThePositionAfterRemovingEveryEqualEntry) {
    GwMenu menu(1, true);
    appendRaw(handleOf(menu), 1, "one");
    appendRaw(handleOf(menu), 2, "two");
    appendRaw(handleOf(menu), 2, "two again");
    appendRaw(handleOf(menu), 3, "three");
    appendRaw(handleOf(menu), 2, "two at the end");
    EXPECT_EQ(&menu.addAt(0, GwMenuItem(2, String("new"))), &menu);
    EXPECT_EQ(textsOf(handleOf(menu)), (std::vector<std::string>{"new", "one", "three"}));
    menu.addAt(2, GwMenuItem(4, String("four")));
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{2, 1, 4, 3}));
    menu.addAt(-1, GwMenuItem(5, String("five")));
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{2, 1, 4, 3, 5}));
}

TEST_F(GwMenuTest, AddAtOfARadioItemChecksIt) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED));
    menu.add(GwMenuItem(2, 0x200));
    menu.add(GwMenuItem(3, 0x200));
    menu.addAt(1, GwMenuItem(9, 0x200));
    EXPECT_EQ(idsOf(handleOf(menu)), (std::vector<UINT>{1, 9, 2, 3}));
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, true, false, false}));
}

// ---- removing entries ----------------------------------------------------------------------

TEST_F(GwMenuTest, RemoveByIdentifierDeletesTheItemAndTheSubMenu) {
    GwMenu bar(1, false);
    auto* file = new GwMenu(2, true);
    HMENU fileHandle = handleOf(*file);
    file->add(CountedItem(100, "Open"));
    bar.add(CountedItem(10, "File", file)).add(CountedItem(11, "Help"));
    EXPECT_EQ(CountedItem::live, mItemsBefore + 3);
    EXPECT_EQ(menuCount(), mMenusBefore + 2);

    EXPECT_EQ(&bar.remove(10ull), &bar);
    EXPECT_EQ(idsOf(handleOf(bar)), (std::vector<UINT>{11}));
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    EXPECT_FALSE(IsMenu(fileHandle));
    EXPECT_EQ(CountedItem::live, mItemsBefore + 1);

    bar.remove(12345ull);
    EXPECT_EQ(bar.size(), 1);
}

TEST_F(GwMenuTest, RemoveAtDeletesByPosition) {
    GwMenu bar(1, false);
    auto* edit = new GwMenu(3, true);
    bar.add(CountedItem(10, "File")).add(CountedItem(11, "Edit", edit)).add(CountedItem(12, "?"));
    EXPECT_EQ(&bar.removeAt(1), &bar);
    EXPECT_EQ(idsOf(handleOf(bar)), (std::vector<UINT>{10, 12}));
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    EXPECT_EQ(CountedItem::live, mItemsBefore + 2);
    bar.removeAt(7);
    EXPECT_EQ(bar.size(), 2);
}

TEST_F(GwMenuTest, RemoveOfAnItemSkipsTheEntryThatMovedUp) {
    GwMenu menu(1, true);
    appendRaw(handleOf(menu), 5, "a");
    appendRaw(handleOf(menu), 5, "b");
    appendRaw(handleOf(menu), 7, "c");
    appendRaw(handleOf(menu), 5, "d");
    EXPECT_EQ(&menu.remove(GwItem(5)), &menu);
    EXPECT_EQ(textsOf(handleOf(menu)), (std::vector<std::string>{"b", "c"}));
}

TEST_F(GwMenuTest, RemoveOfAnItemLeavesTheSubMenuObjectAlone) {
    GwMenu bar(1, false);
    auto* file = new GwMenu(2, true);
    HMENU fileHandle = handleOf(*file);
    bar.add(CountedItem(10, "File", file));
    bar.remove(GwMenuItem(10));
    EXPECT_EQ(bar.size(), 0);
    EXPECT_EQ(CountedItem::live, mItemsBefore);
    // The sub-menu object stays registered and keeps its menu.
    EXPECT_EQ(GwMenu::lookup(fileHandle), file);
    EXPECT_TRUE(IsMenu(fileHandle));
    delete file;
}

TEST_F(GwMenuTest, RemoveAllDeletesEveryEntryItemAndSubMenu) {
    GwMenu bar(1, false);
    auto* file = new GwMenu(2, true);
    auto* edit = new GwMenu(3, true);
    file->add(CountedItem(100, "Open"));
    bar.add(CountedItem(10, "File", file)).add(GwMenuItem()).add(CountedItem(11, "Edit", edit));
    EXPECT_EQ(&bar.remove(), &bar);
    EXPECT_EQ(bar.size(), 0);
    EXPECT_TRUE(IsMenu(handleOf(bar)));
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    EXPECT_EQ(CountedItem::live, mItemsBefore);
}

TEST_F(GwMenuTest, DeletingAMenuBarDeletesItsWholeTree) {
    auto* bar = new GwMenu(1, false);
    auto* file = new GwMenu(2, true);
    auto* recent = new GwMenu(3, true);
    auto* edit = new GwMenu(4, true);
    auto* deep = new GwMenu(5, true);
    recent->add(CountedItem(300, "first.txt")).add(CountedItem(301, "Deeper", deep));
    deep->add(CountedItem(500, "Bottom"));
    file->add(CountedItem(200, "Open")).add(GwMenuItem()).add(CountedItem(201, "Recent", recent));
    edit->add(CountedItem(400, "Undo"));
    bar->add(CountedItem(10, "File", file)).add(CountedItem(11, "Edit", edit));
    std::vector<HMENU> handles;
    for (GwMenu* menu : {bar, file, recent, edit, deep})
        handles.push_back(handleOf(*menu));
    EXPECT_EQ(menuCount(), mMenusBefore + 5);
    EXPECT_EQ(CountedItem::live, mItemsBefore + 8);

    delete bar;
    EXPECT_EQ(menuCount(), mMenusBefore);
    EXPECT_EQ(CountedItem::live, mItemsBefore);
    for (HMENU handle : handles) {
        EXPECT_FALSE(IsMenu(handle));
        EXPECT_EQ(GwMenu::lookup(handle), nullptr);
    }
}

// ---- reading entries -----------------------------------------------------------------------

TEST_F(GwMenuTest, ItemRefreshesStateAndStyleFromTheMenu) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One"))).add(GwMenuItem(2, String("Two")));
    EXPECT_EQ(menu.item(1).state(), 0);
    menu.setChecked(1, true).setEnabled(2, false);
    CheckMenuRadioItem(handleOf(menu), 0, 0, 0, MF_BYPOSITION); // makes entry 0 a radio entry
    GwMenuItem const& one = menu.item(1);
    EXPECT_NE(one.state() & MFS_CHECKED, 0);
    EXPECT_NE(one.style() & MFT_RADIOCHECK, 0);
    GwMenuItem const& two = menu.itemAt(1);
    EXPECT_EQ(two.id(), 2u);
    EXPECT_EQ(two.state() & MF_GRAYED, MF_GRAYED);
    EXPECT_STREQ(two.text().c_str(), "Two");
}

TEST_F(GwMenuTest, ItemOfAnUnknownEntryIsASharedSeparatorPerOperation) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One")));
    GwMenuItem const& unknown = menu.item(999);
    EXPECT_EQ(unknown.id(), kNoId);
    EXPECT_EQ(unknown.style(), 0x800);
    EXPECT_EQ(unknown.state(), 0);
    EXPECT_EQ(unknown.menu(), nullptr);
    EXPECT_EQ(&menu.item(998), &unknown);
    GwMenu other(2, true);
    EXPECT_EQ(&other.item(5), &unknown);

    GwMenuItem const& outside = menu.itemAt(7);
    EXPECT_EQ(outside.id(), kNoId);
    EXPECT_EQ(outside.style(), 0x800);
    EXPECT_EQ(&menu.itemAt(-1), &outside);
    EXPECT_NE(&outside, &unknown);
}

TEST_F(GwMenuTest, SizeCountsTheEntries) {
    GwMenu menu(1, true);
    EXPECT_EQ(menu.size(), 0);
    menu.add(GwMenuItem(1)).add(GwMenuItem()).add(GwMenuItem(2));
    EXPECT_EQ(menu.size(), 3);
    menu.remove(1ull);
    EXPECT_EQ(menu.size(), 2);
}

// ---- entry states --------------------------------------------------------------------------

TEST_F(GwMenuTest, EnablingByIdentifierAndByPosition) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One"))).add(GwMenuItem(2, String("Two")));
    EXPECT_TRUE(menu.enabled(1));
    EXPECT_EQ(&menu.setEnabled(1, false), &menu);
    EXPECT_FALSE(menu.enabled(1));
    EXPECT_FALSE(menu.enabledAt(0));
    // Disabling sets MF_GRAYED alone.
    EXPECT_EQ(GetMenuState(handleOf(menu), 1, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED),
              static_cast<UINT>(MF_GRAYED));
    menu.setEnabled(1, true);
    EXPECT_TRUE(menu.enabled(1));

    EXPECT_EQ(&menu.setEnabledAt(1, false), &menu);
    EXPECT_FALSE(menu.enabled(2));
    EXPECT_EQ(GetMenuState(handleOf(menu), 1, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED),
              static_cast<UINT>(MF_GRAYED));
    menu.setEnabledAt(1, true);
    EXPECT_TRUE(menu.enabledAt(1));
}

TEST_F(GwMenuTest, AnUnknownEntryIsDisabledAndChecked) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One")));
    EXPECT_FALSE(menu.enabled(77));
    EXPECT_TRUE(menu.checked(77));
    EXPECT_FALSE(menu.enabledAt(5));
    EXPECT_TRUE(menu.checkedAt(5));
}

TEST_F(GwMenuTest, CheckingPlainEntriesByIdentifierAndByPosition) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One"))).add(GwMenuItem(2, String("Two")));
    EXPECT_FALSE(menu.checked(1));
    EXPECT_EQ(&menu.setChecked(1, true), &menu);
    EXPECT_TRUE(menu.checked(1));
    EXPECT_TRUE(menu.checkedAt(0));
    EXPECT_FALSE(menu.checked(2));
    menu.setChecked(1, false);
    EXPECT_FALSE(menu.checked(1));

    EXPECT_EQ(&menu.setCheckedAt(1, true), &menu);
    EXPECT_TRUE(menu.checked(2));
    EXPECT_FALSE(menu.checked(1));
    menu.setCheckedAt(1, false);
    EXPECT_FALSE(menu.checkedAt(1));
    menu.setChecked(999, true).setCheckedAt(9, true); // no such entries: nothing happens
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, false}));
}

TEST_F(GwMenuTest, UncheckingARadioEntryChecksItAllTheSame) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED)).add(GwMenuItem(2, 0x200));
    menu.setChecked(2, false);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, true}));
    menu.setCheckedAt(0, false);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{true, false}));
}

TEST_F(GwMenuTest, RadioGroupsAreRunsOfConsecutiveRadioEntries) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, 0x200, MFS_CHECKED))
        .add(GwMenuItem(2, 0x200))
        .add(GwMenuItem(3, 0x200))
        .add(GwMenuItem(4, 0, MFS_CHECKED))
        .add(GwMenuItem(5, 0x200))
        .add(GwMenuItem(6, 0x200, MFS_CHECKED));
    menu.setChecked(5, true);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{true, false, false, true, true, false}));
    menu.setChecked(3, true);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, false, true, true, true, false}));
    menu.setCheckedAt(1, false);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, true, false, true, true, false}));
    menu.setCheckedAt(5, true);
    EXPECT_EQ(checksOf(handleOf(menu)), (std::vector<bool>{false, true, false, true, false, true}));
    // The plain entry between the groups is checked on its own.
    menu.setChecked(4, false);
    EXPECT_EQ(checksOf(handleOf(menu)),
              (std::vector<bool>{false, true, false, false, false, true}));
}

TEST_F(GwMenuTest, ARadioEntryOfASubMenuIsCheckedThroughTheMenuBar) {
    GwMenu bar(1, false);
    auto* view = new GwMenu(2, true);
    view->add(GwMenuItem(20, 0x200, MFS_CHECKED)).add(GwMenuItem(21, 0x200));
    bar.add(GwMenuItem(10, String("View"), view));
    bar.setChecked(21, true);
    EXPECT_TRUE(view->checked(21));
    EXPECT_TRUE(bar.checked(21));
}

TEST_F(GwMenuTest, DefaultItemByIdentifierAndByPosition) {
    GwMenu menu(1, true);
    EXPECT_EQ(menu.defaultItemAt(), -1);
    EXPECT_EQ(menu.defaultItem(), 0xFFFFFFFFull);
    menu.add(GwMenuItem(1, String("One"))).add(GwMenuItem(2, String("Two")));
    EXPECT_EQ(&menu.setDefaultItem(2), &menu);
    EXPECT_EQ(menu.defaultItem(), 2u);
    EXPECT_EQ(menu.defaultItemAt(), 1);
    EXPECT_EQ(&menu.setDefaultItemAt(0), &menu);
    EXPECT_EQ(menu.defaultItem(), 1u);
    EXPECT_EQ(menu.defaultItemAt(), 0);
    // A disabled default entry is still reported.
    menu.setEnabled(1, false);
    EXPECT_EQ(menu.defaultItem(), 1u);
}

// ---- the menu's own attributes and the window operations it neutralises -------------------

TEST_F(GwMenuTest, OwnAttributesSetAndChain) {
    GwMenu menu(1, true);
    EXPECT_EQ(&menu.setId(33), &menu);
    EXPECT_EQ(menu.id(), 33u);
    EXPECT_EQ(&menu.setSelected(0xF820), &menu);
    EXPECT_EQ(menu.selected(), 0xF820u);
    EXPECT_EQ(&menu.setDynamic(true), &menu);
    EXPECT_TRUE(menu.dynamic());
    EXPECT_EQ(&menu.setHelpId(4711), &menu);
    EXPECT_EQ(menu.helpId(), 4711u);
    EXPECT_EQ(GetMenuContextHelpId(handleOf(menu)), 4711u);
}

TEST_F(GwMenuTest, TextIsAlwaysEmpty) {
    GwMenu menu(1, true);
    EXPECT_EQ(&menu.setText(String("Menu")), &menu);
    EXPECT_STREQ(menu.text().c_str(), "");
    GwWindow& window = menu;
    window.setText(String("Menu"));
    EXPECT_STREQ(window.text().c_str(), "");
    EXPECT_STREQ(static_cast<char const*>(window), "");
}

TEST_F(GwMenuTest, EnablingTheMenuItselfHasNoEffect) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One")));
    EXPECT_EQ(&menu.setEnabled(false), &menu);
    EXPECT_TRUE(menu.enabled());
    EXPECT_TRUE(menu.enabled(1));
}

TEST_F(GwMenuTest, PositionIsStoredAndDimensionIsNone) {
    GwMenu menu(1, true);
    EXPECT_EQ(&menu.setPosition(GwPosition(10, 20)), &menu);
    EXPECT_EQ(menu.position(), GwPosition(10, 20));
    GwWindow& window = menu;
    window.setPosition(30, 40);
    long x = 0;
    long y = 0;
    window.position(x, y);
    EXPECT_EQ(x, 30);
    EXPECT_EQ(y, 40);

    EXPECT_EQ(&menu.setDimension(GwDimension(100, 200)), &menu);
    window.setDimension(100, 200);
    EXPECT_EQ(menu.dimension(), GwDimension(0, 0));
    long width = -1;
    long height = -1;
    window.dimension(width, height);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(height, 0);
}

TEST_F(GwMenuTest, EventHandlersAreNotTaken) {
    GwMenu menu(1, true);
    testing_windows::Recorder handler(false);
    EXPECT_EQ(&menu.add(&handler), &menu);
    EXPECT_EQ(menu.handlers(), nullptr);
    EXPECT_EQ(&menu.remove(&handler), &menu);
    EXPECT_FALSE(menu.visible());
}

// ---- changing kind -------------------------------------------------------------------------

TEST_F(GwMenuTest, SetPopupWithoutConvertChangesNothing) {
    GwMenu bar(1, false);
    bar.add(GwMenuItem(1, String("One")));
    HMENU before = handleOf(bar);
    EXPECT_EQ(&bar.setPopup(true, false), &bar);
    EXPECT_FALSE(bar.popup());
    EXPECT_EQ(handleOf(bar), before);
    EXPECT_EQ(bar.size(), 1);
    // Asking for the kind it already has changes nothing either.
    bar.setPopup(false, true);
    EXPECT_FALSE(bar.popup());
    EXPECT_EQ(handleOf(bar), before);
}

TEST_F(GwMenuTest, SetPopupMovesEntriesItemsAndSubMenusToANewHandle) {
    GwMenu menu(1, false);
    auto* sub = new GwMenu(2, true);
    sub->add(GwMenuItem(200, String("Inner")));
    menu.add(CountedItem(1, "One"))
        .add(GwMenuItem())
        .add(CountedItem(2, "Sub", sub))
        .add(GwMenuItem(3, 0x200, MFS_CHECKED));
    menu.setEnabled(1, false);
    HMENU old = handleOf(menu);
    std::vector<GwMenuItem*> stored;
    for (int at = 0; at < 4; ++at)
        stored.push_back(entryAt(old, static_cast<UINT>(at)).item);

    menu.setPopup(true, true);
    HMENU fresh = handleOf(menu);
    EXPECT_TRUE(menu.popup());
    EXPECT_NE(fresh, old);
    EXPECT_TRUE(IsMenu(fresh));
    EXPECT_FALSE(IsMenu(old));
    EXPECT_EQ(GwMenu::lookup(fresh), &menu);
    EXPECT_EQ(GwMenu::lookup(old), nullptr);

    EXPECT_EQ(idsOf(fresh), (std::vector<UINT>{1, 0xFFFFFFFFu, 2, 3}));
    EXPECT_EQ(textsOf(fresh), (std::vector<std::string>{"One", "", "Sub", ""}));
    for (int at = 0; at < 4; ++at)
        EXPECT_EQ(entryAt(fresh, static_cast<UINT>(at)).item, stored[static_cast<size_t>(at)]);
    EXPECT_EQ(entryAt(fresh, 1).type, static_cast<UINT>(MFT_SEPARATOR));
    EXPECT_EQ(entryAt(fresh, 2).subMenu, handleOf(*sub));
    EXPECT_EQ(GwMenu::lookup(handleOf(*sub)), sub);
    EXPECT_TRUE(IsMenu(handleOf(*sub)));
    EXPECT_EQ(sub->size(), 1);
    EXPECT_FALSE(menu.enabled(1));
    EXPECT_TRUE(menu.checked(3));
    EXPECT_EQ(entryAt(fresh, 3).type, static_cast<UINT>(MFT_RADIOCHECK));
    EXPECT_EQ(CountedItem::live, mItemsBefore + 2);

    // And back to a menu bar.
    menu.setPopup(false, true);
    EXPECT_FALSE(menu.popup());
    EXPECT_FALSE(IsMenu(fresh));
    EXPECT_EQ(menu.size(), 4);
    EXPECT_EQ(GwMenu::lookup(menu.window()), &menu);
}

TEST_F(GwMenuTest, ADynamicMenuStartsEmptyAfterChangingKind) {
    GwMenu menu(1, false);
    menu.setDynamic(true);
    auto* sub = new GwMenu(2, true);
    menu.add(CountedItem(1, "One")).add(CountedItem(2, "Sub", sub));
    menu.setPopup(true, true);
    EXPECT_TRUE(menu.popup());
    EXPECT_EQ(menu.size(), 0);
    EXPECT_EQ(menuCount(), mMenusBefore + 1);
    EXPECT_EQ(CountedItem::live, mItemsBefore);
}

// ---- copying entries -----------------------------------------------------------------------

TEST_F(GwMenuTest, AssignmentCopiesOneLevelOfEntries) {
    GwMenu source(1, false);
    auto* sub = new GwMenu(77, true);
    sub->setDynamic(true);
    sub->add(GwMenuItem(700, String("Inner")));
    source.add(CountedItem(1, "One"))
        .add(GwMenuItem())
        .add(CountedItem(2, "Sub", sub))
        .add(GwMenuItem(3, 0x200, MFS_CHECKED));

    GwMenu target(5, true);
    auto* oldSub = new GwMenu(55, true);
    HMENU oldSubHandle = handleOf(*oldSub);
    target.add(CountedItem(9, "Old")).add(CountedItem(8, "Old sub", oldSub));
    int const madeBefore = CountedItem::made;

    EXPECT_EQ(&(target = source), &target);
    EXPECT_FALSE(IsMenu(oldSubHandle));
    EXPECT_EQ(GwMenu::lookup(oldSubHandle), nullptr);
    // Its own attributes stay.
    EXPECT_EQ(target.id(), 5u);
    EXPECT_TRUE(target.popup());

    HMENU copied = handleOf(target);
    EXPECT_EQ(idsOf(copied), (std::vector<UINT>{1, 0xFFFFFFFFu, 2, 3}));
    EXPECT_EQ(textsOf(copied), (std::vector<std::string>{"One", "", "Sub", ""}));
    EXPECT_EQ(entryAt(copied, 1).type, static_cast<UINT>(MFT_SEPARATOR));
    EXPECT_EQ(entryAt(copied, 3).type, static_cast<UINT>(MFT_RADIOCHECK));
    EXPECT_TRUE(target.checked(3));
    EXPECT_EQ(CountedItem::made, madeBefore + 2); // through the items' class factory
    for (UINT at = 0; at < 4; ++at) {
        Entry own = entryAt(copied, at);
        Entry theirs = entryAt(handleOf(source), at);
        ASSERT_NE(own.item, nullptr);
        EXPECT_NE(own.item, theirs.item);
        EXPECT_EQ(own.item->id(), theirs.item->id());
        EXPECT_STREQ(own.item->text().c_str(), theirs.item->text().c_str());
    }

    // The sub-menu is a new, empty, registered menu with the same identifier and kind.
    Entry withSub = entryAt(copied, 2);
    ASSERT_NE(withSub.subMenu, nullptr);
    EXPECT_NE(withSub.subMenu, handleOf(*sub));
    GwMenu* newSub = GwMenu::lookup(withSub.subMenu);
    ASSERT_NE(newSub, nullptr);
    EXPECT_NE(newSub, sub);
    EXPECT_EQ(newSub->id(), 77u);
    EXPECT_TRUE(newSub->dynamic());
    EXPECT_FALSE(newSub->popup());
    EXPECT_EQ(newSub->size(), 0);
    EXPECT_EQ(target.item(2).menu(), newSub);
    EXPECT_EQ(sub->size(), 1);
    EXPECT_EQ(source.size(), 4);
    EXPECT_EQ(menuCount(), mMenusBefore + 4);
}

TEST_F(GwMenuTest, AssignmentFromAnObjectChecksTheClass) {
    GwMenu source(1, true);
    source.add(GwMenuItem(1, String("One")));
    GwMenu target(2, true);
    Object& asObject = target;
    asObject = static_cast<Object const&>(source);
    EXPECT_EQ(idsOf(handleOf(target)), (std::vector<UINT>{1}));

    GwMenuItem item(3);
    EXPECT_THROW(asObject = static_cast<Object const&>(item), std::bad_cast);
    GwEventData data;
    EXPECT_THROW(asObject = static_cast<Object const&>(data), std::bad_cast);
    EXPECT_EQ(target.size(), 1);
}

TEST_F(GwMenuTest, AssigningAMenuToItselfKeepsItsEntries) {
    GwMenu menu(1, true);
    menu.add(GwMenuItem(1, String("One")));
    GwMenu& same = menu;
    menu = same;
    EXPECT_EQ(menu.size(), 1);
}

// ---- the parent frame and opening a popup --------------------------------------------------

// The frame class of the library, or a stand-in record under its name while the library has
// none: frames are what setParent keeps.
Class const* frameClass() {
    if (Class const* frame = Class::lookup("GwFrame"))
        return frame;
    static char const* parents[2] = {"GwWindow", nullptr};
    static Class standIn("GwFrame", parents, static_cast<long>(sizeof(GwWindow)), nullptr);
    return &standIn;
}

// A top-level window object whose class derives from GwFrame by its record; it records the
// messages its window receives.
class TestFrame : public GwWindow {
public:
    explicit TestFrame(HWND hwnd) : GwWindow(hwnd) {}

    ::Class const* isA() const override { return &record; }

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        messages.push_back(static_cast<UINT>(msg));
        if (msg == WM_INITMENUPOPUP)
            initMenu = reinterpret_cast<HMENU>(wParam);
        return GwWindow::msgHandler(msg, wParam, lParam);
    }

    bool received(UINT msg) const {
        return std::find(messages.begin(), messages.end(), msg) != messages.end();
    }

    std::vector<UINT> messages;
    HMENU initMenu = nullptr;

    static char const* parents[2];
    static ::Class record;
};

char const* TestFrame::parents[2] = {"GwFrame", nullptr};
::Class TestFrame::record("VmGuiTestFrame", TestFrame::parents,
                          static_cast<long>(sizeof(TestFrame)), nullptr);

TEST_F(GwMenuTest, SetParentKeepsTheFrameThatOwnsTheWindow) {
    HWND frameWindow = testing_windows::rawWindow(nullptr, 0, 50, 50, 400, 300);
    auto* frame = new TestFrame(frameWindow);
    HWND childWindow = testing_windows::rawWindow(frameWindow, 7);
    auto* child = new testing_windows::DispatchingWindow(childWindow);
    GwMenu menu(1, true);

    if (Class::lookup("GwFrame") == nullptr) {
        // Without a frame class no window is a frame.
        menu.setParent(frame);
        EXPECT_EQ(menu.parent(), nullptr);
    }
    ASSERT_NE(frameClass(), nullptr);
    ASSERT_TRUE(frame->isA()->isSubclassOf(Class::lookup("GwFrame")));

    EXPECT_EQ(&menu.setParent(child), &menu);
    EXPECT_EQ(menu.parent(), frame);
    menu.setParent(nullptr);
    EXPECT_EQ(menu.parent(), nullptr);
    menu.setParent(frame);
    EXPECT_EQ(menu.parent(), frame);

    // A menu passes on its own frame.
    GwMenu other(2, true);
    other.setParent(&menu);
    EXPECT_EQ(other.parent(), frame);

    // A window whose root is no frame gives none.
    HWND plainWindow = testing_windows::rawWindow();
    auto* plain = new testing_windows::DispatchingWindow(plainWindow);
    menu.setParent(plain);
    EXPECT_EQ(menu.parent(), nullptr);

    DestroyWindow(plainWindow);
    DestroyWindow(frameWindow);
    EXPECT_FALSE(IsWindow(childWindow));
}

struct PopupSeen {
    bool seen = false;
    RECT rect{};
};
PopupSeen gPopup;

// Ends the menu loop that TrackPopupMenu runs, noting where the popup window was.
void CALLBACK endMenuLoop(HWND, UINT, UINT_PTR id, DWORD) {
    KillTimer(nullptr, id);
    if (HWND popup = FindWindowA("#32768", nullptr)) {
        if (IsWindowVisible(popup)) {
            gPopup.seen = true;
            GetWindowRect(popup, &gPopup.rect);
        }
    }
    EndMenu();
}

TEST_F(GwMenuTest, SetVisibleOpensTheMenuAsAPopupForTheFrame) {
    ASSERT_NE(frameClass(), nullptr);
    HWND frameWindow = testing_windows::rawWindow(nullptr, 0, 60, 70, 400, 300);
    ShowWindow(frameWindow, SW_SHOW);
    auto* frame = new TestFrame(frameWindow);

    GwMenu menu(9, false);
    auto* sub = new GwMenu(10, true);
    sub->add(GwMenuItem(100, String("Inner")));
    menu.add(GwMenuItem(1, String("One"))).add(GwMenuItem(2, String("More"), sub));
    menu.setParent(frame).setPosition(GwPosition(20, 30));
    ASSERT_EQ(menu.parent(), frame);
    HMENU old = handleOf(menu);

    gPopup = PopupSeen();
    UINT_PTR timer = SetTimer(nullptr, 0, 150, &endMenuLoop);
    ASSERT_NE(timer, 0u);
    DWORD const started = GetTickCount();
    EXPECT_EQ(&menu.setVisible(true), &menu);
    DWORD const took = GetTickCount() - started;
    KillTimer(nullptr, timer);

    // The menu bar was turned into a popup first.
    HMENU shown = handleOf(menu);
    EXPECT_TRUE(menu.popup());
    EXPECT_NE(shown, old);
    EXPECT_TRUE(IsMenu(shown));
    EXPECT_FALSE(IsMenu(old));
    EXPECT_EQ(menu.size(), 2);
    EXPECT_EQ(GwMenu::lookup(shown), &menu);
    EXPECT_EQ(entryAt(shown, 1).subMenu, handleOf(*sub));

    // The frame's window owned the menu loop, and the timer ended it.
    EXPECT_GE(took, 100u);
    EXPECT_TRUE(frame->received(WM_ENTERMENULOOP));
    EXPECT_TRUE(frame->received(WM_INITMENUPOPUP));
    EXPECT_TRUE(frame->received(WM_EXITMENULOOP));
    EXPECT_EQ(frame->initMenu, shown);
    EXPECT_EQ(GwMenu::lookup(frame->initMenu), &menu);

    // Opened at the position, measured upwards from the bottom of the frame's client area.
    RECT client{};
    GetClientRect(frameWindow, &client);
    POINT expected{20, client.bottom - 30};
    ClientToScreen(frameWindow, &expected);
    ASSERT_TRUE(gPopup.seen);
    EXPECT_EQ(gPopup.rect.left, expected.x);
    EXPECT_EQ(gPopup.rect.top, expected.y);

    DestroyWindow(frameWindow);
}

TEST_F(GwMenuTest, SetVisibleWithoutAFrameHasNoOwnerForTheMenu) {
    GwMenu menu(3, false);
    menu.add(GwMenuItem(1, String("One")));
    HMENU old = handleOf(menu);
    // Should the menu open after all, this ends it.
    UINT_PTR timer = SetTimer(nullptr, 0, 2000, &endMenuLoop);
    gPopup = PopupSeen();
    DWORD const started = GetTickCount();
    menu.setVisible(true);
    DWORD const took = GetTickCount() - started;
    KillTimer(nullptr, timer);
    EXPECT_LT(took, 1000u); // TrackPopupMenu refuses a menu without owner window
    EXPECT_FALSE(gPopup.seen);
    EXPECT_TRUE(menu.popup());
    EXPECT_FALSE(IsMenu(old));
    EXPECT_TRUE(IsMenu(handleOf(menu)));
    EXPECT_EQ(menu.size(), 1);
}

TEST_F(GwMenuTest, SetVisibleFalseDoesNothing) {
    GwMenu menu(3, false);
    HMENU before = handleOf(menu);
    EXPECT_EQ(&menu.setVisible(false), &menu);
    EXPECT_FALSE(menu.popup());
    EXPECT_EQ(handleOf(menu), before);
    GwWindow& window = menu;
    window.hide();
    EXPECT_FALSE(menu.popup());
}

} // namespace
