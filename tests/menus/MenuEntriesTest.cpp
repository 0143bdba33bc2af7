// The entries of a GwMenu on real Win32 menus: adding, inserting, replacing, removing and
// reading them, with the copies of items and the sub-menus the menu owns.
#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <typeinfo>
#include <vector>

#include <GwMenu.h>

#include "MenuTesting.h"

using namespace testing_menus;

namespace {

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

} // namespace
