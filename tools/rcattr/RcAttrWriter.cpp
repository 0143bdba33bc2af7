#include "RcAttrWriter.h"

#include <cstddef>
#include <map>
#include <optional>
#include <utility>

namespace {

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

class Reader : public RcLineReader {
public:
    Reader(std::vector<RcAttrResource>& resources, std::vector<RcAttrMessage>& messages)
        : RcLineReader(messages), mResources(resources) {}

private:
    bool statement(RcScanner& scanner, RcToken const& first) override {
        if (first.kind == RcToken::word && isKeyword(first.text))
            return keyword(scanner, first.text);
        if (first.kind == RcToken::word || first.kind == RcToken::quoted)
            return item(scanner, first);
        return fail("a line begins with a keyword or a key");
    }

    // Checks that are only possible at the end of an entry or of the text.
    bool finish() override { return finishEntry(); }

    static bool isKeyword(std::string const& word) {
        return word == "attributes" || word == "dialog" || word == "menu" || word == "control" ||
               word == "entry";
    }

    bool keyword(RcScanner& scanner, std::string const& keyword) {
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
            RcToken token = scanner.next();
            if (token.kind == RcToken::end) {
                id = 0xFFFF;
                label = keyword;
            } else if (keyword == "dialog") {
                return fail("unexpected text after 'dialog'");
            } else if (token.kind == RcToken::bad) {
                return fail(scanner.error);
            } else if (token.kind != RcToken::number) {
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

    bool item(RcScanner& scanner, RcToken const& key) {
        RcToken equals = scanner.next();
        if (equals.kind == RcToken::bad)
            return fail(scanner.error);
        if (equals.kind != RcToken::equals) {
            if (key.kind == RcToken::word && equals.kind != RcToken::quoted)
                return fail("unknown keyword '" + key.text + "'");
            return fail("expected '=' after the key");
        }
        if (mResources.empty() || mResources.back().entries.empty())
            return fail("item before any entry");
        if (key.text.empty())
            return fail("empty key");
        RcToken value = scanner.next();
        GwRcDataRecordItem item;
        item.key = key.text;
        if (value.kind == RcToken::bad)
            return fail(scanner.error);
        if (value.kind == RcToken::quoted) {
            if (value.text.empty())
                return fail("an empty text value cannot be stored");
            item.value = value.text;
        } else if (value.kind == RcToken::number) {
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
        if (entry.record.id == 0 && entry.record.items.empty())
            return failAt(entry.line,
                          "entry 0 needs at least one item (without, it ends the data)");
        return true;
    }

    std::vector<RcAttrResource>& mResources;
    std::map<unsigned, int> mResourceLines;
    std::map<unsigned, int> mEntryLines;
    std::map<std::string, int> mKeyLines;
};

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
        out += rcBytes16(entry.id);
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
                out += rcBytes16(0);
                out += rcBytes16(*number);
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
        out += rcBytes16(0);
    }
    out += rcBytes16(0);
    out += rcBytes16(0);
    bytes = std::move(out);
    return true;
}

bool rcAttrRead(std::string const& text, std::vector<RcAttrResource>& resources,
                std::vector<RcAttrMessage>& messages) {
    Reader reader(resources, messages);
    return reader.read(text);
}

bool rcAttrScript(std::vector<RcAttrResource> const& resources, std::string const& source,
                  std::string& script, std::string& error) {
    std::string out = rcScriptHeader("Attribute data", "rcattr", source);
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
            out += "    " + rcScriptQuoted(rcBytes16(entry.record.id), true) + ", /* " +
                   entry.label + " */\n";
            for (GwRcDataRecordItem const& item : entry.record.items) {
                out += "        " + rcScriptQuoted(item.key + '\0') + ", ";
                if (item.number)
                    out += rcScriptQuoted(rcBytes16(0) + rcBytes16(*decimal16(item.value)), true) +
                           ", /* " + item.value + " */\n";
                else
                    out += rcScriptQuoted(item.value + '\0') + ",\n";
            }
            out += "    " + rcScriptQuoted(rcBytes16(0), true) + ",\n";
        }
        out += "    " + rcScriptQuoted(rcBytes16(0) + rcBytes16(0), true) + " /* end */\nEND\n";
    }
    script = std::move(out);
    return true;
}
