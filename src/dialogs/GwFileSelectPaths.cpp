// The file dialog's result buffer and filter, read without the platform.
#include "GwFileSelectPaths.h"

#include <cstring>

namespace gw_file_select {

namespace {

// The `number`th field (0 for the first) of text split at `separator`; empty past the last.
std::string field(std::string const& text, char separator, std::size_t number) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < number; ++i) {
        std::size_t const next = text.find(separator, start);
        if (next == std::string::npos)
            return std::string();
        start = next + 1;
    }
    std::size_t const end = text.find(separator, start);
    return text.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

} // namespace

std::string defaultExtension(std::string const& list, unsigned long index) {
    // The dialog reads the list only up to a NUL.
    std::string const filter = list.substr(0, list.find('\0'));
    if (index == 0)
        return std::string();
    // Entry pairs: the pattern of pair `index` is field 2 * index - 1.
    std::size_t const number = 2 * static_cast<std::size_t>(index) - 1;
    if (number / 2 + 1 != index) // index too large to be an entry at all
        return std::string();
    std::string const pattern = field(filter, '|', number);
    std::size_t start = 0;
    while (start <= pattern.size()) {
        std::size_t end = pattern.find(';', start);
        if (end == std::string::npos)
            end = pattern.size();
        std::string const part = pattern.substr(start, end - start);
        std::size_t const dot = part.rfind('.');
        if (dot != std::string::npos) {
            std::string const extension = part.substr(dot + 1);
            if (!extension.empty() && extension.find_first_of("*?") == std::string::npos)
                return "." + extension;
        }
        start = end + 1;
    }
    return std::string();
}

std::vector<std::string> resultPaths(char const* buffer, std::size_t size, std::size_t fileOffset,
                                     std::string const& extension) {
    std::vector<std::string> paths;
    if (buffer == nullptr || size == 0)
        return paths;
    // The character before a single selection's name counts as the end of the directory.
    std::size_t const split = fileOffset != 0 && fileOffset <= size ? fileOffset - 1 : size;
    auto const stringAt = [&](std::size_t start) {
        std::size_t end = start;
        while (end < size && end != split && buffer[end] != '\0')
            ++end;
        return end;
    };
    std::size_t const directoryEnd = stringAt(0);
    std::string const directory = std::string(buffer, directoryEnd) + "\\";
    std::size_t start = directoryEnd + 1;
    while (start < size) {
        std::size_t const end = stringAt(start);
        if (end == start)
            break;
        std::string name(buffer + start, end - start);
        if (!extension.empty() && name.find('.') == std::string::npos)
            name += extension;
        paths.push_back(directory + name);
        start = end + 1;
    }
    return paths;
}

} // namespace gw_file_select
