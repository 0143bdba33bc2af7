// The stand-in editor library of the tests: every entry point records its call (the name it
// was asked for, twelve argument slots and the four floating-point argument registers) and
// returns what the test chose. QuillDll_OpenDocExt also puts a document window with an edit
// area of the class "QuillEditArea" into the parent it is given.
#include <windows.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "QWriterStandIn.h"

namespace {

struct Call {
    std::string name;
    long long slots[kQuillStandInSlots];
    double floats[4];
};

std::vector<Call> gCalls;
long long gResult = 0;
HWND gLastEditArea = nullptr;
std::map<UINT, int> gReceived; // messages that reached the edit areas' own procedure

LRESULT CALLBACK editAreaProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    ++gReceived[msg];
    return DefWindowProcA(hwnd, msg, wParam, lParam);
}

char const* editAreaClass() {
    static bool registered = false;
    if (!registered) {
        WNDCLASSA cls{};
        cls.lpfnWndProc = editAreaProc;
        cls.hInstance = GetModuleHandleA("QWriter.dll");
        cls.lpszClassName = "QuillEditArea";
        RegisterClassA(&cls);
        registered = true;
    }
    return "QuillEditArea";
}

// A document window filling the parent with the edit area inside it.
void openDocument(HWND parent) {
    if (!IsWindow(parent))
        return;
    RECT area{};
    GetClientRect(parent, &area);
    HWND const document =
        CreateWindowExA(0, "Static", "Dokument", WS_CHILD | WS_VISIBLE, 0, 0, area.right,
                        area.bottom, parent, nullptr, GetModuleHandleA("QWriter.dll"), nullptr);
    gLastEditArea =
        CreateWindowExA(0, editAreaClass(), "", WS_CHILD | WS_VISIBLE, 0, 0, area.right,
                        area.bottom, document, nullptr, GetModuleHandleA("QWriter.dll"), nullptr);
}

} // namespace

extern "C" {

__attribute__((used)) double quillStandInDouble = 0.0;

__attribute__((used)) long long quillStandInRecord(char const* name, long long const* slots,
                                                   double const* floats) {
    Call call;
    call.name = name;
    std::memcpy(call.slots, slots, sizeof call.slots);
    std::memcpy(call.floats, floats, sizeof call.floats);
    gCalls.push_back(call);
    if (call.name == "QuillDll_OpenDocExt")
        openDocument(reinterpret_cast<HWND>(slots[1]));
    return gResult;
}

__declspec(dllexport) int QuillStandIn_CallCount() {
    return static_cast<int>(gCalls.size());
}

__declspec(dllexport) bool QuillStandIn_Call(int index, char* name, int nameSize, long long* slots,
                                             double* floats) {
    if (index < 0 || index >= static_cast<int>(gCalls.size()) || nameSize <= 0)
        return false;
    Call const& call = gCalls[static_cast<std::size_t>(index)];
    std::strncpy(name, call.name.c_str(), static_cast<std::size_t>(nameSize) - 1);
    name[nameSize - 1] = '\0';
    std::memcpy(slots, call.slots, sizeof call.slots);
    std::memcpy(floats, call.floats, sizeof call.floats);
    return true;
}

__declspec(dllexport) void QuillStandIn_Clear() {
    gCalls.clear();
}

__declspec(dllexport) void QuillStandIn_SetResult(long long result, double floating) {
    gResult = result;
    quillStandInDouble = floating;
}

__declspec(dllexport) HWND QuillStandIn_LastEditArea() {
    return gLastEditArea;
}

// How many times `message` reached an edit area's own procedure.
__declspec(dllexport) int QuillStandIn_Received(unsigned int message) {
    auto const found = gReceived.find(message);
    return found != gReceived.end() ? found->second : 0;
}

// Sends "QuillDllNotification" to a window, as the editor does.
__declspec(dllexport) long long QuillStandIn_Notify(HWND target, unsigned long long wParam,
                                                    long long lParam) {
    static UINT const message = RegisterWindowMessageA("QuillDllNotification");
    return SendMessageA(target, message, static_cast<WPARAM>(wParam), static_cast<LPARAM>(lParam));
}

} // extern "C"
