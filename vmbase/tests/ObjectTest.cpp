// Tests of Object: identity, class records, copies, and event delivery to listeners.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "VmBase.h"

namespace {

struct Call {
    std::string who;
    Object* sender;
    long type;
    EventData const* data;
};

using Log = std::vector<Call>;

// A listener that logs every event it receives and then runs an optional action.
class Recorder : public Object {
public:
    using Action = std::function<void(Object* sender, Event const& event)>;

    Recorder(std::string name, Log* log) : mName(std::move(name)), mLog(log) {}

    void receiveEvent(Object* sender, Event const& event, EventData const* data) override {
        mLog->push_back({mName, sender, event.type(), data});
        if (action) {
            // The action may destroy this object, so it runs from a copy.
            Action run = action;
            run(sender, event);
        }
    }

    Action action;

private:
    std::string mName;
    Log* mLog;
};

// Who was called, in order, as "a b c".
std::string order(Log const& log) {
    std::string result;
    for (Call const& call : log) {
        if (!result.empty()) {
            result += ' ';
        }
        result += call.who;
    }
    return result;
}

// Who was called with which event type, in order, as "a1 b2".
std::string orderWithTypes(Log const& log) {
    std::string result;
    for (Call const& call : log) {
        if (!result.empty()) {
            result += ' ';
        }
        result += call.who + std::to_string(call.type);
    }
    return result;
}

// A sender with state of its own, so that using it after destruction shows up.
class BusySender : public Object {
public:
    std::vector<int> payload = std::vector<int>(16, 7);
};

} // namespace

// Identity and class records.

TEST(ObjectTest, EqualityIsIdentity) {
    Object a;
    Object b;
    EXPECT_TRUE(a == a);
    EXPECT_FALSE(a == b);
    Object copy(a);
    EXPECT_FALSE(copy == a);
}

TEST(ObjectTest, NotEqualReturnsOneOrZero) {
    Object a;
    Object b;
    EXPECT_EQ(a != b, 1);
    EXPECT_EQ(a != a, 0);
}

TEST(ObjectTest, IsAReturnsTheClassRecord) {
    Object object;
    EventData data;
    EventDataObject wrapper;
    Object const& asObject = wrapper;
    EXPECT_EQ(object.isA(), Object::isa());
    EXPECT_EQ(data.isA(), EventData::isa());
    EXPECT_EQ(asObject.isA(), EventDataObject::isa());
    EXPECT_STREQ(Class::name(object.isA()), "Object");
}

TEST(ObjectTest, SubclassWithoutOwnRecordReportsObject) {
    Log log;
    Recorder recorder("r", &log);
    EXPECT_EQ(recorder.isA(), Object::isa());
}

TEST(ObjectTest, EventCarriesItsType) {
    Event event(42);
    EXPECT_EQ(event.type(), 42);
}

TEST(ObjectTest, EventDataObjectWrapsDataWithoutOwningIt) {
    EventDataObject empty;
    EXPECT_EQ(empty.data(), nullptr);

    auto payload = std::make_unique<EventData>();
    EventDataObject wrapper(payload.get());
    EXPECT_EQ(wrapper.data(), payload.get());
    EventDataObject copy(wrapper);
    EXPECT_EQ(copy.data(), payload.get());
    empty = wrapper;
    EXPECT_EQ(empty.data(), payload.get());
}

// Adding and removing listeners.

TEST(ObjectTest, NewObjectHasNoListeners) {
    Object sender;
    Object listener;
    EXPECT_EQ(sender.listenerCount(), 0);
    EXPECT_FALSE(sender.hasListener(&listener));
}

TEST(ObjectTest, AddedListenerIsReported) {
    Object sender;
    Object listener;
    sender.addEvent(&listener);
    EXPECT_TRUE(sender.hasListener(&listener));
    EXPECT_EQ(sender.listenerCount(), 1);
    EXPECT_FALSE(listener.hasListener(&sender));
}

TEST(ObjectTest, AddingListenerTwiceKeepsOneEntry) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    sender.addEvent(&a);
    sender.addEvent(&a);
    EXPECT_EQ(sender.listenerCount(), 1);
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a");
    sender.removeEvent(&a);
    EXPECT_FALSE(sender.hasListener(&a));
    EXPECT_EQ(sender.listenerCount(), 0);
}

TEST(ObjectTest, NullListenerIsIgnored) {
    Object sender;
    sender.addEvent(nullptr);
    EXPECT_EQ(sender.listenerCount(), 0);
    EXPECT_FALSE(sender.hasListener(nullptr));
    sender.removeEvent(nullptr);
    EXPECT_EQ(sender.listenerCount(), 0);
}

TEST(ObjectTest, RemovingUnknownListenerChangesNothing) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder stranger("x", &log);
    sender.addEvent(&a);
    sender.removeEvent(&stranger);
    EXPECT_EQ(sender.listenerCount(), 1);
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a");
}

TEST(ObjectTest, RemovedListenerIsNotCalled) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.removeEvent(&a);
    EXPECT_FALSE(sender.hasListener(&a));
    EXPECT_EQ(sender.listenerCount(), 1);
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "b");
}

TEST(ObjectTest, ListenerCanBeAddedAgainAfterRemoval) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.removeEvent(&a);
    sender.addEvent(&a);
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "b a");
}

// Delivery.

TEST(ObjectTest, SendEventDeliversToListenersInOrderOfAddition) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&b);
    sender.addEvent(&a);
    sender.addEvent(&c);
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "b a c");
}

TEST(ObjectTest, SendEventPassesSenderEventAndData) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    EventData data;
    sender.addEvent(&a);
    sender.sendEvent(Event(7), &data);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].sender, &sender);
    EXPECT_EQ(log[0].type, 7);
    EXPECT_EQ(log[0].data, &data);
}

TEST(ObjectTest, SendEventDefaultsToNullData) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    sender.addEvent(&a);
    sender.sendEvent(Event(3));
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].data, nullptr);
}

TEST(ObjectTest, SendEventWithoutListenersDoesNothing) {
    Log log;
    Recorder sender("sender", &log);
    sender.sendEvent(Event(1));
    EXPECT_TRUE(log.empty());
}

TEST(ObjectTest, SendEventToSelfCallsOwnReceiveEventOnly) {
    Log log;
    Recorder sender("sender", &log);
    Recorder a("a", &log);
    EventData data;
    sender.addEvent(&a);
    sender.sendEvent(Event(5), &data, false);
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].who, "sender");
    EXPECT_EQ(log[0].sender, &sender);
    EXPECT_EQ(log[0].type, 5);
    EXPECT_EQ(log[0].data, &data);
}

TEST(ObjectTest, ListenerCanListenToSeveralSenders) {
    Log log;
    Object first;
    Object second;
    Recorder a("a", &log);
    first.addEvent(&a);
    second.addEvent(&a);
    first.sendEvent(Event(1));
    second.sendEvent(Event(2));
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[0].sender, &first);
    EXPECT_EQ(log[1].sender, &second);
}

TEST(ObjectTest, ObjectCanListenToItself) {
    Log log;
    Recorder a("a", &log);
    a.addEvent(&a);
    EXPECT_TRUE(a.hasListener(&a));
    a.sendEvent(Event(1));
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(log[0].sender, &a);
    a.removeEvent(&a);
    EXPECT_EQ(a.listenerCount(), 0);
    a.sendEvent(Event(2));
    EXPECT_EQ(log.size(), 1u);
}

// Destruction detaches.

TEST(ObjectTest, DestroyedListenerIsRemovedFromItsSenders) {
    Log log;
    Object first;
    Object second;
    Recorder a("a", &log);
    {
        Recorder b("b", &log);
        first.addEvent(&b);
        first.addEvent(&a);
        second.addEvent(&b);
        EXPECT_EQ(first.listenerCount(), 2);
        EXPECT_EQ(second.listenerCount(), 1);
    }
    EXPECT_EQ(first.listenerCount(), 1);
    EXPECT_EQ(second.listenerCount(), 0);
    first.sendEvent(Event(1));
    second.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a");
}

TEST(ObjectTest, DestroyedSenderIsForgottenByItsListeners) {
    Log log;
    Recorder a("a", &log);
    {
        Object sender;
        sender.addEvent(&a);
    }
    // a must not refer to the destroyed sender: it keeps working as a listener, and its
    // own destruction at the end of the test must not touch the old sender.
    Object other;
    other.addEvent(&a);
    other.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a");
    other.removeEvent(&a);
    EXPECT_EQ(other.listenerCount(), 0);
}

TEST(ObjectTest, MutualListenersCanBeDestroyedInEitherOrder) {
    Log log;
    auto a = std::make_unique<Recorder>("a", &log);
    auto b = std::make_unique<Recorder>("b", &log);
    a->addEvent(b.get());
    b->addEvent(a.get());
    a->sendEvent(Event(1));
    b->sendEvent(Event(2));
    EXPECT_EQ(orderWithTypes(log), "b1 a2");
    a.reset();
    EXPECT_EQ(b->listenerCount(), 0);
    b->sendEvent(Event(3));
    EXPECT_EQ(log.size(), 2u);

    auto c = std::make_unique<Recorder>("c", &log);
    auto d = std::make_unique<Recorder>("d", &log);
    c->addEvent(d.get());
    d->addEvent(c.get());
    d.reset();
    EXPECT_EQ(c->listenerCount(), 0);
}

TEST(ObjectTest, ObjectListeningToItselfCanBeDestroyed) {
    Log log;
    Object sender;
    auto a = std::make_unique<Recorder>("a", &log);
    a->addEvent(a.get());
    sender.addEvent(a.get());
    a->addEvent(&sender);
    a.reset();
    EXPECT_EQ(sender.listenerCount(), 0);
    sender.sendEvent(Event(1));
    EXPECT_TRUE(log.empty());
}

TEST(ObjectTest, ListenerOfManySendersDetachesFromAll) {
    Log log;
    std::vector<std::unique_ptr<Object>> senders;
    for (int i = 0; i < 20; ++i) {
        senders.push_back(std::make_unique<Object>());
    }
    auto a = std::make_unique<Recorder>("a", &log);
    for (auto& sender : senders) {
        sender->addEvent(a.get());
    }
    a.reset();
    for (auto& sender : senders) {
        EXPECT_EQ(sender->listenerCount(), 0);
        sender->sendEvent(Event(1));
    }
    EXPECT_TRUE(log.empty());
}

// Copies and assignment do not carry listening.

TEST(ObjectTest, CopyHasNoListeners) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    sender.addEvent(&a);
    Object copy(sender);
    EXPECT_EQ(copy.listenerCount(), 0);
    EXPECT_EQ(sender.listenerCount(), 1);
    copy.sendEvent(Event(1));
    EXPECT_TRUE(log.empty());
}

TEST(ObjectTest, CopyOfListenerIsNotListening) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    sender.addEvent(&a);
    Recorder copy(a);
    EXPECT_FALSE(sender.hasListener(&copy));
    EXPECT_EQ(sender.listenerCount(), 1);
}

TEST(ObjectTest, MoveConstructionLeavesListenersWithTheSource) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    sender.addEvent(&a);
    Object moved(std::move(sender));
    EXPECT_EQ(moved.listenerCount(), 0);
    EXPECT_TRUE(sender.hasListener(&a)); // NOLINT(bugprone-use-after-move)
}

TEST(ObjectTest, AssignmentKeepsBothObjectsListeners) {
    Log log;
    Object first;
    Object second;
    Recorder a("a", &log);
    Recorder b("b", &log);
    first.addEvent(&a);
    second.addEvent(&b);
    second = first;
    EXPECT_TRUE(first.hasListener(&a));
    EXPECT_FALSE(first.hasListener(&b));
    EXPECT_TRUE(second.hasListener(&b));
    EXPECT_FALSE(second.hasListener(&a));
    second = std::move(first);
    EXPECT_TRUE(second.hasListener(&b));
    EXPECT_FALSE(second.hasListener(&a));
    EXPECT_TRUE(first.hasListener(&a)); // NOLINT(bugprone-use-after-move)
}

// Changes during delivery.

TEST(ObjectTest, ListenerRemovedDuringDeliveryIsNotCalled) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const&) { sender.removeEvent(&b); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a c");
    EXPECT_FALSE(sender.hasListener(&b));
    EXPECT_EQ(sender.listenerCount(), 2);

    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a c");
}

TEST(ObjectTest, RemovingAnAlreadyCalledListenerDoesNotSkipOthers) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    b.action = [&](Object*, Event const&) { sender.removeEvent(&a); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a b c");

    log.clear();
    b.action = nullptr;
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "b c");
}

TEST(ObjectTest, ListenerRemovingItselfDuringDeliveryIsCalledOnce) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    b.action = [&](Object* from, Event const&) { from->removeEvent(&b); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a b c");
    EXPECT_EQ(sender.listenerCount(), 2);

    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a c");
}

TEST(ObjectTest, EveryListenerRemovingTheNextOneSkipsEveryOther) {
    Log log;
    Object sender;
    std::vector<std::unique_ptr<Recorder>> listeners;
    for (int i = 0; i < 10; ++i) {
        listeners.push_back(std::make_unique<Recorder>(std::to_string(i), &log));
        sender.addEvent(listeners.back().get());
    }
    for (int i = 0; i + 1 < 10; ++i) {
        Recorder* next = listeners[i + 1].get();
        listeners[i]->action = [&sender, next](Object*, Event const&) { sender.removeEvent(next); };
    }
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "0 2 4 6 8");
    EXPECT_EQ(sender.listenerCount(), 5);
}

TEST(ObjectTest, RemovingAllListenersDuringDeliveryStopsIt) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const&) {
        sender.removeEvent(&a);
        sender.removeEvent(&b);
        sender.removeEvent(&c);
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a");
    EXPECT_EQ(sender.listenerCount(), 0);

    // The emptied sender is still fully usable.
    sender.addEvent(&c);
    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "c");
}

TEST(ObjectTest, ListenerAddedDuringDeliveryIsNotCalledUntilNextSend) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder d("d", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    a.action = [&](Object*, Event const&) { sender.addEvent(&d); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a b");
    EXPECT_TRUE(sender.hasListener(&d));

    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a b d");
}

TEST(ObjectTest, ListenerRemovedAndAddedAgainDuringDeliveryMovesToTheEnd) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const&) {
        sender.removeEvent(&b);
        sender.addEvent(&b);
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a c");
    EXPECT_EQ(sender.listenerCount(), 3);

    log.clear();
    a.action = nullptr;
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a c b");
}

TEST(ObjectTest, AddingAnExistingListenerDuringDeliveryKeepsOneEntry) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    a.action = [&](Object*, Event const&) { sender.addEvent(&b); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a b");
    EXPECT_EQ(sender.listenerCount(), 2);
}

TEST(ObjectTest, ListenerDestroyedDuringDeliveryIsNotCalled) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    auto* b = new Recorder("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const&) {
        delete b;
        b = nullptr;
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a c");
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(sender.listenerCount(), 2);
}

TEST(ObjectTest, ListenerDestroyingItselfDuringDeliveryDoesNotStopOthers) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    auto* b = new Recorder("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(b);
    sender.addEvent(&c);
    b->action = [b](Object*, Event const&) { delete b; };
    sender.sendEvent(Event(1));
    EXPECT_EQ(order(log), "a b c");
    EXPECT_EQ(sender.listenerCount(), 2);

    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a c");
}

TEST(ObjectTest, SenderDestroyedDuringDeliveryDoesNotCrash) {
    Log log;
    auto* sender = new BusySender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    sender->addEvent(&a);
    sender->addEvent(&b);
    a.action = [&](Object*, Event const&) {
        delete sender;
        sender = nullptr;
    };
    sender->sendEvent(Event(1));
    // Delivery stops with its sender: b would otherwise get a dangling sender.
    EXPECT_EQ(order(log), "a");
    EXPECT_EQ(sender, nullptr);

    // Both listeners forgot the sender and keep working.
    Object other;
    other.addEvent(&a);
    other.addEvent(&b);
    a.action = nullptr;
    log.clear();
    other.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a b");
}

TEST(ObjectTest, SenderDestroyedByItsLastListenerDoesNotCrash) {
    Log log;
    auto* sender = new Object;
    Recorder a("a", &log);
    sender->addEvent(&a);
    a.action = [&](Object* from, Event const&) { delete from; };
    sender->sendEvent(Event(1));
    EXPECT_EQ(order(log), "a");
    Object other;
    other.addEvent(&a);
    EXPECT_EQ(other.listenerCount(), 1);
}

TEST(ObjectTest, SenderListeningToItselfDestroyedDuringDeliveryDoesNotCrash) {
    Log log;
    auto* sender = new Recorder("s", &log);
    Recorder b("b", &log);
    sender->addEvent(sender);
    sender->addEvent(&b);
    sender->action = [sender](Object*, Event const&) { delete sender; };
    sender->sendEvent(Event(1));
    EXPECT_EQ(order(log), "s");
    Object other;
    other.addEvent(&b);
    EXPECT_EQ(other.listenerCount(), 1);
}

TEST(ObjectTest, NestedSendEventDeliversInnerEventFirst) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    a.action = [&](Object*, Event const& event) {
        if (event.type() == 1) {
            sender.sendEvent(Event(2));
        }
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "a1 a2 b2 b1");
}

TEST(ObjectTest, RemovalDuringNestedDeliveryHoldsForTheOuterDelivery) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const& event) {
        if (event.type() == 1) {
            sender.sendEvent(Event(2));
        }
    };
    b.action = [&](Object*, Event const& event) {
        if (event.type() == 2) {
            sender.removeEvent(&c);
        }
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "a1 a2 b2 b1");
    EXPECT_EQ(sender.listenerCount(), 2);

    log.clear();
    sender.sendEvent(Event(3));
    EXPECT_EQ(orderWithTypes(log), "a3 b3");
}

TEST(ObjectTest, ListenerAddedDuringNestedDeliveryWaitsForTheNextSend) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder d("d", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    a.action = [&](Object*, Event const& event) {
        if (event.type() == 1) {
            sender.sendEvent(Event(2));
        } else if (event.type() == 2) {
            sender.addEvent(&d);
        }
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "a1 a2 b2 b1");

    log.clear();
    sender.sendEvent(Event(3));
    EXPECT_EQ(orderWithTypes(log), "a3 b3 d3");
}

TEST(ObjectTest, SenderDestroyedDuringNestedDeliveryStopsBothDeliveries) {
    Log log;
    auto* sender = new BusySender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender->addEvent(&a);
    sender->addEvent(&b);
    sender->addEvent(&c);
    a.action = [&](Object* from, Event const& event) {
        if (event.type() == 1) {
            from->sendEvent(Event(2));
        }
    };
    b.action = [&](Object*, Event const& event) {
        if (event.type() == 2) {
            delete sender;
            sender = nullptr;
        }
    };
    sender->sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "a1 a2 b2");
    EXPECT_EQ(sender, nullptr);
}

TEST(ObjectTest, ListenerDestroyedDuringNestedDeliveryIsSkippedByBoth) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    auto* c = new Recorder("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(c);
    a.action = [&](Object*, Event const& event) {
        if (event.type() == 1) {
            sender.sendEvent(Event(2));
        }
    };
    b.action = [&](Object*, Event const& event) {
        if (event.type() == 2) {
            delete c;
            c = nullptr;
        }
    };
    sender.sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "a1 a2 b2 b1");
    EXPECT_EQ(sender.listenerCount(), 2);
}

TEST(ObjectTest, ListenerSendingItsOwnEventsDuringDeliveryWorks) {
    Log log;
    Object sender;
    Recorder relay("relay", &log);
    Recorder downstream("down", &log);
    sender.addEvent(&relay);
    relay.addEvent(&downstream);
    relay.action = [&](Object*, Event const& event) { relay.sendEvent(Event(event.type() + 10)); };
    sender.sendEvent(Event(1));
    EXPECT_EQ(orderWithTypes(log), "relay1 down11");
    ASSERT_EQ(log.size(), 2u);
    EXPECT_EQ(log[1].sender, &relay);
}

TEST(ObjectTest, ThrowingListenerLeavesSenderUsable) {
    Log log;
    Object sender;
    Recorder a("a", &log);
    Recorder b("b", &log);
    Recorder c("c", &log);
    sender.addEvent(&a);
    sender.addEvent(&b);
    sender.addEvent(&c);
    a.action = [&](Object*, Event const&) {
        sender.removeEvent(&c);
        throw std::runtime_error("listener failed");
    };
    EXPECT_THROW(sender.sendEvent(Event(1)), std::runtime_error);
    EXPECT_EQ(order(log), "a");
    EXPECT_EQ(sender.listenerCount(), 2);

    a.action = nullptr;
    sender.removeEvent(&b);
    log.clear();
    sender.sendEvent(Event(2));
    EXPECT_EQ(order(log), "a");
}
