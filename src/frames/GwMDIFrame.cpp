// The MDI frame, its client and its child frames.
#include "GwMDIFrame.h"

#include <windows.h>

#include "GwEventData.h"
#include "window/GwInputMessages.h"
#include "GwMenu.h"
#include "GwMessages.h"
#include "GwResource.h"

GW_CLASS_MAKES(GwMDIFrame, "GwMDIFrame", "GwFrame")
GW_CLASS_MAKES(GwMDIClient, "GwMDIClient", "GwWindow")
GW_CLASS_MAKES(GwMDIChildFrame, "GwMDIChildFrame", "GwFrame")

namespace {

constexpr unsigned long long kClientId = 0xFD01;
constexpr UINT kFirstChildId = 0xFF00;
constexpr unsigned long long kNoId = ~0ull;
// WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_VSCROLL | WS_HSCROLL
constexpr DWORD kClientStyle = 0x52300000;

// The commands of the library's window menu (menu 102).
enum : unsigned long long {
    kTileBelow = 0xF861,    // "&Untereinander"
    kTileBeside = 0xF862,   // "&Nebeneinander"
    kCascade = 0xF863,      // "Ü&berlappend"
    kTile = 0xF864,         // "&Kacheln"
    kArrangeIcons = 0xF865, // "&Symbole anordnen"
    kCloseAll = 0xF866      // "&Alle schließen"
};
// The entries the client lists for its children; the default handling activates the child.
constexpr unsigned long long kLastChildEntry = 0xFF09;
constexpr unsigned long long kTenthChildEntry = 0xFF0A;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

bool isPreTranslation(unsigned long long msg, unsigned long long wParam) {
    return GwWindow::gGwWM_Message != 0 && msg == GwWindow::gGwWM_Message &&
           wParam == GwCodePreTranslate;
}

} // namespace

// --- GwMDIFrame -------------------------------------------------------------------------------

GwMDIFrame::GwMDIFrame(void* handle) : GwFrame(handle) {}

GwMDIFrame::GwMDIFrame(unsigned long long id) : GwFrame(id, 0, true) {
    create(false, 0);
}

GwMDIFrame::GwMDIFrame(unsigned long long id, unsigned long long menuId)
    : GwFrame(id, menuId, true) {
    create(false, 0);
}

GwMDIFrame::GwMDIFrame(unsigned long long id, unsigned long long menuId, int menuStyle)
    : GwFrame(id, menuId, true) {
    create(true, menuStyle);
}

GwMDIFrame::GwMDIFrame(GwFrame const& owner, unsigned long long id) : GwFrame(owner, id, 0, false) {
    create(false, 0);
}

GwMDIFrame::GwMDIFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId)
    : GwFrame(owner, id, menuId, false) {
    create(false, 0);
}

GwMDIFrame::GwMDIFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId,
                       int menuStyle)
    : GwFrame(owner, id, menuId, false) {
    create(true, menuStyle);
}

GwMDIFrame::GwMDIFrame(GwMDIFrame const& other) : GwFrame(other) {}

GwMDIFrame& GwMDIFrame::operator=(GwMDIFrame const& other) {
    GwFrame::operator=(other);
    return *this;
}

GwMDIFrame::~GwMDIFrame() = default;

void GwMDIFrame::create(bool withMenuStyle, int menuStyle) {
    auto* client = new GwMDIClient(*this, kClientId);
    if (client->window() != nullptr)
        setClient(client);
    else
        delete client; // no window to own it: the frame stays without client
    if (withMenuStyle)
        setMenuStyle(menuStyle);
}

GwMDIFrame* GwMDIFrame::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwMDIFrame(handle) : nullptr;
}

GwMDIClient* GwMDIFrame::mdiClient() const {
    return dynamic_cast<GwMDIClient*>(mClient);
}

GwMDIFrame& GwMDIFrame::setClient(GwWindow* client) {
    if (dynamic_cast<GwMDIClient*>(client) != nullptr)
        GwFrame::setClient(client);
    return *this;
}

void GwMDIFrame::clientGone(GwMDIClient* client) {
    if (mClient == nullptr || mClient != client)
        return;
    mClient->removeEvent(this);
    mClient = nullptr;
}

GwMDIFrame& GwMDIFrame::setMenuStyle(int style) {
    if (mMenuBar == nullptr)
        return *this;
    GwFrame::setMenuStyle(style);
    if ((style & eWindowMenu) == 0 || mMenuBar == nullptr)
        return *this;
    auto const bar = static_cast<HMENU>(mMenuBar->window());
    int const count = GetMenuItemCount(bar);
    int const position = (style & eHelpMenu) != 0 ? count - 2 : count - 1;
    HMENU const windowMenu = position >= 0 ? GetSubMenu(bar, position) : nullptr;
    if (GwMDIClient* const client = mdiClient()) {
        // wParam carries the frame's window where the frame menu belongs, as it always did.
        SendMessageA(hwndOf(client->window()), WM_MDISETMENU, reinterpret_cast<WPARAM>(mHandle),
                     reinterpret_cast<LPARAM>(windowMenu));
    }
    DrawMenuBar(hwndOf(mHandle));
    return *this;
}

long long GwMDIFrame::msgHandler(unsigned long long msg, unsigned long long wParam,
                                 long long lParam) {
    if (isPreTranslation(msg, wParam)) {
        // A client that is gone (or whose object cannot be read) takes every message.
        GwWindow* const client = mClient;
        if (client == nullptr || IsBadReadPtr(client, sizeof(GwWindow)) ||
            !IsWindow(hwndOf(client->window())))
            return 1;
        auto* const queued = reinterpret_cast<MSG*>(lParam);
        if (queued != nullptr && TranslateMDISysAccel(hwndOf(client->window()), queued))
            return 1;
        return GwFrame::msgHandler(msg, wParam, lParam);
    }
    switch (msg) {
    case WM_MOVE:
    case WM_SIZE:
        // The frame's layout places the client; the default frame procedure must not.
        return 0;
    case WM_CLOSE:
        // Untaken, the frame's handling asks the handlers once more and ends the loop.
        if (dispatchEvent(WM_CLOSE, 0, 0) != 0)
            return 0;
        break;
    default:
        break;
    }
    return GwFrame::msgHandler(msg, wParam, lParam);
}

long long GwMDIFrame::callDefHandler(unsigned long long msg, unsigned long long wParam,
                                     long long lParam) {
    HWND const client = mClient != nullptr ? hwndOf(mClient->window()) : nullptr;
    if (client != nullptr)
        return DefFrameProcA(hwndOf(mHandle), client, static_cast<UINT>(msg),
                             static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam));
    return DefWindowProcA(hwndOf(mHandle), static_cast<UINT>(msg), static_cast<WPARAM>(wParam),
                          static_cast<LPARAM>(lParam));
}

bool GwMDIFrame::dispatchFrameEvent(unsigned long long msg, int wParamLow, GwWindow* source,
                                    GwWindow* extra) {
    GwMDIClient* const client = mdiClient();
    GwWindow* child = client != nullptr ? client->active() : nullptr;
    // The active child itself as source has had its handlers asked already.
    if (child == nullptr || child == source)
        child = extra;
    return GwFrame::dispatchFrameEvent(msg, wParamLow, source, child);
}

bool GwMDIFrame::exitInstance() {
    // The client's window went before the frame's: GwMDIClient let go of it then.
    if (mClient != nullptr) {
        mClient->removeEvent(this);
        mClient = nullptr;
    }
    return GwFrame::exitInstance();
}

bool GwMDIFrame::msgHandlerCommand(unsigned long long id) {
    GwMDIClient* const client = mdiClient();
    switch (id) {
    case kTileBelow:
    case kTile:
        if (client != nullptr)
            client->setArrange(GwMDIClient::eTileHorizontal);
        return true;
    case kTileBeside:
        if (client != nullptr)
            client->setArrange(GwMDIClient::eTileVertical);
        return true;
    case kCascade:
        if (client != nullptr)
            client->setArrange(GwMDIClient::eCascade);
        return true;
    case kArrangeIcons:
        if (client != nullptr)
            client->setArrange(GwMDIClient::eArrangeIcons);
        return true;
    case kCloseAll:
        closeAll();
        return true;
    case kTenthChildEntry:
        return true;
    default:
        if (id >= kFirstChildId && id <= kLastChildEntry)
            return false;
        return GwFrame::msgHandlerCommand(id);
    }
}

// Works on window handles only: a child's close may delete any object, the client's too.
void GwMDIFrame::closeAll() {
    GwMDIClient* const client = mdiClient();
    HWND const clientWindow = client != nullptr ? hwndOf(client->window()) : nullptr;
    if (clientWindow == nullptr)
        return;
    bool const wasVisible = (GetWindowLongA(clientWindow, GWL_STYLE) & WS_VISIBLE) != 0;
    ShowWindow(clientWindow, SW_HIDE);
    HWND child = GetWindow(clientWindow, GW_CHILD);
    while (child != nullptr) {
        SendMessageA(child, WM_CLOSE, 0, 0);
        if (IsWindow(child))
            SendMessageA(clientWindow, WM_MDIDESTROY, reinterpret_cast<WPARAM>(child), 0);
        // A window that is gone has no next sibling: start again from the first child. One
        // that even the client could not destroy is passed over.
        child = IsWindow(child) ? GetWindow(child, GW_HWNDNEXT) : GetWindow(clientWindow, GW_CHILD);
    }
    if (wasVisible && IsWindow(clientWindow))
        ShowWindow(clientWindow, SW_SHOW);
}

// --- GwMDIClient ------------------------------------------------------------------------------

GwMDIClient::GwMDIClient(void* handle) : GwWindow(handle) {}

GwMDIClient::GwMDIClient(GwMDIFrame& frame, unsigned long long id) : GwWindow() {
    HWND const frameWindow = hwndOf(frame.window());
    HMENU const bar = frameWindow != nullptr ? GetMenu(frameWindow) : nullptr;
    HMENU windowMenu = nullptr;
    if (bar != nullptr) {
        int const count = GetMenuItemCount(bar);
        if (count >= 2)
            windowMenu = GetSubMenu(bar, count - 2);
    }
    CLIENTCREATESTRUCT create{};
    create.hWindowMenu = windowMenu;
    create.idFirstChild = kFirstChildId;
    HWND const hwnd = CreateWindowExA(
        WS_EX_CLIENTEDGE, "mdiclient", nullptr, kClientStyle, 0, 0, 0, 0, frameWindow,
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleA(nullptr), &create);
    attach(hwnd);
}

GwMDIClient::GwMDIClient(GwMDIClient const& other) : GwWindow(other) {}

GwMDIClient& GwMDIClient::operator=(GwMDIClient const& other) {
    GwWindow::operator=(other);
    return *this;
}

GwMDIClient::~GwMDIClient() = default;

GwMDIClient* GwMDIClient::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwMDIClient(handle) : nullptr;
}

long long GwMDIClient::toControl(unsigned int msg, unsigned long long wParam,
                                 long long lParam) const {
    if (mHandle == nullptr)
        return 0;
    return const_cast<GwMDIClient*>(this)->callDefHandler(msg, wParam, lParam);
}

GwMDIClient& GwMDIClient::setActive(GwMDIChildFrame& child) {
    toControl(WM_MDIACTIVATE, reinterpret_cast<unsigned long long>(child.window()), 0);
    return *this;
}

GwMDIClient& GwMDIClient::setActive(GwMDIChildFrame& child, bool forward) {
    toControl(WM_MDINEXT, reinterpret_cast<unsigned long long>(child.window()), forward ? 0 : 1);
    return *this;
}

GwMDIClient& GwMDIClient::setActive(bool forward) {
    auto const active = static_cast<unsigned long long>(toControl(WM_MDIGETACTIVE, 0, 0));
    toControl(WM_MDINEXT, active, forward ? 0 : 1);
    return *this;
}

GwMDIClient& GwMDIClient::setMaximized(GwMDIChildFrame& child, bool maximized) {
    toControl(maximized ? WM_MDIMAXIMIZE : WM_MDIRESTORE,
              reinterpret_cast<unsigned long long>(child.window()), 0);
    return *this;
}

GwMDIClient& GwMDIClient::setArrange(eArrangeType type) {
    switch (type) {
    case eCascade:
        toControl(WM_MDICASCADE, 0, 0);
        break;
    case eTileHorizontal:
        toControl(WM_MDITILE, MDITILE_SKIPDISABLED | MDITILE_HORIZONTAL, 0);
        break;
    case eTileVertical:
        toControl(WM_MDITILE, MDITILE_SKIPDISABLED | MDITILE_VERTICAL, 0);
        break;
    case eArrangeIcons:
        toControl(WM_MDIICONARRANGE, 0, 0);
        break;
    default:
        break;
    }
    return *this;
}

GwMDIChildFrame* GwMDIClient::active() const {
    auto const child = reinterpret_cast<HWND>(toControl(WM_MDIGETACTIVE, 0, 0));
    if (child == nullptr)
        return nullptr;
    GwWindow* object = GwWindow::window(child, false);
    if (object == nullptr)
        object = GwResource::createChild(child);
    return dynamic_cast<GwMDIChildFrame*>(object);
}

long long GwMDIClient::msgHandler(unsigned long long msg, unsigned long long wParam,
                                  long long lParam) {
    if (gwIsInputMessage(msg) && dispatchEvent(msg, wParam, lParam) != 0)
        return 1;
    switch (msg) {
    case WM_DESTROY:
        // The frame must not reach for this object once the window is gone.
        if (auto* const frame =
                dynamic_cast<GwMDIFrame*>(GwWindow::window(GetParent(hwndOf(mHandle)), false)))
            frame->clientGone(this);
        break;
    default:
        break;
    }
    return GwWindow::msgHandler(msg, wParam, lParam);
}

// --- GwMDIChildFrame --------------------------------------------------------------------------

GwMDIChildFrame::GwMDIChildFrame(void* handle) : GwFrame(handle) {}

GwMDIChildFrame::GwMDIChildFrame(GwMDIFrame& frame) : GwFrame(static_cast<void*>(nullptr)) {
    GwMDIClient* const client = frame.mdiClient();
    HWND const clientWindow = client != nullptr ? hwndOf(client->window()) : nullptr;
    HWND const hwnd =
        clientWindow != nullptr
            ? CreateWindowExA(WS_EX_MDICHILD, "GwFrame", nullptr, 0, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, clientWindow, nullptr,
                              GetModuleHandleA(nullptr), nullptr)
            : nullptr;
    attach(hwnd);
    mHelpFile = frame.helpFile();
    if (hwnd != nullptr)
        SendMessageA(clientWindow, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hwnd), 0);
}

GwMDIChildFrame::GwMDIChildFrame(GwMDIChildFrame const& other) : GwFrame(other) {}

GwMDIChildFrame& GwMDIChildFrame::operator=(GwMDIChildFrame const& other) {
    GwFrame::operator=(other);
    return *this;
}

GwMDIChildFrame::~GwMDIChildFrame() {
    if (mHandle == nullptr)
        return;
    void* const hwnd = mHandle;
    GwWindow::setMsgHandler(false);
    GwWindow::setWindow(true);
    destroyThroughClient(hwnd);
}

GwMDIChildFrame* GwMDIChildFrame::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwMDIChildFrame(handle) : nullptr;
}

void GwMDIChildFrame::destroyThroughClient(void* handle) {
    HWND const hwnd = hwndOf(handle);
    if (HWND const client = GetParent(hwnd))
        SendMessageA(client, WM_MDIDESTROY, reinterpret_cast<WPARAM>(hwnd), 0);
    if (IsWindow(hwnd))
        DestroyWindow(hwnd); // the parent was no MDI client
}

GwMDIChildFrame& GwMDIChildFrame::setId(unsigned long long id) {
    mId = id;
    return *this;
}

unsigned long long GwMDIChildFrame::id() const {
    if (mId != kNoId)
        return mId;
    return static_cast<unsigned long long>(GetWindowLongPtrA(hwndOf(mHandle), GWLP_ID));
}

long long GwMDIChildFrame::toClient(unsigned int msg, long long lParam) const {
    HWND const hwnd = hwndOf(mHandle);
    if (hwnd == nullptr)
        return 0;
    return SendMessageA(GetParent(hwnd), msg, reinterpret_cast<WPARAM>(hwnd),
                        static_cast<LPARAM>(lParam));
}

GwMDIChildFrame& GwMDIChildFrame::setActive(bool active) {
    toClient(active ? WM_MDIACTIVATE : WM_MDINEXT, 0);
    return *this;
}

GwMDIChildFrame& GwMDIChildFrame::setMaximized(bool maximized) {
    toClient(maximized ? WM_MDIMAXIMIZE : WM_MDIRESTORE, 0);
    return *this;
}

long long GwMDIChildFrame::msgHandler(unsigned long long msg, unsigned long long wParam,
                                      long long lParam) {
    if (isPreTranslation(msg, wParam)) {
        HWND const client = mHandle != nullptr ? GetParent(hwndOf(mHandle)) : nullptr;
        auto* const queued = reinterpret_cast<MSG*>(lParam);
        if (client != nullptr && queued != nullptr && TranslateMDISysAccel(client, queued))
            return 1;
        return GwFrame::msgHandler(msg, wParam, lParam);
    }
    if (msg == WM_CLOSE) {
        // Untaken, the child goes; its object is deleted once its window is destroyed.
        if (dispatchEvent(WM_CLOSE, 0, 0) == 0 && mHandle != nullptr)
            destroyThroughClient(mHandle);
        return 0;
    }
    return GwFrame::msgHandler(msg, wParam, lParam);
}

long long GwMDIChildFrame::callDefHandler(unsigned long long msg, unsigned long long wParam,
                                          long long lParam) {
    if (mHandle == nullptr)
        return 0;
    return DefMDIChildProcA(hwndOf(mHandle), static_cast<UINT>(msg), static_cast<WPARAM>(wParam),
                            static_cast<LPARAM>(lParam));
}
