#include "GwRcData.h"

#include <cstdlib>
#include <cstring>
#include <sstream>

#include "GwRcDataParser.h"

GW_CLASS_NULL(GwRcData, "GwRcData", "GwObject")
GW_CLASS_NULL(GwRcDataEntry, "GwRcDataEntry", "GwObject")
GW_CLASS_NULL(GwRcDataItem, "GwRcDataItem", "GwObject")

GwObjectTable<GwRcData> GwRcData::allRcData;

namespace {

// Entry and item tables start with room for 5 and grow by 100.
constexpr std::int32_t kFirstRoom = 5;

template <class Number> String streamed(Number value) {
    std::ostringstream out;
    out << value;
    return String(out.str().c_str());
}

// Adds an entry with copies of the items for every record read.
void addRecords(GwRcData& data, GwRcDataParsed const& parsed) {
    for (GwRcDataRecord const& record : parsed.entries) {
        auto* entry = new GwRcDataEntry(record.id);
        for (GwRcDataRecordItem const& item : record.items)
            entry->add(new GwRcDataItem(item.key.c_str(), item.value.c_str()));
        data.add(entry);
    }
}

} // namespace

// ---- GwRcDataItem

GwRcDataItem::GwRcDataItem(char const* key, char const* value) : mKey(key), mValue(value) {}

GwRcDataItem::operator int() const {
    return std::atoi(mValue.c_str());
}

GwRcDataItem::operator unsigned int() const {
    return static_cast<unsigned int>(std::strtoul(mValue.c_str(), nullptr, 10));
}

GwRcDataItem::operator long() const {
    return std::atol(mValue.c_str());
}

GwRcDataItem::operator unsigned long() const {
    return static_cast<unsigned long>(std::atol(mValue.c_str()));
}

GwRcDataItem::operator double() const {
    return std::atof(mValue.c_str());
}

GwRcDataItem& GwRcDataItem::setValue(int value) {
    mValue = streamed(value);
    return *this;
}

GwRcDataItem& GwRcDataItem::setValue(unsigned int value) {
    mValue = streamed(value);
    return *this;
}

GwRcDataItem& GwRcDataItem::setValue(long value) {
    mValue = streamed(value);
    return *this;
}

GwRcDataItem& GwRcDataItem::setValue(unsigned long value) {
    mValue = streamed(value);
    return *this;
}

GwRcDataItem& GwRcDataItem::setValue(double value) {
    mValue = streamed(value);
    return *this;
}

GwRcDataItem& GwRcDataItem::setValue(char const* value) {
    mValue = value;
    return *this;
}

bool GwRcDataItem::operator==(Object const& other) const {
    return mKey == dynamic_cast<GwRcDataItem const&>(other).mKey;
}

int GwRcDataItem::operator!=(Object const& other) const {
    return *this == other ? 0 : 1;
}

// ---- GwRcDataEntry

GwRcDataEntry::GwRcDataEntry(unsigned long long id) : mId(id), mItems(kFirstRoom), mHolders(0) {}

GwRcDataEntry::GwRcDataEntry(GwRcDataEntry const& other)
    : GwObject(other), mId(other.mId), mItems(kFirstRoom), mHolders(0) {
    for (std::int32_t i = 0; i < other.mItems.count(); ++i) {
        GwRcDataItem const* item = other.mItems.at(i);
        if (item != nullptr)
            mItems.add(new GwRcDataItem(*item));
    }
}

GwRcDataEntry& GwRcDataEntry::operator=(GwRcDataEntry const& other) {
    if (this != &other) {
        // Copied first, so that this entry stays intact when copying fails.
        GwRcDataEntry copy(other);
        GwObject::operator=(other);
        mId = copy.mId;
        mItems.swap(copy.mItems);
    }
    return *this;
}

GwRcDataEntry::~GwRcDataEntry() {
    deleteItems();
}

void GwRcDataEntry::deleteItems() {
    for (std::int32_t i = 0; i < mItems.count(); ++i)
        delete mItems.at(i);
    mItems.clear();
}

GwRcDataItem* GwRcDataEntry::operator[](char const* key) const {
    if (key == nullptr)
        return nullptr;
    for (GwObjectTableIterator<GwRcDataItem> next(mItems); GwRcDataItem* item = next();) {
        if (std::strcmp(item->key().c_str(), key) == 0)
            return item;
    }
    return nullptr;
}

GwRcDataEntry& GwRcDataEntry::add(GwRcDataItem* item) {
    mItems.add(item);
    return *this;
}

GwRcDataItem* GwRcDataEntry::remove(GwRcDataItem* item) {
    return mItems.remove(item) >= 0 ? item : nullptr;
}

// ---- GwRcData

// An entry table and the number of GwRcData objects that refer to it.
struct GwRcData::Table {
    long references = 1;
    GwObjectTable<GwRcDataEntry> entries{kFirstRoom};

    Table() = default;
    // The same entries; each now has one holder more.
    Table(Table const& other) : entries(other.entries) {
        for (std::int32_t i = 0; i < entries.count(); ++i) {
            if (GwRcDataEntry* entry = entries.at(i))
                ++entry->mHolders;
        }
    }
    Table& operator=(Table const&) = delete;
    // Every entry loses a holder; the ones that no other table holds are deleted.
    ~Table() {
        for (std::int32_t i = 0; i < entries.count(); ++i) {
            GwRcDataEntry* entry = entries.at(i);
            if (entry != nullptr && --entry->mHolders <= 0)
                delete entry;
        }
    }
};

GwRcData::GwRcData(unsigned long long id) : mId(id), mTable(new Table) {
    enrol();
}

GwRcData::GwRcData(unsigned long long id, char const* data) : mId(id), mTable(new Table) {
    enrol();
    addRecords(*this, gwParseRcDataUnbounded(data));
}

GwRcData::GwRcData(unsigned long long id, char const* data, std::size_t size)
    : mId(id), mTable(new Table) {
    enrol();
    parse(data, size);
}

GwRcData::GwRcData(GwRcData const& other)
    : GwObject(other), mId(other.mId), mTable(new Table(*other.mTable)) {}

GwRcData& GwRcData::operator=(GwRcData const& other) {
    if (mTable != other.mTable) {
        ++other.mTable->references;
        release();
        mTable = other.mTable;
    }
    GwObject::operator=(other);
    mId = other.mId;
    return *this;
}

GwRcData::~GwRcData() {
    release();
    allRcData.remove(this);
    allRcData.compact();
}

void GwRcData::enrol() {
    allRcData.add(this);
}

void GwRcData::release() {
    if (--mTable->references == 0)
        delete mTable;
    mTable = nullptr;
}

void GwRcData::parse(char const* data, std::size_t size) {
    addRecords(*this, gwParseRcData(data, size));
}

GwRcDataEntry* GwRcData::operator[](unsigned long long id) const {
    for (GwObjectTableIterator<GwRcDataEntry> next(mTable->entries);
         GwRcDataEntry* entry = next();) {
        if (entry->id() == id)
            return entry;
    }
    return nullptr;
}

GwRcData& GwRcData::add(GwRcDataEntry* entry) {
    if (entry != nullptr && !mTable->entries.contains(entry)) {
        mTable->entries.add(entry);
        ++entry->mHolders;
    }
    return *this;
}

GwRcDataEntry* GwRcData::remove(GwRcDataEntry* entry) {
    if (mTable->entries.remove(entry) < 0)
        return nullptr;
    --entry->mHolders;
    return entry;
}

GwObjectTableIterator<GwRcDataEntry> GwRcData::iterator() const {
    return GwObjectTableIterator<GwRcDataEntry>(mTable->entries);
}

GwObjectTable<GwRcDataEntry> const& GwRcData::entries() const {
    return mTable->entries;
}

GwRcData* GwRcData::current() {
    return allRcData.at(allRcData.count() - 1);
}
