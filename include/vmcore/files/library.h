// Dynamic libraries by Win32-style names, which is how a host loads its plug-ins (any thread), and
// scripts that need an administrator's rights.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Opens the library at `name` (translated as every file name is) with its symbols made global. Null
/// on failure, after the log lines "Dylib open failure for: <path>" and "Dylib error = <text>"; of null,
/// an empty name and one of more than 255 bytes only the first.
VM_API HMODULE LoadLibrary(const char* name);

/// The address of a plain exported name. Null for a null handle; for a missing symbol a message box
/// shows the loader's text and the result is null.
VM_API void* GetProcAddress(HMODULE library, const char* symbol);

/// 0 for a null handle, else 1. The code stays in memory on purpose: windows, timers and callbacks of
/// a plug-in may outlive the host's interest in it.
VM_API int FreeLibrary(HMODULE library);

/// Asks the desktop for an administrator's rights (polkit's pkexec) and runs `/bin/bash <path>` with
/// them. `path` is handed to a shell as it is, so one with blanks must come quoted; a relative one
/// counts from the administrator's home folder. Blocks until the script has ended or the user has
/// refused. 0 whatever came of it, also without pkexec (one log line, "ExecuteScriptFile: cannot
/// start pkexec: <reason>"); 1, and nothing is run, for null and a path that is not ASCII. Main
/// thread only.
VM_API int ExecuteScriptFile(const char* path);
