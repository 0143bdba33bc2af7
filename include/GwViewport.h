// A child window whose content the application's event handlers paint.
#pragma once

#include "GwControl.h"
#include "GwStartup.h"

class GwGC;

// A window of the library's own class "GwViewport". Painting goes through the handlers'
// cbExpose with a graphics context (GwGC) made for the paint message, in three phases:
// 1 before painting, 0 the drawing itself (clipped to the invalid area, which is filled with
// the background colour first) and 2 after painting. Mouse and key input go to the handlers
// first; a click gives the viewport the keyboard focus before the handlers see it.
//
// The device mode (setDeviceMode) chooses whether viewports get a private device context
// (CS_OWNDC); it can only change while no viewport window exists.
class VMGUI_API GwViewport : public GwControl {
    GW_DECLARE_CLASS(GwViewport)

public:
    // Registers the window class at start-up (shared device contexts).
    class VMGUI_API GwRegister : public GwStartup {
    public:
        bool initInstance() override;
    };

    // A visible 10 by 10 child of parent with the identifier id.
    GwViewport(GwWindow& parent, unsigned long long id);
    // The same; a null parent is a programming error (DebugBreak) and leaves the object
    // without a window.
    GwViewport(GwWindow* parent, unsigned long long id);
    // Clones the source's window.
    GwViewport(GwViewport const& source);
    // Memberwise: afterwards both objects name the same window.
    GwViewport& operator=(GwViewport const& other);
    // Tells the listeners that it is going away (event type 2), deletes the cached context.
    ~GwViewport() override;

    // The cached graphics context, made on first request; a size change drops it.
    GwGC* gc();
    operator GwGC&() { return *gc(); }
    operator GwGC*() { return gc(); }

    // The background colour, 0x00RRGGBB or with bit 31 a COLORREF; all bits set (the
    // initial value) means the system window colour. No repaint.
    GwViewport& setColor(unsigned long color);
    unsigned long color() const { return mColor; }

    // Stores the mode and registers the window class anew, with CS_OWNDC when ownDC is
    // true. False when the class cannot be unregistered because viewport windows exist: the
    // old registration stays, although the mode has already been stored.
    static bool setDeviceMode(bool ownDC);

    // A viewport attached to the window that the GwEventData carries; null without one.
    static GwViewport* newInstance(EventData const* data);

    // The mode setDeviceMode stored: viewports keep a device context of their own.
    static bool gOwnDC;
    // Registers the window class "GwViewport".
    static GwRegister gStartup;

protected:
    // Attaches to an existing window; without one, an empty viewport.
    explicit GwViewport(void* hwnd = nullptr);

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    void create(void* parent, unsigned long long id);
    // The paint protocol of WM_PAINT.
    void paint();
    // The background colour as a COLORREF.
    unsigned long backgroundRef() const;

    [[maybe_unused]] unsigned long long mReserved;
    GwGC* mGC;
    unsigned long mColor;
};
