// A byte string that owns its text. c_str() is never null.
#pragma once

#include <cstddef>

#include "VmBaseExport.h"

// A byte string that owns its text (which may contain zero bytes); c_str() is never
// null and always zero-terminated.
class VMBASE_API String {
public:
    // The position no text has: "not found", or "to the end".
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    // The empty string.
    String();
    // Null gives the empty string.
    String(char const* text);
    // The first length bytes of text (which may contain zero bytes); null gives "".
    String(char const* text, std::size_t length);
    // Copies the text; a moved-from string is empty.
    String(String const& other);
    String(String&& other) noexcept;
    ~String();

    // Replaces the text (null gives the empty string).
    String& operator=(String const& other);
    String& operator=(String&& other) noexcept;
    String& operator=(char const* text);

    // Byte-wise equality (null text is equal to the empty string).
    bool operator==(String const& other) const;
    bool operator!=(String const& other) const { return !(*this == other); }
    bool operator==(char const* text) const;
    bool operator!=(char const* text) const { return !(*this == text); }
    // Byte-wise, as unsigned characters; a prefix is less than the longer string.
    bool operator<(String const& other) const;

    // Concatenation; appending null appends nothing.
    String operator+(String const& other) const;
    String operator+(char const* text) const;
    String& operator+=(String const& other);
    String& operator+=(char const* text);
    String& operator+=(char c);

    // The length in bytes (not counting the terminating zero), whether it is zero, and the
    // zero-terminated text.
    std::size_t size() const { return mSize; }
    bool empty() const { return mSize == 0; }
    char const* c_str() const { return mData; }

    // Positions of the first occurrence at or after pos, or npos. An empty needle is
    // found at pos when pos <= size().
    std::size_t find(String const& needle, std::size_t pos = 0) const;
    std::size_t find(char c, std::size_t pos = 0) const;
    // First position at or after pos holding one of chars, or npos.
    std::size_t findFirstOf(String const& chars, std::size_t pos = 0) const;
    // Last position at or before pos holding one of chars, or npos.
    std::size_t findLastOf(String const& chars, std::size_t pos = npos) const;
    // At most len bytes from pos; pos beyond the end gives "".
    String substr(std::size_t pos, std::size_t len = npos) const;

    // Reading past the end gives '\0'.
    char operator[](std::size_t pos) const;
    // Throws std::out_of_range past the end.
    char& operator[](std::size_t pos);

private:
    void assign(char const* text, std::size_t length);

    char* mData;
    std::size_t mSize;
};

// A C string followed by a String (null as the empty string).
VMBASE_API String operator+(char const* left, String const& right);
