// The open and save dialogs.
#include "GwFileSelect.h"

#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "GwFileSelectPaths.h"

GW_CLASS_MAKES(GwFileSelect, "GwFileSelect", "GwDialog")

namespace {

constexpr DWORD kInitialFlags =
    OFN_EXPLORER | OFN_NOTESTFILECREATE | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;

} // namespace

// The dialog record, shared by a dialog and its copies.
struct GwFileSelect::Record {
    OPENFILENAMEA ofn;
    HGLOBAL fileMemory;
    std::string title;  // lpstrTitle while the dialog is up
    std::string filter; // lpstrFilter while the dialog is up
    int users;

    Record() : ofn(), fileMemory(GlobalAlloc(GMEM_ZEROINIT, fileBufferSize)), users(1) {
        ofn.lStructSize = sizeof(OPENFILENAMEA);
        ofn.lpstrFile = static_cast<char*>(fileMemory);
        ofn.nMaxFile = fileMemory != nullptr ? DWORD{fileBufferSize} : DWORD{0};
        ofn.Flags = kInitialFlags;
    }
    ~Record() {
        if (fileMemory != nullptr)
            GlobalFree(fileMemory);
    }
    Record(Record const&) = delete;
    Record& operator=(Record const&) = delete;
};

static_assert(sizeof(OPENFILENAMEA) == 152, "the dialog record of 64-bit Windows");

GwFileSelect::GwFileSelect() : GwDialog(), mSaveAs(false), mRecord(new Record) {}

GwFileSelect::GwFileSelect(GwWindow const& parent) : GwFileSelect(&parent) {}

GwFileSelect::GwFileSelect(GwWindow const* parent) : GwFileSelect() {
    mRecord->ofn.hwndOwner = parent != nullptr ? static_cast<HWND>(parent->window()) : nullptr;
}

GwFileSelect::GwFileSelect(GwFileSelect const& other)
    : GwDialog(other), mFilter(other.mFilter), mDefaultExtension(other.mDefaultExtension),
      mSaveAs(other.mSaveAs), mRecord(other.mRecord) {
    ++mRecord->users;
    mText = other.text();
}

GwFileSelect& GwFileSelect::operator=(GwFileSelect const& other) {
    if (this == &other)
        return *this;
    GwDialog::operator=(other);
    mText = other.text();
    mFilter = other.mFilter;
    mDefaultExtension = other.mDefaultExtension;
    mSaveAs = other.mSaveAs;
    ++other.mRecord->users;
    if (--mRecord->users == 0)
        delete mRecord;
    mRecord = other.mRecord;
    return *this;
}

GwFileSelect::~GwFileSelect() {
    if (--mRecord->users == 0)
        delete mRecord;
}

GwFileSelect* GwFileSelect::newInstance(EventData const*) {
    return new GwFileSelect();
}

GwFileSelect& GwFileSelect::setParent(GwWindow const* parent) {
    mRecord->ofn.hwndOwner = parent != nullptr ? static_cast<HWND>(parent->window()) : nullptr;
    return *this;
}

GwFileSelect& GwFileSelect::setFilter(String const& filter) {
    mFilter = filter;
    return *this;
}

GwFileSelect& GwFileSelect::setFile(String const& path) {
    char* const buffer = mRecord->ofn.lpstrFile;
    if (buffer == nullptr)
        return *this;
    std::size_t const length = std::min<std::size_t>(path.size(), fileBufferSize - 1);
    char const* const source = path.c_str();
    for (std::size_t i = 0; i < length; ++i)
        buffer[i] = source[i] == '/' ? '\\' : source[i];
    buffer[length] = '\0';
    return *this;
}

String GwFileSelect::file() const {
    Iterator paths(*this);
    return paths.begin();
}

void GwFileSelect::setFlag(unsigned long flag, bool on) {
    if (on)
        mRecord->ofn.Flags |= flag;
    else
        mRecord->ofn.Flags &= ~flag;
}

GwFileSelect& GwFileSelect::setSaveAs(bool saveAs) {
    mSaveAs = saveAs;
    setFlag(OFN_FILEMUSTEXIST, !saveAs);
    return *this;
}

GwFileSelect& GwFileSelect::setMultiselect(bool multiselect) {
    setFlag(OFN_ALLOWMULTISELECT, multiselect);
    return *this;
}

bool GwFileSelect::multiselect() const {
    return (mRecord->ofn.Flags & OFN_ALLOWMULTISELECT) != 0;
}

GwFileSelect& GwFileSelect::setStyle(eStyle style, bool on) {
    switch (style) {
    case eMultiselect:
        setFlag(OFN_ALLOWMULTISELECT, on);
        break;
    case eChangeDir:
        setFlag(OFN_NOCHANGEDIR, !on);
        break;
    case eReadOnlyReturn:
        setFlag(OFN_NOREADONLYRETURN, !on);
        break;
    case eOverwritePrompt:
        setFlag(OFN_OVERWRITEPROMPT, on);
        break;
    case eFileMustExist:
    case ePathMustExist:
        setFlag(OFN_FILEMUSTEXIST, on);
        break;
    case eCreatePrompt:
        setFlag(OFN_CREATEPROMPT, on);
        break;
    case eValidate:
        setFlag(OFN_NOVALIDATE, !on);
        break;
    case eSaveAs:
        setSaveAs(on);
        break;
    }
    return *this;
}

unsigned long GwFileSelect::flags() const {
    return mRecord->ofn.Flags;
}

unsigned long GwFileSelect::filterIndex() const {
    return mRecord->ofn.nFilterIndex;
}

char* GwFileSelect::fileBuffer() const {
    return mRecord->ofn.lpstrFile;
}

unsigned short GwFileSelect::fileOffset() const {
    return mRecord->ofn.nFileOffset;
}

GwFileSelect& GwFileSelect::setVisible(bool) {
    HWND const active = GetActiveWindow();
    OPENFILENAMEA& ofn = mRecord->ofn;
    mRecord->title = text().c_str();
    ofn.lpstrTitle = mRecord->title.c_str();
    if (mFilter.size() != 0) {
        // "|" becomes NUL; the string's own NUL ends the list, so a final "|" gives the
        // two NULs that end a filter list.
        mRecord->filter.assign(mFilter.c_str());
        for (char& c : mRecord->filter)
            if (c == '|')
                c = '\0';
        ofn.lpstrFilter = mRecord->filter.c_str();
        ofn.nFilterIndex = 1;
    }

    BOOL const confirmed = mSaveAs ? GetSaveFileNameA(&ofn) : GetOpenFileNameA(&ofn);
    setResult(confirmed ? 1 : 0);

    std::string const filter(mFilter.c_str());
    mDefaultExtension = String(gw_file_select::defaultExtension(filter, ofn.nFilterIndex).c_str());

    ofn.lpstrFilter = nullptr;
    ofn.lpstrTitle = nullptr;
    mRecord->filter.clear();
    if (active != nullptr)
        SetActiveWindow(active);
    return *this;
}

// The iterator.

GW_CLASS_MAKES(GwFileSelect::Iterator, "GwFileSelect::Iterator", "GwObject")

namespace {

constexpr int kGrowBy = 100;

String const& emptyPath() {
    static String const empty;
    return empty;
}

} // namespace

GwFileSelect::Iterator::Iterator()
    : mCount(0), mPaths(new String*[1]()), mCapacity(1), mPosition(0) {}

GwFileSelect::Iterator::Iterator(GwFileSelect const& dialog)
    : mCount(0), mPaths(new String*[5]()), mCapacity(5), mPosition(0) {
    if (dialog.result() == 0)
        return;
    char* const buffer = dialog.fileBuffer();
    if (buffer == nullptr)
        return;
    std::size_t const offset = dialog.fileOffset();
    if (offset != 0 && offset <= fileBufferSize)
        buffer[offset - 1] = '\0';
    std::string const extension(dialog.mDefaultExtension.c_str(), dialog.mDefaultExtension.size());
    for (std::string const& path :
         gw_file_select::resultPaths(buffer, fileBufferSize, offset, extension))
        add(String(path.c_str(), path.size()));
}

GwFileSelect::Iterator::Iterator(Iterator const& other)
    : GwObject(other), mCount(0), mPaths(nullptr), mCapacity(0), mPosition(0) {
    copyFrom(other);
}

GwFileSelect::Iterator& GwFileSelect::Iterator::operator=(Iterator const& other) {
    if (this != &other) {
        clear();
        copyFrom(other);
    }
    return *this;
}

GwFileSelect::Iterator::~Iterator() {
    clear();
}

GwFileSelect::Iterator* GwFileSelect::Iterator::newInstance(EventData const*) {
    return new Iterator();
}

void GwFileSelect::Iterator::copyFrom(Iterator const& other) {
    mCapacity = other.mCapacity;
    mPaths = new String*[static_cast<std::size_t>(mCapacity)]();
    for (int i = 0; i < other.mCapacity; ++i)
        if (other.mPaths[i] != nullptr)
            mPaths[i] = new String(*other.mPaths[i]);
    mCount = other.mCount;
    mPosition = other.mPosition;
}

void GwFileSelect::Iterator::clear() {
    for (int i = 0; i < mCapacity; ++i)
        delete mPaths[i];
    delete[] mPaths;
    mPaths = nullptr;
    mCapacity = 0;
    mCount = 0;
}

void GwFileSelect::Iterator::add(String const& path) {
    // The first empty slot, else 100 more slots.
    int slot = 0;
    while (slot < mCapacity && mPaths[slot] != nullptr)
        ++slot;
    if (slot == mCapacity) {
        String** const grown = new String*[static_cast<std::size_t>(mCapacity) + kGrowBy]();
        for (int i = 0; i < mCapacity; ++i)
            grown[i] = mPaths[i];
        delete[] mPaths;
        mPaths = grown;
        mCapacity += kGrowBy;
    }
    mPaths[slot] = new String(path);
    ++mCount;
}

String const& GwFileSelect::Iterator::at(int index) const {
    if (index < 0 || index >= mCount || mPaths[index] == nullptr)
        return emptyPath();
    return *mPaths[index];
}

String GwFileSelect::Iterator::begin() {
    mPosition = 0;
    return at(mPosition);
}

String GwFileSelect::Iterator::end() {
    int filled = 0;
    for (int i = 0; i < mCapacity; ++i)
        if (mPaths[i] != nullptr)
            ++filled;
    mPosition = filled;
    return at(mPosition);
}

String GwFileSelect::Iterator::operator*() const {
    return at(mPosition);
}

String const* GwFileSelect::Iterator::operator->() const {
    return &at(mPosition);
}

String GwFileSelect::Iterator::operator++() {
    ++mPosition;
    return at(mPosition);
}

String GwFileSelect::Iterator::operator++(int) {
    String const current = at(mPosition);
    ++mPosition;
    return current;
}

String GwFileSelect::Iterator::operator--() {
    --mPosition;
    return at(mPosition);
}

String GwFileSelect::Iterator::operator--(int) {
    String const current = at(mPosition);
    --mPosition;
    return current;
}
