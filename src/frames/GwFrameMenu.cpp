// The frame's menus: menu bar, menu cache, standard menus, menu messages, status texts.
#include "GwFrame.h"

#include <windows.h>

#include <commctrl.h>

#include "GwApplication.h"
#include "GwMenu.h"
#include "GwMessages.h"
#include "GwResource.h"
#include "GwThisDll.h"

namespace {

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

// The identifier of an entry that has none: such an entry never replaces another.
constexpr unsigned long long kNoId = ~0ull;

// wParam of message 0x100B for the frame's menu events.
constexpr unsigned long long kMenuOpened = 0x10000;
constexpr unsigned long long kMenuClosed = 0x10001;
constexpr unsigned long long kMenuCommand = 0x10002;

// The library's standard menus: the bit of the menu style and the menu's identifier.
struct StandardMenu {
    int bit;
    unsigned long long id;
};
constexpr StandardMenu kStandardMenus[] = {
    {GwFrame::eFileMenu, 100},
    {GwFrame::eHelpMenu, 101},
    {GwFrame::eWindowMenu, 102},
};

// The help menu's "%s-&Info" entry, which names the application.
constexpr unsigned long long kInfoCommand = 0xF886;

// The first "%s" of text replaced by name.
String withName(String const& text, String const& name) {
    std::size_t const at = text.find(String("%s"));
    if (at == String::npos)
        return text;
    return text.substr(0, at) + name + text.substr(at + 2);
}

String applicationName() {
    return GwApplication::mTheApplication != nullptr ? GwApplication::mTheApplication->name()
                                                     : String();
}

// A popup copy of the first entry's sub-menu of the library's menu id, with the menu's
// identifier; null when the library's resources lack it.
GwMenu* standardMenu(unsigned long long id, String& title) {
    if (GwThisDll::mCurrent == nullptr)
        return nullptr;
    GwResource const library = GwThisDll::current().resource();
    GwMenu* const loaded = library.loadMenu(id);
    if (loaded == nullptr)
        return nullptr;
    GwMenuItem const& first = loaded->itemAt(0);
    GwMenu* popup = nullptr;
    if (first.menu() != nullptr) {
        title = first.text();
        popup = new GwMenu(id, true);
        *popup = *first.menu();
        if (popup->item(kInfoCommand).id() == kInfoCommand) {
            GwMenuItem info(popup->item(kInfoCommand));
            info.setText(withName(info.text(), applicationName()));
            popup->add(info);
        }
    }
    delete loaded;
    return popup;
}

} // namespace

GwMenu* GwFrame::menu(unsigned long long id) {
    if (mMenuCache == nullptr)
        mMenuCache = new GwObjectTable<GwMenu>(20);
    for (GwObjectTableIterator<GwMenu> next(mMenuCache); GwMenu* cached = next();) {
        if (cached->id() == id)
            return cached;
    }
    GwMenu* const loaded = mResource->loadMenu(id);
    if (loaded == nullptr)
        return nullptr;
    mMenuCache->add(loaded);
    loaded->setParent(this);
    loaded->addEvent(this);
    return loaded;
}

GwFrame& GwFrame::setMenuBar(unsigned long long menuId) {
    HWND const hwnd = hwndOf(mHandle);
    if (mMenuBar != nullptr) {
        SetMenu(hwnd, nullptr);
        DrawMenuBar(hwnd);
        // The bar came from the menu cache: it leaves the cache as it goes.
        if (mMenuCache != nullptr && mMenuCache->remove(mMenuBar) >= 0)
            mMenuCache->compact();
        delete mMenuBar;
        mMenuBar = nullptr;
        // The open menus and the current one went with the bar.
        if (mPopupStack != nullptr)
            mPopupStack->clear();
        mCurrentMenu = nullptr;
    }
    if (menuId == 0)
        return *this;
    GwMenu* const bar = menu(menuId);
    if (bar == nullptr)
        return *this;
    if (bar->popup())
        bar->setPopup(false, true);
    SetMenu(hwnd, static_cast<HMENU>(bar->window()));
    mMenuBar = bar;
    DrawMenuBar(hwnd);
    return *this;
}

// Standard menus whose bit changes are merged in or taken out, in bit order: the file menu
// at the front, the help menu at the end and the window menu before the help menu when the
// new style has one.
GwFrame& GwFrame::setMenuStyle(int style) {
    if (mMenuBar == nullptr) {
        mMenuStyle = style;
        return *this;
    }
    bool const helpMenu = (style & eHelpMenu) != 0;
    for (StandardMenu const& standard : kStandardMenus) {
        bool const wanted = (style & standard.bit) != 0;
        if (wanted == ((mMenuStyle & standard.bit) != 0))
            continue;
        int const size = mMenuBar->size();
        if (wanted) {
            String title;
            GwMenu* const popup = standardMenu(standard.id, title);
            if (popup == nullptr)
                continue;
            popup->setParent(this);
            int position = size;
            if (standard.bit == eFileMenu)
                position = 0;
            else if (standard.bit == eWindowMenu && helpMenu && size > 0)
                position = size - 1;
            mMenuBar->addAt(position, GwMenuItem(kNoId, title, popup));
        } else if (size > 0) {
            int position = size - 1;
            if (standard.bit == eFileMenu)
                position = 0;
            else if (standard.bit == eWindowMenu && helpMenu && size > 1)
                position = size - 2;
            mMenuBar->removeAt(position);
        }
    }
    SetMenu(hwndOf(mHandle), static_cast<HMENU>(mMenuBar->window()));
    DrawMenuBar(hwndOf(mHandle));
    mMenuStyle = style;
    return *this;
}

GwFrame& GwFrame::removeStack(GwMenu* menu, bool below) {
    if (mPopupStack == nullptr)
        return *this;
    while (mPopupStack->count() > 0) {
        std::int32_t const top = mPopupStack->count() - 1;
        GwMenu* const current = mPopupStack->at(top);
        if (menu != nullptr) {
            if (current == menu)
                break;
            if (below && top > 0 && mPopupStack->at(top - 1) == menu)
                break;
        }
        mPopupStack->remove(current);
        if (current == nullptr)
            continue;
        dispatchEvent(GwMsgFrameEvent, kMenuClosed, reinterpret_cast<long long>(current));
        if (current->dynamic())
            current->remove();
    }
    return *this;
}

long long GwFrame::msgHandlerMenu(unsigned long long msg, unsigned long long wParam,
                                  long long lParam) {
    if (mPopupStack == nullptr)
        mPopupStack = new GwObjectTable<GwMenu>(5);
    // A menu deleted since it was selected is no longer the current one.
    if (mCurrentMenu != nullptr && !GwMenu::allMenus().contains(mCurrentMenu))
        mCurrentMenu = nullptr;

    switch (msg) {
    case WM_COMMAND: {
        removeStack(nullptr, false);
        if (mCurrentMenu == nullptr)
            return callDefHandler(msg, wParam, lParam);
        unsigned long long const command = wParam & 0xFFFF;
        mCurrentMenu->setSelected(command);
        if (dispatchEvent(GwMsgFrameEvent, kMenuCommand,
                          reinterpret_cast<long long>(mCurrentMenu)) != 0)
            return 0;
        if (!msgHandlerCommand(command))
            callDefHandler(msg, wParam, lParam);
        return 0;
    }
    case WM_INITMENUPOPUP: {
        GwMenu* const opened = GwMenu::lookup(reinterpret_cast<void*>(wParam));
        if (opened == nullptr)
            return 0;
        dispatchEvent(GwMsgFrameEvent, kMenuOpened, reinterpret_cast<long long>(opened));
        mPopupStack->add(opened);
        if (opened->dynamic()) {
            GwMenu* const source = menu(opened->id());
            if (source != nullptr && source != opened)
                *opened = *source;
        }
        return 0;
    }
    case WM_MENUSELECT: {
        unsigned int const flags = HIWORD(wParam);
        unsigned int const entry = LOWORD(wParam);
        auto const handle = reinterpret_cast<HMENU>(lParam);
        if (flags == 0xFFFF || handle == nullptr)
            return 0;
        GwMenu* const selected = GwMenu::lookup(handle);
        bool const onBar = mMenuBar != nullptr && handle == static_cast<HMENU>(mMenuBar->window());
        if ((onBar && (flags & MF_POPUP) == 0) || selected == nullptr) {
            mCurrentMenu = nullptr;
        } else {
            GwMenu* current = selected;
            if (selected->dynamic()) {
                if (GwMenu* const cached = menu(selected->id()))
                    current = cached;
            }
            mCurrentMenu = current;
            // With MF_POPUP the low word is the position of the entry that opens a sub-menu.
            GwMenu* const subMenu =
                (flags & MF_POPUP) != 0
                    ? GwMenu::lookup(GetSubMenu(handle, static_cast<int>(entry)))
                    : nullptr;
            bool const popupFlag = (flags & MF_POPUP) != 0;
            std::int32_t const count = mPopupStack->count();
            if (subMenu != nullptr) {
                if (count == 0 || mPopupStack->at(count - 1) != subMenu)
                    removeStack(selected, popupFlag);
            } else if (count > 0) {
                removeStack(selected, popupFlag);
            }
        }
        if (entry != 0 && (flags & (MF_SYSMENU | MF_POPUP)) == 0)
            msgHandlerStatusText(entry);
        return 0;
    }
    case WM_MENUCHAR:
        return 0;
    case WM_ENTERMENULOOP:
        SendMessageA(hwndOf(mHandle), gGwWM_Message, GwCodeStatusSimple, 1);
        return 0;
    case WM_EXITMENULOOP:
        removeStack(nullptr, false);
        SendMessageA(hwndOf(mHandle), gGwWM_Message, GwCodeStatusSimple, 0);
        return 0;
    default:
        return callDefHandler(msg, wParam, lParam);
    }
}

bool GwFrame::msgHandlerCommand(unsigned long long id) {
    // The help commands name the help file, or the application when there is none.
    auto path = [this]() {
        String file = helpPath();
        return file.empty() ? applicationName() : file;
    };
    switch (id) {
    case 0xF826: // "&Beenden"
        if (GwApplication::mTheApplication != nullptr)
            GwApplication::current().exit();
        return true;
    case 0xF880: // "&Themen"
        WinHelpA(hwndOf(mHandle), path().c_str(), HELP_FINDER, 0);
        return true;
    case 0xF884: // "&Erste Schritte"
        WinHelpA(hwndOf(mHandle), path().c_str(), HELP_CONTEXT, 63620);
        return true;
    case 0xF881: // "&Service..."
    case 0xF882:
    case 0xF883:
    case 0xF885:
    case 0xF886: // "%s-&Info"
        return true;
    default:
        return false;
    }
}

void GwFrame::msgHandlerStatusText(unsigned long long id) {
    HWND const status = hwndOf(mStatusWindow);
    if (status == nullptr)
        return;
    String text = mResource->loadString(id);
    if (text.empty() && GwThisDll::mCurrent != nullptr)
        text = GwThisDll::current().resource().loadString(id);
    // What follows a line feed is the entry's tool tip.
    std::size_t const lineFeed = text.find('\n');
    if (lineFeed != String::npos)
        text = text.substr(0, lineFeed);
    SendMessageA(status, SB_SETTEXTA, 0x1FF, reinterpret_cast<LPARAM>(text.c_str()));
}
