// Numbers read from and written to text the way the C library does in the classic locale
// (strtol, strtoul, strtod and a bounded sprintf of one value), whatever locale the process
// has set, and bounded by the sizes they are given. Platform-neutral: the edit field uses it,
// and the host build tests and fuzzes it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace GwNumberText {

// How the edit field reads a format: the first of "ld" or "lx", then "le", "lf" or "lg"
// found anywhere in it (a plain substring search, literal text included).
enum class Kind { None, Decimal, Hex, Floating };
Kind classify(std::string_view format);

// strtol(text, &end, 10) for a 32-bit long: leading white space, a sign, decimal digits;
// saturates at the 32-bit limits. `parsed` is false when no digit was read (value 0).
struct LongResult {
    std::int32_t value;
    bool parsed;
};
LongResult parseLong(std::string_view text);

// strtoul(text, &end, 16) for a 32-bit unsigned long: white space, a sign (a minus negates),
// an optional 0x or 0X, hexadecimal digits; ULONG_MAX on overflow; 0 when nothing is read.
std::uint32_t parseHex(std::string_view text);

// strtod(text, &end) with the full stop as decimal point: white space, a sign, a decimal or
// hexadecimal number, "inf", "infinity", "nan" or "nan(...)" in any case. Overflow gives an
// infinity, underflow a zero of the number's sign. `parsed` is false when nothing was read.
struct DoubleResult {
    double value;
    bool parsed;
};
DoubleResult parseDouble(std::string_view text);

// A double truncated toward zero into a 32-bit long, held to its range; NaN gives 0 (where a
// plain conversion would be undefined).
std::int32_t truncate(double value);

// The one value to format: a 32-bit long or a double.
struct Number {
    static Number whole(std::int32_t value) { return Number{false, value, 0.0}; }
    static Number floating(double value) { return Number{true, 0, value}; }
    bool isFloating;
    std::int32_t wholeValue;
    double floatingValue;
};

// Whether `format` is one that this formatter applies to a single value: literal text, "%%",
// and at most one conversion made of the flags - + space # 0, a width and a precision of at
// most 255, an optional "l", and one of d i o u x X e E f F g G. Anything else (a second
// conversion, %s, %n, %c, %p, %a, "*", other length modifiers, a lone "%") is refused.
bool applicable(std::string_view format);

// Formats `value` with `format` as sprintf in the classic locale would, into `out` with room
// for `capacity` bytes including the terminating NUL. An integer conversion takes the value
// as a 32-bit long (a double is truncated toward zero and held within the 32-bit range, NaN
// as 0); a floating conversion takes it as a double. Returns the length written; -1, with
// `out` left untouched, when the format is not applicable or the result does not fit.
int format(char* out, std::size_t capacity, std::string_view format, Number value);

// A copy of `text` of at most `capacity - 1` bytes, its first comma replaced by a full stop.
// Returns the length; `out` is always terminated (capacity must be at least 1).
std::size_t decimalComma(char* out, std::size_t capacity, std::string_view text);

} // namespace GwNumberText
