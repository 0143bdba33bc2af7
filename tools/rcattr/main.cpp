// rcattr: turns the readable text form of attribute data (see RcAttrWriter.h) into a
// resource script of RCDATA resources that a dialog's or menu's script can #include.
//
//     rcattr input.txt output.rc
//
// Mistakes are reported as "input.txt:line: message" on the standard error and end the
// program with 1; the output is then not left behind. Wrong usage ends with 2.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "RcAttrWriter.h"

namespace {

bool readFile(char const* path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    text = buffer.str();
    return !in.bad();
}

bool writeFile(char const* path, std::string const& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    out << text;
    out.close();
    return !out.fail();
}

// The file's name without its folders, for the comment in the script.
std::string baseName(std::string const& path) {
    std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: rcattr input.txt output.rc\n";
        return 2;
    }
    char const* input = argv[1];
    char const* output = argv[2];

    std::string text;
    if (!readFile(input, text)) {
        std::cerr << input << ": cannot be read\n";
        std::remove(output);
        return 1;
    }

    std::vector<RcAttrResource> resources;
    std::vector<RcAttrMessage> messages;
    bool read = rcAttrRead(text, resources, messages);
    for (RcAttrMessage const& message : messages)
        std::cerr << input << ':' << message.line << ": " << (message.warning ? "warning: " : "")
                  << message.text << '\n';
    if (!read) {
        std::remove(output);
        return 1;
    }

    std::string script, error;
    if (!rcAttrScript(resources, baseName(input), script, error)) {
        std::cerr << input << ": " << error << '\n';
        std::remove(output);
        return 1;
    }
    if (!writeFile(output, script)) {
        std::cerr << output << ": cannot be written\n";
        std::remove(output);
        return 1;
    }
    return 0;
}
