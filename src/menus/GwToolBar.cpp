// The tool bar: construction, buttons, button state and its messages.
#include "GwToolBar.h"

#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <cstring>

#include <Event.h>

#include "GwControl.h"
#include "GwEventData.h"
#include "GwFrame.h"
#include "GwMessages.h"
#include "GwResource.h"

GW_CLASS_MAKES(GwToolBar, "GwToolBar", "GwControlBar")

void* GwToolBar::gStdImageList = nullptr;

namespace {

// WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_WRAPABLE | TBSTYLE_TOOLTIPS |
// CCS_NOPARENTALIGN | CCS_NORESIZE
constexpr DWORD kStyle = 0x50000B0C;
constexpr unsigned long long kNoId = ~0ull;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

GwControl* controlOf(TBBUTTON const& button) {
    return reinterpret_cast<GwControl*>(button.dwData);
}

} // namespace

GwToolBar::GwToolBar(GwWindow& parent, unsigned long long id)
    : GwControlBar(), mSelected(0), mResource(new GwResource) {
    create(parent.window(), id);
}

GwToolBar::GwToolBar(GwWindow* parent, unsigned long long id)
    : GwControlBar(), mSelected(0), mResource(new GwResource) {
    if (parent == nullptr) {
        DebugBreak(); // a tool bar needs a parent
        return;
    }
    create(parent->window(), id);
}

void GwToolBar::create(void* parent, unsigned long long id) {
    HWND const hwnd = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", kStyle, 0, 0, 0, 0, hwndOf(parent),
                                      reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                      GetModuleHandleA(nullptr), nullptr);
    if (hwnd == nullptr)
        return;
    attach(hwnd);
    if (mPrevProc == nullptr)
        DebugBreak(); // nothing to chain the messages to
    send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
}

GwToolBar::GwToolBar(void* window) : GwControlBar(window), mSelected(0), mResource(new GwResource) {
    if (mHandle != nullptr)
        send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
}

GwToolBar::GwToolBar(GwToolBar const& other)
    : GwControlBar(other), mSelected(other.mSelected), mResource(new GwResource(*other.mResource)) {
}

GwToolBar& GwToolBar::operator=(GwToolBar const& other) {
    if (this != &other) {
        GwControlBar::operator=(other);
        mSelected = other.mSelected;
        *mResource = *other.mResource;
    }
    return *this;
}

GwToolBar::~GwToolBar() {
    if (mHandle != nullptr && mPrevProc != nullptr) {
        remove();
        releaseImages();
    }
    delete mResource;
}

GwToolBar* GwToolBar::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwToolBar(handle) : nullptr;
}

long long GwToolBar::send(unsigned int msg, unsigned long long wParam, long long lParam) const {
    if (mHandle == nullptr)
        return 0;
    return const_cast<GwToolBar*>(this)->callDefHandler(msg, wParam, lParam);
}

bool GwToolBar::button(int index, void* tbbutton) const {
    auto* out = static_cast<TBBUTTON*>(tbbutton);
    *out = TBBUTTON{};
    return index >= 0 &&
           send(TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(out)) != 0;
}

int GwToolBar::indexOf(unsigned long long id) const {
    return static_cast<int>(send(TB_COMMANDTOINDEX, static_cast<WPARAM>(id), 0));
}

// ---- Buttons

GwToolBar& GwToolBar::add(GwItem const& item) {
    auto const& toolItem = dynamic_cast<GwToolBarItem const&>(item);
    int index = toolItem.id() != kNoId ? indexOf(toolItem.id()) : -1;
    if (index >= 0)
        removeButton(index, toolItem.toolCtrl());
    insert(index, toolItem);
    return *this;
}

GwToolBar& GwToolBar::addAt(int index, GwItem const& item) {
    auto const& toolItem = dynamic_cast<GwToolBarItem const&>(item);
    int const old = toolItem.id() != kNoId ? indexOf(toolItem.id()) : -1;
    if (old >= 0)
        removeButton(old, toolItem.toolCtrl());
    if (index < 0)
        index = old;
    if (index > sizeOf())
        index = -1;
    insert(index, toolItem);
    return *this;
}

void GwToolBar::insert(int index, GwItem const& item) {
    auto const& toolItem = static_cast<GwToolBarItem const&>(item);
    TBBUTTON button{};
    button.iBitmap = toolItem.mBitmap;
    button.idCommand = static_cast<int>(toolItem.id());
    button.fsState = static_cast<BYTE>(toolItem.mState & ~GwToolBarItem::eChecked);
    button.fsStyle = static_cast<BYTE>(toolItem.mStyle);
    button.dwData = reinterpret_cast<DWORD_PTR>(toolItem.mToolCtrl);
    button.iString = 0;
    if (toolItem.mToolCtrl != nullptr)
        toolItem.mToolCtrl->setParent(this);
    if (index >= 0) {
        send(TB_INSERTBUTTONA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    } else {
        send(TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
        index = indexOf(toolItem.id());
    }
    if (index < 0)
        return;
    // Buttons behind the new one have moved: so have their controls.
    sizeToolCtrl(-1);
    if (toolItem.mToolCtrl != nullptr)
        sizeToolCtrl(index);
    if (toolItem.mStyle == GwToolBarItem::eCheck || toolItem.mStyle == GwToolBarItem::eCheckGroup)
        setValueAt(index, (toolItem.mState & GwToolBarItem::eChecked) != 0);
}

bool GwToolBar::removeButton(int index, GwControl const* keep) {
    TBBUTTON old{};
    if (!button(index, &old))
        return false;
    send(TB_DELETEBUTTON, static_cast<WPARAM>(index), 0);
    GwControl* control = controlOf(old);
    if (control != nullptr && control != keep) {
        control->sendEvent(Event(GwEventHandlerGone), nullptr, true);
        delete control; // its window goes with it
    }
    return true;
}

GwToolBar& GwToolBar::remove(GwItem const& item) {
    return remove(item.id());
}

GwToolBar& GwToolBar::remove(unsigned long long id) {
    return removeAt(indexOf(id));
}

GwToolBar& GwToolBar::removeAt(int index) {
    if (removeButton(index, nullptr))
        sizeToolCtrl(-1);
    return *this;
}

GwToolBar& GwToolBar::remove() {
    while (removeButton(0, nullptr)) {
    }
    return *this;
}

GwToolBar& GwToolBar::add(GwEventHandler*) {
    return *this;
}

GwToolBar& GwToolBar::remove(GwEventHandler*) {
    return *this;
}

int GwToolBar::sizeOf() const {
    return static_cast<int>(send(TB_BUTTONCOUNT, 0, 0));
}

bool GwToolBar::describe(int index, GwToolBarItem& out) const {
    TBBUTTON found{};
    if (!button(index, &found))
        return false;
    out.setStyle(GwToolBarItem::eButton);
    out.GwItem::setId(static_cast<unsigned int>(found.idCommand));
    switch (found.fsStyle) {
    case GwToolBarItem::eButton:
    case GwToolBarItem::eSeparator:
    case GwToolBarItem::eCheck:
    case GwToolBarItem::eCheckGroup:
        out.mStyle = static_cast<GwToolBarItem::eButtonStyle>(found.fsStyle);
        break;
    default:
        break;
    }
    int state =
        (found.fsState & TBSTATE_ENABLED) != 0 ? GwToolBarItem::eEnabled : GwToolBarItem::eDisabled;
    if ((found.fsState & TBSTATE_CHECKED) != 0)
        state |= GwToolBarItem::eChecked;
    out.mBitmap = found.iBitmap;
    if (GwControl* control = controlOf(found)) {
        out.setStyle(*control);
        if ((found.fsState & TBSTATE_HIDDEN) != 0)
            state |= GwToolBarItem::eHidden;
    }
    out.mState = state;
    return true;
}

GwToolBarItem const& GwToolBar::item(unsigned long long id) const {
    static GwToolBarItem shared;
    if (!describe(indexOf(id), shared))
        shared = GwToolBarItem();
    return shared;
}

GwToolBarItem const& GwToolBar::itemAt(int index) const {
    static GwToolBarItem shared;
    if (!describe(index, shared))
        shared = GwToolBarItem();
    return shared;
}

GwRectangle GwToolBar::rectangle(unsigned long long id) const {
    return rectangleAt(indexOf(id));
}

GwRectangle GwToolBar::rectangleAt(int index) const {
    RECT rect{};
    if (index < 0 ||
        send(TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)) == 0)
        return GwRectangle(0, 0, 0, 0);
    return GwRectangle(rect.left, translateY(rect.bottom, true), rect.right - rect.left,
                       rect.bottom - rect.top);
}

// ---- Button state

unsigned int GwToolBar::commandAt(int index) const {
    TBBUTTON found{};
    return button(index, &found) ? static_cast<unsigned int>(found.idCommand) : 0;
}

GwControl* GwToolBar::controlFor(unsigned long long id) const {
    TBBUTTON found{};
    return button(indexOf(id), &found) ? controlOf(found) : nullptr;
}

bool GwToolBar::stateAt(int index, unsigned char bits, bool set) const {
    TBBUTTON found{};
    return button(index, &found) && ((found.fsState & bits) != 0) == set;
}

bool GwToolBar::ask(unsigned int msg, unsigned long long id) const {
    return send(msg, static_cast<WPARAM>(id), 0) > 0;
}

GwToolBar& GwToolBar::setEnabled(unsigned long long id, bool enabled) {
    if (send(TB_ENABLEBUTTON, static_cast<WPARAM>(id), MAKELONG(enabled ? 1 : 0, 0)) != 0) {
        if (GwControl* control = controlFor(id))
            control->setEnabled(enabled);
    }
    return *this;
}

bool GwToolBar::enabled(unsigned long long id) const {
    return ask(TB_ISBUTTONENABLED, id);
}

GwToolBar& GwToolBar::setEnabledAt(int index, bool enabled) {
    if (unsigned int const id = commandAt(index))
        setEnabled(id, enabled);
    return *this;
}

bool GwToolBar::enabledAt(int index) const {
    return stateAt(index, TBSTATE_ENABLED, true);
}

GwToolBar& GwToolBar::setValue(unsigned long long id, bool checked) {
    send(TB_CHECKBUTTON, static_cast<WPARAM>(id), MAKELONG(checked ? 1 : 0, 0));
    return *this;
}

bool GwToolBar::value(unsigned long long id) const {
    return ask(TB_ISBUTTONCHECKED, id);
}

GwToolBar& GwToolBar::setValueAt(int index, bool checked) {
    if (unsigned int const id = commandAt(index))
        setValue(id, checked);
    return *this;
}

bool GwToolBar::valueAt(int index) const {
    return stateAt(index, TBSTATE_CHECKED, true);
}

GwToolBar& GwToolBar::setVisible(unsigned long long id, bool hide) {
    if (send(TB_HIDEBUTTON, static_cast<WPARAM>(id), MAKELONG(hide ? 1 : 0, 0)) != 0) {
        if (GwControl* control = controlFor(id))
            control->setVisible(hide);
        sizeToolCtrl(-1);
    }
    return *this;
}

bool GwToolBar::visible(unsigned long long id) const {
    return ask(TB_ISBUTTONCHECKED, id); // the checked state, as value(id)
}

GwToolBar& GwToolBar::setVisibleAt(int index, bool hide) {
    if (unsigned int const id = commandAt(index))
        setVisible(id, hide);
    return *this;
}

bool GwToolBar::visibleAt(int index) const {
    return stateAt(index, TBSTATE_HIDDEN, false);
}

GwToolBar& GwToolBar::setSelected(unsigned long long id) {
    mSelected = id;
    return *this;
}

GwToolBar& GwToolBar::setResource(GwResource const& resource) {
    *mResource = resource;
    return *this;
}

// ---- Docking

GwFrame* GwToolBar::dockingFrame() const {
    HWND const parent = mHandle != nullptr ? GetParent(hwndOf(mHandle)) : nullptr;
    return dynamic_cast<GwFrame*>(window(parent, false));
}

void GwToolBar::dock() {
    GwFrame* frame = dockingFrame();
    if (frame == nullptr)
        return;
    HWND const hwnd = hwndOf(frame->window());
    POINT pointer{};
    RECT client{};
    GetCursorPos(&pointer);
    ScreenToClient(hwnd, &pointer);
    GetClientRect(hwnd, &client);
    if (!PtInRect(&client, pointer))
        return; // dropped outside the frame: the bar stays where it was
    // The edge nearest to the pointer.
    struct Edge {
        long distance;
        eAlignment side;
    };
    Edge const edges[] = {{pointer.y - client.top, eTop},
                          {client.bottom - pointer.y, eBottom},
                          {pointer.x - client.left, eLeft},
                          {client.right - pointer.x, eRight}};
    Edge const* nearest = &edges[0];
    for (Edge const& edge : edges) {
        if (edge.distance < nearest->distance)
            nearest = &edge;
    }
    frame->remove(this);
    frame->add(this, nearest->side);
}

// ---- Messages

void GwToolBar::forget(int index, GwControl* control) {
    TBBUTTONINFOA info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_LPARAM | TBIF_BYINDEX;
    info.lParam = 0;
    send(TB_SETBUTTONINFOA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    // Items that show the control let go of it.
    control->sendEvent(Event(GwEventHandlerGone), nullptr, true);
}

void GwToolBar::releaseControls() {
    int const count = sizeOf();
    for (int index = 0; index < count; ++index) {
        TBBUTTON found{};
        GwControl* control = button(index, &found) ? controlOf(found) : nullptr;
        if (control == nullptr)
            continue;
        forget(index, control);
        // A control with a window deletes itself when the window goes; one without is
        // deleted here.
        if (control->window() == nullptr)
            delete control;
    }
}

void GwToolBar::tooltipText(void* dispInfo) {
    auto* info = static_cast<NMTTDISPINFOA*>(dispInfo);
    String const text = mResource->loadString(info->hdr.idFrom);
    char const* all = text.c_str();
    char const* lineFeed = std::strchr(all, '\n');
    // The tooltip is the part after the line feed, cut to the 80 bytes of szText.
    char const* tip = lineFeed != nullptr ? lineFeed + 1 : "";
    std::size_t const length = std::min<std::size_t>(std::strlen(tip), sizeof info->szText - 1);
    std::memcpy(info->szText, tip, length);
    info->szText[length] = '\0';
    info->lpszText = info->szText;
    info->hinst = nullptr;
    // The status text is the part before it.
    String const status = lineFeed != nullptr ? String(all, lineFeed - all) : text;
    HWND root = GetAncestor(hwndOf(mHandle), GA_ROOT);
    if (root != nullptr)
        SendMessageA(root, static_cast<UINT>(message()), GwCodeStatusText,
                     reinterpret_cast<LPARAM>(status.c_str()));
}

long long GwToolBar::msgHandler(unsigned long long msg, unsigned long long wParam,
                                long long lParam) {
    HWND const hwnd = hwndOf(mHandle);
    switch (msg) {
    case WM_SIZE: {
        // The platform lays the buttons out again first.
        long long const result = GwControlBar::msgHandler(msg, wParam, lParam);
        sizeToolCtrl(-1);
        return result;
    }
    case WM_NCCALCSIZE:
        if (!IsThemeActive() && wParam != 0) {
            RECT& client = reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam)->rgrc[0];
            client.left += 2;
            client.top += 2;
            client.right -= 2;
            client.bottom -= 1;
            return 0;
        }
        break;
    case WM_NCPAINT:
        if (!IsThemeActive()) {
            RECT window{};
            GetWindowRect(hwnd, &window);
            int const width = window.right - window.left;
            int const height = window.bottom - window.top;
            if (HDC dc = GetWindowDC(hwnd)) {
                ExcludeClipRect(dc, 2, 2, width - 2, height - 1);
                RECT const all{0, 0, width, height};
                FillRect(dc, &all, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
                ReleaseDC(hwnd, dc);
            }
            return 0;
        }
        break;
    case WM_ERASEBKGND:
        if (!IsThemeActive()) {
            if (HDC dc = reinterpret_cast<HDC>(wParam)) {
                RECT window{};
                GetWindowRect(hwnd, &window);
                MapWindowPoints(nullptr, hwnd, reinterpret_cast<POINT*>(&window), 2);
                FillRect(dc, &window, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
            }
            return 1;
        }
        break;
    case WM_COMMAND:
        // A control on the bar: its event goes up once; the platform would pass the
        // command on to the bar's parent, which would reflect it a second time.
        if (lParam != 0 && window(reinterpret_cast<void*>(lParam), false) != nullptr) {
            dispatchEvent(msg, wParam, lParam);
            return 0;
        }
        break;
    case WM_PARENTNOTIFY:
        // A control's window is going on its own: the bar forgets the control, whose
        // object deletes itself with the window.
        if (LOWORD(wParam) == WM_DESTROY) {
            int const count = sizeOf();
            for (int index = 0; index < count; ++index) {
                TBBUTTON found{};
                GwControl* control = button(index, &found) ? controlOf(found) : nullptr;
                // A control being deleted has already let go of its window.
                if (control != nullptr && (control->window() == nullptr ||
                                           control->window() == reinterpret_cast<void*>(lParam)))
                    forget(index, control);
            }
        }
        break;
    case WM_DESTROY:
        // The children go before the bar: their objects delete themselves then.
        releaseControls();
        releaseImages();
        break;
    case GwMsgNotifyReflected: {
        auto const* header = reinterpret_cast<NMHDR const*>(lParam);
        if (header == nullptr)
            return 0;
        switch (static_cast<int>(header->code)) {
        case static_cast<int>(TTN_GETDISPINFOA):
            tooltipText(reinterpret_cast<void*>(lParam));
            break;
        case static_cast<int>(TTN_SHOW):
        case static_cast<int>(TTN_POP):
            if (HWND root = GetAncestor(hwnd, GA_ROOT))
                SendMessageA(root, static_cast<UINT>(message()), GwCodeStatusSimple,
                             static_cast<int>(header->code) == static_cast<int>(TTN_SHOW) ? 1 : 0);
            break;
        default:
            break;
        }
        return 0;
    }
    case WM_LBUTTONDOWN: {
        // Pressed beside the buttons: the bar is dragged to another edge of its frame.
        POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        if (send(TB_HITTEST, 0, reinterpret_cast<LPARAM>(&point)) < 0 &&
            dockingFrame() != nullptr) {
            GwPosition start(point.x, translateY(point.y, false));
            dragBegin(start);
            dock();
            return 0;
        }
        break;
    }
    case GwMsgCommand:
        mSelected = LOWORD(wParam);
        return dispatchEvent(msg, wParam, lParam);
    default:
        break;
    }
    return GwControlBar::msgHandler(msg, wParam, lParam);
}
