// Tool bars ("ToolbarWindow32") as control bars, and the items that describe their buttons.
#pragma once

#include <String.h>

#include "GwControlBar.h"
#include "GwItem.h"

class GwBitmap;
class GwControl;
class GwFrame;
class GwResource;

// One button, separator or embedded control of a tool bar. The item is a description: the
// bar keeps its buttons inside the platform control and makes TBBUTTONs from items. An item
// with a tool control listens to it and hands its identifier on to it; it never owns it.
class VMGUI_API GwToolBarItem : public GwItem {
    GW_DECLARE_CLASS(GwToolBarItem)

    friend class GwToolBar;

public:
    // The fsStyle byte of a button; other TBSTYLE_ bits may be combined with these.
    enum eButtonStyle : int {
        eButton = 0,    // a push button
        eSeparator = 1, // a gap (its bitmap is its width) or the place of a tool control
        eCheck = 2,     // a button that stays pressed until clicked again
        eCheckGroup = 6 // a check button of which only one in its group is checked
    };
    // The library's button states.
    enum eState : int {
        eChecked = 1,    // pressed in
        eEnabled = 4,    // may be clicked
        eHidden = 8,     // not shown
        eDisabled = 0x80 // greyed (only as a constructor argument)
    };

    // A separator of width 0 with a fresh identifier, enabled.
    GwToolBarItem();
    // An enabled push button showing the image of index bitmap.
    GwToolBarItem(unsigned long long id, int bitmap);
    // An enabled button of the style.
    GwToolBarItem(unsigned long long id, int bitmap, eButtonStyle style);
    // A button of the style and state; enabled unless state holds eDisabled.
    GwToolBarItem(unsigned long long id, int bitmap, eButtonStyle style, int state);
    // A separator that hosts control (see setStyle(GwControl&)).
    GwToolBarItem(unsigned long long id, GwControl& control);
    // Copies identifier, bitmap, style and state; the tool control is not copied.
    GwToolBarItem(GwToolBarItem const& other);
    // Copies the identifier; adopts the other's tool control when it has one, else copies
    // bitmap, state and style.
    GwToolBarItem& operator=(GwToolBarItem const& other);
    // Stops listening to the tool control.
    ~GwToolBarItem() override;

    // Sets the style and lets go of the tool control.
    GwToolBarItem& setStyle(eButtonStyle style);
    // Hosts control: a separator as wide as the control, enabled; listens to the control and
    // gives it the item's identifier.
    GwToolBarItem& setStyle(GwControl& control);
    // Stores the state only while a tool control is attached; ignored otherwise.
    GwToolBarItem& setState(int state);
    // The library state (eEnabled, eChecked, eHidden, eDisabled bits).
    int state() const { return mState; }
    // The button style.
    eButtonStyle style() const { return mStyle; }
    // The image index of a button, the width of a separator.
    int bitmap() const { return mBitmap; }
    // The hosted control, or null.
    GwControl* toolCtrl() const { return mToolCtrl; }
    // Sets the identifier, also as the tool control's identifier.
    GwToolBarItem& setId(unsigned long long id) override;
    // Forgets the tool control when it tells of its end (event type 2).
    void receiveEvent(Object* sender, Event const& event, EventData const* data) override;

    // A copy of the GwToolBarItem that a GwEventData carries, else a default item.
    static GwToolBarItem* newInstance(EventData const* data);

private:
    // Stops listening to the tool control and forgets it.
    void detach();

    int mBitmap;
    eButtonStyle mStyle;
    int mState;
    GwControl* mToolCtrl; // not owned
};

// A flat, wrapping tool bar with tooltips that a frame docks along an edge or that floats.
// Its buttons live only in the platform control: every query is a TB_ message. Controls
// embedded over separators are owned by the bar once added, and deleted with their button or
// with the bar; a control whose window goes first is forgotten by the bar, so none is
// deleted twice. Tooltip texts and status texts come from the strings of the bar's resource:
// "status text\ntooltip", the status text sent to the root window as "GwWM_Message" code
// 0x1017. A tooltip text is cut to the 79 characters that fit the request's 80-byte szText
// with the terminator; a string without line feed is all status text and no tooltip. Showing
// and hiding the tooltip sends code 0x1018 with 1 and 0. Handlers cannot be attached to the
// bar: its click (the activate event, with the bar as window) goes to the top-level window's
// handlers, and selected() names the button.
class VMGUI_API GwToolBar : public GwControlBar {
    GW_DECLARE_CLASS(GwToolBar)

public:
    // A visible tool bar child of parent with the control identifier id.
    GwToolBar(GwWindow& parent, unsigned long long id);
    // The same; a null parent makes no window and raises a debugger break.
    GwToolBar(GwWindow* parent, unsigned long long id);
    // A window object of its own without window; the resource is duplicated.
    GwToolBar(GwToolBar const& other);
    // Copies the window part and the resource.
    GwToolBar& operator=(GwToolBar const& other);
    // Deletes the embedded controls that are still there, then the window, then the resource.
    ~GwToolBar() override;

    using GwControlBar::add;
    using GwControlBar::enabled;
    using GwControlBar::remove;
    using GwControlBar::setEnabled;
    using GwControlBar::setVisible;
    using GwControlBar::visible;

    // ---- Buttons
    // Adds a GwToolBarItem (std::bad_cast for other items): a button of the same identifier
    // is replaced in place, else the button is appended. A tool control is placed over it
    // and owned by the bar; a check button gets the item's checked state.
    GwToolBar& add(GwItem const& item) override;
    // As add, inserted before index; a button of the same identifier is removed wherever it
    // is first. A negative index takes that button's old index, or the end.
    GwToolBar& addAt(int index, GwItem const& item);
    // Removes the button with the item's identifier (and deletes its tool control).
    GwToolBar& remove(GwItem const& item) override;
    // Removes the button with the identifier; nothing for an unknown one.
    GwToolBar& remove(unsigned long long id);
    // Removes the button at index; nothing for an index out of range.
    GwToolBar& removeAt(int index);
    // Removes every button.
    GwToolBar& remove();
    // Does nothing: the bar's events go to its top-level window.
    GwToolBar& add(GwEventHandler* handler) override;
    // Does nothing.
    GwToolBar& remove(GwEventHandler* handler) override;
    // The number of buttons and separators.
    int sizeOf() const;
    // The button with the identifier as a shared item (a default item when there is none).
    GwToolBarItem const& item(unsigned long long id) const;
    // The button at index as a shared item (a default item when there is none).
    GwToolBarItem const& itemAt(int index) const;
    // The button's rectangle (x, y bottom-up, width, height); empty for an unknown one.
    GwRectangle rectangle(unsigned long long id) const;
    // The same for the button at index.
    GwRectangle rectangleAt(int index) const;

    // ---- Button state
    // Enables or disables the button and its tool control.
    GwToolBar& setEnabled(unsigned long long id, bool enabled);
    // Whether the button is enabled (false for an unknown one).
    bool enabled(unsigned long long id) const;
    // As setEnabled for the button at index; a button with identifier 0 is left alone.
    GwToolBar& setEnabledAt(int index, bool enabled);
    // Whether the button at index is enabled.
    bool enabledAt(int index) const;
    // Checks or unchecks the button.
    GwToolBar& setValue(unsigned long long id, bool checked);
    // Whether the button is checked.
    bool value(unsigned long long id) const;
    // As setValue for the button at index; a button with identifier 0 is left alone.
    GwToolBar& setValueAt(int index, bool checked);
    // Whether the button at index is checked.
    bool valueAt(int index) const;
    // Hides the button when hide is true (the flag is the hide flag) and shows it when false;
    // the tool control gets setVisible(hide). The other controls follow their separators.
    GwToolBar& setVisible(unsigned long long id, bool hide);
    // Whether the button is checked (the same answer as value(id)).
    bool visible(unsigned long long id) const;
    // As setVisible for the button at index; a button with identifier 0 is left alone.
    GwToolBar& setVisibleAt(int index, bool hide);
    // Whether the button at index is shown.
    bool visibleAt(int index) const;
    // Sets the identifier of the last button clicked.
    GwToolBar& setSelected(unsigned long long id);
    // The identifier of the last button clicked.
    unsigned long long selected() const { return mSelected; }

    // ---- Images (masks are 0x00RRGGBB; index is all ones until an image is added)
    // Adds the bitmap's images of 16 x 15 pixels; a bitmap with id() 0 stands for the
    // platform's standard images (IDB_STD_SMALL_COLOR), which are copied behind an existing
    // list, or else set as a duplicate list (index then stays all ones). index: the first new
    // image.
    GwToolBar& add(GwBitmap const& bitmap, unsigned long mask, int& index);
    // The same without the index.
    GwToolBar& add(GwBitmap const& bitmap, unsigned long mask);
    // The same with the mask colour as red, green, blue.
    GwToolBar& add(GwBitmap const& bitmap, unsigned char red, unsigned char green,
                   unsigned char blue, int& index);
    // The same without the index.
    GwToolBar& add(GwBitmap const& bitmap, unsigned char red, unsigned char green,
                   unsigned char blue);
    // Adds bitmap as above and hot to the hot images; the index when both agree, else -1.
    int add(GwBitmap const& bitmap, unsigned long mask, GwBitmap const& hot, unsigned long hotMask);
    // Adds the buttons of the tool-bar resource id (type 241) of module's module (the
    // executable without one) with the bitmap of the same identifier. index: the first
    // image; all ones when the resource, its bitmap or its bytes are missing or malformed.
    GwToolBar& load(unsigned long long id, GwResource const& module, unsigned long mask,
                    int& index);
    // The same without the index.
    GwToolBar& load(unsigned long long id, GwResource const& module, unsigned long mask);
    // Loads as above and the bitmap hotId as hot images; the index when both agree, else -1.
    int load(unsigned long long id, unsigned long mask, unsigned long long hotId,
             unsigned long hotMask, GwResource const& module);

    // ---- Layout
    // The room the bar needs: 1 in a row (height + 5), 2 in a column, 3 floating in rows of
    // groups not wider than limit (groups end at separators of width 8; their rectangles go
    // to parts when given), 4 frees the records of parts.
    GwDimension calculate(eCalculate kind, int limit, GwObjectTable<GwRectangle>* parts) override;

    // ---- Texts
    // Sets the resource the tooltip and status texts are read from.
    GwToolBar& setResource(GwResource const& resource);
    // The resource of the texts (the executable unless assigned).
    GwResource& resource() const { return *mResource; }

    // The platform's standard button images (a duplicate, made on first need, kept).
    static void* getStdImageList();
    // The list getStdImageList made, or null.
    static void* gStdImageList;

    // A bar wrapping the tool-bar window that a GwEventData carries; null without one.
    static GwToolBar* newInstance(EventData const* data);

protected:
    // Wraps an existing tool-bar window.
    explicit GwToolBar(void* window);

    // Places controls on WM_SIZE, paints the non-client edge without a visual theme, answers
    // tooltip requests and records the clicked button (see the class comment). Pressing the
    // left button beside the buttons of a bar in a frame drags it (dragBegin) and docks it
    // at the frame's edge nearest to where it is let go.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
    // For a separator hosting a child window of the bar that window's control identifier,
    // for a button its identifier, else -1. position is in the bar, bottom-up.
    long long toolHitTest(GwPosition& position) const;
    // Writes every button and its rectangle to the standard output.
    void debugLayout() const;

private:
    // Makes the window on parent (HWND) and binds the object to it.
    void create(void* parent, unsigned long long id);
    // Fills out with the button at index; false when there is none.
    bool describe(int index, GwToolBarItem& out) const;
    // Tells the control's listeners that it ends, and forgets it at index.
    void forget(int index, GwControl* control);
    // Shows, enables and places the control of the button at index over it; -1 places every
    // control.
    void sizeToolCtrl(int index);
    // Inserts the item's button at index (-1: appended) and places its control.
    void insert(int index, GwItem const& item);
    // Removes the button at index; its control is deleted unless it is keep.
    bool removeButton(int index, GwControl const* keep);
    // Lets go of every control without deleting it (their windows go with the bar's).
    void releaseControls();
    // The button at index; false when there is none.
    bool button(int index, void* tbbutton) const;
    int indexOf(unsigned long long id) const;
    // The identifier of the button at index, 0 when there is none.
    unsigned int commandAt(int index) const;
    // The control on the button with the identifier, or null.
    GwControl* controlFor(unsigned long long id) const;
    // Whether the button at index exists and its state bit is set (set) or clear (!set).
    bool stateAt(int index, unsigned char bits, bool set) const;
    // Whether the answer to the TB_IS... message about the identifier is yes.
    bool ask(unsigned int msg, unsigned long long id) const;
    long long send(unsigned int msg, unsigned long long wParam, long long lParam) const;
    // Answers a tooltip's request for text and tells the root window the status text.
    void tooltipText(void* dispInfo);
    // The frame the bar is a child of, or null.
    GwFrame* dockingFrame() const;
    // Docks the bar at the edge of its frame nearest to the pointer; nothing when the pointer
    // is outside the frame's client area.
    void dock();
    // Destroys the bar's image lists.
    void releaseImages();

    unsigned long long mSelected;
    GwResource* mResource; // owned
};
