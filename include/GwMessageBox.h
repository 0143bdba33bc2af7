// The standard message box in the shape of a dialog.
#pragma once

#include <String.h>

#include "GwDialog.h"

// A message box of the platform.
//
// Message, title, button set and icon are set on the object; setVisible shows the box with
// MessageBoxA, which blocks until the user answers, and result() then tells the button
// pressed (IDOK 1, IDCANCEL 2, IDABORT 3, IDRETRY 4, IDIGNORE 5, IDYES 6, IDNO 7). The object
// has no window of its own.
//
// With an owner frame the owner is disabled while the box is up and its window style is
// put back exactly afterwards; without one the box is task-modal (MB_TASKMODAL). The window
// that was active before gets the activation back.
class VMGUI_API GwMessageBox : public GwDialog {
    GW_DECLARE_CLASS(GwMessageBox)

public:
    // The button set, in the low 4 bits of the style. Any other value gives MB_OK.
    enum eButtonStyle : unsigned int {
        eOk = 1,               // MB_OK
        eOkCancel = 2,         // MB_OKCANCEL
        eRetryCancel = 3,      // MB_RETRYCANCEL
        eAbortRetryIgnore = 4, // MB_ABORTRETRYIGNORE
        eYesNo = 5,            // MB_YESNO
        eYesNoCancel = 6       // MB_YESNOCANCEL
    };

    // The icon, in bits 4 to 7 of the style: the platform's icon flags themselves.
    enum eIconStyle : unsigned int {
        eIconHand = 0x10,        // MB_ICONHAND
        eIconQuestion = 0x20,    // MB_ICONQUESTION
        eIconExclamation = 0x30, // MB_ICONEXCLAMATION
        eIconAsterisk = 0x40     // MB_ICONASTERISK
    };

    // A box with an empty message and title, a single OK button and the exclamation icon
    // (style 0x31), owned by owner (not owned; may be null). The result is 2 until the box
    // was shown.
    explicit GwMessageBox(GwFrame* owner = nullptr);
    // Copies every field, the modal flag and the result included.
    GwMessageBox(GwMessageBox const& other);
    GwMessageBox(GwMessageBox&& other);
    GwMessageBox& operator=(GwMessageBox const& other);
    ~GwMessageBox() override;

    // The title.
    GwMessageBox& setText(String const& title) override;
    // Shows the box, whatever the argument, and returns when it has been answered.
    GwMessageBox& setVisible(bool visible) override;

    // The text shown in the box.
    GwMessageBox& setMessage(String const& message);
    String const& message() const { return mMessage; }
    // The title (setText sets it).
    String const& title() const { return mTitle; }
    // The owner frame, null for none.
    GwFrame* ownerFrame() const { return mOwnerFrame; }

    // Style = (style & 0xFFF0) | buttons: every bit above 15 is cleared too (bits of the
    // argument above the low 4 are kept as they come).
    GwMessageBox& setButtonStyle(eButtonStyle buttons);
    // Style = (style & 0xFF0F) | icon: every bit above 15 is cleared too.
    GwMessageBox& setIconStyle(eIconStyle icon);
    // Bits 4 to 15 are passed to MessageBoxA as they stand, bits above 15 are not; the low 4
    // bits choose the button set.
    unsigned int style() const { return mStyle; }

    // A box without owner.
    static GwMessageBox* newInstance(EventData const* data);

private:
    String mMessage;
    String mTitle;
    GwFrame* mOwnerFrame; // not owned
    unsigned int mStyle;
};
