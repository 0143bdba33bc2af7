// The binding of the editor library: its directory from the registry, the load on first use
// and the lookup of every forwarded call.
#include "GwQuillDll.h"

#include <windows.h>

#include <string>
#include <vector>

#include "GwThisDll.h"

namespace {

HMODULE gQuillModule = nullptr;

char const kSettingsKey[] = "SOFTWARE\\VMG\\VALMOR\\Settings";
constexpr UINT kCaptionId = 1000;
constexpr UINT kMessageId = 1002;
constexpr int kStringChars = 260;

// The editor's directory from the registry; empty when the key or value is missing.
std::string quillPath() {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return std::string();
    std::vector<char> value(kStringChars + 1);
    LONG status = ERROR_MORE_DATA;
    DWORD size = 0;
    for (int attempt = 0; attempt < 4 && status == ERROR_MORE_DATA; ++attempt) {
        size = static_cast<DWORD>(value.size());
        status = RegQueryValueExA(key, "QuillPath", nullptr, nullptr,
                                  reinterpret_cast<BYTE*>(value.data()), &size);
        if (status == ERROR_MORE_DATA)
            value.resize(static_cast<std::size_t>(size) + 1);
    }
    RegCloseKey(key);
    if (status != ERROR_SUCCESS)
        return std::string();
    // A value stored without its NUL ends at its size.
    std::size_t length = 0;
    while (length < size && length < value.size() && value[length] != '\0')
        ++length;
    return std::string(value.data(), length);
}

// Puts the directory in front of "Path".
void prependToPath(std::string const& directory) {
    std::string old;
    DWORD const needed = GetEnvironmentVariableA("Path", nullptr, 0);
    if (needed > 0) {
        std::vector<char> buffer(needed + 1);
        DWORD const length = GetEnvironmentVariableA("Path", buffer.data(), needed + 1);
        if (length <= needed)
            old.assign(buffer.data(), length);
    }
    std::string const path = directory + ";" + old;
    SetEnvironmentVariableA("Path", path.c_str());
}

std::string libraryString(UINT id) {
    char text[kStringChars + 1] = {};
    LoadStringA(static_cast<HINSTANCE>(GwThisDll::current().module()), id, text, sizeof text);
    return text;
}

} // namespace

void* gwQuillModule() {
    if (gQuillModule != nullptr)
        return gQuillModule;
    std::string const directory = quillPath();
    if (!directory.empty())
        prependToPath(directory);
    gQuillModule = LoadLibraryA("QWriter.dll");
    if (gQuillModule == nullptr) {
        std::string const caption = libraryString(kCaptionId);
        std::string const message = libraryString(kMessageId);
        MessageBoxA(nullptr, message.c_str(), caption.c_str(), MB_ICONHAND);
        ExitProcess(static_cast<UINT>(-1));
    }
    return gQuillModule;
}

extern "C" void* gwQuillResolve(char const* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(gwQuillModule()), name));
}
