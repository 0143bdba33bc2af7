#include "GwStartup.h"

GwObjectTable<GwStartup>* GwStartup::allStartup = nullptr;

GW_CLASS_NULL(GwStartup, "GwStartup", "GwObject")

GwStartup::GwStartup() {
    enrol();
}

GwStartup::GwStartup(GwStartup const& other) : GwObject(other) {
    enrol();
}

GwStartup::~GwStartup() {
    if (allStartup == nullptr)
        return;
    allStartup->remove(this);
    if (allStartup->count() == 0) {
        delete allStartup;
        allStartup = nullptr;
    }
}

void GwStartup::enrol() {
    if (allStartup == nullptr)
        allStartup = new GwObjectTable<GwStartup>(20);
    allStartup->add(this);
}

bool GwStartup::initInstance() {
    return true;
}

bool GwStartup::exitInstance() {
    return true;
}

bool GwStartup::run(bool init) {
    for (GwObjectTableIterator<GwStartup> next(allStartup); GwStartup* hook = next();) {
        if (init)
            hook->initInstance();
        else
            hook->exitInstance();
    }
    return true;
}
