// The colour dialog.
#include "GwColorSelect.h"

#include <windows.h>

#include <commdlg.h>

#include "GwFrame.h"

GW_CLASS_NULL(GwColorSelect, "GwColorSelect", "GwDialog")

namespace {

// 0x00RRGGBB and COLORREF (0x00BBGGRR) into each other: red and blue exchanged, the top
// byte cleared.
unsigned long swapRedBlue(unsigned long colour) {
    return ((colour & 0xFFu) << 16) | (colour & 0xFF00u) | ((colour >> 16) & 0xFFu);
}

} // namespace

struct GwColorSelect::Record {
    CHOOSECOLORA cc;
    COLORREF custom[16];

    explicit Record(HWND owner) : cc() {
        for (COLORREF& colour : custom)
            colour = RGB(0xFF, 0xFF, 0xFF);
        cc.lStructSize = sizeof(CHOOSECOLORA);
        cc.hwndOwner = owner;
        cc.lpCustColors = custom;
        cc.Flags = CC_RGBINIT;
    }
    Record(Record const& other) : cc(other.cc) {
        for (int i = 0; i < 16; ++i)
            custom[i] = other.custom[i];
        cc.lpCustColors = custom;
    }
    Record& operator=(Record const&) = delete;
};

static_assert(sizeof(CHOOSECOLORA) == 72, "the colour record of 64-bit Windows");

GwColorSelect::GwColorSelect(GwFrame& owner, unsigned char r, unsigned char g, unsigned char b)
    : GwDialog(), mRecord(new Record(static_cast<HWND>(owner.window()))), mOwner(&owner) {
    setColor(r, g, b);
}

GwColorSelect::GwColorSelect(GwFrame& owner, unsigned long colour)
    : GwDialog(), mRecord(new Record(static_cast<HWND>(owner.window()))), mOwner(&owner) {
    setColor(colour);
}

GwColorSelect::GwColorSelect(GwColorSelect const& other)
    : GwDialog(other), mRecord(new Record(*other.mRecord)), mOwner(other.mOwner) {}

GwColorSelect& GwColorSelect::operator=(GwColorSelect const& other) {
    if (this == &other)
        return *this;
    GwDialog::operator=(other);
    Record* const copy = new Record(*other.mRecord);
    delete mRecord;
    mRecord = copy;
    mOwner = other.mOwner;
    return *this;
}

GwColorSelect::~GwColorSelect() {
    delete mRecord;
}

GwColorSelect& GwColorSelect::setVisible(bool) {
    HWND const active = GetActiveWindow();
    setResult(ChooseColorA(&mRecord->cc) ? 1 : 0);
    if (active != nullptr)
        SetActiveWindow(active);
    return *this;
}

unsigned long GwColorSelect::color() const {
    return swapRedBlue(mRecord->cc.rgbResult);
}

void GwColorSelect::color(unsigned char& r, unsigned char& g, unsigned char& b) const {
    COLORREF const colour = mRecord->cc.rgbResult;
    r = GetRValue(colour);
    g = GetGValue(colour);
    b = GetBValue(colour);
}

GwColorSelect& GwColorSelect::setColor(unsigned long colour) {
    mRecord->cc.rgbResult = swapRedBlue(colour);
    return *this;
}

GwColorSelect& GwColorSelect::setColor(unsigned char r, unsigned char g, unsigned char b) {
    mRecord->cc.rgbResult = RGB(r, g, b);
    return *this;
}

void GwColorSelect::customColors(unsigned long* const colours) const {
    if (colours == nullptr)
        return;
    for (int i = 0; i < 16; ++i)
        colours[i] = swapRedBlue(mRecord->custom[i]);
}

GwColorSelect& GwColorSelect::setCustomColors(unsigned long* const colours) {
    if (colours == nullptr)
        return *this;
    for (int i = 0; i < 16; ++i)
        mRecord->custom[i] = swapRedBlue(colours[i]);
    return *this;
}
