#include "GwThisDll.h"

#include <windows.h>

#include "GwEventData.h"

GwThisDll* GwThisDll::mCurrent = nullptr;

GW_CLASS_MAKES(GwThisDll, "GwThisDll", "GwObject")

GwThisDll::GwThisDll() : mModule(nullptr) {
    DebugBreak();
}

GwThisDll::GwThisDll(GwThisDll const& other) : GwObject(other), mModule(other.mModule) {}

GwThisDll& GwThisDll::operator=(GwThisDll const& other) {
    GwObject::operator=(other);
    mModule = other.mModule;
    return *this;
}

GwThisDll::~GwThisDll() {
    if (mCurrent == this)
        mCurrent = nullptr;
}

GwThisDll& GwThisDll::current() {
    return *mCurrent;
}

GwResource GwThisDll::resource() const {
    char buffer[MAX_PATH] = {};
    if (mModule != nullptr)
        GetModuleFileNameA(static_cast<HMODULE>(mModule), buffer, MAX_PATH);
    return GwResource(String(buffer));
}

GwThisDll* GwThisDll::newInstance(EventData const* data) {
    if (mCurrent != nullptr)
        return mCurrent;
    auto const* eventData = dynamic_cast<GwEventData const*>(data);
    if (eventData != nullptr && eventData->window() != nullptr)
        mCurrent = new GwThisDll(eventData->window());
    return mCurrent;
}

bool GwThisDll::moduleEntry(void* module, unsigned long reason) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        if (mCurrent == nullptr) {
            GwEventData data(module);
            newInstance(&data);
        }
        break;
    case DLL_PROCESS_DETACH:
        delete mCurrent;
        break;
    default:
        break;
    }
    return true;
}

// The class records, static tables and start-up hooks are built by the runtime before the
// attach step and destroyed after the detach step.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    return GwThisDll::moduleEntry(instance, reason) ? TRUE : FALSE;
}
