// The byte layout of metafile files, read on the host.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "GwMetafileFormat.h"

namespace {

using Bytes = std::vector<unsigned char>;

void put16(Bytes& bytes, std::uint16_t value) {
    bytes.push_back(static_cast<unsigned char>(value & 0xFF));
    bytes.push_back(static_cast<unsigned char>(value >> 8));
}

void put32(Bytes& bytes, std::uint32_t value) {
    put16(bytes, static_cast<std::uint16_t>(value & 0xFFFF));
    put16(bytes, static_cast<std::uint16_t>(value >> 16));
}

void set32(Bytes& bytes, std::size_t offset, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        bytes[offset + i] = static_cast<unsigned char>(value >> (8 * i));
}

// A Windows metafile: the 18-byte header, one LineTo record and the end record.
Bytes windowsMetafile() {
    Bytes bytes;
    std::uint32_t const words = 9 + 5 + 3;
    put16(bytes, 1);     // in memory
    put16(bytes, 9);     // header words
    put16(bytes, 0x300); // version
    put32(bytes, words);
    put16(bytes, 0); // objects
    put32(bytes, 5); // largest record
    put16(bytes, 0);
    put32(bytes, 5); // LineTo: 5 words
    put16(bytes, 0x0213);
    put16(bytes, 10);
    put16(bytes, 20);
    put32(bytes, 3); // end
    put16(bytes, 0);
    return bytes;
}

Bytes placeableMetafile() {
    Bytes bytes(kGwPlaceableHeaderSize);
    gwWritePlaceableHeader(bytes.data(), -5, 7, 1000, 2000, 1440);
    Bytes body = windowsMetafile();
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

// An enhanced metafile: an 88-byte header record and the end-of-file record.
Bytes enhancedMetafile() {
    Bytes bytes(88, 0);
    set32(bytes, 0, 1);  // EMR_HEADER
    set32(bytes, 4, 88); // its size
    set32(bytes, 40, 0x464D4520);
    set32(bytes, 44, 0x10000);
    set32(bytes, 48, 88 + 20); // bytes
    set32(bytes, 52, 2);       // records
    put32(bytes, 14);          // EMR_EOF
    put32(bytes, 20);
    put32(bytes, 0);
    put32(bytes, 0x10);
    put32(bytes, 20);
    return bytes;
}

// The format of an exact-size heap copy, so that the sanitizer sees any read past it.
GwMetafileFormat formatOf(Bytes const& bytes, std::size_t size) {
    std::unique_ptr<unsigned char[]> copy(new unsigned char[size == 0 ? 1 : size]);
    if (size != 0)
        std::memcpy(copy.get(), bytes.data(), size);
    return gwMetafileFormat(copy.get(), size);
}

GwMetafileFormat formatOf(Bytes const& bytes) {
    return formatOf(bytes, bytes.size());
}

} // namespace

TEST(MetafileFormat, TellsTheThreeKindsByContent) {
    GwMetafileFormat enhanced = formatOf(enhancedMetafile());
    EXPECT_EQ(enhanced.kind, GwMetafileKind::eEnhanced);
    EXPECT_EQ(enhanced.offset, 0u);
    EXPECT_EQ(enhanced.length, 108u);

    GwMetafileFormat placeable = formatOf(placeableMetafile());
    EXPECT_EQ(placeable.kind, GwMetafileKind::ePlaceable);
    EXPECT_EQ(placeable.offset, 22u);
    EXPECT_EQ(placeable.length, 2u * 17u) << "twice the size in words";
    EXPECT_EQ(placeable.left, -5);
    EXPECT_EQ(placeable.top, 7);
    EXPECT_EQ(placeable.right, 1000);
    EXPECT_EQ(placeable.bottom, 2000);
    EXPECT_EQ(placeable.unitsPerInch, 1440);

    GwMetafileFormat plain = formatOf(windowsMetafile());
    EXPECT_EQ(plain.kind, GwMetafileKind::eWindows);
    EXPECT_EQ(plain.offset, 0u);
    EXPECT_EQ(plain.length, 34u);
}

TEST(MetafileFormat, TrailingBytesAreNotPartOfTheMetafile) {
    Bytes bytes = windowsMetafile();
    bytes.resize(bytes.size() + 10, 0xEE);
    GwMetafileFormat plain = formatOf(bytes);
    EXPECT_EQ(plain.kind, GwMetafileKind::eWindows);
    EXPECT_EQ(plain.length, 34u);
}

TEST(MetafileFormat, EveryTruncationIsInvalid) {
    for (Bytes const& whole : {enhancedMetafile(), placeableMetafile(), windowsMetafile()})
        for (std::size_t size = 0; size < whole.size(); ++size)
            EXPECT_EQ(formatOf(whole, size).kind, GwMetafileKind::eInvalid) << size;
}

TEST(MetafileFormat, ASizeFieldLargerThanTheFileIsInvalid) {
    Bytes placeable = placeableMetafile();
    set32(placeable, 22 + 6, 0x7FFFFFFF);
    EXPECT_EQ(formatOf(placeable).kind, GwMetafileKind::eInvalid);
    set32(placeable, 22 + 6, 18);
    EXPECT_EQ(formatOf(placeable).kind, GwMetafileKind::eInvalid) << "one word too many";

    Bytes enhanced = enhancedMetafile();
    set32(enhanced, 48, 0xFFFFFFFF);
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid);

    Bytes plain = windowsMetafile();
    set32(plain, 6, 0x80000000);
    EXPECT_EQ(formatOf(plain).kind, GwMetafileKind::eInvalid) << "twice it overflows 32 bits";
}

TEST(MetafileFormat, ARecordRunningPastTheMetafileIsInvalid) {
    Bytes plain = windowsMetafile();
    set32(plain, 18, 0xFFFF);
    EXPECT_EQ(formatOf(plain).kind, GwMetafileKind::eInvalid);
    set32(plain, 18, 2); // shorter than a record can be
    EXPECT_EQ(formatOf(plain).kind, GwMetafileKind::eInvalid);

    Bytes enhanced = enhancedMetafile();
    set32(enhanced, 88 + 4, 24);
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid);
    enhanced = enhancedMetafile();
    set32(enhanced, 4, 87);
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid) << "not a multiple of 4";
    enhanced = enhancedMetafile();
    set32(enhanced, 0, 2);
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid) << "no header record first";
}

TEST(MetafileFormat, AMetafileWithoutItsEndRecordIsInvalid) {
    Bytes plain = windowsMetafile();
    plain[plain.size() - 2] = 1; // the end record's function
    EXPECT_EQ(formatOf(plain).kind, GwMetafileKind::eInvalid);
    Bytes enhanced = enhancedMetafile();
    set32(enhanced, 88, 70);
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid);
}

TEST(MetafileFormat, WrongSignaturesAreNotTakenForTheirKind) {
    Bytes enhanced = enhancedMetafile();
    enhanced[40] = 'X';
    EXPECT_EQ(formatOf(enhanced).kind, GwMetafileKind::eInvalid);
    Bytes placeable = placeableMetafile();
    placeable[0] = 0;
    EXPECT_EQ(formatOf(placeable).kind, GwMetafileKind::eInvalid)
        << "without its key the header is no Windows metafile either";
    EXPECT_EQ(formatOf(Bytes(300, 'x')).kind, GwMetafileKind::eInvalid);
    EXPECT_EQ(gwMetafileFormat(nullptr, 100).kind, GwMetafileKind::eInvalid);
}

TEST(MetafileFormat, TheEnhancedSignatureDecidesWhateverTheLength) {
    // A Windows metafile whose bytes carry the enhanced signature at offset 40.
    Bytes bytes = windowsMetafile();
    bytes.resize(44, 0);
    set32(bytes, 40, 0x464D4520);
    set32(bytes, 6, 17);
    EXPECT_EQ(formatOf(bytes).kind, GwMetafileKind::eInvalid);
    bytes.resize(60, 0);
    EXPECT_EQ(formatOf(bytes).kind, GwMetafileKind::eInvalid);
}

TEST(MetafileFormat, ThePlaceableHeaderIsLittleEndianWithItsChecksum) {
    unsigned char header[kGwPlaceableHeaderSize] = {};
    gwWritePlaceableHeader(header, 1, -2, 300, 400, 2540);
    unsigned char const expected[20] = {0xD7, 0xCD, 0xC6, 0x9A, 0,    0,    1, 0, 0xFE, 0xFF,
                                        0x2C, 0x01, 0x90, 0x01, 0xEC, 0x09, 0, 0, 0,    0};
    EXPECT_EQ(std::memcmp(header, expected, 20), 0);
    std::uint16_t sum = 0;
    for (int i = 0; i < 10; ++i)
        sum ^= static_cast<std::uint16_t>(expected[2 * i] | (expected[2 * i + 1] << 8));
    EXPECT_EQ(header[20] | (header[21] << 8), sum);
    EXPECT_EQ(gwPlaceableChecksum(header), sum);
}
