// Helpers of the editor tests: the stand-in editor library named through the registry, its
// record of calls, the forwarders of VmGui.dll by name, and child processes of the test
// program for what happens once per process.
#pragma once

#include <windows.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QWriterStandIn.h"

namespace testing_quill {

char const kSettingsKey[] = "SOFTWARE\\VMG\\VALMOR\\Settings";

// The folder of the stand-in QWriter.dll, beside the test program.
inline std::string standInFolder() {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string folder = path;
    folder.erase(folder.find_last_of('\\'));
    return folder + "\\quill-standin";
}

// Writes "QuillPath" as the given bytes (REG_SZ, with or without a NUL at the end).
inline void writeQuillPath(std::string const& bytes) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, kSettingsKey, 0, nullptr, 0, KEY_WRITE, nullptr,
                              &key, nullptr),
              ERROR_SUCCESS);
    RegSetValueExA(key, "QuillPath", 0, REG_SZ, reinterpret_cast<BYTE const*>(bytes.data()),
                   static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
}

inline void removeQuillPath() {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_WRITE, &key) == ERROR_SUCCESS) {
        RegDeleteValueA(key, "QuillPath");
        RegCloseKey(key);
    }
}

// An exported function as a function of type Function.
template <class Function> Function procAs(FARPROC proc) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(proc));
}

// VmGui.dll, loaded by name: the tests reach it only through GetProcAddress.
inline HMODULE vmGui() {
    static HMODULE const module = LoadLibraryA("VmGui.dll");
    return module;
}

// A forwarder of VmGui.dll.
inline FARPROC forwarder(char const* name) {
    return GetProcAddress(vmGui(), name);
}

// Calls the forwarder `name` as a function of the given type.
template <class Result, class... Args> Result forward(char const* name, Args... args) {
    using Function = Result (*)(Args...);
    return procAs<Function>(forwarder(name))(args...);
}

// One call the stand-in recorded.
struct Call {
    std::string name;
    long long slots[kQuillStandInSlots] = {};
    double floats[4] = {};
};

// The stand-in's control functions (once it has been loaded).
inline HMODULE standIn() {
    return GetModuleHandleA("QWriter.dll");
}

inline std::vector<Call> calls() {
    std::vector<Call> all;
    auto const count =
        procAs<QuillStandInCallCount>(GetProcAddress(standIn(), "QuillStandIn_CallCount"));
    auto const call = procAs<QuillStandInCall>(GetProcAddress(standIn(), "QuillStandIn_Call"));
    if (count == nullptr || call == nullptr)
        return all;
    for (int i = 0; i < count(); ++i) {
        Call c;
        char name[128] = {};
        call(i, name, sizeof name, c.slots, c.floats);
        c.name = name;
        all.push_back(c);
    }
    return all;
}

inline void clearCalls() {
    auto const clear = procAs<QuillStandInClear>(GetProcAddress(standIn(), "QuillStandIn_Clear"));
    if (clear != nullptr)
        clear();
}

inline void setResult(long long result, double floating) {
    auto const set =
        procAs<QuillStandInSetResult>(GetProcAddress(standIn(), "QuillStandIn_SetResult"));
    if (set != nullptr)
        set(result, floating);
}

// How many times the message reached the stand-in's edit areas' own procedure.
inline int received(unsigned int message) {
    auto const count =
        procAs<QuillStandInReceived>(GetProcAddress(standIn(), "QuillStandIn_Received"));
    return count != nullptr ? count(message) : -1;
}

// The stand-in sends "QuillDllNotification" to the window.
inline void notify(HWND target, unsigned long long wParam, long long lParam) {
    auto const send = procAs<QuillStandInNotify>(GetProcAddress(standIn(), "QuillStandIn_Notify"));
    if (send != nullptr)
        send(target, wParam, lParam);
}

inline HWND lastEditArea() {
    auto const last =
        procAs<QuillStandInLastEditArea>(GetProcAddress(standIn(), "QuillStandIn_LastEditArea"));
    return last != nullptr ? static_cast<HWND>(last()) : nullptr;
}

// Names the stand-in in the registry and makes a first call, which loads it in this process
// (once), then clears its record and its results.
inline void useStandIn() {
    writeQuillPath(standInFolder() + '\0');
    forward<long long>("QuillDll_AppIsIdle");
    ASSERT_NE(standIn(), nullptr);
    clearCalls();
    setResult(0, 0.0);
}

// Runs this test program again for one test, with the environment variable QUILL_CHILD set
// to `scenario` and "Path" set to `path` (unchanged when empty); answers the exit code.
inline DWORD runChild(char const* test, std::string const& scenario, std::string const& path,
                      std::string const& output = std::string()) {
    char program[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string command = std::string("\"") + program + "\" --gtest_filter=" + test;
    char oldPath[32768] = {};
    GetEnvironmentVariableA("Path", oldPath, sizeof oldPath);
    SetEnvironmentVariableA("QUILL_CHILD", scenario.c_str());
    SetEnvironmentVariableA("QUILL_CHILD_OUT", output.c_str());
    if (!path.empty())
        SetEnvironmentVariableA("Path", path.c_str());
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    BOOL const started = CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0,
                                        nullptr, nullptr, &startup, &process);
    SetEnvironmentVariableA("QUILL_CHILD", nullptr);
    SetEnvironmentVariableA("QUILL_CHILD_OUT", nullptr);
    SetEnvironmentVariableA("Path", oldPath);
    if (!started)
        return 0xDEADu;
    DWORD code = 0xDEADu;
    if (WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.hProcess, &code);
    else
        TerminateProcess(process.hProcess, 0xDEADu);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

// The scenario this process runs as a child, or "" in the parent.
inline std::string childScenario() {
    char const* scenario = std::getenv("QUILL_CHILD");
    return scenario != nullptr ? scenario : "";
}

} // namespace testing_quill
