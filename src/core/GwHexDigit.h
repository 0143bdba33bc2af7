// The value of a hexadecimal digit, for the library's number reading and for the build tools'
// escapes: 0 to 15, or -1 for any other character. Independent of the locale.
#pragma once

inline int gwHexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}
