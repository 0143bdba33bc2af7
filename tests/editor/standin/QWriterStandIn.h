// The stand-in editor library's record of calls, shared with the tests that read it.
#pragma once

// Argument slots recorded per call: the four register arguments and eight on the stack.
constexpr int kQuillStandInSlots = 12;

// The functions the stand-in exports besides the entry points (found with GetProcAddress).
using QuillStandInCallCount = int (*)();
using QuillStandInCall = bool (*)(int index, char* name, int nameSize, long long* slots,
                                  double* floats);
using QuillStandInClear = void (*)();
using QuillStandInSetResult = void (*)(long long result, double floating);
using QuillStandInLastEditArea = void* (*)();
using QuillStandInReceived = int (*)(unsigned int message);
using QuillStandInNotify = long long (*)(void* target, unsigned long long wParam, long long lParam);
