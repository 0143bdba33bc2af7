// The byte layout of a tool-bar resource (resource type 241), read and written without any
// platform or library class, so that host builds can test and fuzz it.
//
// The resource is a sequence of little-endian 16-bit words:
//   version, button width, button height, count, then count command identifiers,
// where an identifier of 0 stands for a separator. Bytes after the last identifier are
// ignored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

constexpr std::uint16_t kGwToolBarResourceType = 241;
constexpr std::size_t kGwToolBarResourceHeaderSize = 8;

struct GwToolBarResource {
    std::uint16_t version = 0;
    std::uint16_t width = 0;        // button image width in pixels
    std::uint16_t height = 0;       // button image height in pixels
    std::vector<std::uint16_t> ids; // command identifiers, 0 for a separator

    friend bool operator==(GwToolBarResource const&, GwToolBarResource const&) = default;
};

// Reads the size bytes at data. Never reads at or after data[size]. Returns false, leaving
// result empty, when the bytes are shorter than the header, the count is zero, or the count
// promises more identifiers than the bytes hold; nothing is taken from such a resource.
bool gwParseToolBarResource(void const* data, std::size_t size, GwToolBarResource& result);

// The bytes of a resource with the given header fields and identifiers. Empty when there are
// more than 65535 identifiers, which the 16-bit count cannot carry.
std::vector<unsigned char> gwWriteToolBarResource(std::uint16_t version, std::uint16_t width,
                                                  std::uint16_t height,
                                                  std::vector<std::uint16_t> const& ids);
