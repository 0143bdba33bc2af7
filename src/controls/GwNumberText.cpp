#include "GwNumberText.h"
#include "../core/GwHexDigit.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

namespace GwNumberText {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool startsWithNoCase(std::string_view text, std::size_t at, std::string_view word) {
    if (text.size() - at < word.size())
        return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (lower(text[at + i]) != word[i])
            return false;
    }
    return true;
}

// White space and an optional sign; returns the position after them.
std::size_t skipSpaceAndSign(std::string_view text, bool& negative) {
    std::size_t at = 0;
    while (at < text.size() && isSpace(text[at]))
        ++at;
    negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        negative = text[at] == '-';
        ++at;
    }
    return at;
}

// The extent of the number that strtod reads at the start of `text` (its sign already
// taken): digits with an optional point, then an exponent only when it is complete.
// Hexadecimal numbers (after their 0x) have a binary exponent after "p".
std::size_t numberLength(std::string_view text, bool hex) {
    auto digit = [hex](char c) { return hex ? gwHexDigit(c) >= 0 : isDigit(c); };
    std::size_t at = 0;
    while (at < text.size() && digit(text[at]))
        ++at;
    if (at < text.size() && text[at] == '.') {
        ++at;
        while (at < text.size() && digit(text[at]))
            ++at;
    }
    char const mark = hex ? 'p' : 'e';
    if (at < text.size() && lower(text[at]) == mark) {
        std::size_t exponent = at + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        if (exponent < text.size() && isDigit(text[exponent])) {
            at = exponent;
            while (at < text.size() && isDigit(text[at]))
                ++at;
        }
    }
    return at;
}

// The power of the base (ten, or two for hexadecimal numbers) of the leading digit of a
// number that from_chars reported as out of range: positive for an overflow, negative for an
// underflow.
long long magnitude(std::string_view number, bool hex) {
    auto digit = [hex](char c) { return hex ? gwHexDigit(c) >= 0 : isDigit(c); };
    long long const digitPower = hex ? 4 : 1;
    std::size_t at = 0;
    long long leading = 0; // digits before the point, leading zeros left out
    long long zerosAfterPoint = 0;
    bool seenNonZero = false;
    while (at < number.size() && digit(number[at])) {
        if (number[at] != '0' || seenNonZero) {
            seenNonZero = true;
            ++leading;
        }
        ++at;
    }
    if (at < number.size() && number[at] == '.') {
        ++at;
        while (!seenNonZero && at < number.size() && number[at] == '0') {
            ++zerosAfterPoint;
            ++at;
        }
        while (at < number.size() && digit(number[at]))
            ++at;
    }
    long long exponent = 0;
    if (at < number.size()) { // the exponent mark
        ++at;
        bool negative = false;
        if (at < number.size() && (number[at] == '+' || number[at] == '-')) {
            negative = number[at] == '-';
            ++at;
        }
        while (at < number.size() && isDigit(number[at])) {
            if (exponent < 1000000000)
                exponent = exponent * 10 + (number[at] - '0');
            ++at;
        }
        if (negative)
            exponent = -exponent;
    }
    return (leading > 0 ? digitPower * (leading - 1) : -digitPower * (zerosAfterPoint + 1)) +
           exponent;
}

// One parsed conversion of a format.
struct Conversion {
    bool leftAlign = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zeroPad = false;
    int width = 0;
    int precision = -1; // none given
    char type = 0;      // d i o u x X e E f F g G; 0 for a format without conversion
    std::size_t begin = 0;
    std::size_t end = 0;
};

int const kMaxField = 255;

bool isIntegerType(char type) {
    return std::strchr("diouxX", type) != nullptr;
}

bool isFloatingType(char type) {
    return std::strchr("eEfFgG", type) != nullptr;
}

// Reads a run of digits as a field width or precision; false when it exceeds kMaxField.
bool readField(std::string_view format, std::size_t& at, int& value) {
    value = 0;
    while (at < format.size() && isDigit(format[at])) {
        value = value * 10 + (format[at] - '0');
        if (value > kMaxField)
            return false;
        ++at;
    }
    return true;
}

// Finds the one conversion of an applicable format; false for a format that is not one.
bool parseFormat(std::string_view format, Conversion& found) {
    found = Conversion{};
    bool seen = false;
    std::size_t at = 0;
    while (at < format.size()) {
        if (format[at] != '%') {
            ++at;
            continue;
        }
        std::size_t const start = at++;
        if (at < format.size() && format[at] == '%') {
            ++at;
            continue;
        }
        if (seen)
            return false;
        Conversion c;
        c.begin = start;
        for (; at < format.size(); ++at) {
            char const flag = format[at];
            if (flag == '-')
                c.leftAlign = true;
            else if (flag == '+')
                c.plus = true;
            else if (flag == ' ')
                c.space = true;
            else if (flag == '#')
                c.alternate = true;
            else if (flag == '0')
                c.zeroPad = true;
            else
                break;
        }
        if (!readField(format, at, c.width))
            return false;
        if (at < format.size() && format[at] == '.') {
            ++at;
            if (!readField(format, at, c.precision))
                return false;
        }
        if (at < format.size() && format[at] == 'l')
            ++at;
        if (at >= format.size())
            return false;
        char const type = format[at++];
        if (!isIntegerType(type) && !isFloatingType(type))
            return false;
        c.type = type;
        c.end = at;
        found = c;
        seen = true;
    }
    return true;
}

// Bounded output: characters beyond the capacity are counted but not stored.
class Output {
public:
    Output(char* buffer, std::size_t capacity) : mBuffer(buffer), mCapacity(capacity) {}
    void put(char c) {
        if (mLength < mCapacity)
            mBuffer[mLength] = c;
        ++mLength;
    }
    void put(std::string_view text) {
        for (char c : text)
            put(c);
    }
    void repeat(char c, int count) {
        for (int i = 0; i < count; ++i)
            put(c);
    }
    std::size_t length() const { return mLength; }

private:
    char* mBuffer;
    std::size_t mCapacity;
    std::size_t mLength = 0;
};

// Literal text of the format with "%%" turned into "%".
void putLiteral(Output& out, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        out.put(text[i]);
        if (text[i] == '%' && i + 1 < text.size() && text[i + 1] == '%')
            ++i;
    }
}

// Sign or prefix, zeros, body, with the field padded to the width.
void putField(Output& out, Conversion const& c, std::string_view prefix, int zeros,
              std::string_view body, bool zeroPadAllowed) {
    int const length = static_cast<int>(prefix.size() + body.size()) + zeros;
    int const padding = c.width > length ? c.width - length : 0;
    if (c.leftAlign) {
        out.put(prefix);
        out.repeat('0', zeros);
        out.put(body);
        out.repeat(' ', padding);
    } else if (c.zeroPad && zeroPadAllowed) {
        out.put(prefix);
        out.repeat('0', zeros + padding);
        out.put(body);
    } else {
        out.repeat(' ', padding);
        out.put(prefix);
        out.repeat('0', zeros);
        out.put(body);
    }
}

std::int32_t toWhole(Number value) {
    return value.isFloating ? truncate(value.floatingValue) : value.wholeValue;
}

void putInteger(Output& out, Conversion const& c, std::int32_t value) {
    char digits[40];
    int count = 0;
    char prefix[3] = {};
    int prefixLength = 0;
    bool const isSigned = c.type == 'd' || c.type == 'i';
    std::uint32_t magnitude;
    if (isSigned) {
        bool const negative = value < 0;
        magnitude =
            negative ? 0u - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
        if (negative)
            prefix[prefixLength++] = '-';
        else if (c.plus)
            prefix[prefixLength++] = '+';
        else if (c.space)
            prefix[prefixLength++] = ' ';
    } else {
        magnitude = static_cast<std::uint32_t>(value);
    }
    unsigned const base = c.type == 'o' ? 8 : (c.type == 'x' || c.type == 'X') ? 16 : 10;
    char const* const symbols = c.type == 'X' ? "0123456789ABCDEF" : "0123456789abcdef";
    char reversed[40];
    for (std::uint32_t rest = magnitude; rest != 0; rest /= base)
        reversed[count++] = symbols[rest % base];
    for (int i = 0; i < count; ++i)
        digits[i] = reversed[count - 1 - i];
    int const precision = c.precision < 0 ? 1 : c.precision;
    int zeros = precision > count ? precision - count : 0;
    if (c.alternate && c.type == 'o' && zeros == 0 && (count == 0 || digits[0] != '0'))
        zeros = 1;
    if (c.alternate && (c.type == 'x' || c.type == 'X') && magnitude != 0) {
        prefix[prefixLength++] = '0';
        prefix[prefixLength++] = c.type;
    }
    putField(out, c, std::string_view(prefix, static_cast<std::size_t>(prefixLength)), zeros,
             std::string_view(digits, static_cast<std::size_t>(count)), c.precision < 0);
}

// The digits of |value| in fixed or scientific style with the precision (value finite).
std::size_t toChars(char* buffer, std::size_t size, double value, bool scientific, int precision) {
    auto const result = std::to_chars(
        buffer, buffer + size, value,
        scientific ? std::chars_format::scientific : std::chars_format::fixed, precision);
    return result.ec == std::errc() ? static_cast<std::size_t>(result.ptr - buffer) : 0;
}

// Drops trailing zeros of the fraction, and the point when no fraction is left.
std::size_t trimFraction(char* text, std::size_t length) {
    char* exponent = static_cast<char*>(std::memchr(text, 'e', length));
    std::size_t const mantissaEnd =
        exponent != nullptr ? static_cast<std::size_t>(exponent - text) : length;
    if (std::memchr(text, '.', mantissaEnd) == nullptr)
        return length;
    std::size_t cut = mantissaEnd;
    while (cut > 0 && text[cut - 1] == '0')
        --cut;
    if (cut > 0 && text[cut - 1] == '.')
        --cut;
    std::memmove(text + cut, text + mantissaEnd, length - mantissaEnd);
    return cut + (length - mantissaEnd);
}

// Puts the point into a result of precision 0 (the # flag): "3" -> "3.", "3e+00" -> "3.e+00".
std::size_t forcePoint(char* text, std::size_t length, std::size_t size) {
    if (std::memchr(text, '.', length) != nullptr || length + 1 > size)
        return length;
    char* exponent = static_cast<char*>(std::memchr(text, 'e', length));
    std::size_t const at = exponent != nullptr ? static_cast<std::size_t>(exponent - text) : length;
    std::memmove(text + at + 1, text + at, length - at);
    text[at] = '.';
    return length + 1;
}

void putFloating(Output& out, Conversion const& c, double value) {
    bool const upper = c.type == 'E' || c.type == 'F' || c.type == 'G';
    char prefix[2] = {};
    std::size_t prefixLength = 0;
    if (std::signbit(value))
        prefix[prefixLength++] = '-';
    else if (c.plus)
        prefix[prefixLength++] = '+';
    else if (c.space)
        prefix[prefixLength++] = ' ';
    std::string_view const sign(prefix, prefixLength);
    if (!std::isfinite(value)) {
        char const* word = std::isnan(value) ? (upper ? "NAN" : "nan") : (upper ? "INF" : "inf");
        putField(out, c, sign, 0, word, false);
        return;
    }
    double const magnitude = std::fabs(value);
    // 309 integer digits, a point, 255 decimals and an exponent fit easily.
    char body[700];
    std::size_t length = 0;
    char const type = lower(c.type);
    int const precision = c.precision < 0 ? 6 : c.precision;
    if (type == 'f') {
        length = toChars(body, sizeof body, magnitude, false, precision);
    } else if (type == 'e') {
        length = toChars(body, sizeof body, magnitude, true, precision);
    } else {
        int const significant = precision == 0 ? 1 : precision;
        // The exponent that the e style with significant - 1 decimals would show.
        std::size_t const probe = toChars(body, sizeof body, magnitude, true, significant - 1);
        char const* e = static_cast<char const*>(std::memchr(body, 'e', probe));
        int exponent = 0;
        if (e != nullptr)
            std::from_chars(e + (e[1] == '+' ? 2 : 1), body + probe, exponent);
        if (significant > exponent && exponent >= -4)
            length = toChars(body, sizeof body, magnitude, false, significant - 1 - exponent);
        else
            length = probe;
        if (!c.alternate)
            length = trimFraction(body, length);
    }
    if (c.alternate)
        length = forcePoint(body, length, sizeof body);
    if (upper) {
        for (std::size_t i = 0; i < length; ++i) {
            if (body[i] == 'e')
                body[i] = 'E';
        }
    }
    putField(out, c, sign, 0, std::string_view(body, length), true);
}

} // namespace

std::int32_t truncate(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= 2147483647.0)
        return std::numeric_limits<std::int32_t>::max();
    if (value <= -2147483648.0)
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(value);
}

Kind classify(std::string_view format) {
    if (format.find("ld") != std::string_view::npos || format.find("lx") != std::string_view::npos)
        return format.find("ld") != std::string_view::npos ? Kind::Decimal : Kind::Hex;
    if (format.find("le") != std::string_view::npos ||
        format.find("lf") != std::string_view::npos || format.find("lg") != std::string_view::npos)
        return Kind::Floating;
    return Kind::None;
}

LongResult parseLong(std::string_view text) {
    bool negative = false;
    std::size_t at = skipSpaceAndSign(text, negative);
    if (at >= text.size() || !isDigit(text[at]))
        return {0, false};
    // Accumulated as a negative number, which reaches the 32-bit minimum.
    long long const limit = negative ? 2147483648LL : 2147483647LL;
    long long magnitude = 0;
    for (; at < text.size() && isDigit(text[at]); ++at) {
        magnitude = magnitude * 10 + (text[at] - '0');
        if (magnitude > limit)
            magnitude = limit + 1; // keeps reading the digits, stays saturated
    }
    if (magnitude > limit)
        return {negative ? std::numeric_limits<std::int32_t>::min()
                         : std::numeric_limits<std::int32_t>::max(),
                true};
    return {static_cast<std::int32_t>(negative ? -magnitude : magnitude), true};
}

std::uint32_t parseHex(std::string_view text) {
    bool negative = false;
    std::size_t at = skipSpaceAndSign(text, negative);
    // "0x" counts as a prefix only when a hexadecimal digit follows ("0xg" reads as 0).
    if (at + 2 < text.size() && text[at] == '0' && (text[at + 1] == 'x' || text[at + 1] == 'X') &&
        gwHexDigit(text[at + 2]) >= 0)
        at += 2;
    std::uint64_t value = 0;
    bool overflow = false;
    for (; at < text.size() && gwHexDigit(text[at]) >= 0; ++at) {
        value = value * 16 + static_cast<std::uint64_t>(gwHexDigit(text[at]));
        if (value > 0xFFFFFFFFull) {
            overflow = true;
            value = 0xFFFFFFFFull;
        }
    }
    if (overflow)
        return 0xFFFFFFFFu;
    auto const result = static_cast<std::uint32_t>(value);
    return negative ? 0u - result : result;
}

DoubleResult parseDouble(std::string_view text) {
    bool negative = false;
    std::size_t at = skipSpaceAndSign(text, negative);
    double const sign = negative ? -1.0 : 1.0;
    if (startsWithNoCase(text, at, "inf"))
        return {sign * std::numeric_limits<double>::infinity(), true};
    if (startsWithNoCase(text, at, "nan")) {
        double const nan = std::numeric_limits<double>::quiet_NaN();
        return {negative ? -nan : nan, true};
    }
    if (at >= text.size())
        return {0.0, false};
    char const* const begin = text.data() + at;
    char const* const end = text.data() + text.size();
    bool const hex = end - begin > 2 && begin[0] == '0' && (begin[1] == 'x' || begin[1] == 'X') &&
                     (gwHexDigit(begin[2]) >= 0 ||
                      (begin[2] == '.' && end - begin > 3 && gwHexDigit(begin[3]) >= 0));
    char const* const digits = hex ? begin + 2 : begin;
    if (!hex && !isDigit(*digits) && !(*digits == '.' && digits + 1 < end && isDigit(digits[1])))
        return {0.0, false};
    // from_chars is given exactly what strtod reads, so that both stop at the same place.
    std::string_view const number(
        digits,
        numberLength(std::string_view(digits, static_cast<std::size_t>(end - digits)), hex));
    double value = 0.0;
    auto const result = std::from_chars(number.data(), number.data() + number.size(), value,
                                        hex ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range)
        value = magnitude(number, hex) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    else if (result.ec != std::errc())
        return {0.0, false}; // not reached: a digit or a point and a digit starts the number
    return {sign * value, true};
}

bool applicable(std::string_view format) {
    Conversion conversion;
    return parseFormat(format, conversion);
}

int format(char* out, std::size_t capacity, std::string_view format, Number value) {
    Conversion c;
    if (out == nullptr || capacity == 0 || !parseFormat(format, c))
        return -1;
    // Written into a scratch buffer first, so that a result that does not fit leaves `out`
    // as it was.
    char scratch[2048];
    Output text(scratch, sizeof scratch);
    if (c.type == 0) {
        putLiteral(text, format);
    } else {
        putLiteral(text, format.substr(0, c.begin));
        if (isIntegerType(c.type))
            putInteger(text, c, toWhole(value));
        else
            putFloating(text, c,
                        value.isFloating ? value.floatingValue
                                         : static_cast<double>(value.wholeValue));
        putLiteral(text, format.substr(c.end));
    }
    if (text.length() >= capacity || text.length() >= sizeof scratch)
        return -1;
    std::memcpy(out, scratch, text.length());
    out[text.length()] = '\0';
    return static_cast<int>(text.length());
}

std::size_t decimalComma(char* out, std::size_t capacity, std::string_view text) {
    std::size_t const length = text.size() < capacity ? text.size() : capacity - 1;
    std::memcpy(out, text.data(), length);
    out[length] = '\0';
    if (char* comma = static_cast<char*>(std::memchr(out, ',', length)))
        *comma = '.';
    return length;
}

} // namespace GwNumberText
