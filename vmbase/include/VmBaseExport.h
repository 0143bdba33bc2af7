// Export macro of VmBase.dll.
#pragma once

#if defined(_WIN32) && !defined(VMBASE_STATIC)
#if defined(VMBASE_BUILD)
#define VMBASE_API __declspec(dllexport)
#else
#define VMBASE_API __declspec(dllimport)
#endif
#else
#define VMBASE_API
#endif
