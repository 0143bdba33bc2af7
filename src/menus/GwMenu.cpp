#include "GwMenu.h"

#include <windows.h>

#include <unordered_map>
#include <vector>

#include "GwEventData.h"

GW_CLASS_MAKES(GwMenu, "GwMenu", "GwWindow")

namespace {

static_assert(sizeof(MENUITEMINFOA) == 80, "MENUITEMINFOA of the 64-bit platform");

// The identifier of an entry that has none.
constexpr unsigned long long kNoId = ~0ull;
// The position InsertMenuItemA reads as "after the last entry".
constexpr UINT kAppend = 0xFFFFFFFFu;
// The masks of add: with MIIM_STRING (the platforms that know it) the style is not applied.
constexpr UINT kMaskString = MIIM_STATE | MIIM_ID | MIIM_DATA | MIIM_STRING;
constexpr UINT kMaskType = MIIM_STATE | MIIM_ID | MIIM_TYPE | MIIM_DATA;
// Everything of an entry that moves or is copied with it.
constexpr UINT kMaskEntry = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_TYPE | MIIM_DATA;
constexpr int kTextLength = 256;

HMENU hmenuOf(void* handle) {
    return static_cast<HMENU>(handle);
}

MENUITEMINFOA infoWith(UINT mask) {
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = mask;
    return info;
}

GwMenuItem* storedItem(MENUITEMINFOA const& info) {
    return reinterpret_cast<GwMenuItem*>(info.dwItemData);
}

bool isRadio(MENUITEMINFOA const& info) {
    return (info.fType & MFT_RADIOCHECK) != 0;
}

UINT withChecked(UINT state, bool check) {
    return check ? state | MFS_CHECKED : state & ~static_cast<UINT>(MFS_CHECKED);
}

// Writes only the state of an entry.
void writeState(HMENU menu, UINT item, BOOL byPosition, UINT state) {
    MENUITEMINFOA info = infoWith(MIIM_STATE);
    info.fState = state;
    SetMenuItemInfoA(menu, item, byPosition, &info);
}

// The menu's own copy of an item, made by the factory of the item's class record so that
// derived item classes keep their kind. A factory that makes no menu item gives a plain copy.
GwMenuItem* copyOf(GwMenuItem const& item) {
    GwEventData const data(item);
    if (auto* copy = dynamic_cast<GwMenuItem*>(Class::createInstance(item.isA(), &data)))
        return copy;
    return new GwMenuItem(item);
}

// Inserts the entry for an item copy, which the entry then owns (it is deleted when the
// insertion fails). With MIIM_STRING the style is not applied: a separator becomes an
// entry with an empty text, a radio-check item a plain one.
bool insertEntry(HMENU menu, UINT position, GwMenuItem* copy) {
    GwMenu const* subMenu = copy->menu();
    MENUITEMINFOA info = infoWith(GwWindow::getWin98_2000_ME() ? kMaskString : kMaskType);
    if (subMenu != nullptr)
        info.fMask |= MIIM_SUBMENU;
    info.fType = static_cast<UINT>(copy->style());
    info.fState = static_cast<UINT>(copy->state());
    info.wID = static_cast<UINT>(copy->id());
    info.hSubMenu = subMenu != nullptr ? hmenuOf(subMenu->window()) : nullptr;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(copy);
    info.dwTypeData = const_cast<char*>(copy->text().c_str());
    if (InsertMenuItemA(menu, position, TRUE, &info))
        return true;
    delete copy;
    return false;
}

// Every registered menu, and an index from handle to the registered menus with that handle.
// Each index list is in table order, so its first entry is the first menu of the table with
// that handle. Removing from the table packs it without changing the order of the rest, so
// the lists stay in order; a menu that enters the table or changes its handle is put at its
// place by its slot.
struct MenuRegistry {
    GwObjectTable<GwMenu> table;
    std::unordered_map<void*, std::vector<GwMenu*>> byHandle;

    void index(GwMenu* menu, void* handle) {
        if (handle == nullptr)
            return;
        std::vector<GwMenu*>& list = byHandle[handle];
        if (list.empty()) {
            list.push_back(menu);
            return;
        }
        std::int32_t const slot = table.indexOf(menu);
        auto at = list.end();
        while (at != list.begin() && table.indexOf(*(at - 1)) > slot)
            --at;
        list.insert(at, menu);
    }

    void unindex(GwMenu* menu, void* handle) {
        auto found = byHandle.find(handle);
        if (found == byHandle.end())
            return;
        std::vector<GwMenu*>& list = found->second;
        for (auto at = list.begin(); at != list.end(); ++at) {
            if (*at == menu) {
                list.erase(at);
                if (list.empty())
                    byHandle.erase(found);
                return;
            }
        }
    }

    void enrol(GwMenu* menu, void* handle) {
        table.add(menu);
        index(menu, handle);
    }

    void leave(GwMenu* menu, void* handle) {
        if (table.remove(menu) < 0)
            return;
        table.compact();
        unindex(menu, handle);
    }

    GwMenu* first(void* handle) const {
        if (handle == nullptr)
            return nullptr;
        auto found = byHandle.find(handle);
        return found != byHandle.end() ? found->second.front() : nullptr;
    }
};

MenuRegistry& registry() {
    static MenuRegistry menus;
    return menus;
}

} // namespace

GwMenu::GwMenu(unsigned long long id, bool popup)
    : GwWindow(), mDynamic(false), mPopup(popup), mId(id), mSelected(0), mParentFrame(nullptr) {
    mHandle = popup ? CreatePopupMenu() : CreateMenu();
    registry().enrol(this, mHandle);
}

// The menu handle goes straight into the handle field: a menu is never bound like a window.
GwMenu::GwMenu(void* handle)
    : GwWindow(), mDynamic(false), mPopup(false), mId(0), mSelected(0), mParentFrame(nullptr) {
    mHandle = handle;
    registry().enrol(this, mHandle);
}

GwMenu::GwMenu(GwMenu const& other)
    : GwWindow(other), mDynamic(other.mDynamic), mPopup(other.mPopup), mPosition(other.mPosition),
      mId(other.mId), mSelected(other.mSelected), mParentFrame(other.mParentFrame) {
    mHandle = other.mHandle;
}

GwMenu& GwMenu::operator=(GwMenu const& other) {
    if (this == &other || mHandle == other.mHandle)
        return *this;
    remove();
    HMENU const source = hmenuOf(other.mHandle);
    HMENU const target = hmenuOf(mHandle);
    for (UINT at = 0;; ++at) {
        char text[kTextLength] = {};
        MENUITEMINFOA info = infoWith(kMaskEntry);
        info.dwTypeData = text;
        info.cch = kTextLength;
        if (!GetMenuItemInfoA(source, at, TRUE, &info))
            break;
        GwMenuItem* copy = storedItem(info) != nullptr ? copyOf(*storedItem(info)) : nullptr;
        info.dwItemData = reinterpret_cast<ULONG_PTR>(copy);
        GwMenu* subMenu = nullptr;
        if (info.hSubMenu != nullptr) {
            // Sub-menus are dynamic or filled when they open: only one level is copied.
            GwMenu const* original = lookup(info.hSubMenu);
            subMenu = new GwMenu(static_cast<void*>(CreatePopupMenu()));
            if (original != nullptr) {
                subMenu->setDynamic(original->mDynamic);
                subMenu->setId(original->mId);
            }
            info.hSubMenu = hmenuOf(subMenu->mHandle);
            if (copy != nullptr)
                copy->setMenu(subMenu);
        }
        if (!InsertMenuItemA(target, kAppend, TRUE, &info)) {
            delete copy;
            delete subMenu;
        }
    }
    return *this;
}

GwMenu::~GwMenu() {
    registry().leave(this, mHandle);
    remove();
    if (mHandle != nullptr)
        DestroyMenu(hmenuOf(mHandle));
    // The window base must not take the menu handle for a window.
    mHandle = nullptr;
}

void GwMenu::rehandle(void* handle) {
    MenuRegistry& menus = registry();
    menus.unindex(this, mHandle);
    mHandle = handle;
    if (menus.table.contains(this)) // a copy is not registered
        menus.index(this, mHandle);
}

GwMenu* GwMenu::lookup(void* handle) {
    return registry().first(handle);
}

GwObjectTable<GwMenu> const& GwMenu::allMenus() {
    return registry().table;
}

GwMenu* GwMenu::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwMenu(handle) : nullptr;
}

GwMenu& GwMenu::setId(unsigned long long id) {
    mId = id;
    return *this;
}

unsigned long long GwMenu::id() const {
    return mId;
}

GwMenu& GwMenu::setHelpId(unsigned long long id) {
    SetMenuContextHelpId(hmenuOf(mHandle), static_cast<DWORD>(id));
    return *this;
}

unsigned long long GwMenu::helpId() const {
    return GetMenuContextHelpId(hmenuOf(mHandle));
}

GwMenu& GwMenu::setParent(GwWindow const* window) {
    GwWindow* frame = nullptr;
    if (auto const* menu = dynamic_cast<GwMenu const*>(window)) {
        // A menu has no window to climb from: its frame is the one that owns it.
        frame = menu->mParentFrame;
    } else if (window != nullptr) {
        Class const* frameClass = Class::lookup("GwFrame");
        GwWindow* root = frameClass != nullptr ? window->root(false) : nullptr;
        if (root != nullptr && root->isA() != nullptr && root->isA()->isSubclassOf(frameClass))
            frame = root;
    }
    mParentFrame = frame;
    return *this;
}

GwWindow* GwMenu::parent() const {
    return mParentFrame;
}

GwMenu& GwMenu::setText(String const&) {
    return *this;
}

String const& GwMenu::text() const {
    mText = String();
    return mText;
}

GwMenu& GwMenu::setVisible(bool visible) {
    if (!visible)
        return *this;
    HWND const owner =
        mParentFrame != nullptr ? static_cast<HWND>(mParentFrame->window()) : nullptr;
    if (!mPopup)
        setPopup(true, true);
    POINT point{static_cast<LONG>(mPosition.x()), 0};
    if (mParentFrame != nullptr) {
        point.y = mParentFrame->translateY(static_cast<int>(mPosition.y()), false);
        ClientToScreen(owner, &point);
    } else {
        point.y = GetSystemMetrics(SM_CYSCREEN) - static_cast<LONG>(mPosition.y());
    }
    // Runs the menu modally; the chosen command reaches the owner later as WM_COMMAND.
    TrackPopupMenu(hmenuOf(mHandle), TPM_RIGHTBUTTON, point.x, point.y, 0, owner, nullptr);
    return *this;
}

GwMenu& GwMenu::setEnabled(bool) {
    return *this;
}

bool GwMenu::enabled() const {
    return true;
}

GwMenu& GwMenu::setPosition(GwPosition const& position) {
    mPosition = position;
    return *this;
}

GwPosition GwMenu::position() const {
    return mPosition;
}

GwMenu& GwMenu::setDimension(GwDimension const&) {
    return *this;
}

GwDimension GwMenu::dimension() const {
    return GwDimension(0, 0);
}

GwMenu& GwMenu::add(GwItem const& item) {
    auto const& menuItem = dynamic_cast<GwMenuItem const&>(item);
    GwMenuItem* copy = copyOf(menuItem);
    HMENU const menu = hmenuOf(mHandle);

    // An entry with the same identifier is replaced where it stands (the last one found).
    // The walk goes on at the next position after a removal, so the entry that moved up
    // into the freed position is not looked at.
    UINT position = kAppend;
    if (copy->id() != kNoId) {
        for (UINT at = 0;; ++at) {
            MENUITEMINFOA info = infoWith(MIIM_DATA);
            if (!GetMenuItemInfoA(menu, at, TRUE, &info))
                break;
            GwMenuItem const* stored = storedItem(info);
            if (stored != nullptr && stored->operator==(*copy)) {
                removeAt(static_cast<int>(at));
                position = at;
            }
        }
    }

    if (!insertEntry(menu, position, copy))
        return *this;
    // An appended entry has no position to name here: it keeps the state it was given.
    if ((copy->style() & MFT_RADIOCHECK) != 0)
        setCheckedAt(static_cast<int>(position), true);
    return *this;
}

GwMenu& GwMenu::addAt(int position, GwMenuItem const& item) {
    GwMenuItem* copy = copyOf(item);
    HMENU const menu = hmenuOf(mHandle);

    if (copy->id() != kNoId) {
        for (UINT at = 0;;) {
            MENUITEMINFOA info = infoWith(MIIM_DATA);
            if (!GetMenuItemInfoA(menu, at, TRUE, &info))
                break;
            GwMenuItem const* stored = storedItem(info);
            if (stored != nullptr && stored->operator==(*copy))
                removeAt(static_cast<int>(at)); // the next entry moved up into at
            else
                ++at;
        }
    }

    if (!insertEntry(menu, static_cast<UINT>(position), copy))
        return *this;
    if ((copy->style() & MFT_RADIOCHECK) != 0)
        setCheckedAt(position, true);
    return *this;
}

GwMenu& GwMenu::add(GwEventHandler*) {
    return *this;
}

GwMenu& GwMenu::remove(GwEventHandler*) {
    return *this;
}

GwMenu& GwMenu::remove(unsigned long long id) {
    HMENU const menu = hmenuOf(mHandle);
    UINT const command = static_cast<UINT>(id);
    MENUITEMINFOA info = infoWith(MIIM_SUBMENU | MIIM_DATA);
    if (!GetMenuItemInfoA(menu, command, FALSE, &info))
        return *this;
    RemoveMenu(menu, command, MF_BYCOMMAND);
    if (info.hSubMenu != nullptr)
        delete lookup(info.hSubMenu);
    delete storedItem(info);
    return *this;
}

GwMenu& GwMenu::removeAt(int position) {
    HMENU const menu = hmenuOf(mHandle);
    UINT const at = static_cast<UINT>(position);
    MENUITEMINFOA info = infoWith(MIIM_SUBMENU | MIIM_DATA);
    if (!GetMenuItemInfoA(menu, at, TRUE, &info))
        return *this;
    RemoveMenu(menu, at, MF_BYPOSITION);
    if (info.hSubMenu != nullptr)
        delete lookup(info.hSubMenu);
    delete storedItem(info);
    return *this;
}

// Only the item data is read here, so the sub-menus of the removed entries keep their
// objects; and as in add, the entry that moves into a freed position is skipped.
GwMenu& GwMenu::remove(GwItem const& item) {
    HMENU const menu = hmenuOf(mHandle);
    for (UINT at = 0;; ++at) {
        MENUITEMINFOA info = infoWith(MIIM_DATA);
        if (!GetMenuItemInfoA(menu, at, TRUE, &info))
            break;
        GwMenuItem* stored = storedItem(info);
        if (stored != nullptr && stored->operator==(item)) {
            RemoveMenu(menu, at, MF_BYPOSITION);
            delete stored;
        }
    }
    return *this;
}

GwMenu& GwMenu::remove() {
    HMENU const menu = hmenuOf(mHandle);
    for (;;) {
        MENUITEMINFOA info = infoWith(MIIM_SUBMENU | MIIM_DATA);
        if (!GetMenuItemInfoA(menu, 0, TRUE, &info))
            break;
        delete storedItem(info);
        if (info.hSubMenu != nullptr)
            delete lookup(info.hSubMenu);
        if (!RemoveMenu(menu, 0, MF_BYPOSITION))
            break;
    }
    return *this;
}

namespace {

// The stored item of an entry read with state and type, refreshed from the menu.
GwMenuItem const* refreshed(HMENU menu, UINT item, BOOL byPosition) {
    char text[kTextLength] = {};
    MENUITEMINFOA info = infoWith(MIIM_STATE | MIIM_TYPE | MIIM_DATA);
    info.dwTypeData = text;
    info.cch = kTextLength;
    if (!GetMenuItemInfoA(menu, item, byPosition, &info))
        return nullptr;
    GwMenuItem* stored = storedItem(info);
    if (stored != nullptr)
        stored->setState(static_cast<int>(info.fState)).setStyle(static_cast<int>(info.fType));
    return stored;
}

} // namespace

GwMenuItem const& GwMenu::item(unsigned long long id) const {
    static GwMenuItem const none;
    GwMenuItem const* stored = refreshed(hmenuOf(mHandle), static_cast<UINT>(id), FALSE);
    return stored != nullptr ? *stored : none;
}

GwMenuItem const& GwMenu::itemAt(int position) const {
    static GwMenuItem const none;
    GwMenuItem const* stored = refreshed(hmenuOf(mHandle), static_cast<UINT>(position), TRUE);
    return stored != nullptr ? *stored : none;
}

int GwMenu::size() const {
    return GetMenuItemCount(hmenuOf(mHandle));
}

GwMenu& GwMenu::setEnabled(unsigned long long id, bool enabled) {
    EnableMenuItem(hmenuOf(mHandle), static_cast<UINT>(id),
                   MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
    return *this;
}

GwMenu& GwMenu::setEnabledAt(int position, bool enabled) {
    EnableMenuItem(hmenuOf(mHandle), static_cast<UINT>(position),
                   MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED));
    return *this;
}

// GetMenuState answers all ones for an entry that does not exist: it counts as disabled
// and checked.
bool GwMenu::enabled(unsigned long long id) const {
    return (GetMenuState(hmenuOf(mHandle), static_cast<UINT>(id), MF_BYCOMMAND) & MF_GRAYED) == 0;
}

bool GwMenu::enabledAt(int position) const {
    return (GetMenuState(hmenuOf(mHandle), static_cast<UINT>(position), MF_BYPOSITION) &
            MF_GRAYED) == 0;
}

bool GwMenu::checked(unsigned long long id) const {
    return (GetMenuState(hmenuOf(mHandle), static_cast<UINT>(id), MF_BYCOMMAND) & MF_CHECKED) != 0;
}

bool GwMenu::checkedAt(int position) const {
    return (GetMenuState(hmenuOf(mHandle), static_cast<UINT>(position), MF_BYPOSITION) &
            MF_CHECKED) != 0;
}

GwMenu& GwMenu::setChecked(unsigned long long id, bool check) {
    HMENU const menu = hmenuOf(mHandle);
    UINT const command = static_cast<UINT>(id);
    MENUITEMINFOA info = infoWith(MIIM_STATE | MIIM_ID | MIIM_TYPE);
    if (!GetMenuItemInfoA(menu, command, FALSE, &info))
        return *this;
    if (!isRadio(info)) {
        writeState(menu, command, FALSE, withChecked(info.fState, check));
        return *this;
    }

    // A radio group is a run of consecutive radio-check entries: find the run that holds
    // the entry.
    int const count = GetMenuItemCount(menu);
    int start = 0;
    bool inRun = false;
    bool found = false;
    for (int at = 0; at < count; ++at) {
        MENUITEMINFOA entry = infoWith(MIIM_ID | MIIM_TYPE);
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(at), TRUE, &entry))
            break;
        if (isRadio(entry) && !inRun)
            start = at;
        inRun = isRadio(entry);
        if (entry.wID == command) {
            found = inRun;
            break;
        }
    }
    if (!found) {
        // The entry is not one of this menu's own (it is in a sub-menu): it is checked alone.
        writeState(menu, command, FALSE, withChecked(info.fState, true));
        return *this;
    }

    // The named entry ends up checked whatever check says; the rest of the group does not.
    for (int at = start; at < count; ++at) {
        MENUITEMINFOA entry = infoWith(MIIM_STATE | MIIM_ID | MIIM_TYPE);
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(at), TRUE, &entry) || !isRadio(entry))
            break;
        writeState(menu, static_cast<UINT>(at), TRUE,
                   withChecked(entry.fState, entry.wID == command));
    }
    return *this;
}

GwMenu& GwMenu::setCheckedAt(int position, bool check) {
    HMENU const menu = hmenuOf(mHandle);
    MENUITEMINFOA info = infoWith(MIIM_STATE | MIIM_TYPE);
    if (!GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info))
        return *this;
    if (!isRadio(info)) {
        writeState(menu, static_cast<UINT>(position), TRUE, withChecked(info.fState, check));
        return *this;
    }

    int start = position;
    while (start > 0) {
        MENUITEMINFOA entry = infoWith(MIIM_TYPE);
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(start - 1), TRUE, &entry) || !isRadio(entry))
            break;
        --start;
    }
    int const count = GetMenuItemCount(menu);
    for (int at = start; at < count; ++at) {
        MENUITEMINFOA entry = infoWith(MIIM_STATE | MIIM_TYPE);
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(at), TRUE, &entry) || !isRadio(entry))
            break;
        writeState(menu, static_cast<UINT>(at), TRUE, withChecked(entry.fState, at == position));
    }
    return *this;
}

GwMenu& GwMenu::setDefaultItem(unsigned long long id) {
    SetMenuDefaultItem(hmenuOf(mHandle), static_cast<UINT>(id), FALSE);
    return *this;
}

GwMenu& GwMenu::setDefaultItemAt(int position) {
    SetMenuDefaultItem(hmenuOf(mHandle), static_cast<UINT>(position), TRUE);
    return *this;
}

unsigned long long GwMenu::defaultItem() const {
    return GetMenuDefaultItem(hmenuOf(mHandle), FALSE, GMDI_USEDISABLED);
}

int GwMenu::defaultItemAt() const {
    return static_cast<int>(GetMenuDefaultItem(hmenuOf(mHandle), TRUE, GMDI_USEDISABLED));
}

GwMenu& GwMenu::setSelected(unsigned long long id) {
    mSelected = id;
    return *this;
}

GwMenu& GwMenu::setDynamic(bool dynamic) {
    mDynamic = dynamic;
    return *this;
}

GwMenu& GwMenu::setPopup(bool popup, bool convert) {
    if (popup == mPopup || !convert)
        return *this;
    HMENU const fresh = popup ? CreatePopupMenu() : CreateMenu();
    if (fresh == nullptr)
        return *this;
    mPopup = popup;

    HMENU const old = hmenuOf(mHandle);
    if (mDynamic) {
        // Refilled when it opens: what it holds now is let go, with its items and sub-menus.
        remove();
    } else {
        // Entries move with their stored items and sub-menus.
        for (;;) {
            char text[kTextLength] = {};
            MENUITEMINFOA info = infoWith(kMaskEntry);
            info.dwTypeData = text;
            info.cch = kTextLength;
            if (!GetMenuItemInfoA(old, 0, TRUE, &info))
                break;
            InsertMenuItemA(fresh, kAppend, TRUE, &info);
            if (!RemoveMenu(old, 0, MF_BYPOSITION))
                break;
        }
    }
    DestroyMenu(old);
    rehandle(fresh);
    return *this;
}
