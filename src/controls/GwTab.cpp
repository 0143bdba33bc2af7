#include "GwTab.h"

#include <windows.h>

#include <commctrl.h>

#include <unordered_set>

#include "GwEventData.h"
#include "GwMessages.h"
#include "GwResource.h"
#include "controls/GwLines.h"

GW_CLASS_MAKES(GwTabItem, "GwTabItem", "GwItem")
GW_CLASS_MAKES(GwTab, "GwTab", "GwControl")

GwTabItem::GwTabItem() : mTextId(0), mWindowId(0) {}

GwTabItem::GwTabItem(unsigned long long id) : GwItem(id), mTextId(id), mWindowId(id) {}

GwTabItem::GwTabItem(unsigned long long id, unsigned long long textId)
    : GwItem(id), mTextId(textId), mWindowId(id) {}

GwTabItem::GwTabItem(unsigned long long id, unsigned long long textId, unsigned long long windowId)
    : GwItem(id), mTextId(textId), mWindowId(windowId) {}

GwTabItem::GwTabItem(unsigned long long id, String const& resource)
    : GwItem(id), mResource(resource), mTextId(id), mWindowId(id) {}

GwTabItem::GwTabItem(unsigned long long id, unsigned long long textId, String const& resource)
    : GwItem(id), mResource(resource), mTextId(textId), mWindowId(id) {}

GwTabItem::GwTabItem(unsigned long long id, unsigned long long textId, unsigned long long windowId,
                     String const& resource)
    : GwItem(id), mResource(resource), mTextId(textId), mWindowId(windowId) {}

GwTabItem::~GwTabItem() = default;

GwTabItem& GwTabItem::setText(String const& text) {
    mText = text;
    return *this;
}

String const& GwTabItem::text() const {
    return mText;
}

GwTabItem& GwTabItem::setResource(String const& resource) {
    mResource = resource;
    return *this;
}

GwTabItem& GwTabItem::setTextId(unsigned long long textId) {
    mTextId = textId;
    return *this;
}

GwTabItem& GwTabItem::setWindowId(unsigned long long windowId) {
    mWindowId = windowId;
    return *this;
}

GwTabItem* GwTabItem::newInstance(EventData const* data) {
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    auto const* item =
        eventData != nullptr ? dynamic_cast<GwTabItem const*>(eventData->item()) : nullptr;
    return item != nullptr ? new GwTabItem(*item) : new GwTabItem();
}

struct GwTab::Copies {
    std::unordered_set<GwTabItem*> items;
    int refs = 1;

    void release() {
        if (--refs > 0)
            return;
        for (GwTabItem* item : items)
            delete item;
        delete this;
    }
    void drop(GwTabItem* item) {
        if (items.erase(item) != 0)
            delete item;
    }
};

GwTab::GwTab(GwWindow& parent, unsigned long long id) : mCopies(new Copies) {
    attach(CreateWindowExA(
        0, WC_TABCONTROLA, "", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_GROUP | WS_TABSTOP, 0,
        0, 0, 0, static_cast<HWND>(parent.window()),
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleA(nullptr), nullptr));
}

GwTab::GwTab(void* hwnd) : GwControl(hwnd), mCopies(new Copies) {}

GwTab::GwTab(GwTab const& source) : GwControl(source), mCopies(new Copies) {}

GwTab& GwTab::operator=(GwTab const& other) {
    GwControl::operator=(other);
    if (mCopies != other.mCopies) {
        ++other.mCopies->refs;
        mCopies->release();
        mCopies = other.mCopies;
    }
    return *this;
}

GwTab::~GwTab() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    mCopies->release();
}

GwTab* GwTab::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwTab(hwnd) : nullptr;
}

long long GwTab::tabMessage(unsigned int msg, unsigned long long wParam, long long lParam) const {
    return const_cast<GwTab*>(this)->callDefHandler(msg, wParam, lParam);
}

GwTabItem* GwTab::tabItem(int position) const {
    TCITEMA tab{};
    tab.mask = TCIF_PARAM;
    if (tabMessage(TCM_GETITEMA, static_cast<unsigned long long>(position),
                   reinterpret_cast<LONG_PTR>(&tab)) == 0)
        return nullptr;
    auto* item = reinterpret_cast<GwTabItem*>(tab.lParam);
    // Only the control's own copies are items: a parameter that other code set is none.
    return mCopies->items.count(item) != 0 ? item : nullptr;
}

int GwTab::size() const {
    return static_cast<int>(tabMessage(TCM_GETITEMCOUNT, 0, 0));
}

int GwTab::find(unsigned long long id) const {
    int const count = size();
    for (int i = 0; i < count; ++i) {
        GwTabItem const* stored = tabItem(i);
        if (stored != nullptr && stored->id() == id)
            return i;
    }
    return -1;
}

int GwTab::find(GwItem const& item) const {
    int const count = size();
    for (int i = 0; i < count; ++i) {
        GwTabItem const* stored = tabItem(i);
        if (stored != nullptr && item.operator==(*stored))
            return i;
    }
    return -1;
}

GwTab& GwTab::addAt(int position, GwItem const& item) {
    try {
        auto const* tabItemToAdd = dynamic_cast<GwTabItem const*>(&item);
        if (tabItemToAdd == nullptr)
            return *this;
        int const count = size();
        GwResource const module(tabItemToAdd->resource());
        if (position >= 1 && position < count) {
            // Compared with the parameter of the tab one past the last: there is none, so
            // nothing compares equal and the tab at position stays.
            GwTabItem* beyond = tabItem(count);
            if (beyond != nullptr && item.operator==(*beyond)) {
                tabMessage(TCM_DELETEITEM, static_cast<unsigned long long>(position), 0);
                mCopies->drop(beyond);
            }
        } else {
            position = count;
        }
        GwItem* made = gwCopyItem(item);
        auto* copy = dynamic_cast<GwTabItem*>(made);
        if (copy == nullptr) {
            delete made;
            return *this;
        }
        mCopies->items.insert(copy);

        String caption = tabItemToAdd->text();
        if (caption.size() == 0)
            caption = module.loadString(tabItemToAdd->textId());

        auto const tab = static_cast<HWND>(mHandle);
        int const pageId = static_cast<int>(tabItemToAdd->windowId());
        HWND page = GetDlgItem(tab, pageId);
        if (page == nullptr)
            page = GetDlgItem(GetParent(tab), pageId);
        if (page == nullptr) {
            if (GwWindow* dialog = module.loadDialog(tabItemToAdd->windowId(), parent()))
                page = static_cast<HWND>(dialog->window());
        }
        if (page == nullptr) {
            mCopies->drop(copy);
            return *this;
        }
        ShowWindow(page, SW_HIDE);
        TCITEMA tabData{};
        tabData.mask = TCIF_TEXT | TCIF_PARAM;
        tabData.pszText = const_cast<char*>(caption.c_str());
        tabData.cchTextMax = lstrlenA(caption.c_str());
        tabData.lParam = reinterpret_cast<LPARAM>(copy);
        if (tabMessage(TCM_INSERTITEMA, static_cast<unsigned long long>(position),
                       reinterpret_cast<LONG_PTR>(&tabData)) < 0) {
            mCopies->drop(copy);
            return *this;
        }
        // The first tab of an empty control is current at once: the focus message then
        // changes nothing and no notification lays out the pages, so this call does.
        bool const current = selectedAt() == position;
        tabMessage(TCM_SETCURFOCUS, static_cast<unsigned long long>(position), 0);
        if (current)
            layout();
    } catch (...) {
        // A failing item class or resource adds no tab.
    }
    return *this;
}

GwTab& GwTab::add(GwItem const& item) {
    if (item.id() == ~0ull)
        return addAt(size(), item);
    int const position = find(item);
    if (position < 0)
        return addAt(size(), item);
    GwTabItem* old = tabItem(position);
    tabMessage(TCM_DELETEITEM, static_cast<unsigned long long>(position), 0);
    mCopies->drop(old);
    return addAt(position, item);
}

GwTab& GwTab::removeAt(int position) {
    if (position >= size())
        return *this;
    GwTabItem* old = tabItem(position);
    if (tabMessage(TCM_DELETEITEM, static_cast<unsigned long long>(position), 0) != 0)
        mCopies->drop(old);
    return *this;
}

GwTab& GwTab::remove(GwItem const& item) {
    int const position = find(item);
    return position >= 0 ? removeAt(position) : *this;
}

GwTab& GwTab::remove(unsigned long long id) {
    int const position = find(id);
    return position >= 0 ? removeAt(position) : *this;
}

GwTab& GwTab::remove() {
    tabMessage(TCM_DELETEALLITEMS, 0, 0);
    // Also the copies of tabs that other code deleted, or that the platform dropped when
    // its window was destroyed.
    for (GwTabItem* item : mCopies->items)
        delete item;
    mCopies->items.clear();
    return *this;
}

GwItem const& GwTab::item(unsigned long long id) const {
    static GwItem const none;
    int const position = find(id);
    GwTabItem const* stored = position >= 0 ? tabItem(position) : nullptr;
    return stored != nullptr ? *stored : none;
}

GwItem const& GwTab::itemAt(int position) const {
    static GwItem const none;
    GwTabItem const* stored = position >= 0 && position < size() ? tabItem(position) : nullptr;
    return stored != nullptr ? *stored : none;
}

GwTab& GwTab::setSelectedAt(int position) {
    tabMessage(TCM_SETCURFOCUS, static_cast<unsigned long long>(position), 0);
    return *this;
}

GwTab& GwTab::setSelected(unsigned long long id) {
    int const position = find(id);
    return position >= 0 ? setSelectedAt(position) : *this;
}

GwTab& GwTab::setSelected(GwItem const& item) {
    int const position = find(item);
    return position >= 0 ? setSelectedAt(position) : *this;
}

int GwTab::selectedAt() const {
    return static_cast<int>(tabMessage(TCM_GETCURSEL, 0, 0));
}

bool GwTab::selectedAt(int position) const {
    return selectedAt() == position;
}

bool GwTab::selected(unsigned long long id) const {
    int const position = find(id);
    return position >= 0 && selectedAt(position);
}

bool GwTab::selected(GwItem const& item) const {
    int const position = find(item);
    return position >= 0 && selectedAt(position);
}

unsigned long long GwTab::selected() const {
    int const current = selectedAt();
    if (current == 0)
        return 0;
    GwTabItem const* stored = tabItem(current);
    return stored != nullptr ? stored->id() : ~0ull;
}

void GwTab::layout() {
    auto const tab = static_cast<HWND>(mHandle);
    int const current = selectedAt();
    RECT display{};
    GetClientRect(tab, &display);
    tabMessage(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LONG_PTR>(&display));
    int const width = display.right - display.left;
    int const height = display.bottom - display.top;
    // A select handler may remove tabs or end the window: the count is read each time.
    for (int i = 0; mHandle != nullptr && i < size(); ++i) {
        GwTabItem const* stored = tabItem(i);
        if (stored == nullptr)
            continue;
        int const pageId = static_cast<int>(stored->id());
        if (i == current) {
            dispatchEvent(GwMsgSelect, 0, 0);
            if (mHandle == nullptr)
                return;
        }
        if (HWND page = GetDlgItem(tab, pageId)) {
            if (i == current)
                SetWindowPos(page, HWND_TOP, display.left, display.top, width, height,
                             SWP_SHOWWINDOW);
            else
                ShowWindow(page, SW_HIDE);
        } else if (HWND sibling = GetDlgItem(GetParent(tab), pageId)) {
            if (i == current) {
                RECT placed = display;
                MapWindowPoints(tab, GetParent(tab), reinterpret_cast<POINT*>(&placed), 2);
                SetWindowPos(sibling, nullptr, placed.left, placed.top, width, height,
                             SWP_NOZORDER | SWP_SHOWWINDOW);
                // Right above the tab control. The page moves, not the tab control, so that
                // the pages hidden after the tab control before stay after it.
                HWND const above = GetWindow(tab, GW_HWNDPREV);
                if (above != sibling)
                    SetWindowPos(sibling, above != nullptr ? above : HWND_TOP, 0, 0, 0, 0,
                                 SWP_NOSIZE | SWP_NOMOVE);
            } else {
                SetWindowPos(sibling, tab, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_HIDEWINDOW);
            }
        }
    }
}

bool GwTab::exitInstance() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    return true;
}

long long GwTab::msgHandler(unsigned long long msg, unsigned long long wParam, long long lParam) {
    if (msg == GwMsgNotifyReflected) {
        auto const* header = reinterpret_cast<NMHDR const*>(lParam);
        if (header != nullptr && header->code == static_cast<UINT>(TCN_SELCHANGE))
            layout();
        return 0;
    }
    return GwControl::msgHandler(msg, wParam, lParam);
}
