#include "RcToolMain.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

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

std::string baseName(std::string const& path) {
    std::size_t slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

} // namespace

int rcToolMain(int argc, char** argv, char const* tool, RcConvert convert) {
    if (argc != 3) {
        std::cerr << "usage: " << tool << " input.txt output.rc\n";
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

    std::string script, error;
    std::vector<RcMessage> messages;
    bool converted = convert(text, baseName(input), script, messages, error);
    for (RcMessage const& message : messages)
        std::cerr << input << ':' << message.line << ": " << (message.warning ? "warning: " : "")
                  << message.text << '\n';
    if (!converted) {
        if (!error.empty())
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
