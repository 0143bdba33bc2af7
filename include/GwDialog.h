// Dialogs: frames whose window belongs to the platform's dialog class.
#pragma once

#include "GwFrame.h"

// A dialog is a frame whose window is of the platform's dialog class (atom 32770). It is
// shown modelessly or modally; a modal dialog runs the library's message loop nested inside
// setVisible(true) until it is hidden, so setVisible returns only when the dialog has ended.
// Modal loops nest: a dialog shown from a handler of another modal dialog runs its own loop,
// and hiding it ends only that loop.
//
// The dialog ends itself with a result: closing it gives 2; a push button ends it with the
// button's identifier when the button has an object and none of the handlers takes the
// command, and without an object only OK (1) and Cancel (2) end it. A push button with
// identifier 0 is the help button: it opens the help file with the shell instead. Every
// queued message for the dialog is offered to IsDialogMessageA (GwWM_Message code 0x1002),
// so Tab, the arrow keys, Enter and Escape work as in any dialog.
//
// Positions of a top-level dialog count from the bottom-left corner of the screen, upward;
// a dialog that is a child window is placed as every window (GwWindow).
//
// Dialogs built from templates come from GwResource::loadDialog.
class VMGUI_API GwDialog : public GwFrame {
    GW_DECLARE_CLASS(GwDialog)

public:
    // A hidden top-level dialog titled "DialogFenster" (WS_OVERLAPPEDWINDOW) with the
    // identifier.
    explicit GwDialog(unsigned long long id);
    // The same, owned by owner's window; the dialog takes the owner's help file.
    GwDialog(unsigned long long id, GwFrame& owner);
    // As a copied frame the copy has no window; it takes the modal flag and the result.
    GwDialog(GwDialog const& other);
    GwDialog& operator=(GwDialog const& other);
    // Hides a visible dialog first, which ends its modal loop.
    ~GwDialog() override;

    // Showing a modal dialog runs its loop: the owner is disabled meanwhile and activated
    // again afterwards, and the dialog is hidden when the loop ends. Showing a modeless one
    // raises it. Hiding a modal dialog ends its loop. A dialog that is a child window is only
    // shown or hidden.
    GwDialog& setVisible(bool visible) override;
    // The bottom-left corner, counted from the bottom-left corner of the screen.
    GwDialog& setPosition(GwPosition const& position) override;
    GwPosition position() const override;
    GwDialog& setPosition(long x, long y) { return setPosition(GwPosition(x, y)); }
    void position(long& x, long& y) const;

    // Takes effect only while the dialog is hidden.
    GwDialog& setModal(bool modal);
    bool modal() const { return (mFlags & eModal) != 0; }

    // The answer of the dialog: -1 until something sets it; it stays until the next
    // setResult (showing the dialog again does not reset it).
    virtual GwDialog& setResult(int result);
    virtual int result() const;

    // A dialog wrapping the window that a GwEventData carries; null without one.
    static GwDialog* newInstance(EventData const* data);

protected:
    // No window.
    GwDialog();
    // Wraps an existing dialog window and subclasses it; no window for a null handle.
    explicit GwDialog(void* handle);

    // A visible dialog is hidden (ending its modal loop), then its children are destroyed.
    bool exitInstance() override;
    // Applies dialog navigation (IsDialogMessageA) to the queued messages. In a top-level
    // dialog, a close that no handler takes ends the dialog with IDCANCEL, and a push button
    // that no handler takes (one with a library object, or OK or Cancel) ends it with the
    // button's identifier; the button with identifier 0 opens the help file.
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;
    // WM_COMMAND from a control window.
    long long msgHandlerControl(unsigned long long wParam, long long lParam);

private:
    // A dialog has no menu bar.
    GwDialog& setMenuBar(unsigned long long menuId) override;

    // Runs the modal loop of a hidden dialog.
    void runModal();

    enum eFlags : unsigned int { eModal = 0x1 };

    unsigned int mFlags; // eFlags
    int mResult;
    // A modal loop running for the dialog; destruction clears alive, so that the loop does
    // not touch the object when it ends.
    struct ModalLoop {
        bool alive;
        ModalLoop* outer; // a loop further out for the same dialog, or null
    };
    ModalLoop* mLoop; // the innermost, null while none runs
};
