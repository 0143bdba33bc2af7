// Small questions a test asks about windows (class, text, styles), whether it runs under
// Wine, and a guard that destroys a window when a test ends.
#pragma once

#include <windows.h>

#include <string>

namespace vmgui_testing {

// Destroys a window, and with it its object, when the test ends however it ends.
struct WindowCloser {
    HWND hwnd;
    ~WindowCloser() {
        if (IsWindow(hwnd))
            DestroyWindow(hwnd);
    }
};

inline int clientHeight(HWND hwnd) {
    RECT client{};
    GetClientRect(hwnd, &client);
    return client.bottom;
}

inline std::string classNameOf(HWND hwnd) {
    char name[256] = {};
    GetClassNameA(hwnd, name, sizeof name);
    return name;
}

// The whole window text, however long (of a window of another process too).
inline std::string textOf(HWND hwnd) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(hwnd)) + 1, '\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextA(hwnd, text.data(), static_cast<int>(text.size()))));
    return text;
}

inline LONG styleOf(HWND hwnd) {
    return GetWindowLongA(hwnd, GWL_STYLE);
}

inline LONG extendedStyleOf(HWND hwnd) {
    return GetWindowLongA(hwnd, GWL_EXSTYLE);
}

// True under Wine, whose ntdll exports wine_get_version.
inline bool runningOnWine() {
    HMODULE const ntdll = GetModuleHandleA("ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

} // namespace vmgui_testing
