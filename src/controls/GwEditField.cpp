// The edit field: its number format, bounds and correction.
#include "GwEditField.h"

#include <windows.h>

#include <string_view>

#include "GwEventData.h"
#include "window/GwInputMessages.h"
#include "GwMessages.h"
#include "GwNumberText.h"

GW_CLASS_MAKES(GwEditField, "GwEditField", "GwControl")

namespace {

// WS_CHILD | WS_VISIBLE | WS_BORDER | WS_GROUP | WS_TABSTOP | ES_AUTOHSCROLL
constexpr unsigned long kEditStyle = 0x50830080;
// The buffer the field's text is read into and formatted into.
constexpr std::size_t kBufferSize = 256;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

std::string_view view(String const& text) {
    return std::string_view(text.c_str(), text.size());
}

} // namespace

GwEditField::GwEditField(void* hwnd)
    : GwControl(hwnd), mCheckFormat(0), mCheckMinValue(0), mCheckMaxValue(0), mDefault(0.0),
      mMin(0.0), mMax(0.0) {}

GwEditField::GwEditField(GwWindow const& parent, unsigned long long id) : GwEditField() {
    createControl(WS_EX_CLIENTEDGE, "EDIT", "", kEditStyle, parent, id);
    setControlFont();
}

GwEditField::GwEditField(GwEditField const& source)
    : GwControl(source), mCheckFormat(source.mCheckFormat), mCheckMinValue(source.mCheckMinValue),
      mCheckMaxValue(source.mCheckMaxValue), mDefault(source.mDefault), mMin(source.mMin),
      mMax(source.mMax), mFormat(source.mFormat) {}

GwEditField& GwEditField::operator=(GwEditField const& other) {
    if (this == &other)
        return *this;
    GwControl::operator=(other);
    mCheckFormat = other.mCheckFormat;
    mCheckMinValue = other.mCheckMinValue;
    mCheckMaxValue = other.mCheckMaxValue;
    mDefault = other.mDefault;
    mMin = other.mMin;
    mMax = other.mMax;
    mFormat = other.mFormat;
    return *this;
}

GwEditField::~GwEditField() = default;

GwEditField& GwEditField::setFormat(String const& format) {
    mFormat = format;
    check();
    return *this;
}

GwEditField& GwEditField::setDefaultValue(double value) {
    mDefault = value;
    return *this;
}

GwEditField& GwEditField::setMinValue(double value) {
    mMin = value;
    check();
    return *this;
}

GwEditField& GwEditField::setMaxValue(double value) {
    mMax = value;
    check();
    return *this;
}

GwEditField& GwEditField::checkFormat(bool on) {
    mCheckFormat = on ? 1 : 0;
    check();
    return *this;
}

GwEditField& GwEditField::checkMinValue(bool on) {
    mCheckMinValue = on ? 1 : 0;
    check();
    return *this;
}

GwEditField& GwEditField::checkMaxValue(bool on) {
    mCheckMaxValue = on ? 1 : 0;
    check();
    return *this;
}

void GwEditField::writeValue(double floating, long whole, bool isFloating, char const* fallback) {
    std::string_view const format = mFormat.size() != 0 ? view(mFormat) : fallback;
    GwNumberText::Number const value =
        isFloating ? GwNumberText::Number::floating(floating)
                   : GwNumberText::Number::whole(static_cast<std::int32_t>(whole));
    char buffer[kBufferSize];
    if (GwNumberText::format(buffer, sizeof buffer, format, value) >= 0)
        setText(String(buffer));
}

GwEditField& GwEditField::setValue(double value) {
    writeValue(value, 0, true, "%lg");
    return *this;
}

GwEditField& GwEditField::setValue(long value) {
    writeValue(0.0, value, false, "%ld");
    return *this;
}

GwEditField::operator double() const {
    String const current = text();
    char buffer[kBufferSize * 2];
    GwNumberText::decimalComma(buffer, sizeof buffer, view(current));
    return GwNumberText::parseDouble(buffer).value;
}

GwEditField::operator long() const {
    std::string_view const format = mFormat.size() != 0 ? view(mFormat) : "%ld";
    String const current = text();
    switch (GwNumberText::classify(format)) {
    case GwNumberText::Kind::Decimal:
        return GwNumberText::parseLong(view(current)).value;
    case GwNumberText::Kind::Hex:
        return static_cast<long>(GwNumberText::parseHex(view(current)));
    default:
        return 0;
    }
}

GwEditField& GwEditField::setSelection(int start, int end) {
    callDefHandler(EM_SETSEL, static_cast<unsigned long long>(start), end);
    callDefHandler(EM_SCROLLCARET, 0, 0);
    return *this;
}

bool GwEditField::changed() const {
    bool const modified = const_cast<GwEditField*>(this)->callDefHandler(EM_GETMODIFY, 0, 0) != 0;
    SendMessageA(hwndOf(mHandle), EM_SETMODIFY, FALSE, 0);
    return modified;
}

bool GwEditField::check() {
    if (!mCheckFormat)
        return true;
    char buffer[kBufferSize] = {};
    int const length = GetWindowTextA(hwndOf(mHandle), buffer, sizeof buffer);
    std::string_view const text(buffer, length > 0 ? static_cast<std::size_t>(length) : 0);
    std::string_view const format = view(mFormat);

    GwNumberText::Kind const kind = GwNumberText::classify(format);
    if (kind == GwNumberText::Kind::None || !GwNumberText::applicable(format))
        return false;

    GwNumberText::Number value{};
    if (kind == GwNumberText::Kind::Decimal) {
        GwNumberText::LongResult const read = GwNumberText::parseLong(text);
        std::int32_t whole = read.value;
        if (!read.parsed)
            whole = GwNumberText::truncate(mDefault);
        else if (mCheckMinValue && mMin > static_cast<double>(whole))
            whole = GwNumberText::truncate(mMin);
        else if (mCheckMaxValue && static_cast<double>(whole) > mMax)
            whole = GwNumberText::truncate(mMax);
        value = GwNumberText::Number::whole(whole);
    } else if (kind == GwNumberText::Kind::Hex) {
        auto whole = static_cast<std::int32_t>(GwNumberText::parseHex(text));
        if (mCheckMaxValue && static_cast<double>(whole) > mMax)
            whole = GwNumberText::truncate(mMax);
        value = GwNumberText::Number::whole(whole);
    } else {
        char number[kBufferSize];
        std::size_t const size = GwNumberText::decimalComma(number, sizeof number, text);
        double floating = GwNumberText::parseDouble(std::string_view(number, size)).value;
        if (mCheckMaxValue && floating > mMax)
            floating = mMax;
        value = GwNumberText::Number::floating(floating);
    }

    char result[kBufferSize];
    if (GwNumberText::format(result, sizeof result, format, value) >= 0)
        setText(String(result));
    return true;
}

long long GwEditField::msgHandler(unsigned long long msg, unsigned long long wParam,
                                  long long lParam) {
    if (gwIsInputMessage(msg)) {
        if (dispatchEvent(msg, wParam, lParam) != 0)
            return 1;
        return GwControl::msgHandler(msg, wParam, lParam);
    }
    if (msg == GwMsgCommand) {
        switch (HIWORD(wParam)) {
        case EN_CHANGE:
            SendMessageA(hwndOf(mHandle), EM_SETMODIFY, TRUE, 0);
            return 0;
        case EN_KILLFOCUS:
            if (SendMessageA(hwndOf(mHandle), EM_GETMODIFY, 0, 0) != 0 && !check())
                setFocus();
            return 0;
        default:
            return 0;
        }
    }
    return GwControl::msgHandler(msg, wParam, lParam);
}

GwEditField* GwEditField::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwEditField(hwnd) : nullptr;
}
