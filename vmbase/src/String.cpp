// String: an owned, NUL-terminated byte buffer.
#include "String.h"

#include <cstring>
#include <stdexcept>
#include <string_view>

namespace {

// Shared by every empty string, so that empty strings and moved-from strings need no
// allocation. Never written to: the writable operator[] refuses every position of an
// empty string, and it is never freed.
char sEmpty[1] = {'\0'};

std::size_t lengthOf(char const* text) {
    return text != nullptr ? std::strlen(text) : 0;
}

void release(char* data) {
    if (data != sEmpty) {
        delete[] data;
    }
}

// A new NUL-terminated buffer holding left followed by right.
char* concat(char const* left, std::size_t leftSize, char const* right, std::size_t rightSize) {
    std::size_t const size = leftSize + rightSize;
    if (size == 0) {
        return sEmpty;
    }
    char* data = new char[size + 1];
    if (leftSize > 0) {
        std::memcpy(data, left, leftSize);
    }
    if (rightSize > 0) {
        std::memcpy(data + leftSize, right, rightSize);
    }
    data[size] = '\0';
    return data;
}

std::string_view view(char const* data, std::size_t size) {
    return std::string_view(data, size);
}

} // namespace

#if defined(_WIN32)
// npos is an inline variable of an exported class, so clients that odr-use it (bind it to
// a reference, take its address) import it from the DLL; MinGW only emits and exports it
// from a translation unit that odr-uses it. This external pointer is such a use and
// cannot be optimised away.
namespace vmbase_detail {
extern std::size_t const* const stringNposAnchor;
std::size_t const* const stringNposAnchor = &String::npos;
} // namespace vmbase_detail
#endif

String::String() : mData(sEmpty), mSize(0) {}

String::String(char const* text) : mData(sEmpty), mSize(0) {
    assign(text, lengthOf(text));
}

String::String(char const* text, std::size_t length) : mData(sEmpty), mSize(0) {
    assign(text, text != nullptr ? length : 0);
}

String::String(String const& other) : mData(sEmpty), mSize(0) {
    assign(other.mData, other.mSize);
}

String::String(String&& other) noexcept : mData(other.mData), mSize(other.mSize) {
    other.mData = sEmpty;
    other.mSize = 0;
}

String::~String() {
    release(mData);
}

void String::assign(char const* text, std::size_t length) {
    // The new buffer is filled before the old one goes, so text may point into it.
    char* data = concat(text, length, nullptr, 0);
    release(mData);
    mData = data;
    mSize = length;
}

String& String::operator=(String const& other) {
    if (this != &other) {
        assign(other.mData, other.mSize);
    }
    return *this;
}

String& String::operator=(String&& other) noexcept {
    if (this != &other) {
        release(mData);
        mData = other.mData;
        mSize = other.mSize;
        other.mData = sEmpty;
        other.mSize = 0;
    }
    return *this;
}

String& String::operator=(char const* text) {
    assign(text, lengthOf(text));
    return *this;
}

bool String::operator==(String const& other) const {
    return mSize == other.mSize && std::memcmp(mData, other.mData, mSize) == 0;
}

bool String::operator==(char const* text) const {
    std::size_t const length = lengthOf(text);
    return mSize == length && (length == 0 || std::memcmp(mData, text, length) == 0);
}

bool String::operator<(String const& other) const {
    // string_view compares with char_traits<char>, which orders as unsigned char.
    return view(mData, mSize) < view(other.mData, other.mSize);
}

String String::operator+(String const& other) const {
    String result;
    result.mData = concat(mData, mSize, other.mData, other.mSize);
    result.mSize = mSize + other.mSize;
    return result;
}

String String::operator+(char const* text) const {
    std::size_t const length = lengthOf(text);
    String result;
    result.mData = concat(mData, mSize, text, length);
    result.mSize = mSize + length;
    return result;
}

String& String::operator+=(String const& other) {
    // other may be *this: concat reads both before the old buffer is released.
    char* data = concat(mData, mSize, other.mData, other.mSize);
    std::size_t const size = mSize + other.mSize;
    release(mData);
    mData = data;
    mSize = size;
    return *this;
}

String& String::operator+=(char const* text) {
    std::size_t const length = lengthOf(text);
    char* data = concat(mData, mSize, text, length);
    release(mData);
    mData = data;
    mSize += length;
    return *this;
}

String& String::operator+=(char c) {
    char* data = concat(mData, mSize, &c, 1);
    release(mData);
    mData = data;
    mSize += 1;
    return *this;
}

std::size_t String::find(String const& needle, std::size_t pos) const {
    return view(mData, mSize).find(view(needle.mData, needle.mSize), pos);
}

std::size_t String::find(char c, std::size_t pos) const {
    return view(mData, mSize).find(c, pos);
}

std::size_t String::findFirstOf(String const& chars, std::size_t pos) const {
    return view(mData, mSize).find_first_of(view(chars.mData, chars.mSize), pos);
}

std::size_t String::findLastOf(String const& chars, std::size_t pos) const {
    return view(mData, mSize).find_last_of(view(chars.mData, chars.mSize), pos);
}

String String::substr(std::size_t pos, std::size_t len) const {
    if (pos >= mSize) {
        return String();
    }
    std::size_t const count = len < mSize - pos ? len : mSize - pos;
    return String(mData + pos, count);
}

char String::operator[](std::size_t pos) const {
    return pos < mSize ? mData[pos] : '\0';
}

char& String::operator[](std::size_t pos) {
    if (pos >= mSize) {
        throw std::out_of_range("String::operator[]: position past the end");
    }
    return mData[pos];
}

String operator+(char const* left, String const& right) {
    return String(left) + right;
}
