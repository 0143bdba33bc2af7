// The input that windows which filter it offer to their event handlers before the platform.
#pragma once

#include <windows.h>

#include "GwMessages.h"

// Key presses and characters, every mouse button message, and the library's click messages.
inline bool gwIsInputMessage(unsigned long long msg) {
    switch (msg) {
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSCHAR:
    case GwMsgLeftClick:
    case GwMsgRightClick:
    case GwMsgMiddleClick:
        return true;
    default:
        return msg >= WM_LBUTTONDOWN && msg <= WM_MBUTTONDBLCLK;
    }
}
