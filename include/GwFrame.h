// The frame window: a top-level window with menu bar, control bars, client and help.
#pragma once

#include <String.h>

#include "GwObjectTable.h"
#include "GwStartup.h"
#include "GwWindow.h"

class GwControlBar;
class GwMenu;
class GwResource;
class GwStatusBar;

// A frame is an overlapped window of the library's window class "GwFrame". It carries a
// menu bar, a stack of control bars along its four edges (tool bars, dock bars, the status
// bar), one client window that fills what the bars leave, a help file, an icon and an owner
// window that gets the foreground back when the frame goes.
//
// Menu messages become events for the frame's handlers: message 0x100B with wParam 0x10000
// when a popup opens, 0x10001 when it closes and 0x10002 when a command is chosen, lParam the
// GwMenu (whose selected() tells the command). The status bar shows the help text of the menu
// entry under the pointer. The help key is answered with WinHelp calls, or by a help functor.
//
// Closing a frame that no handler keeps ends the message loop.
class VMGUI_API GwFrame : public GwWindow {
    GW_DECLARE_CLASS(GwFrame)

public:
    // The border and caption that setBorderStyle gives the frame.
    enum eBorderStyle {
        eNoBorder = 0,     // no caption, no sizing border
        eSizingBorder = 1, // WS_CAPTION | WS_THICKFRAME
        eDialogBorder = 2, // WS_CAPTION and WS_EX_DLGMODALFRAME
        eCaptionOnly = 3   // WS_CAPTION
    };

    // The style bits of setFrameStyle(eFrameStyle, bool).
    enum eFrameStyle {
        eContextHelp = 0x800,    // WS_EX_CONTEXTHELP
        eTaskBarButton = 0x8000, // WS_EX_APPWINDOW
        eMaximizeBox = 0x10000,  // WS_MAXIMIZEBOX
        eMinimizeBox = 0x20000,  // WS_MINIMIZEBOX
        eSystemMenu = 0x80000    // WS_SYSMENU
    };

    // The library's standard menus that setMenuStyle merges into the menu bar.
    enum eMenuStyle {
        eFileMenu = 1,  // menu 100 "&Datei", at the front
        eHelpMenu = 2,  // menu 101 "&Hilfe", at the end
        eWindowMenu = 4 // menu 102 "F&enster", before the help menu
    };

    // Replaces the WinHelp call of the help key (see msgHandler, WM_HELP).
    class VMGUI_API GwHelpFunctor {
    public:
        // A functor holds no state here; derived functors copy theirs.
        GwHelpFunctor() = default;
        GwHelpFunctor(GwHelpFunctor const&) = default;
        GwHelpFunctor& operator=(GwHelpFunctor const&) = default;
        virtual ~GwHelpFunctor();
        // Answers the help key.
        virtual void operator()() = 0;
    };

    // Registers the window class "GwFrame" at start-up.
    class VMGUI_API GwRegister : public GwStartup {
    public:
        bool initInstance() override;
        bool exitInstance() override;
    };

    // One control bar of the frame and the edge it is stacked along.
    struct GwBar {
        GwControlBar* bar; // not owned
        // The edge the bar is stacked along.
        GwWindow::eAlignment side;
    };

    // A frame without owner; menuId is the menu bar's resource identifier (0: none). The
    // two-argument form gives the frame a status bar.
    GwFrame(unsigned long long id, unsigned long long menuId, bool statusBar);
    GwFrame(unsigned long long id, unsigned long long menuId);
    // A frame owned by owner, taking its help file. The three-argument form gives the frame
    // no status bar.
    GwFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId, bool statusBar);
    GwFrame(GwFrame const& owner, unsigned long long id, unsigned long long menuId);
    // As a copied window object the copy has no window. It takes the plain values and the
    // client; the resource is duplicated, the menus and bars are not shared.
    GwFrame(GwFrame const& other);
    GwFrame& operator=(GwFrame const& other);
    ~GwFrame() override;

    void receiveEvent(Object* sender, Event const& event, EventData const* data) override;
    // The frame's own identifier (GWLP_ID too while the window is a child).
    GwFrame& setId(unsigned long long id) override;
    unsigned long long id() const override;
    // Showing sets the menu bar again, lays out, raises the frame and makes it the
    // foreground window; hiding sends it to the bottom and gives the foreground to the owner.
    GwFrame& setVisible(bool visible) override;
    // Items: nothing.
    GwFrame& add(GwItem const& item) override;
    GwFrame& add(GwEventHandler* handler) override;
    GwFrame& remove(GwItem const& item) override;
    GwFrame& remove(GwEventHandler* handler) override;

    // Stacks bar along side (into the first empty record, else appended) and lays out. Bars
    // take their room in record order, the earlier ones nearer the edge. A bar whose window
    // is destroyed (also from outside, with DestroyWindow) leaves its records; a status bar
    // destroyed so leaves the frame without one.
    virtual GwFrame& add(GwControlBar* bar, GwWindow::eAlignment side);
    // Empties the first record of bar (the search ends at the first empty record) and lays
    // out. The records behind the hole are not laid out until it is filled again.
    virtual GwFrame& remove(GwControlBar* bar);
    // The window that fills what the bars leave (not owned; forgotten when it goes).
    virtual GwFrame& setClient(GwWindow* client);
    virtual GwWindow* client() const;
    // Merges the library's standard menus (eMenuStyle bits) into the menu bar. Without a
    // menu bar only the style is stored.
    virtual GwFrame& setMenuStyle(int style);
    // Replaces the menu bar by the menu of the identifier (0: none).
    virtual GwFrame& setMenuBar(unsigned long long menuId);
    // Accepts dropped files (WS_EX_ACCEPTFILES is set either way) when on.
    virtual GwFrame& setDropFilesEnabled(bool on);

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
    // Menu messages: WM_INITMENUPOPUP, WM_MENUSELECT, WM_MENUCHAR, WM_ENTERMENULOOP,
    // WM_EXITMENULOOP and WM_COMMAND from a menu or accelerator.
    virtual long long msgHandlerMenu(unsigned long long msg, unsigned long long wParam,
                                     long long lParam);
    // The standard commands of the library's menus; true when the command was handled.
    virtual bool msgHandlerCommand(unsigned long long id);
    // Shows the help text of the string id in the status bar (nothing without one).
    virtual void msgHandlerStatusText(unsigned long long id);

public:
    // The menu of the identifier: from the frame's menu cache, else loaded from the
    // frame's resource and cached (owned by the frame). Null when the resource lacks it.
    GwMenu* menu(unsigned long long id);
    // The menu bar (null for none) and the library menus merged into it (eMenuStyle bits).
    GwMenu* menuBar() const { return mMenuBar; }
    int menuStyle() const { return mMenuStyle; }
    // The menu whose entry the pointer selected last (null outside menus).
    GwMenu* currentMenu() const { return mCurrentMenu; }
    // The popup menus open at the moment, innermost last (null before the first menu
    // message).
    GwObjectTable<GwMenu> const* popupStack() const { return mPopupStack; }

    // The icon iconId of res's module (the executable's when res has none) as the big icon.
    GwFrame& setIcon(unsigned long long iconId, GwResource const& res);
    // Where menus and status texts are loaded from (the executable unless assigned).
    GwFrame& setResource(GwResource const& resource);
    GwResource& resource() const { return *mResource; }

    // Replaces the caption and border styles of the window (eBorderStyle).
    GwFrame& setBorderStyle(eBorderStyle style);
    // Sets or clears the one style bit that flag stands for; other values do nothing.
    GwFrame& setFrameStyle(eFrameStyle flag, bool on);
    // The high word of flags replaces the window style's maximize and minimize boxes and
    // system menu; the low word, shifted left by 3, replaces WS_EX_APPWINDOW and
    // WS_EX_CONTEXTHELP. The shift maps 0x8000 to WS_EX_APPWINDOW but 0x800 to 0x4000, not to
    // the context-help bit: unlike setFrameStyle(eContextHelp, true).
    GwFrame& setFrameStyle(int flags);

    // The help file, relative to the executable's directory.
    GwFrame& setHelpFile(String const& file);
    String const& helpFile() const { return mHelpFile; }
    // Replaces the WinHelp calls of the help key (not owned; null: none).
    GwFrame& setHelpFunctor(GwHelpFunctor* functor);
    GwHelpFunctor* helpFunctor() const { return mHelpFunctor; }
    // The help file's full path: the executable's directory and the help file; without a
    // help file the application's help name; without that the executable's directory and
    // the application's name.
    String helpPath() const;

    // The status bar's window (null for none) and its object.
    void* statusWindow() const { return mStatusWindow; }
    GwStatusBar* statusBar() const;
    // The owner frame's window, null for none.
    void* owner() const { return mOwner; }
    // The bar records (null before the first add); empty records are null.
    GwObjectTable<GwBar> const* bars() const { return mBars; }

    // A frame wrapping the window that a GwEventData carries; null without one.
    static GwFrame* newInstance(EventData const* data);

    // The help mode of the process: 0, or the GwWM_Message code of the help request being
    // answered (0x1010 Shift+F1, 0x1011 F1, 0x1012 open the help file with the shell).
    static unsigned int gHelpMode;
    // Registers the window class "GwFrame".
    static GwRegister gStartup;

protected:
    // Wraps an existing window (identifier all ones, no tables); none for a null handle.
    explicit GwFrame(void* handle);

    // Replaces the status bar: the old bar's record is removed and its window destroyed;
    // bar (may be null) is added along the bottom edge.
    GwFrame& setStatusBar(GwStatusBar* bar);
    // Closes the popup stack from the innermost menu down to menu (with below, down to the
    // entry below it when menu is the innermost one); each closed menu is announced with
    // 0x100B/0x10001 and, when dynamic, emptied. A null menu closes the whole stack.
    GwFrame& removeStack(GwMenu* menu, bool below);
    // Places the bars and the client (the work of GwWM_Message code 0x1001).
    void layout();
    // The answers to the frame's GwWM_Message codes 0x1001 to 0x1018.
    long long msgHandlerCode(unsigned long long code, long long lParam);
    // WM_HELP with its HELPINFO (may be null).
    long long msgHandlerHelp(void const* helpInfo);
    // Creates the frame's window owned by ownerWindow and builds it up as every creating
    // constructor does.
    void create(GwFrame const* owner, unsigned long long id, unsigned long long menuId,
                bool statusBar);
    // Removes every record of the control bar sender, which is going away; false when it
    // has none.
    bool forgetBar(Object const* sender);

    GwMenu* mMenuBar;                   // owned
    int mMenuStyle;                     // eMenuStyle bits merged into the bar
    GwResource* mResource;              // owned
    void* mStatusWindow;                // HWND of the status bar
    unsigned long long mId;             // all ones for a wrapped window
    GwMenu* mCurrentMenu;               // not owned
    GwWindow* mClient;                  // not owned
    String mHelpFile;                   // relative to the executable's directory
    GwObjectTable<GwMenu>* mMenuCache;  // the menus are owned
    GwObjectTable<GwMenu>* mPopupStack; // not owned
    GwHelpFunctor* mHelpFunctor;        // not owned
    GwObjectTable<GwBar>* mBars;        // the records are owned, the bars not
    void* mOwner;                       // HWND of the owner frame
};
