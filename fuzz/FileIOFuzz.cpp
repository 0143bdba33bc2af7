// libFuzzer target for VmBase's FileIO reading a file it did not write: the first bytes of the
// input are a list of reads (numbers of each width, bools, strings, raw bytes, an Object's
// class name), the rest is the file's content, written to a temporary file and read back.
// Properties: every read answers what a plain little-endian decoder of the same bytes answers;
// a read that runs past the end, a bool other than 0 or 1, or a wrong class name fails the
// stream for good and leaves the target as it was; writing the values read gives the bytes
// they were read from.
#include <FileIO.h>
#include <Object.h>
#include <String.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

#include "FuzzRequire.h"

namespace {

std::string gInput;  // the file read
std::string gOutput; // the file written again

std::string temporaryFile() {
    char const* folder = std::getenv("TMPDIR");
    std::string path = std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") +
                       "/vmbase_fileio_fuzz_XXXXXX";
    int const fd = mkstemp(path.data());
    REQUIRE(fd >= 0);
    close(fd);
    return path;
}

void removeFiles() {
    std::remove(gInput.c_str());
    std::remove(gOutput.c_str());
}

void writeFile(std::string const& path, std::uint8_t const* data, std::size_t size) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    REQUIRE(file != nullptr);
    REQUIRE(size == 0 || std::fwrite(data, 1, size, file) == size);
    REQUIRE(std::fclose(file) == 0);
}

std::string readFile(std::string const& path) {
    std::string bytes;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    REQUIRE(file != nullptr);
    char buffer[4096];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        bytes.append(buffer, got);
    std::fclose(file);
    return bytes;
}

// The decoder the stream must agree with: the bytes of the file and how far it has read.
struct Expected {
    std::uint8_t const* data;
    std::size_t size;
    std::size_t next = 0;
    bool failed = false;

    bool take(std::size_t count, std::uint8_t const*& bytes) {
        if (failed || count > size - next) {
            failed = true;
            return false;
        }
        bytes = data + next;
        next += count;
        return true;
    }

    template <typename Unsigned> bool number(Unsigned& value) {
        std::uint8_t const* bytes = nullptr;
        if (!take(sizeof(Unsigned), bytes))
            return false;
        value = 0;
        for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
            value |= static_cast<Unsigned>(static_cast<Unsigned>(bytes[i]) << (8 * i));
        return true;
    }
};

enum Read { eInt32, eUint32, eInt64, eUint64, eBool, eString, eRaw, eObject, eReads };

// Reads one value of each kind asked for and checks it against the decoder; the values read
// successfully are written to out.
void readAndCheck(FileIO& in, Expected& expected, std::uint8_t what, FileIO& out) {
    bool const wasFailed = expected.failed;
    switch (what % eReads) {
    case eInt32: {
        std::int32_t value = 0x5A5A5A5A;
        in >> value;
        std::uint32_t bits = 0;
        if (expected.number(bits)) {
            REQUIRE(value == static_cast<std::int32_t>(bits));
            out << value;
        } else {
            REQUIRE(value == 0x5A5A5A5A);
        }
        break;
    }
    case eUint32: {
        std::uint32_t value = 0xA5A5A5A5u;
        in >> value;
        std::uint32_t bits = 0;
        if (expected.number(bits)) {
            REQUIRE(value == bits);
            out << value;
        } else {
            REQUIRE(value == 0xA5A5A5A5u);
        }
        break;
    }
    case eInt64: {
        std::int64_t value = -5;
        in >> value;
        std::uint64_t bits = 0;
        if (expected.number(bits)) {
            REQUIRE(value == static_cast<std::int64_t>(bits));
            out << value;
        } else {
            REQUIRE(value == -5);
        }
        break;
    }
    case eUint64: {
        std::uint64_t value = 7;
        in >> value;
        std::uint64_t bits = 0;
        if (expected.number(bits)) {
            REQUIRE(value == bits);
            out << value;
        } else {
            REQUIRE(value == 7);
        }
        break;
    }
    case eBool: {
        bool value = true;
        in >> value;
        std::uint8_t const* byte = nullptr;
        if (expected.take(1, byte) && *byte <= 1) {
            REQUIRE(value == (*byte == 1));
            out << value;
        } else {
            expected.failed = true;
            REQUIRE(value);
        }
        break;
    }
    case eString: {
        String value("kept");
        in >> value;
        std::uint32_t length = 0;
        std::uint8_t const* bytes = nullptr;
        if (expected.number(length) && expected.take(length, bytes)) {
            REQUIRE(value.size() == length);
            REQUIRE(length == 0 || std::memcmp(value.c_str(), bytes, length) == 0);
            out << value;
        } else {
            REQUIRE(value == "kept");
        }
        break;
    }
    case eRaw: {
        std::size_t const count = what / eReads; // 0 to 31 bytes
        std::vector<std::uint8_t> buffer(count + 1, 0xEE);
        bool const done = in.read(buffer.data(), count);
        std::uint8_t const* bytes = nullptr;
        REQUIRE(done == expected.take(count, bytes));
        if (done) {
            REQUIRE(count == 0 || std::memcmp(buffer.data(), bytes, count) == 0);
            out.write(buffer.data(), count);
        }
        REQUIRE(buffer[count] == 0xEE); // nothing written past the count
        break;
    }
    default: { // an Object's class name
        Object object;
        object >> in;
        std::uint32_t length = 0;
        std::uint8_t const* bytes = nullptr;
        if (expected.number(length) && expected.take(length, bytes)) {
            if (std::string(reinterpret_cast<char const*>(bytes), length) != "Object")
                expected.failed = true;
            else
                object << out;
        }
        break;
    }
    }
    REQUIRE(in.good() == !expected.failed);
    REQUIRE(in.failed() == expected.failed);
    REQUIRE(!wasFailed || expected.failed); // a failed stream stays failed
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    gInput = temporaryFile();
    gOutput = temporaryFile();
    std::atexit(removeFiles);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0)
        return 0;
    std::size_t const reads = data[0] % 16 < size - 1 ? data[0] % 16 : size - 1;
    std::uint8_t const* const program = data + 1;
    std::uint8_t const* const content = data + 1 + reads;
    std::size_t const contentSize = size - 1 - reads;
    writeFile(gInput, content, contentSize);

    Expected expected{content, contentSize};
    {
        FileIO in(gInput.c_str(), FileIO::eRead);
        FileIO out(gOutput.c_str(), FileIO::eWrite);
        REQUIRE(in.good() && out.good());
        for (std::size_t i = 0; i < reads; ++i)
            readAndCheck(in, expected, program[i], out);
        // A failed stream reads nothing more, even where bytes are left.
        if (in.failed()) {
            std::uint8_t byte = 0;
            REQUIRE(!in.read(&byte, 1));
            in.clear();
            REQUIRE(in.good());
        }
        REQUIRE(out.good());
    }
    // Every value read successfully is written back as the bytes it came from.
    std::string const written = readFile(gOutput);
    REQUIRE(written.size() <= expected.next);
    REQUIRE(std::memcmp(written.data(), content, written.size()) == 0);
    if (!expected.failed)
        REQUIRE(written.size() == expected.next);
    return 0;
}
