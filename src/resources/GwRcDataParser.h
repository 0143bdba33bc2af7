// The byte layout of attribute data (RT_RCDATA beside a dialog or menu), read without any
// platform or library class, so that the tools and the host builds can use it too.
//
// Layout (byte-packed, 16-bit numbers little-endian, strings end in one 0 byte):
//     data  := entry* 00 00 00 00
//     entry := id:u16 item* 00 00
//     item  := key 00 value
//     value := text 00            (the two bytes after the key's 0 byte are not both zero)
//            | 00 00 number:u16   (read as its decimal text)
// An entry with identifier 0 and no items cannot be written: its bytes are the end mark.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct GwRcDataRecordItem {
    std::string key;
    // For a number item, its decimal text.
    std::string value;
    // Stored as a 16-bit number rather than as text.
    bool number = false;

    bool operator==(GwRcDataRecordItem const& other) const = default;
};

struct GwRcDataRecord {
    std::uint16_t id = 0;
    std::vector<GwRcDataRecordItem> items;

    bool operator==(GwRcDataRecord const& other) const = default;
};

struct GwRcDataParsed {
    std::vector<GwRcDataRecord> entries;
    // Bytes read: up to and including the end mark, or up to the end of the last element
    // that was read completely.
    std::size_t consumed = 0;
    // The end mark was reached.
    bool complete = false;
};

// Reads at most size bytes from data (null reads nothing). Truncated or malformed data
// ends the walk cleanly: every entry whose identifier could be read is kept, with the
// items that were complete, and nothing at or after data[size] is ever touched. A decision
// that the bytes at hand cannot settle (for example 00 00 as the last two bytes, which may
// be the end mark or entry 0) also ends the walk. Reading a prefix of some data therefore
// yields a prefix of what the whole data yields.
GwRcDataParsed gwParseRcData(void const* data, std::size_t size);

// Reads until the end mark, without a bound: data without its end marks is read past its
// end. Null reads nothing.
GwRcDataParsed gwParseRcDataUnbounded(void const* data);
