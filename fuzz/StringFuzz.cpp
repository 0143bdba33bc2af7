// libFuzzer target for VmBase's String: the input is a little program of string operations
// (construction from bytes that may hold NULs, appending, searching, cutting, indexing,
// comparing, assigning to itself), each carried out on a String and on a std::string.
// Properties: both always hold the same bytes, c_str() ends with a NUL after size() bytes,
// every search, cut and comparison answers what std::string answers, and the writable
// operator[] refuses exactly the positions past the end.
#include <String.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <utility>

#include "FuzzRequire.h"

namespace {

// Strings grow no further than this by appending to themselves.
constexpr std::size_t kLongest = 4096;

// Reads the program: bytes, positions and pieces of text, nothing past the end.
class Program {
public:
    Program(std::uint8_t const* data, std::size_t size) : mData(data), mSize(size) {}

    bool done() const { return mNext >= mSize; }

    std::uint8_t byte() { return mNext < mSize ? mData[mNext++] : 0; }

    // Up to 15 bytes of the input, NULs included.
    std::string piece() {
        std::size_t length = byte() % 16;
        if (length > mSize - mNext)
            length = mSize - mNext;
        std::string text(reinterpret_cast<char const*>(mData) + mNext, length);
        mNext += length;
        return text;
    }

    // A position around a string of size: inside, just past the end, beyond it, or npos.
    std::size_t position(std::size_t size) {
        std::uint8_t const b = byte();
        if (b == 0xFF)
            return String::npos;
        return b % (size + 3);
    }

private:
    std::uint8_t const* mData;
    std::size_t mSize;
    std::size_t mNext = 0;
};

void requireSame(String const& s, std::string const& expected) {
    REQUIRE(s.size() == expected.size());
    REQUIRE(s.empty() == expected.empty());
    REQUIRE(s.c_str() != nullptr);
    REQUIRE(std::memcmp(s.c_str(), expected.data(), expected.size()) == 0);
    REQUIRE(s.c_str()[s.size()] == '\0');
}

String make(std::string const& text) {
    return String(text.data(), text.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Program program(data, size);
    String s;
    std::string expected;
    int steps = 0;
    while (!program.done() && ++steps < 256) {
        switch (program.byte() % 16) {
        case 0: { // construction from bytes
            std::string const text = program.piece();
            s = make(text);
            expected = text;
            break;
        }
        case 1: { // construction from a C string: ends at the first NUL
            std::string const text = program.piece();
            s = String(text.c_str());
            expected = text.substr(0, text.find('\0'));
            break;
        }
        case 2: { // appending a String, a C string and a character
            std::string const text = program.piece();
            s += make(text);
            expected += text;
            s += text.c_str();
            expected += text.substr(0, text.find('\0'));
            char const c = static_cast<char>(program.byte());
            s += c;
            expected += c;
            break;
        }
        case 3: { // concatenation in all three forms
            std::string const text = program.piece();
            std::string const cText = text.substr(0, text.find('\0'));
            requireSame(s + make(text), expected + text);
            requireSame(s + text.c_str(), expected + cText);
            requireSame(text.c_str() + s, cText + expected);
            break;
        }
        case 4: { // appending to itself (doubling: kept below a few kilobytes)
            if (expected.size() < kLongest) {
                s += s;
                expected += expected;
            }
            break;
        }
        case 5: { // searching for a string
            std::string const needle = program.piece();
            std::size_t const pos = program.position(expected.size());
            REQUIRE(s.find(make(needle), pos) == expected.find(needle, pos));
            break;
        }
        case 6: { // searching for a character
            char const c = static_cast<char>(program.byte());
            std::size_t const pos = program.position(expected.size());
            REQUIRE(s.find(c, pos) == expected.find(c, pos));
            break;
        }
        case 7: { // the first of a set
            std::string const chars = program.piece();
            std::size_t const pos = program.position(expected.size());
            REQUIRE(s.findFirstOf(make(chars), pos) == expected.find_first_of(chars, pos));
            break;
        }
        case 8: { // the last of a set
            std::string const chars = program.piece();
            std::size_t const pos = program.position(expected.size());
            REQUIRE(s.findLastOf(make(chars), pos) == expected.find_last_of(chars, pos));
            break;
        }
        case 9: { // cutting
            std::size_t const pos = program.position(expected.size());
            std::size_t const len = program.position(expected.size());
            String const cut = s.substr(pos, len);
            requireSame(cut, pos >= expected.size() ? std::string() : expected.substr(pos, len));
            if ((program.byte() & 1) != 0) {
                s = s.substr(pos, len);
                expected = pos >= expected.size() ? std::string() : expected.substr(pos, len);
            }
            break;
        }
        case 10: { // reading a position: past the end gives NUL
            std::size_t const pos = program.position(expected.size());
            String const& reader = s;
            REQUIRE(reader[pos] == (pos < expected.size() ? expected[pos] : '\0'));
            break;
        }
        case 11: { // writing a position: past the end throws and changes nothing
            std::size_t const pos = program.position(expected.size());
            char const c = static_cast<char>(program.byte());
            bool thrown = false;
            try {
                s[pos] = c;
            } catch (std::out_of_range const&) {
                thrown = true;
            }
            REQUIRE(thrown == (pos >= expected.size()));
            if (!thrown)
                expected[pos] = c;
            break;
        }
        case 12: { // comparisons with a String and a C string
            std::string const text = program.piece();
            String const other = make(text);
            REQUIRE((s == other) == (expected == text));
            REQUIRE((s != other) == (expected != text));
            REQUIRE((s < other) == (expected < text));
            REQUIRE((other < s) == (text < expected));
            std::string const cText = text.substr(0, text.find('\0'));
            REQUIRE((s == text.c_str()) == (expected == cText));
            REQUIRE((s != text.c_str()) == (expected != cText));
            break;
        }
        case 13: { // copies, moves and assignment to itself
            String copy(s);
            requireSame(copy, expected);
            String moved(std::move(copy));
            requireSame(moved, expected);
            requireSame(copy, std::string()); // a moved-from string is empty
            String& self = s;
            s = self;
            s = std::move(moved);
            break;
        }
        case 14: { // assignment of a C string that points into the string itself
            std::size_t const pos = program.position(expected.size());
            if (pos < expected.size()) {
                s = s.c_str() + pos;
                expected = expected.substr(pos);
                expected = expected.substr(0, expected.find('\0'));
            }
            break;
        }
        default: { // null pointers stand for the empty string
            s = static_cast<char const*>(nullptr);
            expected.clear();
            s += static_cast<char const*>(nullptr);
            requireSame(String(nullptr, 5), std::string());
            break;
        }
        }
        requireSame(s, expected);
    }
    return 0;
}
