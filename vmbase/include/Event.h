// Events sent between objects, and the data that travels with them.
#pragma once

#include "Object.h"

// An event is a type number.
class VMBASE_API Event {
public:
    // An event of this type.
    explicit Event(long type) : mType(type) {}
    // The type number.
    long type() const { return mType; }

private:
    long mType;
};

// Polymorphic base of event payloads. It is an Object, so that class factories can
// take it and a payload can be created by name.
class VMBASE_API EventData : public Object {
public:
    // A payload carries nothing here; derived payloads add their fields.
    EventData() = default;
    EventData(EventData const&) = default;
    EventData& operator=(EventData const&) = default;
    ~EventData() override;

    Class const* isA() const override;
    // The class record of EventData.
    static Class const* isa();
    // A new empty payload.
    static EventData* newInstance(EventData const* data);
};

// A payload that wraps another one (not owned).
class VMBASE_API EventDataObject : public EventData {
public:
    // Wraps data (not owned); a copy wraps the same data.
    explicit EventDataObject(EventData const* data = nullptr) : mData(data) {}
    EventDataObject(EventDataObject const&) = default;
    EventDataObject& operator=(EventDataObject const&) = default;
    ~EventDataObject() override;

    // The wrapped payload, or null.
    EventData const* data() const { return mData; }

    Class const* isA() const override;
    // The class record of EventDataObject.
    static Class const* isa();
    // A new wrapper around the given data.
    static EventDataObject* newInstance(EventData const* data);

private:
    EventData const* mData;
};
