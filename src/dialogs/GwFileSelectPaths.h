// The file dialog's result buffer and filter, read without the platform: bounded by the
// buffer's size, so that a buffer or filter of any content gives a defined answer.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace gw_file_select {

// The default extension of a filter list "description|pattern|description|pattern|...":
// the pattern of the entry that `index` names (1 for the first pair) is split at ";" and the
// first part whose text after its last "." is not empty and holds neither "*" nor "?" gives
// "." and that text. Every other case gives the empty string: a part without ".", an
// index of 0 or beyond the entries, an empty entry, a filter without "|". The filter is read
// only up to a NUL in it.
std::string defaultExtension(std::string const& filter, unsigned long index);

// The full paths in the result buffer of the open and save dialogs. The buffer holds a
// directory and the names after it, each ended by a NUL, the list ended by an empty string;
// a single selection holds the whole path instead, and `fileOffset` (when not 0 and inside
// the buffer) is the start of its name: the character before it is read as a NUL. Every path
// is the directory, "\" and a name; `extension` is appended to a name without ".".
//
// Only `size` bytes are read. A string that reaches the end of the buffer without a NUL ends
// there; the list ends at an empty string or at the end of the buffer, whichever comes first.
std::vector<std::string> resultPaths(char const* buffer, std::size_t size, std::size_t fileOffset,
                                     std::string const& extension);

} // namespace gw_file_select
