// A document of the rich-text editor inside a window of the application.
#pragma once

#include <String.h>

#include "GwWindow.h"

// A document of the rich-text editor inside a window of the application.
//
// Binds the editor's edit area (a window of the class "QuillEditArea", the first child of
// the first child of the parent, or one of its siblings) and subclasses it, so that it
// behaves like any library window: mouse buttons, keys and clicks go to the attached
// handlers first, and only what they leave unhandled reaches the editor; the editor's
// notifications (the registered message "QuillDllNotification", watched by a message hook
// of the thread while any editor object is bound) come to the handlers as cbNotify with the
// notification's code.
//
// A notification names in its lParam the window that holds the document. When it names no
// window, the target is found from the window that received it: in an MDI frame the first
// child of the active MDI child, in another frame its client.
//
// Destroying the object leaves the edit area with the library's window procedure, so that a
// later editor object over the same area takes over from the editor's own procedure; until
// then the area's messages go straight to the editor.
class VMGUI_API GwQuillEdit : public GwWindow {
    GW_DECLARE_CLASS(GwQuillEdit)

public:
    // Binds the edit area that the parent holds; without one, and with a document, opens the
    // document in the parent first (QuillDll_OpenDocExt), read-only or for editing. A parent
    // whose client area is empty is first sized to its own parent's client area.
    GwQuillEdit(GwWindow const& parent, void* document, bool readOnly);
    // Always opens the document from the file in the parent, then binds its edit area.
    GwQuillEdit(GwWindow const& parent, void* document, String const& fileName);
    // As the String form (a string literal would otherwise choose the bool form).
    GwQuillEdit(GwWindow const& parent, void* document, char const* fileName);
    // Leaves the edit area working for the editor (its messages still reach it).
    ~GwQuillEdit() override;

    // Null: an editor window is made only from its document.
    static GwQuillEdit* newInstance(EventData const* data);

    // Editor objects bound to an edit area.
    static int count;
    // The thread's WH_CALLWNDPROC hook, installed while count is above 0.
    static void* hHook;
    // The registered message "QuillDllNotification", registered with the first editor.
    static unsigned long long msgNotify;

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // Sizes an empty parent to its own parent's client area.
    static void fitParent(GwWindow const& parent);
    // Finds and binds the edit area in the parent; answers whether it found one.
    bool searchWindow(GwWindow const& parent);
    static long long __stdcall msgHook(int code, unsigned long long wParam, long long lParam);
};
