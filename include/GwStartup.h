// Process-wide start-up and tear-down hooks, run by the application object.
#pragma once

#include "GwObject.h"
#include "GwObjectTable.h"

// A process-wide start-up and tear-down hook, run by the application object.
//
// Constructing a hook enrols it in allStartup; destroying it leaves the table (which is
// freed when its last entry leaves). Owners derive a nested GwRegister class and keep one
// static instance of it.
class VMGUI_API GwStartup : public GwObject {
    GW_DECLARE_CLASS(GwStartup)

public:
    // Enrols the hook; a copy is enrolled as a hook of its own.
    GwStartup();
    GwStartup(GwStartup const& other);
    GwStartup& operator=(GwStartup const&) = default;
    ~GwStartup() override;

    // The hook's set-up when the application starts, and its tear-down when it ends;
    // both do nothing and answer true here.
    virtual bool initInstance();
    virtual bool exitInstance();

    // Calls initInstance (init) or exitInstance (!init) of every enrolled hook in slot
    // order; the walk ends at the first empty slot. Always true.
    static bool run(bool init);

    // A new hook that does nothing.
    static GwStartup* newInstance(EventData const* data);

    // The enrolled hooks; null while none is enrolled.
    static GwObjectTable<GwStartup>* allStartup;

private:
    void enrol();
};
