// Replacing a function that a module imports, so that tests can watch the platform calls a
// module makes (WinHelpA, ShellExecuteA, DrawFocusRect ...) without changing what it calls.
#pragma once

#include <windows.h>

#include <cstring>

namespace testing_windows {

// The entry of a loaded module's data directory (IMAGE_DIRECTORY_ENTRY_IMPORT, _EXPORT ...).
inline IMAGE_DATA_DIRECTORY const& imageDirectory(HMODULE module, int entry) {
    auto const* const base = reinterpret_cast<BYTE const*>(module);
    auto const* const dos = reinterpret_cast<IMAGE_DOS_HEADER const*>(base);
    auto const* const nt = reinterpret_cast<IMAGE_NT_HEADERS const*>(base + dos->e_lfanew);
    return nt->OptionalHeader.DataDirectory[entry];
}

// The import-table slot through which module calls dll!function; null when the module does
// not import it.
inline void** importSlot(HMODULE module, char const* dll, char const* function) {
    if (module == nullptr)
        return nullptr;
    auto* const base = reinterpret_cast<BYTE*>(module);
    IMAGE_DATA_DIRECTORY const& directory = imageDirectory(module, IMAGE_DIRECTORY_ENTRY_IMPORT);
    if (directory.VirtualAddress == 0)
        return nullptr;
    HMODULE const exporter = GetModuleHandleA(dll);
    FARPROC const target = exporter != nullptr ? GetProcAddress(exporter, function) : nullptr;
    for (auto* descriptor =
             reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
         descriptor->Name != 0; ++descriptor) {
        if (_stricmp(reinterpret_cast<char const*>(base + descriptor->Name), dll) != 0)
            continue;
        auto* slot = reinterpret_cast<IMAGE_THUNK_DATA*>(base + descriptor->FirstThunk);
        auto const* name =
            descriptor->OriginalFirstThunk != 0
                ? reinterpret_cast<IMAGE_THUNK_DATA const*>(base + descriptor->OriginalFirstThunk)
                : nullptr;
        for (; slot->u1.Function != 0; ++slot) {
            bool found = false;
            if (name != nullptr) {
                if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
                    auto const* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME const*>(
                        base + name->u1.AddressOfData);
                    found = std::strcmp(reinterpret_cast<char const*>(byName->Name), function) == 0;
                }
                ++name;
            } else {
                found =
                    target != nullptr && slot->u1.Function == reinterpret_cast<ULONG_PTR>(target);
            }
            if (found)
                return reinterpret_cast<void**>(&slot->u1.Function);
        }
    }
    return nullptr;
}

// While it lives, module's calls of dll!function go to replacement; original() is the
// function the module called before.
class ImportHook {
public:
    ImportHook(HMODULE module, char const* dll, char const* function, void* replacement)
        : mSlot(importSlot(module, dll, function)) {
        if (mSlot != nullptr) {
            mOriginal = *mSlot;
            write(replacement);
        }
    }
    ~ImportHook() {
        if (mSlot != nullptr)
            write(mOriginal);
    }
    ImportHook(ImportHook const&) = delete;
    ImportHook& operator=(ImportHook const&) = delete;

    bool installed() const { return mSlot != nullptr; }
    void* original() const { return mOriginal; }

private:
    void write(void* value) {
        DWORD old = 0;
        VirtualProtect(mSlot, sizeof(void*), PAGE_READWRITE, &old);
        *mSlot = value;
        VirtualProtect(mSlot, sizeof(void*), old, &old);
        FlushInstructionCache(GetCurrentProcess(), mSlot, sizeof(void*));
    }

    void** mSlot;
    void* mOriginal = nullptr;
};

} // namespace testing_windows
