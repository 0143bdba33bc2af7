// The kit's counter of debugger breaks, under the name the tests use.
#pragma once

#include <VmGuiTesting/Breakpoints.h>

using vmgui_testing::BreakpointCounter;
