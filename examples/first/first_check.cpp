// Runs the first program (first.exe, beside this one) as a user would: waits for its frame,
// chooses "Datei, Hallo..." from its menu bar with the keyboard, reads the message box that
// answers, presses its OK, and ends the program with "Datei, Beenden"; the program must end
// by itself with exit code 0. Run by CTest, headless under Wine.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <string>

#include <VmGui.h>
#include <VmGuiTesting.h>

using namespace vmgui_testing;

namespace {

class CheckApplication : public GwApplication {};

char const kTitle[] = "Erstes Programm";

int gFailures = 0;

bool expect(bool holds, char const* what) {
    std::printf("%s: %s\n", holds ? "ok" : "FAILED", what);
    std::fflush(stdout);
    if (!holds)
        ++gFailures;
    return holds;
}

std::string besideThisProgram(char const* name) {
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string folder = path;
    folder.erase(folder.find_last_of('\\') + 1);
    return folder + name;
}

void check(DWORD process) {
    HWND frame = nullptr;
    auto const frameUp = [&] {
        frame = findTopLevel("GwFrame", kTitle, process);
        return frame != nullptr;
    };
    if (!expect(runLoopUntil(frameUp, 20000), "the frame is up"))
        return;
    expect(GetMenu(frame) != nullptr, "the frame has its menu bar");
    expect(FindWindowExA(frame, nullptr, STATUSCLASSNAMEA, nullptr) != nullptr,
           "the frame has its status bar");

    postMenuKeys(frame, "dh"); // Alt, D ("&Datei"), H ("&Hallo...")
    HWND box = nullptr;
    auto const boxUp = [&] {
        box = findDialog(kTitle, process);
        return box != nullptr;
    };
    if (!expect(runLoopUntil(boxUp, 10000), "the message box is up"))
        return;
    expect(childWithText(box, "Hallo, Welt!") != nullptr, "the box says Hallo, Welt!");
    expect(GetWindow(box, GW_OWNER) == frame, "the frame owns the box");
    postButton(box, IDOK);
    expect(runLoopUntil([&] { return !IsWindow(box); }, 10000), "OK ends the box");

    postMenuKeys(frame, "db"); // Alt, D ("&Datei"), B ("&Beenden")
}

} // namespace

int main() {
    CheckApplication application;
    std::string command = "\"" + besideThisProgram("first.exe") + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!expect(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                               nullptr, &startup, &process) != FALSE,
                "first.exe starts"))
        return 1;
    check(process.dwProcessId);
    bool const ended = WaitForSingleObject(process.hProcess, 20000) == WAIT_OBJECT_0;
    DWORD code = 0xDEAD;
    if (ended)
        GetExitCodeProcess(process.hProcess, &code);
    else
        TerminateProcess(process.hProcess, 0xDEAD);
    expect(ended && code == 0, "the program ends by itself with exit code 0");
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    std::printf("%d failed\n", gFailures);
    return gFailures == 0 ? 0 : 1;
}
