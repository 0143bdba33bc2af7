// The byte layout of metafile files, read and written without any platform or library
// class, so that host builds can test and fuzz it.
//
// Three kinds are told apart by content (numbers little-endian):
//   - enhanced metafile: the signature " EMF" (0x464D4520) at offset 40 of the header
//     record; the records follow one another, each with its type and byte size, until the
//     end-of-file record (type 14);
//   - placeable Windows metafile: the key 0x9AC6CDD7 at offset 0, a 22-byte header, then
//     a Windows metafile;
//   - plain Windows metafile: an 18-byte header (type 1 or 2, header size 9 words, the
//     metafile's size in 16-bit words), then records of a 32-bit size in words and a
//     16-bit function, until the end record (function 0).
#pragma once

#include <cstddef>
#include <cstdint>

enum class GwMetafileKind {
    eInvalid,   // nothing a metafile can be made of
    eEnhanced,  // bits: the enhanced metafile
    ePlaceable, // bits: the Windows metafile after the placeable header
    eWindows    // bits: the Windows metafile
};

struct GwMetafileFormat {
    GwMetafileKind kind = GwMetafileKind::eInvalid;
    // The bytes a metafile is made of: offset and length within the input, always inside it.
    std::size_t offset = 0;
    std::size_t length = 0;
    // Placeable only: the bounding box and the units per inch of the header.
    std::int16_t left = 0;
    std::int16_t top = 0;
    std::int16_t right = 0;
    std::int16_t bottom = 0;
    std::uint16_t unitsPerInch = 0;
};

// Tells the kind of the size bytes at data and where the metafile bits lie. Never reads at or
// after data[size]; a truncated file, a lying size field or records that run past the
// declared length give eInvalid. An enhanced metafile's length is the byte count of its
// header; a Windows metafile's is twice the size-in-words field of its header, which must
// fit the bytes that follow the placeable header (or the file).
GwMetafileFormat gwMetafileFormat(void const* data, std::size_t size);

// The 22-byte placeable header: key, handle 0, bounding box, units per inch, reserved 0 and
// the checksum (the exclusive or of the ten 16-bit words before it).
constexpr std::size_t kGwPlaceableHeaderSize = 22;
void gwWritePlaceableHeader(unsigned char* header, std::int16_t left, std::int16_t top,
                            std::int16_t right, std::int16_t bottom, std::uint16_t unitsPerInch);
// The exclusive or of the first ten 16-bit words of a header.
std::uint16_t gwPlaceableChecksum(unsigned char const* header);
