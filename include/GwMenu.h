// Menu bars, popup menus and their entries.
#pragma once

#include <String.h>

#include "GwGeometry.h"
#include "GwItem.h"
#include "GwObjectTable.h"
#include "GwWindow.h"

class GwMenu;

// One entry of a menu: a command identifier (all ones for an entry without one), a label,
// the Win32 type bits (style) and state bits, and for an entry that opens a sub-menu, that
// menu (not owned by the item).
//
// Items compare by identifier only, as GwItem does, whatever their texts.
class VMGUI_API GwMenuItem : public GwTextItem {
    GW_DECLARE_CLASS(GwMenuItem)

public:
    // Win32 type bits the library names.
    enum eStyle : int {
        eString = 0x000,     // MFT_STRING
        ePopup = 0x010,      // MF_POPUP
        eRadioCheck = 0x200, // MFT_RADIOCHECK
        eSeparator = 0x800,  // MFT_SEPARATOR
    };
    // Win32 state bits the library names.
    enum eState : int {
        eGrayed = 0x003,  // MFS_GRAYED
        eChecked = 0x008, // MFS_CHECKED
        eDefault = 0x1000 // MFS_DEFAULT
    };

    // A separator without identifier.
    GwMenuItem();
    explicit GwMenuItem(unsigned long long id);
    GwMenuItem(unsigned long long id, String const& text);
    GwMenuItem(unsigned long long id, int style);
    GwMenuItem(unsigned long long id, int style, int state);
    // An entry that opens menu (style MF_POPUP).
    GwMenuItem(unsigned long long id, GwMenu* menu);
    GwMenuItem(unsigned long long id, String const& text, GwMenu* menu);
    // Copies identifier, text, style, state and the sub-menu pointer.
    GwMenuItem(GwMenuItem const& other);
    GwMenuItem& operator=(GwMenuItem const& other);
    ~GwMenuItem() override;

    // Equal identifiers (the texts do not count); the other must be a GwItem.
    bool operator==(Object const& other) const override;
    // Three-way by identifier, as GwItem.
    int operator!=(Object const& other) const override;
    GW_DECLARE_COMPARISON(GwMenuItem)

    GwMenuItem& setText(String const& text) override;
    String const& text() const override;

    // The Win32 type bits (eStyle), the state bits (eState) and the sub-menu (null for
    // none).
    int style() const { return mStyle; }
    GwMenuItem& setStyle(int style);
    int state() const { return mState; }
    GwMenuItem& setState(int state);
    GwMenu* menu() const { return mMenu; }
    GwMenuItem& setMenu(GwMenu* menu);

    // The sub-menu's identifier, 0 without a sub-menu.
    unsigned long long menuId() const;
    // A non-zero id renames the sub-menu; 0 (or an item without sub-menu) detaches it.
    GwMenuItem& setMenuId(unsigned long long id);

    // A copy of the GwMenuItem that a GwEventData carries; otherwise a separator.
    static GwMenuItem* newInstance(EventData const* data);

private:
    int mStyle;
    int mState;
    GwMenu* mMenu;
};

// A Win32 menu (a menu bar or a popup menu) with its entries.
//
// A menu is a window in the class tree but owns no window: the handle field of the window
// base holds the HMENU (window() answers it), the menu is never bound to a window procedure,
// and the window operations that make no sense for a menu do nothing here. Every entry carries a
// heap copy of the GwMenuItem it was made from in its item data (dwItemData); the menu owns those
// copies and the GwMenu objects of its sub-menus, which it finds again through allMenus() by their
// handles. Deleting a menu bar therefore deletes the whole tree below it.
//
// Every menu but a copy is registered in allMenus() for its lifetime; lookup() answers the
// menu of a handle.
class VMGUI_API GwMenu : public GwWindow {
    GW_DECLARE_CLASS(GwMenu)

public:
    // A new, empty menu: CreatePopupMenu with popup, CreateMenu (a menu bar) without.
    explicit GwMenu(unsigned long long id = 0, bool popup = false);
    // Wraps an existing menu handle (identifier 0, not a popup, not dynamic).
    explicit GwMenu(void* handle);
    // A copy shares the Win32 menu and is not registered: deleting it empties and destroys
    // the shared menu.
    GwMenu(GwMenu const& other);
    // Replaces the entries by copies of other's: stored items are copied through their class
    // factories, sub-menus become new empty menus with the same identifier and dynamic flag
    // (one level only). The menu's own attributes stay; menus sharing a handle are left as
    // they are.
    GwMenu& operator=(GwMenu const& other);
    ~GwMenu() override;

    // The plain-number forms of GwWindow (which do nothing for a menu, as above).
    using GwWindow::dimension;
    using GwWindow::position;
    using GwWindow::setDimension;
    using GwWindow::setPosition;

    // The menu's own identifier (not a window identifier).
    GwMenu& setId(unsigned long long id) override;
    unsigned long long id() const override;
    // The menu's context help identifier.
    GwMenu& setHelpId(unsigned long long id) override;
    unsigned long long helpId() const override;
    // The frame that owns window (its root(false) when that is a GwFrame), else none.
    GwMenu& setParent(GwWindow const* window) override;
    GwWindow* parent() const override;
    // A menu has no text: setText does nothing and text() is always empty.
    GwMenu& setText(String const& text) override;
    String const& text() const override;
    // true opens the menu as a popup at position() for the parent frame (a menu bar is
    // turned into a popup first); false does nothing.
    GwMenu& setVisible(bool visible) override;
    // Always enabled: setEnabled(bool) does nothing.
    GwMenu& setEnabled(bool enabled) override;
    bool enabled() const override;
    // Where setVisible(true) opens the menu, bottom-up in the parent frame's client area
    // (on the screen without a parent frame).
    GwMenu& setPosition(GwPosition const& position) override;
    GwPosition position() const override;
    // A menu has no size: setDimension does nothing, dimension() is 0 by 0.
    GwMenu& setDimension(GwDimension const& dimension) override;
    GwDimension dimension() const override;

    // Adds an entry for item, which must be a GwMenuItem (std::bad_cast otherwise). An entry
    // with the same identifier is replaced in place; an item without identifier is appended.
    // When the platform refuses the entry, the menu's copy of the item is deleted rather than
    // left unowned: nothing else could ever free it, and the menu answers the same.
    GwMenu& add(GwItem const& item) override;
    // A menu takes no event handlers.
    GwMenu& add(GwEventHandler* handler) override;
    // Removes the entries equal to item (same identifier); their sub-menu objects stay.
    GwMenu& remove(GwItem const& item) override;
    // A menu takes no event handlers: nothing to remove.
    GwMenu& remove(GwEventHandler* handler) override;

    // Inserts at position after removing every entry with the same identifier.
    GwMenu& addAt(int position, GwMenuItem const& item);
    // Removes the entry with the command identifier, with its item and its sub-menu.
    GwMenu& remove(unsigned long long id);
    // Removes the entry at position, with its item and its sub-menu.
    GwMenu& removeAt(int position);
    // Removes every entry, with its item and its sub-menu.
    GwMenu& remove();

    // The stored item of an entry, its style and state refreshed from the menu; a shared
    // separator without identifier when there is no such entry.
    GwMenuItem const& item(unsigned long long id) const;
    GwMenuItem const& itemAt(int position) const;
    // The number of entries.
    int size() const;

    // Enables or grays the entry with this command identifier or at this position; whether
    // it is enabled (false when there is none).
    GwMenu& setEnabled(unsigned long long id, bool enabled);
    GwMenu& setEnabledAt(int position, bool enabled);
    // From GetMenuState: an entry that is not in the menu (an unknown identifier, a
    // position out of range) is not enabled but checked, since the platform answers all
    // ones for it.
    bool enabled(unsigned long long id) const;
    bool enabledAt(int position) const;
    // Checking a radio-check entry checks it and unchecks the rest of its group (a run of
    // consecutive radio-check entries), whatever check says.
    GwMenu& setChecked(unsigned long long id, bool check);
    GwMenu& setCheckedAt(int position, bool check);
    bool checked(unsigned long long id) const;
    bool checkedAt(int position) const;
    // Makes the entry with this command identifier or at this position the default entry
    // (shown bold).
    GwMenu& setDefaultItem(unsigned long long id);
    GwMenu& setDefaultItemAt(int position);
    // The default entry's command identifier (0xFFFFFFFF for none) and position (-1 for none).
    unsigned long long defaultItem() const;
    int defaultItemAt() const;

    // The command most recently chosen from this menu.
    GwMenu& setSelected(unsigned long long id);
    unsigned long long selected() const { return mSelected; }
    // A dynamic menu is refilled each time it opens; its entries do not survive setPopup.
    GwMenu& setDynamic(bool dynamic);
    bool dynamic() const { return mDynamic; }
    // Whether the menu is a popup menu (else a menu bar).
    bool popup() const { return mPopup; }
    // With convert, a menu of the other kind gets a new handle of the requested kind and
    // its entries move there (a dynamic menu starts empty); without, nothing changes.
    GwMenu& setPopup(bool popup, bool convert);

    // The first registered menu with this handle; null for none or a null handle.
    static GwMenu* lookup(void* handle);
    // Every registered menu, in registration order, without holes.
    static GwObjectTable<GwMenu> const& allMenus();

    // A menu wrapping the handle that a GwEventData carries; null without one.
    static GwMenu* newInstance(EventData const* data);

protected:
    bool mDynamic;                // refilled each time it opens
    bool mPopup;                  // a popup menu, else a menu bar
    GwPosition mPosition;         // where setVisible(true) opens it
    unsigned long long mId;       // the menu's own identifier
    unsigned long long mSelected; // the command most recently chosen
    // The frame that owns the menu. Typed as a window until the frame class exists: it
    // only ever holds an object whose class record is GwFrame or derived from it.
    GwWindow* mParentFrame;

private:
    // Changes the handle and keeps lookup() in step.
    void rehandle(void* handle);
};
