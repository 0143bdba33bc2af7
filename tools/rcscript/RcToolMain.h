// The command line that rcattr and rctoolbar share:
//
//     tool input.txt output.rc
//
// The input's text is handed to convert, which returns the script or the reasons it cannot.
// Messages are reported as "input.txt:line: message" (warnings with "warning: ") on the
// standard error; an error of convert without a line as "input.txt: error". A failure ends
// the program with 1 and leaves no output behind; wrong usage ends it with 2.
#pragma once

#include <string>
#include <vector>

#include "RcScript.h"

// source is the input's file name without its folders, for the script's opening comment.
// False after an error (in messages or in error).
using RcConvert = bool (*)(std::string const& text, std::string const& source, std::string& script,
                           std::vector<RcMessage>& messages, std::string& error);

int rcToolMain(int argc, char** argv, char const* tool, RcConvert convert);
