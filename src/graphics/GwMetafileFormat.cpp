#include "GwMetafileFormat.h"

namespace {

std::uint32_t const kEnhancedSignature = 0x464D4520;
std::uint32_t const kPlaceableKey = 0x9AC6CDD7;
std::uint32_t const kEnhancedHeaderType = 1;
std::uint32_t const kEnhancedEndType = 14;
std::size_t const kEnhancedMinimumHeader = 88; // the header record without its extensions
std::size_t const kWindowsHeaderSize = 18;
std::size_t const kWindowsRecordMinimum = 6; // size (4 bytes) and function (2 bytes)

// Little-endian numbers at an offset the caller has checked.
std::uint16_t word(unsigned char const* bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | (bytes[offset + 1] << 8));
}

std::uint32_t dword(unsigned char const* bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(word(bytes, offset)) |
           (static_cast<std::uint32_t>(word(bytes, offset + 2)) << 16);
}

// Records of an enhanced metafile of length bytes: every record inside, the first the
// header, the walk ending with the end-of-file record.
bool enhancedRecordsFit(unsigned char const* bytes, std::size_t length) {
    std::size_t offset = 0;
    bool first = true;
    while (length - offset >= 8) {
        std::uint32_t const type = dword(bytes, offset);
        std::uint32_t const recordSize = dword(bytes, offset + 4);
        if (recordSize < 8 || recordSize % 4 != 0 || recordSize > length - offset)
            return false;
        if (first && (type != kEnhancedHeaderType || recordSize < kEnhancedMinimumHeader))
            return false;
        first = false;
        offset += recordSize;
        if (type == kEnhancedEndType)
            return true;
    }
    return false;
}

// A Windows metafile at bytes, available bytes long: a plausible header whose size field
// fits, and records that stay inside that size up to the end record. Sets length.
bool windowsMetafileFits(unsigned char const* bytes, std::size_t available, std::size_t& length) {
    if (available < kWindowsHeaderSize)
        return false;
    std::uint16_t const type = word(bytes, 0);
    std::uint16_t const headerWords = word(bytes, 2);
    if ((type != 1 && type != 2) || headerWords != kWindowsHeaderSize / 2)
        return false;
    std::uint64_t const declared = 2ull * dword(bytes, 6);
    if (declared < kWindowsHeaderSize || declared > available)
        return false;
    length = static_cast<std::size_t>(declared);
    std::size_t offset = kWindowsHeaderSize;
    while (length - offset >= kWindowsRecordMinimum) {
        std::uint64_t const recordSize = 2ull * dword(bytes, offset);
        std::uint16_t const function = word(bytes, offset + 4);
        if (recordSize < kWindowsRecordMinimum || recordSize > length - offset)
            return false;
        offset += static_cast<std::size_t>(recordSize);
        if (function == 0)
            return true;
    }
    return false;
}

} // namespace

GwMetafileFormat gwMetafileFormat(void const* data, std::size_t size) {
    GwMetafileFormat format;
    auto const* bytes = static_cast<unsigned char const*>(data);
    if (bytes == nullptr || size < 4)
        return format;

    // The signature decides: bytes that carry it are an enhanced metafile or nothing.
    if (size >= 44 && dword(bytes, 40) == kEnhancedSignature) {
        if (size < 52)
            return format;
        std::uint32_t const declared = dword(bytes, 48); // nBytes
        if (declared <= size && enhancedRecordsFit(bytes, declared)) {
            format.kind = GwMetafileKind::eEnhanced;
            format.length = declared;
        }
        return format;
    }

    if (dword(bytes, 0) == kPlaceableKey) {
        if (size < kGwPlaceableHeaderSize)
            return format;
        std::size_t length = 0;
        if (!windowsMetafileFits(bytes + kGwPlaceableHeaderSize, size - kGwPlaceableHeaderSize,
                                 length))
            return format;
        format.kind = GwMetafileKind::ePlaceable;
        format.offset = kGwPlaceableHeaderSize;
        format.length = length;
        format.left = static_cast<std::int16_t>(word(bytes, 6));
        format.top = static_cast<std::int16_t>(word(bytes, 8));
        format.right = static_cast<std::int16_t>(word(bytes, 10));
        format.bottom = static_cast<std::int16_t>(word(bytes, 12));
        format.unitsPerInch = word(bytes, 14);
        return format;
    }

    std::size_t length = 0;
    if (windowsMetafileFits(bytes, size, length)) {
        format.kind = GwMetafileKind::eWindows;
        format.length = length;
    }
    return format;
}

std::uint16_t gwPlaceableChecksum(unsigned char const* header) {
    std::uint16_t sum = 0;
    for (std::size_t i = 0; i < 10; ++i)
        sum = static_cast<std::uint16_t>(sum ^ word(header, 2 * i));
    return sum;
}

void gwWritePlaceableHeader(unsigned char* header, std::int16_t left, std::int16_t top,
                            std::int16_t right, std::int16_t bottom, std::uint16_t unitsPerInch) {
    auto put16 = [header](std::size_t offset, std::uint16_t value) {
        header[offset] = static_cast<unsigned char>(value & 0xFF);
        header[offset + 1] = static_cast<unsigned char>(value >> 8);
    };
    put16(0, static_cast<std::uint16_t>(kPlaceableKey & 0xFFFF));
    put16(2, static_cast<std::uint16_t>(kPlaceableKey >> 16));
    put16(4, 0); // handle
    put16(6, static_cast<std::uint16_t>(left));
    put16(8, static_cast<std::uint16_t>(top));
    put16(10, static_cast<std::uint16_t>(right));
    put16(12, static_cast<std::uint16_t>(bottom));
    put16(14, unitsPerInch);
    put16(16, 0); // reserved
    put16(18, 0);
    put16(20, gwPlaceableChecksum(header));
}
