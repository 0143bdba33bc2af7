// The base of every window object: one platform window bound to one object.
#pragma once

#include <String.h>

#include "GwGeometry.h"
#include "GwObject.h"
#include "GwObjectTable.h"
#include "GwStartup.h"

class GwEventHandler;
class GwItem;
class GwUserData;

// The base of every window object: one platform window bound to one object.
//
// The object's address lives in the window's GWLP_USERDATA slot; that slot is the only map
// from handle to object. A bound window is subclassed with gMsgHandler, which hands every
// message to the virtual msgHandler and from there to dispatchEvent and the attached
// handlers. The object deletes itself when its window receives WM_NCDESTROY.
//
// Positions are bottom-up: the origin is the bottom-left corner of the client area and y
// grows upwards (translateY converts in both directions).
//
// An object that still names a window destroyed from outside (a copy assigned from the
// bound object, which went with its window) answers as the platform answers for a handle
// that is no longer valid: setters do nothing, queries give 0, false, an empty text or null.
class VMGUI_API GwWindow : public GwObject {
    GW_DECLARE_CLASS(GwWindow)

public:
    // What sendMessage can send: eClose closes the window as WM_CLOSE would.
    enum eMessageType : int { eClose = 1 };
    // A button's check state, as the platform numbers it.
    enum eCheckState { eUnchecked = 0, eChecked = 1, eIndeterminate = 2 };
    // For setCursor: no cursor, or the library's own cursor (any other value is a system
    // cursor number such as IDC_ARROW).
    enum eCursorType { eNoCursor = -1, eLibraryCursor = 0xF800 };
    // The edge of a frame that a control bar is stacked along.
    enum eAlignment { eTop = 1, eBottom = 2, eRight = 16, eLeft = 32 };
    // How a list orders its lines: 0 in the order of adding, any positive value sorted.
    enum eSorting : int { eUnsorted = 0, eSorted = 1 };

    // The start-up hook that registers the private message "GwWM_Message".
    class VMGUI_API GwRegister : public GwStartup {
    public:
        // Registers the message; always succeeds.
        bool initInstance() override;
        // Nothing to undo.
        bool exitInstance() override;
    };

    // Memberwise: afterwards both objects name the same window.
    GwWindow(GwWindow const& other);
    GwWindow& operator=(GwWindow const& other);
    // Releases the attached handlers and the cursor; a bound window is unsubclassed,
    // unbound and destroyed.
    ~GwWindow() override;

    // Receives the base library's events sent to the window (destroyed, resized).
    void receiveEvent(Object* sender, Event const& event, EventData const* data) override;

    // The control identifier (GWLP_ID).
    virtual GwWindow& setId(unsigned long long id);
    virtual unsigned long long id() const;
    // The context help identifier (SetWindowContextHelpId).
    virtual GwWindow& setHelpId(unsigned long long id);
    virtual unsigned long long helpId() const;
    // The parent of a child window, else the owner; null for none or the desktop. Setting
    // the window itself as its parent does nothing; null detaches it.
    virtual GwWindow& setParent(GwWindow const* parent);
    virtual GwWindow* parent() const;
    // The window text; text() reads at most 260 characters into a cache and returns it.
    virtual GwWindow& setText(String const& text);
    virtual String const& text() const;
    // Shows or hides the window; whether it is visible.
    virtual GwWindow& setVisible(bool visible);
    virtual bool visible() const;
    // Enables or disables input to the window; whether it is enabled.
    virtual GwWindow& setEnabled(bool enabled);
    virtual bool enabled() const;
    // The bottom-left corner of the window in its parent's (bottom-up) client coordinates;
    // setting it keeps the size.
    virtual GwWindow& setPosition(GwPosition const& position);
    virtual GwPosition position() const;
    // Width and height of the window rectangle; setting them keeps the bottom and left
    // edges.
    virtual GwWindow& setDimension(GwDimension const& dimension);
    virtual GwDimension dimension() const;
    // With false, locks the window against drawing (LockWindowUpdate); true unlocks it.
    virtual GwWindow& setUpdateEnabled(bool enabled);
    // Gives the window the keyboard focus; a window that has it gets it again asynchronously.
    virtual GwWindow& setFocus();
    // Adds an item (windows with items override it; here nothing happens).
    virtual GwWindow& add(GwItem const& item);
    // Attaches a handler; the last attached is asked first. A counted handler gains a
    // reference.
    virtual GwWindow& add(GwEventHandler* handler);
    // Removes an item (windows with items override it; here nothing happens).
    virtual GwWindow& remove(GwItem const& item);
    // Detaches a handler; a counted handler loses its reference and is deleted at zero.
    virtual GwWindow& remove(GwEventHandler* handler);
    // Starts or stops the window's own timer, whose ticks reach the handlers' cbTimer.
    virtual GwWindow& startTimer(long milliseconds);
    virtual GwWindow& stopTimer();
    // A position of this window's client area in the client area of `to` (the screen for
    // null), bottom-up on both sides.
    virtual GwPosition translate(GwWindow const* to, GwPosition const& position) const;
    // With topMost the outermost ancestor, else the first ancestor that is not a child
    // window; its object is found or made.
    virtual GwWindow* root(bool topMost) const;
    // The child window with this control identifier, its object found or made; null if none.
    virtual GwWindow* child(unsigned long long id) const;
    // Marks the whole client area for repainting (and erasing).
    virtual GwWindow& invalidate();
    // Paints a pending update region now.
    virtual GwWindow& update();
    // Converts y between bottom-up and top-down: the client height of the parent (ofParent)
    // or of the window itself, minus y; the screen height when there is no such window.
    virtual int translateY(int y, bool ofParent) const;

protected:
    // A set-up step for derived windows to give meaning to; answers true here.
    virtual bool initInstance();
    // Called when the window is destroyed: deletes the objects of the remaining children
    // and destroys the children without one.
    virtual bool exitInstance();
    // Stores the object in the window's GWLP_USERDATA slot; with release, clears the slot
    // and forgets the handle.
    virtual GwWindow& setWindow(bool release);
    // Subclasses the window with gMsgHandler (keeping the first saved procedure), or with
    // false restores the saved procedure.
    virtual GwWindow& setMsgHandler(bool install);
    // Every message of the window: the messages the library handles itself, then
    // dispatchEvent, then the saved window procedure. Derived windows override it.
    virtual long long msgHandler(unsigned long long msg, unsigned long long wParam,
                                 long long lParam);
    // Turns a message into callbacks of the attached handlers; the result of the message.
    virtual long long dispatchEvent(unsigned long long msg, unsigned long long wParam,
                                    long long lParam);
    // A control's activate, select or value event arriving at its top-level window: the
    // control's handlers, then this window's, are called; true when one handled it.
    virtual bool dispatchFrameEvent(unsigned long long msg, int wParamLow, GwWindow* source,
                                    GwWindow* extra);
    // The window procedure that was in force before subclassing.
    virtual long long callDefHandler(unsigned long long msg, unsigned long long wParam,
                                     long long lParam);

public:
    // setVisible(true) and setVisible(false).
    GwWindow& show() { return setVisible(true); }
    GwWindow& hide() { return setVisible(false); }
    // position(), setPosition(), dimension(), setDimension() and translate() on plain
    // numbers.
    void position(long& x, long& y) const;
    GwWindow& setPosition(long x, long y) { return setPosition(GwPosition(x, y)); }
    void dimension(long& width, long& height) const;
    GwWindow& setDimension(long width, long height) {
        return setDimension(GwDimension(width, height));
    }
    void translate(GwWindow const* to, long& x, long& y) const;
    // The window text, as text() reads it.
    operator char const*() const { return text().c_str(); }
    operator String const&() const { return text(); }
    // The bound handle (HWND), null while unbound.
    void* window() const { return mHandle; }

    // A value of the application's kept with the window (not owned).
    GwWindow& setUserData(GwUserData* data);
    GwUserData* userData() const { return mUserData; }
    // The cursor over the client area: an eCursorType or a system cursor number; the
    // previous one is freed.
    GwWindow& setCursor(int type);
    // Type 1 (close) runs msgHandler(WM_CLOSE) directly; other types are ignored. When the
    // close destroys the window, the object is deleted once msgHandler has returned: the
    // result must not be used then.
    GwWindow& sendMessage(eMessageType type);
    // The attached handlers (null when none is attached).
    GwObjectTable<GwEventHandler> const* handlers() const { return mHandlers; }

    // The object bound to a handle; with create, an object is made for a foreign window.
    static GwWindow* window(void* hwnd, bool create);
    // As window(hwnd, true); a null handle is a programming error.
    static GwWindow& window(void* hwnd);
    // The window procedure of every bound window: the object's msgHandler. A window
    // without an object is a library fault (DebugBreak, result 0).
    static long long gMsgHandler(void* hwnd, unsigned long long msg, unsigned long long wParam,
                                 long long lParam);
    // The registered private message "GwWM_Message".
    static unsigned long long message();
    // The module handle of the program (HINSTANCE).
    static void* instance();
    // True once the private message is registered.
    static bool getWin98_2000_ME();
    // Runs the application's message loop until WM_QUIT.
    static void msgLoop();

    static unsigned int gGwWM_Message; // the registered private message
    static bool m_bWin98_2000_ME;      // set when the message is registered
    static GwWindow* mEnterWindow;     // the window the mouse is over (enter and leave)
    static GwRegister gStartup;        // registers the private message

protected:
    // An unbound object; the derived class creates the window and binds it.
    GwWindow();
    // Binds the object to an existing window and subclasses it.
    explicit GwWindow(void* hwnd);

    // Binds the object to an existing window and subclasses it (the steps every creating
    // and attaching constructor performs). Nothing for a null handle.
    void attach(void* hwnd);

    void* mHandle;                            // the bound HWND, null while unbound
    mutable String mText;                     // the cache text() returns
    void* mPrevProc;                          // the window procedure before subclassing
    GwObjectTable<GwEventHandler>* mHandlers; // the attached handlers, null when none
    GwUserData* mUserData;                    // the application's value, not owned
    void* mCursor;                            // the cursor setCursor loaded, or null

private:
    friend class GwDispatcher;

    // Detaches a handler; with release, a counted handler loses one reference.
    void detach(GwEventHandler* handler, bool release);

    // Hands a message to msgHandler (or only to dispatchEvent) with the object counted as
    // busy, and deletes the object afterwards when its window was destroyed meanwhile.
    static long long deliver(GwWindow* object, unsigned long long msg, unsigned long long wParam,
                             long long lParam, bool dispatchOnly);

    // Messages being handled for this window right now, and whether its window was destroyed
    // meanwhile: the object is then deleted when the outermost message returns.
    int mBusy = 0;
    bool mDestroyed = false;
};
