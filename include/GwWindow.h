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

// The object's address lives in the window's GWLP_USERDATA slot; that slot is the only map
// from handle to object. A bound window is subclassed with gMsgHandler, which hands every
// message to the virtual msgHandler and from there to dispatchEvent and the attached
// handlers. The object deletes itself when its window receives WM_NCDESTROY.
//
// Positions are bottom-up: the origin is the bottom-left corner of the client area and y
// grows upwards (translateY converts in both directions).
class VMGUI_API GwWindow : public GwObject {
    GW_DECLARE_CLASS(GwWindow)

public:
    enum eMessageType : int { eClose = 1 };
    // A button's check state, as the platform numbers it.
    enum eCheckState { eUnchecked = 0, eChecked = 1, eIndeterminate = 2 };
    enum eCursorType { eNoCursor = -1, eLibraryCursor = 0xF800 };
    // The edge of a frame that a control bar is stacked along.
    enum eAlignment { eTop = 1, eBottom = 2, eRight = 16, eLeft = 32 };

    class VMGUI_API GwRegister : public GwStartup {
    public:
        bool initInstance() override;
        bool exitInstance() override;
    };

    GwWindow(GwWindow const& other);
    GwWindow& operator=(GwWindow const& other);
    ~GwWindow() override;

    void receiveEvent(Object* sender, Event const& event, EventData const* data) override;

    virtual GwWindow& setId(unsigned long long id);
    virtual unsigned long long id() const;
    virtual GwWindow& setHelpId(unsigned long long id);
    virtual unsigned long long helpId() const;
    virtual GwWindow& setParent(GwWindow const* parent);
    virtual GwWindow* parent() const;
    virtual GwWindow& setText(String const& text);
    virtual String const& text() const;
    virtual GwWindow& setVisible(bool visible);
    virtual bool visible() const;
    virtual GwWindow& setEnabled(bool enabled);
    virtual bool enabled() const;
    virtual GwWindow& setPosition(GwPosition const& position);
    virtual GwPosition position() const;
    virtual GwWindow& setDimension(GwDimension const& dimension);
    virtual GwDimension dimension() const;
    virtual GwWindow& setUpdateEnabled(bool enabled);
    virtual GwWindow& setFocus();
    virtual GwWindow& add(GwItem const& item);
    virtual GwWindow& add(GwEventHandler* handler);
    virtual GwWindow& remove(GwItem const& item);
    virtual GwWindow& remove(GwEventHandler* handler);
    virtual GwWindow& startTimer(long milliseconds);
    virtual GwWindow& stopTimer();
    virtual GwPosition translate(GwWindow const* to, GwPosition const& position) const;
    virtual GwWindow* root(bool topMost) const;
    virtual GwWindow* child(unsigned long long id) const;
    virtual GwWindow& invalidate();
    virtual GwWindow& update();
    virtual int translateY(int y, bool ofParent) const;

protected:
    virtual bool initInstance();
    virtual bool exitInstance();
    virtual GwWindow& setWindow(bool release);
    virtual GwWindow& setMsgHandler(bool install);
    virtual long long msgHandler(unsigned long long msg, unsigned long long wParam,
                                 long long lParam);
    virtual long long dispatchEvent(unsigned long long msg, unsigned long long wParam,
                                    long long lParam);
    virtual bool dispatchFrameEvent(unsigned long long msg, int wParamLow, GwWindow* source,
                                    GwWindow* extra);
    virtual long long callDefHandler(unsigned long long msg, unsigned long long wParam,
                                     long long lParam);

public:
    GwWindow& show() { return setVisible(true); }
    GwWindow& hide() { return setVisible(false); }
    void position(long& x, long& y) const;
    GwWindow& setPosition(long x, long y) { return setPosition(GwPosition(x, y)); }
    void dimension(long& width, long& height) const;
    GwWindow& setDimension(long width, long height) {
        return setDimension(GwDimension(width, height));
    }
    void translate(GwWindow const* to, long& x, long& y) const;
    operator char const*() const { return text().c_str(); }
    operator String const&() const { return text(); }
    // The bound handle (HWND), null while unbound.
    void* window() const { return mHandle; }

    GwWindow& setUserData(GwUserData* data);
    GwUserData* userData() const { return mUserData; }
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
    static long long gMsgHandler(void* hwnd, unsigned long long msg, unsigned long long wParam,
                                 long long lParam);
    static unsigned long long message();
    static void* instance();
    static bool getWin98_2000_ME();
    // Runs the application's message loop until WM_QUIT.
    static void msgLoop();

    static unsigned int gGwWM_Message;
    static bool m_bWin98_2000_ME;
    static GwWindow* mEnterWindow;
    static GwRegister gStartup;

protected:
    GwWindow();
    explicit GwWindow(void* hwnd);

    // Binds the object to an existing window and subclasses it (the steps every creating
    // and attaching constructor performs). Nothing for a null handle.
    void attach(void* hwnd);

    void* mHandle;
    mutable String mText;
    void* mPrevProc;
    GwObjectTable<GwEventHandler>* mHandlers;
    GwUserData* mUserData;
    void* mCursor;

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
