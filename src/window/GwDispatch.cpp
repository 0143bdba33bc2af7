// Turning window messages into calls of the attached event handlers.
#include "GwWindow.h"

#include <windows.h>

#include <vector>

#include "GwEventHandler.h"
#include "GwGC.h"
#include "GwMessages.h"

// Walks a window's handlers, most recently added first.
class GwDispatcher {
public:
    // Calls `call` on each handler of `window` from the highest slot down, until a result
    // carries the stop flag; an empty slot ends the walk. A handler removed by an earlier
    // callback of the same walk is not called, and the walk ends when the window is destroyed
    // (a walk begun after that calls nobody).
    template <class Call> static int visit(GwWindow& window, Call call) {
        GwObjectTable<GwEventHandler> const* table = window.mHandlers;
        if (table == nullptr)
            return 0;
        // Callbacks may add and remove handlers: walk a snapshot of the slots.
        GwEventHandler* local[8];
        std::vector<GwEventHandler*> more;
        std::int32_t count = 0;
        for (std::int32_t i = table->count() - 1; i >= 0; --i) {
            GwEventHandler* handler = table->at(i);
            if (handler == nullptr)
                break;
            if (count < 8) {
                local[count] = handler;
            } else {
                if (more.empty())
                    more.assign(local, local + 8);
                more.push_back(handler);
            }
            ++count;
        }
        GwEventHandler* const* slots = count <= 8 ? local : more.data();
        int result = 0;
        for (std::int32_t i = 0; i < count; ++i) {
            if (window.mDestroyed)
                break;
            if (i > 0 && (window.mHandlers == nullptr || !window.mHandlers->contains(slots[i])))
                continue;
            int one = call(*slots[i]);
            result |= one;
            if ((one & GwResultStop) != 0)
                break;
        }
        return result;
    }

    static bool destroyed(GwWindow const& window) { return window.mDestroyed; }

    // Tells the entered window that the mouse left it.
    static void leave(GwWindow* entered) { GwWindow::deliver(entered, GwMsgLeave, 0, 0, true); }
};

namespace {

using Msg = unsigned long long;

long long handled(int result) {
    return (result & GwResultHandled) != 0 ? 1 : 0;
}

unsigned int const kShift = 0x1000000;
unsigned int const kAlt = 0x2000000;
unsigned int const kControl = 0x4000000;
unsigned int const kCharacter = 0x10000000;
unsigned int const kKeyCode = 0x20000000;

unsigned int keyModifiers() {
    unsigned int state = 0;
    if (GetKeyState(VK_SHIFT) < 0)
        state |= kShift;
    if (GetKeyState(VK_CONTROL) < 0)
        state |= kControl;
    return state;
}

unsigned int mouseModifiers(Msg wParam) {
    unsigned int state = 0;
    if ((wParam & MK_SHIFT) != 0)
        state |= kShift;
    if ((wParam & MK_CONTROL) != 0)
        state |= kControl;
    if (GetKeyState(VK_MENU) < 0)
        state |= kAlt;
    return state;
}

// The library's key code of a virtual key; 0 for keys that produce no event.
unsigned int keyCode(Msg virtualKey) {
    switch (virtualKey) {
    case VK_BACK:
        return 1;
    case VK_CLEAR:
        return 2;
    case VK_DELETE:
        return 3;
    case VK_DOWN:
        return 4;
    case VK_END:
        return 5;
    case VK_ESCAPE:
        return 7;
    case VK_HOME:
        return 32;
    case VK_INSERT:
        return 33;
    case VK_LEFT:
        return 34;
    case VK_RETURN:
        return 35;
    case VK_NEXT:
        return 36;
    case VK_PRIOR:
        return 37;
    case VK_PRINT:
        return 38;
    case VK_RIGHT:
        return 39;
    case VK_SPACE:
        return 40;
    case VK_TAB:
        return 42;
    case VK_UP:
        return 43;
    default:
        if (virtualKey >= VK_F1 && virtualKey <= VK_F24)
            return static_cast<unsigned int>(virtualKey - VK_F1) + 8;
        return 0;
    }
}

// Mouse button messages: which click timer, and the state bit of each message.
struct ButtonMessage {
    Msg message;
    UINT_PTR timer;   // 0: no timer to start or stop
    bool down;        // starts the timer
    bool up;          // stops it and posts the click
    Msg click;        // the click message posted on a quick release
    unsigned int bit; // state bit
};

ButtonMessage const kButtons[] = {
    {WM_LBUTTONDOWN, 1, true, false, GwMsgLeftClick, 0x2},
    {WM_LBUTTONUP, 1, false, true, GwMsgLeftClick, 0x1},
    {WM_LBUTTONDBLCLK, 0, false, false, 0, 0x8},
    {GwMsgLeftClick, 0, false, false, 0, 0x4},
    {WM_RBUTTONDOWN, 2, true, false, GwMsgRightClick, 0x20},
    {WM_RBUTTONUP, 2, false, true, GwMsgRightClick, 0x10},
    {WM_RBUTTONDBLCLK, 0, false, false, 0, 0x80},
    {GwMsgRightClick, 0, false, false, 0, 0x40},
    {WM_MBUTTONDOWN, 3, true, false, GwMsgMiddleClick, 0x200},
    {WM_MBUTTONUP, 3, false, true, GwMsgMiddleClick, 0x100},
    {WM_MBUTTONDBLCLK, 0, false, false, 0, 0x800},
    {GwMsgMiddleClick, 0, false, false, 0, 0x400},
};

ButtonMessage const* buttonMessage(Msg msg) {
    for (ButtonMessage const& button : kButtons) {
        if (button.message == msg)
            return &button;
    }
    return nullptr;
}

Class const* frameRecord() {
    static Class const* const record = Class::lookup("GwFrame");
    return record;
}

} // namespace

long long GwWindow::dispatchEvent(unsigned long long msg, unsigned long long wParam,
                                  long long lParam) {
    HWND hwnd = static_cast<HWND>(mHandle);

    switch (msg) {
    case WM_DRAWITEM: {
        auto const* item = reinterpret_cast<DRAWITEMSTRUCT const*>(lParam);
        if (item != nullptr && item->hwndItem != hwnd && window(item->hwndItem, false) != nullptr)
            return SendMessageA(item->hwndItem, GwMsgDrawItem, static_cast<WPARAM>(wParam),
                                static_cast<LPARAM>(lParam));
        break;
    }
    case WM_NCMOUSEMOVE:
        if (mEnterWindow != nullptr && mEnterWindow != this) {
            GwDispatcher::leave(mEnterWindow);
            mEnterWindow = nullptr;
        }
        break;
    case WM_COMMAND: {
        auto control = reinterpret_cast<HWND>(lParam);
        if (control != nullptr && window(control, false) != nullptr)
            return SendMessageA(control, GwMsgCommand, static_cast<WPARAM>(wParam),
                                static_cast<LPARAM>(lParam));
        break;
    }
    case WM_MOUSEMOVE:
        if (mEnterWindow != this) {
            if (mEnterWindow != nullptr) {
                GwDispatcher::leave(mEnterWindow);
                mEnterWindow = nullptr;
            }
            // Frames never become the entered window.
            if (!isA()->isSubclassOf(frameRecord()))
                dispatchEvent(GwMsgEnter, 0, 0);
        }
        break;
    default:
        break;
    }

    GwWindow& self = *this;
    switch (msg) {
    case WM_SETFOCUS:
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbFocusIn(self); });
        return 0;
    case WM_KILLFOCUS:
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbFocusOut(self); });
        return 0;
    case WM_PAINT: {
        auto* gc = reinterpret_cast<GwGC*>(wParam);
        if (gc == nullptr)
            return 0;
        auto flags = static_cast<unsigned int>(lParam);
        return handled(GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbExpose(self, *gc, flags); }));
    }
    case WM_CLOSE:
        return handled(
            GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbClose(self); }));
    case WM_SHOWWINDOW:
        if (wParam == 1)
            GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbShow(self); });
        else
            GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbHide(self); });
        return 0;
    case WM_WINDOWPOSCHANGED: {
        // Hide until a handler says stop; the handlers after it are asked to show.
        bool hiding = true;
        GwDispatcher::visit(self, [&](GwEventHandler& h) {
            int result = hiding ? h.cbHide(self) : h.cbShow(self);
            if (hiding && (result & GwResultStop) != 0) {
                hiding = false;
                return result & ~GwResultStop;
            }
            return result;
        });
        auto const* position = reinterpret_cast<WINDOWPOS const*>(lParam);
        if (position == nullptr || (position->flags & SWP_NOSIZE) != 0)
            return 0;
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbResize(self); });
        if (!GwDispatcher::destroyed(self))
            sendEvent(Event(GwEventWindowResized), nullptr, true);
        return 0;
    }
    case WM_NCDESTROY:
        return handled(
            GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbDestroy(self); }));
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
        unsigned int code = keyCode(wParam);
        if (code == 0)
            return 0;
        unsigned int state = kKeyCode | keyModifiers() | (msg == WM_SYSKEYDOWN ? kAlt : 0);
        return handled(GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbKey(self, code, state); }));
    }
    case WM_CHAR:
    case WM_SYSCHAR: {
        unsigned int character = LOWORD(wParam);
        unsigned int state = kCharacter | keyModifiers() | (msg == WM_SYSCHAR ? kAlt : 0);
        return handled(GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbKey(self, character, state); }));
    }
    case WM_TIMER:
        if (wParam >= 1 && wParam <= 3)
            KillTimer(hwnd, static_cast<UINT_PTR>(wParam)); // a press too long for a click
        else
            GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbTimer(self); });
        return 0;
    case WM_MOUSEMOVE: {
        GwPosition position(static_cast<short>(LOWORD(lParam)),
                            translateY(static_cast<short>(HIWORD(lParam)), false));
        unsigned int state = mouseModifiers(wParam);
        GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbMouseMove(self, position, state); });
        return 0;
    }
    case WM_MOUSEWHEEL: {
        POINT point{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        MapWindowPoints(nullptr, hwnd, &point, 1);
        GwPosition position(point.x, translateY(point.y, false));
        unsigned int state = mouseModifiers(wParam);
        if ((wParam & MK_LBUTTON) != 0)
            state |= 0x2;
        if ((wParam & MK_RBUTTON) != 0)
            state |= 0x20;
        if ((wParam & MK_MBUTTON) != 0)
            state |= 0x200;
        int delta = static_cast<short>(HIWORD(wParam));
        GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbMouseWheel(self, position, state, delta); });
        return 0;
    }
    case GwMsgDrawItem:
        // Each handler paints through a context of its own on this window.
        return handled(GwDispatcher::visit(self, [&](GwEventHandler& h) {
            GwGC gc(this, nullptr);
            return h.cbExpose(self, gc, 0);
        }));
    case GwMsgEnter:
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbEnter(self); });
        mEnterWindow = this;
        return 0;
    case GwMsgLeave: {
        GwWindow& left = mEnterWindow != nullptr ? *mEnterWindow : self;
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbLeave(left); });
        mEnterWindow = nullptr;
        return 0;
    }
    case GwMsgCommand:
    case GwMsgActivate:
    case GwMsgSelect:
    case GwMsgValue: {
        GwWindow* top = root(false);
        return top != nullptr && top->dispatchFrameEvent(msg, LOWORD(wParam), this, nullptr) ? 1
                                                                                             : 0;
    }
    case GwMsgFrameEvent:
        return dispatchFrameEvent(msg, LOWORD(wParam), reinterpret_cast<GwWindow*>(lParam), nullptr)
                   ? 1
                   : 0;
    case GwMsgNotify: {
        unsigned int code = LOWORD(wParam);
        GwDispatcher::visit(self, [&](GwEventHandler& h) { return h.cbNotify(self, code); });
        return 0;
    }
    default:
        break;
    }

    if (ButtonMessage const* button = buttonMessage(msg)) {
        if (button->down)
            SetTimer(hwnd, button->timer, 200, nullptr);
        if (button->up && KillTimer(hwnd, button->timer))
            PostMessageA(hwnd, static_cast<UINT>(button->click), static_cast<WPARAM>(wParam),
                         static_cast<LPARAM>(lParam)); // released within 200 ms: a click
        GwPosition position(static_cast<short>(LOWORD(lParam)),
                            translateY(static_cast<short>(HIWORD(lParam)), false));
        unsigned int state = button->bit | mouseModifiers(wParam);
        return handled(GwDispatcher::visit(
            self, [&](GwEventHandler& h) { return h.cbButton(self, position, state); }));
    }
    return 0;
}

bool GwWindow::dispatchFrameEvent(unsigned long long msg, int wParamLow, GwWindow* source,
                                  GwWindow* extra) {
    if (source == nullptr)
        source = this;
    GwWindow& argument = *source;
    auto call = [&](GwEventHandler& h) -> int {
        switch (msg) {
        case GwMsgCommand:
        case GwMsgActivate:
            return h.cbActivate(argument);
        case GwMsgSelect:
            return h.cbSelect(argument);
        case GwMsgValue:
            return h.cbValue(argument, static_cast<unsigned int>(wParamLow));
        case GwMsgFrameEvent:
            switch (wParamLow) {
            case 0:
                return h.cbShow(argument);
            case 1:
                return h.cbHide(argument);
            case 2:
                return h.cbActivate(argument);
            default:
                return 0;
            }
        default:
            return 0;
        }
    };
    int const stopBubbling = GwResultHandled | GwResultNoBubble;
    int result = GwDispatcher::visit(*source, call);
    if (extra != nullptr && (result & stopBubbling) == 0)
        result |= GwDispatcher::visit(*extra, call);
    if ((result & stopBubbling) == 0)
        result |= GwDispatcher::visit(*this, call);
    return (result & GwResultHandled) != 0;
}
