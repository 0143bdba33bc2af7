// The byte layout of attribute data, read on the host.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "GwRcDataParser.h"

namespace {

using Bytes = std::vector<unsigned char>;

// Bytes from pieces: numbers are single bytes, texts are copied with their 0 byte.
struct Piece {
    Piece(int byte) : bytes{static_cast<unsigned char>(byte)} {}
    Piece(char const* text) : bytes(text, text + std::strlen(text) + 1) {}
    Bytes bytes;
};

Bytes bytesOf(std::initializer_list<Piece> pieces) {
    Bytes bytes;
    for (Piece const& piece : pieces)
        bytes.insert(bytes.end(), piece.bytes.begin(), piece.bytes.end());
    return bytes;
}

// The bounded parse of a heap copy of exactly these bytes, so that the sanitizer sees any
// read past the end.
GwRcDataParsed parsed(Bytes const& bytes, std::size_t size) {
    auto copy = std::make_unique<unsigned char[]>(size == 0 ? 1 : size);
    if (size != 0)
        std::memcpy(copy.get(), bytes.data(), size);
    return gwParseRcData(size == 0 ? nullptr : copy.get(), size);
}

GwRcDataParsed parsed(Bytes const& bytes) {
    return parsed(bytes, bytes.size());
}

GwRcDataRecordItem text(char const* key, char const* value) {
    return {key, value, false};
}

GwRcDataRecordItem number(char const* key, char const* value) {
    return {key, value, true};
}

// Whether shorter is what a truncation of the data of longer may read: the same entries,
// the last one possibly with fewer items.
bool isPrefix(std::vector<GwRcDataRecord> const& shorter,
              std::vector<GwRcDataRecord> const& longer) {
    if (shorter.size() > longer.size())
        return false;
    for (std::size_t i = 0; i < shorter.size(); ++i) {
        bool last = i + 1 == shorter.size();
        if (!last && !(shorter[i] == longer[i]))
            return false;
        if (last) {
            if (shorter[i].id != longer[i].id || shorter[i].items.size() > longer[i].items.size())
                return false;
            for (std::size_t k = 0; k < shorter[i].items.size(); ++k) {
                if (!(shorter[i].items[k] == longer[i].items[k]))
                    return false;
            }
        }
    }
    return true;
}

// Entry 1001 with a class and a numeric help identifier, then the end mark.
Bytes const kExample = bytesOf({0xE9, 0x03, "Class", "GwPushButton", "HelpId", 0x00, 0x00, 0x2C,
                                0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00});

} // namespace

TEST(RcDataParser, ReadsTheExampleLayout) {
    GwRcDataParsed result = parsed(kExample);
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_EQ(result.entries[0].id, 1001);
    ASSERT_EQ(result.entries[0].items.size(), 2u);
    EXPECT_EQ(result.entries[0].items[0], text("Class", "GwPushButton"));
    EXPECT_EQ(result.entries[0].items[1], number("HelpId", "300"));
    EXPECT_TRUE(result.complete);
    EXPECT_EQ(result.consumed, kExample.size());
}

TEST(RcDataParser, NullAndEmptyDataGiveNoEntries) {
    GwRcDataParsed empty = gwParseRcData(nullptr, 0);
    EXPECT_TRUE(empty.entries.empty());
    EXPECT_FALSE(empty.complete);
    EXPECT_EQ(empty.consumed, 0u);
    // A null pointer reads nothing whatever the size.
    EXPECT_TRUE(gwParseRcData(nullptr, 100).entries.empty());
    EXPECT_TRUE(gwParseRcDataUnbounded(nullptr).entries.empty());
    EXPECT_TRUE(parsed(Bytes{}).entries.empty());
}

TEST(RcDataParser, EndMarkFirstGivesNoEntries) {
    Bytes bytes = bytesOf({0, 0, 0, 0, 0xE9, 0x03, "Class", "X", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    EXPECT_TRUE(result.entries.empty());
    EXPECT_TRUE(result.complete);
    EXPECT_EQ(result.consumed, 4u);
    EXPECT_TRUE(gwParseRcDataUnbounded(bytes.data()).entries.empty());
}

TEST(RcDataParser, EntryFollowedByTwoZeroBytesHasNoItems) {
    Bytes bytes = bytesOf({0xFF, 0xFF, 0, 0, 0xEA, 0x03, "Class", "GwText", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 2u);
    EXPECT_EQ(result.entries[0].id, 0xFFFF);
    EXPECT_TRUE(result.entries[0].items.empty());
    EXPECT_EQ(result.entries[1].id, 1002);
    ASSERT_EQ(result.entries[1].items.size(), 1u);
    EXPECT_EQ(result.entries[1].items[0], text("Class", "GwText"));
    EXPECT_TRUE(result.complete);
}

TEST(RcDataParser, NumberZeroReadsAsZero) {
    Bytes bytes = bytesOf({0x01, 0x00, "HelpId", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    ASSERT_EQ(result.entries[0].items.size(), 1u);
    EXPECT_EQ(result.entries[0].items[0], number("HelpId", "0"));
    EXPECT_TRUE(result.complete);
    EXPECT_EQ(result.consumed, bytes.size());
}

TEST(RcDataParser, NumbersAreLittleEndianAndUnsigned) {
    Bytes bytes =
        bytesOf({0x01, 0x80, "A", 0, 0, 0xFF, 0xFF, "B", 0, 0, 0x34, 0x12, 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_EQ(result.entries[0].id, 0x8001);
    ASSERT_EQ(result.entries[0].items.size(), 2u);
    EXPECT_EQ(result.entries[0].items[0], number("A", "65535"));
    EXPECT_EQ(result.entries[0].items[1], number("B", "4660"));
}

TEST(RcDataParser, RepeatedKeysAndIdentifiersKeepTheirOrder) {
    Bytes bytes = bytesOf({0x05, 0x00, "Key", "first", "Key", "second", 0, 0, 0x05, 0x00, "Key",
                           "third", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 2u);
    EXPECT_EQ(result.entries[0].id, 5);
    EXPECT_EQ(result.entries[1].id, 5);
    ASSERT_EQ(result.entries[0].items.size(), 2u);
    EXPECT_EQ(result.entries[0].items[0], text("Key", "first"));
    EXPECT_EQ(result.entries[0].items[1], text("Key", "second"));
    ASSERT_EQ(result.entries[1].items.size(), 1u);
    EXPECT_EQ(result.entries[1].items[0], text("Key", "third"));
}

TEST(RcDataParser, EntryZeroWithItems) {
    Bytes bytes = bytesOf({0, 0, "Class", "GwText", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_EQ(result.entries[0].id, 0);
    ASSERT_EQ(result.entries[0].items.size(), 1u);
    EXPECT_TRUE(result.complete);
}

TEST(RcDataParser, EmptyKeyAndEmptyText) {
    // An empty key is told from the terminator by the text after it; an empty text from a
    // number by the key after it.
    Bytes bytes = bytesOf({0x07, 0x00, "", "value", "Empty", "", "Next", "x", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    ASSERT_EQ(result.entries[0].items.size(), 3u);
    EXPECT_EQ(result.entries[0].items[0], text("", "value"));
    EXPECT_EQ(result.entries[0].items[1], text("Empty", ""));
    EXPECT_EQ(result.entries[0].items[2], text("Next", "x"));
    EXPECT_TRUE(result.complete);
}

TEST(RcDataParser, TextBytesArePassedOnUnchanged) {
    Bytes bytes = bytesOf({0x01, 0x00, "K\xFF", "\x01\x80 \"\\", 0, 0, 0, 0, 0, 0});
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    ASSERT_EQ(result.entries[0].items.size(), 1u);
    EXPECT_EQ(result.entries[0].items[0], text("K\xFF", "\x01\x80 \"\\"));
}

TEST(RcDataParser, EveryTruncationReadsAPrefix) {
    Bytes bytes = bytesOf({0xFF, 0xFF, "Class", "MyDialog", "HelpId", 0, 0, 0x2C, 0x01, 0,
                           0,    0xE9, 0x03,    0,          0,        0, 0, "",   "x",  "K",
                           0,    0,    0,       0,          0,        0, 0, 0,    0,    0});
    GwRcDataParsed whole = parsed(bytes);
    ASSERT_TRUE(whole.complete);
    ASSERT_EQ(whole.entries.size(), 3u);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        GwRcDataParsed part = parsed(bytes, size);
        EXPECT_FALSE(part.complete) << size;
        EXPECT_LE(part.consumed, size) << size;
        EXPECT_TRUE(isPrefix(part.entries, whole.entries)) << size;
    }
}

TEST(RcDataParser, TruncatedItemsAreDropped) {
    // Cut inside the value of the second item: the entry keeps the first.
    Bytes bytes = bytesOf({0xE9, 0x03, "Class", "GwPushButton", "Title", "Hel"});
    bytes.pop_back(); // the value's 0 byte
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    ASSERT_EQ(result.entries[0].items.size(), 1u);
    EXPECT_EQ(result.entries[0].items[0], text("Class", "GwPushButton"));
    EXPECT_FALSE(result.complete);
    EXPECT_EQ(result.consumed, 2u + 6u + 13u);
}

TEST(RcDataParser, KeyAtTheEndWithoutItsZeroByte) {
    Bytes bytes = bytesOf({0xE9, 0x03});
    bytes.push_back('C');
    bytes.push_back('l');
    GwRcDataParsed result = parsed(bytes);
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_EQ(result.entries[0].id, 1001);
    EXPECT_TRUE(result.entries[0].items.empty());
    EXPECT_FALSE(result.complete);
    EXPECT_EQ(result.consumed, 2u);
}

TEST(RcDataParser, KeyAtTheEndWithItsZeroByte) {
    // The value's form cannot be told: the item is dropped.
    GwRcDataParsed result = parsed(bytesOf({0xE9, 0x03, "Class"}));
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_TRUE(result.entries[0].items.empty());
    result = parsed(bytesOf({0xE9, 0x03, "Class", 0}));
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_TRUE(result.entries[0].items.empty());
}

TEST(RcDataParser, NumberCutShort) {
    GwRcDataParsed result = parsed(bytesOf({0xE9, 0x03, "HelpId", 0, 0, 0x2C}));
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_TRUE(result.entries[0].items.empty());
    result = parsed(bytesOf({0xE9, 0x03, "HelpId", 0, 0, 0x2C, 0x01}));
    ASSERT_EQ(result.entries.size(), 1u);
    ASSERT_EQ(result.entries[0].items.size(), 1u);
    EXPECT_EQ(result.entries[0].items[0], number("HelpId", "300"));
}

TEST(RcDataParser, MissingEndMark) {
    // The entry's terminator is there, the end mark is not.
    GwRcDataParsed result = parsed(bytesOf({0xE9, 0x03, 0, 0}));
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_TRUE(result.entries[0].items.empty());
    EXPECT_FALSE(result.complete);
    EXPECT_EQ(result.consumed, 4u);
    // Two zero bytes could be entry 0 or half the end mark: undecided, so nothing more.
    result = parsed(bytesOf({0xE9, 0x03, 0, 0, 0, 0}));
    EXPECT_EQ(result.entries.size(), 1u);
    EXPECT_FALSE(result.complete);
    // An identifier alone is read: a nonzero byte rules the end mark out.
    result = parsed(bytesOf({0xE9, 0x03}));
    ASSERT_EQ(result.entries.size(), 1u);
    EXPECT_EQ(result.entries[0].id, 1001);
    // Half an identifier is not.
    EXPECT_TRUE(parsed(bytesOf({0xE9})).entries.empty());
}

TEST(RcDataParser, UnboundedStopsAtTheEndMark) {
    Bytes bytes = kExample;
    // What follows the end mark is never read as data.
    bytes.push_back(0x01);
    bytes.push_back(0x00);
    bytes.push_back('X');
    GwRcDataParsed bounded = parsed(bytes);
    GwRcDataParsed unbounded = gwParseRcDataUnbounded(bytes.data());
    EXPECT_TRUE(unbounded.complete);
    EXPECT_EQ(unbounded.consumed, kExample.size());
    EXPECT_EQ(unbounded.entries, bounded.entries);
    EXPECT_EQ(unbounded.entries, parsed(kExample).entries);
}
