// libFuzzer target: metafile format detection on arbitrary bytes, with the properties every
// input must keep. A broken property aborts, which libFuzzer reports as a finding.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "FuzzRequire.h"
#include "GwMetafileFormat.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // An exact-size heap copy, so that the address sanitizer reports any read past it.
    std::unique_ptr<std::uint8_t[]> copy(new std::uint8_t[size == 0 ? 1 : size]);
    if (size != 0)
        std::memcpy(copy.get(), data, size);
    GwMetafileFormat const format = gwMetafileFormat(copy.get(), size);
    if (format.kind == GwMetafileKind::eInvalid)
        return 0;
    // The metafile bits always lie inside the input.
    REQUIRE(format.offset <= size);
    REQUIRE(format.length <= size - format.offset);
    REQUIRE(format.length > 0);
    // The same bytes followed by more give the same answer.
    std::unique_ptr<std::uint8_t[]> longer(new std::uint8_t[size + 16]);
    std::memcpy(longer.get(), copy.get(), size);
    std::memset(longer.get() + size, 0xA5, 16);
    GwMetafileFormat const again = gwMetafileFormat(longer.get(), size + 16);
    REQUIRE(again.kind == format.kind);
    REQUIRE(again.length == format.length);
    // Cut inside its bits, a metafile is no longer valid.
    if (format.length > 0) {
        GwMetafileFormat const cut =
            gwMetafileFormat(copy.get(), format.offset + format.length - 1);
        REQUIRE(cut.kind != format.kind || cut.length != format.length);
    }
    return 0;
}
