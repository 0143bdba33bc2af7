// Object: class record, identity, streaming, and event delivery to listeners.
#include "Object.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "Class.h"
#include "Event.h"
#include "FileIO.h"
#include "String.h"

namespace {

Class const sObjectClass("Object", nullptr, static_cast<long>(sizeof(Object)),
                         &Object::newInstance);

} // namespace

// The links of an object, allocated on first addEvent and freed once empty.
//
// While sendEvent is delivering (depth > 0) the listener list is only ever appended to or
// has entries set to null; it is compacted by the outermost delivery when it ends. If the
// owner is destroyed while delivering, its destructor detaches everything and sets dead;
// the outermost delivery then frees the links instead of touching the object again.
struct Object::Links {
    std::vector<Object*> listeners; // in order of addition; null for removed entries
    std::vector<Object*> senders;   // objects whose listener lists hold the owner
    int depth = 0;                  // sendEvent calls in progress on the owner
    bool dead = false;              // owner destroyed while delivering
    bool dirty = false;             // listeners holds null entries

    // Drops listener from sender's list (not from listener's sender list).
    static void dropListener(Object* sender, Object const* listener) {
        Links* links = sender->mLinks;
        if (links == nullptr) {
            return;
        }
        auto it = std::find(links->listeners.begin(), links->listeners.end(), listener);
        if (it == links->listeners.end()) {
            return;
        }
        if (links->depth > 0) {
            *it = nullptr;
            links->dirty = true;
        } else {
            links->listeners.erase(it);
        }
        releaseIfUnused(sender);
    }

    // Drops sender from listener's sender list (not from sender's listener list).
    static void dropSender(Object* listener, Object const* sender) {
        Links* links = listener->mLinks;
        if (links == nullptr) {
            return;
        }
        auto it = std::find(links->senders.begin(), links->senders.end(), sender);
        if (it != links->senders.end()) {
            links->senders.erase(it);
        }
        releaseIfUnused(listener);
    }

    static void compact(Links* links) {
        if (links->dirty) {
            links->listeners.erase(
                std::remove(links->listeners.begin(), links->listeners.end(), nullptr),
                links->listeners.end());
            links->dirty = false;
        }
    }

    // Frees the owner's links when nothing refers to them any more.
    static void releaseIfUnused(Object* owner) {
        Links* links = owner->mLinks;
        if (links == nullptr || links->depth > 0) {
            return;
        }
        compact(links);
        if (links->listeners.empty() && links->senders.empty()) {
            delete links;
            owner->mLinks = nullptr;
        }
    }

    // Keeps the delivery depth balanced even when a listener throws.
    class Delivery {
    public:
        Delivery(Object* owner, Links* links) : mOwner(owner), mLinks(links) { ++mLinks->depth; }
        ~Delivery() {
            if (--mLinks->depth > 0) {
                return;
            }
            if (mLinks->dead) {
                delete mLinks; // the owner is gone; do not touch it
                return;
            }
            releaseIfUnused(mOwner);
        }
        Delivery(Delivery const&) = delete;
        Delivery& operator=(Delivery const&) = delete;

    private:
        Object* mOwner;
        Links* mLinks;
    };
};

Class const* Object::isA() const {
    return isa();
}

Object::~Object() {
    Links* links = mLinks;
    if (links == nullptr) {
        return;
    }
    // From here on the helpers see no links on this object, which also covers an object
    // that listens to itself.
    mLinks = nullptr;

    for (Object* sender : links->senders) {
        if (sender != this) {
            Links::dropListener(sender, this);
        }
    }
    links->senders.clear();

    for (Object*& listener : links->listeners) {
        if (listener != nullptr && listener != this) {
            Links::dropSender(listener, this);
        }
        listener = nullptr;
    }

    if (links->depth > 0) {
        links->dead = true; // the outermost delivery frees the links
    } else {
        delete links;
    }
}

Object& Object::operator=(Object const&) {
    return *this;
}

bool Object::operator==(Object const& other) const {
    return this == &other;
}

int Object::operator!=(Object const& other) const {
    return !(*this == other);
}

void Object::sendEvent(Event const& event, EventData const* data, bool toListeners) {
    if (!toListeners) {
        receiveEvent(this, event, data);
        return;
    }
    Links* links = mLinks;
    if (links == nullptr) {
        return;
    }

    Links::Delivery delivery(this, links);
    // Listeners added during this delivery are appended past the current end and so are
    // not called by it; removed ones are set to null and skipped.
    std::size_t const end = links->listeners.size();
    for (std::size_t i = 0; i < end && i < links->listeners.size(); ++i) {
        if (links->dead) {
            break; // destroyed by a listener
        }
        Object* listener = links->listeners[i];
        if (listener != nullptr) {
            listener->receiveEvent(this, event, data);
        }
    }
}

FileIO& Object::operator<<(FileIO& out) const {
    return out << String(Class::name(isA()));
}

FileIO& Object::operator>>(FileIO& in) {
    String name;
    in >> name;
    if (name != Class::name(isA())) {
        in.setFailed();
    }
    return in;
}

void Object::receiveEvent(Object*, Event const&, EventData const*) {}

void Object::addEvent(Object* listener) {
    if (listener == nullptr || hasListener(listener)) {
        return;
    }
    if (mLinks == nullptr) {
        mLinks = new Links;
    }
    mLinks->listeners.push_back(listener);
    if (listener->mLinks == nullptr) {
        listener->mLinks = new Links;
    }
    listener->mLinks->senders.push_back(this);
}

void Object::removeEvent(Object* listener) {
    if (listener == nullptr || !hasListener(listener)) {
        return;
    }
    // The sender side first: for an object listening to itself both entries live in the
    // same links, which must not be released before both are gone.
    Links::dropSender(listener, this);
    Links::dropListener(this, listener);
}

bool Object::hasListener(Object const* listener) const {
    if (mLinks == nullptr || listener == nullptr) {
        return false;
    }
    auto const& list = mLinks->listeners;
    return std::find(list.begin(), list.end(), listener) != list.end();
}

long Object::listenerCount() const {
    if (mLinks == nullptr) {
        return 0;
    }
    long count = 0;
    for (Object const* listener : mLinks->listeners) {
        if (listener != nullptr) {
            ++count;
        }
    }
    return count;
}

Class const* Object::isa() {
    return &sObjectClass;
}

Object* Object::newInstance(EventData const*) {
    return new Object;
}
