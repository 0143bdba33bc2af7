// The callbacks that application code attaches to windows.
#pragma once

#include "GwMessages.h"
#include "GwObject.h"

class GwWindow;
class GwGC;
class GwPosition;

// Result flags of the callbacks, OR-ed over the handlers called for one event.
enum : int {
    GwResultContinue = 1, // nothing handled, go on
    GwResultStop = 2,     // no further handler of this window for this event
    GwResultHandled = 4,  // the event is handled; bubbling stops
    GwResultNoBubble = 8  // do not bubble further, without claiming the event
};

// The callbacks that application code attaches to windows: derive from it and override the
// callbacks of the events to answer.
//
// A counted handler belongs to the windows it is attached to: each attachment holds a
// reference and the last release deletes it. An uncounted one belongs to the application.
//
// A window asks its handlers from the last attached to the first; each callback answers
// GwResult flags, OR-ed over the handlers asked. Every callback but cbActivate answers
// GwResultContinue here.
//
// The state word of cbButton, cbMouseMove, cbMouseWheel and cbKey: left button released
// 0x1, pressed (held) 0x2, click 0x4, double-click 0x8; the right button the same shifted
// by 4 bits (0x10 to 0x80), the middle button by 8 bits (0x100 to 0x800); Shift 0x1000000,
// Alt 0x2000000, Control 0x4000000; a key event with a character 0x10000000, with a key
// code 0x20000000. Key codes: Backspace 1, Clear 2, Delete 3, Down 4, End 5, Escape 7,
// F1 to F24 8 to 31, Home 32, Insert 33, Left 34, Return 35, Page Down 36, Page Up 37,
// Print 38, Right 39, Space 40, Tab 42, Up 43; other keys arrive as characters or not at all.
class VMGUI_API GwEventHandler : public GwObject {
    GW_DECLARE_CLASS(GwEventHandler)

public:
    // Tells the windows it is attached to that it is gone (event type 2).
    ~GwEventHandler() override;

    // Counted: the new count. Uncounted: 0, nothing changes.
    long addRef();
    // Counted: the new count, deleting the handler when it drops to 0. Uncounted: 0.
    long release();

    // Whether the reference count governs the handler's life, and the count.
    bool counted() const { return mCounted; }
    long refCount() const { return mRefCount; }

    // Activation of a window: handled (5) for the windows with id 1 or 2 (OK and Cancel),
    // so that those buttons close their dialog; otherwise 1.
    virtual int cbActivate(GwWindow& window);
    // A mouse button went down or up, or clicked (position bottom-up in the window).
    virtual int cbButton(GwWindow& window, GwPosition const& position, unsigned int state);
    // The window is asked to close (WM_CLOSE).
    virtual int cbClose(GwWindow& window);
    // The window is being destroyed.
    virtual int cbDestroy(GwWindow& window);
    // The mouse entered the window.
    virtual int cbEnter(GwWindow& window);
    // The window (or an owner-drawn control) is to be drawn through gc.
    virtual int cbExpose(GwWindow& window, GwGC& gc, unsigned int flags);
    // The window got the keyboard focus.
    virtual int cbFocusIn(GwWindow& window);
    // The window lost the keyboard focus.
    virtual int cbFocusOut(GwWindow& window);
    // The window is being hidden (also the frame's hide event).
    virtual int cbHide(GwWindow& window);
    // A key code or a character, with the state word.
    virtual int cbKey(GwWindow& window, unsigned int key, unsigned int state);
    // The mouse left the window.
    virtual int cbLeave(GwWindow& window);
    // The mouse moved over the window; the state holds only the modifier bits.
    virtual int cbMouseMove(GwWindow& window, GwPosition const& position, unsigned int state);
    // The wheel turned by delta (WHEEL_DELTA steps) over the window.
    virtual int cbMouseWheel(GwWindow& window, GwPosition const& position, unsigned int state,
                             int delta);
    // The window's size changed.
    virtual int cbResize(GwWindow& window);
    // A control's selection changed (a list line, a tab, a combo entry).
    virtual int cbSelect(GwWindow& window);
    // The window is being shown (also the frame's show event).
    virtual int cbShow(GwWindow& window);
    // The window's own timer (startTimer) ticked.
    virtual int cbTimer(GwWindow& window);
    // A control's value changed (a button's new check state).
    virtual int cbValue(GwWindow& window, unsigned int value);
    // A control's notification code (the editor window's notifications among them).
    virtual int cbNotify(GwWindow& window, unsigned int code);

protected:
    // A counted handler with no references yet, or one counted as given. A copy takes the
    // flag and the count.
    GwEventHandler() : mCounted(true), mRefCount(0) {}
    explicit GwEventHandler(bool counted) : mCounted(counted), mRefCount(0) {}
    GwEventHandler(GwEventHandler const&) = default;
    GwEventHandler& operator=(GwEventHandler const&) = default;

private:
    bool mCounted : 1;
    long mRefCount;
};
