// Attribute data: GwRcData, GwRcDataEntry and GwRcDataItem, from bytes in memory and from
// resources written by rcattr (data/attributes.txt, data/test.rc).
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include <VmGui.h>

#include "GwRcData.h"

namespace {

// Entry 1001 with a class and a numeric help identifier, then the end mark.
std::string const kExample("\xE9\x03"
                           "Class\0GwPushButton\0HelpId\0\0\0\x2C\x01\0\0\0\0\0\0",
                           38);

// Bytes placed right before an inaccessible page: reading one byte too far faults.
class GuardedBytes {
public:
    explicit GuardedBytes(std::string const& bytes) {
        SYSTEM_INFO info;
        GetSystemInfo(&info);
        mPage = info.dwPageSize;
        mBase = static_cast<char*>(
            VirtualAlloc(nullptr, 2 * mPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old = 0;
        VirtualProtect(mBase + mPage, mPage, PAGE_NOACCESS, &old);
        mData = mBase + mPage - bytes.size();
        std::memcpy(mData, bytes.data(), bytes.size());
    }
    GuardedBytes(GuardedBytes const&) = delete;
    GuardedBytes& operator=(GuardedBytes const&) = delete;
    ~GuardedBytes() { VirtualFree(mBase, 0, MEM_RELEASE); }

    char const* data() const { return mData; }

private:
    std::size_t mPage = 0;
    char* mBase = nullptr;
    char* mData = nullptr;
};

// The locked bytes and size of an RCDATA resource of this program.
struct ResourceBytes {
    char const* data = nullptr;
    std::size_t size = 0;
};

ResourceBytes resourceBytes(unsigned id) {
    ResourceBytes bytes;
    HMODULE module = GetModuleHandleA(nullptr);
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(10));
    if (found == nullptr)
        return bytes;
    HGLOBAL loaded = LoadResource(module, found);
    bytes.data = static_cast<char const*>(LockResource(loaded));
    bytes.size = SizeofResource(module, found);
    return bytes;
}

std::vector<unsigned long long> entryIds(GwRcData const& data) {
    std::vector<unsigned long long> ids;
    GwObjectTableIterator<GwRcDataEntry> next = data.iterator();
    while (GwRcDataEntry* entry = next())
        ids.push_back(entry->id());
    return ids;
}

std::string valueOf(GwRcData const& data, unsigned long long id, char const* key) {
    GwRcDataEntry const* entry = data[id];
    if (entry == nullptr)
        return "<no entry>";
    GwRcDataItem const* item = (*entry)[key];
    return item != nullptr ? item->value().c_str() : "<no item>";
}

// Reaches the parse step that constructors of GwRcData use.
class ParsingRcData : public GwRcData {
public:
    explicit ParsingRcData(unsigned long long id) : GwRcData(id) {}
    using GwRcData::parse;
};

} // namespace

// ---- Class records

TEST(RcDataClassRecords, NullFactoriesBelowGwObject) {
    struct Expected {
        char const* name;
        Class const* record;
        long size;
    } const classes[] = {
        {"GwRcData", GwRcData::isa(), static_cast<long>(sizeof(GwRcData))},
        {"GwRcDataEntry", GwRcDataEntry::isa(), static_cast<long>(sizeof(GwRcDataEntry))},
        {"GwRcDataItem", GwRcDataItem::isa(), static_cast<long>(sizeof(GwRcDataItem))},
    };
    for (Expected const& expected : classes) {
        Class const* record = Class::lookup(expected.name);
        ASSERT_NE(record, nullptr) << expected.name;
        EXPECT_EQ(record, expected.record);
        EXPECT_STREQ(record->name(), expected.name);
        ASSERT_NE(record->parentNames(), nullptr);
        EXPECT_STREQ(record->parentNames()[0], "GwObject");
        EXPECT_EQ(record->parentNames()[1], nullptr);
        EXPECT_EQ(record->instanceSize(), expected.size);
        EXPECT_TRUE(record->isSubclassOf(GwObject::isa()));
        // A factory is registered, and it makes nothing.
        ASSERT_NE(record->factory(), nullptr) << expected.name;
        EXPECT_EQ(record->createInstance(nullptr), nullptr);
        GwEventData data;
        EXPECT_EQ(record->createInstance(&data), nullptr);
    }
    EXPECT_EQ(GwRcData::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwRcDataEntry::newInstance(nullptr), nullptr);
    EXPECT_EQ(GwRcDataItem::newInstance(nullptr), nullptr);

    GwRcData data(1);
    GwRcDataEntry entry(2);
    GwRcDataItem item("k", "v");
    EXPECT_EQ(data.isA(), GwRcData::isa());
    EXPECT_EQ(entry.isA(), GwRcDataEntry::isa());
    EXPECT_EQ(item.isA(), GwRcDataItem::isa());
}

// ---- Parsing

TEST(RcData, ReadsTheExampleLayout) {
    GwRcData data(77, kExample.data());
    EXPECT_EQ(data.id(), 77u);
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{1001}));
    GwRcDataEntry const* entry = data[1001];
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->id(), 1001u);
    ASSERT_NE((*entry)["Class"], nullptr);
    EXPECT_STREQ((*entry)["Class"]->value().c_str(), "GwPushButton");
    ASSERT_NE((*entry)["HelpId"], nullptr);
    EXPECT_STREQ((*entry)["HelpId"]->value().c_str(), "300");
    EXPECT_EQ(static_cast<int>(*(*entry)["HelpId"]), 300);
    // Keys are compared exactly.
    EXPECT_EQ((*entry)["class"], nullptr);
    EXPECT_EQ((*entry)["Clas"], nullptr);
    EXPECT_EQ((*entry)[nullptr], nullptr);
    EXPECT_EQ(data[1002], nullptr);

    GwRcData sized(77, kExample.data(), kExample.size());
    EXPECT_EQ(entryIds(sized), (std::vector<unsigned long long>{1001}));
    EXPECT_EQ(valueOf(sized, 1001, "HelpId"), "300");
}

TEST(RcData, NullDataGivesNoEntries) {
    GwRcData unbounded(1, static_cast<char const*>(nullptr));
    EXPECT_TRUE(entryIds(unbounded).empty());
    GwRcData sized(1, nullptr, 100);
    EXPECT_TRUE(entryIds(sized).empty());
    GwRcData empty(1, kExample.data(), 0);
    EXPECT_TRUE(entryIds(empty).empty());
    EXPECT_EQ(empty[1001], nullptr);
}

TEST(RcData, DataBeginningWithTheEndMarkGivesNoEntries) {
    std::string bytes = std::string(4, '\0') + kExample;
    GwRcData unbounded(1, bytes.data());
    EXPECT_TRUE(entryIds(unbounded).empty());
    GwRcData sized(1, bytes.data(), bytes.size());
    EXPECT_TRUE(entryIds(sized).empty());
}

TEST(RcData, EntryFollowedByTwoZeroBytesHasNoItems) {
    std::string bytes("\xFF\xFF\0\0\xEA\x03"
                      "Class\0GwText\0\0\0\0\0\0\0",
                      25);
    GwRcData data(1, bytes.data());
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{0xFFFF, 1002}));
    GwRcDataEntry const* self = data[0xFFFF];
    ASSERT_NE(self, nullptr);
    EXPECT_EQ(self->iterator()(), nullptr);
    EXPECT_EQ(self->items().count(), 0);
    EXPECT_EQ((*self)["Class"], nullptr);
    EXPECT_EQ(valueOf(data, 1002, "Class"), "GwText");
}

TEST(RcData, RepeatedKeysFindTheFirst) {
    std::string bytes("\x05\x00"
                      "Key\0first\0Key\0second\0\0\0\0\0\0\0",
                      29);
    GwRcData data(1, bytes.data(), bytes.size());
    GwRcDataEntry const* entry = data[5];
    ASSERT_NE(entry, nullptr);
    ASSERT_EQ(entry->items().count(), 2);
    EXPECT_STREQ((*entry)["Key"]->value().c_str(), "first");
    EXPECT_EQ((*entry)["Key"], entry->items()[0]);
    EXPECT_STREQ(entry->items()[1]->value().c_str(), "second");
}

TEST(RcData, NumberZeroReadsAsZero) {
    std::string bytes("\x01\x00"
                      "HelpId\0\0\0\0\0\0\0\0\0\0\0",
                      2 + 7 + 4 + 2 + 4);
    GwRcData data(1, bytes.data());
    EXPECT_EQ(valueOf(data, 1, "HelpId"), "0");
    EXPECT_EQ(static_cast<long>(*(*data[1])["HelpId"]), 0);
    // The largest number, for the byte order.
    std::string largest("\x01\x00"
                        "HelpId\0\0\0\xFF\xFF\0\0\0\0\0\0",
                        19);
    GwRcData most(1, largest.data());
    EXPECT_EQ(valueOf(most, 1, "HelpId"), "65535");
}

TEST(RcData, RepeatedEntryIdentifiersFindTheFirst) {
    std::string bytes("\x05\x00"
                      "Key\0first\0\0\0\x05\x00"
                      "Key\0second\0\0\0\0\0\0\0",
                      2 + 10 + 2 + 2 + 11 + 2 + 4);
    GwRcData data(1, bytes.data());
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{5, 5}));
    EXPECT_EQ(data[5], data.entries()[0]);
    EXPECT_EQ(valueOf(data, 5, "Key"), "first");
}

TEST(RcData, SizedReadingNeverPassesTheBound) {
    // Every cut of the example sits right before an inaccessible page.
    for (std::size_t size = 0; size <= kExample.size(); ++size) {
        GuardedBytes guarded(kExample.substr(0, size));
        GwRcData data(1, guarded.data(), size);
        std::vector<unsigned long long> ids = entryIds(data);
        if (size < 2) {
            EXPECT_TRUE(ids.empty()) << size;
            continue;
        }
        ASSERT_EQ(ids, (std::vector<unsigned long long>{1001})) << size;
        GwRcDataEntry const* entry = data[1001];
        // The class item is complete after 21 bytes, the help identifier after 32.
        EXPECT_EQ((*entry)["Class"] != nullptr, size >= 21) << size;
        EXPECT_EQ((*entry)["HelpId"] != nullptr, size >= 32) << size;
    }
}

TEST(RcData, ParseAddsEntries) {
    ParsingRcData data(9);
    EXPECT_TRUE(entryIds(data).empty());
    data.parse(kExample.data(), kExample.size());
    data.parse(nullptr, 5);
    data.parse(kExample.data(), kExample.size());
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{1001, 1001}));
}

// ---- Registry of living objects

TEST(RcData, AllRcDataInOrderOfConstruction) {
    GwObjectTable<GwRcData>& all = GwRcData::allRcData;
    std::int32_t const before = all.count();
    GwRcData* const previous = GwRcData::current();

    auto first = std::make_unique<GwRcData>(1);
    auto second = std::make_unique<GwRcData>(2, kExample.data());
    auto third = std::make_unique<GwRcData>(3, kExample.data(), kExample.size());
    ASSERT_EQ(all.count(), before + 3);
    EXPECT_EQ(all[before], first.get());
    EXPECT_EQ(all[before + 1], second.get());
    EXPECT_EQ(all[before + 2], third.get());
    EXPECT_EQ(GwRcData::current(), third.get());

    // Copies and assigned objects are not enrolled.
    {
        GwRcData copy(*second);
        GwRcData assigned(4);
        EXPECT_EQ(GwRcData::current(), &assigned);
        assigned = *first;
        EXPECT_EQ(GwRcData::current(), &assigned);
        EXPECT_FALSE(all.contains(&copy));
    }
    EXPECT_EQ(GwRcData::current(), third.get());
    EXPECT_EQ(all.count(), before + 3);

    // Leaving compacts the table; the order stays.
    second.reset();
    EXPECT_EQ(all.count(), before + 2);
    EXPECT_EQ(all[before], first.get());
    EXPECT_EQ(all[before + 1], third.get());
    third.reset();
    EXPECT_EQ(GwRcData::current(), first.get());
    first.reset();
    EXPECT_EQ(all.count(), before);
    EXPECT_EQ(GwRcData::current(), previous);
}

// ---- Copies and assignment

TEST(RcData, CopyAnswersAsTheSourceAndOutlivesIt) {
    auto source = std::make_unique<GwRcData>(5, kExample.data());
    auto copy = std::make_unique<GwRcData>(*source);
    EXPECT_EQ(copy->id(), 5u);
    EXPECT_EQ(entryIds(*copy), entryIds(*source));
    // The entries are the same objects.
    EXPECT_EQ((*copy)[1001], (*source)[1001]);

    source.reset();
    EXPECT_EQ(entryIds(*copy), (std::vector<unsigned long long>{1001}));
    EXPECT_EQ(valueOf(*copy, 1001, "Class"), "GwPushButton");
    EXPECT_EQ(valueOf(*copy, 1001, "HelpId"), "300");
    copy.reset();
}

TEST(RcData, CopyHasATableOfItsOwn) {
    GwRcData source(5, kExample.data());
    GwRcData copy(source);
    copy.add(new GwRcDataEntry(7));
    EXPECT_NE(copy[7], nullptr);
    EXPECT_EQ(source[7], nullptr);
    source.add(new GwRcDataEntry(8));
    EXPECT_EQ(copy[8], nullptr);
    // Removing from the source leaves the shared entry to the copy.
    GwRcDataEntry* shared = source[1001];
    EXPECT_EQ(source.remove(shared), shared);
    EXPECT_EQ(source[1001], nullptr);
    EXPECT_EQ(copy[1001], shared);
    EXPECT_EQ(valueOf(copy, 1001, "HelpId"), "300");
}

TEST(RcData, AssignmentSharesTheVeryTable) {
    auto source = std::make_unique<GwRcData>(5, kExample.data());
    auto assigned = std::make_unique<GwRcData>(6);
    assigned->add(new GwRcDataEntry(42));
    *assigned = *source;
    EXPECT_EQ(assigned->id(), 5u);
    EXPECT_EQ(&assigned->entries(), &source->entries());
    EXPECT_EQ((*assigned)[42], nullptr);
    EXPECT_EQ((*assigned)[1001], (*source)[1001]);

    // What one adds or removes, the other sees.
    auto* added = new GwRcDataEntry(9);
    assigned->add(added);
    EXPECT_EQ((*source)[9], added);
    EXPECT_EQ(source->remove(added), added);
    EXPECT_EQ((*assigned)[9], nullptr);
    delete added;

    source.reset();
    EXPECT_EQ(valueOf(*assigned, 1001, "Class"), "GwPushButton");
    assigned.reset();
}

TEST(RcData, CopiesAndAssignmentsInAnyOrder) {
    // Six ways of ending three related objects; every lookup answers as on the source
    // while it lives, and nothing is deleted twice.
    int const orders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (auto const& order : orders) {
        std::unique_ptr<GwRcData> objects[3];
        objects[0] = std::make_unique<GwRcData>(1, kExample.data());
        objects[1] = std::make_unique<GwRcData>(*objects[0]);
        objects[2] = std::make_unique<GwRcData>(2);
        *objects[2] = *objects[1];
        for (int gone : order) {
            objects[gone].reset();
            for (auto const& object : objects) {
                if (object == nullptr)
                    continue;
                EXPECT_EQ(entryIds(*object), (std::vector<unsigned long long>{1001}));
                EXPECT_EQ(valueOf(*object, 1001, "HelpId"), "300");
            }
        }
    }
}

TEST(RcData, AssignmentToItselfAndChains) {
    GwRcData data(1, kExample.data());
    GwRcData& same = data;
    data = same;
    EXPECT_EQ(valueOf(data, 1001, "Class"), "GwPushButton");

    GwRcData a(2), b(3), c(4, kExample.data());
    a = b = c;
    EXPECT_EQ(&a.entries(), &c.entries());
    EXPECT_EQ(&b.entries(), &c.entries());
    // Assigned back and forth between objects that already share.
    a = b;
    b = a;
    EXPECT_EQ(valueOf(b, 1001, "HelpId"), "300");

    // Assigning from a copy: the copy's table, its own.
    GwRcData copy(c);
    a = copy;
    EXPECT_EQ(&a.entries(), &copy.entries());
    EXPECT_NE(&a.entries(), &c.entries());

    // The checked assignment from an Object.
    Object const& asObject = c;
    a = asObject;
    EXPECT_EQ(&a.entries(), &c.entries());
    GwRcDataEntry entry(1);
    EXPECT_THROW(a = static_cast<Object const&>(entry), std::bad_cast);
}

// ---- Entries

TEST(RcData, EntryAddsAndRemovesItems) {
    GwRcData data(1);
    data.add(nullptr);
    EXPECT_TRUE(entryIds(data).empty());
    EXPECT_EQ(data.remove(nullptr), nullptr);

    auto* entry = new GwRcDataEntry(0xFFFF);
    data.add(entry);
    data.add(entry);
    EXPECT_EQ(data.entries().count(), 1);

    entry->add(nullptr);
    auto* first = new GwRcDataItem("Class", "GwDialog");
    auto* second = new GwRcDataItem("HelpId", "12");
    entry->add(first).add(second).add(first);
    EXPECT_EQ(entry->items().count(), 2);
    EXPECT_EQ((*entry)["HelpId"], second);

    GwRcDataItem other("HelpId", "12");
    EXPECT_EQ(entry->remove(&other), nullptr);
    EXPECT_EQ(entry->remove(first), first);
    EXPECT_EQ((*entry)["Class"], nullptr);
    delete first;
    // Lookups end at the first empty slot, as walks do; adding fills it again.
    EXPECT_EQ((*entry)["HelpId"], nullptr);
    EXPECT_EQ(entry->iterator()(), nullptr);
    auto* third = new GwRcDataItem("Third", "3");
    entry->add(third);
    EXPECT_EQ(entry->items()[0], third);

    std::vector<std::string> keys;
    GwObjectTableIterator<GwRcDataItem> next = entry->iterator();
    while (GwRcDataItem* item = next())
        keys.push_back(item->key().c_str());
    EXPECT_EQ(keys, (std::vector<std::string>{"Third", "HelpId"}));

    GwRcDataEntry* removed = data.remove(entry);
    EXPECT_EQ(removed, entry);
    EXPECT_EQ(data[0xFFFF], nullptr);
    EXPECT_EQ(data.remove(entry), nullptr);
    delete removed;
}

TEST(RcData, EntryCopiesOwnTheirItems) {
    auto source = std::make_unique<GwRcDataEntry>(3);
    source->add(new GwRcDataItem("Class", "GwText")).add(new GwRcDataItem("HelpId", "4"));
    GwRcDataEntry copy(*source);
    EXPECT_EQ(copy.id(), 3u);
    ASSERT_NE(copy["Class"], nullptr);
    EXPECT_NE(copy["Class"], (*source)["Class"]);
    source.reset();
    EXPECT_STREQ(copy["Class"]->value().c_str(), "GwText");
    EXPECT_STREQ(copy["HelpId"]->value().c_str(), "4");

    GwRcDataEntry assigned(9);
    assigned.add(new GwRcDataItem("Old", "x"));
    assigned = copy;
    EXPECT_EQ(assigned.id(), 3u);
    EXPECT_EQ(assigned["Old"], nullptr);
    EXPECT_STREQ(assigned["HelpId"]->value().c_str(), "4");
    GwRcDataEntry& same = assigned;
    assigned = same;
    EXPECT_STREQ(assigned["Class"]->value().c_str(), "GwText");
    EXPECT_THROW(assigned = static_cast<Object const&>(GwRcDataItem("k", "v")), std::bad_cast);
}

// ---- Items

TEST(RcData, ItemReadsNumbers) {
    GwRcDataItem item("HelpId", "42");
    EXPECT_STREQ(item.key().c_str(), "HelpId");
    EXPECT_STREQ(item.value().c_str(), "42");
    EXPECT_STREQ(static_cast<char const*>(item), "42");
    EXPECT_EQ(static_cast<int>(item), 42);
    EXPECT_EQ(static_cast<unsigned int>(item), 42u);
    EXPECT_EQ(static_cast<long>(item), 42L);
    EXPECT_EQ(static_cast<unsigned long>(item), 42UL);
    EXPECT_DOUBLE_EQ(static_cast<double>(item), 42.0);

    item.setValue("2.75");
    EXPECT_EQ(static_cast<int>(item), 2);
    EXPECT_EQ(static_cast<unsigned int>(item), 2u);
    EXPECT_DOUBLE_EQ(static_cast<double>(item), 2.75);

    item.setValue("-7");
    EXPECT_EQ(static_cast<int>(item), -7);
    EXPECT_EQ(static_cast<long>(item), -7L);
    EXPECT_EQ(static_cast<unsigned int>(item), 4294967289u);

    for (char const* text : {"", "abc", "x12"}) {
        item.setValue(text);
        EXPECT_EQ(static_cast<int>(item), 0) << text;
        EXPECT_EQ(static_cast<unsigned int>(item), 0u) << text;
        EXPECT_EQ(static_cast<long>(item), 0L) << text;
        EXPECT_EQ(static_cast<unsigned long>(item), 0UL) << text;
        EXPECT_EQ(static_cast<double>(item), 0.0) << text;
    }
    item.setValue("12abc");
    EXPECT_EQ(static_cast<int>(item), 12);

    GwRcDataItem nulls(nullptr, nullptr);
    EXPECT_STREQ(nulls.key().c_str(), "");
    EXPECT_STREQ(nulls.value().c_str(), "");
}

TEST(RcData, ItemWritesNumbersAsAStreamDoes) {
    GwRcDataItem item("Key", "");
    EXPECT_STREQ(item.setValue(2.5).value().c_str(), "2.5");
    EXPECT_STREQ(item.setValue(1.0 / 3).value().c_str(), "0.333333");
    EXPECT_STREQ(item.setValue(100000.0).value().c_str(), "100000");
    EXPECT_STREQ(item.setValue(1234567.0).value().c_str(), "1.23457e+06");
    EXPECT_STREQ(item.setValue(0.0001).value().c_str(), "0.0001");
    EXPECT_STREQ(item.setValue(-0.5).value().c_str(), "-0.5");
    EXPECT_STREQ(item.setValue(3.0).value().c_str(), "3");
    EXPECT_STREQ(item.setValue(-5).value().c_str(), "-5");
    EXPECT_STREQ(item.setValue(0).value().c_str(), "0");
    EXPECT_STREQ(item.setValue(4294967295u).value().c_str(), "4294967295");
    EXPECT_STREQ(item.setValue(-2147483647L - 1).value().c_str(), "-2147483648");
    EXPECT_STREQ(item.setValue(123456789UL).value().c_str(), "123456789");
    EXPECT_STREQ(item.setValue("text").value().c_str(), "text");
    EXPECT_STREQ(item.setValue(static_cast<char const*>(nullptr)).value().c_str(), "");
    // Chained, the last one counts.
    item.setValue(1).setValue(2.25);
    EXPECT_STREQ(item.value().c_str(), "2.25");
    EXPECT_STREQ(item.key().c_str(), "Key");
}

TEST(RcData, ItemsCompareByKeyOnly) {
    GwRcDataItem a("Class", "GwText");
    GwRcDataItem b("Class", "GwImage");
    GwRcDataItem c("class", "GwText");
    EXPECT_TRUE(a == b);
    EXPECT_EQ(a != b, 0);
    EXPECT_FALSE(a == c);
    EXPECT_EQ(a != c, 1);
    Object const& asObject = b;
    EXPECT_TRUE(a == asObject);

    GwRcDataEntry entry(1);
    GwObject plain;
    EXPECT_THROW((void)(a == entry), std::bad_cast);
    EXPECT_THROW((void)(a != entry), std::bad_cast);
    EXPECT_THROW((void)(a == plain), std::bad_cast);

    GwRcDataItem copy(a);
    EXPECT_STREQ(copy.value().c_str(), "GwText");
    copy = static_cast<Object const&>(b);
    EXPECT_STREQ(copy.value().c_str(), "GwImage");
    EXPECT_THROW(copy = static_cast<Object const&>(plain), std::bad_cast);
}

// ---- Data written by rcattr

TEST(RcData, DialogAttributesFromTheResourceScript) {
    ResourceBytes bytes = resourceBytes(5200);
    ASSERT_NE(bytes.data, nullptr);
    GwRcData data(5200, bytes.data, bytes.size);
    EXPECT_EQ(data.id(), 5200u);
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{0xFFFF, 1001, 1002, 1003}));
    EXPECT_EQ(valueOf(data, 0xFFFF, "Class"), "GwDialog");
    EXPECT_EQ(valueOf(data, 0xFFFF, "HelpId"), "300");
    EXPECT_EQ(valueOf(data, 0xFFFF, "HelpFile"), "tests.hlp");
    EXPECT_EQ(valueOf(data, 1001, "Class"), "GwPushButton");
    EXPECT_EQ(valueOf(data, 1001, "HelpId"), "0");
    ASSERT_NE(data[1002], nullptr);
    EXPECT_EQ(data[1002]->items().count(), 0);
    EXPECT_EQ(valueOf(data, 1003, "Class"), "GwText");
    EXPECT_EQ(valueOf(data, 1003, "Caption"), "tab\there, quote \" and backslash \\ # \xE4\x01");

    // The resource holds the end mark: reading it unbounded agrees.
    GwRcData unbounded(5200, bytes.data);
    EXPECT_EQ(entryIds(unbounded), entryIds(data));
    EXPECT_EQ(valueOf(unbounded, 1003, "Caption"), valueOf(data, 1003, "Caption"));
}

TEST(RcData, MenuAttributesFromTheResourceScript) {
    ResourceBytes bytes = resourceBytes(5201);
    ASSERT_NE(bytes.data, nullptr);
    GwRcData data(5201, bytes.data, bytes.size);
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{0xFFFF, 0x8000, 0x8002, 0}));
    EXPECT_EQ(valueOf(data, 0xFFFF, "HelpId"), "7");
    EXPECT_EQ(valueOf(data, 0x8000, "Class"), "GwMenu");
    EXPECT_EQ(static_cast<long>(*(*data[0x8000])["GwMenuId"]), 2001);
    EXPECT_EQ(valueOf(data, 0x8002, "GwLinkId"), "16");
    EXPECT_EQ(valueOf(data, 0x8002, "GwId"), "65535");
    EXPECT_EQ(valueOf(data, 0, "Spaced key"), "entry 0 with an item");
}

TEST(RcData, EmptyAttributesFromTheResourceScript) {
    ResourceBytes bytes = resourceBytes(5202);
    ASSERT_NE(bytes.data, nullptr);
    EXPECT_EQ(bytes.size, 4u);
    GwRcData data(5202, bytes.data, bytes.size);
    EXPECT_TRUE(entryIds(data).empty());
}

TEST(RcData, TruncatedResourceEndsWithItsSize) {
    ResourceBytes bytes = resourceBytes(5290);
    ASSERT_NE(bytes.data, nullptr);
    EXPECT_EQ(bytes.size, 14u);
    GwRcData data(5290, bytes.data, bytes.size);
    EXPECT_EQ(entryIds(data), (std::vector<unsigned long long>{1001}));
    EXPECT_EQ(data[1001]->items().count(), 0);
}

TEST(RcData, EveryByteSurvivesTheResourceScript) {
    ResourceBytes bytes = resourceBytes(5203);
    ASSERT_NE(bytes.data, nullptr);
    GwRcData data(5203, bytes.data, bytes.size);
    std::string expected;
    for (int byte = 1; byte < 256; ++byte)
        expected += static_cast<char>(byte);
    EXPECT_EQ(valueOf(data, 1, "AllBytes"), expected);
}
