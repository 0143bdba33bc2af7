#include "GwGCWMF.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "GwMetafileFormat.h"

GW_CLASS_MAKES(GwGCWMF, "GwGCWMF", "GwGC")

// The metafile handle and the number of contexts that share it.
struct GwGCWMF::Shared {
    HENHMETAFILE handle;
    long count;
};

namespace {

char const kDescription[] = "VALMOR Systeme GmbH\0Ohne Titel\0";

// A file mapped for reading; empty when it cannot be opened or mapped.
class MappedFile {
public:
    explicit MappedFile(char const* name) {
        mFile = CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
        if (mFile == INVALID_HANDLE_VALUE)
            return;
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(mFile, &size) || size.QuadPart <= 0 || size.HighPart != 0)
            return;
        mMapping = CreateFileMappingA(mFile, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (mMapping == nullptr)
            return;
        mView = MapViewOfFile(mMapping, FILE_MAP_READ, 0, 0, 0);
        if (mView != nullptr)
            mSize = static_cast<std::size_t>(size.QuadPart);
    }
    ~MappedFile() {
        if (mView != nullptr)
            UnmapViewOfFile(mView);
        if (mMapping != nullptr)
            CloseHandle(mMapping);
        if (mFile != INVALID_HANDLE_VALUE)
            CloseHandle(mFile);
    }
    MappedFile(MappedFile const&) = delete;
    MappedFile& operator=(MappedFile const&) = delete;

    unsigned char const* data() const { return static_cast<unsigned char const*>(mView); }
    std::size_t size() const { return mSize; }

private:
    HANDLE mFile = INVALID_HANDLE_VALUE;
    HANDLE mMapping = nullptr;
    void* mView = nullptr;
    std::size_t mSize = 0;
};

// The screen's device for the duration of a scope.
class ScreenDevice {
public:
    ScreenDevice() : mDevice(GetDC(nullptr)) {}
    ~ScreenDevice() { ReleaseDC(nullptr, mDevice); }
    ScreenDevice(ScreenDevice const&) = delete;
    ScreenDevice& operator=(ScreenDevice const&) = delete;
    operator HDC() const { return mDevice; }

private:
    HDC mDevice;
};

HENHMETAFILE enhancedFrom(MappedFile const& file) {
    GwMetafileFormat const format = gwMetafileFormat(file.data(), file.size());
    unsigned char const* bits = file.data() + format.offset;
    auto const length = static_cast<UINT>(format.length);
    switch (format.kind) {
    case GwMetafileKind::eEnhanced:
        // The bytes checked above, not a second reading of the file.
        return SetEnhMetaFileBits(length, bits);
    case GwMetafileKind::ePlaceable: {
        METAFILEPICT picture{};
        picture.mm = MM_ANISOTROPIC;
        picture.xExt = MulDiv(format.right - format.left, 2540, format.unitsPerInch);
        picture.yExt = MulDiv(format.bottom - format.top, 2540, format.unitsPerInch);
        ScreenDevice screen;
        return SetWinMetaFileBits(length, bits, screen, &picture);
    }
    case GwMetafileKind::eWindows:
        return SetWinMetaFileBits(length, bits, nullptr, nullptr);
    case GwMetafileKind::eInvalid:
        break;
    }
    return nullptr;
}

} // namespace

GwGCWMF::GwGCWMF(char const* file, bool enhanced, bool placeable)
    : GwGC(), mFileFlags(0), mFileName(file != nullptr ? file : ""), mX(0), mY(0), mWidth(0),
      mHeight(0), mMetafile(nullptr) {
    if (enhanced)
        mFileFlags |= kEnhanced;
    else if (placeable)
        mFileFlags |= kPlaceable;
    mOwnsDevice = true;
    setFlipY(true, 0);
}

GwGCWMF::GwGCWMF(GwGCWMF const& other)
    : GwGC(other), mFileFlags(other.mFileFlags), mFileName(other.mFileName), mX(other.mX),
      mY(other.mY), mWidth(other.mWidth), mHeight(other.mHeight), mMetafile(nullptr) {
    setFlipY(true, mHeight);
    if (other.mMetafile != nullptr) {
        mMetafile = other.mMetafile;
        ++mMetafile->count;
    }
}

GwGCWMF& GwGCWMF::operator=(GwGCWMF const& other) {
    if (this == &other)
        return *this;
    mFileFlags = other.mFileFlags;
    mFileName = other.mFileName;
    mX = other.mX;
    mY = other.mY;
    mWidth = other.mWidth;
    mHeight = other.mHeight;
    setFlipY(true, mHeight);
    if (other.mMetafile != nullptr)
        ++other.mMetafile->count;
    setMetafile(nullptr);
    mMetafile = other.mMetafile;
    return *this;
}

GwGCWMF::~GwGCWMF() {
    endRecording();
    if (mMetafile != nullptr && modified() && mFileName.size() != 0)
        saveMetaFile();
    setMetafile(nullptr);
}

GwGCWMF* GwGCWMF::newInstance(EventData const*) {
    return new GwGCWMF();
}

void* GwGCWMF::metafile() const {
    return mMetafile != nullptr ? mMetafile->handle : nullptr;
}

void GwGCWMF::setMetafile(void* metafile) {
    if (mMetafile != nullptr && --mMetafile->count == 0) {
        DeleteEnhMetaFile(mMetafile->handle);
        delete mMetafile;
    }
    mMetafile = metafile != nullptr ? new Shared{static_cast<HENHMETAFILE>(metafile), 1} : nullptr;
}

GwGCWMF& GwGCWMF::setPosition(long x, long y) {
    mX = x;
    mY = y;
    return *this;
}

GwGCWMF& GwGCWMF::setDimension(int width, int height) {
    mWidth = width;
    mHeight = height;
    setFlipY(true, mHeight);
    return *this;
}

void GwGCWMF::endRecording() {
    if (mDevice == nullptr)
        return;
    HENHMETAFILE finished = CloseEnhMetaFile(static_cast<HDC>(mDevice));
    mDevice = nullptr;
    // The recording device is gone: nothing holds the pen and brush any more.
    releasePenAndBrush();
    setMetafile(finished);
}

GwGCWMF& GwGCWMF::record() {
    RECT frame{};
    {
        ScreenDevice screen;
        frame.right = GetDeviceCaps(screen, HORZSIZE) * mWidth * 100 /
                      std::max(1, GetDeviceCaps(screen, HORZRES));
        frame.bottom = GetDeviceCaps(screen, VERTSIZE) * mHeight * 100 /
                       std::max(1, GetDeviceCaps(screen, VERTRES));
    }
    endRecording();
    setMetafile(nullptr);
    HDC device = CreateEnhMetaFileA(nullptr, nullptr,
                                    mWidth != 0 || mHeight != 0 ? &frame : nullptr, kDescription);
    if (device == nullptr)
        return *this;
    mDevice = device;
    mOwnsDevice = true;
    SetBkMode(device, TRANSPARENT);
    SetROP2(device, R2_COPYPEN);
    SetMapMode(device, MM_ANISOTROPIC);
    SetWindowExtEx(device, 1, 1, nullptr);
    SetWindowOrgEx(device, 0, 0, nullptr);
    SetViewportExtEx(device, 1, 1, nullptr);
    SetViewportOrgEx(device, 0, 0, nullptr);
    setFlipY(true, mHeight);
    mFileFlags |= kModified;
    return *this;
}

GwGCWMF& GwGCWMF::play(GwGC& target) {
    if (mDevice != nullptr)
        endRecording();
    else if (mMetafile == nullptr && mFileName.size() != 0)
        loadMetaFile();
    if (mMetafile == nullptr)
        return *this;
    long left = mX;
    long right = mX + mWidth;
    long bottom = mY;
    long top = mY + mHeight;
    if (mWidth == 0 || mHeight == 0) {
        ENHMETAHEADER header{};
        GetEnhMetaFileHeader(mMetafile->handle, sizeof header, &header);
        double const frameWidth = double(header.rclFrame.right) - header.rclFrame.left;
        double const frameHeight = double(header.rclFrame.bottom) - header.rclFrame.top;
        double const ratio = frameWidth > 0 && frameHeight > 0 ? frameWidth / frameHeight : 1.0;
        if (mWidth == 0)
            right = static_cast<long>(mHeight * ratio + 0.5 + mX);
        if (mHeight == 0)
            top = static_cast<long>(mWidth / ratio + 0.5 + mY);
    }
    RECT rect{left, target.deviceY(top), right, target.deviceY(bottom)};
    PlayEnhMetaFile(static_cast<HDC>(target.device()), mMetafile->handle, &rect);
    return *this;
}

GwGCWMF& GwGCWMF::setClipboard() {
    endRecording();
    if (!OpenClipboard(nullptr))
        return *this;
    EmptyClipboard();
    HENHMETAFILE handle = nullptr;
    if (mMetafile != nullptr) {
        // The clipboard owns the handle now; copies that share it keep theirs.
        if (mMetafile->count > 1) {
            handle = CopyEnhMetaFileA(mMetafile->handle, nullptr);
            --mMetafile->count;
        } else {
            handle = mMetafile->handle;
            delete mMetafile;
        }
        mMetafile = nullptr;
    }
    SetClipboardData(CF_ENHMETAFILE, handle);
    CloseClipboard();
    return *this;
}

GwGCWMF& GwGCWMF::convertWmfToEmf() {
    if (mFileName.size() == 0)
        return *this;
    loadMetaFile();
    std::size_t const size = mFileName.size();
    if (size >= 3) {
        std::string name(mFileName.c_str(), size);
        char& letter = name[size - 3];
        if (letter == 'w')
            letter = 'e';
        else if (letter == 'W')
            letter = 'E';
        mFileName = String(name.c_str());
    }
    mFileFlags = (mFileFlags | kEnhanced | kModified) & ~kPlaceable;
    return *this;
}

void GwGCWMF::loadMetaFile() {
    MappedFile file(mFileName.c_str());
    if (file.data() == nullptr) {
        setMetafile(nullptr);
        return;
    }
    setMetafile(enhancedFrom(file));
}

void GwGCWMF::saveMetaFile() {
    HENHMETAFILE metafile = static_cast<HENHMETAFILE>(this->metafile());
    ENHMETAHEADER header{};
    if (metafile == nullptr || GetEnhMetaFileHeader(metafile, sizeof header, &header) == 0)
        return;
    if (enhanced()) {
        if (HENHMETAFILE copy = CopyEnhMetaFileA(metafile, mFileName.c_str()))
            DeleteEnhMetaFile(copy);
        return;
    }
    ScreenDevice screen;
    UINT const length = GetWinMetaFileBits(metafile, 0, nullptr, MM_ANISOTROPIC, screen);
    if (length == 0)
        return;
    std::size_t const headerSize = placeable() ? kGwPlaceableHeaderSize : 0;
    HANDLE file = CreateFileA(mFileName.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    auto const total = static_cast<DWORD>(length + headerSize);
    HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, total, nullptr);
    void* view = mapping != nullptr ? MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, total) : nullptr;
    if (view != nullptr) {
        auto* bytes = static_cast<unsigned char*>(view);
        if (placeable()) {
            int const dpiX = GetDeviceCaps(screen, LOGPIXELSX);
            int const dpiY = GetDeviceCaps(screen, LOGPIXELSY);
            RECTL const& bounds = header.rclBounds;
            gwWritePlaceableHeader(
                bytes, static_cast<std::int16_t>(MulDiv(bounds.left, 2540, dpiX)),
                static_cast<std::int16_t>(MulDiv(bounds.top, 2540, dpiY)),
                static_cast<std::int16_t>(MulDiv(bounds.right, 2540, dpiX)),
                static_cast<std::int16_t>(MulDiv(bounds.bottom, 2540, dpiY)), 2540);
        }
        GetWinMetaFileBits(metafile, length, bytes + headerSize, MM_ANISOTROPIC, screen);
        UnmapViewOfFile(view);
    }
    if (mapping != nullptr)
        CloseHandle(mapping);
    CloseHandle(file);
}

GwDimension GwGCWMF::calcText(String const& text) {
    GwDimension const extent = GwGC::calcText(text);
    return GwDimension(extent.width(), std::labs(extent.height()));
}

GwGC& GwGCWMF::setFont(String const& face, int size, double angle) {
    double const tenths = angle * 1800.0 / (4.0 * std::atan(1.0)); // pi: 4 atan(1)
    long escapement = static_cast<long>((enhanced() ? tenths : 3600.0 - tenths) + 0.5);
    if (escapement >= 3600)
        escapement -= 3600;
    selectFont(face, size, angle, escapement);
    return *this;
}
