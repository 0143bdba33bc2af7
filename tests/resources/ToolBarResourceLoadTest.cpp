// Tool-bar resources (type 241) written by rctoolbar from data/toolbars.txt into this
// program's resources: found by their type, bounded by their size and read back.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "GwToolBarResource.h"

namespace {

// The locked bytes of a tool-bar resource of this program and their size; null when there is
// no such resource.
struct Found {
    unsigned char const* data = nullptr;
    std::size_t size = 0;
};

Found toolBarResource(unsigned id) {
    Found found;
    HMODULE module = GetModuleHandleA(nullptr);
    HRSRC resource =
        FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(kGwToolBarResourceType));
    if (resource == nullptr)
        return found;
    found.data = static_cast<unsigned char const*>(LockResource(LoadResource(module, resource)));
    found.size = SizeofResource(module, resource);
    return found;
}

std::vector<unsigned char> toolBarBytes(unsigned id) {
    Found const found = toolBarResource(id);
    if (found.data == nullptr)
        return {};
    return std::vector<unsigned char>(found.data, found.data + found.size);
}

// The resource parsed within the size the module gives it.
bool parsed(unsigned id, GwToolBarResource& result) {
    Found const found = toolBarResource(id);
    return found.data != nullptr && gwParseToolBarResource(found.data, found.size, result);
}

} // namespace

TEST(ToolBarResourceLoad, WrittenResourceHasExactlyItsWords) {
    std::vector<unsigned char> const bytes = toolBarBytes(6900);
    ASSERT_FALSE(bytes.empty()) << "tool-bar resource 6900 not found";
    EXPECT_EQ(bytes, gwWriteToolBarResource(1, 16, 15, {10, 0, 11}));
    EXPECT_EQ(bytes.size(), kGwToolBarResourceHeaderSize + 3 * 2);
}

TEST(ToolBarResourceLoad, ButtonSeparatorButtonReadsBack) {
    GwToolBarResource result;
    ASSERT_TRUE(parsed(6900, result));
    EXPECT_EQ(result, (GwToolBarResource{1, 16, 15, {10, 0, 11}}));
}

TEST(ToolBarResourceLoad, VersionAndHighestIdentifierReadBack) {
    GwToolBarResource result;
    ASSERT_TRUE(parsed(6901, result));
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
