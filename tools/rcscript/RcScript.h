// What the writers of resource scripts (rcattr, rctoolbar) share: the tokens of one line of
// their text forms, messages tied to a line, and quoted strings that carry bytes exactly
// into a resource script.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// An error or a warning about one line of a text form (lines count from 1).
struct RcMessage {
    int line = 0;
    std::string text;
    bool warning = false;
};

struct RcToken {
    enum Kind { end, word, number, quoted, equals, bad } kind = end;
    std::string text;             // a word, a quoted text (unescaped) or a number as spelled
    unsigned long long value = 0; // a number's value
    bool overflow = false;        // the number does not fit 32 bits
};

// The tokens of one line: words (letters, digits, '_', not beginning with a digit), numbers
// (decimal or 0x.., never negative), quoted texts with the escapes \" \\ \n \r \t \xHH
// (\x00 refused), '=' and the end of the line, at which '#' starts a comment. A bad token
// leaves its reason in error.
class RcScanner {
public:
    explicit RcScanner(std::string const& line) : mLine(line) {}

    RcToken next();

    std::string error;

private:
    void skipBlanks();
    bool readText(std::string& text);
    void readNumber(RcToken& token);

    std::string const& mLine;
    std::size_t mPos = 0;
};

// The common part of the readers of the text forms: the lines, their first token, the
// numbers and ends of statements, and the messages tied to the current line.
class RcLineReader {
public:
    explicit RcLineReader(std::vector<RcMessage>& messages) : mMessages(messages) {}
    virtual ~RcLineReader() = default;

    // Reads every line of text ("\n" or "\r\n" ends a line; the last one needs no end), then
    // makes the checks of the end of the text. False after the first error.
    bool read(std::string const& text);

protected:
    // A line that begins with first, a token that is neither the end nor bad.
    virtual bool statement(RcScanner& scanner, RcToken const& first) = 0;
    // Checks that are only possible at the end of the text.
    virtual bool finish() { return true; }

    // An error at the current line, or at line; always false.
    bool fail(std::string const& text) { return failAt(mLineNumber, text); }
    bool failAt(int line, std::string const& text);
    void warn(int line, std::string const& text);

    // The number that follows keyword, from low to high; false (with an error) when it is
    // missing, bad or out of range.
    bool number(RcScanner& scanner, std::string const& keyword, unsigned long long low,
                unsigned long long high, unsigned& value);
    // True when nothing but a comment is left on the line, else false with an error.
    bool endOfLine(RcScanner& scanner);

    int mLineNumber = 0;

private:
    std::vector<RcMessage>& mMessages;
};

// The two little-endian bytes of a 16-bit value.
std::string rcBytes16(unsigned value);

// A quoted string of exactly these bytes: the resource compilers add no terminator to a
// string in a data block. Printable bytes stay readable, others become octal escapes; with
// binary every byte is escaped (identifiers and numbers).
std::string rcScriptQuoted(std::string const& bytes, bool binary = false);

// The opening comment of a written script: what it holds, which tool wrote it from which
// source, and that the source is the file to edit.
std::string rcScriptHeader(std::string const& what, std::string const& tool,
                           std::string const& source);
