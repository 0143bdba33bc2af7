// The states of a GwMenu's entries on real Win32 menus (enabled, checked, radio groups, the
// default entry), changing the kind of menu, copying entries, and opening a popup.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>
#include <typeinfo>
#include <vector>

#include <GwEventData.h>
#include <GwEventHandler.h>
#include <GwMenu.h>

#include "MenuTesting.h"
#include "TestWindows.h"

using namespace testing_menus;

namespace {

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
