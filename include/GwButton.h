// Buttons: push buttons, check boxes, three-state boxes, radio buttons and owner-drawn buttons,
// all windows of the platform's "BUTTON" class sharing one message handler.
#pragma once

#include <String.h>

#include "GwControl.h"

// The base of every button. Its message handler turns the platform's notifications into the
// library's events:
// - every change of check state (BM_SETCHECK, from setValue or from the platform when the
//   user clicks an automatic box or radio button) gives the value event (cbValue with the new
//   state); setting the state a button already has changes nothing, gives no event and never
//   reaches the platform's procedure;
// - checking a radio button unchecks the other radio buttons of its group: the siblings from
//   the nearest WS_GROUP window at or before it up to the next WS_GROUP window, radio buttons
//   without a library object included;
// - a click gives the activate event (cbActivate) only for push-like buttons (push, default
//   push, BS_USERBUTTON and owner-drawn): a check box or radio button reports through its
//   value event alone;
// - BN_PAINT and the owner-drawing reflected from the parent (WM_DRAWITEM) reach cbExpose.
// Events bubble to the handlers of the top-level window, with the button as the window.
//
// A dialog's "Button" children are wrapped by type: push and default push GwPushButton,
// check boxes GwToggleButton, radio buttons GwRadioButton, three-state boxes Gw3StateButton,
// group boxes GwGroupBox, BS_USERBUTTON GwUserButton, every other type (BS_OWNERDRAW among
// them) a plain GwButton. A GwUserButton made in code is BS_OWNERDRAW, so the wrapping is not
// the inverse of the creating constructors.
class VMGUI_API GwButton : public GwControl {
    GW_DECLARE_CLASS(GwButton)

public:
    // Clones the source's platform button (see GwControl).
    GwButton(GwButton const& source) : GwControl(source) {}
    GwButton(GwButton&& source) : GwButton(static_cast<GwButton const&>(source)) {}
    // Memberwise: afterwards both objects name the same window.
    GwButton& operator=(GwButton const& other);
    ~GwButton() override;

    // Sends BM_SETCHECK with the state through the button's own handler (so the rules above
    // apply); returns the button.
    virtual GwButton& setValue(GwWindow::eCheckState state);
    // The platform's answer to BM_GETCHECK, asked of its own procedure.
    virtual GwWindow::eCheckState value() const;

    // A button attached to the window that GwEventData carries; null without one.
    static GwButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit GwButton(void* hwnd = nullptr) : GwControl(hwnd) {}

    // Creates a "BUTTON" child with the style and binds the object to it.
    GwButton(GwWindow const& parent, unsigned long long id, String const& text,
             unsigned long style);

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // Unchecks the other radio buttons of this button's group.
    void clearRadioGroup();
};

// A push button (BS_PUSHBUTTON); it takes over the font of a dialog built with its own font.
class VMGUI_API GwPushButton : public GwButton {
    GW_DECLARE_CLASS(GwPushButton)

public:
    // A visible push button with WS_GROUP and WS_TABSTOP, at 0,0 with size 0 (place it with
    // setPosition and setDimension).
    GwPushButton(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform button (see GwControl); assignment is memberwise.
    GwPushButton(GwPushButton const& source) : GwButton(source) {}
    GwPushButton(GwPushButton&& source) : GwPushButton(static_cast<GwPushButton const&>(source)) {}
    GwPushButton& operator=(GwPushButton const& other);
    ~GwPushButton() override;

    // A push button attached to the window that GwEventData carries; null without one.
    static GwPushButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit GwPushButton(void* hwnd = nullptr) : GwButton(hwnd) {}
};

// A check box (BS_AUTOCHECKBOX): checked or unchecked; an indeterminate state is ignored.
class VMGUI_API GwToggleButton : public GwButton {
    GW_DECLARE_CLASS(GwToggleButton)

public:
    // A visible check box with WS_GROUP and WS_TABSTOP, at 0,0 with size 0.
    GwToggleButton(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform button (see GwControl); assignment is memberwise.
    GwToggleButton(GwToggleButton const& source) : GwButton(source) {}
    GwToggleButton(GwToggleButton&& source)
        : GwToggleButton(static_cast<GwToggleButton const&>(source)) {}
    GwToggleButton& operator=(GwToggleButton const& other);
    ~GwToggleButton() override;

    // Unchecked or checked as GwButton::setValue; any other state changes nothing.
    GwToggleButton& setValue(GwWindow::eCheckState state) override;

    // A check box attached to the window that GwEventData carries; null without one.
    static GwToggleButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit GwToggleButton(void* hwnd = nullptr) : GwButton(hwnd) {}
};

// A three-state box (BS_AUTO3STATE): unchecked, checked or indeterminate.
class VMGUI_API Gw3StateButton : public GwButton {
    GW_DECLARE_CLASS(Gw3StateButton)

public:
    // A visible three-state box with WS_GROUP and WS_TABSTOP, at 0,0 with size 0.
    Gw3StateButton(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform button (see GwControl); assignment is memberwise.
    Gw3StateButton(Gw3StateButton const& source) : GwButton(source) {}
    Gw3StateButton(Gw3StateButton&& source)
        : Gw3StateButton(static_cast<Gw3StateButton const&>(source)) {}
    Gw3StateButton& operator=(Gw3StateButton const& other);
    ~Gw3StateButton() override;

    // A three-state box attached to the window that GwEventData carries; null without one.
    static Gw3StateButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit Gw3StateButton(void* hwnd = nullptr) : GwButton(hwnd) {}
};

// A radio button (BS_AUTORADIOBUTTON). Each one made in code starts a group of its own
// (WS_GROUP): call setGroup(false) on all but the first of a group.
class VMGUI_API GwRadioButton : public GwButton {
    GW_DECLARE_CLASS(GwRadioButton)

public:
    // A visible radio button with WS_GROUP and WS_TABSTOP, at 0,0 with size 0.
    GwRadioButton(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform button (see GwControl); assignment is memberwise.
    GwRadioButton(GwRadioButton const& source) : GwButton(source) {}
    GwRadioButton(GwRadioButton&& source)
        : GwRadioButton(static_cast<GwRadioButton const&>(source)) {}
    GwRadioButton& operator=(GwRadioButton const& other);
    ~GwRadioButton() override;

    // Unchecked or checked as GwButton::setValue; any other state changes nothing.
    GwRadioButton& setValue(GwWindow::eCheckState state) override;

    // A radio button attached to the window that GwEventData carries; null without one.
    static GwRadioButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit GwRadioButton(void* hwnd = nullptr) : GwButton(hwnd) {}
};

// An owner-drawn button (BS_OWNERDRAW made in code; BS_USERBUTTON when wrapped from a
// dialog): its handlers draw it in cbExpose when the parent asks for the drawing.
class VMGUI_API GwUserButton : public GwButton {
    GW_DECLARE_CLASS(GwUserButton)

public:
    // A visible owner-drawn button (BS_OWNERDRAW) with WS_GROUP and WS_TABSTOP, at 0,0 with size 0.
    GwUserButton(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform button (see GwControl); assignment is memberwise.
    GwUserButton(GwUserButton const& source) : GwButton(source) {}
    GwUserButton(GwUserButton&& source) : GwUserButton(static_cast<GwUserButton const&>(source)) {}
    GwUserButton& operator=(GwUserButton const& other);
    ~GwUserButton() override;

    // An owner-drawn button attached to the window that GwEventData carries; null without
    // one.
    static GwUserButton* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a button with no window.
    explicit GwUserButton(void* hwnd = nullptr) : GwButton(hwnd) {}
};
