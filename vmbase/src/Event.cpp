// Event payloads and their class records.
#include "Event.h"

#include "Class.h"

namespace {

// The factories of the records: newInstance, returning Object*.
Object* makeEventData(EventData const* data) {
    return EventData::newInstance(data);
}

Object* makeEventDataObject(EventData const* data) {
    return EventDataObject::newInstance(data);
}

char const* sEventDataParents[] = {"Object", nullptr};
char const* sEventDataObjectParents[] = {"EventData", nullptr};

Class const sEventDataClass("EventData", sEventDataParents, static_cast<long>(sizeof(EventData)),
                            &makeEventData);
Class const sEventDataObjectClass("EventDataObject", sEventDataObjectParents,
                                  static_cast<long>(sizeof(EventDataObject)), &makeEventDataObject);

} // namespace

EventData::~EventData() = default;

Class const* EventData::isA() const {
    return isa();
}

Class const* EventData::isa() {
    return &sEventDataClass;
}

EventData* EventData::newInstance(EventData const*) {
    return new EventData;
}

EventDataObject::~EventDataObject() = default;

Class const* EventDataObject::isA() const {
    return isa();
}

Class const* EventDataObject::isa() {
    return &sEventDataObjectClass;
}

EventDataObject* EventDataObject::newInstance(EventData const* data) {
    return new EventDataObject(data);
}
