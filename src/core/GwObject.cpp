#include "GwObject.h"

Object* gwNullFactory(EventData const*) {
    return nullptr;
}

GW_CLASS_NONE(GwObject, "GwObject", "Object")
