// The bytes that a resource compiler takes from the data blocks of a written resource script,
// for the host tests of the script writers.
#pragma once

#include <string>
#include <vector>

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
