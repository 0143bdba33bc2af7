// A growable table of non-owning pointers with stable slot numbers.
#pragma once

#include <cstdint>

// A growable table of non-owning pointers with stable slot numbers.
//
// Slots are reused lowest first: adding takes the first empty slot or the one that already
// holds the pointer, else appends. A full array grows by 100 slots. Removing empties the
// slot and drops trailing empty slots from the count. Walks stop at the first empty slot.
template <class T> class GwObjectTable {
public:
    static constexpr std::int32_t growth = 100; // slots added when the array is full

    // An empty table with room for capacity pointers (at least one).
    explicit GwObjectTable(std::int32_t capacity = 20)
        : mCount(0), mSlots(nullptr), mCapacity(capacity > 0 ? capacity : 1) {
        mSlots = new T*[mCapacity]();
    }
    // Copies the pointers (not what they point to), slot for slot.
    GwObjectTable(GwObjectTable const& other)
        : mCount(other.mCount), mSlots(new T*[other.mCapacity]()), mCapacity(other.mCapacity) {
        for (std::int32_t i = 0; i < mCount; ++i)
            mSlots[i] = other.mSlots[i];
    }
    GwObjectTable& operator=(GwObjectTable const& other) {
        if (this != &other) {
            GwObjectTable copy(other);
            swap(copy);
        }
        return *this;
    }
    ~GwObjectTable() { delete[] mSlots; }

    // The slot taken, or -1 for a null pointer.
    std::int32_t add(T* pointer) {
        if (pointer == nullptr)
            return -1;
        for (std::int32_t i = 0; i < mCount; ++i) {
            if (mSlots[i] == nullptr || mSlots[i] == pointer) {
                mSlots[i] = pointer;
                return i;
            }
        }
        if (mCount == mCapacity) {
            T** grown = new T*[mCapacity + growth]();
            for (std::int32_t i = 0; i < mCount; ++i)
                grown[i] = mSlots[i];
            delete[] mSlots;
            mSlots = grown;
            mCapacity += growth;
        }
        mSlots[mCount] = pointer;
        return mCount++;
    }

    // The slot emptied, or -1 when the pointer is not in the table.
    std::int32_t remove(T const* pointer) {
        std::int32_t slot = indexOf(pointer);
        if (slot < 0)
            return -1;
        mSlots[slot] = nullptr;
        while (mCount > 0 && mSlots[mCount - 1] == nullptr)
            --mCount;
        return slot;
    }

    // Moves the occupied slots to the front, keeping their order.
    void compact() {
        std::int32_t used = 0;
        for (std::int32_t i = 0; i < mCount; ++i) {
            if (mSlots[i] != nullptr)
                mSlots[used++] = mSlots[i];
        }
        for (std::int32_t i = used; i < mCount; ++i)
            mSlots[i] = nullptr;
        mCount = used;
    }

    // Empties every slot; the capacity stays.
    void clear() {
        for (std::int32_t i = 0; i < mCount; ++i)
            mSlots[i] = nullptr;
        mCount = 0;
    }

    // The first slot holding the pointer, or -1 (null is never found).
    std::int32_t indexOf(T const* pointer) const {
        if (pointer == nullptr)
            return -1;
        for (std::int32_t i = 0; i < mCount; ++i) {
            if (mSlots[i] == pointer)
                return i;
        }
        return -1;
    }
    bool contains(T const* pointer) const { return indexOf(pointer) >= 0; }

    // One past the highest slot in use.
    std::int32_t count() const { return mCount; }
    // The number of slots allocated.
    std::int32_t capacity() const { return mCapacity; }
    // The slot's pointer; null for an empty slot or an index out of range.
    T* at(std::int32_t index) const {
        return index >= 0 && index < mCount ? mSlots[index] : nullptr;
    }
    T* operator[](std::int32_t index) const { return at(index); }

    // Exchanges the contents of two tables.
    void swap(GwObjectTable& other) noexcept {
        std::int32_t count = mCount, capacity = mCapacity;
        T** slots = mSlots;
        mCount = other.mCount;
        mSlots = other.mSlots;
        mCapacity = other.mCapacity;
        other.mCount = count;
        other.mSlots = slots;
        other.mCapacity = capacity;
    }

private:
    std::int32_t mCount;
    T** mSlots;
    std::int32_t mCapacity;
};

// Walks a table from slot 0 and ends at the first empty slot.
//     for (GwObjectTableIterator<T> it(table); T* entry = it(); ) ...
template <class T> class GwObjectTableIterator {
public:
    // A walk over table (a null table gives an empty walk).
    explicit GwObjectTableIterator(GwObjectTable<T> const* table) : mTable(table), mNext(0) {}
    explicit GwObjectTableIterator(GwObjectTable<T> const& table) : mTable(&table), mNext(0) {}

    // The next entry, or null at the end of the walk.
    T* operator()() {
        T* entry = mTable != nullptr ? mTable->at(mNext) : nullptr;
        if (entry != nullptr)
            ++mNext;
        return entry;
    }
    // Starts the walk again at slot 0.
    void reset() { mNext = 0; }

private:
    GwObjectTable<T> const* mTable;
    std::int32_t mNext;
};
