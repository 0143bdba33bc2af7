// Attribute data: the RT_RCDATA resource beside a dialog or menu that names the library
// class, the help identifier and the like of each element, as entries of key/value items.
#pragma once

#include <cstddef>

#include <String.h>

#include "GwObject.h"
#include "GwObjectTable.h"

class GwResource;

// One key and its value text.
class VMGUI_API GwRcDataItem : public GwObject {
    GW_DECLARE_CLASS(GwRcDataItem)

public:
    // Null key or value: an empty text.
    GwRcDataItem(char const* key, char const* value);
    // Copies key and value.
    GwRcDataItem(GwRcDataItem const&) = default;
    GwRcDataItem& operator=(GwRcDataItem const&) = default;
    ~GwRcDataItem() override = default;

    // The key, the value, and the value as a C string.
    String const& key() const { return mKey; }
    String const& value() const { return mValue; }
    operator char const*() const { return mValue.c_str(); }

    // The value read as a number: atoi, strtoul (base 10), atol, atol, atof. Text that is
    // no number reads as 0.
    operator int() const;
    operator unsigned int() const;
    operator long() const;
    operator unsigned long() const;
    operator double() const;

    // The number as a standard output stream writes it with default settings: decimal,
    // and a double with 6 significant digits (2.5 -> "2.5", 1.0/3 -> "0.333333").
    GwRcDataItem& setValue(int value);
    GwRcDataItem& setValue(unsigned int value);
    GwRcDataItem& setValue(long value);
    GwRcDataItem& setValue(unsigned long value);
    GwRcDataItem& setValue(double value);
    // Null: an empty text.
    GwRcDataItem& setValue(char const* value);

    // Equal keys; values are not compared. The other must be a GwRcDataItem
    // (std::bad_cast otherwise).
    bool operator==(Object const& other) const override;
    // 1 when the keys differ, 0 when they are equal.
    int operator!=(Object const& other) const override;
    GW_DECLARE_COMPARISON(GwRcDataItem)

    // Always null: an item is not made by name.
    static GwRcDataItem* newInstance(EventData const* data);

private:
    String mKey;
    String mValue;
};

// The items of one element: the dialog or menu itself (0xFFFF), a control (its control
// identifier) or a popup entry of a menu (0x8000 + position). Owns its items.
class VMGUI_API GwRcDataEntry : public GwObject {
    GW_DECLARE_CLASS(GwRcDataEntry)

public:
    // An entry without items for the element id.
    explicit GwRcDataEntry(unsigned long long id);
    // A copy owns copies of the items.
    GwRcDataEntry(GwRcDataEntry const& other);
    GwRcDataEntry& operator=(GwRcDataEntry const& other);
    // Deletes the items it holds.
    ~GwRcDataEntry() override;

    // The element's identifier.
    unsigned long long id() const { return mId; }

    // The first item whose key is exactly key (byte-wise, case-sensitive), searched in
    // slot order up to the first empty slot; null when there is none.
    GwRcDataItem* operator[](char const* key) const;

    // The entry owns the item from now on. Null is ignored; an item already held stays
    // where it is.
    GwRcDataEntry& add(GwRcDataItem* item);
    // Takes the item out; the caller owns it then. Null when the entry does not hold it.
    GwRcDataItem* remove(GwRcDataItem* item);

    // The items, to walk or to read by slot.
    GwObjectTableIterator<GwRcDataItem> iterator() const {
        return GwObjectTableIterator<GwRcDataItem>(mItems);
    }
    GwObjectTable<GwRcDataItem> const& items() const { return mItems; }

    // Always null: an entry is not made by name.
    static GwRcDataEntry* newInstance(EventData const* data);

private:
    friend class GwRcData;

    void deleteItems();

    unsigned long long mId;
    GwObjectTable<GwRcDataItem> mItems;
    // How many entry tables of GwRcData objects hold this entry (see GwRcData).
    long mHolders;
};

// The parsed attribute data of one resource identifier: its entries, in the order of the
// data.
//
// Ownership of the entries is shared. A GwRcData refers to a reference-counted entry table;
// every entry counts the tables that hold it. A copy gets a table of its own holding the
// same entries, an assigned object shares the very table of its source (so that adding to
// one shows in the other). The last object to drop a table releases its entries, and an
// entry is deleted when the last table holding it is released. Copies, assignments and
// destruction may thus happen in any order, and lookups on a copy answer as on its source.
class VMGUI_API GwRcData : public GwObject {
    GW_DECLARE_CLASS(GwRcData)

public:
    // No entries.
    explicit GwRcData(unsigned long long id = 0);
    // The RT_RCDATA resource id & 0xFFFF of the resource's module (the executable when it
    // has none); no entries when it is missing or begins with the end mark.
    GwRcData(unsigned long long id, GwResource const& res);
    // Reads the data up to its end mark, unbounded; null gives no entries.
    GwRcData(unsigned long long id, char const* data);
    // Reads at most size bytes; truncated or malformed data ends with the last complete
    // element (see GwRcDataParser.h).
    GwRcData(unsigned long long id, char const* data, std::size_t size);
    // The same entries in a table of its own; the copy is not enrolled in allRcData.
    GwRcData(GwRcData const& other);
    // Shares the other's table (and thus its entries).
    GwRcData& operator=(GwRcData const& other);
    // Releases the table, leaves allRcData and compacts it.
    ~GwRcData() override;

    // The identifier of the dialog or menu the data belongs to.
    unsigned long long id() const { return mId; }

    // The first entry with that identifier, searched in slot order up to the first empty
    // slot; null when there is none.
    GwRcDataEntry* operator[](unsigned long long id) const;

    // The table holds (and shares the ownership of) the entry from now on. Null is ignored.
    GwRcData& add(GwRcDataEntry* entry);
    // Takes the entry out of the table; null when the table does not hold it. It is not
    // deleted: when no other table holds it, the caller owns it.
    GwRcDataEntry* remove(GwRcDataEntry* entry);

    // The entries, to walk or to read by slot.
    GwObjectTableIterator<GwRcDataEntry> iterator() const;
    GwObjectTable<GwRcDataEntry> const& entries() const;

    // The last object of allRcData, or null.
    static GwRcData* current();

    // Always null: attribute data is not made by name.
    static GwRcData* newInstance(EventData const* data);

    // Every GwRcData made by the identifier constructors, in order of construction.
    static GwObjectTable<GwRcData> allRcData;

protected:
    // Adds the entries read from at most size bytes of data (null reads nothing).
    void parse(char const* data, std::size_t size);

private:
    struct Table;

    void enrol();
    void release();

    unsigned long long mId;
    Table* mTable;
};
