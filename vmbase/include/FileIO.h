// A minimal binary stream over a file, for the stream operators of Object.
#pragma once

#include <cstddef>
#include <cstdint>

#include "VmBaseExport.h"

class String;

// Numbers are written little-endian with a fixed width; a String as a 32-bit length and
// its bytes. A failed read or write marks the stream failed; later operations on a failed
// stream do nothing until clear().
class VMBASE_API FileIO {
public:
    enum eMode { eRead = 1, eWrite = 2 };

    FileIO();
    // Opens the file; eWrite creates or truncates it.
    FileIO(char const* path, eMode mode);
    ~FileIO();

    FileIO(FileIO const&) = delete;
    FileIO& operator=(FileIO const&) = delete;

    bool open(char const* path, eMode mode);
    void close();
    bool isOpen() const { return mFile != nullptr; }
    // False after a failed operation or when not open.
    bool good() const { return mFile != nullptr && !mFailed; }
    bool failed() const { return mFailed; }
    void setFailed() { mFailed = true; }
    void clear() { mFailed = false; }

    // Exactly size bytes or the stream fails.
    bool write(void const* data, std::size_t size);
    bool read(void* data, std::size_t size);

    FileIO& operator<<(std::int32_t value);
    FileIO& operator<<(std::uint32_t value);
    FileIO& operator<<(std::int64_t value);
    FileIO& operator<<(std::uint64_t value);
    FileIO& operator<<(bool value);
    FileIO& operator<<(String const& value);
    FileIO& operator<<(char const* value);

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
