// The status bar: a common status-bar control wrapped as a control bar.
#include "GwStatusBar.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwResource.h"

GW_CLASS_MAKES(GwStatusBar, "GwStatusBar", "GwControlBar")

namespace {

// WS_CHILD | WS_VISIBLE
constexpr DWORD kStyle = 0x50000000;
// SBARS_SIZEGRIP
constexpr DWORD kSizeGrip = 0x100;

} // namespace

GwStatusBar::GwStatusBar(GwWindow& parent, unsigned long long id, bool sizeGrip)
    : GwControlBar(), mResource(new GwResource) {
    create(parent.window(), id, sizeGrip);
}

GwStatusBar::GwStatusBar(GwWindow* parent, unsigned long long id, bool sizeGrip)
    : GwControlBar(), mResource(new GwResource) {
    if (parent == nullptr) {
        DebugBreak(); // a status bar needs a parent
        return;
    }
    create(parent->window(), id, sizeGrip);
}

GwStatusBar::GwStatusBar(void* handle) : GwControlBar(handle), mResource(new GwResource) {}

GwStatusBar::GwStatusBar(GwStatusBar const& other)
    : GwControlBar(other), mResource(new GwResource(*other.mResource)) {}

GwStatusBar& GwStatusBar::operator=(GwStatusBar const& other) {
    if (this != &other) {
        GwControlBar::operator=(other);
        *mResource = *other.mResource;
    }
    return *this;
}

GwStatusBar::~GwStatusBar() {
    delete mResource;
}

void GwStatusBar::create(void* parent, unsigned long long id, bool sizeGrip) {
    HWND const hwnd = CreateWindowExA(
        0, "msctls_statusbar32", "", kStyle | (sizeGrip ? kSizeGrip : 0), 0, 0, 0, 0,
        static_cast<HWND>(parent), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
        GetModuleHandleA(nullptr), nullptr);
    attach(hwnd);
}

GwStatusBar* GwStatusBar::newInstance(EventData const* data) {
    void* handle = GwEventData::windowOf(data);
    return handle != nullptr ? new GwStatusBar(handle) : nullptr;
}
