// Files and folders under Win32 names. Every name passes through Win2PosixPath first; a name of
// more than 255 bytes fails like a missing file. A handle belongs to whoever opened it; nothing
// locks.
//
// Failure is 0 everywhere (-1 for OpenFile), never -1: a file handle is the descriptor itself, and
// descriptor 0 is never one. INVALID_HANDLE_VALUE is therefore 0, so that ported tests against it
// see a failure.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/security.h>
#include <vmcore/core/types.h>

struct _OVERLAPPED;
struct _OFSTRUCT;
using LPOVERLAPPED = _OVERLAPPED*;
using LPOFSTRUCT = _OFSTRUCT*;
using HFILE = int;

constexpr HANDLE INVALID_HANDLE_VALUE = nullptr;
constexpr HFILE HFILE_ERROR = -1;

// Access: the low two bits count.
constexpr DWORD GENERIC_WRITE = 1;
constexpr DWORD GENERIC_READ = 2;
// Sharing and flags are accepted and not used.
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD FILE_SHARE_WRITE = 2;
// Disposition: bit 0 means "create, and empty what is there". The other Win32 dispositions have no
// counterpart and no name here.
constexpr DWORD CREATE_ALWAYS = 1;
constexpr DWORD OPEN_EXISTING = 2;
constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;
// What FindFirstFile says of a folder: 1, not Win32's 0x10. A file has 0.
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 1;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;

/// Opens a file: its descriptor, or 0. A bare name (without '/', ':' and '\') is looked for in the
/// library's CurrentDirectory, if that is set. With bit 0 of `disposition` the file is created or
/// emptied, and opened for writing only whatever `access` says; else it must exist. Logs
/// "CreateFile(ALWAYS) failed: <path>" or "CreateFile(RD/WR) failed: <path>". The other arguments
/// are not used.
VM_API HANDLE CreateFile(LPCSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD flags, HANDLE templateFile, int reserved = 0,
                         bool reservedFlag = false);

/// One read or write at the file's position. 1, or 0 on an error; `done`, which may be null, gets
/// the count, 0xFFFFFFFF after an error. A read at the end gives 1 and a count of 0.
VM_API BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD done,
                     LPOVERLAPPED overlapped);
VM_API BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD count, LPDWORD done,
                      LPOVERLAPPED overlapped);

/// The new position, its lower 32 bits, or 0xFFFFFFFF. `low` is signed and `high` ignored: no seek
/// goes further than 2 GB at once.
VM_API DWORD SetFilePointer(HANDLE file, LONG low, LPLONG high, DWORD method);

/// The lower 32 bits of the size; the upper ones in `high` unless null. The position stays. On an
/// error both are 0xFFFFFFFF.
VM_API DWORD GetFileSize(HANDLE file, LPDWORD high);

/// Closes a file. 1 always. For files only: an event is freed by DeleteEvent.
VM_API BOOL CloseHandle(HANDLE file);

constexpr UINT OF_READ = 1;
constexpr UINT OF_EXIST = 2;
/// Opens nothing: 0 when the file exists and `style` is OF_READ or OF_EXIST, else -1.
VM_API HFILE OpenFile(LPCSTR name, LPOFSTRUCT structure, UINT style);

/// Moves or copies a file, or a folder with its contents. 1 or 0; an existing target is a failure,
/// also for CopyFile with `failIfExists` FALSE.
VM_API BOOL MoveFile(LPCSTR from, LPCSTR to);
VM_API BOOL CopyFile(LPCSTR from, LPCSTR to, BOOL failIfExists);
/// Removes a file, and also a folder with all its contents. 1 or 0.
VM_API BOOL DeleteFile(LPCSTR name);

/// Creates a folder and the missing ones above it; 1 also when it is there already, else 0. The
/// name must be ASCII.
VM_API BOOL CreateDirectory(LPCSTR name, LPSECURITY_ATTRIBUTES security);
/// Removes a folder with all its contents. 1 or 0. The name must be ASCII.
VM_API BOOL RemoveDirectory(LPCSTR name);

using DIRECTORYCOPYPROC = void (*)(LPCSTR name);
/// Copies the folder `source` to targetParent/targetName, which must not exist. `callback` is not
/// called. The names must be ASCII. A failure is only logged, in four lines.
VM_API void DirectoryCopy(LPCSTR source, LPCSTR targetParent, LPCSTR targetName,
                          DIRECTORYCOPYPROC callback);

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

/// A found entry. Only dwFileAttributes and cFileName are filled.
struct _WIN32_FIND_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
};
using WIN32_FIND_DATA = _WIN32_FIND_DATA;
using LPWIN32_FIND_DATA = _WIN32_FIND_DATA*;

/// The first entry of a folder, and a handle for the following ones; 0 when there is none or the
/// folder cannot be read. `pattern` is the folder itself, or folder and "*.*" (all entries) or
/// "*.syx" (the entries whose extension is all lower or all upper case: a.syx, B.SYX, not c.Syx).
/// "." and ".." never come; the order is the directory's own. Folder and entries must have ASCII
/// names: one that has not ends the search like a link to nothing does. The folder stays open until
/// FindClose.
VM_API HANDLE FindFirstFile(LPCSTR pattern, LPWIN32_FIND_DATA data);
/// The next entry: 1, or 0 at the end and for a null handle.
VM_API BOOL FindNextFile(HANDLE find, LPWIN32_FIND_DATA data);
/// Ends the search. 1 always, also for a null handle.
VM_API BOOL FindClose(HANDLE find);
