#include "RcScript.h"
#include "../../src/core/GwHexDigit.h"

#include <cctype>

namespace {

bool plain(unsigned char c) {
    return std::isalnum(c) || c == ' ' || c == '_' || c == '.' || c == ',' || c == ':' ||
           c == '-' || c == '+' || c == '=' || c == '/' || c == '(' || c == ')' || c == '@';
}

} // namespace

RcToken RcScanner::next() {
    RcToken token;
    skipBlanks();
    if (mPos >= mLine.size() || mLine[mPos] == '#')
        return token;
    char c = mLine[mPos];
    if (c == '=') {
        ++mPos;
        token.kind = RcToken::equals;
    } else if (c == '"') {
        ++mPos;
        token.kind = readText(token.text) ? RcToken::quoted : RcToken::bad;
    } else if (std::isdigit(static_cast<unsigned char>(c)) || c == '-' || c == '+') {
        readNumber(token);
    } else if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
        token.kind = RcToken::word;
        while (mPos < mLine.size() &&
               (std::isalnum(static_cast<unsigned char>(mLine[mPos])) || mLine[mPos] == '_'))
            token.text += mLine[mPos++];
    } else {
        token.kind = RcToken::bad;
        error = std::string("unexpected character '") + c + "'";
    }
    return token;
}

void RcScanner::skipBlanks() {
    while (mPos < mLine.size() && (mLine[mPos] == ' ' || mLine[mPos] == '\t'))
        ++mPos;
}

bool RcScanner::readText(std::string& text) {
    while (mPos < mLine.size()) {
        char c = mLine[mPos++];
        if (c == '"')
            return true;
        if (c != '\\') {
            text += c;
            continue;
        }
        if (mPos >= mLine.size())
            break;
        char escape = mLine[mPos++];
        switch (escape) {
        case '"':
        case '\\':
            text += escape;
            break;
        case 'n':
            text += '\n';
            break;
        case 'r':
            text += '\r';
            break;
        case 't':
            text += '\t';
            break;
        case 'x': {
            int high = mPos < mLine.size() ? gwHexDigit(mLine[mPos]) : -1;
            int low = mPos + 1 < mLine.size() ? gwHexDigit(mLine[mPos + 1]) : -1;
            if (high < 0 || low < 0) {
                error = "\\x needs two hexadecimal digits";
                return false;
            }
            mPos += 2;
            if (high == 0 && low == 0) {
                error = "a 0 byte (\\x00) cannot be part of a text";
                return false;
            }
            text += static_cast<char>(high * 16 + low);
            break;
        }
        default:
            error = std::string("unknown escape \\") + escape;
            return false;
        }
    }
    error = "missing closing quote";
    return false;
}

void RcScanner::readNumber(RcToken& token) {
    std::size_t start = mPos;
    while (mPos < mLine.size() && (std::isalnum(static_cast<unsigned char>(mLine[mPos])) ||
                                   mLine[mPos] == '-' || mLine[mPos] == '+'))
        ++mPos;
    std::string spelled = mLine.substr(start, mPos - start);
    token.text = spelled;
    std::string digits = spelled;
    int base = 10;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        digits = digits.substr(2);
        base = 16;
    }
    if (digits.empty() || digits[0] == '-' || digits[0] == '+') {
        token.kind = RcToken::bad;
        error = (!spelled.empty() && spelled[0] == '-') ? "number " + spelled + " is out of range"
                                                        : "'" + spelled + "' is not a number";
        return;
    }
    unsigned long long value = 0;
    for (char c : digits) {
        int digit = gwHexDigit(c);
        if (digit < 0 || digit >= base) {
            token.kind = RcToken::bad;
            error = "'" + spelled + "' is not a number";
            return;
        }
        if (value > 0xFFFFFFFFull)
            token.overflow = true;
        else
            value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
    }
    token.kind = RcToken::number;
    token.value = value;
}

bool RcLineReader::read(std::string const& text) {
    std::size_t start = 0;
    mLineNumber = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        ++mLineNumber;
        RcScanner scanner(line);
        RcToken first = scanner.next();
        if (first.kind == RcToken::bad)
            return fail(scanner.error);
        if (first.kind != RcToken::end && !statement(scanner, first))
            return false;
        start = end + 1;
    }
    return finish();
}

bool RcLineReader::failAt(int line, std::string const& text) {
    mMessages.push_back({line, text, false});
    return false;
}

void RcLineReader::warn(int line, std::string const& text) {
    mMessages.push_back({line, text, true});
}

bool RcLineReader::number(RcScanner& scanner, std::string const& keyword, unsigned long long low,
                          unsigned long long high, unsigned& value) {
    RcToken token = scanner.next();
    if (token.kind == RcToken::bad)
        return fail(scanner.error);
    if (token.kind != RcToken::number)
        return fail("expected a number after '" + keyword + "'");
    if (token.overflow || token.value < low || token.value > high)
        return fail("number " + token.text + " is out of range (" + std::to_string(low) + " to " +
                    std::to_string(high) + ")");
    value = static_cast<unsigned>(token.value);
    return true;
}

bool RcLineReader::endOfLine(RcScanner& scanner) {
    RcToken token = scanner.next();
    if (token.kind == RcToken::end)
        return true;
    return fail(token.kind == RcToken::bad ? scanner.error : "unexpected text after the statement");
}

std::string rcBytes16(unsigned value) {
    std::string bytes;
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>((value >> 8) & 0xFF);
    return bytes;
}

std::string rcScriptQuoted(std::string const& bytes, bool binary) {
    std::string text = "\"";
    for (char c : bytes) {
        auto byte = static_cast<unsigned char>(c);
        if (!binary && plain(byte)) {
            text += c;
        } else {
            text += '\\';
            text += static_cast<char>('0' + ((byte >> 6) & 7));
            text += static_cast<char>('0' + ((byte >> 3) & 7));
            text += static_cast<char>('0' + (byte & 7));
        }
    }
    return text + "\"";
}

std::string rcScriptHeader(std::string const& what, std::string const& tool,
                           std::string const& source) {
    std::string name = source;
    for (std::size_t at; (at = name.find("*/")) != std::string::npos;)
        name.replace(at, 2, "* /");
    return "/* " + what + " written by " + tool + " from " + name +
           ". Edit the source, not this file. */\n";
}
