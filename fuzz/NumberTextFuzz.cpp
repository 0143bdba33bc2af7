// libFuzzer target for the edit field's number text: any bytes as a format and as a text.
// Properties: nothing is written past the capacity; an applicable format gives what the C
// library's sprintf gives for the same 32-bit value; reading agrees with strtol and strtod.
#include <GwNumberText.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace GwNumberText;

namespace {

// sprintf of the host with the "l" taken out, so that integers are 32 bits wide as on Windows.
bool reference(std::string const& fmt, Number value, std::string& out) {
    std::string plain;
    bool integer = false;
    for (std::size_t i = 0; i < fmt.size(); ++i) {
        if (fmt[i] == '%') {
            std::size_t j = i + 1;
            if (j < fmt.size() && fmt[j] == '%') {
                plain += "%%";
                i = j;
                continue;
            }
            while (j < fmt.size() && std::strchr("-+ #0123456789.", fmt[j]) != nullptr)
                ++j;
            plain.append(fmt, i, j - i);
            if (j < fmt.size() && fmt[j] == 'l')
                ++j;
            if (j >= fmt.size())
                return false;
            integer = std::strchr("diouxX", fmt[j]) != nullptr;
            plain += fmt[j];
            i = j;
            continue;
        }
        plain += fmt[i];
    }
    if (integer && value.isFloating)
        return false; // the double's conversion to a long is checked by the unit tests
    char buffer[4096];
// The reference is the C library's own snprintf run with the format under test, which
// therefore cannot be a literal.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    int n = integer ? std::snprintf(buffer, sizeof buffer, plain.c_str(), value.wholeValue)
                    : std::snprintf(buffer, sizeof buffer, plain.c_str(),
                                    value.isFloating ? value.floatingValue
                                                     : static_cast<double>(value.wholeValue));
#pragma GCC diagnostic pop
    if (n < 0 || static_cast<std::size_t>(n) >= sizeof buffer)
        return false;
    out.assign(buffer, static_cast<std::size_t>(n));
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size < 9)
        return 0;
    std::int32_t whole;
    double floating;
    std::memcpy(&whole, data, 4);
    std::memcpy(&floating, data + 1, 8);
    bool const useFloating = (data[0] & 1) != 0;
    // A NUL can't stand inside a C format: compare only formats without one.
    std::string const text(reinterpret_cast<char const*>(data) + 9, size - 9);
    Number const value = useFloating ? Number::floating(floating) : Number::whole(whole);

    char out[258];
    std::memset(out, 0x5A, sizeof out);
    int const length = format(out, 256, text, value);
    if (out[256] != 0x5A || out[257] != 0x5A)
        __builtin_trap(); // written past the capacity
    if (length >= 0) {
        if (length > 255 || out[length] != '\0' || !applicable(text))
            __builtin_trap();
        std::string expected;
        bool const finite = !value.isFloating || std::isfinite(value.floatingValue);
        if (finite && text.find('\0') == std::string::npos && reference(text, value, expected) &&
            expected != std::string(out, static_cast<std::size_t>(length)))
            __builtin_trap(); // differs from the C library
    }

    // Reading: the same answers as strtol (clamped to 32 bits) and strtod.
    std::string const cText = text.substr(0, text.find('\0'));
    char* end = nullptr;
    long long const wide = std::strtoll(cText.c_str(), &end, 10);
    LongResult const got = parseLong(cText);
    long long const clamped = wide > 2147483647LL    ? 2147483647LL
                              : wide < -2147483648LL ? -2147483648LL
                                                     : wide;
    if (got.parsed != (end != cText.c_str()) || got.value != clamped)
        __builtin_trap();
    double const expectedDouble = std::strtod(cText.c_str(), &end);
    DoubleResult const gotDouble = parseDouble(cText);
    if (gotDouble.parsed != (end != cText.c_str()))
        __builtin_trap();
    if (std::isnan(expectedDouble)
            ? !std::isnan(gotDouble.value)
            : (gotDouble.value != expectedDouble ||
               std::signbit(gotDouble.value) != std::signbit(expectedDouble)))
        __builtin_trap();
    (void)parseHex(text);
    char comma[16];
    decimalComma(comma, sizeof comma, text);
    return 0;
}
