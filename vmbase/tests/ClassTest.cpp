// Tests of the class records and their name index.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "VmBase.h"

namespace {

int gFactoryCalls = 0;
EventData const* gFactoryData = nullptr;

Object* countingFactory(EventData const* data) {
    ++gFactoryCalls;
    gFactoryData = data;
    return new Object;
}

} // namespace

TEST(ClassTest, LookupFindsRecordByExactName) {
    Class const record("ClassTest.Exact", nullptr, 8, nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.Exact"), &record);
}

TEST(ClassTest, LookupDoesNotMatchPrefixesOrOtherCase) {
    Class const record("ClassTest.CaseAndPrefix", nullptr, 8, nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.CaseAndPrefix"), &record);
    EXPECT_EQ(Class::lookup("classtest.caseandprefix"), nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.Case"), nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.CaseAndPrefixLonger"), nullptr);
}

TEST(ClassTest, LookupMatchesNameStoredInAnotherBuffer) {
    Class const record("ClassTest.Buffer", nullptr, 8, nullptr);
    char name[] = "ClassTest.Buffer";
    EXPECT_EQ(Class::lookup(name), &record);
}

TEST(ClassTest, LookupOfUnknownOrNullNameReturnsNull) {
    EXPECT_EQ(Class::lookup("ClassTest.NeverRegistered"), nullptr);
    EXPECT_EQ(Class::lookup(nullptr), nullptr);
    EXPECT_EQ(Class::lookup(""), nullptr);
}

TEST(ClassTest, AccessorsReturnConstructorArguments) {
    char const* parents[] = {"ClassTest.ParentA", "ClassTest.ParentB", nullptr};
    Class const record("ClassTest.Accessors", parents, 42, &countingFactory);
    EXPECT_STREQ(record.name(), "ClassTest.Accessors");
    EXPECT_EQ(record.parentNames(), parents);
    EXPECT_EQ(record.instanceSize(), 42);
    EXPECT_EQ(record.factory(), &countingFactory);
}

TEST(ClassTest, NameOfRecordAndOfNullRecord) {
    Class const record("ClassTest.Named", nullptr, 1, nullptr);
    EXPECT_STREQ(Class::name(&record), "ClassTest.Named");
    ASSERT_NE(Class::name(nullptr), nullptr);
    EXPECT_STREQ(Class::name(nullptr), "");
}

TEST(ClassTest, RecordsUnregisterWhenDestroyed) {
    long const before = Class::count();
    {
        Class const record("ClassTest.Scoped", nullptr, 1, nullptr);
        EXPECT_EQ(Class::count(), before + 1);
        EXPECT_EQ(Class::lookup("ClassTest.Scoped"), &record);
    }
    EXPECT_EQ(Class::count(), before);
    EXPECT_EQ(Class::lookup("ClassTest.Scoped"), nullptr);
}

TEST(ClassTest, CountTracksEveryRegisteredRecord) {
    long const before = Class::count();
    auto first = std::make_unique<Class>("ClassTest.CountA", nullptr, 1, nullptr);
    auto second = std::make_unique<Class>("ClassTest.CountB", nullptr, 1, nullptr);
    auto third = std::make_unique<Class>("ClassTest.CountC", nullptr, 1, nullptr);
    EXPECT_EQ(Class::count(), before + 3);
    second.reset();
    EXPECT_EQ(Class::count(), before + 2);
    EXPECT_EQ(Class::lookup("ClassTest.CountB"), nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.CountA"), first.get());
    EXPECT_EQ(Class::lookup("ClassTest.CountC"), third.get());
}

TEST(ClassTest, FirstRecordUnderANameKeepsIt) {
    long const before = Class::count();
    auto first = std::make_unique<Class>("ClassTest.Duplicate", nullptr, 1, nullptr);
    auto second = std::make_unique<Class>("ClassTest.Duplicate", nullptr, 2, nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.Duplicate"), first.get());
    EXPECT_EQ(Class::count(), before + 1);
}

TEST(ClassTest, DestroyingAnUnindexedDuplicateKeepsTheIndexedRecord) {
    auto first = std::make_unique<Class>("ClassTest.DuplicateKept", nullptr, 1, nullptr);
    auto second = std::make_unique<Class>("ClassTest.DuplicateKept", nullptr, 2, nullptr);
    second.reset();
    EXPECT_EQ(Class::lookup("ClassTest.DuplicateKept"), first.get());
}

TEST(ClassTest, DestroyingTheIndexedRecordRemovesTheName) {
    auto first = std::make_unique<Class>("ClassTest.DuplicateGone", nullptr, 1, nullptr);
    auto second = std::make_unique<Class>("ClassTest.DuplicateGone", nullptr, 2, nullptr);
    first.reset();
    // The duplicate was never indexed, so it does not take over the name.
    EXPECT_EQ(Class::lookup("ClassTest.DuplicateGone"), nullptr);
}

TEST(ClassTest, NameCanBeRegisteredAgainAfterItsRecordIsDestroyed) {
    { Class const old("ClassTest.Reused", nullptr, 1, nullptr); }
    Class const fresh("ClassTest.Reused", nullptr, 1, nullptr);
    EXPECT_EQ(Class::lookup("ClassTest.Reused"), &fresh);
}

TEST(ClassTest, BuiltInRecordsAreRegistered) {
    EXPECT_EQ(Class::lookup("Object"), Object::isa());
    EXPECT_EQ(Class::lookup("EventData"), EventData::isa());
    EXPECT_EQ(Class::lookup("EventDataObject"), EventDataObject::isa());
    EXPECT_STREQ(Object::isa()->name(), "Object");
    EXPECT_STREQ(EventData::isa()->name(), "EventData");
    EXPECT_STREQ(EventDataObject::isa()->name(), "EventDataObject");
    EXPECT_GE(Class::count(), 3);
}

TEST(ClassTest, BuiltInRecordsHaveTheirParents) {
    EXPECT_EQ(Object::isa()->parentNames(), nullptr);

    char const* const* eventDataParents = EventData::isa()->parentNames();
    ASSERT_NE(eventDataParents, nullptr);
    EXPECT_STREQ(eventDataParents[0], "Object");
    EXPECT_EQ(eventDataParents[1], nullptr);

    char const* const* wrapperParents = EventDataObject::isa()->parentNames();
    ASSERT_NE(wrapperParents, nullptr);
    EXPECT_STREQ(wrapperParents[0], "EventData");
    EXPECT_EQ(wrapperParents[1], nullptr);
}

TEST(ClassTest, BuiltInRecordsKnowTheirInstanceSizes) {
    EXPECT_EQ(Object::isa()->instanceSize(), static_cast<long>(sizeof(Object)));
    EXPECT_EQ(EventData::isa()->instanceSize(), static_cast<long>(sizeof(EventData)));
    EXPECT_EQ(EventDataObject::isa()->instanceSize(), static_cast<long>(sizeof(EventDataObject)));
}

TEST(ClassTest, BuiltInHierarchyIsSubclassRelated) {
    EXPECT_TRUE(EventDataObject::isa()->isSubclassOf(EventData::isa()));
    EXPECT_TRUE(EventDataObject::isa()->isSubclassOf(Object::isa()));
    EXPECT_TRUE(EventData::isa()->isSubclassOf(Object::isa()));
    EXPECT_FALSE(Object::isa()->isSubclassOf(EventData::isa()));
    EXPECT_FALSE(EventData::isa()->isSubclassOf(EventDataObject::isa()));
}

TEST(ClassTest, IsSubclassOfIsReflexive) {
    Class const record("ClassTest.Self", nullptr, 1, nullptr);
    EXPECT_TRUE(record.isSubclassOf(&record));
    EXPECT_TRUE(Object::isa()->isSubclassOf(Object::isa()));
}

TEST(ClassTest, IsSubclassOfNullIsFalse) {
    Class const record("ClassTest.AgainstNull", nullptr, 1, nullptr);
    EXPECT_FALSE(record.isSubclassOf(nullptr));
}

TEST(ClassTest, IsSubclassOfFollowsParentsTransitively) {
    char const* middleParents[] = {"ClassTest.Root", nullptr};
    char const* leafParents[] = {"ClassTest.Middle", nullptr};
    Class const root("ClassTest.Root", nullptr, 1, nullptr);
    Class const middle("ClassTest.Middle", middleParents, 1, nullptr);
    Class const leaf("ClassTest.Leaf", leafParents, 1, nullptr);

    EXPECT_TRUE(leaf.isSubclassOf(&middle));
    EXPECT_TRUE(leaf.isSubclassOf(&root));
    EXPECT_TRUE(middle.isSubclassOf(&root));
    EXPECT_FALSE(root.isSubclassOf(&middle));
    EXPECT_FALSE(root.isSubclassOf(&leaf));
    EXPECT_FALSE(middle.isSubclassOf(&leaf));
}

TEST(ClassTest, IsSubclassOfFollowsEveryParent) {
    char const* childParents[] = {"ClassTest.LeftBase", "ClassTest.RightBase", nullptr};
    char const* rightParents[] = {"ClassTest.RightRoot", nullptr};
    Class const left("ClassTest.LeftBase", nullptr, 1, nullptr);
    Class const right("ClassTest.RightBase", rightParents, 1, nullptr);
    Class const rightRoot("ClassTest.RightRoot", nullptr, 1, nullptr);
    Class const child("ClassTest.TwoParents", childParents, 1, nullptr);

    EXPECT_TRUE(child.isSubclassOf(&left));
    EXPECT_TRUE(child.isSubclassOf(&right));
    EXPECT_TRUE(child.isSubclassOf(&rightRoot));
    EXPECT_FALSE(left.isSubclassOf(&rightRoot));
}

TEST(ClassTest, IsSubclassOfIsFalseForUnrelatedRecords) {
    char const* parents[] = {"Object", nullptr};
    Class const first("ClassTest.UnrelatedA", parents, 1, nullptr);
    Class const second("ClassTest.UnrelatedB", parents, 1, nullptr);
    EXPECT_FALSE(first.isSubclassOf(&second));
    EXPECT_FALSE(second.isSubclassOf(&first));
    EXPECT_TRUE(first.isSubclassOf(Object::isa()));
}

TEST(ClassTest, IsSubclassOfToleratesUnknownParentNames) {
    char const* parents[] = {"ClassTest.Missing", "ClassTest.KnownBase", nullptr};
    Class const known("ClassTest.KnownBase", nullptr, 1, nullptr);
    Class const child("ClassTest.WithMissingParent", parents, 1, nullptr);
    Class const other("ClassTest.Other", nullptr, 1, nullptr);

    EXPECT_TRUE(child.isSubclassOf(&known));
    EXPECT_FALSE(child.isSubclassOf(&other));
}

TEST(ClassTest, IsSubclassOfResolvesParentsRegisteredLater) {
    char const* parents[] = {"ClassTest.LateBase", nullptr};
    Class const child("ClassTest.EarlyChild", parents, 1, nullptr);
    {
        Class const base("ClassTest.LateBase", nullptr, 1, nullptr);
        EXPECT_TRUE(child.isSubclassOf(&base));
    }
    // With the parent gone the name resolves to nothing again.
    Class const stranger("ClassTest.Stranger", nullptr, 1, nullptr);
    EXPECT_FALSE(child.isSubclassOf(&stranger));
}

TEST(ClassTest, IsSubclassOfTerminatesOnCycles) {
    char const* aParents[] = {"ClassTest.CycleB", nullptr};
    char const* bParents[] = {"ClassTest.CycleC", nullptr};
    char const* cParents[] = {"ClassTest.CycleA", nullptr};
    Class const a("ClassTest.CycleA", aParents, 1, nullptr);
    Class const b("ClassTest.CycleB", bParents, 1, nullptr);
    Class const c("ClassTest.CycleC", cParents, 1, nullptr);
    Class const outside("ClassTest.OutsideCycle", nullptr, 1, nullptr);

    EXPECT_FALSE(a.isSubclassOf(&outside));
    EXPECT_TRUE(a.isSubclassOf(&c));
    EXPECT_TRUE(c.isSubclassOf(&b));
}

TEST(ClassTest, IsSubclassOfTerminatesOnSelfParent) {
    char const* parents[] = {"ClassTest.OwnParent", nullptr};
    Class const record("ClassTest.OwnParent", parents, 1, nullptr);
    Class const other("ClassTest.NotAParent", nullptr, 1, nullptr);
    EXPECT_FALSE(record.isSubclassOf(&other));
}

TEST(ClassTest, EmptyParentListMeansNoParents) {
    char const* parents[] = {nullptr};
    Class const record("ClassTest.EmptyParents", parents, 1, nullptr);
    EXPECT_FALSE(record.isSubclassOf(Object::isa()));
    EXPECT_TRUE(record.isSubclassOf(&record));
}

TEST(ClassTest, CreateInstanceWithoutFactoryReturnsNull) {
    Class const record("ClassTest.NoFactory", nullptr, 1, nullptr);
    EventData data;
    EXPECT_EQ(record.createInstance(&data), nullptr);
    EXPECT_EQ(Class::createInstance(&record, &data), nullptr);
}

TEST(ClassTest, StaticCreateInstanceOfNullRecordReturnsNull) {
    EventData data;
    EXPECT_EQ(Class::createInstance(nullptr, &data), nullptr);
    EXPECT_EQ(Class::createInstance(nullptr, nullptr), nullptr);
}

TEST(ClassTest, CreateInstanceCallsTheFactoryWithTheData) {
    Class const record("ClassTest.Counting", nullptr, 1, &countingFactory);
    EventData data;
    gFactoryCalls = 0;
    gFactoryData = nullptr;

    std::unique_ptr<Object> first(record.createInstance(&data));
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(gFactoryCalls, 1);
    EXPECT_EQ(gFactoryData, &data);

    std::unique_ptr<Object> second(Class::createInstance(&record, nullptr));
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(gFactoryCalls, 2);
    EXPECT_EQ(gFactoryData, nullptr);
}

TEST(ClassTest, BuiltInFactoriesCreateInstancesOfTheirClass) {
    std::unique_ptr<Object> object(Class::createInstance(Class::lookup("Object"), nullptr));
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->isA(), Object::isa());

    std::unique_ptr<Object> data(Class::createInstance(Class::lookup("EventData"), nullptr));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->isA(), EventData::isa());
    EXPECT_NE(dynamic_cast<EventData*>(data.get()), nullptr);
}

TEST(ClassTest, EventDataObjectFactoryWrapsTheData) {
    EventData payload;
    std::unique_ptr<Object> created(
        Class::createInstance(Class::lookup("EventDataObject"), &payload));
    ASSERT_NE(created, nullptr);
    EXPECT_EQ(created->isA(), EventDataObject::isa());
    auto* wrapper = dynamic_cast<EventDataObject*>(created.get());
    ASSERT_NE(wrapper, nullptr);
    EXPECT_EQ(wrapper->data(), &payload);
}

TEST(ClassTest, NewInstanceIsTheFactory) {
    EXPECT_EQ(Object::isa()->factory(), &Object::newInstance);

    std::unique_ptr<Object> object(Object::newInstance(nullptr));
    EXPECT_EQ(object->isA(), Object::isa());

    std::unique_ptr<EventData> data(EventData::newInstance(nullptr));
    EXPECT_EQ(data->isA(), EventData::isa());

    EventData payload;
    std::unique_ptr<EventDataObject> wrapper(EventDataObject::newInstance(&payload));
    EXPECT_EQ(wrapper->isA(), EventDataObject::isa());
    EXPECT_EQ(wrapper->data(), &payload);
}

TEST(ClassTest, ManyRecordsAreAllFoundByName) {
    constexpr int kCount = 200;
    std::vector<std::string> names;
    names.reserve(kCount);
    for (int i = 0; i < kCount; ++i) {
        names.push_back("ClassTest.Many" + std::to_string(i));
    }
    long const before = Class::count();
    std::vector<std::unique_ptr<Class>> records;
    for (auto const& name : names) {
        records.push_back(std::make_unique<Class>(name.c_str(), nullptr, 1, nullptr));
    }
    EXPECT_EQ(Class::count(), before + kCount);
    for (int i = 0; i < kCount; ++i) {
        EXPECT_EQ(Class::lookup(names[i].c_str()), records[i].get());
    }
    records.clear();
    EXPECT_EQ(Class::count(), before);
}
