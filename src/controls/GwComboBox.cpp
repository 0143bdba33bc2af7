#include "GwComboBox.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwMessages.h"
#include "controls/GwLines.h"

GW_CLASS_MAKES(GwComboBox, "GwComboBox", "GwControl")

GwComboBox::GwComboBox(GwWindow& parent, unsigned long long id)
    : mEditPart(nullptr), mLastSelection(-1), mLines(new GwLines(gComboBoxLines)) {
    attach(CreateWindowExA(
        0, "COMBOBOX", "",
        WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_GROUP | WS_TABSTOP | CBS_DROPDOWN, 0, 0, 0, 0,
        static_cast<HWND>(parent.window()), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
        GetModuleHandleA(nullptr), nullptr));
    findEditPart();
}

GwComboBox::GwComboBox(void* hwnd)
    : GwControl(hwnd), mEditPart(nullptr), mLastSelection(-1), mLines(new GwLines(gComboBoxLines)) {
    findEditPart();
}

GwComboBox::GwComboBox(GwComboBox const& source)
    : GwControl(source), mEditPart(source.mEditPart), mLastSelection(source.mLastSelection),
      mLines(new GwLines(gComboBoxLines)) {}

GwComboBox& GwComboBox::operator=(GwComboBox const& other) {
    GwControl::operator=(other);
    mEditPart = other.mEditPart;
    mLastSelection = other.mLastSelection;
    if (mLines != other.mLines) {
        other.mLines->addRef();
        mLines->release();
        mLines = other.mLines;
    }
    return *this;
}

GwComboBox::~GwComboBox() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    mLines->release();
}

GwComboBox* GwComboBox::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwComboBox(hwnd) : nullptr;
}

long long GwComboBox::lineMessage(void* combo, unsigned int msg, unsigned long long wParam,
                                  long long lParam) {
    return static_cast<GwComboBox*>(combo)->callDefHandler(msg, wParam, lParam);
}

GwLineChannel GwComboBox::channel() const {
    return GwLineChannel{const_cast<GwComboBox*>(this), &GwComboBox::lineMessage};
}

long long GwComboBox::comboMessage(unsigned int msg, unsigned long long wParam,
                                   long long lParam) const {
    return const_cast<GwComboBox*>(this)->callDefHandler(msg, wParam, lParam);
}

GwComboBox& GwComboBox::add(GwItem const& item) {
    mLines->add(channel(), item, sorting() != eUnsorted);
    return *this;
}

GwComboBox& GwComboBox::add(String const& text) {
    return add(GwTextItem(text));
}

GwComboBox& GwComboBox::add(String const& text, int position) {
    return addAt(position, GwTextItem(text));
}

GwComboBox& GwComboBox::add(GwItem const& item, int position) {
    return addAt(position, item);
}

GwComboBox& GwComboBox::addAt(int position, GwItem const& item) {
    mLines->addAt(channel(), position, item);
    return *this;
}

GwComboBox& GwComboBox::remove(GwItem const& item) {
    mLines->remove(channel(), item);
    return *this;
}

GwComboBox& GwComboBox::remove(unsigned long long id) {
    mLines->remove(channel(), id);
    return *this;
}

GwComboBox& GwComboBox::removeAt(int position) {
    mLines->removeAt(channel(), position);
    return *this;
}

GwComboBox& GwComboBox::remove() {
    mLines->removeAll(channel());
    return *this;
}

GwItem const& GwComboBox::item(unsigned long long id) const {
    GwItem const* found = mLines->withId(channel(), id);
    return found != nullptr ? *found : GwLines::noItem();
}

GwItem const& GwComboBox::itemAt(int position) const {
    GwItem const* found = mLines->at(channel(), position);
    return found != nullptr ? *found : GwLines::noItemAt();
}

int GwComboBox::size() const {
    return mLines->count(channel());
}

GwWindow::eSorting GwComboBox::sorting() const {
    return (GetWindowLongA(static_cast<HWND>(mHandle), GWL_STYLE) & CBS_SORT) != 0 ? eSorted
                                                                                   : eUnsorted;
}

GwComboBox& GwComboBox::setSorting(GwWindow::eSorting sorting) {
    auto hwnd = static_cast<HWND>(mHandle);
    LONG const style = GetWindowLongA(hwnd, GWL_STYLE);
    SetWindowLongA(hwnd, GWL_STYLE, sorting != eUnsorted ? style | CBS_SORT : style & ~CBS_SORT);
    return *this;
}

GwComboBox& GwComboBox::setSelectedAt(int position, bool on) {
    comboMessage(CB_SETCURSEL, static_cast<unsigned long long>(on ? position : -1), 0);
    return *this;
}

GwComboBox& GwComboBox::setSelected(unsigned long long id, bool on) {
    int const position = mLines->find(channel(), id);
    return position >= 0 ? setSelectedAt(position, on) : *this;
}

GwComboBox& GwComboBox::setSelected(GwItem const& item, bool on) {
    int const position = mLines->find(channel(), item);
    return position >= 0 ? setSelectedAt(position, on) : *this;
}

int GwComboBox::selectedAt() const {
    return static_cast<int>(comboMessage(CB_GETCURSEL, 0, 0));
}

bool GwComboBox::selectedAt(int position) const {
    return selectedAt() == position;
}

bool GwComboBox::selected(unsigned long long id) const {
    int const position = mLines->find(channel(), id);
    return position >= 0 && selectedAt(position);
}

bool GwComboBox::selected(GwItem const& item) const {
    int const position = mLines->find(channel(), item);
    return position >= 0 && selectedAt(position);
}

unsigned long long GwComboBox::selected() const {
    int const line = selectedAt();
    if (line == -1)
        return ~0ull;
    GwItem const* copy = mLines->at(channel(), line);
    return copy != nullptr ? copy->id() : ~0ull;
}

bool GwComboBox::exitInstance() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    return true;
}

long long GwComboBox::msgHandler(unsigned long long msg, unsigned long long wParam,
                                 long long lParam) {
    switch (msg) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return callDefHandler(msg, wParam, lParam);
    case GwMsgCommand:
        switch (HIWORD(wParam)) {
        case CBN_SELCHANGE:
            if (mLastSelection == -1)
                mLastSelection = selectedAt();
            dispatchEvent(GwMsgSelect, 0, 0);
            break;
        case CBN_DBLCLK:
            dispatchEvent(GwMsgActivate, 0, 0);
            break;
        case CBN_SETFOCUS:
            dispatchEvent(WM_SETFOCUS, 0, 0);
            break;
        case CBN_KILLFOCUS:
            dispatchEvent(WM_KILLFOCUS, 0, 0);
            break;
        default:
            break;
        }
        return 0;
    default:
        if (mLines->changes(msg))
            return mLines->pass(channel(), msg, wParam, lParam);
        return GwControl::msgHandler(msg, wParam, lParam);
    }
}
