// Dynamic libraries by Win32-style names: how a host loads its plug-ins. Any thread.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Opens the library at `name` (translated as every file name is) with its symbols made global. Null
/// on failure, after the log lines "Dylib open failure for: <path>" and "Dylib error = <text>".
VM_API HMODULE LoadLibrary(const char* name);

/// The address of a plain exported name. Null for a null handle; for a missing symbol a message box
/// shows the loader's text and the result is null.
VM_API void* GetProcAddress(HMODULE library, const char* symbol);

/// 0 for a null handle, else 1. The code stays in memory on purpose: windows, timers and callbacks of
/// a plug-in may outlive the host's interest in it.
VM_API int FreeLibrary(HMODULE library);
