// libFuzzer target: the tool-bar resource reader on arbitrary bytes, with the properties every
// input must keep. A broken property aborts, which libFuzzer reports as a finding.
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "FuzzRequire.h"
#include "GwToolBarResource.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // An exact-size heap copy, so that the address sanitizer reports any read past it.
    std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[size == 0 ? 1 : size]);
    if (size != 0)
        std::memcpy(copy.get(), data, size);
    GwToolBarResource result;
    if (!gwParseToolBarResource(copy.get(), size, result)) {
        // Nothing is taken from a refused resource.
        REQUIRE(result.version == 0 && result.width == 0 && result.height == 0);
        REQUIRE(result.ids.empty());
        return 0;
    }
    REQUIRE(!result.ids.empty());
    REQUIRE(size >= kGwToolBarResourceHeaderSize + 2 * result.ids.size());
    // Written again, the resource gives the same leading bytes; what follows them is ignored.
    std::vector<unsigned char> const written =
        gwWriteToolBarResource(result.version, result.width, result.height, result.ids);
    REQUIRE(written.size() == kGwToolBarResourceHeaderSize + 2 * result.ids.size());
    REQUIRE(std::memcmp(written.data(), copy.get(), written.size()) == 0);
    // Cut inside its identifiers, the resource is refused.
    GwToolBarResource cut;
    REQUIRE(!gwParseToolBarResource(copy.get(), written.size() - 1, cut));
    return 0;
}
