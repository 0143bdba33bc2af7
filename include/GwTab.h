// Tab controls ("SysTabControl32") and their tab items.
#pragma once

#include <String.h>

#include "GwControl.h"
#include "GwItem.h"

// A tab: its caption and the page window that it shows. The page is named by control
// identifier (windowId): a child or a sibling of the tab control, or else the dialog
// resource of that identifier, loaded when the tab is added. The caption is the item's text
// or, when that is empty, the string resource textId. Both resources come from the module
// named by resource (a library's file name), or from the main executable when it is empty.
// Items compare by identifier only, as GwItem does.
class VMGUI_API GwTabItem : public GwItem {
    GW_DECLARE_CLASS(GwTabItem)

public:
    // A fresh identifier; textId and windowId 0.
    GwTabItem();
    // textId and windowId default to id. The String argument is the resource module's name,
    // not the caption: the caption starts empty.
    explicit GwTabItem(unsigned long long id);
    GwTabItem(unsigned long long id, unsigned long long textId);
    GwTabItem(unsigned long long id, unsigned long long textId, unsigned long long windowId);
    GwTabItem(unsigned long long id, String const& resource);
    GwTabItem(unsigned long long id, unsigned long long textId, String const& resource);
    GwTabItem(unsigned long long id, unsigned long long textId, unsigned long long windowId,
              String const& resource);
    // Copies identifiers, caption and resource name.
    GwTabItem(GwTabItem const&) = default;
    GwTabItem& operator=(GwTabItem const&) = default;
    ~GwTabItem() override;

    GwTabItem& setText(String const& text) override;
    String const& text() const override;
    // The name of the module the caption string and the page template are loaded from (the
    // executable when empty).
    GwTabItem& setResource(String const& resource);
    String const& resource() const { return mResource; }
    // The string resource of the caption.
    GwTabItem& setTextId(unsigned long long textId);
    unsigned long long textId() const { return mTextId; }
    // The page: the control identifier of a window beside or under the tab control, or else
    // of a dialog template.
    GwTabItem& setWindowId(unsigned long long windowId);
    unsigned long long windowId() const { return mWindowId; }

    // A copy of the GwTabItem that a GwEventData carries; otherwise a default item.
    static GwTabItem* newInstance(EventData const* data);

private:
    String mResource;
    String mText;
    unsigned long long mTextId;
    unsigned long long mWindowId;
};

// A tab control whose tabs show page windows.
//
// Each tab holds the control's own copy of its GwTabItem as its parameter (TCITEM lParam);
// the control owns the copies. When the current tab changes (TCN_SELCHANGE), the tab control
// sends the select event, shows the current tab's page over its display area and hides the
// other pages; a sibling page is placed right above the tab control in the sibling order,
// the hidden sibling pages after it. Pages
// are found by the tab item's identifier. Removing tabs never destroys or hides pages.
class VMGUI_API GwTab : public GwControl {
    GW_DECLARE_CLASS(GwTab)

public:
    // A visible "SysTabControl32" child of parent with the control identifier id.
    GwTab(GwWindow& parent, unsigned long long id);
    // Clones the platform control (which starts without tabs).
    GwTab(GwTab const& source);
    // Memberwise: afterwards both objects name the same window.
    GwTab& operator=(GwTab const& other);
    ~GwTab() override;

    using GwControl::add;
    using GwControl::remove;
    // A tab equal to the item is replaced by a new tab at its position; as addAt places it,
    // a replaced first tab moves to the end. When the item's page no longer exists (its
    // window was destroyed) and cannot be loaded, the old tab is gone and none is added.
    GwTab& add(GwItem const& item) override;
    // Adds a tab for a GwTabItem (anything else is ignored) and makes it current, when its
    // page exists or can be loaded; else adds nothing. A position of 0 or less, or past the
    // last tab, appends. The pages are laid out also when the new tab is current at once
    // (the first tab of an empty control), which the platform does not notify.
    GwTab& addAt(int position, GwItem const& item);
    // Removes the tabs equal to the item, or whose item has the identifier.
    GwTab& remove(GwItem const& item) override;
    GwTab& remove(unsigned long long id);
    // Nothing for a position past the last tab.
    GwTab& removeAt(int position);
    // Every tab and every copy.
    GwTab& remove();

    // The copy of the first tab with the identifier / at the position, or a shared empty
    // item (one for each of the two).
    GwItem const& item(unsigned long long id) const;
    GwItem const& itemAt(int position) const;
    // The number of tabs.
    int size() const;

    // Selection goes through TCM_SETCURFOCUS, so that the pages are laid out.
    GwTab& setSelected(unsigned long long id);
    GwTab& setSelected(GwItem const& item);
    GwTab& setSelectedAt(int position);
    bool selected(unsigned long long id) const;
    bool selected(GwItem const& item) const;
    bool selectedAt(int position) const;
    // The current tab (TCM_GETCURSEL), -1 for none.
    int selectedAt() const;
    // 0 while the first tab is current, whatever its item's identifier; else the
    // identifier of the current tab's item (all bits set when no tab is current).
    unsigned long long selected() const;

    // A tab control attached to the window that GwEventData carries; null without one.
    static GwTab* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a tab control with no window.
    explicit GwTab(void* hwnd = nullptr);

    // For a subclassed tab control: the base's clean-up, then remove().
    bool exitInstance() override;
    // Lays out the pages on the reflected TCN_SELCHANGE.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    long long tabMessage(unsigned int msg, unsigned long long wParam, long long lParam) const;
    bool subclassed() const { return mHandle != nullptr && mPrevProc != nullptr; }
    // The stored copy of a tab (null for none and out of range).
    GwTabItem* tabItem(int position) const;
    int find(unsigned long long id) const;
    int find(GwItem const& item) const;
    void layout();

    // The copies that this tab control made (shared by objects naming the same window).
    struct Copies;
    Copies* mCopies;
};
