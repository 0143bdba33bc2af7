#include "GwObject.h"

#include <atomic>
#include <utility>

Object* gwNullFactory(EventData const*) {
    return nullptr;
}

GW_CLASS_NONE(GwObject, "GwObject", "Object")

#ifndef NDEBUG
namespace {
std::atomic<long> gLiveObjects{0};
}
#endif

GwObject::GwObject() {
#ifndef NDEBUG
    ++gLiveObjects;
#endif
}

GwObject::GwObject(GwObject const& other) : Object(other) {
#ifndef NDEBUG
    ++gLiveObjects;
#endif
}

GwObject::GwObject(GwObject&& other) noexcept : Object(std::move(other)) {
#ifndef NDEBUG
    ++gLiveObjects;
#endif
}

GwObject::~GwObject() {
#ifndef NDEBUG
    --gLiveObjects;
#endif
}

long GwObject::liveObjects() {
#ifndef NDEBUG
    return gLiveObjects.load();
#else
    return -1;
#endif
}
