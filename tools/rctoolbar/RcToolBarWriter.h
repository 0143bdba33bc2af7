// rctoolbar's work without any file or platform: the readable text form of tool-bar
// resources (resource type 241) and the resource script that carries their bytes.
//
// Text form, one statement a line; '#' starts a comment:
//     toolbar 300 width 16 height 15   a resource: its identifier (1 to 65535) and the size
//                                      of a button image (1 to 65535 each); "version N"
//                                      (0 to 65535, default 1) may follow, the three pairs
//                                      in any order
//         button 10                    a button with its command identifier (1 to 65535)
//         separator                    a separator (identifier 0)
//     end                              closes the resource, which needs at least one entry
// A file holds any number of resources, each identifier once. Numbers are decimal or 0x...
// A command identifier that repeats within a resource draws a warning.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "RcScript.h"

struct RcToolBar {
    unsigned id = 0;
    int line = 0;
    std::uint16_t version = 1;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::vector<std::uint16_t> ids; // command identifiers, 0 for a separator

    friend bool operator==(RcToolBar const&, RcToolBar const&) = default;
};

// Reads the text form. Warnings and at most one error go to messages; false after an error.
bool rcToolBarRead(std::string const& text, std::vector<RcToolBar>& toolBars,
                   std::vector<RcMessage>& messages);

// A resource script with one resource of type 241 per tool bar, its bytes written as quoted
// strings with octal escapes (byte-exact for windres and rc). source names the input in a
// comment.
std::string rcToolBarScript(std::vector<RcToolBar> const& toolBars, std::string const& source);
