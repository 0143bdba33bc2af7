#include "GwRcDataParser.h"

#include <limits>
#include <string>

namespace {

// Bytes of the data by index; an index at or past the bound reads as -1 ("not there").
class Bytes {
public:
    Bytes(void const* data, std::size_t size)
        : mData(static_cast<unsigned char const*>(data)), mSize(data != nullptr ? size : 0) {}

    int at(std::size_t index) const { return index < mSize ? mData[index] : -1; }
    char const* chars(std::size_t index) const {
        return reinterpret_cast<char const*>(mData + index);
    }

    // The index of the first 0 byte at or after index, or npos when the bound comes first.
    std::size_t terminator(std::size_t index) const {
        int byte;
        while ((byte = at(index)) > 0)
            ++index;
        return byte == 0 ? index : std::string::npos;
    }

private:
    unsigned char const* mData;
    std::size_t mSize;
};

enum class Mark { end, more, unknown };

// Whether the four bytes at index are the end mark. Any nonzero byte settles "more"
// even when others are missing; "end" needs all four.
Mark endMark(Bytes const& bytes, std::size_t index) {
    bool missing = false;
    for (std::size_t k = 0; k < 4; ++k) {
        int byte = bytes.at(index + k);
        if (byte > 0)
            return Mark::more;
        if (byte < 0)
            missing = true;
    }
    return missing ? Mark::unknown : Mark::end;
}

// Whether the two bytes at index end an entry.
Mark entryEnd(Bytes const& bytes, std::size_t index) {
    int first = bytes.at(index);
    int second = bytes.at(index + 1);
    if (first > 0 || second > 0)
        return Mark::more;
    if (first < 0 || second < 0)
        return Mark::unknown;
    return Mark::end;
}

// Reads one item at index into item; the index past it, or npos when it is incomplete.
std::size_t readItem(Bytes const& bytes, std::size_t index, GwRcDataRecordItem& item) {
    std::size_t keyEnd = bytes.terminator(index);
    if (keyEnd == std::string::npos)
        return std::string::npos;
    int first = bytes.at(keyEnd + 1);
    int second = bytes.at(keyEnd + 2);
    if (first > 0 || (first == 0 && second > 0)) {
        // Text: the string right after the key's 0 byte.
        std::size_t valueEnd = bytes.terminator(keyEnd + 1);
        if (valueEnd == std::string::npos)
            return std::string::npos;
        item.key.assign(bytes.chars(index), keyEnd - index);
        item.value.assign(bytes.chars(keyEnd + 1), valueEnd - keyEnd - 1);
        item.number = false;
        return valueEnd + 1;
    }
    if (first < 0 || second < 0)
        return std::string::npos;
    // Number: two zero bytes, then the 16-bit value.
    int low = bytes.at(keyEnd + 3);
    int high = bytes.at(keyEnd + 4);
    if (low < 0 || high < 0)
        return std::string::npos;
    item.key.assign(bytes.chars(index), keyEnd - index);
    item.value = std::to_string(static_cast<unsigned>(low) | static_cast<unsigned>(high) << 8);
    item.number = true;
    return keyEnd + 5;
}

GwRcDataParsed parse(Bytes const& bytes) {
    GwRcDataParsed parsed;
    std::size_t p = 0;
    for (;;) {
        Mark mark = endMark(bytes, p);
        if (mark == Mark::end) {
            parsed.consumed = p + 4;
            parsed.complete = true;
            return parsed;
        }
        // "more" from a nonzero byte still needs both identifier bytes.
        if (mark == Mark::unknown || bytes.at(p + 1) < 0)
            return parsed;
        GwRcDataRecord& entry = parsed.entries.emplace_back();
        entry.id = static_cast<std::uint16_t>(bytes.at(p) | bytes.at(p + 1) << 8);
        p += 2;
        parsed.consumed = p;
        for (;;) {
            mark = entryEnd(bytes, p);
            if (mark == Mark::end) {
                p += 2;
                parsed.consumed = p;
                break;
            }
            if (mark == Mark::unknown)
                return parsed;
            GwRcDataRecordItem item;
            std::size_t next = readItem(bytes, p, item);
            if (next == std::string::npos)
                return parsed;
            entry.items.push_back(std::move(item));
            p = next;
            parsed.consumed = p;
        }
    }
}

} // namespace

GwRcDataParsed gwParseRcData(void const* data, std::size_t size) {
    return parse(Bytes(data, size));
}

GwRcDataParsed gwParseRcDataUnbounded(void const* data) {
    return parse(Bytes(data, std::numeric_limits<std::size_t>::max()));
}
