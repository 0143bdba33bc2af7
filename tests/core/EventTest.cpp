#include <gtest/gtest.h>

#include <GwEventData.h>
#include <GwEventHandler.h>
#include <GwGeometry.h>
#include <GwItem.h>

#include "BreakpointCounter.h"

#include <vector>

namespace {

class Handler : public GwEventHandler {
public:
    explicit Handler(bool counted = true, bool* destroyed = nullptr)
        : GwEventHandler(counted), mDestroyed(destroyed) {}
    ~Handler() override {
        if (mDestroyed != nullptr)
            *mDestroyed = true;
    }

private:
    bool* mDestroyed;
};

// Records the events it hears.
class Listener : public GwObject {
public:
    void receiveEvent(Object* sender, Event const& event, EventData const*) override {
        senders.push_back(sender);
        types.push_back(event.type());
    }
    std::vector<Object*> senders;
    std::vector<long> types;
};

} // namespace

TEST(EventData, ConstructorsFillTheirField) {
    int dummy = 0;
    GwItem item(5);
    GwEventData none;
    GwEventData window(&dummy);
    GwEventData withItem(item);
    EXPECT_EQ(none.window(), nullptr);
    EXPECT_EQ(none.item(), nullptr);
    EXPECT_EQ(window.window(), &dummy);
    EXPECT_EQ(window.item(), nullptr);
    EXPECT_EQ(withItem.window(), nullptr);
    EXPECT_EQ(withItem.item(), &item);
    GwEventData copy(withItem);
    EXPECT_EQ(copy.item(), &item);
    copy = window;
    EXPECT_EQ(copy.window(), &dummy);
    EXPECT_EQ(copy.item(), nullptr);
}

TEST(EventData, FactoryCopiesTheWrappedEventData) {
    int dummy = 0;
    GwItem item(9);
    GwEventData inner(&dummy);
    EventDataObject wrapper(&inner);
    GwEventData* made = GwEventData::newInstance(&wrapper);
    ASSERT_NE(made, nullptr);
    EXPECT_NE(made, &inner);
    EXPECT_EQ(made->window(), &dummy);
    delete made;

    GwEventData withItem(item);
    EventDataObject wrapsItem(&withItem);
    made = GwEventData::newInstance(&wrapsItem);
    EXPECT_EQ(made->item(), &item);
    delete made;
}

TEST(EventData, FactoryMakesEmptyDataFromAnythingElse) {
    int dummy = 0;
    GwEventData direct(&dummy);
    EventData plain;
    EventDataObject wrapsPlain(&plain);
    EventDataObject wrapsNothing(nullptr);
    for (EventData const* data :
         std::vector<EventData const*>{nullptr, &direct, &plain, &wrapsPlain, &wrapsNothing}) {
        GwEventData* made = GwEventData::newInstance(data);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(made->window(), nullptr);
        EXPECT_EQ(made->item(), nullptr);
        delete made;
    }
}

TEST(EventHandler, UncountedHandlerIgnoresAddRefAndRelease) {
    Handler handler(false);
    EXPECT_EQ(handler.addRef(), 0);
    EXPECT_EQ(handler.release(), 0);
    EXPECT_EQ(handler.refCount(), 0);
    EXPECT_FALSE(handler.counted());
}

TEST(EventHandler, CountedHandlerDeletesItselfOnLastRelease) {
    bool destroyed = false;
    auto* handler = new Handler(true, &destroyed);
    EXPECT_TRUE(handler->counted());
    EXPECT_EQ(handler->addRef(), 1);
    EXPECT_EQ(handler->addRef(), 2);
    EXPECT_EQ(handler->release(), 1);
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(handler->release(), 0);
    EXPECT_TRUE(destroyed);
}

TEST(EventHandler, DeletingAReferencedCountedHandlerBreaks) {
    BreakpointCounter breaks;
    auto* handler = new Handler(true);
    handler->addRef();
    delete handler;
    EXPECT_EQ(breaks.count(), 1);
}

TEST(EventHandler, DeletingAnUnreferencedHandlerDoesNotBreak) {
    BreakpointCounter breaks;
    delete new Handler(true);
    delete new Handler(false);
    EXPECT_EQ(breaks.count(), 0);
}

TEST(EventHandler, DestructionTellsListenersWithEventTypeTwo) {
    Listener first, second;
    auto* handler = new Handler(false);
    handler->addEvent(&first);
    handler->addEvent(&second);
    Object* sender = handler;
    delete handler;
    EXPECT_EQ(first.types, std::vector<long>{2});
    EXPECT_EQ(first.senders, std::vector<Object*>{sender});
    EXPECT_EQ(second.types, std::vector<long>{2});
}

TEST(EventHandler, RemovedListenerHearsNothing) {
    Listener listener;
    auto* handler = new Handler(false);
    handler->addEvent(&listener);
    handler->removeEvent(&listener);
    delete handler;
    EXPECT_TRUE(listener.types.empty());
}
