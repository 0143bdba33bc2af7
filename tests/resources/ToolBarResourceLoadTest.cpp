// Tool-bar resources (type 241) written by rctoolbar from data/toolbars.txt into this
// program's resources: found by their type, bounded by their size and read back.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "GwToolBarResource.h"

namespace {

// The bytes of a tool-bar resource of this program, copied into a block of exactly the
// resource's size; empty when there is no such resource.
std::vector<unsigned char> toolBarBytes(unsigned id) {
    HMODULE module = GetModuleHandleA(nullptr);
    HRSRC found =
        FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(kGwToolBarResourceType));
    if (found == nullptr)
        return {};
    HGLOBAL loaded = LoadResource(module, found);
    auto const* data = static_cast<unsigned char const*>(LockResource(loaded));
    DWORD const size = SizeofResource(module, found);
    if (data == nullptr)
        return {};
    return std::vector<unsigned char>(data, data + size);
}

GwToolBarResource parsed(std::vector<unsigned char> const& bytes, bool& ok) {
    // A heap block of exactly the resource's size.
    std::unique_ptr<unsigned char[]> copy(
        new unsigned char[bytes.size() + (bytes.empty() ? 1 : 0)]);
    std::memcpy(copy.get(), bytes.data(), bytes.size());
    GwToolBarResource result;
    ok = gwParseToolBarResource(copy.get(), bytes.size(), result);
    return result;
}

} // namespace

TEST(ToolBarResourceLoad, WrittenResourceHasExactlyItsWords) {
    std::vector<unsigned char> const bytes = toolBarBytes(6900);
    ASSERT_FALSE(bytes.empty()) << "tool-bar resource 6900 not found";
    EXPECT_EQ(bytes, gwWriteToolBarResource(1, 16, 15, {10, 0, 11}));
    EXPECT_EQ(bytes.size(), kGwToolBarResourceHeaderSize + 3 * 2);
}

TEST(ToolBarResourceLoad, ButtonSeparatorButtonReadsBack) {
    bool ok = false;
    GwToolBarResource const result = parsed(toolBarBytes(6900), ok);
    ASSERT_TRUE(ok);
    EXPECT_EQ(result, (GwToolBarResource{1, 16, 15, {10, 0, 11}}));
}

TEST(ToolBarResourceLoad, VersionAndHighestIdentifierReadBack) {
    bool ok = false;
    GwToolBarResource const result = parsed(toolBarBytes(6901), ok);
    ASSERT_TRUE(ok);
    EXPECT_EQ(result, (GwToolBarResource{2, 24, 24, {0xFFFF, 0, 0, 1}}));
}

TEST(ToolBarResourceLoad, OnlyTheToolBarTypeHoldsThem) {
    HMODULE module = GetModuleHandleA(nullptr);
    EXPECT_EQ(FindResourceA(module, MAKEINTRESOURCEA(6900), MAKEINTRESOURCEA(10)), nullptr);
    EXPECT_EQ(
        FindResourceA(module, MAKEINTRESOURCEA(6999), MAKEINTRESOURCEA(kGwToolBarResourceType)),
        nullptr);
    EXPECT_TRUE(toolBarBytes(6999).empty());
}
