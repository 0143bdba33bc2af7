// rctoolbar: turns the readable text form of tool-bar resources (see RcToolBarWriter.h) into
// a resource script of type-241 resources that a program's script can #include beside the
// bitmaps of the same identifiers.
//
//     rctoolbar input.txt output.rc
//
// Mistakes are reported as "input.txt:line: message" on the standard error and end the
// program with 1; the output is then not left behind. Wrong usage ends with 2.
#include <string>
#include <vector>

#include "RcToolBarWriter.h"
#include "RcToolMain.h"

namespace {

bool convert(std::string const& text, std::string const& source, std::string& script,
             std::vector<RcMessage>& messages, std::string&) {
    std::vector<RcToolBar> toolBars;
    if (!rcToolBarRead(text, toolBars, messages))
        return false;
    script = rcToolBarScript(toolBars, source);
    return true;
}

} // namespace

int main(int argc, char** argv) {
    return rcToolMain(argc, argv, "rctoolbar", convert);
}
