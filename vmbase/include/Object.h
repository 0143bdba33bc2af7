// Root of every class: run-time class, comparison, streaming and events to listeners.
#pragma once

#include "VmBaseExport.h"

class Class;
class Event;
class EventData;
class FileIO;

// The root of every class: its class record, comparison, streaming through FileIO, and
// events sent to the listeners that asked for them.
class VMBASE_API Object {
public:
    // An object without listeners.
    Object() = default;
    // A copy has no listeners of its own: listening is bound to an object's identity.
    Object(Object const&) : mLinks(nullptr) {}
    Object(Object&&) noexcept : mLinks(nullptr) {}

    // The virtual operations, in this slot order.
    virtual Class const* isA() const;
    // Detaches from every sender and listener. Safe while this object is delivering an
    // event or is being delivered to.
    virtual ~Object();
    // Assignment keeps both objects' listeners as they are.
    virtual Object& operator=(Object const& other);
    // Identity.
    virtual bool operator==(Object const& other) const;
    // 1 when different, 0 when equal; an int so that subclasses may answer three-way.
    virtual int operator!=(Object const& other) const;
    // With toListeners, every listener's receiveEvent(this, event, data), in the order
    // they were added; otherwise this object's own receiveEvent(this, event, data).
    virtual void sendEvent(Event const& event, EventData const* data = nullptr,
                           bool toListeners = true);
    // Writes the class name; derived classes append their fields.
    virtual FileIO& operator<<(FileIO& out) const;
    // Reads the class name and marks the stream failed when it is not this object's.
    virtual FileIO& operator>>(FileIO& in);
    // Does nothing here.
    virtual void receiveEvent(Object* sender, Event const& event, EventData const* data);

    // As the copy: both objects' listeners stay as they are.
    Object& operator=(Object&&) noexcept { return *this; }

    // After addEvent(w), sendEvent(e, d, true) calls w->receiveEvent(this, e, d) until
    // removeEvent(w). Adding a listener twice keeps one entry. Null is ignored.
    void addEvent(Object* listener);
    void removeEvent(Object* listener);
    // Whether listener is listening to this object.
    bool hasListener(Object const* listener) const;
    // How many listeners the object has.
    long listenerCount() const;

    // The class record of Object.
    static Class const* isa();
    // A new plain object.
    static Object* newInstance(EventData const* data);

    // The sender and listener lists (private to the library).
    struct Links;

private:
    Links* mLinks = nullptr;
};
