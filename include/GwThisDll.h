// The library's own module: its file and its resources (cursors, strings, dialogs).
#pragma once

#include "GwObject.h"
#include "GwResource.h"

// The library's own module.
//
// Exactly one instance exists while the library is loaded: the library's entry point
// creates it on process attach and deletes it on process detach.
class VMGUI_API GwThisDll : public GwObject {
    GW_DECLARE_CLASS(GwThisDll)

public:
    // Copies the module handle; the copy is not the instance.
    GwThisDll(GwThisDll const& other);
    GwThisDll& operator=(GwThisDll const& other);
    // Clears mCurrent when this is the instance.
    ~GwThisDll() override;

    // The instance (there must be one).
    static GwThisDll& current();
    // The library's module handle (HINSTANCE).
    void* module() const { return mModule; }
    // A resource of the library's own file, loaded again by its name: each call takes a new
    // load reference on the library, which the resource drops. Without a file name (no
    // module) the resource stands for the executable.
    GwResource resource() const;

    // The existing instance if there is one. Otherwise, when data is a GwEventData whose
    // window field is set, a new instance with that value as its module handle, which
    // becomes mCurrent; else null.
    static GwThisDll* newInstance(EventData const* data);

    // What the library's entry point does for a reason (the DLL_PROCESS_* and
    // DLL_THREAD_* values): process attach creates the instance for the module as
    // newInstance does, process detach deletes it, other reasons do nothing. Always true.
    static bool moduleEntry(void* module, unsigned long reason);

    static GwThisDll* mCurrent; // the instance, null while none exists

protected:
    // Must not be used: it has no module, and raises a debugger break.
    GwThisDll();
    // The instance for this module handle.
    explicit GwThisDll(void* module) : mModule(module) {}

private:
    void* mModule;
};
