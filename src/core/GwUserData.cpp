#include "GwUserData.h"

GW_CLASS_MAKES(GwUserData, "GwUserData", "GwObject")

GwUserData::operator void*() const {
    return mValue;
}
GwUserData::operator int() const {
    return 0;
}
GwUserData::operator long() const {
    return 0;
}
GwUserData::operator char*() const {
    return nullptr;
}
GwUserData::operator char const*() const {
    return nullptr;
}
GwUserData::operator GwWindow*() const {
    return nullptr;
}

bool GwUserData::operator==(Object const& other) const {
    return mValue == dynamic_cast<GwUserData const&>(other).mValue;
}

int GwUserData::operator!=(Object const& other) const {
    return *this == other ? 0 : 1;
}

GwUserData* GwUserData::newInstance(EventData const*) {
    return new GwUserData(nullptr);
}
