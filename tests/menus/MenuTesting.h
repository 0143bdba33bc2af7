// Helpers of the menu tests: what Win32 says about a menu's entries, a menu item class that
// counts its live copies, and the fixture that checks nothing is leaked.
#pragma once

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include <GwEventData.h>
#include <GwMenu.h>

namespace testing_menus {

inline unsigned long long const kNoId = ~0ull;

inline HMENU handleOf(GwMenu const& menu) {
    return static_cast<HMENU>(menu.window());
}

inline std::int32_t menuCount() {
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

inline Entry entryAt(HMENU menu, UINT position) {
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

inline std::vector<UINT> idsOf(HMENU menu) {
    std::vector<UINT> ids;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        ids.push_back(entryAt(menu, static_cast<UINT>(at)).id);
    return ids;
}

inline std::vector<std::string> textsOf(HMENU menu) {
    std::vector<std::string> texts;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        texts.push_back(entryAt(menu, static_cast<UINT>(at)).text);
    return texts;
}

inline std::vector<bool> checksOf(HMENU menu) {
    std::vector<bool> checks;
    for (int at = 0; at < GetMenuItemCount(menu); ++at)
        checks.push_back((entryAt(menu, static_cast<UINT>(at)).state & MFS_CHECKED) != 0);
    return checks;
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

inline int CountedItem::live = 0;
inline int CountedItem::made = 0;
inline char const* CountedItem::parents[2] = {"GwMenuItem", nullptr};
inline ::Class CountedItem::record("VmGuiTestCountedMenuItem", CountedItem::parents,
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

} // namespace testing_menus
