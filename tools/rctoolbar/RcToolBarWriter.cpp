#include "RcToolBarWriter.h"

#include <map>

#include "GwToolBarResource.h"

namespace {

constexpr std::size_t kMaxEntries = 0xFFFF; // the count is a 16-bit word

class Reader : public RcLineReader {
public:
    Reader(std::vector<RcToolBar>& toolBars, std::vector<RcMessage>& messages)
        : RcLineReader(messages), mToolBars(toolBars) {}

private:
    bool statement(RcScanner& scanner, RcToken const& first) override {
        if (first.kind != RcToken::word)
            return fail("a line begins with 'toolbar', 'button', 'separator' or 'end'");
        if (first.text == "toolbar")
            return toolBar(scanner);
        if (first.text == "button" || first.text == "separator" || first.text == "end") {
            if (!mOpen)
                return fail("'" + first.text + "' outside a toolbar block");
            if (first.text == "end")
                return end(scanner);
            return entry(scanner, first.text);
        }
        return fail("unknown statement '" + first.text + "'");
    }

    bool finish() override {
        if (!mOpen)
            return true;
        return failAt(mToolBars.back().line,
                      "toolbar " + std::to_string(mToolBars.back().id) + " has no 'end'");
    }

    bool toolBar(RcScanner& scanner) {
        if (mOpen)
            return fail("'toolbar' inside toolbar " + std::to_string(mToolBars.back().id) +
                        " of line " + std::to_string(mToolBars.back().line) +
                        ", which has no 'end'");
        RcToolBar toolBar;
        toolBar.line = mLineNumber;
        if (!number(scanner, "toolbar", 1, 0xFFFF, toolBar.id))
            return false;
        std::map<std::string, unsigned> values;
        for (RcToken token = scanner.next(); token.kind != RcToken::end; token = scanner.next()) {
            if (token.kind == RcToken::bad)
                return fail(scanner.error);
            if (token.kind != RcToken::word ||
                (token.text != "width" && token.text != "height" && token.text != "version"))
                return fail("expected 'width', 'height' or 'version'");
            if (values.count(token.text) != 0)
                return fail("'" + token.text + "' given twice");
            unsigned low = token.text == "version" ? 0 : 1;
            if (!number(scanner, token.text, low, 0xFFFF, values[token.text]))
                return false;
        }
        for (char const* needed : {"width", "height"})
            if (values.count(needed) == 0)
                return fail(std::string("toolbar needs '") + needed + "'");
        auto seen = mLines.find(toolBar.id);
        if (seen != mLines.end())
            return fail("toolbar " + std::to_string(toolBar.id) + " repeats line " +
                        std::to_string(seen->second));
        mLines[toolBar.id] = mLineNumber;
        toolBar.width = static_cast<std::uint16_t>(values["width"]);
        toolBar.height = static_cast<std::uint16_t>(values["height"]);
        if (values.count("version") != 0)
            toolBar.version = static_cast<std::uint16_t>(values["version"]);
        mToolBars.push_back(toolBar);
        mOpen = true;
        mButtonLines.clear();
        return true;
    }

    bool entry(RcScanner& scanner, std::string const& keyword) {
        unsigned id = 0;
        if (keyword == "button" && !number(scanner, keyword, 1, 0xFFFF, id))
            return false;
        if (!endOfLine(scanner))
            return false;
        RcToolBar& toolBar = mToolBars.back();
        if (toolBar.ids.size() == kMaxEntries)
            return fail("toolbar " + std::to_string(toolBar.id) + " has more than " +
                        std::to_string(kMaxEntries) + " entries");
        if (id != 0) {
            auto seen = mButtonLines.find(id);
            if (seen != mButtonLines.end())
                warn(mLineNumber, "button " + std::to_string(id) + " repeats line " +
                                      std::to_string(seen->second));
            else
                mButtonLines[id] = mLineNumber;
        }
        toolBar.ids.push_back(static_cast<std::uint16_t>(id));
        return true;
    }

    bool end(RcScanner& scanner) {
        if (!endOfLine(scanner))
            return false;
        mOpen = false;
        if (mToolBars.back().ids.empty())
            return fail("toolbar " + std::to_string(mToolBars.back().id) +
                        " has neither buttons nor separators");
        return true;
    }

    std::vector<RcToolBar>& mToolBars;
    bool mOpen = false;
    std::map<unsigned, int> mLines;
    std::map<unsigned, int> mButtonLines;
};

} // namespace

bool rcToolBarRead(std::string const& text, std::vector<RcToolBar>& toolBars,
                   std::vector<RcMessage>& messages) {
    Reader reader(toolBars, messages);
    return reader.read(text);
}

std::string rcToolBarScript(std::vector<RcToolBar> const& toolBars, std::string const& source) {
    std::string out = rcScriptHeader("Tool-bar resources", "rctoolbar", source);
    for (RcToolBar const& toolBar : toolBars) {
        std::vector<unsigned char> const words =
            gwWriteToolBarResource(toolBar.version, toolBar.width, toolBar.height, toolBar.ids);
        std::string const bytes(words.begin(), words.end());
        out += "\n" + std::to_string(toolBar.id) + " " + std::to_string(kGwToolBarResourceType) +
               "\nBEGIN\n";
        out += "    " + rcScriptQuoted(bytes.substr(0, kGwToolBarResourceHeaderSize), true) +
               ", /* version " + std::to_string(toolBar.version) + ", width " +
               std::to_string(toolBar.width) + ", height " + std::to_string(toolBar.height) + ", " +
               std::to_string(toolBar.ids.size()) + " entries */\n";
        for (std::size_t i = 0; i < toolBar.ids.size(); ++i) {
            std::uint16_t const id = toolBar.ids[i];
            out += "    " +
                   rcScriptQuoted(bytes.substr(kGwToolBarResourceHeaderSize + 2 * i, 2), true) +
                   (i + 1 < toolBar.ids.size() ? ", " : " ") +
                   (id == 0 ? "/* separator */\n" : "/* button " + std::to_string(id) + " */\n");
        }
        out += "END\n";
    }
    return out;
}
