// Static windows, text labels, group boxes and images.
#include "GwStatic.h"

#include <windows.h>

#include "GwEventData.h"
#include "GwResource.h"

GW_CLASS_MAKES(GwStatic, "GwStatic", "GwControl")
GW_CLASS_MAKES(GwText, "GwText", "GwStatic")
GW_CLASS_MAKES(GwGroupBox, "GwGroupBox", "GwStatic")
GW_CLASS_MAKES(GwImage, "GwImage", "GwStatic")

namespace {

// WS_CHILD | WS_VISIBLE | WS_GROUP | WS_TABSTOP
constexpr unsigned long kControlStyle = 0x50030000;

HWND hwndOf(void* handle) {
    return static_cast<HWND>(handle);
}

// The static type that shows an image type, and the platform's image type.
struct ImageKind {
    LONG staticType;
    UINT imageType;
};

ImageKind imageKind(GwImage::eImageType type) {
    switch (type) {
    case GwImage::eBitmap:
        return {SS_BITMAP, IMAGE_BITMAP};
    case GwImage::eEnhMetaFile:
        return {SS_ENHMETAFILE, IMAGE_ENHMETAFILE};
    case GwImage::eIcon:
        return {SS_ICON, IMAGE_ICON};
    default:
        return {-1, 0};
    }
}

// LoadImageA knows no enhanced metafiles: they are read from the file, or from a resource of
// the type "ENHMETAFILE".
HANDLE loadEnhMetaFile(HMODULE module, char const* name, bool fromFile) {
    if (fromFile)
        return GetEnhMetaFileA(name);
    if (module == nullptr)
        module = GetModuleHandleA(nullptr);
    HRSRC const found = FindResourceA(module, name, "ENHMETAFILE");
    HGLOBAL const loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    void const* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr)
        return nullptr;
    return SetEnhMetaFileBits(SizeofResource(module, found), static_cast<BYTE const*>(bytes));
}

// The image that setImage gave a static, kept as a property of its window: the platform's
// static frees no image, so the control frees the one it loaded itself when its window goes.
char const kOwnedImage[] = "GwImage";

// Frees an image the way its type is freed (DeleteObject alone would leak icons and
// metafiles).
void freeImage(HANDLE image, UINT imageType) {
    if (image == nullptr)
        return;
    if (imageType == IMAGE_ICON)
        DestroyIcon(static_cast<HICON>(image));
    else if (imageType == IMAGE_ENHMETAFILE)
        DeleteEnhMetaFile(static_cast<HENHMETAFILE>(image));
    else
        DeleteObject(image);
}

// The platform image type that a static of this style shows; false for a static without
// image.
bool imageTypeOf(HWND hwnd, UINT& imageType) {
    switch (GetWindowLongA(hwnd, GWL_STYLE) & 0xFF) {
    case SS_BITMAP:
        imageType = IMAGE_BITMAP;
        return true;
    case SS_ENHMETAFILE:
        imageType = IMAGE_ENHMETAFILE;
        return true;
    case SS_ICON:
        imageType = IMAGE_ICON;
        return true;
    default:
        return false;
    }
}

// Takes the image that setImage loaded out of the static and frees it, unless something else
// has replaced it meanwhile (whoever did got it back from STM_SETIMAGE and owns it).
void releaseOwnedImage(HWND hwnd) {
    HANDLE const owned = RemovePropA(hwnd, kOwnedImage);
    UINT imageType = IMAGE_BITMAP;
    if (owned == nullptr || !imageTypeOf(hwnd, imageType))
        return;
    if (reinterpret_cast<HANDLE>(SendMessageA(hwnd, STM_GETIMAGE, imageType, 0)) != owned)
        return;
    SendMessageA(hwnd, STM_SETIMAGE, imageType, 0);
    freeImage(owned, imageType);
}

} // namespace

// GwStatic

GwStatic& GwStatic::operator=(GwStatic const& other) {
    GwControl::operator=(other);
    return *this;
}

GwStatic::~GwStatic() = default;

GwStatic* GwStatic::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwStatic(hwnd) : nullptr;
}

// GwText

GwText::GwText(GwWindow const& parent, unsigned long long id, String const& text) : GwStatic() {
    createControl(0, "STATIC", text.c_str(), kControlStyle | SS_LEFT, parent, id);
    setControlFont();
}

GwText& GwText::operator=(GwText const& other) {
    GwStatic::operator=(other);
    return *this;
}

GwText::~GwText() = default;

GwText* GwText::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwText(hwnd) : nullptr;
}

// GwGroupBox

GwGroupBox::GwGroupBox(GwWindow const& parent, unsigned long long id, String const& text)
    : GwStatic() {
    createControl(0, "BUTTON", text.c_str(), kControlStyle | BS_GROUPBOX, parent, id);
}

GwGroupBox& GwGroupBox::operator=(GwGroupBox const& other) {
    GwStatic::operator=(other);
    return *this;
}

GwGroupBox::~GwGroupBox() = default;

GwGroupBox* GwGroupBox::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwGroupBox(hwnd) : nullptr;
}

// GwImage

GwImage& GwImage::operator=(GwImage const& other) {
    GwStatic::operator=(other);
    return *this;
}

GwImage::~GwImage() = default;

GwImage& GwImage::setImage(String const& fileName, eImageType type, bool map3DColors) {
    return load(nullptr, fileName.c_str(), type,
                LR_LOADFROMFILE | (map3DColors ? LR_LOADMAP3DCOLORS : 0));
}

GwImage& GwImage::setImage(unsigned long long id, GwResource const& module, eImageType type,
                           bool map3DColors) {
    return load(module.module(), MAKEINTRESOURCEA(id & 0xFFFF), type,
                map3DColors ? LR_LOADMAP3DCOLORS : 0);
}

GwImage& GwImage::load(void* module, char const* name, eImageType type, unsigned int flags) {
    HWND const hwnd = hwndOf(mHandle);
    ImageKind const kind = imageKind(type);
    if ((GetWindowLongA(hwnd, GWL_STYLE) & 0xFF) != kind.staticType)
        return *this;
    HANDLE image = LoadImageA(static_cast<HINSTANCE>(module), name, kind.imageType, 0, 0,
                              LR_DEFAULTSIZE | flags);
    if (image == nullptr && type == eEnhMetaFile)
        image = loadEnhMetaFile(static_cast<HMODULE>(module), name, (flags & LR_LOADFROMFILE) != 0);
    if (image == nullptr)
        return *this;
    auto const previous = reinterpret_cast<HANDLE>(
        SendMessageA(hwnd, STM_SETIMAGE, kind.imageType, reinterpret_cast<LPARAM>(image)));
    SetPropA(hwnd, kOwnedImage, image);
    // The static shows only images of its own type, so the previous one is of this type too.
    freeImage(previous, kind.imageType);
    return *this;
}

bool GwImage::paintSqueezed() {
    HWND const hwnd = hwndOf(mHandle);
    LONG const style = GetWindowLongA(hwnd, GWL_STYLE);
    if ((style & 0xFF) != SS_BITMAP || (style & SS_REALSIZEIMAGE) == 0)
        return false;
    auto const bitmap =
        reinterpret_cast<HBITMAP>(SendMessageA(hwnd, STM_GETIMAGE, IMAGE_BITMAP, 0));
    if (bitmap == nullptr)
        return false;
    BITMAP info{};
    GetObjectA(bitmap, sizeof info, &info);
    RECT client{};
    GetClientRect(hwnd, &client);
    if (info.bmWidth <= client.right && info.bmHeight <= client.bottom)
        return false;

    PAINTSTRUCT paint{};
    HDC const target = BeginPaint(hwnd, &paint);
    HDC const memory = CreateCompatibleDC(target);
    SetMapMode(memory, GetMapMode(target));
    HGDIOBJ const before = SelectObject(memory, bitmap);
    POINT clientSize{client.right, client.bottom};
    POINT bitmapSize{info.bmWidth, info.bmHeight};
    DPtoLP(target, &clientSize, 1);
    DPtoLP(memory, &bitmapSize, 1);
    SetStretchBltMode(target, HALFTONE);
    SetBrushOrgEx(target, 0, 0, nullptr);
    StretchBlt(target, 0, 0, clientSize.x, clientSize.y, memory, 0, 0, bitmapSize.x, bitmapSize.y,
               SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    EndPaint(hwnd, &paint);
    return true;
}

long long GwImage::msgHandler(unsigned long long msg, unsigned long long wParam, long long lParam) {
    if (msg == WM_PAINT && paintSqueezed())
        return 0;
    if (msg == WM_DESTROY)
        releaseOwnedImage(hwndOf(mHandle));
    return GwStatic::msgHandler(msg, wParam, lParam);
}

GwImage* GwImage::newInstance(EventData const* data) {
    void* hwnd = GwEventData::windowOf(data);
    return hwnd != nullptr ? new GwImage(hwnd) : nullptr;
}
