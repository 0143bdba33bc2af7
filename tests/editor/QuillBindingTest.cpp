// The editor library binding: the 122 forwarders that VmGui.dll exports, their lookup names,
// arguments and results passed through unchanged to the stand-in QWriter.dll, one lookup per
// call, and in child processes what happens once per process: "QuillPath" put in front of
// "Path" once, and the message box and exit code -1 when the editor cannot be loaded.
#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "ImportHook.h"
#include "QuillTesting.h"

using namespace testing_quill;

namespace {

// Every forwarder's name and the name it looks up in the editor library.
struct Entry {
    char const* name;
    std::string lookup;
};

std::vector<Entry> const& entries() {
    static std::vector<Entry> const all = {
#define QUILL_ENTRY(name) {#name, #name},
#define QUILL_DECORATED(name, bytes) {#name, "_" #name "@" #bytes},
#include "QuillEntries.inc"
    };
    return all;
}

std::string environmentPath() {
    DWORD const needed = GetEnvironmentVariableA("Path", nullptr, 0);
    std::string value(needed, '\0');
    DWORD const length = GetEnvironmentVariableA("Path", value.data(), needed);
    value.resize(length);
    return value;
}

class QuillBinding : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(useStandIn()); }
    void TearDown() override { removeQuillPath(); }
};

std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

TEST_F(QuillBinding, ExportsEveryEntryPointUnderItsPlainName) {
    auto* const base = reinterpret_cast<BYTE const*>(vmGui());
    ASSERT_NE(base, nullptr);
    auto const* dos = reinterpret_cast<IMAGE_DOS_HEADER const*>(base);
    auto const* nt = reinterpret_cast<IMAGE_NT_HEADERS const*>(base + dos->e_lfanew);
    IMAGE_DATA_DIRECTORY const& directory =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    auto const* exports =
        reinterpret_cast<IMAGE_EXPORT_DIRECTORY const*>(base + directory.VirtualAddress);
    auto const* names = reinterpret_cast<DWORD const*>(base + exports->AddressOfNames);
    std::set<std::string> exported;
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
        std::string const name = reinterpret_cast<char const*>(base + names[i]);
        if (name.find("QuillDll_") != std::string::npos)
            exported.insert(name);
    }
    std::set<std::string> expected;
    for (Entry const& entry : entries())
        expected.insert(entry.name);
    EXPECT_EQ(expected.size(), 122u);
    EXPECT_EQ(exported, expected);
}

TEST_F(QuillBinding, EveryForwarderReachesItsEntryPoint) {
    for (Entry const& entry : entries()) {
        clearCalls();
        setResult(static_cast<long long>(std::strlen(entry.name)), 0.0);
        long long const result = forward<long long>(entry.name, 11ll, 22ll, 33ll);
        std::vector<Call> const made = calls();
        ASSERT_EQ(made.size(), 1u) << entry.name;
        EXPECT_EQ(made[0].name, entry.lookup);
        EXPECT_EQ(made[0].slots[0], 11);
        EXPECT_EQ(made[0].slots[1], 22);
        EXPECT_EQ(made[0].slots[2], 33);
        EXPECT_EQ(result, static_cast<long long>(std::strlen(entry.name)));
    }
}

TEST_F(QuillBinding, WatermarkTextAsksForTheDecoratedName) {
    forward<long long>("QuillDll_SetWatermarkText", 1ll, 2ll);
    forward<long long>("QuillDll_Exit");
    std::vector<Call> const made = calls();
    ASSERT_EQ(made.size(), 2u);
    EXPECT_EQ(made[0].name, "_QuillDll_SetWatermarkText@8");
    EXPECT_EQ(made[1].name, "QuillDll_Exit");
}

namespace {

// Calls QuillDll_GetVersion with the arguments 1000 + i for i below N.
template <std::size_t... I> long long callWith(std::index_sequence<I...>) {
    return forward<long long>("QuillDll_GetVersion", static_cast<long long>(1000 + I)...);
}

template <std::size_t N> void checkIntegers() {
    clearCalls();
    setResult(0x0123456789ABCDEFll + static_cast<long long>(N), 0.0);
    long long const result = callWith(std::make_index_sequence<N>());
    EXPECT_EQ(result, 0x0123456789ABCDEFll + static_cast<long long>(N)) << N;
    std::vector<Call> const made = calls();
    ASSERT_EQ(made.size(), 1u);
    for (std::size_t i = 0; i < N; ++i)
        EXPECT_EQ(made[0].slots[i], static_cast<long long>(1000 + i)) << N << " arguments, " << i;
}

template <std::size_t... N> void checkAllIntegers(std::index_sequence<N...>) {
    (checkIntegers<N>(), ...);
}

} // namespace

TEST_F(QuillBinding, ZeroToTwelveIntegerArgumentsAndTheResultPassUnchanged) {
    checkAllIntegers(std::make_index_sequence<13>());
}

TEST_F(QuillBinding, DoubleArgumentsAndADoubleResultPassUnchanged) {
    setResult(-5, 3.141592653589793);
    double const result =
        forward<double>("QuillDll_Txb_DrawTextSetZoom", 7, 2.5, -8ll, -7.25, 1e300, 6, 0.1);
    EXPECT_EQ(bitsOf(result), bitsOf(3.141592653589793));
    std::vector<Call> const made = calls();
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(static_cast<int>(made[0].slots[0]), 7);
    EXPECT_EQ(bitsOf(made[0].floats[1]), bitsOf(2.5));
    EXPECT_EQ(made[0].slots[2], -8);
    EXPECT_EQ(bitsOf(made[0].floats[3]), bitsOf(-7.25));
    // From the fifth on, arguments are on the stack, doubles as their bits.
    EXPECT_EQ(static_cast<std::uint64_t>(made[0].slots[4]), bitsOf(1e300));
    EXPECT_EQ(static_cast<int>(made[0].slots[5]), 6);
    EXPECT_EQ(static_cast<std::uint64_t>(made[0].slots[6]), bitsOf(0.1));

    // The integer result comes back in rax from the same kind of call.
    EXPECT_EQ(forward<long long>("QuillDll_Txb_DrawTextSetZoom", 1.0), -5);
}

namespace {

std::vector<std::string> gLookups;
FARPROC WINAPI countingGetProcAddress(HMODULE module, LPCSTR name) {
    if (reinterpret_cast<std::uintptr_t>(name) > 0xFFFF)
        gLookups.push_back(name);
    return GetProcAddress(module, name);
}

} // namespace

TEST_F(QuillBinding, EveryCallLooksItsEntryPointUpOnce) {
    testing_windows::ImportHook hook(vmGui(), "kernel32.dll", "GetProcAddress",
                                     reinterpret_cast<void*>(&countingGetProcAddress));
    ASSERT_TRUE(hook.installed());
    gLookups.clear();
    for (int i = 0; i < 3; ++i)
        forward<long long>("QuillDll_Exit");
    forward<long long>("QuillDll_SetWatermarkText");
    EXPECT_EQ(gLookups, (std::vector<std::string>{"QuillDll_Exit", "QuillDll_Exit", "QuillDll_Exit",
                                                  "_QuillDll_SetWatermarkText@8"}));
}

// What happens once per process, each in a child process of its own.

namespace {

class QuillFirstLoad : public ::testing::Test {
protected:
    void TearDown() override { removeQuillPath(); }
};

} // namespace

TEST(QuillChild, FirstCallPrependsQuillPathOnce) {
    if (childScenario() != "load")
        GTEST_SKIP() << "runs in a child process of QuillFirstLoad";
    char const* expected = std::getenv("QUILL_CHILD_OUT");
    ASSERT_NE(expected, nullptr);
    std::string const before = environmentPath();
    ASSERT_EQ(standIn(), nullptr);
    forward<long long>("QuillDll_Exit");
    EXPECT_EQ(environmentPath(), std::string(expected) + ";" + before);
    ASSERT_NE(standIn(), nullptr);
    char file[MAX_PATH] = {};
    GetModuleFileNameA(standIn(), file, sizeof file);
    EXPECT_EQ(_strnicmp(file, standInFolder().c_str(), standInFolder().size()), 0) << file;

    // A second call leaves "Path" alone, even when the registry names another folder now.
    writeQuillPath(std::string("X:\\elsewhere") + '\0');
    forward<long long>("QuillDll_Init");
    EXPECT_EQ(environmentPath(), std::string(expected) + ";" + before);
    std::vector<Call> const made = calls();
    ASSERT_EQ(made.size(), 2u);
    EXPECT_EQ(made[0].name, "QuillDll_Exit");
    EXPECT_EQ(made[1].name, "QuillDll_Init");
}

TEST_F(QuillFirstLoad, QuillPathGoesInFrontOfPathOnce) {
    std::string const folder = standInFolder();
    writeQuillPath(folder + '\0');
    EXPECT_EQ(runChild("QuillChild.FirstCallPrependsQuillPathOnce", "load", "C:\\Windows", folder),
              0u);
}

TEST_F(QuillFirstLoad, QuillPathLongerThan260CharactersIsUsedInFull) {
    // Empty entries after the folder make the value long and keep the folder first.
    std::string const value = standInFolder() + std::string(300, ';');
    writeQuillPath(value + '\0');
    EXPECT_EQ(runChild("QuillChild.FirstCallPrependsQuillPathOnce", "load", "C:\\Windows", value),
              0u);
}

TEST_F(QuillFirstLoad, QuillPathWithoutNulEndsAtItsSize) {
    std::string const folder = standInFolder();
    writeQuillPath(folder); // stored without its NUL
    EXPECT_EQ(runChild("QuillChild.FirstCallPrependsQuillPathOnce", "load", "C:\\Windows", folder),
              0u);
}

TEST_F(QuillFirstLoad, PathLongerThan260CharactersIsKeptInFull) {
    std::string const folder = standInFolder();
    writeQuillPath(folder + '\0');
    std::string path = "C:\\Windows\\system32;C:\\Windows";
    for (int i = 0; path.size() < 700; ++i)
        path += ";C:\\nowhere\\folder" + std::to_string(i);
    EXPECT_EQ(runChild("QuillChild.FirstCallPrependsQuillPathOnce", "load", path, folder), 0u);
}

namespace {

// Notes the message box's title and texts into the file named by QUILL_CHILD_OUT, then
// answers it.
void CALLBACK answerMessageBox(HWND, UINT, UINT_PTR, DWORD) {
    struct Search {
        static BOOL CALLBACK next(HWND hwnd, LPARAM found) {
            char name[64] = {};
            GetClassNameA(hwnd, name, sizeof name);
            if (std::strcmp(name, "#32770") == 0 && IsWindowVisible(hwnd)) {
                *reinterpret_cast<HWND*>(found) = hwnd;
                return FALSE;
            }
            return TRUE;
        }
    };
    HWND box = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &Search::next, reinterpret_cast<LPARAM>(&box));
    if (box == nullptr)
        return;
    static bool noted = false;
    if (!noted) {
        noted = true;
        std::ofstream out(std::getenv("QUILL_CHILD_OUT"), std::ios::binary);
        char text[1024] = {};
        GetWindowTextA(box, text, sizeof text);
        out << "title:" << text << "\n";
        for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
            char cls[64] = {};
            GetClassNameA(child, cls, sizeof cls);
            if (_stricmp(cls, "Static") == 0 && GetWindowTextA(child, text, sizeof text) > 0)
                out << "text:" << text << "\n";
        }
    }
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, IDOK)));
}

} // namespace

TEST(QuillChild, MissingEditorShowsTheMessageAndEndsTheProcess) {
    if (childScenario() != "missing")
        GTEST_SKIP() << "runs in a child process of QuillFirstLoad";
    SetTimer(nullptr, 0, 50, &answerMessageBox);
    forward<long long>("QuillDll_Exit");
    ADD_FAILURE() << "the process goes on after the failed load";
}

TEST_F(QuillFirstLoad, MissingEditorShowsTheMessageAndExitsWithMinusOne) {
    removeQuillPath();
    char temp[MAX_PATH] = {};
    GetTempPathA(sizeof temp, temp);
    std::string const output = std::string(temp) + "quill-missing.txt";
    DeleteFileA(output.c_str());
    DWORD const code = runChild("QuillChild.MissingEditorShowsTheMessageAndEndsTheProcess",
                                "missing", "C:\\Windows\\system32;C:\\Windows", output);
    EXPECT_EQ(code, 0xFFFFFFFFu);
    std::ifstream in(output, std::ios::binary);
    std::stringstream seen;
    seen << in.rdbuf();
    EXPECT_EQ(seen.str(), "title:VALMOR\xAE Dynamischer Linker\n"
                          "text:Die Quill-Editor Bibliothek konnte nicht geladen werden!\n\n"
                          "Bitte installieren Sie die Anwendung neu\n");
    in.close();
    DeleteFileA(output.c_str());
}

TEST(QuillChild, WithoutQuillPathTheEditorComesFromTheSearchPath) {
    if (childScenario() != "search")
        GTEST_SKIP() << "runs in a child process of QuillFirstLoad";
    std::string const before = environmentPath();
    ASSERT_EQ(standIn(), nullptr);
    forward<long long>("QuillDll_Exit"); // a message box here would keep the child waiting
    EXPECT_EQ(environmentPath(), before) << "nothing is put in front of Path";
    ASSERT_NE(standIn(), nullptr);
    std::vector<Call> const made = calls();
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].name, "QuillDll_Exit");
}

TEST_F(QuillFirstLoad, WithoutTheValueQuillPathTheEditorIsLoadedFromTheSearchPath) {
    writeQuillPath(std::string("X:\\elsewhere") + '\0');
    removeQuillPath(); // the key stays, the value goes
    std::string const path = standInFolder() + ";C:\\Windows\\system32;C:\\Windows";
    EXPECT_EQ(
        runChild("QuillChild.WithoutQuillPathTheEditorComesFromTheSearchPath", "search", path), 0u);
}

TEST_F(QuillFirstLoad, WithoutTheSettingsKeyTheEditorIsLoadedFromTheSearchPath) {
    removeQuillPath();
    LONG const removed = RegDeleteKeyA(HKEY_LOCAL_MACHINE, kSettingsKey);
    ASSERT_TRUE(removed == ERROR_SUCCESS || removed == ERROR_FILE_NOT_FOUND);
    std::string const path = standInFolder() + ";C:\\Windows\\system32;C:\\Windows";
    EXPECT_EQ(
        runChild("QuillChild.WithoutQuillPathTheEditorComesFromTheSearchPath", "search", path), 0u);
}
