// Text conversion between the console (OEM) and window (ANSI) code pages.
#pragma once

#include <Class.h>

#include "GwExport.h"

// Helpers that need no object; the class has a class record of its own.
class VMGUI_API GwTools {
public:
    GwTools() = default;
    virtual ~GwTools() = default;

    // The class record of the object, and of the class.
    virtual Class const* isA() const;
    static Class const* isa();

    // OEM to ANSI in place; returns text.
    static char* charToAnsi(char* text);
    // ANSI to OEM in place; returns text.
    static char* ansiToChar(char* text);
};
