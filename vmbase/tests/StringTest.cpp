// Tests of String.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <utility>

#include "VmBase.h"

TEST(StringTest, DefaultIsEmptyWithNonNullText) {
    String s;
    EXPECT_TRUE(s.empty());
    EXPECT_EQ(s.size(), 0u);
    ASSERT_NE(s.c_str(), nullptr);
    EXPECT_STREQ(s.c_str(), "");
}

TEST(StringTest, NullTextGivesEmptyString) {
    String fromNull(nullptr);
    EXPECT_TRUE(fromNull.empty());
    EXPECT_STREQ(fromNull.c_str(), "");

    String fromNullWithLength(nullptr, 5);
    EXPECT_TRUE(fromNullWithLength.empty());
    EXPECT_STREQ(fromNullWithLength.c_str(), "");
}

TEST(StringTest, ConstructsFromText) {
    String s("hello");
    EXPECT_EQ(s.size(), 5u);
    EXPECT_FALSE(s.empty());
    EXPECT_STREQ(s.c_str(), "hello");
}

TEST(StringTest, OwnsACopyOfItsText) {
    char buffer[] = "abc";
    String s(buffer);
    buffer[0] = 'x';
    EXPECT_STREQ(s.c_str(), "abc");
    EXPECT_NE(s.c_str(), buffer);
}

TEST(StringTest, LengthConstructorTakesAPrefix) {
    String s("hello world", 5);
    EXPECT_EQ(s.size(), 5u);
    EXPECT_STREQ(s.c_str(), "hello");
    EXPECT_EQ(s.c_str()[5], '\0');
}

TEST(StringTest, EmbeddedZeroBytesAreKept) {
    String s("a\0b\0c", 5);
    EXPECT_EQ(s.size(), 5u);
    EXPECT_EQ(s[0], 'a');
    EXPECT_EQ(s[1], '\0');
    EXPECT_EQ(s[2], 'b');
    EXPECT_EQ(s[4], 'c');
    EXPECT_EQ(s.c_str()[5], '\0');
    EXPECT_EQ(std::memcmp(s.c_str(), "a\0b\0c", 6), 0);
}

TEST(StringTest, EmbeddedZeroBytesTakePartInComparison) {
    String withZero("a\0b", 3);
    String other("a\0c", 3);
    String prefix("a");
    EXPECT_FALSE(withZero == other);
    EXPECT_FALSE(withZero == prefix);
    EXPECT_FALSE(withZero == "a");
    EXPECT_TRUE(withZero == String("a\0b", 3));
    EXPECT_TRUE(prefix < withZero);
    EXPECT_TRUE(withZero < other);
}

TEST(StringTest, CopyIsIndependent) {
    String original("text");
    String copy(original);
    EXPECT_EQ(copy, original);
    EXPECT_NE(copy.c_str(), original.c_str());
    copy[0] = 'n';
    EXPECT_STREQ(original.c_str(), "text");
    EXPECT_STREQ(copy.c_str(), "next");
}

TEST(StringTest, MoveLeavesSourceEmptyAndUsable) {
    String source("moved text");
    char const* text = source.c_str();
    String target(std::move(source));
    EXPECT_STREQ(target.c_str(), "moved text");
    EXPECT_EQ(target.c_str(), text);
    // NOLINTBEGIN(bugprone-use-after-move)
    EXPECT_TRUE(source.empty());
    ASSERT_NE(source.c_str(), nullptr);
    EXPECT_STREQ(source.c_str(), "");
    source = "reused";
    EXPECT_STREQ(source.c_str(), "reused");
    // NOLINTEND(bugprone-use-after-move)
}

TEST(StringTest, MoveAssignmentTakesTheText) {
    String target("old");
    String source("new");
    target = std::move(source);
    EXPECT_STREQ(target.c_str(), "new");
    EXPECT_TRUE(source.empty()); // NOLINT(bugprone-use-after-move)
}

TEST(StringTest, CopyAssignmentReplacesText) {
    String target("a longer old text");
    String source("new");
    target = source;
    EXPECT_STREQ(target.c_str(), "new");
    EXPECT_EQ(target.size(), 3u);
    EXPECT_STREQ(source.c_str(), "new");
}

TEST(StringTest, SelfAssignmentKeepsText) {
    String s("same");
    String& alias = s;
    s = alias;
    EXPECT_STREQ(s.c_str(), "same");
    s = std::move(alias);
    EXPECT_STREQ(s.c_str(), "same");
}

TEST(StringTest, AssignmentFromOwnTextWorks) {
    String s("abcdef");
    s = s.c_str() + 2;
    EXPECT_STREQ(s.c_str(), "cdef");
}

TEST(StringTest, AssignmentFromTextAndNull) {
    String s("before");
    s = "after";
    EXPECT_STREQ(s.c_str(), "after");
    s = static_cast<char const*>(nullptr);
    EXPECT_TRUE(s.empty());
    EXPECT_STREQ(s.c_str(), "");
}

TEST(StringTest, EqualityWithStringAndText) {
    String s("abc");
    EXPECT_TRUE(s == String("abc"));
    EXPECT_FALSE(s != String("abc"));
    EXPECT_TRUE(s != String("abd"));
    EXPECT_TRUE(s != String("ab"));
    EXPECT_TRUE(s == "abc");
    EXPECT_TRUE(s != "abcd");
    EXPECT_FALSE(s == "ab");
}

TEST(StringTest, EmptyStringEqualsNullAndEmptyText) {
    String empty;
    EXPECT_TRUE(empty == "");
    EXPECT_TRUE(empty == static_cast<char const*>(nullptr));
    EXPECT_TRUE(empty == String(""));
    EXPECT_FALSE(String("x") == static_cast<char const*>(nullptr));
}

TEST(StringTest, LessThanIsByteWiseUnsigned) {
    EXPECT_TRUE(String("abc") < String("abd"));
    EXPECT_FALSE(String("abd") < String("abc"));
    EXPECT_FALSE(String("abc") < String("abc"));
    // 0xE9 sorts after every ASCII byte, whatever the signedness of char.
    EXPECT_TRUE(String("z") < String("\xE9"));
    EXPECT_FALSE(String("\xE9") < String("z"));
}

TEST(StringTest, PrefixIsLessThanLongerString) {
    EXPECT_TRUE(String("ab") < String("abc"));
    EXPECT_FALSE(String("abc") < String("ab"));
    EXPECT_TRUE(String() < String("a"));
    EXPECT_FALSE(String() < String());
}

TEST(StringTest, ConcatenationOperators) {
    String hello("hello");
    String world(" world");
    EXPECT_STREQ((hello + world).c_str(), "hello world");
    EXPECT_STREQ((hello + "!").c_str(), "hello!");
    EXPECT_STREQ(("say " + hello).c_str(), "say hello");
    EXPECT_STREQ((hello + static_cast<char const*>(nullptr)).c_str(), "hello");
    EXPECT_STREQ((static_cast<char const*>(nullptr) + hello).c_str(), "hello");
    EXPECT_STREQ((String() + String()).c_str(), "");
    EXPECT_STREQ(hello.c_str(), "hello");
}

TEST(StringTest, ConcatenationKeepsEmbeddedZeroBytes) {
    String left("a\0", 2);
    String right("\0b", 2);
    String joined = left + right;
    EXPECT_EQ(joined.size(), 4u);
    EXPECT_EQ(joined, String("a\0\0b", 4));
}

TEST(StringTest, AppendOperators) {
    String s("ab");
    s += String("cd");
    EXPECT_STREQ(s.c_str(), "abcd");
    s += "ef";
    EXPECT_STREQ(s.c_str(), "abcdef");
    s += 'g';
    EXPECT_STREQ(s.c_str(), "abcdefg");
    EXPECT_EQ(s.size(), 7u);
    s += static_cast<char const*>(nullptr);
    EXPECT_STREQ(s.c_str(), "abcdefg");
    s += '\0';
    EXPECT_EQ(s.size(), 8u);
    EXPECT_EQ(s[7], '\0');
}

TEST(StringTest, AppendingToItselfDoublesTheText) {
    String s("ab");
    s += s;
    EXPECT_STREQ(s.c_str(), "abab");
    s += s.c_str();
    EXPECT_STREQ(s.c_str(), "abababab");
}

TEST(StringTest, ManySingleCharacterAppends) {
    String s;
    for (int i = 0; i < 1000; ++i) {
        s += static_cast<char>('a' + i % 26);
    }
    EXPECT_EQ(s.size(), 1000u);
    EXPECT_EQ(s[0], 'a');
    EXPECT_EQ(s[25], 'z');
    EXPECT_EQ(s[999], static_cast<char>('a' + 999 % 26));
    EXPECT_EQ(std::strlen(s.c_str()), 1000u);
}

TEST(StringTest, FindLocatesSubstrings) {
    String s("abcabc");
    EXPECT_EQ(s.find(String("bc")), 1u);
    EXPECT_EQ(s.find(String("bc"), 2), 4u);
    EXPECT_EQ(s.find(String("bc"), 5), String::npos);
    EXPECT_EQ(s.find(String("abcabc")), 0u);
    EXPECT_EQ(s.find(String("abcabcd")), String::npos);
    EXPECT_EQ(s.find(String("x")), String::npos);
}

TEST(StringTest, FindOfEmptyNeedleIsPosUpToSize) {
    String s("abc");
    EXPECT_EQ(s.find(String()), 0u);
    EXPECT_EQ(s.find(String(), 2), 2u);
    EXPECT_EQ(s.find(String(), 3), 3u);
    EXPECT_EQ(s.find(String(), 4), String::npos);
    EXPECT_EQ(String().find(String()), 0u);
}

TEST(StringTest, FindCharacter) {
    String s("hello");
    EXPECT_EQ(s.find('l'), 2u);
    EXPECT_EQ(s.find('l', 3), 3u);
    EXPECT_EQ(s.find('l', 4), String::npos);
    EXPECT_EQ(s.find('z'), String::npos);
    EXPECT_EQ(s.find('h', 100), String::npos);
}

TEST(StringTest, FindSeesEmbeddedZeroBytes) {
    String s("ab\0cd", 5);
    EXPECT_EQ(s.find('\0'), 2u);
    EXPECT_EQ(s.find('d'), 4u);
    EXPECT_EQ(s.find(String("\0c", 2)), 2u);
}

TEST(StringTest, FindFirstOfSearchesForwards) {
    String s("path/to\\file");
    String separators("/\\");
    EXPECT_EQ(s.findFirstOf(separators), 4u);
    EXPECT_EQ(s.findFirstOf(separators, 5), 7u);
    EXPECT_EQ(s.findFirstOf(separators, 8), String::npos);
    EXPECT_EQ(s.findFirstOf(String()), String::npos);
    EXPECT_EQ(s.findFirstOf(separators, 100), String::npos);
}

TEST(StringTest, FindLastOfSearchesBackwards) {
    String s("path/to\\file");
    String separators("/\\");
    EXPECT_EQ(s.findLastOf(separators), 7u);
    EXPECT_EQ(s.findLastOf(separators, 7), 7u);
    EXPECT_EQ(s.findLastOf(separators, 6), 4u);
    EXPECT_EQ(s.findLastOf(separators, 3), String::npos);
    EXPECT_EQ(s.findLastOf(separators, 100), 7u);
    EXPECT_EQ(s.findLastOf(String()), String::npos);
    EXPECT_EQ(String().findLastOf(separators), String::npos);
}

TEST(StringTest, FindLastOfIncludesPositionZero) {
    String s("/abc");
    EXPECT_EQ(s.findLastOf(String("/")), 0u);
    EXPECT_EQ(s.findLastOf(String("/"), 0), 0u);
}

TEST(StringTest, SubstrTakesAtMostLenBytes) {
    String s("hello world");
    EXPECT_STREQ(s.substr(6).c_str(), "world");
    EXPECT_STREQ(s.substr(0, 5).c_str(), "hello");
    EXPECT_STREQ(s.substr(6, 100).c_str(), "world");
    EXPECT_STREQ(s.substr(3, 0).c_str(), "");
    EXPECT_EQ(s.substr(4, 3).size(), 3u);
}

TEST(StringTest, SubstrAtOrBeyondTheEndIsEmpty) {
    String s("abc");
    EXPECT_TRUE(s.substr(3).empty());
    EXPECT_TRUE(s.substr(4).empty());
    EXPECT_TRUE(s.substr(String::npos, 2).empty());
    EXPECT_STREQ(s.substr(100).c_str(), "");
}

TEST(StringTest, SubstrKeepsEmbeddedZeroBytes) {
    String s("x\0y\0z", 5);
    String middle = s.substr(1, 3);
    EXPECT_EQ(middle, String("\0y\0", 3));
}

TEST(StringTest, ConstIndexReadsBytesAndZeroPastTheEnd) {
    String const s("ab");
    EXPECT_EQ(s[0], 'a');
    EXPECT_EQ(s[1], 'b');
    EXPECT_EQ(s[2], '\0');
    EXPECT_EQ(s[1000], '\0');
    String const empty;
    EXPECT_EQ(empty[0], '\0');
}

TEST(StringTest, MutableIndexWritesBytes) {
    String s("cat");
    s[0] = 'b';
    s[2] = 'g';
    EXPECT_STREQ(s.c_str(), "bag");
}

TEST(StringTest, MutableIndexPastTheEndThrows) {
    String s("ab");
    EXPECT_THROW(s[2], std::out_of_range);
    EXPECT_THROW(s[100], std::out_of_range);
    String empty;
    EXPECT_THROW(empty[0], std::out_of_range);
    EXPECT_NO_THROW(s[1]);
}

TEST(StringTest, EmptyStringsDoNotShareWritableText) {
    String a;
    String b("x");
    b = a;
    a += 'q';
    EXPECT_STREQ(a.c_str(), "q");
    EXPECT_STREQ(b.c_str(), "");
    EXPECT_STREQ(String().c_str(), "");
}
