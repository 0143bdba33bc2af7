// libFuzzer target for the file dialog's result buffer and filter. The first two bytes are
// the name offset, the third the filter entry, the rest the buffer, read also as a filter.
// Properties: only the given bytes are read (ASan); every path starts with the directory
// and "\", holds no NUL and is no longer than the buffer and the extension together; the
// extension is empty or a "." and text without wildcards.
#include <GwFileSelectPaths.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "FuzzRequire.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 3)
        return 0;
    std::size_t const offset = static_cast<std::size_t>(data[0]) | (std::size_t(data[1]) << 8);
    unsigned long const index = data[2];
    std::size_t const length = size - 3;
    // An exact-size copy, so that a read past the end is a finding.
    std::unique_ptr<char[]> const buffer(new char[length > 0 ? length : 1]);
    if (length > 0)
        std::memcpy(buffer.get(), data + 3, length);

    std::string const filter(buffer.get(), length);
    std::string const extension = gw_file_select::defaultExtension(filter, index);
    if (!extension.empty()) {
        REQUIRE(extension[0] == '.');
        REQUIRE(extension.size() > 1);
        REQUIRE(extension.find_first_of("*?|;", 1) == std::string::npos);
    }

    for (std::size_t const anyOffset : {offset, std::size_t(0), length}) {
        auto const paths = gw_file_select::resultPaths(buffer.get(), length, anyOffset, extension);
        for (std::string const& path : paths) {
            REQUIRE(path.find('\0') == std::string::npos);
            REQUIRE(path.size() <= length + 1 + extension.size());
            REQUIRE(path.find('\\') != std::string::npos);
        }
        if (length == 0)
            REQUIRE(paths.empty());
    }
    return 0;
}
