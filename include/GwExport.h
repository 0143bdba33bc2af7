// Export macro of VmGui.dll.
#pragma once

#if defined(_WIN32) && !defined(VMGUI_STATIC)
#if defined(VMGUI_BUILD)
#define VMGUI_API __declspec(dllexport)
#else
#define VMGUI_API __declspec(dllimport)
#endif
#else
#define VMGUI_API
#endif
