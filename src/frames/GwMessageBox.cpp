// The message box: MessageBoxA with the shape of a dialog.
#include "GwMessageBox.h"

#include <windows.h>

GW_CLASS_MAKES(GwMessageBox, "GwMessageBox", "GwDialog")

namespace {

// Button style 1, the exclamation icon.
constexpr unsigned int kDefaultStyle = 0x31;
constexpr unsigned int kButtonBits = 0xF;

// The MessageBoxA flags of a button style.
UINT buttonFlags(unsigned int buttons) {
    switch (buttons) {
    case GwMessageBox::eOkCancel:
        return MB_OKCANCEL;
    case GwMessageBox::eRetryCancel:
        return MB_RETRYCANCEL;
    case GwMessageBox::eAbortRetryIgnore:
        return MB_ABORTRETRYIGNORE;
    case GwMessageBox::eYesNo:
        return MB_YESNO;
    case GwMessageBox::eYesNoCancel:
        return MB_YESNOCANCEL;
    default:
        return MB_OK;
    }
}

} // namespace

GwMessageBox::GwMessageBox(GwFrame* owner) : GwDialog(), mOwnerFrame(owner), mStyle(kDefaultStyle) {
    setResult(IDCANCEL);
}

GwMessageBox::GwMessageBox(GwMessageBox const& other)
    : GwDialog(other), mMessage(other.mMessage), mTitle(other.mTitle),
      mOwnerFrame(other.mOwnerFrame), mStyle(other.mStyle) {}

GwMessageBox::GwMessageBox(GwMessageBox&& other)
    : GwMessageBox(static_cast<GwMessageBox const&>(other)) {}

GwMessageBox& GwMessageBox::operator=(GwMessageBox const& other) {
    if (this == &other)
        return *this;
    GwDialog::operator=(other);
    mMessage = other.mMessage;
    mTitle = other.mTitle;
    mOwnerFrame = other.mOwnerFrame;
    mStyle = other.mStyle;
    return *this;
}

GwMessageBox::~GwMessageBox() = default;

GwMessageBox* GwMessageBox::newInstance(EventData const*) {
    return new GwMessageBox(nullptr);
}

GwMessageBox& GwMessageBox::setText(String const& title) {
    mTitle = title;
    mText = title; // what text() answers without a window
    return *this;
}

GwMessageBox& GwMessageBox::setMessage(String const& message) {
    mMessage = message;
    return *this;
}

GwMessageBox& GwMessageBox::setButtonStyle(eButtonStyle buttons) {
    mStyle = (mStyle & 0xFFF0u) | static_cast<unsigned int>(buttons);
    return *this;
}

GwMessageBox& GwMessageBox::setIconStyle(eIconStyle icon) {
    mStyle = (mStyle & 0xFF0Fu) | static_cast<unsigned int>(icon);
    return *this;
}

GwMessageBox& GwMessageBox::setVisible(bool) {
    // Bits 4 to 15 (the icon and whatever lies above it) are MessageBoxA flags as they stand.
    UINT flags = mStyle & 0xFFF0u;
    HWND const active = GetActiveWindow();
    HWND const owner = mOwnerFrame != nullptr ? static_cast<HWND>(mOwnerFrame->window()) : nullptr;
    LONG const ownerStyle = owner != nullptr ? GetWindowLongA(owner, GWL_STYLE) : 0;
    if (owner != nullptr)
        SetWindowLongA(owner, GWL_STYLE, ownerStyle | WS_DISABLED);
    else if (mOwnerFrame == nullptr)
        flags |= MB_TASKMODAL;
    flags |= buttonFlags(mStyle & kButtonBits);

    setResult(MessageBoxA(owner, mMessage.c_str(), mTitle.c_str(), flags));

    if (owner != nullptr)
        SetWindowLongA(owner, GWL_STYLE, ownerStyle);
    if (active != nullptr)
        SetActiveWindow(active);
    return *this;
}
