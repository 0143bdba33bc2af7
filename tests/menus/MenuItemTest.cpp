// GwMenuItem: constructors, accessors, the sub-menu link, equality and the class factory.
#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include <GwEventData.h>
#include <GwMenu.h>

namespace {

unsigned long long const kNoId = ~0ull;

TEST(GwMenuItemTest, DefaultItemIsASeparatorWithoutIdentifier) {
    unsigned int const counter = GwItem::gItemId;
    GwMenuItem item;
    EXPECT_EQ(item.id(), kNoId);
    EXPECT_EQ(item.style(), 0x800);
    EXPECT_EQ(item.state(), 0);
    EXPECT_EQ(item.menu(), nullptr);
    EXPECT_EQ(item.text(), "");
    // No fresh identifier is taken from the item counter.
    EXPECT_EQ(GwItem::gItemId, counter);
}

TEST(GwMenuItemTest, ConstructorsSetIdentifierStyleStateAndSubMenu) {
    GwMenu subMenu(40, true);

    GwMenuItem byId(7);
    EXPECT_EQ(byId.id(), 7u);
    EXPECT_EQ(byId.style(), 0);
    EXPECT_EQ(byId.state(), 0);
    EXPECT_EQ(byId.menu(), nullptr);
    EXPECT_EQ(byId.text(), "");

    GwMenuItem withText(8, String("&Open"));
    EXPECT_EQ(withText.id(), 8u);
    EXPECT_EQ(withText.text(), "&Open");
    EXPECT_EQ(withText.style(), 0);
    EXPECT_EQ(withText.state(), 0);
    EXPECT_EQ(withText.menu(), nullptr);

    GwMenuItem withStyle(9, 0x200);
    EXPECT_EQ(withStyle.id(), 9u);
    EXPECT_EQ(withStyle.style(), 0x200);
    EXPECT_EQ(withStyle.state(), 0);
    EXPECT_EQ(withStyle.menu(), nullptr);
    EXPECT_EQ(withStyle.text(), "");

    GwMenuItem withState(10, 0x200, 8);
    EXPECT_EQ(withState.id(), 10u);
    EXPECT_EQ(withState.style(), 0x200);
    EXPECT_EQ(withState.state(), 8);
    EXPECT_EQ(withState.menu(), nullptr);

    GwMenuItem opening(11, &subMenu);
    EXPECT_EQ(opening.id(), 11u);
    EXPECT_EQ(opening.style(), 0x10);
    EXPECT_EQ(opening.state(), 0);
    EXPECT_EQ(opening.menu(), &subMenu);
    EXPECT_EQ(opening.text(), "");

    GwMenuItem openingWithText(12, String("&Edit"), &subMenu);
    EXPECT_EQ(openingWithText.id(), 12u);
    EXPECT_EQ(openingWithText.text(), "&Edit");
    EXPECT_EQ(openingWithText.style(), 0x10);
    EXPECT_EQ(openingWithText.state(), 0);
    EXPECT_EQ(openingWithText.menu(), &subMenu);

    GwMenuItem copy(openingWithText);
    EXPECT_EQ(copy.id(), 12u);
    EXPECT_EQ(copy.text(), "&Edit");
    EXPECT_EQ(copy.style(), 0x10);
    EXPECT_EQ(copy.menu(), &subMenu); // the same sub-menu, not a copy of it
}

TEST(GwMenuItemTest, AssignmentCopiesEveryField) {
    GwMenu subMenu(41, true);
    GwMenuItem source(5, String("Five"), &subMenu);
    source.setState(8);
    GwMenuItem target(6, 0x800, 3);
    target = source;
    EXPECT_EQ(target.id(), 5u);
    EXPECT_EQ(target.text(), "Five");
    EXPECT_EQ(target.style(), 0x10);
    EXPECT_EQ(target.state(), 8);
    EXPECT_EQ(target.menu(), &subMenu);
}

TEST(GwMenuItemTest, AssignmentFromObjectChecksTheClass) {
    GwMenuItem source(5, String("Five"));
    GwMenuItem target;
    Object& asObject = target;
    asObject = static_cast<Object const&>(source);
    EXPECT_EQ(target.id(), 5u);
    EXPECT_EQ(target.text(), "Five");

    GwTextItem text(String("text"), 3);
    EXPECT_THROW(asObject = static_cast<Object const&>(text), std::bad_cast);
    EXPECT_EQ(target.id(), 5u);
}

TEST(GwMenuItemTest, AccessorsSetAndChain) {
    GwMenu subMenu(42, true);
    GwMenuItem item(3);
    GwMenuItem& chained =
        item.setStyle(0x200).setState(8).setMenu(&subMenu).setText(String("Three"));
    EXPECT_EQ(&chained, &item);
    EXPECT_EQ(item.style(), 0x200);
    EXPECT_EQ(item.state(), 8);
    EXPECT_EQ(item.menu(), &subMenu);
    EXPECT_EQ(item.text(), "Three");
    EXPECT_EQ(static_cast<String const&>(item), "Three");
    item.setMenu(nullptr);
    EXPECT_EQ(item.menu(), nullptr);
}

TEST(GwMenuItemTest, ItemsCompareByIdentifierOnly) {
    GwMenuItem a(5, String("one"));
    GwMenuItem b(5, String("other"));
    GwMenuItem c(9, String("one"));
    EXPECT_TRUE(a.operator==(b));
    EXPECT_EQ(a.operator!=(b), 0);
    EXPECT_FALSE(a.operator==(c));
    EXPECT_EQ(a.operator!=(c), -1);
    EXPECT_EQ(c.operator!=(a), 1);
    // Against any item with the same identifier.
    EXPECT_TRUE(a.operator==(GwItem(5)));
    GwEventData notAnItem;
    EXPECT_THROW((void)a.operator==(notAnItem), std::bad_cast);
}

TEST(GwMenuItemTest, MenuIdIsTheSubMenuIdentifier) {
    GwMenu subMenu(77, true);
    GwMenuItem opening(1, &subMenu);
    EXPECT_EQ(opening.menuId(), 77u);
    GwMenuItem plain(2);
    EXPECT_EQ(plain.menuId(), 0u);
}

TEST(GwMenuItemTest, SetMenuIdRenamesTheSubMenu) {
    GwMenu subMenu(77, true);
    GwMenuItem opening(1, &subMenu);
    EXPECT_EQ(&opening.setMenuId(88), &opening);
    EXPECT_EQ(subMenu.id(), 88u);
    EXPECT_EQ(opening.menu(), &subMenu);
    EXPECT_EQ(opening.menuId(), 88u);
}

TEST(GwMenuItemTest, SetMenuIdZeroDetachesTheSubMenu) {
    GwMenu subMenu(77, true);
    GwMenuItem opening(1, &subMenu);
    opening.setMenuId(0);
    EXPECT_EQ(opening.menu(), nullptr);
    EXPECT_EQ(subMenu.id(), 77u); // the menu itself is untouched
    EXPECT_EQ(opening.menuId(), 0u);
    EXPECT_EQ(opening.style(), 0x10);
}

TEST(GwMenuItemTest, SetMenuIdWithoutSubMenuChangesNothing) {
    GwMenuItem plain(2);
    plain.setMenuId(5);
    EXPECT_EQ(plain.menu(), nullptr);
    EXPECT_EQ(plain.menuId(), 0u);
}

TEST(GwMenuItemTest, NewInstanceCopiesTheCarriedMenuItem) {
    GwMenu subMenu(50, true);
    GwMenuItem source(21, String("Carried"), &subMenu);
    source.setState(8);
    GwEventData const data(source);
    std::unique_ptr<GwMenuItem> made(GwMenuItem::newInstance(&data));
    ASSERT_NE(made, nullptr);
    EXPECT_NE(made.get(), &source);
    EXPECT_EQ(made->id(), 21u);
    EXPECT_EQ(made->text(), "Carried");
    EXPECT_EQ(made->style(), 0x10);
    EXPECT_EQ(made->state(), 8);
    EXPECT_EQ(made->menu(), &subMenu);
}

TEST(GwMenuItemTest, NewInstanceOfAnythingElseIsASeparator) {
    GwTextItem text(String("not a menu item"), 4);
    GwEventData const carriesText(text);
    GwEventData const empty;
    EventData const plain;
    for (EventData const* data :
         {static_cast<EventData const*>(&carriesText), static_cast<EventData const*>(&empty),
          &plain, static_cast<EventData const*>(nullptr)}) {
        std::unique_ptr<GwMenuItem> made(GwMenuItem::newInstance(data));
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->id(), kNoId);
        EXPECT_EQ(made->style(), 0x800);
        EXPECT_EQ(made->state(), 0);
        EXPECT_EQ(made->menu(), nullptr);
    }
}

TEST(GwMenuItemTest, ClassRecordMakesMenuItemsByName) {
    Class const* record = Class::lookup("GwMenuItem");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record, GwMenuItem::isa());
    ASSERT_NE(record->parentNames(), nullptr);
    EXPECT_STREQ(record->parentNames()[0], "GwTextItem");
    EXPECT_EQ(record->parentNames()[1], nullptr);
    EXPECT_TRUE(record->isSubclassOf(Class::lookup("GwItem")));

    GwMenuItem source(31, String("By name"));
    EXPECT_EQ(source.isA(), record);
    GwEventData const data(source);
    std::unique_ptr<Object> made(record->createInstance(&data));
    auto* item = dynamic_cast<GwMenuItem*>(made.get());
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->id(), 31u);
    EXPECT_EQ(item->text(), "By name");
}

} // namespace
