// rctoolbar's text form and its resource script, on the host.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "GwToolBarResource.h"
#include "RcScriptTesting.h"
#include "RcToolBarWriter.h"

namespace {

struct Read {
    bool ok = false;
    std::vector<RcToolBar> toolBars;
    std::vector<RcMessage> messages;
};

Read read(std::string const& text) {
    Read result;
    result.ok = rcToolBarRead(text, result.toolBars, result.messages);
    return result;
}

std::string const kSample = R"(# The tool bars of a program.
toolbar 300 width 16 height 15     # file commands
    button 10
    separator
    button 11
end

toolbar 301 height 24 width 32 version 2
    separator
    button 0xFFFF
    button 1
end
)";

std::string bytesOf(RcToolBar const& toolBar) {
    std::vector<unsigned char> const words =
        gwWriteToolBarResource(toolBar.version, toolBar.width, toolBar.height, toolBar.ids);
    return std::string(words.begin(), words.end());
}

} // namespace

TEST(RcToolBarText, ReadsBlocksButtonsAndSeparators) {
    Read result = read(kSample);
    ASSERT_TRUE(result.ok) << (result.messages.empty() ? "" : result.messages[0].text);
    EXPECT_TRUE(result.messages.empty());
    ASSERT_EQ(result.toolBars.size(), 2u);

    EXPECT_EQ(result.toolBars[0], (RcToolBar{300, 2, 1, 16, 15, {10, 0, 11}}));
    EXPECT_EQ(result.toolBars[1], (RcToolBar{301, 8, 2, 32, 24, {0, 0xFFFF, 1}}));
}

TEST(RcToolBarText, WindowsLineEndsNoFinalLineEndAndLimits) {
    Read result = read("toolbar 65535 width 65535 height 1 version 0\r\n  button 65535\r\nend");
    ASSERT_TRUE(result.ok) << (result.messages.empty() ? "" : result.messages[0].text);
    ASSERT_EQ(result.toolBars.size(), 1u);
    EXPECT_EQ(result.toolBars[0], (RcToolBar{65535, 1, 0, 65535, 1, {65535}}));
}

TEST(RcToolBarText, EmptyTextHasNoToolBars) {
    Read result = read("# nothing here\n\n");
    EXPECT_TRUE(result.ok);
    EXPECT_TRUE(result.toolBars.empty());
    EXPECT_TRUE(read("").ok);
}

TEST(RcToolBarText, ReportsMistakesWithTheirLine) {
    RcMistake const mistakes[] = {
        {"toolbar 1 width 16 height 15\n  buton 10\nend\n", 2, "unknown statement 'buton'"},
        {"tolbar 1 width 16 height 15\n", 1, "unknown statement 'tolbar'"},
        {"button 10\n", 1, "'button' outside a toolbar block"},
        {"separator\n", 1, "'separator' outside a toolbar block"},
        {"toolbar 1 width 16 height 15\n  button 10\nend\nbutton 11\n", 4, "outside a toolbar"},
        {"end\n", 1, "'end' outside a toolbar block"},
        {"toolbar 1 width 16 height 15\n  button 10\n", 1, "toolbar 1 has no 'end'"},
        {"toolbar 1 width 16 height 15\n  button 10\ntoolbar 2 width 16 height 15\n", 3,
         "inside toolbar 1 of line 1, which has no 'end'"},
        {"toolbar 1 width 16 height 15\nend\n", 2, "toolbar 1 has neither buttons nor separators"},
        {"toolbar 1 width 16 height 15\n  button 1\nend\ntoolbar 2 width 8 height 8\n"
         "  button 1\nend\ntoolbar 1 width 16 height 15\n",
         7, "toolbar 1 repeats line 1"},
        {"toolbar 0 width 16 height 15\n", 1, "out of range (1 to 65535)"},
        {"toolbar 65536 width 16 height 15\n", 1, "out of range (1 to 65535)"},
        {"toolbar 1 width 0 height 15\n", 1, "number 0 is out of range (1 to 65535)"},
        {"toolbar 1 width 16 height 65536\n", 1, "number 65536 is out of range (1 to 65535)"},
        {"toolbar 1 width 16 height 15 version 65536\n", 1, "out of range (0 to 65535)"},
        {"toolbar 1 width 16 height 15\n  button 0\n", 2, "number 0 is out of range (1 to 65535)"},
        {"toolbar 1 width 16 height 15\n  button 65536\n", 2, "out of range (1 to 65535)"},
        {"toolbar 1 width 16 height 15\n  button -3\n", 2, "number -3 is out of range"},
        {"toolbar 1 width 16 height 15\n  button 99999999999999999999\n", 2, "out of range"},
        {"toolbar 1 width 16 height 15\n  button 1x\n", 2, "'1x' is not a number"},
        {"toolbar 1 width 16 height 15\n  button\n", 2, "expected a number after 'button'"},
        {"toolbar 1 width 16 height 15\n  button ten\n", 2, "expected a number after 'button'"},
        {"toolbar 1 width 16 height 15\n  button 10 11\n", 2, "unexpected text after"},
        {"toolbar 1 width 16 height 15\n  separator 8\n", 2, "unexpected text after"},
        {"toolbar 1 width 16 height 15\n  button 1\nend 1\n", 3, "unexpected text after"},
        {"toolbar 1 width 16 height 15\n  button 1 ; x\n", 2, "unexpected character ';'"},
        {"toolbar\n", 1, "expected a number after 'toolbar'"},
        {"toolbar 1 height 15\n", 1, "toolbar needs 'width'"},
        {"toolbar 1 width 16\n", 1, "toolbar needs 'height'"},
        {"toolbar 1 width 16 height 15 width 8\n", 1, "'width' given twice"},
        {"toolbar 1 width 16 height 15 depth 8\n", 1, "expected 'width', 'height' or 'version'"},
        {"toolbar 1 width 16 15\n", 1, "expected 'width', 'height' or 'version'"},
        {"toolbar 1 width height 15\n", 1, "expected a number after 'width'"},
        {"300\n", 1, "a line begins with 'toolbar', 'button', 'separator' or 'end'"},
    };
    rcExpectMistakes(mistakes, read);
}

TEST(RcToolBarText, WarnsAboutARepeatedButton) {
    Read result = read("toolbar 1 width 16 height 15\n  button 10\n  separator\n  button 10\nend\n"
                       "toolbar 2 width 16 height 15\n  button 10\nend\n");
    ASSERT_TRUE(result.ok);
    ASSERT_EQ(result.messages.size(), 1u);
    EXPECT_TRUE(result.messages[0].warning);
    EXPECT_EQ(result.messages[0].line, 4);
    EXPECT_NE(result.messages[0].text.find("button 10 repeats line 2"), std::string::npos)
        << result.messages[0].text;
    ASSERT_EQ(result.toolBars.size(), 2u);
    EXPECT_EQ(result.toolBars[0].ids, (std::vector<std::uint16_t>{10, 0, 10}));
}

TEST(RcToolBarText, AtMostSixtyFiveThousandFiveHundredThirtyFiveEntries) {
    std::string text = "toolbar 1 width 16 height 15\n";
    for (int i = 0; i < 0xFFFF; ++i)
        text += "separator\n";
    Read most = read(text + "end\n");
    ASSERT_TRUE(most.ok);
    EXPECT_EQ(most.toolBars[0].ids.size(), 0xFFFFu);
    Read tooMany = read(text + "button 1\nend\n");
    EXPECT_FALSE(tooMany.ok);
    ASSERT_EQ(tooMany.messages.size(), 1u);
    EXPECT_EQ(tooMany.messages[0].line, 0xFFFF + 2);
    EXPECT_NE(tooMany.messages[0].text.find("more than 65535 entries"), std::string::npos);
}

TEST(RcToolBarScript, StringsCarryExactlyTheBytes) {
    Read result = read(kSample);
    ASSERT_TRUE(result.ok);
    std::string const script = rcToolBarScript(result.toolBars, "sample.txt");
    EXPECT_NE(script.find("rctoolbar from sample.txt"), std::string::npos);
    EXPECT_NE(script.find("\n300 241\nBEGIN\n"), std::string::npos);
    EXPECT_NE(script.find("\n301 241\nBEGIN\n"), std::string::npos);
    EXPECT_EQ(script.find("??"), std::string::npos);

    std::vector<std::string> const blocks = rcScriptData(script);
    ASSERT_EQ(blocks.size(), 2u);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(blocks[i], bytesOf(result.toolBars[i])) << i;
        GwToolBarResource back;
        ASSERT_TRUE(gwParseToolBarResource(blocks[i].data(), blocks[i].size(), back));
        RcToolBar const& toolBar = result.toolBars[i];
        EXPECT_EQ(back,
                  (GwToolBarResource{toolBar.version, toolBar.width, toolBar.height, toolBar.ids}));
    }
}

TEST(RcToolBarScript, ButtonSeparatorButtonBytes) {
    RcToolBar toolBar;
    toolBar.id = 300;
    toolBar.width = 16;
    toolBar.height = 15;
    toolBar.ids = {10, 0, 11};
    std::vector<std::string> const blocks = rcScriptData(rcToolBarScript({toolBar}, "x.txt"));
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0], std::string("\1\0\20\0\17\0\3\0\12\0\0\0\13\0", 14));
}

TEST(RcToolBarScript, NoToolBarsIsOnlyTheComment) {
    std::string const script = rcToolBarScript({}, "a*/b.txt");
    EXPECT_TRUE(rcScriptData(script).empty());
    // The name cannot end the comment early.
    EXPECT_EQ(script.find("*/"), script.rfind("*/"));
}
