// The editor window: the editor's edit area bound and subclassed, its notifications turned
// into cbNotify through a message hook of the thread.
#include "GwQuillEdit.h"

#include <windows.h>

#include "GwFrame.h"
#include "GwMDIFrame.h"
#include "GwMessages.h"
#include "window/GwInputMessages.h"

GW_CLASS_NULL(GwQuillEdit, "GwQuillEdit", "GwWindow")

// The editor library's entry point, forwarded by this library (editor/QuillForwarders.S).
extern "C" long long QuillDll_OpenDocExt(void* document, HWND parent, char const* fileName,
                                         int show, int editable, int flags);

int GwQuillEdit::count = 0;
void* GwQuillEdit::hHook = nullptr;
unsigned long long GwQuillEdit::msgNotify = 0;

namespace {

char const kEditAreaClass[] = "QuillEditArea";

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

// The edit area of a window holding a document: the first child of its first child.
HWND editAreaOf(HWND holder) {
    HWND const document = holder != nullptr ? GetWindow(holder, GW_CHILD) : nullptr;
    return document != nullptr ? GetWindow(document, GW_CHILD) : nullptr;
}

// Takes over the edit area when its editor object goes: it keeps the library's procedure in
// place and hands every message to the procedure the editor object had saved (the editor's
// own), until the area is destroyed or another editor object binds it.
class EditAreaKeeper : public GwWindow {
public:
    explicit EditAreaKeeper(void* area) : GwWindow(area) {}
    // Leaves the window to the object that bound it since.
    void release() { mHandle = nullptr; }

protected:
    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override {
        if (msg == WM_NCDESTROY)
            return GwWindow::msgHandler(msg, wParam, lParam);
        return callDefHandler(msg, wParam, lParam);
    }
};

} // namespace

GwQuillEdit::GwQuillEdit(GwWindow const& parent, void* document, bool readOnly) : GwWindow() {
    fitParent(parent);
    if (!searchWindow(parent) && document != nullptr) {
        QuillDll_OpenDocExt(document, hwndOf(parent.window()), nullptr, 1, readOnly ? 0 : 1, 0);
        searchWindow(parent);
    }
}

GwQuillEdit::GwQuillEdit(GwWindow const& parent, void* document, String const& fileName)
    : GwWindow() {
    fitParent(parent);
    QuillDll_OpenDocExt(document, hwndOf(parent.window()), fileName.c_str(), 1, 0, 0);
    searchWindow(parent);
}

GwQuillEdit::GwQuillEdit(GwWindow const& parent, void* document, char const* fileName)
    : GwQuillEdit(parent, document, String(fileName != nullptr ? fileName : "")) {}

GwQuillEdit::~GwQuillEdit() {
    if (mHandle == nullptr)
        return;
    // Only while the area is bound to this object: a later editor object over the same area
    // has taken it over and keeps it.
    if (IsWindow(hwndOf(mHandle)) && GwWindow::window(mHandle, false) == this) {
        // The area keeps the library's procedure; a keeper object takes over the procedure
        // saved here, so that its messages still reach the editor.
        new EditAreaKeeper(mHandle);
    }
    mHandle = nullptr;
    if (--count == 0 && hHook != nullptr) {
        UnhookWindowsHookEx(static_cast<HHOOK>(hHook));
        hHook = nullptr;
    }
}

void GwQuillEdit::fitParent(GwWindow const& parent) {
    HWND const hwnd = hwndOf(parent.window());
    if (hwnd == nullptr)
        return;
    RECT area{};
    GetClientRect(hwnd, &area);
    if (area.right - area.left != 0 || area.bottom - area.top != 0)
        return;
    HWND const outer = GetParent(hwnd);
    if (outer == nullptr)
        return;
    RECT outerArea{};
    GetClientRect(outer, &outerArea);
    MoveWindow(hwnd, outerArea.left, outerArea.top, outerArea.right - outerArea.left,
               outerArea.bottom - outerArea.top, TRUE);
}

bool GwQuillEdit::searchWindow(GwWindow const& parent) {
    if (msgNotify == 0)
        msgNotify = RegisterWindowMessageA("QuillDllNotification");
    if (mHandle != nullptr)
        return true;
    for (HWND area = editAreaOf(hwndOf(parent.window())); area != nullptr;
         area = GetWindow(area, GW_HWNDNEXT)) {
        char name[257] = {};
        GetClassNameA(area, name, sizeof name);
        if (lstrcmpiA(name, kEditAreaClass) != 0)
            continue;
        // A keeper left by an earlier editor object gives up the area: its saved procedure
        // passes to this object in attach, so that the library's procedure is never chained
        // to itself.
        auto* const keeper = dynamic_cast<EditAreaKeeper*>(GwWindow::window(area, false));
        attach(area);
        if (keeper != nullptr) {
            keeper->release();
            delete keeper;
        }
        if (count++ == 0)
            hHook = SetWindowsHookExA(WH_CALLWNDPROC, reinterpret_cast<HOOKPROC>(&msgHook), nullptr,
                                      GetCurrentThreadId());
        return true;
    }
    return false;
}

long long GwQuillEdit::msgHandler(unsigned long long msg, unsigned long long wParam,
                                  long long lParam) {
    if (gwIsInputMessage(msg)) {
        if (dispatchEvent(msg, wParam, lParam) != 0)
            return 1; // taken by a handler: the editor does not see it
    } else if (msg == GwMsgNotify) {
        return dispatchEvent(GwMsgNotify, wParam, lParam);
    }
    return GwWindow::msgHandler(msg, wParam, lParam);
}

long long __stdcall GwQuillEdit::msgHook(int code, unsigned long long wParam, long long lParam) {
    if (code == HC_ACTION && msgNotify != 0) {
        auto const* message = reinterpret_cast<CWPSTRUCT const*>(lParam);
        if (message != nullptr && message->message == msgNotify) {
            HWND holder = reinterpret_cast<HWND>(message->lParam);
            if (!IsWindow(holder)) {
                holder = nullptr;
                HWND top = message->hwnd;
                while (HWND const up = GetParent(top))
                    top = up;
                GwWindow* const object = GwWindow::window(top, true);
                if (auto* const mdi = dynamic_cast<GwMDIFrame*>(object);
                    mdi != nullptr && mdi->mdiClient() != nullptr) {
                    HWND const client = hwndOf(mdi->mdiClient()->window());
                    auto const active =
                        reinterpret_cast<HWND>(SendMessageA(client, WM_MDIGETACTIVE, 0, 0));
                    holder = active != nullptr ? GetWindow(active, GW_CHILD) : nullptr;
                } else if (auto* const frame = dynamic_cast<GwFrame*>(object);
                           frame != nullptr && frame->client() != nullptr) {
                    holder = hwndOf(frame->client()->window());
                }
            }
            if (HWND const area = editAreaOf(holder))
                PostMessageA(area, GwMsgNotify, message->wParam, message->lParam);
        }
    }
    return CallNextHookEx(static_cast<HHOOK>(hHook), code, static_cast<WPARAM>(wParam),
                          static_cast<LPARAM>(lParam));
}
