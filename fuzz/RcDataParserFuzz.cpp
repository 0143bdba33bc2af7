// libFuzzer target: the bounded attribute-data parser on arbitrary bytes, with the
// properties that every input must keep. A broken property aborts, which libFuzzer reports
// as a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "FuzzRequire.h"
#include "GwRcDataParser.h"
#include "RcAttrWriter.h"

namespace {

// The bounded parse of an exact-size heap copy of the first size bytes, so that the
// address sanitizer reports any read past them.
GwRcDataParsed parseCopy(std::uint8_t const* data, std::size_t size) {
    std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[size]);
    if (size != 0)
        std::memcpy(copy.get(), data, size);
    return gwParseRcData(copy.get(), size);
}

// What a truncation may read: the same entries, the last one possibly with fewer items.
bool isPrefix(std::vector<GwRcDataRecord> const& shorter,
              std::vector<GwRcDataRecord> const& longer) {
    if (shorter.size() > longer.size())
        return false;
    for (std::size_t i = 0; i < shorter.size(); ++i) {
        GwRcDataRecord const& part = shorter[i];
        GwRcDataRecord const& whole = longer[i];
        if (i + 1 < shorter.size()) {
            if (!(part == whole))
                return false;
            continue;
        }
        if (part.id != whole.id || part.items.size() > whole.items.size())
            return false;
        for (std::size_t k = 0; k < part.items.size(); ++k) {
            if (!(part.items[k] == whole.items[k]))
                return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    GwRcDataParsed parsed = parseCopy(data, size);
    REQUIRE(parsed.consumed <= size);

    for (GwRcDataRecord const& entry : parsed.entries) {
        for (GwRcDataRecordItem const& item : entry.items) {
            REQUIRE(item.key.find('\0') == std::string::npos);
            REQUIRE(item.value.find('\0') == std::string::npos);
            if (item.number)
                REQUIRE(!item.value.empty() &&
                        std::strtoul(item.value.c_str(), nullptr, 10) <= 0xFFFF);
        }
    }

    if (parsed.complete) {
        REQUIRE(parsed.consumed >= 4);
        REQUIRE(std::memcmp(data + parsed.consumed - 4, "\0\0\0\0", 4) == 0);
        // The bytes up to the end mark are all that counts, and the unbounded form, which
        // may not read past them either, agrees.
        GwRcDataParsed upToEnd = parseCopy(data, parsed.consumed);
        REQUIRE(upToEnd.complete && upToEnd.entries == parsed.entries);
        std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[parsed.consumed]);
        std::memcpy(exact.get(), data, parsed.consumed);
        GwRcDataParsed unbounded = gwParseRcDataUnbounded(exact.get());
        REQUIRE(unbounded.complete && unbounded.consumed == parsed.consumed);
        REQUIRE(unbounded.entries == parsed.entries);
    }

    // Truncated data reads as a prefix of the whole.
    if (size > 0) {
        std::size_t cut = data[0] % size;
        GwRcDataParsed part = parseCopy(data, cut);
        REQUIRE(part.consumed <= cut);
        REQUIRE(isPrefix(part.entries, parsed.entries));
        if (part.complete)
            REQUIRE(parsed.complete && part.entries == parsed.entries);
    }

    // Writing the result again: complete data comes back byte for byte; anything the writer
    // accepts reads back as the same entries.
    std::string bytes, error;
    bool encoded = rcAttrEncode(parsed.entries, bytes, error);
    if (parsed.complete) {
        REQUIRE(encoded);
        REQUIRE(bytes.size() == parsed.consumed);
        REQUIRE(std::memcmp(bytes.data(), data, bytes.size()) == 0);
    }
    if (encoded) {
        GwRcDataParsed back =
            parseCopy(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
        REQUIRE(back.complete && back.consumed == bytes.size());
        REQUIRE(back.entries == parsed.entries);
    }
    return 0;
}
