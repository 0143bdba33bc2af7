// The frame window: construction, bars and layout, client, showing, styles, messages.
#include "GwFrame.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include "GwControlBar.h"
#include "GwEventData.h"
#include "GwEventHandler.h"
#include "GwMenu.h"
#include "GwMessages.h"
#include "GwResource.h"
#include "GwStatusBar.h"

GW_CLASS_MAKES(GwFrame, "GwFrame", "GwWindow")

unsigned int GwFrame::gHelpMode = 0;
GwFrame::GwRegister GwFrame::gStartup;

namespace {

constexpr char kClassName[] = "GwFrame";
// WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS
constexpr DWORD kFrameStyle = 0x06CF0000;
// CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_OWNDC
constexpr UINT kClassStyle = 0x2B;
constexpr unsigned long long kStatusBarId = 0xFE01;
constexpr unsigned long long kNoId = ~0ull;
// The style bits that setBorderStyle and setFrameStyle(int) replace.
constexpr LONG kBorderBits = WS_CAPTION | WS_THICKFRAME;                 // 0xC40000
constexpr LONG kBoxBits = WS_MAXIMIZEBOX | WS_MINIMIZEBOX | WS_SYSMENU;  // 0xB0000
constexpr LONG kExtendedFrameBits = WS_EX_APPWINDOW | WS_EX_CONTEXTHELP; // 0x40400

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

LONG styleOf(HWND hwnd) {
    return GetWindowLongA(hwnd, GWL_STYLE);
}

LONG extendedStyleOf(HWND hwnd) {
    return GetWindowLongA(hwnd, GWL_EXSTYLE);
}

bool isChild(HWND hwnd) {
    return hwnd != nullptr && (styleOf(hwnd) & WS_CHILD) != 0;
}

} // namespace

bool GwFrame::GwRegister::initInstance() {
    HINSTANCE const instance = GetModuleHandleA(nullptr);
    WNDCLASSA cls{};
    if (GetClassInfoA(instance, kClassName, &cls))
        return true;
    cls = WNDCLASSA{};
    cls.style = kClassStyle;
    cls.lpfnWndProc = DefWindowProcA;
    cls.hInstance = instance;
    cls.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    cls.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
    cls.lpszClassName = kClassName;
    RegisterClassA(&cls);
    return true;
}

bool GwFrame::GwRegister::exitInstance() {
    return true;
}

GwFrame::GwFrame(void* handle)
    : GwWindow(handle), mMenuBar(nullptr), mMenuStyle(0), mResource(new GwResource),
      mStatusWindow(nullptr), mId(kNoId), mCurrentMenu(nullptr), mClient(nullptr),
      mMenuCache(nullptr), mPopupStack(nullptr), mHelpFunctor(nullptr), mBars(nullptr),
      mOwner(nullptr) {}

GwFrame::GwFrame(unsigned long long id, unsigned long long menuId, bool statusBar)
    : GwFrame(static_cast<void*>(nullptr)) {
    create(nullptr, id, menuId, statusBar);
}

GwFrame::GwFrame(unsigned long long id, unsigned long long menuId)
    : GwFrame(static_cast<void*>(nullptr)) {
    create(nullptr, id, menuId, true);
}

GwFrame::GwFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId,
                 bool statusBar)
    : GwFrame(static_cast<void*>(nullptr)) {
    create(&owner, id, menuId, statusBar);
}

GwFrame::GwFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId)
    : GwFrame(static_cast<void*>(nullptr)) {
    create(&owner, id, menuId, false);
}

void GwFrame::create(GwFrame const* owner, unsigned long long id, unsigned long long menuId,
                     bool statusBar) {
    HWND const ownerWindow = owner != nullptr ? hwndOf(owner->mHandle) : nullptr;
    HWND const hwnd = CreateWindowExA(0, kClassName, "Mainwindow", kFrameStyle, CW_USEDEFAULT,
                                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, ownerWindow,
                                      nullptr, GetModuleHandleA(nullptr), nullptr);
    mOwner = ownerWindow;
    mId = id;
    if (isChild(hwnd))
        SetWindowLongPtrA(hwnd, GWLP_ID, static_cast<LONG_PTR>(id));
    attach(hwnd);
    if (owner != nullptr)
        mHelpFile = owner->mHelpFile;
    setMenuBar(menuId);
    if (statusBar) {
        auto* bar = new GwStatusBar(this, kStatusBarId, true);
        if (bar->window() != nullptr)
            setStatusBar(bar);
        else
            delete bar; // no window to own it: the frame stays without status bar
    }
}

GwFrame::GwFrame(GwFrame const& other)
    : GwWindow(other), mMenuBar(nullptr), mMenuStyle(other.mMenuStyle),
      mResource(new GwResource(*other.mResource)), mStatusWindow(other.mStatusWindow),
      mId(other.mId), mCurrentMenu(other.mCurrentMenu), mClient(other.mClient),
      mHelpFile(other.mHelpFile), mMenuCache(nullptr), mPopupStack(nullptr),
      mHelpFunctor(other.mHelpFunctor), mBars(nullptr), mOwner(other.mOwner) {
    if (mClient != nullptr)
        mClient->addEvent(this);
    if (other.mBars != nullptr) {
        mBars = new GwObjectTable<GwBar>(other.mBars->capacity());
        for (std::int32_t i = 0; i < other.mBars->count(); ++i) {
            if (GwBar const* record = other.mBars->at(i)) {
                mBars->add(new GwBar(*record));
                record->bar->addEvent(this);
            }
        }
    }
}

// The plain values, the resource and the client; the menus and bars stay this frame's own.
GwFrame& GwFrame::operator=(GwFrame const& other) {
    if (this == &other)
        return *this;
    GwWindow::operator=(other);
    mMenuStyle = other.mMenuStyle;
    *mResource = *other.mResource;
    mStatusWindow = other.mStatusWindow;
    mId = other.mId;
    mCurrentMenu = other.mCurrentMenu;
    if (mClient != other.mClient) {
        if (mClient != nullptr)
            mClient->removeEvent(this);
        mClient = other.mClient;
        if (mClient != nullptr)
            mClient->addEvent(this);
    }
    mHelpFile = other.mHelpFile;
    mHelpFunctor = other.mHelpFunctor;
    mOwner = other.mOwner;
    return *this;
}

GwFrame::~GwFrame() {
    delete mResource;
    mResource = nullptr;
    if (mClient != nullptr)
        mClient->removeEvent(this);
    mClient = nullptr;
    if (mBars != nullptr) {
        for (std::int32_t i = 0; i < mBars->count(); ++i)
            delete mBars->at(i);
        delete mBars;
        mBars = nullptr;
    }
    if (mMenuBar != nullptr) {
        if (mHandle != nullptr)
            SetMenu(hwndOf(mHandle), nullptr);
        if (mMenuCache != nullptr) {
            mMenuCache->remove(mMenuBar);
            mMenuCache->compact();
        }
        delete mMenuBar;
        mMenuBar = nullptr;
    }
    if (mMenuCache != nullptr) {
        for (std::int32_t i = 0; i < mMenuCache->count(); ++i)
            delete mMenuCache->at(i);
        delete mMenuCache;
        mMenuCache = nullptr;
    }
    delete mPopupStack;
    mPopupStack = nullptr;
    mCurrentMenu = nullptr;
    WinHelpA(hwndOf(mHandle), nullptr, HELP_QUIT, 0);
    if (mOwner != nullptr && IsWindow(hwndOf(mOwner)))
        SetForegroundWindow(hwndOf(mOwner));
}

GwFrame* GwFrame::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwFrame(handle) : nullptr;
}

// Type 2 tells of an object's end: the client is forgotten, a control bar loses its records
// (a status bar also its window), any other object leaves the menu cache, and an event
// handler is detached as the window base does it.
void GwFrame::receiveEvent(Object* sender, Event const& event, EventData const* data) {
    if (event.type() == GwEventHandlerGone && sender != nullptr) {
        if (sender == mClient) {
            mClient = nullptr;
            return;
        }
        if (forgetBar(sender))
            return;
        if (mMenuCache != nullptr) {
            for (std::int32_t i = 0; i < mMenuCache->count(); ++i) {
                GwMenu* const cached = mMenuCache->at(i);
                if (cached != nullptr && static_cast<Object*>(cached) == sender) {
                    mMenuCache->remove(cached);
                    mMenuCache->compact();
                    break;
                }
            }
        }
    }
    GwWindow::receiveEvent(sender, event, data);
}

GwFrame& GwFrame::setId(unsigned long long id) {
    mId = id;
    if (isChild(hwndOf(mHandle)))
        SetWindowLongPtrA(hwndOf(mHandle), GWLP_ID, static_cast<LONG_PTR>(id));
    return *this;
}

unsigned long long GwFrame::id() const {
    return mId;
}

GwFrame& GwFrame::setVisible(bool visible) {
    HWND const hwnd = hwndOf(mHandle);
    if (visible) {
        if (mMenuBar != nullptr)
            SetMenu(hwnd, static_cast<HMENU>(mMenuBar->window()));
        DrawMenuBar(hwnd);
        if (mBars != nullptr)
            layout();
        SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
        SetForegroundWindow(hwnd);
    } else {
        SetWindowPos(hwnd, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
        if (mOwner != nullptr && IsWindow(hwndOf(mOwner)))
            SetForegroundWindow(hwndOf(mOwner));
    }
    ShowWindow(hwnd, visible ? SW_SHOW : SW_HIDE);
    return *this;
}

GwFrame& GwFrame::add(GwItem const&) {
    return *this;
}

GwFrame& GwFrame::add(GwEventHandler* handler) {
    GwWindow::add(handler);
    return *this;
}

GwFrame& GwFrame::remove(GwItem const&) {
    return *this;
}

GwFrame& GwFrame::remove(GwEventHandler* handler) {
    GwWindow::remove(handler);
    return *this;
}

bool GwFrame::forgetBar(Object const* sender) {
    bool found = false;
    if (mBars != nullptr) {
        for (std::int32_t i = 0; i < mBars->count(); ++i) {
            GwBar* const record = mBars->at(i);
            if (record == nullptr || static_cast<Object const*>(record->bar) != sender)
                continue;
            // A bar that goes with its window has already let go of the handle.
            if (mStatusWindow != nullptr &&
                (record->bar->window() == mStatusWindow || !IsWindow(hwndOf(mStatusWindow))))
                mStatusWindow = nullptr;
            mBars->remove(record);
            delete record;
            found = true;
        }
    }
    return found;
}

GwFrame& GwFrame::add(GwControlBar* bar, GwWindow::eAlignment side) {
    if (bar != nullptr) {
        if (mBars == nullptr)
            mBars = new GwObjectTable<GwBar>(4);
        mBars->add(new GwBar{bar, side});
        bar->addEvent(this); // its end removes its records
    }
    SendMessageA(hwndOf(mHandle), gGwWM_Message, GwCodeLayout, 0);
    return *this;
}

GwFrame& GwFrame::remove(GwControlBar* bar) {
    if (mBars != nullptr) {
        for (GwObjectTableIterator<GwBar> next(mBars); GwBar* record = next();) {
            if (record->bar == bar) {
                mBars->remove(record);
                delete record;
                break;
            }
        }
        bool stillStacked = false;
        for (GwObjectTableIterator<GwBar> next(mBars); GwBar* record = next();)
            stillStacked = stillStacked || record->bar == bar;
        if (bar != nullptr && !stillStacked)
            bar->removeEvent(this);
    }
    SendMessageA(hwndOf(mHandle), gGwWM_Message, GwCodeLayout, 0);
    return *this;
}

GwFrame& GwFrame::setClient(GwWindow* client) {
    if (mClient != nullptr)
        mClient->removeEvent(this);
    mClient = client;
    if (mClient != nullptr)
        mClient->addEvent(this);
    HWND const hwnd = hwndOf(mHandle);
    SendMessageA(hwnd, gGwWM_Message, GwCodeLayout, 0);
    if (hwnd != nullptr && GetFocus() == hwnd && mClient != nullptr)
        SetFocus(hwndOf(mClient->window()));
    return *this;
}

GwWindow* GwFrame::client() const {
    return mClient;
}

GwFrame& GwFrame::setStatusBar(GwStatusBar* bar) {
    if (mStatusWindow != nullptr) {
        GwWindow* const old = GwWindow::window(mStatusWindow, false);
        if (auto* oldBar = dynamic_cast<GwControlBar*>(old))
            remove(oldBar);
        DestroyWindow(hwndOf(mStatusWindow));
        mStatusWindow = nullptr;
    }
    if (bar != nullptr) {
        add(bar, eBottom);
        mStatusWindow = bar->window();
    }
    return *this;
}

GwStatusBar* GwFrame::statusBar() const {
    return dynamic_cast<GwStatusBar*>(GwWindow::window(mStatusWindow, false));
}

// Bars take their room in record order, each from what the earlier ones left; the walk
// ends at the first empty record. Once the room is used up, the remaining bars and the
// client get an empty rectangle.
void GwFrame::layout() {
    HWND const hwnd = hwndOf(mHandle);
    if (mBars == nullptr && mClient == nullptr)
        return;
    int count = mClient != nullptr ? 1 : 0;
    if (mBars != nullptr) {
        for (std::int32_t i = 0; i < mBars->count(); ++i) {
            if (mBars->at(i) != nullptr)
                ++count;
        }
    }
    HDWP positions = BeginDeferWindowPos(count);
    if (positions == nullptr)
        return;
    RECT room{};
    GetClientRect(hwnd, &room);
    long left = room.left, top = room.top, right = room.right, bottom = room.bottom;
    UINT const flags = SWP_NOZORDER | SWP_NOACTIVATE;

    for (GwObjectTableIterator<GwBar> next(mBars); GwBar* record = next();) {
        long x = 0, y = 0, width = 0, height = 0;
        switch (record->side) {
        case eTop:
        case eBottom:
            if (top < bottom) {
                height = record->bar
                             ->calculate(GwControlBar::eHorizontal, static_cast<int>(right - left),
                                         nullptr)
                             .height();
                width = right - left;
                x = left;
                long const oldBottom = bottom;
                if (record->side == eTop) {
                    y = top;
                    top += height;
                } else {
                    bottom -= height;
                }
                if (top > bottom)
                    height += bottom - top;
                if (record->side == eBottom)
                    y = oldBottom - height;
            }
            break;
        case eRight:
        case eLeft:
            if (left < right) {
                width = record->bar
                            ->calculate(GwControlBar::eVertical, static_cast<int>(bottom - top),
                                        nullptr)
                            .width();
                height = bottom - top;
                y = top;
                long const oldRight = right;
                if (record->side == eLeft) {
                    x = left;
                    left += width;
                } else {
                    right -= width;
                }
                if (left > right)
                    width += right - left;
                if (record->side == eRight)
                    x = oldRight - width;
            }
            break;
        default:
            break;
        }
        if (HWND const barWindow = hwndOf(record->bar->window())) {
            positions = DeferWindowPos(positions, barWindow, nullptr, static_cast<int>(x),
                                       static_cast<int>(y), static_cast<int>(width),
                                       static_cast<int>(height), flags);
            if (positions == nullptr)
                return; // the platform dropped the whole batch
        }
    }

    if (mClient != nullptr) {
        if (HWND const clientWindow = hwndOf(mClient->window())) {
            bool const none = top > bottom || left > right;
            positions = DeferWindowPos(
                positions, clientWindow, nullptr, none ? 0 : static_cast<int>(left),
                none ? 0 : static_cast<int>(top), none ? 0 : static_cast<int>(right - left),
                none ? 0 : static_cast<int>(bottom - top), flags);
            if (positions == nullptr)
                return;
        }
    }
    EndDeferWindowPos(positions);
}

GwFrame& GwFrame::setIcon(unsigned long long iconId, GwResource const& res) {
    HMODULE const module = static_cast<HMODULE>(res.module());
    if (module == nullptr)
        return *this;
    HICON const icon = LoadIconA(module, MAKEINTRESOURCEA(iconId));
    auto const previous = reinterpret_cast<HICON>(
        SendMessageA(hwndOf(mHandle), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon)));
    if (previous != nullptr)
        DestroyIcon(previous);
    return *this;
}

GwFrame& GwFrame::setResource(GwResource const& resource) {
    *mResource = resource;
    return *this;
}

GwFrame& GwFrame::setBorderStyle(eBorderStyle style) {
    HWND const hwnd = hwndOf(mHandle);
    LONG windowStyle = styleOf(hwnd) & ~kBorderBits;
    LONG extendedStyle = extendedStyleOf(hwnd) & ~WS_EX_DLGMODALFRAME;
    switch (style) {
    case eSizingBorder:
        windowStyle |= WS_CAPTION | WS_THICKFRAME;
        break;
    case eDialogBorder:
        windowStyle |= WS_CAPTION;
        extendedStyle |= WS_EX_DLGMODALFRAME;
        break;
    case eCaptionOnly:
        windowStyle |= WS_CAPTION;
        break;
    default:
        break;
    }
    SetWindowLongA(hwnd, GWL_STYLE, windowStyle);
    SetWindowLongA(hwnd, GWL_EXSTYLE, extendedStyle);
    invalidate();
    return *this;
}

GwFrame& GwFrame::setFrameStyle(eFrameStyle flag, bool on) {
    HWND const hwnd = hwndOf(mHandle);
    int index = GWL_STYLE;
    LONG bit = 0;
    switch (flag) {
    case eContextHelp:
        index = GWL_EXSTYLE;
        bit = WS_EX_CONTEXTHELP;
        break;
    case eTaskBarButton:
        index = GWL_EXSTYLE;
        bit = WS_EX_APPWINDOW;
        break;
    case eMaximizeBox:
    case eMinimizeBox:
    case eSystemMenu:
        bit = static_cast<LONG>(flag);
        break;
    default:
        return *this;
    }
    LONG const old = GetWindowLongA(hwnd, index);
    SetWindowLongA(hwnd, index, on ? old | bit : old & ~bit);
    return *this;
}

GwFrame& GwFrame::setFrameStyle(int flags) {
    HWND const hwnd = hwndOf(mHandle);
    auto const bits = static_cast<unsigned long>(static_cast<unsigned int>(flags));
    LONG const windowStyle = (styleOf(hwnd) & ~kBoxBits) | static_cast<LONG>(bits & 0xFFFF0000ul);
    // The low word moves up by 3 bits: 0x8000 lands on WS_EX_APPWINDOW, 0x800 on 0x4000.
    LONG const extendedStyle =
        (extendedStyleOf(hwnd) & ~kExtendedFrameBits) | static_cast<LONG>((bits & 0xFFFFul) << 3);
    SetWindowLongA(hwnd, GWL_STYLE, windowStyle);
    SetWindowLongA(hwnd, GWL_EXSTYLE, extendedStyle);
    return *this;
}

GwFrame& GwFrame::setDropFilesEnabled(bool on) {
    HWND const hwnd = hwndOf(mHandle);
    SetWindowLongA(hwnd, GWL_EXSTYLE, extendedStyleOf(hwnd) | WS_EX_ACCEPTFILES);
    DragAcceptFiles(hwnd, on ? TRUE : FALSE);
    return *this;
}

long long GwFrame::msgHandlerCode(unsigned long long code, long long lParam) {
    HWND const status = hwndOf(mStatusWindow);
    switch (code) {
    case GwCodeLayout:
        layout();
        return 0;
    case GwCodePreTranslate:
        if (mClient == nullptr)
            return 0;
        return SendMessageA(hwndOf(mClient->window()), gGwWM_Message, GwCodePreTranslate,
                            static_cast<LPARAM>(lParam));
    case GwCodeContextHelp:
    case GwCodeHelp:
        gHelpMode = static_cast<unsigned int>(code);
        return 0;
    case GwCodeHelpFile:
        gHelpMode = GwCodeHelpFile;
        SendMessageA(hwndOf(mHandle), WM_HELP, 0, 0);
        return 0;
    case GwCodeStatusId:
        msgHandlerStatusText(static_cast<unsigned long long>(lParam) & 0xFFFF);
        return 0;
    case GwCodeStatusText:
        if (status != nullptr)
            SendMessageA(status, SB_SETTEXTA, 0x1FF, static_cast<LPARAM>(lParam));
        return 0;
    case GwCodeStatusSimple:
        if (status != nullptr) {
            if (lParam == 0) {
                SendMessageA(status, SB_SETTEXTA, 0x1FF, reinterpret_cast<LPARAM>(""));
                SendMessageA(status, SB_SIMPLE, FALSE, 0);
            } else {
                SendMessageA(status, SB_SIMPLE, TRUE, 0);
            }
        }
        return 0;
    default:
        return GwWindow::msgHandler(gGwWM_Message, code, lParam);
    }
}

long long GwFrame::msgHandler(unsigned long long msg, unsigned long long wParam, long long lParam) {
    if (msg == gGwWM_Message && gGwWM_Message != 0)
        return msgHandlerCode(wParam, lParam);

    switch (msg) {
    case WM_SETFOCUS:
        if (mClient != nullptr) {
            SetFocus(hwndOf(mClient->window()));
            return 0;
        }
        break;
    case WM_CLOSE:
        // Closing a frame that no handler keeps ends the message loop.
        if (dispatchEvent(WM_CLOSE, 0, 0) == 0)
            PostQuitMessage(0);
        return 0;
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSCHAR:
        if (mClient != nullptr)
            return SendMessageA(hwndOf(mClient->window()), static_cast<UINT>(msg),
                                static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam));
        if (dispatchEvent(msg, wParam, lParam) != 0)
            return 1;
        break;
    case WM_COMMAND:
        if (lParam == 0)
            return msgHandlerMenu(msg, wParam, lParam);
        if (lParam != 1)
            dispatchEvent(msg, wParam, lParam);
        return 0;
    case WM_INITMENUPOPUP:
    case WM_MENUSELECT:
    case WM_MENUCHAR:
    case WM_ENTERMENULOOP:
    case WM_EXITMENULOOP:
        return msgHandlerMenu(msg, wParam, lParam);
    case WM_HELP:
        return msgHandlerHelp(reinterpret_cast<void const*>(lParam));
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
        // Whatever control the mouse was over has been left.
        dispatchEvent(WM_NCMOUSEMOVE, 0, 0);
        break;
    case WM_WINDOWPOSCHANGED: {
        auto const* position = reinterpret_cast<WINDOWPOS const*>(lParam);
        if (position != nullptr && (position->flags & SWP_NOSIZE) == 0)
            layout();
        break;
    }
    case WM_PARENTNOTIFY:
        // The client's end: its window is going, or its object already let go of it.
        if (LOWORD(wParam) == WM_DESTROY && mClient != nullptr &&
            (mClient->window() == reinterpret_cast<void*>(lParam) ||
             mClient->window() == nullptr)) {
            mClient->removeEvent(this);
            mClient = nullptr;
        }
        break;
    default:
        break;
    }
    return GwWindow::msgHandler(msg, wParam, lParam);
}
