// Display-only controls: static windows, text labels, group boxes and images.
#pragma once

#include <String.h>

#include "GwControl.h"

class GwResource;

// Any platform "STATIC" window; it makes none of its own. A dialog's "Static" children are
// wrapped by the whole low byte of their style: SS_LEFT, SS_CENTER, SS_RIGHT, SS_SIMPLE and
// SS_LEFTNOWORDWRAP become GwText; SS_ICON, SS_BITMAP and SS_ENHMETAFILE GwImage; anything
// else a plain GwStatic - a label with a flag in that byte too (SS_NOPREFIX, say) included.
// None of these controls produces events of its own.
class VMGUI_API GwStatic : public GwControl {
    GW_DECLARE_CLASS(GwStatic)

public:
    // Clones the source's platform static (see GwControl); assignment is memberwise.
    GwStatic(GwStatic const& source) : GwControl(source) {}
    GwStatic(GwStatic&& source) : GwStatic(static_cast<GwStatic const&>(source)) {}
    GwStatic& operator=(GwStatic const& other);
    ~GwStatic() override;

    // A static attached to the window that GwEventData carries; null without one.
    static GwStatic* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a static with no window.
    explicit GwStatic(void* hwnd = nullptr) : GwControl(hwnd) {}
};

// A text label (SS_LEFT). Its text is the window text (text, setText).
class VMGUI_API GwText : public GwStatic {
    GW_DECLARE_CLASS(GwText)

public:
    // A visible label with WS_GROUP and WS_TABSTOP, at 0,0 with size 0; it takes over the font
    // of a dialog built with its own font.
    GwText(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform static (see GwControl); assignment is memberwise.
    GwText(GwText const& source) : GwStatic(source) {}
    GwText(GwText&& source) : GwText(static_cast<GwText const&>(source)) {}
    GwText& operator=(GwText const& other);
    ~GwText() override;

    // A label attached to the window that GwEventData carries; null without one.
    static GwText* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a label with no window.
    explicit GwText(void* hwnd = nullptr) : GwStatic(hwnd) {}
};

// The framed caption around a group of controls: a "BUTTON" window of type BS_GROUPBOX that
// belongs to the static branch of the classes.
class VMGUI_API GwGroupBox : public GwStatic {
    GW_DECLARE_CLASS(GwGroupBox)

public:
    // A visible group box with WS_GROUP and WS_TABSTOP, at 0,0 with size 0.
    GwGroupBox(GwWindow const& parent, unsigned long long id, String const& text);
    // Clones the source's platform static (see GwControl); assignment is memberwise.
    GwGroupBox(GwGroupBox const& source) : GwStatic(source) {}
    GwGroupBox(GwGroupBox&& source) : GwGroupBox(static_cast<GwGroupBox const&>(source)) {}
    GwGroupBox& operator=(GwGroupBox const& other);
    ~GwGroupBox() override;

    // A group box attached to the window that GwEventData carries; null without one.
    static GwGroupBox* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a group box with no window.
    explicit GwGroupBox(void* hwnd = nullptr) : GwStatic(hwnd) {}
};

// A bitmap, icon or enhanced metafile shown in a static window of the matching type
// (SS_BITMAP, SS_ICON, SS_ENHMETAFILE). A bitmap larger than the control in either direction,
// in a static with SS_REALSIZEIMAGE, is painted squeezed into the client area (HALFTONE
// stretching, the aspect ratio not kept); a smaller one is painted by the platform.
class VMGUI_API GwImage : public GwStatic {
    GW_DECLARE_CLASS(GwImage)

public:
    // The kind of image setImage loads.
    enum eImageType { eBitmap = 0, eEnhMetaFile = 1, eIcon = 2 };

    // Clones the source's platform static (see GwControl); assignment is memberwise.
    GwImage(GwImage const& source) : GwStatic(source) {}
    GwImage(GwImage&& source) : GwImage(static_cast<GwImage const&>(source)) {}
    GwImage& operator=(GwImage const& other);
    ~GwImage() override;

    // Loads the image from a file and shows it (LR_LOADMAP3DCOLORS with map3DColors). A type
    // that does not match the static's style, or a file that cannot be loaded, changes
    // nothing. The control owns the image: the one it showed before is freed (with
    // DeleteObject, DestroyIcon or DeleteEnhMetaFile, as its type needs), and the last one it
    // loaded is freed when its window is destroyed (unless STM_SETIMAGE replaced it).
    GwImage& setImage(String const& fileName, eImageType type, bool map3DColors);
    // The same from the resources of a module (the executable's when the resource holds
    // none), by the low 16 bits of the numeric identifier. LoadImageA reads no enhanced
    // metafiles: those come from the file itself, or from a resource of the type
    // "ENHMETAFILE".
    GwImage& setImage(unsigned long long id, GwResource const& module, eImageType type,
                      bool map3DColors);

    // An image control attached to the window that GwEventData carries; null without one.
    static GwImage* newInstance(EventData const* data);

protected:
    // An image control with no window.
    GwImage() : GwStatic(static_cast<void*>(nullptr)) {}
    // Attaches to an existing window.
    explicit GwImage(void* hwnd) : GwStatic(hwnd) {}

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // Shows an image loaded by LoadImageA from module (null for a file) and name.
    GwImage& load(void* module, char const* name, eImageType type, unsigned int flags);
    // Paints an oversized bitmap squeezed; false when the platform should paint.
    bool paintSqueezed();
};
