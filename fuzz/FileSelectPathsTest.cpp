// The file dialog's result buffer and filter read without the platform: single and
// multiple selections, default extensions, and buffers and filters that end too early.
#include <GwFileSelectPaths.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace gw_file_select;

namespace {

using Paths = std::vector<std::string>;

Paths paths(std::string const& buffer, std::size_t offset, std::string const& extension = "") {
    return resultPaths(buffer.data(), buffer.size(), offset, extension);
}

} // namespace

TEST(FileSelectPaths, SingleSelectionReadsLikeMultiple) {
    std::string const buffer("C:\\data\\report\0\0", 16);
    EXPECT_EQ(paths(buffer, 8, ".txt"), Paths{"C:\\data\\report.txt"});
}

TEST(FileSelectPaths, NameWithDotKeepsItsExtension) {
    std::string const buffer("C:\\data\\report.doc\0\0", 20);
    EXPECT_EQ(paths(buffer, 8, ".txt"), Paths{"C:\\data\\report.doc"});
}

TEST(FileSelectPaths, NoExtensionLeavesTheName) {
    std::string const buffer("C:\\data\\report\0\0", 16);
    EXPECT_EQ(paths(buffer, 8), Paths{"C:\\data\\report"});
}

TEST(FileSelectPaths, MultipleSelectionInBufferOrder) {
    std::string const buffer("C:\\data\0b.txt\0a\0\0", 17);
    EXPECT_EQ(paths(buffer, 8, ".txt"), (Paths{"C:\\data\\b.txt", "C:\\data\\a.txt"}));
}

TEST(FileSelectPaths, NoOffsetTakesTheWholeFirstStringAsDirectory) {
    std::string const buffer("C:\\data\\report\0\0", 16);
    EXPECT_TRUE(paths(buffer, 0).empty());
}

TEST(FileSelectPaths, EmptyBufferGivesNothing) {
    EXPECT_TRUE(paths(std::string(), 0).empty());
    EXPECT_TRUE(resultPaths(nullptr, 10, 3, ".txt").empty());
    EXPECT_TRUE(paths(std::string(10, '\0'), 0).empty());
}

TEST(FileSelectPaths, BufferFullToTheLastByteEndsTheListThere) {
    // No NUL at all: directory up to the split, the name up to the buffer's end.
    std::string const buffer = "C:\\d\\" + std::string(20, 'x');
    EXPECT_EQ(paths(buffer, 5), Paths{"C:\\d\\" + std::string(20, 'x')});
    // A list whose last name touches the end without its NUL and without the empty string.
    std::string const list("C:\\d\0a\0bc", 9);
    EXPECT_EQ(paths(list, 5), (Paths{"C:\\d\\a", "C:\\d\\bc"}));
    // Nothing but a directory without NUL.
    EXPECT_TRUE(paths(std::string(30, 'y'), 0).empty());
}

TEST(FileSelectPaths, OffsetBeyondTheBufferIsIgnored) {
    std::string const buffer("C:\\d\0a\0\0", 8);
    EXPECT_EQ(paths(buffer, 400), Paths{"C:\\d\\a"});
}

TEST(FileSelectExtension, FirstPatternWithoutWildcard) {
    EXPECT_EQ(defaultExtension("Text|*.txt|All|*.*|", 1), ".txt");
    EXPECT_EQ(defaultExtension("Text|*.txt|All|*.*|", 2), "");
    EXPECT_EQ(defaultExtension("Pictures|*.b?p;*.gif;*.png|", 1), ".gif");
    EXPECT_EQ(defaultExtension("Backups|back.*;*.bak", 1), ".bak");
}

TEST(FileSelectExtension, WildcardsOnlyGiveNone) {
    EXPECT_EQ(defaultExtension("All|*.*", 1), "");
    EXPECT_EQ(defaultExtension("All|*.t?t;*.*", 1), "");
    EXPECT_EQ(defaultExtension("Any|*", 1), "");
    EXPECT_EQ(defaultExtension("Dot|name.", 1), "");
}

TEST(FileSelectExtension, BadFiltersGiveNone) {
    EXPECT_EQ(defaultExtension("", 1), "");
    EXPECT_EQ(defaultExtension("no bars at all", 1), "");
    EXPECT_EQ(defaultExtension("Empty||Text|*.txt", 1), "");
    EXPECT_EQ(defaultExtension("Empty||Text|*.txt", 2), ".txt");
    EXPECT_EQ(defaultExtension("Text|*.txt", 0), "");
    EXPECT_EQ(defaultExtension("Text|*.txt", 3), "");
    EXPECT_EQ(defaultExtension("Text|*.txt", 0xFFFFFFFFul), "");
    EXPECT_EQ(defaultExtension(std::string("Text|*.t\0xt|", 12), 1), ".t");
}
