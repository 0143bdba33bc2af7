// The test kit for applications on VmGui (VmGui::Testing): header-only helpers for tests
// that drive real windows, run under Wine on Linux or directly on Windows.
//
//   Loop.h           the message loop for a time or until a condition holds
//   Script.h         steps run from a timer while modal loops run
//   Input.h          clicks, keystrokes, characters and menu commands, as the user gives them
//   Dialogs.h        dialogs and message boxes found by caption, their buttons pressed
//   Breakpoints.h    debugger breaks (DebugBreak) counted
//   Pixels.h         pixels of a window read back
//   WindowQueries.h  class, text and styles of a window
//
// In CMake: find_package(VmGui), target_link_libraries(test PRIVATE VmGui::Testing) and
// vmgui_add_wine_test(test).
#pragma once

#include "VmGuiTesting/Breakpoints.h"
#include "VmGuiTesting/Dialogs.h"
#include "VmGuiTesting/Input.h"
#include "VmGuiTesting/Loop.h"
#include "VmGuiTesting/Pixels.h"
#include "VmGuiTesting/Script.h"
#include "VmGuiTesting/WindowQueries.h"
