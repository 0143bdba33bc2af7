// The binding of the editor library QWriter.dll, which is loaded on the first call of one of
// the QuillDll_* forwarders.
#pragma once

// The editor's entry point `name`. The first call loads the editor library: the directory in
// the value "QuillPath" of HKEY_LOCAL_MACHINE\SOFTWARE\VMG\VALMOR\Settings, when there is
// one, is put in front of the environment variable "Path", then "QWriter.dll" is loaded. When
// that fails, a message box tells so (strings 1000 and 1002 of the library) and the process
// ends with exit code -1. Every call looks the name up anew; a name the editor does not
// export gives null.
//
// The registry value is read in full, whatever its length, up to its first NUL or its size
// when it has none; "Path" is read in full too, so nothing of either is lost.
extern "C" void* gwQuillResolve(char const* name);

// The editor library, loaded on first use as gwQuillResolve does it.
void* gwQuillModule();
