// The base of every child control: dialog navigation bits, cloning, the dialog font.
#pragma once

#include "GwWindow.h"

// The base of every child control. A control's events (activate, select, value) bubble
// to the handlers of its top-level window with the control as the window argument.
class VMGUI_API GwControl : public GwWindow {
    GW_DECLARE_CLASS(GwControl)

public:
    // Clones the source's platform control (class, styles, text up to 255 characters,
    // position, size, identifier) and places the clone right after it among its siblings.
    GwControl(GwControl const& source);
    GwControl(GwControl&& source) : GwControl(static_cast<GwControl const&>(source)) {}
    // Memberwise: afterwards both objects name the same window.
    GwControl& operator=(GwControl const& other);
    ~GwControl() override;

    using GwWindow::add;
    using GwWindow::remove;
    GwControl& add(GwEventHandler* handler) override;
    GwControl& remove(GwEventHandler* handler) override;

    // WS_TABSTOP and WS_GROUP of the live window style.
    virtual GwControl& setTabstop(bool on);
    virtual bool tabstop() const;
    virtual GwControl& setGroup(bool on);
    virtual bool group() const;

    // A control attached to the window that GwEventData carries; null without one.
    static GwControl* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, an empty control.
    explicit GwControl(void* hwnd = nullptr);

    // Takes over the font of a parent dialog that was built with its own font (DS_SETFONT).
    GwControl& setControlFont();

    // Creates the control's window as a child of parent (position and size 0, `id` as its
    // control identifier, the executable as its instance) and binds the object to it. A
    // window the platform refuses leaves the object without one; nothing is reported.
    void createControl(unsigned long exStyle, char const* className, char const* text,
                       unsigned long style, GwWindow const& parent, unsigned long long id);
};
