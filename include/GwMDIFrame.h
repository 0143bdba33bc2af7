// The multiple-document frame: the MDI frame, its client and the child frames inside it.
#pragma once

#include "GwFrame.h"
#include "GwWindow.h"

class GwMDIClient;
class GwMDIChildFrame;

// A frame whose client is the platform's "mdiclient" control (a GwMDIClient with identifier
// 0xFD01) and whose default handling is DefFrameProcA. It answers the commands of the
// library's window menu ("F&enster", menu 102, merged with setMenuStyle(eWindowMenu)):
//   0xF861 "&Untereinander", 0xF864 "&Kacheln"   tile, the children one below the other
//   0xF862 "&Nebeneinander"                       tile, the children side by side
//   0xF863 "Ü&berlappend"                         cascade
//   0xF865 "&Symbole anordnen"                    arrange the minimized children
//   0xF866 "&Alle schließen"                      close every child (see closeAll)
// The entries of the children (0xFF00 onwards) that the client adds to the window menu are
// left to the default handling, which activates the child.
//
// The message loop's pre-translation (GwWM_Message code 0x1002) goes through
// TranslateMDISysAccel first: Ctrl+F4 closes the active child, Ctrl+F6 activates the next.
// Events that bubble up from controls reach the active child's handlers before the frame's.
class VMGUI_API GwMDIFrame : public GwFrame {
    GW_DECLARE_CLASS(GwMDIFrame)

public:
    // A frame with a status bar; menuId is the menu bar's resource identifier (0: none) and
    // menuStyle the library's menus to merge into it (GwFrame::eMenuStyle bits).
    explicit GwMDIFrame(unsigned long long id);
    GwMDIFrame(unsigned long long id, unsigned long long menuId);
    GwMDIFrame(unsigned long long id, unsigned long long menuId, int menuStyle);
    // The same, owned by owner (taking its help file), without a status bar.
    GwMDIFrame(GwFrame const& owner, unsigned long long id);
    GwMDIFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId);
    GwMDIFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId,
               int menuStyle);
    // As for every frame, a copy has no window of its own.
    GwMDIFrame(GwMDIFrame const& other);
    GwMDIFrame& operator=(GwMDIFrame const& other);
    ~GwMDIFrame() override;

    // The client, which is always a GwMDIClient (null once it is gone).
    GwMDIClient* mdiClient() const;

    // Only a GwMDIClient is taken; any other window (or none) leaves the client in place.
    GwMDIFrame& setClient(GwWindow* client) override;
    // Only with a menu bar (without one nothing happens, not even the style is stored): the
    // frame merges the menus, then, with the window menu, the client is handed the window
    // menu's popup with WM_MDISETMENU and the bar is drawn again. The message carries the
    // frame's window handle where the frame menu belongs, as it always has; that handle is
    // no menu, and a client that checks its arguments ignores the message. The client then
    // keeps the window menu it was created with.
    GwMDIFrame& setMenuStyle(int style) override;

    // A frame wrapping the window that a GwEventData carries; null without one.
    static GwMDIFrame* newInstance(EventData const* data);

protected:
    // Wraps an existing window (identifier all ones); none for a null handle.
    explicit GwMDIFrame(void* handle);

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
    // DefFrameProcA with the client's window; DefWindowProcA without a client.
    long long callDefHandler(unsigned long long msg, unsigned long long wParam,
                             long long lParam) override;
    // The source's handlers, then the active child's, then the frame's own.
    bool dispatchFrameEvent(unsigned long long msg, int wParamLow, GwWindow* source,
                            GwWindow* extra) override;
    // At the end of the frame's window: the client's object went with its window already,
    // so the frame forgets it without touching it.
    bool exitInstance() override;
    // The window menu's commands (see the class comment); the rest goes to the frame.
    bool msgHandlerCommand(unsigned long long id) override;

    // Closes every window in the client, hidden while it happens: each child is asked with
    // WM_CLOSE, and one that stays is destroyed through the client (WM_MDIDESTROY) anyway.
    void closeAll();

private:
    friend class GwMDIClient;

    // Makes the client and merges the menus: the part every creating constructor shares.
    void create(bool withMenuStyle, int menuStyle);
    // The client's window is going: the frame stops listening to it and forgets it.
    void clientGone(GwMDIClient* client);
};

// The platform's "mdiclient" control of an MDI frame. It numbers the children from 0xFF00 and
// lists them in its window menu. Its operations go straight to the control's own procedure.
class VMGUI_API GwMDIClient : public GwWindow {
    GW_DECLARE_CLASS(GwMDIClient)

public:
    // How arrange places the children.
    enum eArrangeType {
        eCascade = 1,        // WM_MDICASCADE
        eTileHorizontal = 2, // WM_MDITILE, the children one below the other
        eTileVertical = 3,   // WM_MDITILE, the children side by side
        eArrangeIcons = 4    // WM_MDIICONARRANGE
    };

    // The client of frame with identifier id. Its window menu is the second-last popup of
    // the frame's menu bar as it is now (none without a bar or with a single popup).
    GwMDIClient(GwMDIFrame& frame, unsigned long long id);
    // Memberwise: both objects name the same window.
    GwMDIClient(GwMDIClient const& other);
    GwMDIClient& operator=(GwMDIClient const& other);
    ~GwMDIClient() override;

    // Activates child.
    GwMDIClient& setActive(GwMDIChildFrame& child);
    // Activates the child after child (forward) or before it.
    GwMDIClient& setActive(GwMDIChildFrame& child, bool forward);
    // Activates the child after the active one (forward) or before it.
    GwMDIClient& setActive(bool forward);
    // Maximizes child, or restores it.
    GwMDIClient& setMaximized(GwMDIChildFrame& child, bool maximized);
    // Other values do nothing.
    GwMDIClient& setArrange(eArrangeType type);
    // The active child; an object is made for a child window that has none. Null when there
    // is no active child or it is no GwMDIChildFrame.
    GwMDIChildFrame* active() const;

    // A client wrapping the window that a GwEventData carries; null without one.
    static GwMDIClient* newInstance(EventData const* data);

protected:
    // A client for an existing window (bound and subclassed).
    explicit GwMDIClient(void* handle);

    // Mouse buttons, keys and clicks go to the handlers first: answered with 1 when taken.
    // When its window is destroyed, the frame whose client it is forgets it.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // A message for the control's own procedure; 0 without a window.
    long long toControl(unsigned int msg, unsigned long long wParam, long long lParam) const;
};

// A frame that lives as a child window inside an MDI frame's client; its default handling
// is DefMDIChildProcA. It is created hidden and becomes the active child.
//
// Closing a child that no handler keeps destroys it (through the client) and its object
// with it; unlike a top-level frame, it does not end the message loop.
class VMGUI_API GwMDIChildFrame : public GwFrame {
    GW_DECLARE_CLASS(GwMDIChildFrame)

public:
    // A new child of frame's client, taking the frame's help file.
    explicit GwMDIChildFrame(GwMDIFrame& frame);
    // As for every frame, a copy has no window of its own.
    GwMDIChildFrame(GwMDIChildFrame const& other);
    GwMDIChildFrame& operator=(GwMDIChildFrame const& other);
    // A window still bound is destroyed through its client.
    ~GwMDIChildFrame() override;

    // The child's own identifier. The window's identifier stays as the client numbered it,
    // since the client finds its children and their window-menu entries by it.
    GwMDIChildFrame& setId(unsigned long long id) override;
    // The identifier set last; until one is set, the window's (0xFF00 onwards).
    unsigned long long id() const override;

    // Activates the child (true) or the one after it (false).
    GwMDIChildFrame& setActive(bool active);
    // Maximizes the child, or restores it.
    GwMDIChildFrame& setMaximized(bool maximized);

    // A child wrapping the window that a GwEventData carries; null without one.
    static GwMDIChildFrame* newInstance(EventData const* data);

protected:
    // A child frame for an existing window (bound and subclassed).
    explicit GwMDIChildFrame(void* handle);

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
    // DefMDIChildProcA.
    long long callDefHandler(unsigned long long msg, unsigned long long wParam,
                             long long lParam) override;

private:
    // Sends msg to the client with the child's window in wParam; 0 without a window.
    long long toClient(unsigned int msg, long long lParam) const;
    // Destroys the window through the client, which activates the next child and takes
    // the child's entry out of the window menu first.
    static void destroyThroughClient(void* hwnd);
};
