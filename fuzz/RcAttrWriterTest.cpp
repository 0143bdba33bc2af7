// rcattr's text form, its bytes and its resource script, on the host.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "GwRcDataParser.h"
#include "RcAttrWriter.h"
#include "RcScriptTesting.h"

namespace {

std::string const kExampleBytes("\xE9\x03"
                                "Class\0GwPushButton\0HelpId\0\0\0\x2C\x01\0\0\0\0\0\0",
                                2 + 6 + 13 + 7 + 4 + 2 + 4);

std::vector<GwRcDataRecord> exampleEntries() {
    return {{1001, {{"Class", "GwPushButton", false}, {"HelpId", "300", true}}}};
}

struct Read {
    bool ok = false;
    std::vector<RcAttrResource> resources;
    std::vector<RcAttrMessage> messages;
};

Read read(std::string const& text) {
    Read result;
    result.ok = rcAttrRead(text, result.resources, result.messages);
    return result;
}

std::string const kSample = R"(# Attributes of dialog 1000 and menu 2000.
attributes 1000            # resource id (dialog or menu id)
dialog                     # entry 0xFFFF (the template itself)
    Class = "MyDialog"
    HelpId = 300           # 16-bit number item
control 1001               # entry by control id
    Class = "GwPushButton"

attributes 2000
menu
    HelpId = 0x10
menu 2                     # entry 0x8000 + position 2
    GwLinkId = 5
    "Odd key" = "tab\there \"quoted\" \\ \x7F # not a comment"
entry 0
    GwId = 0
)";

} // namespace

TEST(RcAttrEncode, WritesTheExampleLayout) {
    std::string bytes, error;
    ASSERT_TRUE(rcAttrEncode(exampleEntries(), bytes, error)) << error;
    EXPECT_EQ(bytes, kExampleBytes);
}

TEST(RcAttrEncode, NoEntriesIsTheEndMark) {
    std::string bytes, error;
    ASSERT_TRUE(rcAttrEncode({}, bytes, error));
    EXPECT_EQ(bytes, std::string(4, '\0'));
}

TEST(RcAttrEncode, EntryWithoutItems) {
    std::string bytes, error;
    ASSERT_TRUE(rcAttrEncode({{0xFFFF, {}}}, bytes, error));
    EXPECT_EQ(bytes, std::string("\xFF\xFF\0\0\0\0\0\0", 8));
    EXPECT_FALSE(rcAttrEncode({{0, {}}}, bytes, error));
    EXPECT_NE(error.find("end mark"), std::string::npos) << error;
}

TEST(RcAttrEncode, RefusesWhatWouldReadBackOtherwise) {
    std::string bytes, error;
    EXPECT_FALSE(rcAttrEncode({{1, {{std::string("a\0b", 3), "x", false}}}}, bytes, error));
    EXPECT_FALSE(rcAttrEncode({{1, {{"a", std::string("x\0", 2), false}}}}, bytes, error));
    EXPECT_FALSE(rcAttrEncode({{1, {{"", "1", true}}}}, bytes, error));
    EXPECT_FALSE(rcAttrEncode({{1, {{"", "", false}, {"b", "x", false}}}}, bytes, error));
    EXPECT_FALSE(rcAttrEncode({{1, {{"a", "", false}}}}, bytes, error));
    EXPECT_FALSE(rcAttrEncode({{1, {{"a", "", false}, {"", "x", false}}}}, bytes, error));
    for (char const* notNumber : {"", "x", "65536", "007", "-1", "1 "})
        EXPECT_FALSE(rcAttrEncode({{1, {{"a", notNumber, true}}}}, bytes, error)) << notNumber;
}

TEST(RcAttrEncode, UnusualButStorableEntriesReadBack) {
    std::vector<GwRcDataRecord> entries = {
        {0, {{"", "value", false}, {"Empty", "", false}, {"Next", "x", false}}},
        {0x8000, {{"Zero", "0", true}, {"Max", "65535", true}}},
        {0xFFFF, {}},
        {5, {{"\x01\xFF", "\x7F\x80\"\\", false}}},
    };
    std::string bytes, error;
    ASSERT_TRUE(rcAttrEncode(entries, bytes, error)) << error;
    GwRcDataParsed back = gwParseRcData(bytes.data(), bytes.size());
    EXPECT_TRUE(back.complete);
    EXPECT_EQ(back.consumed, bytes.size());
    EXPECT_EQ(back.entries, entries);
}

TEST(RcAttrText, ReadsBlocksEntriesAndItems) {
    Read result = read(kSample);
    ASSERT_TRUE(result.ok) << (result.messages.empty() ? "" : result.messages[0].text);
    EXPECT_TRUE(result.messages.empty());
    ASSERT_EQ(result.resources.size(), 2u);

    RcAttrResource const& dialog = result.resources[0];
    EXPECT_EQ(dialog.id, 1000u);
    EXPECT_EQ(dialog.line, 2);
    ASSERT_EQ(dialog.entries.size(), 2u);
    EXPECT_EQ(dialog.entries[0].record,
              (GwRcDataRecord{0xFFFF, {{"Class", "MyDialog", false}, {"HelpId", "300", true}}}));
    EXPECT_EQ(dialog.entries[0].label, "dialog");
    EXPECT_EQ(dialog.entries[0].line, 3);
    EXPECT_EQ(dialog.entries[1].record, (GwRcDataRecord{1001, {{"Class", "GwPushButton", false}}}));
    EXPECT_EQ(dialog.entries[1].label, "control 1001");

    RcAttrResource const& menu = result.resources[1];
    EXPECT_EQ(menu.id, 2000u);
    ASSERT_EQ(menu.entries.size(), 3u);
    EXPECT_EQ(menu.entries[0].record, (GwRcDataRecord{0xFFFF, {{"HelpId", "16", true}}}));
    EXPECT_EQ(menu.entries[0].label, "menu");
    EXPECT_EQ(menu.entries[1].record.id, 0x8002);
    EXPECT_EQ(menu.entries[1].label, "menu 2");
    ASSERT_EQ(menu.entries[1].record.items.size(), 2u);
    EXPECT_EQ(menu.entries[1].record.items[0], (GwRcDataRecordItem{"GwLinkId", "5", true}));
    EXPECT_EQ(
        menu.entries[1].record.items[1],
        (GwRcDataRecordItem{"Odd key", "tab\there \"quoted\" \\ \x7F # not a comment", false}));
    EXPECT_EQ(menu.entries[2].record, (GwRcDataRecord{0, {{"GwId", "0", true}}}));
    EXPECT_EQ(menu.entries[2].label, "entry 0x0000");
}

TEST(RcAttrText, WindowsLineEndsAndNoFinalLineEnd) {
    Read result = read("attributes 7\r\ncontrol 3\r\n  Class = \"GwText\"");
    ASSERT_TRUE(result.ok);
    ASSERT_EQ(result.resources.size(), 1u);
    ASSERT_EQ(result.resources[0].entries.size(), 1u);
    EXPECT_EQ(result.resources[0].entries[0].record,
              (GwRcDataRecord{3, {{"Class", "GwText", false}}}));
}

TEST(RcAttrText, EmptyBlockAndEmptyText) {
    Read result = read("attributes 1\n\n# nothing\n");
    ASSERT_TRUE(result.ok);
    ASSERT_EQ(result.resources.size(), 1u);
    EXPECT_TRUE(result.resources[0].entries.empty());
    EXPECT_TRUE(read("").ok);
}

TEST(RcAttrText, ReportsMistakesWithTheirLine) {
    RcMistake const mistakes[] = {
        {"attributes 1\ncontrl 5\n", 2, "unknown keyword 'contrl'"},
        {"attributes 1\ncontrol 5\n  HelpId = 65536\n", 3, "out of range (0 to 65535)"},
        {"attributes 1\ncontrol 5\n  HelpId = -1\n", 3, "out of range"},
        {"attributes 1\ncontrol 5\n  HelpId = 99999999999999999999999\n", 3, "out of range"},
        {"attributes 1\ncontrol 65535\n", 2, "out of range (0 to 65534)"},
        {"attributes 1\nmenu 32767\n", 2, "out of range (0 to 32766)"},
        {"attributes 1\nentry 65536\n", 2, "out of range (0 to 65535)"},
        {"attributes 0\n", 1, "out of range (1 to 65535)"},
        {"attributes 70000\n", 1, "out of range (1 to 65535)"},
        {"attributes\n", 1, "expected a number after 'attributes'"},
        {"attributes 1\ncontrol 5\n  Class = \"GwText\n", 3, "missing closing quote"},
        {"attributes 1\ncontrol 5\n  Class = \"a\\\"\n", 3, "missing closing quote"},
        {"attributes 1\n  Class = \"GwText\"\n", 2, "item before any entry"},
        {"Class = \"GwText\"\n", 1, "item before any entry"},
        {"control 5\n", 1, "'control' before any 'attributes' line"},
        {"attributes 1\ncontrol 5\n  Class = \"\"\n", 3, "empty text value"},
        {"attributes 1\ncontrol 5\n  Class = \"a\\x00\"\n", 3, "0 byte"},
        {"attributes 1\ncontrol 5\n  Class = \"a\\x4\"\n", 3, "two hexadecimal digits"},
        {"attributes 1\ncontrol 5\n  Class = \"a\\q\"\n", 3, "unknown escape \\q"},
        {"attributes 1\ncontrol 5\n  Class \"GwText\"\n", 3, "expected '=' after the key"},
        {"attributes 1\ncontrol 5\n  Class =\n", 3, "expected a quoted text or a number"},
        {"attributes 1\ncontrol 5\n  Class = GwText\n", 3, "expected a quoted text or a number"},
        {"attributes 1\ncontrol 5\n  HelpId = 3 4\n", 3, "unexpected text after"},
        {"attributes 1\ncontrol 5 6\n", 2, "unexpected text after"},
        {"attributes 1\ndialog 5\n", 2, "unexpected text after 'dialog'"},
        {"attributes 1\ncontrol 5\n  \"\" = \"x\"\n", 3, "empty key"},
        {"attributes 1\ncontrol 0x\n", 2, "is not a number"},
        {"attributes 1\ncontrol 12ab\n", 2, "is not a number"},
        {"attributes 1\ncontrol 5\n  Key = 1 ; x\n", 3, "unexpected character ';'"},
        {"attributes 1\nentry 0\ncontrol 2\n", 2, "entry 0 needs at least one item"},
        {"attributes 1\nentry 0\n", 2, "entry 0 needs at least one item"},
        {"attributes 1\nattributes 2\nattributes 1\n", 3, "repeat line 1"},
        {"1000\n", 1, "begins with a keyword or a key"},
    };
    rcExpectMistakes(mistakes, read);
}

TEST(RcAttrText, WarnsAboutRepeatsThatLookupsSkip) {
    Read result = read("attributes 1\ncontrol 5\n  A = 1\n  A = 2\ncontrol 6\ncontrol 5\n");
    ASSERT_TRUE(result.ok);
    ASSERT_EQ(result.messages.size(), 2u);
    EXPECT_TRUE(result.messages[0].warning);
    EXPECT_EQ(result.messages[0].line, 4);
    EXPECT_NE(result.messages[0].text.find("key 'A' repeats line 3"), std::string::npos);
    EXPECT_TRUE(result.messages[1].warning);
    EXPECT_EQ(result.messages[1].line, 6);
    EXPECT_NE(result.messages[1].text.find("repeats line 2"), std::string::npos);
    // Both are kept, in their order.
    ASSERT_EQ(result.resources[0].entries.size(), 3u);
    EXPECT_EQ(result.resources[0].entries[0].record.items.size(), 2u);
}

TEST(RcAttrScript, StringsCarryExactlyTheBytes) {
    Read result = read(kSample);
    ASSERT_TRUE(result.ok);
    std::string script, error;
    ASSERT_TRUE(rcAttrScript(result.resources, "sample.txt", script, error)) << error;
    EXPECT_NE(script.find("sample.txt"), std::string::npos);
    EXPECT_NE(script.find("\n1000 RCDATA\nBEGIN\n"), std::string::npos);
    EXPECT_NE(script.find("\n2000 RCDATA\nBEGIN\n"), std::string::npos);
    // Nothing that a preprocessor or resource compiler could take for something else.
    EXPECT_EQ(script.find("??"), std::string::npos);

    std::vector<std::string> blocks = rcScriptData(script);
    ASSERT_EQ(blocks.size(), 2u);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::vector<GwRcDataRecord> records;
        for (RcAttrEntry const& entry : result.resources[i].entries)
            records.push_back(entry.record);
        std::string bytes;
        ASSERT_TRUE(rcAttrEncode(records, bytes, error));
        EXPECT_EQ(blocks[i], bytes) << i;
        GwRcDataParsed back = gwParseRcData(blocks[i].data(), blocks[i].size());
        EXPECT_TRUE(back.complete);
        EXPECT_EQ(back.entries, records);
    }
}

TEST(RcAttrScript, ExampleBytes) {
    std::vector<RcAttrResource> resources(1);
    resources[0].id = 1;
    resources[0].entries.push_back({exampleEntries()[0], "control 1001", 1});
    std::string script, error;
    ASSERT_TRUE(rcAttrScript(resources, "x.txt", script, error));
    std::vector<std::string> blocks = rcScriptData(script);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0], kExampleBytes);
}
