#include "GwWindow.h"

#include <windows.h>

#include <commctrl.h>

#include "GwEventHandler.h"
#include "GwMessages.h"
#include "GwThisDll.h"
#include "GwUserData.h"
#include "GwWindowClass.h"

unsigned int GwWindow::gGwWM_Message = 0;
bool GwWindow::m_bWin98_2000_ME = false;
GwWindow* GwWindow::mEnterWindow = nullptr;
GwWindow::GwRegister GwWindow::gStartup;

GW_CLASS_NONE(GwWindow, "GwWindow", "GwObject")

namespace {

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

// The window procedure installed in every bound window; gMsgHandler in Win32's form.
LRESULT CALLBACK libraryWindowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    return GwWindow::gMsgHandler(hwnd, msg, wParam, lParam);
}

LONG_PTR const kLibraryProc = reinterpret_cast<LONG_PTR>(&libraryWindowProc);

GwWindow* boundObject(HWND hwnd) {
    return reinterpret_cast<GwWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
}

bool isChild(HWND hwnd) {
    return (GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD) != 0;
}

// The window whose client area a window's position is measured in: its parent for a child
// window, none (the screen) for a top-level one.
HWND coordinateParent(HWND hwnd) {
    return hwnd != nullptr && isChild(hwnd) ? GetParent(hwnd) : nullptr;
}

// The window rectangle in the coordinates of coordinateParent (the screen without one).
RECT rectangleInParent(HWND hwnd) {
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    if (HWND parent = coordinateParent(hwnd))
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

} // namespace

bool GwWindow::GwRegister::initInstance() {
    gGwWM_Message = RegisterWindowMessageA("GwWM_Message");
    m_bWin98_2000_ME = true;
    return true;
}

bool GwWindow::GwRegister::exitInstance() {
    return true;
}

GwWindow::GwWindow()
    : mHandle(nullptr), mPrevProc(nullptr), mHandlers(nullptr), mUserData(nullptr),
      mCursor(nullptr) {}

GwWindow::GwWindow(void* hwnd) : GwWindow() {
    attach(hwnd);
}

// A copy is a window object of its own: it gets no handle, handlers or cursor.
GwWindow::GwWindow(GwWindow const& other) : GwWindow() {
    mText = other.mText;
    mUserData = other.mUserData;
}

// Memberwise: afterwards both objects name the same window.
GwWindow& GwWindow::operator=(GwWindow const& other) {
    if (this != &other) {
        mHandle = other.mHandle;
        mText = other.mText;
        mPrevProc = other.mPrevProc;
        mUserData = other.mUserData;
    }
    return *this;
}

GwWindow::~GwWindow() {
    if (mEnterWindow == this)
        mEnterWindow = nullptr;
    if (mHandlers != nullptr) {
        GwObjectTable<GwEventHandler>* handlers = mHandlers;
        mHandlers = nullptr;
        for (std::int32_t i = 0; i < handlers->count(); ++i) {
            if (GwEventHandler* handler = handlers->at(i)) {
                handler->removeEvent(this);
                handler->release();
            }
        }
        delete handlers;
    }
    if (mCursor != nullptr)
        DeleteObject(mCursor);
    if (mHandle != nullptr) {
        HWND hwnd = hwndOf(mHandle);
        GwWindow::setMsgHandler(false);
        GwWindow::setWindow(true);
        DestroyWindow(hwnd);
    }
}

void GwWindow::attach(void* hwnd) {
    if (hwnd == nullptr)
        return;
    // A window that another object subclassed already: keep the procedure that object
    // saved, so that gMsgHandler never calls itself.
    GwWindow* before = boundObject(hwndOf(hwnd));
    mHandle = hwnd;
    GwWindow::setWindow(false);
    if (mPrevProc == nullptr && before != nullptr && before != this &&
        GetWindowLongPtrA(hwndOf(hwnd), GWLP_WNDPROC) == kLibraryProc)
        mPrevProc = before->mPrevProc;
    GwWindow::setMsgHandler(true);
}

GwWindow& GwWindow::setWindow(bool release) {
    if (mHandle == nullptr)
        return *this;
    if (release) {
        SetWindowLongPtrA(hwndOf(mHandle), GWLP_USERDATA, 0);
        mHandle = nullptr;
    } else {
        SetWindowLongPtrA(hwndOf(mHandle), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    return *this;
}

GwWindow& GwWindow::setMsgHandler(bool install) {
    if (mHandle == nullptr)
        return *this;
    HWND hwnd = hwndOf(mHandle);
    if (install) {
        if (mPrevProc == nullptr) {
            LONG_PTR current = GetWindowLongPtrA(hwnd, GWLP_WNDPROC);
            mPrevProc = reinterpret_cast<void*>(
                current == kLibraryProc ? reinterpret_cast<LONG_PTR>(&DefWindowProcA) : current);
        }
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, kLibraryProc);
    } else if (mPrevProc != nullptr) {
        SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(mPrevProc));
        mPrevProc = nullptr;
    }
    return *this;
}

GwWindow* GwWindow::window(void* hwnd, bool create) {
    if (hwnd == nullptr)
        return nullptr;
    GwWindow* object = boundObject(hwndOf(hwnd));
    if (object == nullptr && create)
        object = GwWindowClass::createChild(hwnd);
    return object;
}

GwWindow& GwWindow::window(void* hwnd) {
    static GwWindow none;
    if (hwnd == nullptr)
        DebugBreak();
    GwWindow* object = window(hwnd, true);
    return object != nullptr ? *object : none;
}

long long GwWindow::gMsgHandler(void* hwnd, unsigned long long msg, unsigned long long wParam,
                                long long lParam) {
    GwWindow* object = boundObject(hwndOf(hwnd));
    if (object == nullptr) {
        // A window with the library's procedure but no object: a library fault.
        DebugBreak();
        return 0;
    }
    return deliver(object, msg, wParam, lParam, false);
}

long long GwWindow::deliver(GwWindow* object, unsigned long long msg, unsigned long long wParam,
                            long long lParam, bool dispatchOnly) {
    ++object->mBusy;
    long long result = dispatchOnly ? object->dispatchEvent(msg, wParam, lParam)
                                    : object->msgHandler(msg, wParam, lParam);
    if (--object->mBusy == 0 && object->mDestroyed)
        delete object;
    return result;
}

long long GwWindow::callDefHandler(unsigned long long msg, unsigned long long wParam,
                                   long long lParam) {
    if (mPrevProc == nullptr) {
        if (!mDestroyed)
            DebugBreak();
        return 0;
    }
    return CallWindowProcA(reinterpret_cast<WNDPROC>(mPrevProc), hwndOf(mHandle),
                           static_cast<UINT>(msg), static_cast<WPARAM>(wParam),
                           static_cast<LPARAM>(lParam));
}

long long GwWindow::msgHandler(unsigned long long msg, unsigned long long wParam,
                               long long lParam) {
    switch (msg) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_SHOWWINDOW:
    case WM_WINDOWPOSCHANGED:
    case WM_COMMAND:
    case WM_TIMER:
    case WM_MOUSEMOVE:
    case WM_MOUSEWHEEL:
        dispatchEvent(msg, wParam, lParam);
        break;
    case WM_SETCURSOR:
        if (reinterpret_cast<void*>(wParam) == mHandle && LOWORD(lParam) == HTCLIENT &&
            mCursor != nullptr) {
            SetCursor(static_cast<HCURSOR>(mCursor));
            return 1;
        }
        break;
    case WM_DRAWITEM:
    case GwMsgDrawItem: // the owner drawing reflected to the item: its handlers paint it
        if (dispatchEvent(msg, wParam, lParam) != 0)
            return 1;
        break;
    case WM_NOTIFY: {
        auto const* header = reinterpret_cast<NMHDR const*>(lParam);
        if (header == nullptr)
            break;
        HWND target = header->hwndFrom;
        int code = static_cast<int>(header->code);
        if (code == -520 || code == -521 || code == -522) {
            // A tool tip speaks for the window of its current tool.
            TTTOOLINFOA tool{};
            tool.cbSize = 72;
            if (SendMessageA(header->hwndFrom, TTM_GETCURRENTTOOLA, 0,
                             reinterpret_cast<LPARAM>(&tool)) != 0)
                target = tool.hwnd;
        }
        if (window(target, false) != nullptr)
            return SendMessageA(target, GwMsgNotifyReflected, static_cast<WPARAM>(wParam),
                                static_cast<LPARAM>(lParam));
        break;
    }
    case WM_NCDESTROY:
        if (mHandle != nullptr) {
            HWND hwnd = hwndOf(mHandle);
            WNDPROC saved = reinterpret_cast<WNDPROC>(mPrevProc);
            dispatchEvent(WM_NCDESTROY, 0, 0);
            exitInstance();
            setMsgHandler(false);
            setWindow(true);
            // Deleted now, or by gMsgHandler when the outermost message of the object ends.
            mDestroyed = true;
            if (mBusy == 0)
                delete this;
            return saved != nullptr
                       ? CallWindowProcA(saved, hwnd, static_cast<UINT>(msg),
                                         static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam))
                       : 0;
        }
        break;
    default:
        if (msg == gGwWM_Message && wParam == GwCodeSetFocus) {
            SetFocus(hwndOf(mHandle));
            return 0;
        }
        break;
    }
    return callDefHandler(msg, wParam, lParam);
}

bool GwWindow::initInstance() {
    return true;
}

bool GwWindow::exitInstance() {
    if (mHandle == nullptr || mPrevProc == nullptr)
        return true;
    HWND hwnd = hwndOf(mHandle);
    HWND last = nullptr;
    while (HWND child = GetWindow(hwnd, GW_CHILD)) {
        if (child == last)
            break; // the child could not be destroyed: do not spin on it
        last = child;
        if (GwWindow* object = boundObject(child))
            delete object;
        else
            DestroyWindow(child);
    }
    return true;
}

void GwWindow::receiveEvent(Object* sender, Event const& event, EventData const* data) {
    if (event.type() == GwEventHandlerGone) {
        if (auto* handler = dynamic_cast<GwEventHandler*>(sender))
            detach(handler, false);
        return;
    }
    GwObject::receiveEvent(sender, event, data);
}

GwWindow& GwWindow::add(GwItem const&) {
    return *this;
}

GwWindow& GwWindow::remove(GwItem const&) {
    return *this;
}

GwWindow& GwWindow::add(GwEventHandler* handler) {
    if (handler == nullptr)
        return *this;
    if (mHandlers == nullptr)
        mHandlers = new GwObjectTable<GwEventHandler>(2);
    mHandlers->add(handler);
    handler->addEvent(this);
    handler->addRef();
    return *this;
}

GwWindow& GwWindow::remove(GwEventHandler* handler) {
    if (handler != nullptr && mHandlers != nullptr)
        detach(handler, true);
    return *this;
}

void GwWindow::detach(GwEventHandler* handler, bool release) {
    if (mHandlers == nullptr)
        return;
    handler->removeEvent(this);
    if (release)
        handler->release(); // may delete the handler: only its address is used below
    mHandlers->remove(handler);
    mHandlers->compact();
    if (mHandlers->count() == 0) {
        delete mHandlers;
        mHandlers = nullptr;
    }
}

GwWindow& GwWindow::setId(unsigned long long id) {
    SetWindowLongPtrA(hwndOf(mHandle), GWLP_ID, static_cast<LONG_PTR>(id));
    return *this;
}

unsigned long long GwWindow::id() const {
    return static_cast<unsigned long long>(GetWindowLongPtrA(hwndOf(mHandle), GWLP_ID));
}

GwWindow& GwWindow::setHelpId(unsigned long long id) {
    SetWindowContextHelpId(hwndOf(mHandle), static_cast<DWORD>(id));
    return *this;
}

unsigned long long GwWindow::helpId() const {
    return GetWindowContextHelpId(hwndOf(mHandle));
}

GwWindow& GwWindow::setParent(GwWindow const* parent) {
    if (parent == this)
        return *this;
    SetParent(hwndOf(mHandle), parent != nullptr ? hwndOf(parent->mHandle) : nullptr);
    return *this;
}

GwWindow* GwWindow::parent() const {
    HWND hwnd = hwndOf(mHandle);
    if (hwnd == nullptr)
        return nullptr;
    HWND parent = isChild(hwnd) ? GetParent(hwnd) : GetWindow(hwnd, GW_OWNER);
    if (parent == nullptr || parent == GetDesktopWindow())
        return nullptr;
    return window(parent, true);
}

GwWindow& GwWindow::setText(String const& text) {
    SetWindowTextA(hwndOf(mHandle), text.c_str());
    mText = text;
    return *this;
}

String const& GwWindow::text() const {
    if (mHandle != nullptr) {
        char buffer[261];
        int length = GetWindowTextA(hwndOf(mHandle), buffer, sizeof buffer);
        mText = String(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    return mText;
}

GwWindow& GwWindow::setVisible(bool visible) {
    ShowWindow(hwndOf(mHandle), visible ? SW_SHOW : SW_HIDE);
    return *this;
}

bool GwWindow::visible() const {
    return IsWindowVisible(hwndOf(mHandle)) != FALSE;
}

GwWindow& GwWindow::setEnabled(bool enabled) {
    EnableWindow(hwndOf(mHandle), enabled ? TRUE : FALSE);
    return *this;
}

bool GwWindow::enabled() const {
    return IsWindowEnabled(hwndOf(mHandle)) != FALSE;
}

int GwWindow::translateY(int y, bool ofParent) const {
    HWND hwnd = hwndOf(mHandle);
    HWND measured = ofParent ? coordinateParent(hwnd) : hwnd;
    if (measured != nullptr) {
        RECT client{};
        GetClientRect(measured, &client);
        return client.bottom - y;
    }
    return GetSystemMetrics(SM_CYSCREEN) - y;
}

GwWindow& GwWindow::setPosition(GwPosition const& position) {
    RECT rect{};
    GetWindowRect(hwndOf(mHandle), &rect);
    int height = rect.bottom - rect.top;
    int top = translateY(static_cast<int>(position.y()) + height, true);
    SetWindowPos(hwndOf(mHandle), nullptr, static_cast<int>(position.x()), top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    return *this;
}

GwPosition GwWindow::position() const {
    RECT rect = rectangleInParent(hwndOf(mHandle));
    return GwPosition(rect.left, translateY(rect.bottom, true));
}

GwWindow& GwWindow::setDimension(GwDimension const& dimension) {
    RECT rect = rectangleInParent(hwndOf(mHandle));
    int width = static_cast<int>(dimension.width());
    int height = static_cast<int>(dimension.height());
    SetWindowPos(hwndOf(mHandle), nullptr, rect.left, rect.bottom - height, width, height,
                 SWP_NOZORDER);
    return *this;
}

GwDimension GwWindow::dimension() const {
    RECT rect{};
    GetWindowRect(hwndOf(mHandle), &rect);
    return GwDimension(rect.right - rect.left, rect.bottom - rect.top);
}

GwWindow& GwWindow::setUpdateEnabled(bool enabled) {
    LockWindowUpdate(nullptr);
    if (!enabled)
        LockWindowUpdate(hwndOf(mHandle));
    return *this;
}

GwWindow& GwWindow::setFocus() {
    HWND hwnd = hwndOf(mHandle);
    if (GetFocus() == hwnd)
        PostMessageA(hwnd, gGwWM_Message, GwCodeSetFocus,
                     0); // set again once the current message is done
    else
        SetFocus(hwnd);
    return *this;
}

GwWindow& GwWindow::startTimer(long milliseconds) {
    SetTimer(hwndOf(mHandle), 0, static_cast<UINT>(milliseconds), nullptr);
    return *this;
}

GwWindow& GwWindow::stopTimer() {
    KillTimer(hwndOf(mHandle), 0);
    return *this;
}

GwPosition GwWindow::translate(GwWindow const* to, GwPosition const& position) const {
    POINT point{static_cast<LONG>(position.x()), translateY(static_cast<int>(position.y()), false)};
    HWND target = to != nullptr ? hwndOf(to->mHandle) : nullptr;
    MapWindowPoints(hwndOf(mHandle), target, &point, 1);
    int y =
        to != nullptr ? to->translateY(point.y, false) : GetSystemMetrics(SM_CYSCREEN) - point.y;
    return GwPosition(point.x, y);
}

GwWindow* GwWindow::root(bool topMost) const {
    HWND hwnd = hwndOf(mHandle);
    if (hwnd == nullptr)
        return nullptr;
    if (topMost) {
        while (HWND parent = GetParent(hwnd))
            hwnd = parent;
    } else {
        while (isChild(hwnd)) {
            HWND parent = GetParent(hwnd);
            if (parent == nullptr)
                break;
            hwnd = parent;
        }
    }
    return window(hwnd, true);
}

GwWindow* GwWindow::child(unsigned long long id) const {
    HWND found = GetDlgItem(hwndOf(mHandle), static_cast<int>(id));
    return found != nullptr ? window(found, true) : nullptr;
}

GwWindow& GwWindow::invalidate() {
    InvalidateRect(hwndOf(mHandle), nullptr, TRUE);
    return *this;
}

GwWindow& GwWindow::update() {
    UpdateWindow(hwndOf(mHandle));
    return *this;
}

void GwWindow::position(long& x, long& y) const {
    GwPosition at = position();
    x = at.x();
    y = at.y();
}

void GwWindow::dimension(long& width, long& height) const {
    GwDimension size = dimension();
    width = size.width();
    height = size.height();
}

void GwWindow::translate(GwWindow const* to, long& x, long& y) const {
    GwPosition at = translate(to, GwPosition(x, y));
    x = at.x();
    y = at.y();
}

GwWindow& GwWindow::setUserData(GwUserData* data) {
    mUserData = data;
    return *this;
}

GwWindow& GwWindow::setCursor(int type) {
    if (mCursor != nullptr)
        DeleteObject(mCursor); // as the library has always released its cursors
    mCursor = nullptr;
    if (type == eNoCursor)
        return *this;
    HCURSOR cursor = nullptr;
    if (type == eLibraryCursor) {
        if (GwThisDll::mCurrent != nullptr)
            cursor = LoadCursorA(static_cast<HINSTANCE>(GwThisDll::mCurrent->module()),
                                 MAKEINTRESOURCEA(100));
    } else {
        cursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(type));
    }
    if (cursor != nullptr) {
        mCursor = cursor;
        SetCursor(cursor);
    }
    return *this;
}

GwWindow& GwWindow::sendMessage(eMessageType type) {
    if (type != eClose)
        return *this;
    // A close that destroys the window deletes the object only after msgHandler returned.
    deliver(this, WM_CLOSE, 0, 0, false);
    return *this;
}

unsigned long long GwWindow::message() {
    return gGwWM_Message;
}

void* GwWindow::instance() {
    return GetModuleHandleA(nullptr);
}

bool GwWindow::getWin98_2000_ME() {
    return m_bWin98_2000_ME;
}

void GwWindow::msgLoop() {
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        HWND top = msg.hwnd;
        while (top != nullptr && isChild(top))
            top = GetParent(top);

        if ((msg.message == WM_KEYDOWN || msg.message == WM_KEYUP) && msg.wParam == VK_F1) {
            // F1 is never translated: it becomes a help request (Shift: context help).
            if (msg.message == WM_KEYDOWN && (msg.lParam & 0xFFFF) == 1 &&
                GetKeyState(VK_CONTROL) >= 0 && top != nullptr)
                SendMessageA(top, gGwWM_Message,
                             GetKeyState(VK_SHIFT) < 0 ? GwCodeContextHelp : GwCodeHelp, 0);
            continue;
        }
        if (msg.message != gGwWM_Message && top != nullptr &&
            SendMessageA(top, gGwWM_Message, GwCodePreTranslate, reinterpret_cast<LPARAM>(&msg)) !=
                0)
            continue; // the top-level window took it
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}
