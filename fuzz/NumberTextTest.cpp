// The edit field's number reading and formatting, built for the host: compared with the C
// library of the host in the classic locale, with a 32-bit long as on Windows.
#include <GwNumberText.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

using namespace GwNumberText;

namespace {

std::string formatted(char const* fmt, Number value, std::size_t capacity = 256) {
    char out[1024];
    std::memset(out, '#', sizeof out);
    int length = format(out, capacity, fmt, value);
    if (length < 0)
        return "<refused>";
    EXPECT_EQ(out[length], '\0');
    return std::string(out, static_cast<std::size_t>(length));
}

// The host's sprintf of the same value, the "l" taken out so that the integer is 32 bits wide.
std::string reference(char const* fmt, Number value) {
    std::string plain;
    for (std::size_t i = 0; fmt[i] != '\0'; ++i) {
        if (fmt[i] == 'l' && i > 0 && std::strchr("diouxXeEfFgG", fmt[i + 1]) != nullptr)
            continue;
        plain += fmt[i];
    }
    char out[1024];
    bool integer = false;
    for (char const* p = std::strchr(fmt, '%'); p != nullptr; p = std::strchr(p + 1, '%')) {
        std::size_t span = std::strcspn(p + 1, "diouxXeEfFgG%");
        if (p[1 + span] == '%') {
            p += 1 + span;
            continue;
        }
        integer = std::strchr("diouxX", p[1 + span]) != nullptr;
        break;
    }
// The reference is the C library's own snprintf run with the format under test, which
// therefore cannot be a literal.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    if (integer)
        std::snprintf(out, sizeof out, plain.c_str(), value.wholeValue);
    else
        std::snprintf(out, sizeof out, plain.c_str(), value.floatingValue);
#pragma GCC diagnostic pop
    return out;
}

} // namespace

TEST(NumberText, ClassifiesByTheFirstSubstringFound) {
    EXPECT_EQ(classify("%ld"), Kind::Decimal);
    EXPECT_EQ(classify("%lx"), Kind::Hex);
    EXPECT_EQ(classify("%lx ld"), Kind::Decimal);
    EXPECT_EQ(classify("%.2lf"), Kind::Floating);
    EXPECT_EQ(classify("%le"), Kind::Floating);
    EXPECT_EQ(classify("%lg"), Kind::Floating);
    EXPECT_EQ(classify("%lg %lx"), Kind::Hex);
    EXPECT_EQ(classify("%d"), Kind::None);
    EXPECT_EQ(classify(""), Kind::None);
    EXPECT_EQ(classify("%LX"), Kind::None);
}

TEST(NumberText, ParsesLongLikeStrtolWithThirtyTwoBits) {
    EXPECT_EQ(parseLong("  42abc").value, 42);
    EXPECT_TRUE(parseLong("  42abc").parsed);
    EXPECT_EQ(parseLong("-17").value, -17);
    EXPECT_EQ(parseLong("+5").value, 5);
    EXPECT_FALSE(parseLong("abc").parsed);
    EXPECT_FALSE(parseLong("").parsed);
    EXPECT_FALSE(parseLong("-").parsed);
    EXPECT_FALSE(parseLong("+-1").parsed);
    EXPECT_EQ(parseLong("2147483647").value, 2147483647);
    EXPECT_EQ(parseLong("2147483648").value, 2147483647);
    EXPECT_EQ(parseLong("-2147483648").value, std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(parseLong("-99999999999999999999999").value,
              std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(parseLong("99999999999999999999999").value, 2147483647);
    EXPECT_EQ(parseLong("3,5").value, 3);
    EXPECT_EQ(parseLong("\t\n\v\f\r 8").value, 8);
}

TEST(NumberText, ParsesHexLikeStrtoulWithThirtyTwoBits) {
    EXPECT_EQ(parseHex("zz"), 0u);
    EXPECT_EQ(parseHex("ff"), 255u);
    EXPECT_EQ(parseHex("0xFF"), 255u);
    EXPECT_EQ(parseHex("0x"), 0u);
    EXPECT_EQ(parseHex("0xg"), 0u);
    EXPECT_EQ(parseHex("-1"), 0xFFFFFFFFu);
    EXPECT_EQ(parseHex("-0x10"), 0xFFFFFFF0u);
    EXPECT_EQ(parseHex("ffffffff"), 0xFFFFFFFFu);
    EXPECT_EQ(parseHex("100000000"), 0xFFFFFFFFu);
    EXPECT_EQ(parseHex("-100000000"), 0xFFFFFFFFu);
    EXPECT_EQ(parseHex("  7fffffff"), 0x7FFFFFFFu);
}

TEST(NumberText, ParsesDoubleLikeStrtod) {
    char const* samples[] = {"3",
                             "3.5",
                             "  -2.25e3x",
                             ".5",
                             "5.",
                             "1e",
                             "1e+",
                             "0x1p3",
                             "0x.8",
                             "0x",
                             "0xg",
                             "inf",
                             "-Infinity",
                             "nan",
                             "NaN(12)",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "0x1p99999",
                             "0x1p-99999",
                             "abc",
                             "",
                             "-",
                             "+.e1",
                             "00000.000001e6",
                             "1.7976931348623157e308",
                             "4.9e-324",
                             "2.5e-324",
                             "123456789012345678901234567890"};
    for (char const* text : samples) {
        char* end = nullptr;
        errno = 0;
        double const expected = std::strtod(text, &end);
        DoubleResult const got = parseDouble(text);
        EXPECT_EQ(got.parsed, end != text) << text;
        if (std::isnan(expected)) {
            EXPECT_TRUE(std::isnan(got.value)) << text;
        } else {
            EXPECT_EQ(got.value, expected) << text;
            EXPECT_EQ(std::signbit(got.value), std::signbit(expected)) << text;
        }
    }
}

TEST(NumberText, ReadsTheFullStopWhateverTheProcessLocale) {
    char const* german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(parseDouble("3.5").value, 3.5);
    EXPECT_EQ(formatted("%.2lf", Number::floating(3.5)), "3.50");
    EXPECT_EQ(formatted("%lg", Number::floating(2.5)), "2.5");
    std::setlocale(LC_ALL, "C");
    if (german == nullptr)
        GTEST_SKIP() << "the German locale is not installed: only the classic locale was seen";
}

TEST(NumberText, FormatsLikeSprintf) {
    char const* integerFormats[] = {"%ld",    "%lx",   "%lX",    "%lo",     "%lu",     "%5ld",
                                    "%-5ld|", "%05ld", "%+ld",   "% ld",    "%.3ld",   "%.0ld",
                                    "%#lx",   "%#lo",  "%#.0lo", "%08.3ld", "%-+8ld|", "x=%ld%%",
                                    "%%%ld",  "%i",    "%d",     "%x",      "%+.0ld",  "%# 12.5lx"};
    std::int32_t const integers[] = {
        0, 1, -1, 42, -42, 255, 2147483647, std::numeric_limits<std::int32_t>::min()};
    for (char const* fmt : integerFormats) {
        for (std::int32_t v : integers)
            EXPECT_EQ(formatted(fmt, Number::whole(v)), reference(fmt, Number::whole(v)))
                << fmt << " " << v;
    }
    char const* floatingFormats[] = {
        "%lf",       "%.2lf",    "%le",    "%lg",    "%lE",    "%lG",    "%.0lf",
        "%#.0lf",    "%.0le",    "%#.0le", "%.0lg",  "%#.0lg", "%#lg",   "%10.3lf",
        "%-10.3lf|", "%010.3lf", "%+lf",   "% lf",   "%.10lg", "%.17lg", "%lF",
        "%.1lg",     "%g",       "%#.3lg", "%010lf", "%.255lf"};
    double const doubles[] = {0.0,
                              -0.0,
                              2.5,
                              -2.5,
                              0.5,
                              1e-5,
                              1e-4,
                              123456.0,
                              1234567.0,
                              1e100,
                              1.7976931348623157e308,
                              4.9e-324,
                              0.1,
                              99.995,
                              9.9999995,
                              100.0,
                              1e15};
    for (char const* fmt : floatingFormats) {
        for (double v : doubles) {
            std::string expected = reference(fmt, Number::floating(v));
            if (expected.size() > 255)
                expected = "<refused>";
            EXPECT_EQ(formatted(fmt, Number::floating(v)), expected) << fmt << " " << v;
        }
    }
}

TEST(NumberText, FormatsInfinityAndNanAsTheCLibraryDoes) {
    double const inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(formatted("%lf", Number::floating(inf)), "inf");
    EXPECT_EQ(formatted("%lf", Number::floating(-inf)), "-inf");
    EXPECT_EQ(formatted("%lE", Number::floating(inf)), "INF");
    EXPECT_EQ(formatted("%06lg", Number::floating(inf)), "   inf");
    EXPECT_EQ(formatted("%lg", Number::floating(std::nan(""))), "nan");
}

TEST(NumberText, ConvertsTheValueToWhatTheConversionTakes) {
    EXPECT_EQ(formatted("%ld", Number::floating(2.9)), "2");
    EXPECT_EQ(formatted("%ld", Number::floating(-2.9)), "-2");
    EXPECT_EQ(formatted("%ld", Number::floating(1e20)), "2147483647");
    EXPECT_EQ(formatted("%ld", Number::floating(-1e20)), "-2147483648");
    EXPECT_EQ(formatted("%ld", Number::floating(std::nan(""))), "0");
    EXPECT_EQ(formatted("%lx", Number::whole(-1)), "ffffffff");
    EXPECT_EQ(formatted("%.1lf", Number::whole(7)), "7.0");
}

TEST(NumberText, RefusesFormatsThatCannotBeAppliedSafely) {
    char const* unsafe[] = {"%s",
                            "%n",
                            "%ld %ld",
                            "%",
                            "abc%",
                            "%l",
                            "%lld",
                            "%hd",
                            "%Lf",
                            "%*ld",
                            "%.*lf",
                            "%c",
                            "%p",
                            "%la",
                            "%256ld",
                            "%.256lf",
                            "%99999999999999ld",
                            "%'ld",
                            "%I64d",
                            "%zd",
                            "%-%",
                            "%ld%s",
                            "%1$ld"};
    for (char const* fmt : unsafe) {
        EXPECT_FALSE(applicable(fmt)) << fmt;
        EXPECT_EQ(formatted(fmt, Number::whole(1)), "<refused>") << fmt;
    }
    EXPECT_TRUE(applicable("plain text"));
    EXPECT_TRUE(applicable("100%%"));
    EXPECT_TRUE(applicable("%255ld"));
    EXPECT_EQ(formatted("world", Number::whole(5)), "world");
    EXPECT_EQ(formatted("100%%", Number::whole(5)), "100%");
}

TEST(NumberText, NeverWritesPastTheCapacity) {
    char out[16];
    std::memset(out, 'Z', sizeof out);
    EXPECT_EQ(format(out, 8, "%ld", Number::whole(1234567)), 7);
    EXPECT_STREQ(out, "1234567");
    std::memset(out, 'Z', sizeof out);
    EXPECT_EQ(format(out, 8, "%ld", Number::whole(12345678)), -1);
    EXPECT_EQ(out[0], 'Z'); // nothing written
    EXPECT_EQ(format(out, 0, "%ld", Number::whole(1)), -1);
    EXPECT_EQ(format(nullptr, 8, "%ld", Number::whole(1)), -1);
    // 309 digits before the point: more than the 255 characters a field holds.
    char big[256];
    EXPECT_EQ(format(big, sizeof big, "%lf", Number::floating(1e308)), -1);
    EXPECT_EQ(format(big, sizeof big, "%255ld", Number::whole(1)), 255);
}

TEST(NumberText, ReplacesTheFirstCommaOnly) {
    char out[8];
    EXPECT_EQ(decimalComma(out, sizeof out, "3,5,1"), 5u);
    EXPECT_STREQ(out, "3.5,1");
    EXPECT_EQ(decimalComma(out, sizeof out, "123456789,1"), 7u);
    EXPECT_STREQ(out, "1234567");
    EXPECT_EQ(decimalComma(out, 1, "abc"), 0u);
    EXPECT_STREQ(out, "");
}
