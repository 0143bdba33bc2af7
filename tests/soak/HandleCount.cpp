#include "HandleCount.h"

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <set>
#include <type_traits>
#include <vector>

#include "ImportHook.h"

namespace soak {
namespace {

using testing_windows::ImportHook;

// What the library holds through the watched calls.
struct Held {
    std::set<void*> menus;
    std::set<void*> icons;
    std::set<void*> gdiObjects;
    long hooks = 0;
    long borrowedDevices = 0;
    long imageLists = 0;
};

Held& held() {
    static Held state;
    return state;
}

std::vector<std::unique_ptr<ImportHook>>& hooks() {
    static std::vector<std::unique_ptr<ImportHook>> installed;
    return installed;
}

HMODULE library() {
    return GetModuleHandleA("VmGui.dll");
}

template <class R> void* asPointer(R value) {
    if constexpr (std::is_pointer_v<R>)
        return const_cast<void*>(reinterpret_cast<void const*>(value));
    else
        return reinterpret_cast<void*>(static_cast<ULONG_PTR>(value));
}

inline void* firstOf() {
    return nullptr;
}
template <class First, class... Rest> void* firstOf(First first, Rest...) {
    return asPointer(first);
}

// One watched function: the library's calls go through call(), which calls the platform's
// function and hands the result (and the first argument) to the observer.
template <int N, class F> struct Watch;
template <int N, class R, class... A> struct Watch<N, R (*)(A...)> {
    using Observer = void (*)(void* result, void* first);
    static inline void* original = nullptr;
    static inline Observer observer = nullptr;

    static R WINAPI call(A... args) {
        R const result = reinterpret_cast<R(WINAPI*)(A...)>(original)(args...);
        observer(asPointer(result), firstOf(args...));
        return result;
    }

    static void install(char const* dll, char const* function, Observer observe) {
        auto hook =
            std::make_unique<ImportHook>(library(), dll, function, reinterpret_cast<void*>(&call));
        if (!hook->installed())
            return;
        original = hook->original();
        observer = observe;
        hooks().push_back(std::move(hook));
    }
};

#define SOAK_WATCH(dll, function, ...)                                                             \
    Watch<__COUNTER__, decltype(&function)>::install(dll, #function, __VA_ARGS__)

void madeMenu(void* menu, void*) {
    if (menu != nullptr)
        held().menus.insert(menu);
}

void madeGdiObject(void* object, void*) {
    if (object != nullptr)
        held().gdiObjects.insert(object);
}

void loadedImage(void* image, void*) {
    if (image == nullptr)
        return;
    if (GetObjectType(static_cast<HGDIOBJ>(image)) != 0)
        held().gdiObjects.insert(image);
    else
        held().icons.insert(image);
}

void deletedGdiObject(void* done, void* object) {
    if (done != nullptr)
        held().gdiObjects.erase(object);
}

// CloseEnhMetaFile ends the recording device and makes the metafile.
void closedRecording(void* metafile, void* device) {
    held().gdiObjects.erase(device);
    madeGdiObject(metafile, nullptr);
}

void destroyedMenu(void* done, void* menu) {
    if (done != nullptr)
        held().menus.erase(menu);
}

void destroyedIcon(void* done, void* icon) {
    if (done != nullptr)
        held().icons.erase(icon);
}

// A call that takes (step 1) or gives back (step -1) one of the counted things when it
// succeeds.
template <long Held::*Counter, long Step> void counted(void* result, void*) {
    if (result != nullptr)
        held().*Counter += Step;
}

BOOL CALLBACK countChild(HWND, LPARAM count) {
    ++*reinterpret_cast<long*>(count);
    return TRUE;
}

BOOL CALLBACK countTopLevel(HWND hwnd, LPARAM count) {
    ++*reinterpret_cast<long*>(count);
    EnumChildWindows(hwnd, &countChild, count);
    return TRUE;
}

bool platformCounts() {
    SetLastError(0);
    return GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS) != 0 ||
           GetLastError() != ERROR_CALL_NOT_IMPLEMENTED;
}

} // namespace

bool watchLibraryHandles() {
    static bool started = false;
    if (started)
        return !hooks().empty();
    started = true;
    if (library() == nullptr)
        return false;
    SOAK_WATCH("user32.dll", CreateMenu, &madeMenu);
    SOAK_WATCH("user32.dll", CreatePopupMenu, &madeMenu);
    SOAK_WATCH("user32.dll", LoadMenuA, &madeMenu);
    SOAK_WATCH("user32.dll", LoadImageA, &loadedImage);
    SOAK_WATCH("user32.dll", DestroyMenu, &destroyedMenu);
    SOAK_WATCH("user32.dll", DestroyIcon, &destroyedIcon);
    SOAK_WATCH("user32.dll", SetWindowsHookExA, &counted<&Held::hooks, 1>);
    SOAK_WATCH("user32.dll", UnhookWindowsHookEx, &counted<&Held::hooks, -1>);
    SOAK_WATCH("user32.dll", GetDC, &counted<&Held::borrowedDevices, 1>);
    SOAK_WATCH("user32.dll", GetDCEx, &counted<&Held::borrowedDevices, 1>);
    SOAK_WATCH("user32.dll", ReleaseDC, &counted<&Held::borrowedDevices, -1>);
    SOAK_WATCH("user32.dll", BeginPaint, &counted<&Held::borrowedDevices, 1>);
    SOAK_WATCH("user32.dll", EndPaint, &counted<&Held::borrowedDevices, -1>);
    SOAK_WATCH("comctl32.dll", ImageList_Create, &counted<&Held::imageLists, 1>);
    SOAK_WATCH("comctl32.dll", ImageList_Duplicate, &counted<&Held::imageLists, 1>);
    SOAK_WATCH("comctl32.dll", ImageList_Destroy, &counted<&Held::imageLists, -1>);
    SOAK_WATCH("comctl32.dll", ImageList_GetIcon, &loadedImage);
    SOAK_WATCH("gdi32.dll", CreateBrushIndirect, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreatePenIndirect, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreateFontIndirectA, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreateRectRgnIndirect, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreateHalftonePalette, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreateCompatibleDC, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CreateEnhMetaFileA, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", CloseEnhMetaFile, &closedRecording);
    SOAK_WATCH("gdi32.dll", CopyEnhMetaFileA, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", GetEnhMetaFileA, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", SetEnhMetaFileBits, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", SetWinMetaFileBits, &madeGdiObject);
    SOAK_WATCH("gdi32.dll", DeleteObject, &deletedGdiObject);
    SOAK_WATCH("gdi32.dll", DeleteDC, &deletedGdiObject);
    SOAK_WATCH("gdi32.dll", DeleteEnhMetaFile, &deletedGdiObject);
    return !hooks().empty();
}

long countThreadWindows() {
    long count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &countTopLevel, reinterpret_cast<LPARAM>(&count));
    return count;
}

HandleCount countHandles(bool* watched) {
    HandleCount count;
    if (platformCounts()) {
        if (watched != nullptr)
            *watched = false;
        count.user = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
        count.gdi = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
        return count;
    }
    if (watched != nullptr)
        *watched = true;
    Held& state = held();
    for (auto menu = state.menus.begin(); menu != state.menus.end();)
        menu = IsMenu(static_cast<HMENU>(*menu)) ? std::next(menu) : state.menus.erase(menu);
    for (auto object = state.gdiObjects.begin(); object != state.gdiObjects.end();) {
        object = GetObjectType(static_cast<HGDIOBJ>(*object)) != 0 ? std::next(object)
                                                                   : state.gdiObjects.erase(object);
    }
    count.user = countThreadWindows() + static_cast<long>(state.menus.size()) +
                 static_cast<long>(state.icons.size()) + state.hooks;
    count.gdi =
        static_cast<long>(state.gdiObjects.size()) + state.borrowedDevices + state.imageLists;
    return count;
}

} // namespace soak
