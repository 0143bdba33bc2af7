// The status bar: the common status-bar control as a control bar.
#pragma once

#include "GwControlBar.h"

class GwResource;

// Wraps a "msctls_statusbar32" window. A frame creates one along its bottom edge and writes
// into the control's simple-mode text only (SB_SETTEXTA with index 255 and SBT_NOBORDERS,
// SB_SIMPLE while a menu is open). The bar has no panes and no message handling of its own;
// calculate is the control bar's (the current size).
class VMGUI_API GwStatusBar : public GwControlBar {
    GW_DECLARE_CLASS(GwStatusBar)

public:
    // A visible status bar on parent with the identifier, with a size grip when sizeGrip.
    GwStatusBar(GwWindow& parent, unsigned long long id, bool sizeGrip);
    // The same; a null parent makes no window and raises a debugger break.
    GwStatusBar(GwWindow* parent, unsigned long long id, bool sizeGrip);
    // As a copied window object: no window of its own; the resource is duplicated.
    GwStatusBar(GwStatusBar const& other);
    GwStatusBar& operator=(GwStatusBar const& other);
    ~GwStatusBar() override;

    // The bar's resource (the executable unless assigned).
    GwResource& resource() const { return *mResource; }

    // A bar wrapping the window that a GwEventData carries; null without one.
    static GwStatusBar* newInstance(EventData const* data);

protected:
    // A bar for an existing window (bound and subclassed).
    explicit GwStatusBar(void* handle);

private:
    void create(void* parent, unsigned long long id, bool sizeGrip);

    GwResource* mResource; // owned
};
