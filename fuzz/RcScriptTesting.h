// Helpers of the host tests of the script writers (rcattr, rctoolbar): the bytes that a
// resource compiler takes from a written script, and the check of reported mistakes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RcScript.h"

// The bytes of the quoted strings of a resource script between BEGIN and END, decoded as
// the resource compiler does (octal escapes; no terminator is added).
inline std::vector<std::string> rcScriptData(std::string const& script) {
    std::vector<std::string> blocks;
    std::size_t pos = 0;
    while ((pos = script.find("\nBEGIN\n", pos)) != std::string::npos) {
        std::size_t end = script.find("\nEND\n", pos);
        std::string bytes;
        bool inString = false;
        bool inComment = false;
        for (std::size_t i = pos + 7; i < end; ++i) {
            char c = script[i];
            if (inComment) {
                if (c == '*' && script[i + 1] == '/') {
                    inComment = false;
                    ++i;
                }
            } else if (!inString) {
                if (c == '"')
                    inString = true;
                else if (c == '/' && script[i + 1] == '*')
                    inComment = true;
            } else if (c == '"') {
                inString = false;
            } else if (c == '\\') {
                int value =
                    (script[i + 1] - '0') * 64 + (script[i + 2] - '0') * 8 + (script[i + 3] - '0');
                bytes += static_cast<char>(value);
                i += 3;
            } else {
                bytes += c;
            }
        }
        blocks.push_back(bytes);
        pos = end;
    }
    return blocks;
}

// A text with one mistake: the line and a part of the message it must draw.
struct RcMistake {
    char const* text;
    int line;
    char const* message;
};

// Reads each text with read (whose result has ok and messages) and expects it to fail with
// exactly one error, on the given line, holding the given message.
template <typename Read, std::size_t N>
void rcExpectMistakes(RcMistake const (&mistakes)[N], Read (*read)(std::string const&)) {
    for (RcMistake const& c : mistakes) {
        auto const result = read(c.text);
        EXPECT_FALSE(result.ok) << c.text;
        ASSERT_EQ(result.messages.size(), 1u) << c.text;
        RcMessage const& message = result.messages[0];
        EXPECT_FALSE(message.warning) << c.text;
        EXPECT_EQ(message.line, c.line) << c.text;
        EXPECT_NE(message.text.find(c.message), std::string::npos)
            << c.text << " -> " << message.text;
    }
}
