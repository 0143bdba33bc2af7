// A minimal binary stream over a file, for the stream operators of Object.
#pragma once

#include <cstddef>
#include <cstdint>

#include "VmBaseExport.h"

class String;

// A binary stream over a file, for the stream operators of Object.
//
// Numbers are written little-endian with a fixed width; a String as a 32-bit length and
// its bytes. A failed read or write marks the stream failed; later operations on a failed
// stream do nothing until clear().
class VMBASE_API FileIO {
public:
    // Opening for reading, or for writing.
    enum eMode { eRead = 1, eWrite = 2 };

    // A stream without file.
    FileIO();
    // Opens the file; eWrite creates or truncates it.
    FileIO(char const* path, eMode mode);
    // Closes the file.
    ~FileIO();

    FileIO(FileIO const&) = delete;
    FileIO& operator=(FileIO const&) = delete;

    // Opens the file (closing one open before) and clears the failed mark; false, and the
    // stream failed, when it cannot be opened.
    bool open(char const* path, eMode mode);
    // Closes the file; a write that could not be completed marks the stream failed.
    void close();
    // Whether a file is open.
    bool isOpen() const { return mFile != nullptr; }
    // False after a failed operation or when not open.
    bool good() const { return mFile != nullptr && !mFailed; }
    // The failed mark, read, set and cleared.
    bool failed() const { return mFailed; }
    void setFailed() { mFailed = true; }
    void clear() { mFailed = false; }

    // Exactly size bytes or the stream fails.
    bool write(void const* data, std::size_t size);
    // Exactly size bytes or the stream fails.
    bool read(void* data, std::size_t size);

    // Writes a value: numbers little-endian with their width, bool as one byte, a string
    // as a 32-bit length and its bytes (null as the empty string).
    FileIO& operator<<(std::int32_t value);
    FileIO& operator<<(std::uint32_t value);
    FileIO& operator<<(std::int64_t value);
    FileIO& operator<<(std::uint64_t value);
    FileIO& operator<<(bool value);
    FileIO& operator<<(String const& value);
    FileIO& operator<<(char const* value);

    // Reads a value written by the matching operator<<; on failure the value is unchanged.
    FileIO& operator>>(std::int32_t& value);
    FileIO& operator>>(std::uint32_t& value);
    FileIO& operator>>(std::int64_t& value);
    FileIO& operator>>(std::uint64_t& value);
    FileIO& operator>>(bool& value);
    FileIO& operator>>(String& value);

private:
    void* mFile; // the C stream
    bool mFailed;
};
