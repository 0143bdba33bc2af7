#include "GwTools.h"

#include <windows.h>

#include "GwObject.h"

GW_CLASS_RECORD(GwTools, "GwTools", nullptr, nullptr, nullptr)

Class const* GwTools::isA() const {
    return isa();
}

char* GwTools::charToAnsi(char* text) {
    if (text != nullptr)
        OemToCharA(text, text);
    return text;
}

char* GwTools::ansiToChar(char* text) {
    if (text != nullptr)
        CharToOemA(text, text);
    return text;
}
