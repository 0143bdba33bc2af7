#include "GwListBox.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwMessages.h"
#include "controls/GwLines.h"

GW_CLASS_MAKES(GwListBox, "GwListBox", "GwControl")

namespace {

DWORD const kListStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | WS_GROUP | WS_TABSTOP |
                         LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS | LBS_NOTIFY;
DWORD const kMultipleStyle = LBS_MULTIPLESEL | LBS_EXTENDEDSEL;

} // namespace

GwListBox::GwListBox(GwWindow& parent, unsigned long long id, bool multipleSelection,
                     GwWindow::eSorting sorting)
    : mSorting(sorting), mMultiple(multipleSelection), mLines(new GwLines(gListBoxLines)) {
    DWORD style = kListStyle;
    if (multipleSelection)
        style |= kMultipleStyle;
    if (sorting != eUnsorted)
        style |= LBS_SORT;
    attach(CreateWindowExA(0, "LISTBOX", "", style, 0, 0, 0, 0, static_cast<HWND>(parent.window()),
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                           GetModuleHandleA(nullptr), nullptr));
}

GwListBox::GwListBox(void* hwnd)
    : GwControl(hwnd), mSorting(eUnsorted), mMultiple(false), mLines(new GwLines(gListBoxLines)) {
    if (hwnd != nullptr)
        mMultiple = (GetWindowLongA(static_cast<HWND>(hwnd), GWL_STYLE) & kMultipleStyle) != 0;
}

GwListBox::GwListBox(GwListBox const& source)
    : GwControl(source), mSorting(source.mSorting), mMultiple(source.mMultiple),
      mLines(new GwLines(gListBoxLines)) {}

GwListBox& GwListBox::operator=(GwListBox const& other) {
    GwControl::operator=(other);
    mSorting = other.mSorting;
    mMultiple = other.mMultiple;
    if (mLines != other.mLines) {
        other.mLines->addRef();
        mLines->release();
        mLines = other.mLines;
    }
    return *this;
}

GwListBox::~GwListBox() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    mLines->release();
}

GwListBox* GwListBox::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwListBox(hwnd) : nullptr;
}

long long GwListBox::lineMessage(void* list, unsigned int msg, unsigned long long wParam,
                                 long long lParam) {
    return static_cast<GwListBox*>(list)->callDefHandler(msg, wParam, lParam);
}

GwLineChannel GwListBox::channel() const {
    return GwLineChannel{const_cast<GwListBox*>(this), &GwListBox::lineMessage};
}

long long GwListBox::listMessage(unsigned int msg, unsigned long long wParam,
                                 long long lParam) const {
    return const_cast<GwListBox*>(this)->callDefHandler(msg, wParam, lParam);
}

GwListBox& GwListBox::add(GwItem const& item) {
    mLines->add(channel(), item, mSorting > eUnsorted);
    return *this;
}

GwListBox& GwListBox::add(String const& text) {
    return add(GwTextItem(text));
}

GwListBox& GwListBox::add(String const& text, int position) {
    return addAt(position, GwTextItem(text));
}

GwListBox& GwListBox::add(GwItem const& item, int position) {
    return addAt(position, item);
}

GwListBox& GwListBox::addAt(int position, GwItem const& item) {
    mLines->addAt(channel(), position, item);
    return *this;
}

GwListBox& GwListBox::remove(GwItem const& item) {
    mLines->remove(channel(), item);
    return *this;
}

GwListBox& GwListBox::remove(unsigned long long id) {
    mLines->remove(channel(), id);
    return *this;
}

GwListBox& GwListBox::removeAt(int position) {
    mLines->removeAt(channel(), position);
    return *this;
}

GwListBox& GwListBox::remove() {
    mLines->removeAll(channel());
    return *this;
}

GwItem const& GwListBox::item(unsigned long long id) const {
    GwItem const* found = mLines->withId(channel(), id);
    return found != nullptr ? *found : GwLines::noItem();
}

GwItem const& GwListBox::itemAt(int position) const {
    GwItem const* found = mLines->at(channel(), position);
    return found != nullptr ? *found : GwLines::noItemAt();
}

int GwListBox::size() const {
    return mLines->count(channel());
}

int GwListBox::topIndex() const {
    return static_cast<int>(listMessage(LB_GETTOPINDEX, 0, 0));
}

GwListBox& GwListBox::setTopIndex(int position) {
    listMessage(LB_SETTOPINDEX, static_cast<unsigned long long>(position), 0);
    return *this;
}

GwListBox& GwListBox::setSorting(GwWindow::eSorting sorting) {
    mSorting = sorting;
    auto hwnd = static_cast<HWND>(mHandle);
    LONG const style = GetWindowLongA(hwnd, GWL_STYLE);
    SetWindowLongA(hwnd, GWL_STYLE, sorting != eUnsorted ? style | LBS_SORT : style & ~LBS_SORT);
    return *this;
}

GwListBox& GwListBox::setSelectedAt(int position, bool on) {
    if (mMultiple)
        listMessage(LB_SETSEL, on ? TRUE : FALSE, position);
    else
        listMessage(LB_SETCURSEL, static_cast<unsigned long long>(on ? position : -1), 0);
    return *this;
}

GwListBox& GwListBox::setSelected(unsigned long long id, bool on) {
    int const position = mLines->find(channel(), id);
    return position >= 0 ? setSelectedAt(position, on) : *this;
}

GwListBox& GwListBox::setSelected(GwItem const& item, bool on) {
    int const position = mLines->find(channel(), item);
    return position >= 0 ? setSelectedAt(position, on) : *this;
}

GwListBox& GwListBox::setSelected(bool on) {
    int const count = size();
    if (mMultiple)
        listMessage(LB_SELITEMRANGE, on ? TRUE : FALSE,
                    static_cast<long long>(MAKELPARAM(0, count - 1)));
    else
        listMessage(LB_SETCURSEL, static_cast<unsigned long long>(on ? count - 1 : -1), 0);
    return *this;
}

bool GwListBox::selected(unsigned long long id) const {
    int const position = mLines->find(channel(), id);
    return position >= 0 && selectedAt(position);
}

bool GwListBox::selected(GwItem const& item) const {
    int const position = mLines->find(channel(), item);
    return position >= 0 && selectedAt(position);
}

bool GwListBox::selectedAt(int position) const {
    return listMessage(LB_GETSEL, static_cast<unsigned long long>(position), 0) > 0;
}

int GwListBox::selectedAt() const {
    if (!mMultiple)
        return static_cast<int>(listMessage(LB_GETCURSEL, 0, 0));
    int line = -1;
    long long const found = listMessage(LB_GETSELITEMS, 1, reinterpret_cast<LONG_PTR>(&line));
    return found == 1 ? line : -1;
}

unsigned long long GwListBox::selected() const {
    int const line = selectedAt();
    if (mMultiple)
        return static_cast<unsigned long long>(static_cast<long long>(line));
    if (line == -1)
        return ~0ull;
    GwItem const* copy = mLines->at(channel(), line);
    return copy != nullptr ? copy->id() : ~0ull;
}

bool GwListBox::exitInstance() {
    if (subclassed()) {
        GwWindow::exitInstance();
        remove();
    }
    return true;
}

long long GwListBox::msgHandler(unsigned long long msg, unsigned long long wParam,
                                long long lParam) {
    if (msg == GwMsgCommand) {
        switch (HIWORD(wParam)) {
        case LBN_SELCHANGE:
            dispatchEvent(GwMsgSelect, 0, 0);
            break;
        case LBN_DBLCLK:
            dispatchEvent(GwMsgActivate, 0, 0);
            break;
        default:
            break;
        }
        return 0;
    }
    if (mLines->changes(msg))
        return mLines->pass(channel(), msg, wParam, lParam);
    return GwControl::msgHandler(msg, wParam, lParam);
}
