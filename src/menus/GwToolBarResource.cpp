#include "GwToolBarResource.h"

namespace {

std::uint16_t wordAt(unsigned char const* bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(bytes[offset] | (bytes[offset + 1] << 8));
}

void putWord(std::vector<unsigned char>& bytes, std::uint16_t value) {
    bytes.push_back(static_cast<unsigned char>(value & 0xFF));
    bytes.push_back(static_cast<unsigned char>(value >> 8));
}

} // namespace

bool gwParseToolBarResource(void const* data, std::size_t size, GwToolBarResource& result) {
    result = GwToolBarResource();
    if (data == nullptr || size < kGwToolBarResourceHeaderSize)
        return false;
    auto const* bytes = static_cast<unsigned char const*>(data);
    std::uint16_t const count = wordAt(bytes, 6);
    if (count == 0 || (size - kGwToolBarResourceHeaderSize) / 2 < count)
        return false;
    result.version = wordAt(bytes, 0);
    result.width = wordAt(bytes, 2);
    result.height = wordAt(bytes, 4);
    result.ids.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        result.ids.push_back(wordAt(bytes, kGwToolBarResourceHeaderSize + 2 * i));
    return true;
}

std::vector<unsigned char> gwWriteToolBarResource(std::uint16_t version, std::uint16_t width,
                                                  std::uint16_t height,
                                                  std::vector<std::uint16_t> const& ids) {
    std::vector<unsigned char> bytes;
    if (ids.size() > 0xFFFF)
        return bytes;
    bytes.reserve(kGwToolBarResourceHeaderSize + 2 * ids.size());
    putWord(bytes, version);
    putWord(bytes, width);
    putWord(bytes, height);
    putWord(bytes, static_cast<std::uint16_t>(ids.size()));
    for (std::uint16_t id : ids)
        putWord(bytes, id);
    return bytes;
}
