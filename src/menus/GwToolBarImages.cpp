// The tool bar's images: bitmaps, the standard images, hot images and tool-bar resources.
#include "GwToolBar.h"

#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "GwBitmap.h"
#include "GwResource.h"
#include "menus/GwToolBarResource.h"

namespace {

constexpr UINT kListFlags = ILC_COLOR24 | ILC_MASK;
// The image size of lists made for bitmaps without a resource of their own.
constexpr int kImageWidth = 16;
constexpr int kImageHeight = 15;

// 0x00RRGGBB as a COLORREF: red and blue exchanged, the top byte cleared.
COLORREF colorRef(unsigned long color) {
    return ((color & 0xFFUL) << 16) | (color & 0xFF00UL) | ((color >> 16) & 0xFFUL);
}

unsigned long rgb(unsigned char red, unsigned char green, unsigned char blue) {
    return (static_cast<unsigned long>(red) << 16) | (static_cast<unsigned long>(green) << 8) |
           blue;
}

int bitmapWidth(HBITMAP bitmap) {
    BITMAP info{};
    return bitmap != nullptr && GetObjectA(bitmap, sizeof info, &info) != 0 ? info.bmWidth : 0;
}

// A list of images of cx x cy with room for the bitmap's images plus extra, holding the
// bitmap's images; index is the first (-1 when they could not be added).
HIMAGELIST listWith(int cx, int cy, int extra, HBITMAP bitmap, COLORREF mask, int& index) {
    index = -1;
    if (cx <= 0 || cy <= 0)
        return nullptr;
    HIMAGELIST list = ImageList_Create(cx, cy, kListFlags, bitmapWidth(bitmap) / cx + extra, 1);
    if (list != nullptr)
        index = ImageList_AddMasked(list, bitmap, mask);
    return list;
}

// A hot list with the normal list's image size holding the bitmap's images; index is the
// first.
HIMAGELIST hotListWith(HIMAGELIST normal, HBITMAP bitmap, COLORREF mask, int& index) {
    int cx = 0;
    int cy = 0;
    ImageList_GetIconSize(normal, &cx, &cy);
    return listWith(cx, cy, 1, bitmap, mask, index);
}

HBITMAP loadBitmap(HMODULE module, unsigned long long id, bool dibSection) {
    return static_cast<HBITMAP>(LoadImageA(module, MAKEINTRESOURCEA(static_cast<WORD>(id)),
                                           IMAGE_BITMAP, 0, 0,
                                           dibSection ? LR_CREATEDIBSECTION : 0));
}

} // namespace

void* GwToolBar::getStdImageList() {
    if (gStdImageList != nullptr)
        return gStdImageList;
    // A bar of its own loads the platform's standard images into its list.
    HWND bar = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", WS_CHILD, 0, 0, 0, 0, HWND_MESSAGE,
                               nullptr, GetModuleHandleA(nullptr), nullptr);
    if (bar == nullptr)
        return nullptr;
    SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageA(bar, TB_LOADIMAGES, IDB_STD_SMALL_COLOR, reinterpret_cast<LPARAM>(HINST_COMMCTRL));
    auto list = reinterpret_cast<HIMAGELIST>(SendMessageA(bar, TB_GETIMAGELIST, 0, 0));
    if (list != nullptr)
        gStdImageList = ImageList_Duplicate(list);
    DestroyWindow(bar);
    return gStdImageList;
}

GwToolBar& GwToolBar::add(GwBitmap const& bitmap, unsigned long mask, int& index) {
    index = -1;
    if (mHandle == nullptr)
        return *this;
    auto list = reinterpret_cast<HIMAGELIST>(send(TB_GETIMAGELIST, 0, 0));
    if (bitmap.id() != 0) {
        auto handle = static_cast<HBITMAP>(bitmap.handle());
        if (list != nullptr) {
            index = ImageList_AddMasked(list, handle, colorRef(mask));
        } else if (HIMAGELIST made =
                       listWith(kImageWidth, kImageHeight, 0, handle, colorRef(mask), index)) {
            send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(made));
        }
        return *this;
    }
    // The standard images.
    auto standard = static_cast<HIMAGELIST>(getStdImageList());
    if (standard == nullptr)
        return *this;
    if (list == nullptr) {
        send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(ImageList_Duplicate(standard)));
        return *this;
    }
    int const old = ImageList_GetImageCount(list);
    int const count = ImageList_GetImageCount(standard);
    if (!ImageList_SetImageCount(list, static_cast<UINT>(old + count)))
        return *this;
    for (int i = 0; i < count; ++i) {
        HICON icon = ImageList_GetIcon(standard, i, ILD_TRANSPARENT);
        ImageList_ReplaceIcon(list, old + i, icon);
        if (icon != nullptr)
            DestroyIcon(icon); // an icon handle is freed as an icon, not as a GDI object
    }
    index = old;
    return *this;
}

GwToolBar& GwToolBar::add(GwBitmap const& bitmap, unsigned long mask) {
    int index = -1;
    return add(bitmap, mask, index);
}

GwToolBar& GwToolBar::add(GwBitmap const& bitmap, unsigned char red, unsigned char green,
                          unsigned char blue, int& index) {
    return add(bitmap, rgb(red, green, blue), index);
}

GwToolBar& GwToolBar::add(GwBitmap const& bitmap, unsigned char red, unsigned char green,
                          unsigned char blue) {
    int index = -1;
    return add(bitmap, rgb(red, green, blue), index);
}

int GwToolBar::add(GwBitmap const& bitmap, unsigned long mask, GwBitmap const& hot,
                   unsigned long hotMask) {
    int index = -1;
    add(bitmap, mask, index);
    if (index < 0)
        return -1;
    // Taking the hot list leaves the bar without one.
    auto previous = reinterpret_cast<HIMAGELIST>(send(TB_SETHOTIMAGELIST, 0, 0));
    int hotIndex = -1;
    if (previous != nullptr) {
        hotIndex = ImageList_AddMasked(previous, static_cast<HBITMAP>(bitmap.handle()), mask);
    } else if (HIMAGELIST made =
                   hotListWith(reinterpret_cast<HIMAGELIST>(send(TB_GETIMAGELIST, 0, 0)),
                               static_cast<HBITMAP>(hot.handle()), colorRef(hotMask), hotIndex)) {
        send(TB_SETHOTIMAGELIST, 0, reinterpret_cast<LPARAM>(made));
    }
    return hotIndex == index ? index : -1;
}

GwToolBar& GwToolBar::load(unsigned long long id, GwResource const& module, unsigned long mask,
                           int& index) {
    index = -1;
    if (mHandle == nullptr)
        return *this;
    auto hmodule = static_cast<HMODULE>(module.module());
    LPCSTR const name = MAKEINTRESOURCEA(static_cast<WORD>(id));
    HRSRC found = FindResourceA(hmodule, name, MAKEINTRESOURCEA(kGwToolBarResourceType));
    HGLOBAL loaded = found != nullptr ? LoadResource(hmodule, found) : nullptr;
    void const* bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    GwToolBarResource layout;
    if (bytes == nullptr || !gwParseToolBarResource(bytes, SizeofResource(hmodule, found), layout))
        return *this;

    auto list = reinterpret_cast<HIMAGELIST>(send(TB_GETIMAGELIST, 0, 0));
    HBITMAP bitmap = loadBitmap(hmodule, id, list == nullptr);
    if (bitmap == nullptr)
        return *this;
    int first = -1;
    if (list != nullptr) {
        first = ImageList_AddMasked(list, bitmap, colorRef(mask));
    } else if (layout.width != 0 && layout.height != 0) {
        send(TB_SETBITMAPSIZE, 0, MAKELONG(layout.width, layout.height));
        send(TB_SETBUTTONSIZE, 0, MAKELONG(layout.width + 7, layout.height + 7));
        if (HIMAGELIST made =
                listWith(layout.width, layout.height, 1, bitmap, colorRef(mask), first))
            send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(made));
    }
    DeleteObject(bitmap);
    if (first < 0)
        return *this;

    std::vector<TBBUTTON> buttons(layout.ids.size());
    int next = first;
    for (std::size_t i = 0; i < layout.ids.size(); ++i) {
        TBBUTTON& button = buttons[i];
        button.idCommand = layout.ids[i];
        if (layout.ids[i] != 0) {
            button.iBitmap = next++;
            button.fsState = TBSTATE_ENABLED;
            button.fsStyle = BTNS_BUTTON;
        } else {
            button.iBitmap = 0;
            button.fsStyle = BTNS_SEP;
        }
    }
    send(TB_ADDBUTTONSA, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
    send(TB_AUTOSIZE, 0, 0);
    index = first;
    return *this;
}

GwToolBar& GwToolBar::load(unsigned long long id, GwResource const& module, unsigned long mask) {
    int index = -1;
    return load(id, module, mask, index);
}

int GwToolBar::load(unsigned long long id, unsigned long mask, unsigned long long hotId,
                    unsigned long hotMask, GwResource const& module) {
    int index = -1;
    load(id, module, mask, index);
    if (index < 0)
        return -1;
    auto hmodule = static_cast<HMODULE>(module.module());
    auto hotList = reinterpret_cast<HIMAGELIST>(send(TB_GETHOTIMAGELIST, 0, 0));
    HBITMAP bitmap = loadBitmap(hmodule, hotId, hotList == nullptr);
    if (bitmap == nullptr)
        return -1;
    int hotIndex = -1;
    if (hotList != nullptr) {
        hotIndex = ImageList_AddMasked(hotList, bitmap, colorRef(hotMask));
    } else if (HIMAGELIST made =
                   hotListWith(reinterpret_cast<HIMAGELIST>(send(TB_GETIMAGELIST, 0, 0)), bitmap,
                               colorRef(hotMask), hotIndex)) {
        send(TB_SETHOTIMAGELIST, 0, reinterpret_cast<LPARAM>(made));
    }
    DeleteObject(bitmap);
    return hotIndex == index ? index : -1;
}

void GwToolBar::releaseImages() {
    for (UINT msg : {TB_SETIMAGELIST, TB_SETHOTIMAGELIST, TB_SETDISABLEDIMAGELIST}) {
        if (auto list = reinterpret_cast<HIMAGELIST>(send(msg, 0, 0)))
            ImageList_Destroy(list);
    }
}
