// A single-line input field that can hold a number.
#pragma once

#include <String.h>

#include "GwControl.h"

// Wraps the platform's "EDIT" class. Besides its text (text, setText) the field carries a
// printf-style format, a default value and optional lower and upper bounds. When the field
// loses the focus after the user changed it, and whenever the format, a bound or a flag is
// set, the text is corrected (check): read as a number, held to the bounds and written back
// in the format. How the format is read:
// - containing "ld": a decimal whole number (strtol); text without a number becomes the
//   default value, and the minimum and the maximum apply;
// - else containing "lx": a hexadecimal whole number (strtoul); only the maximum applies, and
//   text without hexadecimal digits becomes 0 whatever the default;
// - else containing "le", "lf" or "lg": a floating number (strtod), a decimal comma accepted;
//   only the maximum applies, and text without a number becomes 0;
// - otherwise nothing is corrected: check answers false, and a field left after a change
//   gets the focus back.
// The text read is cut to 255 characters. Numbers are read and written as the C library does
// in the classic locale (a full stop as decimal point), whatever locale the process has set.
//
// Formats are applied safely: one made of literal text, "%%" and at most one conversion with
// the flags - + space # 0, a width and a precision of at most 255, an optional "l" and one of
// d i o u x X e E f F g G. An integer conversion takes the value as a 32-bit long (a double
// truncated toward zero and held to the 32-bit range), a floating one as a double. Any other
// format (a second conversion, %s, %n, "*", a lone "%", a width too large for the field's
// 256-byte buffer ...) counts as a format without a recognised conversion: nothing is
// corrected and nothing is written. A result longer than 255 characters is not written.
//
// Key and mouse input (and the library's click messages) is offered to the event handlers
// first: a handler that marks it handled keeps it from the platform control.
class VMGUI_API GwEditField : public GwControl {
    GW_DECLARE_CLASS(GwEditField)

public:
    // A visible, empty field with a client edge, a border, WS_GROUP, WS_TABSTOP and
    // ES_AUTOHSCROLL at 0,0 with size 0; it takes over the font of a dialog built with its own
    // font.
    GwEditField(GwWindow const& parent, unsigned long long id);
    // Clones the source's platform field and copies format, values and flags.
    GwEditField(GwEditField const& source);
    GwEditField(GwEditField&& source) : GwEditField(static_cast<GwEditField const&>(source)) {}
    // Memberwise, the window handle included.
    GwEditField& operator=(GwEditField const& other);
    ~GwEditField() override;

    // Sets the format and corrects the text.
    GwEditField& setFormat(String const& format);
    String const& format() const { return mFormat; }
    // The value of text without a number (decimal formats only); no correction.
    GwEditField& setDefaultValue(double value);
    double defaultValue() const { return mDefault; }
    // Set a bound and correct the text.
    GwEditField& setMinValue(double value);
    double minValue() const { return mMin; }
    GwEditField& setMaxValue(double value);
    double maxValue() const { return mMax; }
    // Switch correction, the lower and the upper bound on or off, then correct the text.
    GwEditField& checkFormat(bool on);
    GwEditField& checkMinValue(bool on);
    GwEditField& checkMaxValue(bool on);

    // Writes the value in the format ("%lg" when it is empty); no bounds are applied.
    GwEditField& setValue(double value);
    // Writes the value in the format ("%ld" when it is empty); no bounds are applied.
    GwEditField& setValue(long value);
    // As setValue(long): a plain int literal would otherwise fit both forms.
    GwEditField& setValue(int value) { return setValue(static_cast<long>(value)); }
    // The text as a double, its first comma read as a decimal point; 0 without a number.
    operator double() const;
    // The text as a decimal number when the format ("%ld" when empty) contains "ld", else as
    // a hexadecimal one when it contains "lx", else 0.
    operator long() const;

    // Selects the characters from start to end and scrolls them into view.
    GwEditField& setSelection(int start, int end);
    // Whether the user changed the text since the last call: reading clears the flag.
    bool changed() const;

    // A field attached to the window that GwEventData carries; null without one.
    static GwEditField* newInstance(EventData const* data);

protected:
    // Attaches to an existing window; without one, a field with no window.
    explicit GwEditField(void* hwnd = nullptr);

    // Corrects the text as described above; false when the format has no recognised
    // conversion.
    bool check();

    long long msgHandler(unsigned long long msg, unsigned long long wParam,
                         long long lParam) override;

private:
    // Formats value with the format, or with fallback when the format is empty, and sets
    // the result as the text.
    void writeValue(double floating, long whole, bool isFloating, char const* fallback);

    unsigned int mCheckFormat : 1;
    unsigned int mCheckMinValue : 1;
    unsigned int mCheckMaxValue : 1;
    double mDefault;
    double mMin;
    double mMax;
    String mFormat;
};
