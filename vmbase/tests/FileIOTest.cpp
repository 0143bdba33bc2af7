// Tests of FileIO and of Object's stream operators, on temporary files.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "VmBase.h"

namespace {

// Gives each test a file of its own in the temporary directory and removes it afterwards.
class FileIOTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::random_device random;
        std::string name = "vmbase_fileio_";
        name += ::testing::UnitTest::GetInstance()->current_test_info()->name();
        name += '_' + std::to_string(random()) + ".bin";
        mPath = std::filesystem::temp_directory_path() / name;
        mPathText = mPath.string();
    }

    void TearDown() override {
        std::error_code ignored;
        std::filesystem::remove(mPath, ignored);
        EXPECT_FALSE(std::filesystem::exists(mPath));
    }

    char const* path() const { return mPathText.c_str(); }

    std::vector<unsigned char> bytes() const {
        std::ifstream in(mPath, std::ios::binary);
        return std::vector<unsigned char>(std::istreambuf_iterator<char>(in),
                                          std::istreambuf_iterator<char>());
    }

    void writeBytes(std::vector<unsigned char> const& data) const {
        std::ofstream out(mPath, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<char const*>(data.data()),
                  static_cast<std::streamsize>(data.size()));
    }

private:
    std::filesystem::path mPath;
    std::string mPathText;
};

using Bytes = std::vector<unsigned char>;

} // namespace

TEST_F(FileIOTest, DefaultStreamIsNotOpenAndNotGood) {
    FileIO io;
    EXPECT_FALSE(io.isOpen());
    EXPECT_FALSE(io.good());
    EXPECT_FALSE(io.failed());
    EXPECT_FALSE(io.write("x", 1));
    char c = 0;
    EXPECT_FALSE(io.read(&c, 1));
}

TEST_F(FileIOTest, OpeningMissingFileForReadingFails) {
    FileIO io;
    EXPECT_FALSE(io.open(path(), FileIO::eRead));
    EXPECT_FALSE(io.isOpen());
    EXPECT_FALSE(io.good());
}

TEST_F(FileIOTest, OpeningNullPathFails) {
    FileIO io;
    EXPECT_FALSE(io.open(nullptr, FileIO::eWrite));
    EXPECT_FALSE(io.isOpen());
}

TEST_F(FileIOTest, WriteModeCreatesTheFile) {
    FileIO io(path(), FileIO::eWrite);
    EXPECT_TRUE(io.isOpen());
    EXPECT_TRUE(io.good());
    io.close();
    EXPECT_FALSE(io.isOpen());
    EXPECT_TRUE(std::filesystem::exists(path()));
    EXPECT_TRUE(bytes().empty());
}

TEST_F(FileIOTest, WriteModeTruncatesExistingFile) {
    writeBytes({1, 2, 3, 4, 5});
    {
        FileIO io(path(), FileIO::eWrite);
        io << std::uint32_t{9};
    }
    EXPECT_EQ(bytes(), (Bytes{9, 0, 0, 0}));
}

TEST_F(FileIOTest, FileIORoundTripsNumbersAndStrings) {
    {
        FileIO out(path(), FileIO::eWrite);
        out << std::int32_t{-123456} << std::uint32_t{4000000000u} << std::int64_t{-9876543210}
            << std::uint64_t{18000000000000000000ull} << true << false << String("hello") << "world"
            << String();
        EXPECT_TRUE(out.good());
    }
    FileIO in(path(), FileIO::eRead);
    std::int32_t i32 = 0;
    std::uint32_t u32 = 0;
    std::int64_t i64 = 0;
    std::uint64_t u64 = 0;
    bool yes = false;
    bool no = true;
    String first;
    String second;
    String third("not empty");
    in >> i32 >> u32 >> i64 >> u64 >> yes >> no >> first >> second >> third;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(i32, -123456);
    EXPECT_EQ(u32, 4000000000u);
    EXPECT_EQ(i64, -9876543210);
    EXPECT_EQ(u64, 18000000000000000000ull);
    EXPECT_TRUE(yes);
    EXPECT_FALSE(no);
    EXPECT_EQ(first, "hello");
    EXPECT_EQ(second, "world");
    EXPECT_TRUE(third.empty());
}

TEST_F(FileIOTest, ExtremeValuesRoundTrip) {
    {
        FileIO out(path(), FileIO::eWrite);
        out << std::numeric_limits<std::int32_t>::min() << std::numeric_limits<std::int32_t>::max()
            << std::numeric_limits<std::int64_t>::min() << std::numeric_limits<std::int64_t>::max()
            << std::numeric_limits<std::uint32_t>::max()
            << std::numeric_limits<std::uint64_t>::max();
    }
    FileIO in(path(), FileIO::eRead);
    std::int32_t minI32 = 0;
    std::int32_t maxI32 = 0;
    std::int64_t minI64 = 0;
    std::int64_t maxI64 = 0;
    std::uint32_t maxU32 = 0;
    std::uint64_t maxU64 = 0;
    in >> minI32 >> maxI32 >> minI64 >> maxI64 >> maxU32 >> maxU64;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(minI32, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(maxI32, std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(minI64, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(maxI64, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(maxU32, std::numeric_limits<std::uint32_t>::max());
    EXPECT_EQ(maxU64, std::numeric_limits<std::uint64_t>::max());
}

TEST_F(FileIOTest, NumbersAreWrittenLittleEndianWithFixedWidth) {
    {
        FileIO out(path(), FileIO::eWrite);
        out << std::uint32_t{0x01020304u} << std::int32_t{-2}
            << std::uint64_t{0x0102030405060708ull} << std::int64_t{-1} << true << false;
    }
    Bytes const expected{
        0x04, 0x03, 0x02, 0x01,                         // uint32
        0xFE, 0xFF, 0xFF, 0xFF,                         // int32 -2
        0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, // uint64
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // int64 -1
        0x01, 0x00,                                     // true, false
    };
    EXPECT_EQ(bytes(), expected);
}

TEST_F(FileIOTest, StringIsWrittenAsLengthAndBytes) {
    {
        FileIO out(path(), FileIO::eWrite);
        out << String("ab\0c", 4) << static_cast<char const*>(nullptr) << "xy";
    }
    Bytes const expected{
        4, 0, 0, 0, 'a', 'b', 0, 'c', // String with an embedded zero byte
        0, 0, 0, 0,                   // null text as the empty string
        2, 0, 0, 0, 'x', 'y',         // text
    };
    EXPECT_EQ(bytes(), expected);
}

TEST_F(FileIOTest, EmbeddedZeroBytesRoundTrip) {
    String const original("\0a\0b\0", 5);
    {
        FileIO out(path(), FileIO::eWrite);
        out << original;
    }
    FileIO in(path(), FileIO::eRead);
    String read;
    in >> read;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(read.size(), 5u);
    EXPECT_EQ(read, original);
}

TEST_F(FileIOTest, LongStringRoundTrips) {
    // Longer than one read chunk, and not a multiple of it.
    std::string text;
    for (int i = 0; i < 200000; ++i) {
        text += static_cast<char>('a' + i % 26);
    }
    String const original(text.data(), text.size());
    {
        FileIO out(path(), FileIO::eWrite);
        out << original;
    }
    FileIO in(path(), FileIO::eRead);
    String read;
    in >> read;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(read, original);
}

TEST_F(FileIOTest, RawBytesRoundTrip) {
    unsigned char const data[] = {0, 1, 2, 0xFF, 0x80};
    {
        FileIO out(path(), FileIO::eWrite);
        EXPECT_TRUE(out.write(data, sizeof data));
        EXPECT_TRUE(out.write(nullptr, 0));
    }
    FileIO in(path(), FileIO::eRead);
    unsigned char read[sizeof data] = {};
    EXPECT_TRUE(in.read(read, sizeof read));
    EXPECT_EQ(Bytes(read, read + sizeof read), Bytes(data, data + sizeof data));
}

TEST_F(FileIOTest, ReadingPastTheEndFails) {
    writeBytes({1, 2});
    FileIO in(path(), FileIO::eRead);
    std::uint32_t value = 77;
    in >> value;
    EXPECT_TRUE(in.failed());
    EXPECT_FALSE(in.good());
    EXPECT_EQ(value, 77u);
}

TEST_F(FileIOTest, TruncatedStringReadFails) {
    writeBytes({10, 0, 0, 0, 'a', 'b', 'c'});
    FileIO in(path(), FileIO::eRead);
    String value("unchanged");
    in >> value;
    EXPECT_TRUE(in.failed());
    EXPECT_EQ(value, "unchanged");
}

TEST_F(FileIOTest, HugeStringLengthFailsWithoutReadingMuch) {
    writeBytes({0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b'});
    FileIO in(path(), FileIO::eRead);
    String value;
    in >> value;
    EXPECT_TRUE(in.failed());
    EXPECT_TRUE(value.empty());
}

TEST_F(FileIOTest, TruncatedLengthOfStringFails) {
    writeBytes({3, 0});
    FileIO in(path(), FileIO::eRead);
    String value("kept");
    in >> value;
    EXPECT_TRUE(in.failed());
    EXPECT_EQ(value, "kept");
}

TEST_F(FileIOTest, BoolOtherThanZeroOrOneFails) {
    writeBytes({2});
    FileIO in(path(), FileIO::eRead);
    bool value = false;
    in >> value;
    EXPECT_TRUE(in.failed());
    EXPECT_FALSE(value);
}

TEST_F(FileIOTest, FailedStreamIgnoresOperationsUntilCleared) {
    writeBytes({5, 0, 0, 0, 6, 0, 0, 0});
    FileIO in(path(), FileIO::eRead);
    in.setFailed();
    EXPECT_TRUE(in.failed());
    EXPECT_FALSE(in.good());
    std::uint32_t value = 0;
    in >> value;
    EXPECT_EQ(value, 0u); // nothing was read
    in.clear();
    EXPECT_TRUE(in.good());
    in >> value;
    EXPECT_EQ(value, 5u);
    in >> value;
    EXPECT_EQ(value, 6u);
    EXPECT_TRUE(in.good());
}

TEST_F(FileIOTest, FailedWriteStreamWritesNothingMore) {
    {
        FileIO out(path(), FileIO::eWrite);
        out << std::uint32_t{1};
        out.setFailed();
        out << std::uint32_t{2} << String("more");
        EXPECT_FALSE(out.write("x", 1));
    }
    EXPECT_EQ(bytes(), (Bytes{1, 0, 0, 0}));
}

TEST_F(FileIOTest, ReadingFromAWriteStreamFails) {
    FileIO io(path(), FileIO::eWrite);
    std::uint32_t value = 0;
    io >> value;
    EXPECT_TRUE(io.failed());
}

TEST_F(FileIOTest, ReopeningClearsTheFailure) {
    writeBytes({7, 0, 0, 0});
    FileIO io(path(), FileIO::eRead);
    io.setFailed();
    EXPECT_TRUE(io.open(path(), FileIO::eRead));
    EXPECT_TRUE(io.good());
    std::int32_t value = 0;
    io >> value;
    EXPECT_EQ(value, 7);
}

TEST_F(FileIOTest, ObjectReadsBackItsClassName) {
    {
        FileIO out(path(), FileIO::eWrite);
        Object object;
        EventData data;
        object << out;
        data << out;
        EXPECT_TRUE(out.good());
    }
    FileIO in(path(), FileIO::eRead);
    Object object;
    EventData data;
    object >> in;
    data >> in;
    EXPECT_TRUE(in.good());
}

TEST_F(FileIOTest, ObjectWritesItsClassNameAsString) {
    {
        FileIO out(path(), FileIO::eWrite);
        EventDataObject wrapper;
        wrapper << out;
    }
    FileIO in(path(), FileIO::eRead);
    String name;
    in >> name;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(name, "EventDataObject");
}

TEST_F(FileIOTest, ObjectReadOfAnotherClassNameFails) {
    {
        FileIO out(path(), FileIO::eWrite);
        Object object;
        object << out;
    }
    FileIO in(path(), FileIO::eRead);
    EventData data;
    data >> in;
    EXPECT_TRUE(in.failed());
}

TEST_F(FileIOTest, ObjectReadFromTruncatedFileFails) {
    writeBytes({6, 0, 0, 0, 'O', 'b'});
    FileIO in(path(), FileIO::eRead);
    Object object;
    object >> in;
    EXPECT_TRUE(in.failed());
}
