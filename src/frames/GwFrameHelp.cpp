// The frame's help: the help file, its path and the answers to the help key.
#include "GwFrame.h"

#include <windows.h>

#include <shellapi.h>

#include "GwApplication.h"
#include "GwMessages.h"

namespace {

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

// The running executable's directory with its trailing separator.
String executableDirectory() {
    char buffer[MAX_PATH + 1] = {};
    DWORD const length = GetModuleFileNameA(nullptr, buffer, MAX_PATH);
    String const file(buffer, length < MAX_PATH ? length : MAX_PATH);
    std::size_t const separator = file.findLastOf(String("\\/"));
    return separator == String::npos ? String() : file.substr(0, separator + 1);
}

void openWithShell(String const& path) {
    ShellExecuteA(nullptr, nullptr, path.c_str(), "", nullptr, SW_SHOW);
}

} // namespace

GwFrame::GwHelpFunctor::~GwHelpFunctor() = default;

GwFrame& GwFrame::setHelpFile(String const& file) {
    mHelpFile = file;
    return *this;
}

GwFrame& GwFrame::setHelpFunctor(GwHelpFunctor* functor) {
    mHelpFunctor = functor;
    return *this;
}

String GwFrame::helpPath() const {
    if (!mHelpFile.empty())
        return executableDirectory() + mHelpFile;
    GwApplication const* const application = GwApplication::mTheApplication;
    if (application != nullptr && !application->HelpName().empty())
        return application->HelpName();
    return executableDirectory() + (application != nullptr ? application->name() : String());
}

// The help mode tells how the request came: 0 through the platform (the context-help button,
// a dialog), 0x1010 Shift+F1 and 0x1011 F1 through the message loop, 0x1012 from a help
// button. The mode is spent by the request, except 0x1012, which stays until the next key.
long long GwFrame::msgHandlerHelp(void const* helpInfo) {
    HWND const hwnd = hwndOf(mHandle);
    String const path = helpPath();
    auto const* info = static_cast<HELPINFO const*>(helpInfo);
    bool const windowContext = info != nullptr && info->iContextType == HELPINFO_WINDOW;
    bool const menuContext = info != nullptr && info->iContextType == HELPINFO_MENUITEM;
    // Context data for a window without help identifier: the frame and the control.
    auto const controlContext = [this](unsigned int control) {
        return static_cast<ULONG_PTR>(((id() | 0x8000) << 16) | control);
    };

    switch (gHelpMode) {
    case 0:
        if (mHelpFunctor != nullptr) {
            (*mHelpFunctor)();
        } else if (windowContext) {
            ULONG_PTR const data = info->dwContextId != 0
                                       ? static_cast<ULONG_PTR>(info->dwContextId)
                                       : controlContext(static_cast<unsigned int>(info->iCtrlId));
            WinHelpA(hwnd, path.c_str(), HELP_CONTEXTPOPUP, data);
        } else if (menuContext) {
            ULONG_PTR const data = info->dwContextId != 0
                                       ? static_cast<ULONG_PTR>(info->dwContextId)
                                       : static_cast<ULONG_PTR>(id());
            WinHelpA(hwnd, path.c_str(), HELP_CONTEXT, data);
        }
        break;
    case GwCodeContextHelp:
        if (windowContext && (GetWindowLongA(hwnd, GWL_EXSTYLE) & WS_EX_CONTEXTHELP) != 0) {
            POINT point = info->MousePos;
            ScreenToClient(hwnd, &point);
            HWND const child = ChildWindowFromPointEx(
                hwnd, point, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED | CWP_SKIPTRANSPARENT);
            if (child != nullptr && child != hwnd) {
                DWORD const helpId = GetWindowContextHelpId(child);
                ULONG_PTR const data =
                    helpId != 0
                        ? static_cast<ULONG_PTR>(helpId)
                        : controlContext(static_cast<unsigned int>(GetWindowLongA(child, GWL_ID)));
                WinHelpA(hwnd, path.c_str(), HELP_CONTEXTPOPUP, data);
            }
        }
        break;
    case GwCodeHelp:
        if (mHelpFunctor != nullptr)
            (*mHelpFunctor)();
        else if (windowContext)
            openWithShell(path);
        break;
    case GwCodeHelpFile:
        openWithShell(path);
        return 0; // the mode stays
    default:
        break;
    }
    gHelpMode = 0;
    return 0;
}
