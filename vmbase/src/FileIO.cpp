// FileIO: fixed-width little-endian binary I/O over a C stream.
#include "FileIO.h"

#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "String.h"

namespace {

std::FILE* stream(void* file) {
    return static_cast<std::FILE*>(file);
}

// Long strings are read this many bytes at a time, so that a corrupt length costs at
// most the bytes the file really holds instead of one huge allocation up front.
constexpr std::size_t kStringChunk = 64 * 1024;

template <typename Unsigned> void encode(Unsigned value, unsigned char* bytes) {
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        bytes[i] = static_cast<unsigned char>(value >> (8 * i));
    }
}

template <typename Unsigned> Unsigned decode(unsigned char const* bytes) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        value |= static_cast<Unsigned>(static_cast<Unsigned>(bytes[i]) << (8 * i));
    }
    return value;
}

template <typename Unsigned> void writeUnsigned(FileIO& io, Unsigned value) {
    unsigned char bytes[sizeof(Unsigned)];
    encode(value, bytes);
    io.write(bytes, sizeof bytes);
}

template <typename Unsigned> bool readUnsigned(FileIO& io, Unsigned& value) {
    unsigned char bytes[sizeof(Unsigned)];
    if (!io.read(bytes, sizeof bytes)) {
        return false;
    }
    value = decode<Unsigned>(bytes);
    return true;
}

void writeText(FileIO& io, char const* text, std::size_t size) {
    if (size > std::numeric_limits<std::uint32_t>::max()) {
        io.setFailed();
        return;
    }
    writeUnsigned(io, static_cast<std::uint32_t>(size));
    io.write(text, size);
}

} // namespace

FileIO::FileIO() : mFile(nullptr), mFailed(false) {}

FileIO::FileIO(char const* path, eMode mode) : mFile(nullptr), mFailed(false) {
    open(path, mode);
}

FileIO::~FileIO() {
    close();
}

bool FileIO::open(char const* path, eMode mode) {
    close();
    mFailed = false;
    char const* how = nullptr;
    if (mode == eRead) {
        how = "rb";
    } else if (mode == eWrite) {
        how = "wb";
    }
    if (path == nullptr || how == nullptr) {
        mFailed = true;
        return false;
    }
    mFile = std::fopen(path, how);
    if (mFile == nullptr) {
        mFailed = true;
        return false;
    }
    return true;
}

void FileIO::close() {
    if (mFile == nullptr) {
        return;
    }
    // fclose flushes; an error there means written data may be lost.
    if (std::fclose(stream(mFile)) != 0) {
        mFailed = true;
    }
    mFile = nullptr;
}

bool FileIO::write(void const* data, std::size_t size) {
    if (!good()) {
        return false;
    }
    if (size == 0) {
        return true;
    }
    if (data == nullptr || std::fwrite(data, 1, size, stream(mFile)) != size) {
        mFailed = true;
        return false;
    }
    return true;
}

bool FileIO::read(void* data, std::size_t size) {
    if (!good()) {
        return false;
    }
    if (size == 0) {
        return true;
    }
    if (data == nullptr || std::fread(data, 1, size, stream(mFile)) != size) {
        mFailed = true;
        return false;
    }
    return true;
}

FileIO& FileIO::operator<<(std::int32_t value) {
    writeUnsigned(*this, static_cast<std::uint32_t>(value));
    return *this;
}

FileIO& FileIO::operator<<(std::uint32_t value) {
    writeUnsigned(*this, value);
    return *this;
}

FileIO& FileIO::operator<<(std::int64_t value) {
    writeUnsigned(*this, static_cast<std::uint64_t>(value));
    return *this;
}

FileIO& FileIO::operator<<(std::uint64_t value) {
    writeUnsigned(*this, value);
    return *this;
}

FileIO& FileIO::operator<<(bool value) {
    unsigned char const byte = value ? 1 : 0;
    write(&byte, 1);
    return *this;
}

FileIO& FileIO::operator<<(String const& value) {
    writeText(*this, value.c_str(), value.size());
    return *this;
}

FileIO& FileIO::operator<<(char const* value) {
    // Null is written as the empty string.
    writeText(*this, value, value != nullptr ? std::strlen(value) : 0);
    return *this;
}

FileIO& FileIO::operator>>(std::int32_t& value) {
    std::uint32_t bits = 0;
    if (readUnsigned(*this, bits)) {
        value = static_cast<std::int32_t>(bits);
    }
    return *this;
}

FileIO& FileIO::operator>>(std::uint32_t& value) {
    readUnsigned(*this, value);
    return *this;
}

FileIO& FileIO::operator>>(std::int64_t& value) {
    std::uint64_t bits = 0;
    if (readUnsigned(*this, bits)) {
        value = static_cast<std::int64_t>(bits);
    }
    return *this;
}

FileIO& FileIO::operator>>(std::uint64_t& value) {
    readUnsigned(*this, value);
    return *this;
}

FileIO& FileIO::operator>>(bool& value) {
    // One byte, 0 or 1; anything else is not a bool written by this class.
    unsigned char byte = 0;
    if (!read(&byte, 1)) {
        return *this;
    }
    if (byte > 1) {
        mFailed = true;
        return *this;
    }
    value = byte == 1;
    return *this;
}

FileIO& FileIO::operator>>(String& value) {
    std::uint32_t size = 0;
    if (!readUnsigned(*this, size)) {
        return *this;
    }
    std::string text;
    std::size_t remaining = size;
    while (remaining > 0) {
        std::size_t const chunk = remaining < kStringChunk ? remaining : kStringChunk;
        std::size_t const offset = text.size();
        text.resize(offset + chunk);
        if (!read(&text[offset], chunk)) {
            return *this; // value keeps its old contents
        }
        remaining -= chunk;
    }
    value = String(text.data(), text.size());
    return *this;
}
