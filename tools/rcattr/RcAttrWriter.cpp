#include "RcAttrWriter.h"

#include <cctype>
#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace {

void put16(std::string& bytes, unsigned value) {
    bytes += static_cast<char>(value & 0xFF);
    bytes += static_cast<char>((value >> 8) & 0xFF);
}

// The 16-bit number whose decimal text is exactly text.
std::optional<unsigned> decimal16(std::string const& text) {
    if (text.empty() || text.size() > 5 || (text.size() > 1 && text[0] == '0'))
        return std::nullopt;
    unsigned value = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + static_cast<unsigned>(c - '0');
    }
    if (value > 0xFFFF)
        return std::nullopt;
    return value;
}

std::string hex16(unsigned value) {
    static char const digits[] = "0123456789ABCDEF";
    std::string text = "0x";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(value >> shift) & 0xF];
    return text;
}

// ---- reading the text form

struct Token {
    enum Kind { end, word, number, quoted, equals, bad } kind = end;
    std::string text;
    unsigned long long value = 0;
    bool overflow = false;
};

// The tokens of one line. Errors are kept in error; the first one ends the line.
class Scanner {
public:
    explicit Scanner(std::string const& line) : mLine(line) {}

    Token next() {
        Token token;
        skipBlanks();
        if (mPos >= mLine.size() || mLine[mPos] == '#')
            return token;
        char c = mLine[mPos];
        if (c == '=') {
            ++mPos;
            token.kind = Token::equals;
        } else if (c == '"') {
            ++mPos;
            token.kind = readText(token.text) ? Token::quoted : Token::bad;
        } else if (std::isdigit(static_cast<unsigned char>(c)) || c == '-' || c == '+') {
            readNumber(token);
        } else if (std::isalpha(static_cast<unsigned char>(c)) || c == '_') {
            token.kind = Token::word;
            while (mPos < mLine.size() &&
                   (std::isalnum(static_cast<unsigned char>(mLine[mPos])) || mLine[mPos] == '_'))
                token.text += mLine[mPos++];
        } else {
            token.kind = Token::bad;
            error = std::string("unexpected character '") + c + "'";
        }
        return token;
    }

    std::string error;

private:
    void skipBlanks() {
        while (mPos < mLine.size() && (mLine[mPos] == ' ' || mLine[mPos] == '\t'))
            ++mPos;
    }

    static int hexDigit(char c) {
        if (c >= '0' && c <= '9')
            return c - '0';
        if (c >= 'a' && c <= 'f')
            return c - 'a' + 10;
        if (c >= 'A' && c <= 'F')
            return c - 'A' + 10;
        return -1;
    }

    bool readText(std::string& text) {
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
                int high = mPos < mLine.size() ? hexDigit(mLine[mPos]) : -1;
                int low = mPos + 1 < mLine.size() ? hexDigit(mLine[mPos + 1]) : -1;
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

    void readNumber(Token& token) {
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
            token.kind = Token::bad;
            error = (!spelled.empty() && spelled[0] == '-')
                        ? "number " + spelled + " is out of range"
                        : "'" + spelled + "' is not a number";
            return;
        }
        unsigned long long value = 0;
        for (char c : digits) {
            int digit = hexDigit(c);
            if (digit < 0 || digit >= base) {
                token.kind = Token::bad;
                error = "'" + spelled + "' is not a number";
                return;
            }
            if (value > 0xFFFFFFFFull)
                token.overflow = true;
            else
                value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
        }
        token.kind = Token::number;
        token.value = value;
    }

    std::string const& mLine;
    std::size_t mPos = 0;
};

class Reader {
public:
    Reader(std::vector<RcAttrResource>& resources, std::vector<RcAttrMessage>& messages)
        : mResources(resources), mMessages(messages) {}

    bool line(int number, std::string const& text) {
        mLineNumber = number;
        Scanner scanner(text);
        Token first = scanner.next();
        if (first.kind == Token::end)
            return true;
        if (first.kind == Token::bad)
            return fail(scanner.error);
        if (first.kind == Token::word && isKeyword(first.text))
            return statement(scanner, first.text);
        if (first.kind == Token::word || first.kind == Token::quoted)
            return item(scanner, first);
        return fail("a line begins with a keyword or a key");
    }

    // Checks that are only possible at the end of an entry or of the text.
    bool finish() { return finishEntry(); }

private:
    static bool isKeyword(std::string const& word) {
        return word == "attributes" || word == "dialog" || word == "menu" || word == "control" ||
               word == "entry";
    }

    bool fail(std::string const& text) {
        mMessages.push_back({mLineNumber, text, false});
        return false;
    }

    void warn(int line, std::string const& text) { mMessages.push_back({line, text, true}); }

    // The number after a keyword; false (with an error) when it is missing or out of range.
    bool number(Scanner& scanner, std::string const& keyword, unsigned long long low,
                unsigned long long high, unsigned& value) {
        Token token = scanner.next();
        if (token.kind == Token::bad)
            return fail(scanner.error);
        if (token.kind != Token::number)
            return fail("expected a number after '" + keyword + "'");
        if (token.overflow || token.value < low || token.value > high)
            return fail("number " + token.text + " is out of range (" + std::to_string(low) +
                        " to " + std::to_string(high) + ")");
        value = static_cast<unsigned>(token.value);
        return true;
    }

    bool endOfLine(Scanner& scanner) {
        Token token = scanner.next();
        if (token.kind == Token::end)
            return true;
        if (token.kind == Token::bad)
            return fail(scanner.error);
        return fail("unexpected text after the statement");
    }

    bool statement(Scanner& scanner, std::string const& keyword) {
        if (!finishEntry())
            return false;
        if (keyword == "attributes") {
            unsigned id = 0;
            if (!number(scanner, keyword, 1, 0xFFFF, id) || !endOfLine(scanner))
                return false;
            auto seen = mResourceLines.find(id);
            if (seen != mResourceLines.end())
                return fail("attributes " + std::to_string(id) + " repeat line " +
                            std::to_string(seen->second));
            mResourceLines[id] = mLineNumber;
            mResources.push_back({id, mLineNumber, {}});
            mEntryLines.clear();
            return true;
        }
        if (mResources.empty())
            return fail("'" + keyword + "' before any 'attributes' line");
        unsigned id = 0;
        std::string label;
        if (keyword == "dialog" || keyword == "menu") {
            Token token = scanner.next();
            if (token.kind == Token::end) {
                id = 0xFFFF;
                label = keyword;
            } else if (keyword == "dialog") {
                return fail("unexpected text after 'dialog'");
            } else if (token.kind == Token::bad) {
                return fail(scanner.error);
            } else if (token.kind != Token::number) {
                return fail("expected a position after 'menu'");
            } else if (token.overflow || token.value > 0x7FFE) {
                return fail("menu position " + token.text + " is out of range (0 to 32766)");
            } else {
                id = 0x8000 + static_cast<unsigned>(token.value);
                label = "menu " + std::to_string(token.value);
                if (!endOfLine(scanner))
                    return false;
            }
        } else if (keyword == "control") {
            if (!number(scanner, keyword, 0, 0xFFFE, id) || !endOfLine(scanner))
                return false;
            label = "control " + std::to_string(id);
        } else {
            if (!number(scanner, keyword, 0, 0xFFFF, id) || !endOfLine(scanner))
                return false;
            label = "entry " + hex16(id);
        }
        auto seen = mEntryLines.find(id);
        if (seen != mEntryLines.end())
            warn(mLineNumber, "entry " + hex16(id) + " repeats line " +
                                  std::to_string(seen->second) + "; lookups find the first");
        else
            mEntryLines[id] = mLineNumber;
        RcAttrEntry entry;
        entry.record.id = static_cast<std::uint16_t>(id);
        entry.label = label;
        entry.line = mLineNumber;
        mResources.back().entries.push_back(entry);
        mKeyLines.clear();
        return true;
    }

    bool item(Scanner& scanner, Token const& key) {
        Token equals = scanner.next();
        if (equals.kind == Token::bad)
            return fail(scanner.error);
        if (equals.kind != Token::equals) {
            if (key.kind == Token::word && equals.kind != Token::quoted)
                return fail("unknown keyword '" + key.text + "'");
            return fail("expected '=' after the key");
        }
        if (mResources.empty() || mResources.back().entries.empty())
            return fail("item before any entry");
        if (key.text.empty())
            return fail("empty key");
        Token value = scanner.next();
        GwRcDataRecordItem item;
        item.key = key.text;
        if (value.kind == Token::bad)
            return fail(scanner.error);
        if (value.kind == Token::quoted) {
            if (value.text.empty())
                return fail("an empty text value cannot be stored");
            item.value = value.text;
        } else if (value.kind == Token::number) {
            if (value.overflow || value.value > 0xFFFF)
                return fail("number " + value.text + " is out of range (0 to 65535)");
            item.value = std::to_string(value.value);
            item.number = true;
        } else {
            return fail("expected a quoted text or a number after '='");
        }
        if (!endOfLine(scanner))
            return false;
        auto seen = mKeyLines.find(item.key);
        if (seen != mKeyLines.end())
            warn(mLineNumber, "key '" + item.key + "' repeats line " +
                                  std::to_string(seen->second) + "; lookups find the first");
        else
            mKeyLines[item.key] = mLineNumber;
        mResources.back().entries.back().record.items.push_back(item);
        return true;
    }

    bool finishEntry() {
        if (mResources.empty() || mResources.back().entries.empty())
            return true;
        RcAttrEntry const& entry = mResources.back().entries.back();
        if (entry.record.id == 0 && entry.record.items.empty()) {
            mMessages.push_back(
                {entry.line, "entry 0 needs at least one item (without, it ends the data)", false});
            return false;
        }
        return true;
    }

    std::vector<RcAttrResource>& mResources;
    std::vector<RcAttrMessage>& mMessages;
    int mLineNumber = 0;
    std::map<unsigned, int> mResourceLines;
    std::map<unsigned, int> mEntryLines;
    std::map<std::string, int> mKeyLines;
};

// ---- writing the script

bool plain(unsigned char c) {
    return std::isalnum(c) || c == ' ' || c == '_' || c == '.' || c == ',' || c == ':' ||
           c == '-' || c == '+' || c == '=' || c == '/' || c == '(' || c == ')' || c == '@';
}

// A quoted string of exactly these bytes: no terminator is added by the resource compiler.
// Binary bytes (identifiers and numbers) are escaped whatever they are.
std::string quoted(std::string const& bytes, bool binary = false) {
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

std::string bytes16(unsigned value) {
    std::string bytes;
    put16(bytes, value);
    return bytes;
}

} // namespace

bool rcAttrEncode(std::vector<GwRcDataRecord> const& entries, std::string& bytes,
                  std::string& error) {
    std::string out;
    for (GwRcDataRecord const& entry : entries) {
        std::string where = "entry " + hex16(entry.id);
        if (entry.id == 0 && entry.items.empty()) {
            error = where + " has no items: its bytes would be the end mark";
            return false;
        }
        put16(out, entry.id);
        for (std::size_t i = 0; i < entry.items.size(); ++i) {
            GwRcDataRecordItem const& item = entry.items[i];
            std::string what = where + ", key '" + item.key + "'";
            if (item.key.find('\0') != std::string::npos ||
                item.value.find('\0') != std::string::npos) {
                error = what + ": a 0 byte cannot be part of a key or a text";
                return false;
            }
            out += item.key;
            out += '\0';
            if (item.number) {
                std::optional<unsigned> number = decimal16(item.value);
                if (!number) {
                    error = what + ": '" + item.value + "' is no 16-bit number";
                    return false;
                }
                if (item.key.empty()) {
                    error = where + ": an empty key cannot carry a number";
                    return false;
                }
                put16(out, 0);
                put16(out, *number);
                continue;
            }
            if (item.value.empty()) {
                bool followed = i + 1 < entry.items.size() && !entry.items[i + 1].key.empty();
                if (item.key.empty() || !followed) {
                    error = what + ": an empty text here would read as a number";
                    return false;
                }
            }
            out += item.value;
            out += '\0';
        }
        put16(out, 0);
    }
    put16(out, 0);
    put16(out, 0);
    bytes = std::move(out);
    return true;
}

bool rcAttrRead(std::string const& text, std::vector<RcAttrResource>& resources,
                std::vector<RcAttrMessage>& messages) {
    Reader reader(resources, messages);
    int number = 0;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!reader.line(++number, line))
            return false;
        start = end + 1;
    }
    return reader.finish();
}

bool rcAttrScript(std::vector<RcAttrResource> const& resources, std::string const& source,
                  std::string& script, std::string& error) {
    std::string name = source;
    for (std::size_t at; (at = name.find("*/")) != std::string::npos;)
        name.replace(at, 2, "* /");
    std::string out = "/* Attribute data written by rcattr from " + name +
                      ". Edit the source, not this file. */\n";
    for (RcAttrResource const& resource : resources) {
        std::vector<GwRcDataRecord> records;
        for (RcAttrEntry const& entry : resource.entries)
            records.push_back(entry.record);
        std::string bytes;
        if (!rcAttrEncode(records, bytes, error)) {
            error = "attributes " + std::to_string(resource.id) + ": " + error;
            return false;
        }
        out += "\n" + std::to_string(resource.id) + " RCDATA\nBEGIN\n";
        for (RcAttrEntry const& entry : resource.entries) {
            out +=
                "    " + quoted(bytes16(entry.record.id), true) + ", /* " + entry.label + " */\n";
            for (GwRcDataRecordItem const& item : entry.record.items) {
                out += "        " + quoted(item.key + '\0') + ", ";
                if (item.number)
                    out += quoted(bytes16(0) + bytes16(*decimal16(item.value)), true) + ", /* " +
                           item.value + " */\n";
                else
                    out += quoted(item.value + '\0') + ",\n";
            }
            out += "    " + quoted(bytes16(0), true) + ",\n";
        }
        out += "    " + quoted(bytes16(0) + bytes16(0), true) + " /* end */\nEND\n";
    }
    script = std::move(out);
    return true;
}
