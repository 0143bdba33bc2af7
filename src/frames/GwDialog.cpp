// The dialog: a frame of the platform's dialog class, with modal loops and results.
#include "GwDialog.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwMessages.h"
#include "GwWindowClass.h"

GW_CLASS_MAKES(GwDialog, "GwDialog", "GwFrame")

namespace {

// The platform's dialog class.
constexpr WORD kDialogClass = 32770;
constexpr char kDialogTitle[] = "DialogFenster";
// WS_OVERLAPPEDWINDOW
constexpr DWORD kDialogStyle = 0x00CF0000;
// The result of a dialog that was closed.
constexpr int kClosed = IDCANCEL;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

bool isChild(HWND hwnd) {
    return hwnd != nullptr && (GetWindowLongA(hwnd, GWL_STYLE) & WS_CHILD) != 0;
}

// A push button (BS_PUSHBUTTON or BS_DEFPUSHBUTTON) of the platform's button class.
bool isPushButton(HWND control) {
    if (GwWindowClass::kindOf(control) != GwWindowClass::eButton)
        return false;
    LONG const type = GetWindowLongA(control, GWL_STYLE) & 0xF;
    return type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON;
}

} // namespace

GwDialog::GwDialog() : GwDialog(static_cast<void*>(nullptr)) {}

GwDialog::GwDialog(void* handle) : GwFrame(handle), mFlags(0), mResult(-1), mLoop(nullptr) {}

GwDialog::GwDialog(unsigned long long id) : GwDialog() {
    // The identifier is not passed as the menu parameter: for a top-level window the
    // platform takes that parameter as a menu handle and refuses to create the window when
    // it is none.
    HWND const hwnd = CreateWindowExA(0, MAKEINTATOM(kDialogClass), kDialogTitle, kDialogStyle,
                                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                      nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
    attach(hwnd);
    setId(id);
}

GwDialog::GwDialog(unsigned long long id, GwFrame& owner) : GwDialog() {
    HWND const ownerWindow = hwndOf(owner.window());
    HWND const hwnd = CreateWindowExA(0, MAKEINTATOM(kDialogClass), kDialogTitle, kDialogStyle,
                                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                                      ownerWindow, nullptr, GetModuleHandleA(nullptr), nullptr);
    mOwner = ownerWindow;
    attach(hwnd);
    setId(id);
    mHelpFile = owner.helpFile();
}

GwDialog::GwDialog(GwDialog const& other)
    : GwFrame(other), mFlags(other.mFlags), mResult(other.mResult), mLoop(nullptr) {}

GwDialog& GwDialog::operator=(GwDialog const& other) {
    if (this == &other)
        return *this;
    GwFrame::operator=(other);
    mFlags = other.mFlags;
    mResult = other.mResult;
    return *this;
}

GwDialog::~GwDialog() {
    if (mHandle != nullptr)
        exitInstance();
    // The loops running for the dialog learn that it is gone.
    for (ModalLoop* loop = mLoop; loop != nullptr; loop = loop->outer)
        loop->alive = false;
    mLoop = nullptr;
}

GwDialog* GwDialog::newInstance(EventData const* data) {
    void* const handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwDialog(handle) : nullptr;
}

bool GwDialog::exitInstance() {
    HWND const hwnd = hwndOf(mHandle);
    if (hwnd != nullptr && mPrevProc != nullptr) {
        if (IsWindowVisible(hwnd))
            setVisible(false);
        else if (mLoop != nullptr)
            PostQuitMessage(0); // the window is going (hidden already) while its loop runs
    }
    return GwFrame::exitInstance();
}

GwDialog& GwDialog::setMenuBar(unsigned long long) {
    return *this;
}

GwDialog& GwDialog::setModal(bool modal) {
    if (mHandle != nullptr && IsWindowVisible(hwndOf(mHandle)))
        return *this;
    mFlags = modal ? mFlags | eModal : mFlags & ~eModal;
    return *this;
}

GwDialog& GwDialog::setResult(int result) {
    mResult = result;
    return *this;
}

int GwDialog::result() const {
    return mResult;
}

GwDialog& GwDialog::setVisible(bool visible) {
    HWND const hwnd = hwndOf(mHandle);
    if (hwnd == nullptr)
        return *this;
    if (isChild(hwnd)) {
        ShowWindow(hwnd, visible ? SW_SHOW : SW_HIDE);
        return *this;
    }
    bool const shown = IsWindowVisible(hwnd) != FALSE;
    if (!visible) {
        if (!shown)
            return *this;
        if (modal())
            PostQuitMessage(0); // ends the loop of runModal, which then hides the dialog
        else
            ShowWindow(hwnd, SW_HIDE);
        return *this;
    }
    if (modal() && !shown) {
        runModal();
        return *this;
    }
    if (!shown)
        callDefHandler(DM_REPOSITION, 0, 0); // keeps the dialog on the screen
    SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
    return *this;
}

void GwDialog::runModal() {
    HWND const hwnd = hwndOf(mHandle);
    callDefHandler(DM_REPOSITION, 0, 0);
    HWND const owner = GetWindow(hwnd, GW_OWNER);
    LONG const ownerStyle = owner != nullptr ? GetWindowLongA(owner, GWL_STYLE) : 0;
    if (owner != nullptr)
        SetWindowLongA(owner, GWL_STYLE, ownerStyle | WS_DISABLED);
    SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);

    ModalLoop loop{true, mLoop};
    mLoop = &loop;
    GwWindow::msgLoop(); // until setVisible(false) posts the quit message
    bool const alive = loop.alive;
    if (alive)
        mLoop = loop.outer;

    if (owner != nullptr && IsWindow(owner)) {
        SetWindowLongA(owner, GWL_STYLE, ownerStyle);
        SetActiveWindow(owner);
    }
    if (alive)
        ShowWindow(hwnd, SW_HIDE);
}

void GwDialog::position(long& x, long& y) const {
    GwPosition const at = position();
    x = at.x();
    y = at.y();
}

GwPosition GwDialog::position() const {
    HWND const hwnd = hwndOf(mHandle);
    if (isChild(hwnd))
        return GwFrame::position();
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    return GwPosition(rect.left, GetSystemMetrics(SM_CYSCREEN) - rect.bottom);
}

GwDialog& GwDialog::setPosition(GwPosition const& position) {
    HWND const hwnd = hwndOf(mHandle);
    if (isChild(hwnd)) {
        GwFrame::setPosition(position);
        return *this;
    }
    RECT rect{};
    GetWindowRect(hwnd, &rect);
    long const height = rect.bottom - rect.top;
    SetWindowPos(hwnd, nullptr, static_cast<int>(position.x()),
                 static_cast<int>(GetSystemMetrics(SM_CYSCREEN) - position.y() - height), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
    return *this;
}

long long GwDialog::msgHandler(unsigned long long msg, unsigned long long wParam,
                               long long lParam) {
    HWND const hwnd = hwndOf(mHandle);
    if (msg == gGwWM_Message && gGwWM_Message != 0 && wParam == GwCodePreTranslate)
        return IsDialogMessageA(hwnd, reinterpret_cast<MSG*>(lParam));

    switch (msg) {
    case WM_CLOSE:
        if (dispatchEvent(WM_CLOSE, 0, 0) != 0 || isChild(hwnd))
            return 0;
        setResult(kClosed);
        setVisible(false);
        return 0;
    case WM_COMMAND:
        if (lParam == 0)
            break; // a menu or an accelerator: as in the frame
        if (lParam == 1)
            return 0;
        return msgHandlerControl(wParam, lParam);
    default:
        break;
    }
    return GwFrame::msgHandler(msg, wParam, lParam);
}

long long GwDialog::msgHandlerControl(unsigned long long wParam, long long lParam) {
    HWND const control = reinterpret_cast<HWND>(lParam);
    bool const bound = GwWindow::window(control, false) != nullptr;
    if (!isPushButton(control)) {
        if (bound)
            dispatchEvent(WM_COMMAND, wParam, lParam);
        return 0;
    }
    if (bound && dispatchEvent(WM_COMMAND, wParam, lParam) != 0)
        return 0; // a handler took it
    int const id = LOWORD(wParam);
    if (id == 0) {
        // The help button.
        SendMessageA(hwndOf(mHandle), gGwWM_Message, GwCodeHelpFile, 0);
        return 0;
    }
    if ((bound || id == IDOK || id == IDCANCEL) && !isChild(hwndOf(mHandle))) {
        setResult(id);
        setVisible(false);
    }
    return 0;
}
