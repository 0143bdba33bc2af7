// The button family and its one message handler.
#include "GwButton.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwMessages.h"

GW_CLASS_MAKES(GwButton, "GwButton", "GwControl")
GW_CLASS_MAKES(GwPushButton, "GwPushButton", "GwButton")
GW_CLASS_MAKES(GwToggleButton, "GwToggleButton", "GwButton")
GW_CLASS_MAKES(Gw3StateButton, "Gw3StateButton", "GwButton")
GW_CLASS_MAKES(GwRadioButton, "GwRadioButton", "GwButton")
GW_CLASS_MAKES(GwUserButton, "GwUserButton", "GwButton")

namespace {

// WS_CHILD | WS_VISIBLE | WS_GROUP | WS_TABSTOP, and the button type.
constexpr unsigned long kButtonStyle = 0x50030000;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

bool isRadioButton(HWND hwnd) {
    return (SendMessageA(hwnd, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
}

bool startsGroup(HWND hwnd) {
    return (GetWindowLongA(hwnd, GWL_STYLE) & WS_GROUP) != 0;
}

// The button types whose click is an activation rather than a change of state.
bool isPushLike(LONG style) {
    switch (style & 0x0F) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
    case BS_USERBUTTON:
    case BS_OWNERDRAW:
        return true;
    default:
        return false;
    }
}

// A check box and a radio button know only unchecked and checked.
bool isTwoState(GwWindow::eCheckState state) {
    return static_cast<unsigned int>(state) <= GwWindow::eChecked;
}

} // namespace

// GwButton

GwButton::GwButton(GwWindow const& parent, unsigned long long id, String const& text,
                   unsigned long style)
    : GwControl() {
    createControl(0, "BUTTON", text.c_str(), style, parent, id);
}

GwButton& GwButton::operator=(GwButton const& other) {
    GwControl::operator=(other);
    return *this;
}

GwButton::~GwButton() = default;

GwButton& GwButton::setValue(GwWindow::eCheckState state) {
    SendMessageA(hwndOf(mHandle), BM_SETCHECK, static_cast<WPARAM>(state), 0);
    return *this;
}

GwWindow::eCheckState GwButton::value() const {
    return static_cast<eCheckState>(const_cast<GwButton*>(this)->callDefHandler(BM_GETCHECK, 0, 0));
}

void GwButton::clearRadioGroup() {
    HWND const self = hwndOf(mHandle);
    // The group starts at the nearest WS_GROUP window at or before this one, or at the first
    // sibling when none has the style.
    HWND start = self;
    while (start != nullptr && !startsGroup(start))
        start = GetWindow(start, GW_HWNDPREV);
    if (start == nullptr)
        start = GetWindow(self, GW_HWNDFIRST);
    HWND sibling = start;
    while (sibling != nullptr) {
        // A library button runs this same handler there and reports its own change.
        if (sibling != self && isRadioButton(sibling))
            SendMessageA(sibling, BM_SETCHECK, BST_UNCHECKED, 0);
        sibling = GetWindow(sibling, GW_HWNDNEXT);
        if (sibling != nullptr && startsGroup(sibling))
            break;
    }
}

long long GwButton::msgHandler(unsigned long long msg, unsigned long long wParam,
                               long long lParam) {
    HWND const hwnd = hwndOf(mHandle);
    switch (msg) {
    case BM_SETCHECK: {
        LRESULT const previous = SendMessageA(hwnd, BM_GETCHECK, 0, 0);
        if (static_cast<unsigned long long>(previous) == wParam)
            return previous;
        callDefHandler(BM_SETCHECK, wParam, lParam);
        if (wParam == BST_CHECKED && isRadioButton(hwnd))
            clearRadioGroup();
        dispatchEvent(GwMsgValue, wParam, 0);
        return previous;
    }
    case GwMsgCommand:
        switch (HIWORD(wParam)) {
        case BN_CLICKED:
            if (isPushLike(GetWindowLongA(hwnd, GWL_STYLE)))
                return dispatchEvent(GwMsgCommand, 0, 0);
            return 0;
        case BN_PAINT:
            dispatchEvent(WM_PAINT, 0, 0);
            return 0;
        default:
            return 0;
        }
    default:
        return GwControl::msgHandler(msg, wParam, lParam);
    }
}

GwButton* GwButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwButton(hwnd) : nullptr;
}

// GwPushButton

GwPushButton::GwPushButton(GwWindow const& parent, unsigned long long id, String const& text)
    : GwButton(parent, id, text, kButtonStyle | BS_PUSHBUTTON) {
    setControlFont();
}

GwPushButton& GwPushButton::operator=(GwPushButton const& other) {
    GwButton::operator=(other);
    return *this;
}

GwPushButton::~GwPushButton() = default;

GwPushButton* GwPushButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwPushButton(hwnd) : nullptr;
}

// GwToggleButton

GwToggleButton::GwToggleButton(GwWindow const& parent, unsigned long long id, String const& text)
    : GwButton(parent, id, text, kButtonStyle | BS_AUTOCHECKBOX) {}

GwToggleButton& GwToggleButton::operator=(GwToggleButton const& other) {
    GwButton::operator=(other);
    return *this;
}

GwToggleButton::~GwToggleButton() = default;

GwToggleButton& GwToggleButton::setValue(GwWindow::eCheckState state) {
    if (isTwoState(state))
        GwButton::setValue(state);
    return *this;
}

GwToggleButton* GwToggleButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwToggleButton(hwnd) : nullptr;
}

// Gw3StateButton

Gw3StateButton::Gw3StateButton(GwWindow const& parent, unsigned long long id, String const& text)
    : GwButton(parent, id, text, kButtonStyle | BS_AUTO3STATE) {}

Gw3StateButton& Gw3StateButton::operator=(Gw3StateButton const& other) {
    GwButton::operator=(other);
    return *this;
}

Gw3StateButton::~Gw3StateButton() = default;

Gw3StateButton* Gw3StateButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new Gw3StateButton(hwnd) : nullptr;
}

// GwRadioButton

GwRadioButton::GwRadioButton(GwWindow const& parent, unsigned long long id, String const& text)
    : GwButton(parent, id, text, kButtonStyle | BS_AUTORADIOBUTTON) {}

GwRadioButton& GwRadioButton::operator=(GwRadioButton const& other) {
    GwButton::operator=(other);
    return *this;
}

GwRadioButton::~GwRadioButton() = default;

GwRadioButton& GwRadioButton::setValue(GwWindow::eCheckState state) {
    if (isTwoState(state))
        GwButton::setValue(state);
    return *this;
}

GwRadioButton* GwRadioButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwRadioButton(hwnd) : nullptr;
}

// GwUserButton

GwUserButton::GwUserButton(GwWindow const& parent, unsigned long long id, String const& text)
    : GwButton(parent, id, text, kButtonStyle | BS_OWNERDRAW) {}

GwUserButton& GwUserButton::operator=(GwUserButton const& other) {
    GwButton::operator=(other);
    return *this;
}

GwUserButton::~GwUserButton() = default;

GwUserButton* GwUserButton::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwUserButton(hwnd) : nullptr;
}
