// File names as ported code writes them, and where the standard folders lie. Every buffer belongs
// to the caller. Nothing here locks: the folder caches are filled on first use, CurrentDirectory is
// shared by all threads.
//
// Names are the file system's bytes; no encoding is applied. A path is at most 255 bytes.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Turns a Win32 or colon-separated name into a POSIX path, in place; the buffer holds at least 256
/// bytes.
///  - A name that begins with '/' has every '\' and ':' replaced by '/'.
///  - A name without ':' has every '\' replaced by '/'.
///  - Any other name (`C:\Music\a.syx`, `Disk:Music:a.syx`) lies on a volume: the first component is
///    a folder of the volumes root (VMCORE_VOLUMES, else `/run/media/<user>` if that exists, else
///    `/media/<user>`), the drive letter included. Empty components vanish. A result that does not
///    fit shows the message box "CFURLGetFileSystemRepresentation - error creating POSIX name"
///    ("Error") and leaves the name with all its separators as ':'.
///  - Then a final ".bmp" of any case becomes ".png", because bitmap resources are stored so; a name
///    of four characters is left alone. Case is never changed otherwise.
VM_API void Win2PosixPath(char* path, bool isDirectory);
VM_API void Win2MacPath(char* path, bool isDirectory); ///< the same

/// The zero-terminated string becomes a length byte (length modulo 256) and that many characters.
VM_API void ctop(char* text);
/// The reverse, ended by a zero byte.
VM_API void ptoc(unsigned char* text);

/// The four-character type code that the file system keeps for the file (in the extended attributes
/// of HFS volumes and of servers for them), else 0x3F3F3F3F ("????").
VM_API DWORD MacFileType(LPCSTR name);

struct FSSpec;
/// Must not be called: shows the message box "FSSpecToPath should never be called" ("Internal
/// Error") and returns its answer. The arguments are not touched.
VM_API int FSSpecToPath(FSSpec* spec, char* buffer, int size);

/// Each copies the folder's path, at most size - 1 characters, and returns `buffer`: an empty
/// string when there is no such folder or its path is longer than 255 bytes. The user's folders are
/// created. Only the two preference folders always end the buffer with a zero; from the others, a
/// path as long as the buffer comes unterminated: give 256 bytes.
VM_API char* GetPreferencesPath(char* buffer, int size);              ///< /etc/xdg
VM_API char* GetUserPreferencesPath(char* buffer, int size);          ///< $XDG_CONFIG_HOME
VM_API char* GetDocumentsPath(char* buffer, int size);                ///< the desktop's documents
VM_API char* GetFontsPath(char* buffer, int size);                    ///< $XDG_DATA_HOME/fonts
VM_API char* GetApplicationsPath(char* buffer, int size);             ///< /opt
VM_API char* GetApplicationSupportPath(char* buffer, int size);       ///< $XDG_DATA_HOME
VM_API char* GetApplicationSupportPathSystem(char* buffer, int size); ///< /usr/local/share

/// What those functions found; empty until then, and never looked up again once filled.
extern VM_API char PreferencesPath[MAX_PATH];
extern VM_API char UserPreferencesPath[MAX_PATH];
extern VM_API char DocumentsPath[MAX_PATH];
extern VM_API char FontsPath[MAX_PATH];
extern VM_API char ApplicationsPath[MAX_PATH];
extern VM_API char ApplicationSupportPath[MAX_PATH];
extern VM_API char ApplicationSupportPathSystem[MAX_PATH];

/// The library's own current directory, a POSIX path, empty for none: CreateFile resolves bare
/// names against it.
extern VM_API char CurrentDirectory[MAX_PATH];

/// Translates `directory` into CurrentDirectory and returns 1. The process's working directory
/// stays.
VM_API BOOL SetCurrentDirectory(LPCSTR directory);

/// Copies the working directory of the process, not CurrentDirectory, at most size - 1 bytes of it,
/// and returns the length of the copy; 0 for a null buffer.
VM_API DWORD GetCurrentDirectory(DWORD size, char* buffer);

/// Not the path of a module: places the file name `name` beside the running executable and returns
/// the length of the path, which is written with backslashes and cut at size - 1 characters. An
/// empty string and 0 without a name, without an executable, or when its path is not ASCII.
VM_API DWORD GetModuleFileName(LPCSTR name, char* buffer, DWORD size);
