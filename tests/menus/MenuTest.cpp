// GwMenu itself on real Win32 menus: construction, its class record and copies, lookup
// through the table of menus, and the window attributes a menu stores or neutralises.
#include <gtest/gtest.h>

#include <windows.h>

#include <memory>
#include <random>
#include <typeinfo>
#include <vector>

#include <GwEventData.h>
#include <GwMenu.h>

#include "MenuTesting.h"
#include "TestWindows.h"

using namespace testing_menus;

namespace {

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

} // namespace
