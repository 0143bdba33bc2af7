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

// A counted handler belongs to the windows it is attached to: each attachment holds a
// reference and the last release deletes it. An uncounted one belongs to the application.
class VMGUI_API GwEventHandler : public GwObject {
    GW_DECLARE_CLASS(GwEventHandler)

public:
    // Tells the windows it is attached to that it is gone (event type 2).
    ~GwEventHandler() override;

    // Counted: the new count. Uncounted: 0, nothing changes.
    long addRef();
    // Counted: the new count, deleting the handler when it drops to 0. Uncounted: 0.
    long release();

    bool counted() const { return mCounted; }
    long refCount() const { return mRefCount; }

    // Activation of a window: handled (5) for the windows with id 1 or 2 (OK and Cancel),
    // so that those buttons close their dialog; otherwise 1.
    virtual int cbActivate(GwWindow& window);
    virtual int cbButton(GwWindow& window, GwPosition const& position, unsigned int state);
    virtual int cbClose(GwWindow& window);
    virtual int cbDestroy(GwWindow& window);
    virtual int cbEnter(GwWindow& window);
    virtual int cbExpose(GwWindow& window, GwGC& gc, unsigned int flags);
    virtual int cbFocusIn(GwWindow& window);
    virtual int cbFocusOut(GwWindow& window);
    virtual int cbHide(GwWindow& window);
    virtual int cbKey(GwWindow& window, unsigned int key, unsigned int state);
    virtual int cbLeave(GwWindow& window);
    virtual int cbMouseMove(GwWindow& window, GwPosition const& position, unsigned int state);
    virtual int cbMouseWheel(GwWindow& window, GwPosition const& position, unsigned int state,
                             int delta);
    virtual int cbResize(GwWindow& window);
    virtual int cbSelect(GwWindow& window);
    virtual int cbShow(GwWindow& window);
    virtual int cbTimer(GwWindow& window);
    virtual int cbValue(GwWindow& window, unsigned int value);
    virtual int cbNotify(GwWindow& window, unsigned int code);

protected:
    GwEventHandler() : mCounted(true), mRefCount(0) {}
    explicit GwEventHandler(bool counted) : mCounted(counted), mRefCount(0) {}
    GwEventHandler(GwEventHandler const&) = default;
    GwEventHandler& operator=(GwEventHandler const&) = default;

private:
    bool mCounted : 1;
    long mRefCount;
};
