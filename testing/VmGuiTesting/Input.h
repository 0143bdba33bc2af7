// Input for a test as the user would give it: mouse clicks, keystrokes and characters posted
// to a window, the keyboard state of the modifier keys, and an entry chosen from a menu bar.
//
// The posted forms put the messages into the window's queue and return: the running loop
// handles them (inside a modal loop, pumping here would take the loop's own quit message away
// from it). The other forms also dispatch the queue before they return.
#pragma once

#include <windows.h>

#include <string>

#include "Loop.h"

namespace vmgui_testing {

// A left click at (x, y) of the window's client area, pressed and released, posted as the
// mouse produces it. A push button posts its click (BN_CLICKED) to its parent on the release.
inline void postClick(HWND hwnd, int x = 5, int y = 5) {
    LPARAM const at = MAKELPARAM(x, y);
    PostMessageA(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(hwnd, WM_LBUTTONUP, 0, at);
}

// The same, handled at once.
inline void click(HWND hwnd, int x = 5, int y = 5) {
    postClick(hwnd, x, y);
    pumpMessages();
}

namespace detail {

// The lParam of a key message: one press, the key's scan code, and for a release the bits of
// a key that was down and goes up.
inline LPARAM keyParam(UINT virtualKey, bool release) {
    LPARAM const scan = static_cast<LPARAM>(MapVirtualKeyA(virtualKey, MAPVK_VK_TO_VSC)) << 16;
    return scan | 1 | (release ? (LPARAM(1) << 30) | (LPARAM(1) << 31) : 0);
}

} // namespace detail

// A key pressed and released (WM_KEYDOWN, WM_KEYUP) posted to the window, as the keyboard
// gives them to the window with the focus. The character the loop translates from a
// character key (WM_CHAR) comes after the release here.
inline void postKey(HWND hwnd, UINT virtualKey) {
    PostMessageA(hwnd, WM_KEYDOWN, virtualKey, detail::keyParam(virtualKey, false));
    PostMessageA(hwnd, WM_KEYUP, virtualKey, detail::keyParam(virtualKey, true));
}

// The same, handled at once and in the keyboard's order: the press, its character, the
// release.
inline void pressKey(HWND hwnd, UINT virtualKey) {
    PostMessageA(hwnd, WM_KEYDOWN, virtualKey, detail::keyParam(virtualKey, false));
    pumpMessages();
    PostMessageA(hwnd, WM_KEYUP, virtualKey, detail::keyParam(virtualKey, true));
    pumpMessages();
}

// Characters typed into a window (the one with the focus, for the effect to be real), as
// WM_CHAR messages, handled at once.
inline void type(HWND hwnd, std::string const& text) {
    for (char c : text)
        PostMessageA(hwnd, WM_CHAR, static_cast<unsigned char>(c), 1);
    pumpMessages();
}

// Sets the keyboard state that GetKeyState reports on this thread: Control and Shift held
// or not, every other key up.
inline void setModifierKeys(bool control, bool shift) {
    BYTE keys[256] = {};
    if (control)
        keys[VK_CONTROL] = keys[VK_LCONTROL] = 0x80;
    if (shift)
        keys[VK_SHIFT] = keys[VK_LSHIFT] = 0x80;
    SetKeyboardState(keys);
}

// Chooses an entry of the window's menu bar with the keyboard, as Alt and the mnemonics do:
// Alt alone makes the menu bar active, the first letter opens its popup with that mnemonic
// ("&Datei": 'd'), each following letter picks the entry with that mnemonic in the open popup
// ("&Hallo...": 'h'). The platform's own menu loop runs the choice: it opens the popup,
// selects the entry and posts its command. Everything is posted, so the window may belong to
// another process.
inline void postMenuKeys(HWND window, std::string const& mnemonics) {
    PostMessageA(window, WM_SYSCOMMAND, SC_KEYMENU, 0);
    for (char const mnemonic : mnemonics)
        PostMessageA(window, WM_CHAR, static_cast<unsigned char>(mnemonic), 1);
}

} // namespace vmgui_testing
