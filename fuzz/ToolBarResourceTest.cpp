// The byte layout of tool-bar resources (type 241), read and written on the host. Every parse
// reads from an exact-size heap copy, so that the address sanitizer reports a read past it.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "GwToolBarResource.h"

namespace {

using Bytes = std::vector<unsigned char>;

void put16(Bytes& bytes, std::uint16_t value) {
    bytes.push_back(static_cast<unsigned char>(value & 0xFF));
    bytes.push_back(static_cast<unsigned char>(value >> 8));
}

Bytes resource(std::uint16_t version, std::uint16_t width, std::uint16_t height,
               std::uint16_t count, std::vector<std::uint16_t> const& ids) {
    Bytes bytes;
    put16(bytes, version);
    put16(bytes, width);
    put16(bytes, height);
    put16(bytes, count);
    for (std::uint16_t id : ids)
        put16(bytes, id);
    return bytes;
}

// Parses the first size bytes from a heap block of exactly that size. The result starts out
// filled, so that a refusal must empty it.
bool parse(Bytes const& bytes, std::size_t size, GwToolBarResource& result) {
    std::unique_ptr<unsigned char[]> copy(new unsigned char[size == 0 ? 1 : size]);
    if (size != 0)
        std::memcpy(copy.get(), bytes.data(), size);
    result.version = 9;
    result.width = 9;
    result.height = 9;
    result.ids = {1, 2, 3};
    return gwParseToolBarResource(copy.get(), size, result);
}

bool parse(Bytes const& bytes, GwToolBarResource& result) {
    return parse(bytes, bytes.size(), result);
}

} // namespace

TEST(ToolBarResource, ShorterThanItsHeaderIsRefused) {
    Bytes const bytes = resource(1, 16, 15, 1, {10});
    for (std::size_t size = 0; size < kGwToolBarResourceHeaderSize; ++size) {
        GwToolBarResource result;
        EXPECT_FALSE(parse(bytes, size, result)) << size;
        EXPECT_EQ(result, GwToolBarResource());
    }
}

TEST(ToolBarResource, NullDataIsRefused) {
    GwToolBarResource result;
    result.ids = {4};
    EXPECT_FALSE(gwParseToolBarResource(nullptr, 10, result));
    EXPECT_EQ(result, GwToolBarResource());
}

TEST(ToolBarResource, CountLargerThanTheDataIsRefused) {
    GwToolBarResource result;
    EXPECT_FALSE(parse(resource(1, 16, 15, 3, {10, 11}), result));
    EXPECT_EQ(result, GwToolBarResource());
    EXPECT_FALSE(parse(resource(1, 16, 15, 0xFFFF, {10, 11, 12}), result));
    EXPECT_EQ(result, GwToolBarResource());
    EXPECT_FALSE(parse(resource(1, 16, 15, 1, {}), result));
    EXPECT_EQ(result, GwToolBarResource());
    // Half an identifier is no identifier.
    Bytes halfWord = resource(1, 16, 15, 2, {10});
    halfWord.push_back(11);
    EXPECT_FALSE(parse(halfWord, result));
    EXPECT_EQ(result, GwToolBarResource());
}

TEST(ToolBarResource, ZeroCountIsRefused) {
    GwToolBarResource result;
    EXPECT_FALSE(parse(resource(1, 16, 15, 0, {}), result));
    EXPECT_EQ(result, GwToolBarResource());
    EXPECT_FALSE(parse(resource(1, 16, 15, 0, {10, 11}), result));
    EXPECT_EQ(result, GwToolBarResource());
}

TEST(ToolBarResource, ExactSizeIsRead) {
    Bytes const bytes = resource(1, 16, 15, 2, {10, 11});
    ASSERT_EQ(bytes.size(), kGwToolBarResourceHeaderSize + 4);
    GwToolBarResource result;
    ASSERT_TRUE(parse(bytes, result));
    EXPECT_EQ(result, (GwToolBarResource{1, 16, 15, {10, 11}}));
    // One byte less is one identifier short.
    EXPECT_FALSE(parse(bytes, bytes.size() - 1, result));
    EXPECT_EQ(result, GwToolBarResource());
}

TEST(ToolBarResource, TrailingBytesAreIgnored) {
    Bytes bytes = resource(1, 16, 15, 1, {10, 11, 12});
    bytes.push_back(0xFF);
    GwToolBarResource result;
    ASSERT_TRUE(parse(bytes, result));
    EXPECT_EQ(result.ids, (std::vector<std::uint16_t>{10}));
}

TEST(ToolBarResource, ButtonSeparatorButton) {
    Bytes const bytes = resource(1, 16, 15, 3, {10, 0, 11});
    GwToolBarResource result;
    ASSERT_TRUE(parse(bytes, result));
    EXPECT_EQ(result, (GwToolBarResource{1, 16, 15, {10, 0, 11}}));
}

TEST(ToolBarResource, WordsAreLittleEndian) {
    Bytes const bytes = {0x34, 0x12, 0x78, 0x56, 0xBC, 0x9A, 0x02, 0x00, 0xFF, 0xFF, 0x01, 0x80};
    GwToolBarResource result;
    ASSERT_TRUE(parse(bytes, result));
    EXPECT_EQ(result, (GwToolBarResource{0x1234, 0x5678, 0x9ABC, {0xFFFF, 0x8001}}));
}

TEST(ToolBarResource, WriterLayout) {
    Bytes const expected = {1, 0, 16, 0, 15, 0, 3, 0, 10, 0, 0, 0, 11, 0};
    EXPECT_EQ(gwWriteToolBarResource(1, 16, 15, {10, 0, 11}), expected);
    EXPECT_EQ(gwWriteToolBarResource(0x1234, 0xFFFF, 1, {}),
              (Bytes{0x34, 0x12, 0xFF, 0xFF, 1, 0, 0, 0}));
}

TEST(ToolBarResource, WrittenResourcesReadBack) {
    GwToolBarResource const cases[] = {
        {1, 16, 15, {10, 0, 11}},
        {0, 1, 1, {0}},
        {0xFFFF, 0xFFFF, 0xFFFF, {0xFFFF, 1, 0, 0, 0x8000}},
        {2, 24, 24, std::vector<std::uint16_t>(300, 7)},
    };
    for (GwToolBarResource const& c : cases) {
        Bytes const bytes = gwWriteToolBarResource(c.version, c.width, c.height, c.ids);
        ASSERT_EQ(bytes.size(), kGwToolBarResourceHeaderSize + 2 * c.ids.size());
        GwToolBarResource result;
        ASSERT_TRUE(parse(bytes, result)) << c.ids.size();
        EXPECT_EQ(result, c);
    }
}

TEST(ToolBarResource, WriterKeepsTheCountWithinSixteenBits) {
    std::vector<std::uint16_t> ids(0xFFFF, 5);
    Bytes const most = gwWriteToolBarResource(1, 16, 15, ids);
    GwToolBarResource result;
    ASSERT_TRUE(parse(most, result));
    EXPECT_EQ(result.ids.size(), 0xFFFFu);
    ids.push_back(6);
    EXPECT_TRUE(gwWriteToolBarResource(1, 16, 15, ids).empty());
}
