// rcattr: turns the readable text form of attribute data (see RcAttrWriter.h) into a
// resource script of RCDATA resources that a dialog's or menu's script can #include.
//
//     rcattr input.txt output.rc
//
// Mistakes are reported as "input.txt:line: message" on the standard error and end the
// program with 1; the output is then not left behind. Wrong usage ends with 2.
#include <string>
#include <vector>

#include "RcAttrWriter.h"
#include "RcToolMain.h"

namespace {

bool convert(std::string const& text, std::string const& source, std::string& script,
             std::vector<RcMessage>& messages, std::string& error) {
    std::vector<RcAttrResource> resources;
    if (!rcAttrRead(text, resources, messages))
        return false;
    return rcAttrScript(resources, source, script, error);
}

} // namespace

int main(int argc, char** argv) {
    return rcToolMain(argc, argv, "rcattr", convert);
}
