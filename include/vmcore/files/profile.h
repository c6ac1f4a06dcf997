// Settings in ini files, under the Win32 profile functions. A file is read whole when it is first
// named, answered from memory, and written when somebody asks for it:
//
//     WriteProfileString("Window", "Left", "120");          // in memory
//     int left = GetProfileInt("Window", "Left", 0);         // 120
//     ServiceProfile();                                      // on disk
//
// What hosts should know (docs/settings.md has the whole format):
//  - Nothing reaches the disk by itself: call ServiceProfile now and then. FlushProfile and the end
//    of the process write too. A save replaces the file as a whole or not at all, also when the
//    process is killed in the middle of it.
//  - Section and key names are compared without regard to the case of ASCII letters.
//  - A value ends at its first ';'. Blanks and tabs before that are dropped, those after '=' are not.
//  - Lines are cut at 255 characters when a file is read; the log says so once for each file.
//  - Text after the last line end of a file is not read.
//  - A carriage return or line feed in a section, key or value would forge lines: such a call is
//    logged ("Profile names and values can't hold line ends: <file>") and changes nothing.
//  - A file is known by its name as it is spelled (without regard to case): two spellings of one
//    file are two profiles, and the one that is saved last wins. So do two processes.
//  - A file of 2 GiB or more, or one that is there but cannot be read, is logged ("Profile not read, it will
//    not be written: <file>"), reads as empty and is never overwritten.
//
// Any thread; one lock, profileCS, is held for the whole of every call. File names are resolved as
// CreateFile does, which logs a file that cannot be opened. The functions for the default profile
// ("Velmora Win.ini" in the user's preferences folder) leave the library's CurrentDirectory equal to
// the process's working directory, whatever it was before.
#pragma once

#include <vmcore/app/sync.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Copies the value into `buffer`, at most size - 1 characters of it with a zero behind, and returns
/// its length. For a missing value the same with `defaultValue`, which is taken as it is. 0 for a
/// null argument or a size of 0; the buffer is then untouched. A profile without any line looks into
/// its file again on every call.
VM_API DWORD GetPrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer,
                                     DWORD size, LPCSTR file);

/// The value as a decimal number, read up to the first character that is no digit. `defaultValue`
/// for a missing or blank value and for one that begins neither with a digit nor with a sign. Of the
/// value, 30 characters count.
VM_API UINT GetPrivateProfileInt(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR file);

/// Sets a value, or deletes: with a null `value` the key (but never one whose value is empty), with
/// `key` null too all lines of the section that are not empty; its header stays. A new key goes to
/// the end of its section: before the empty line that keeps it apart from the next one, if there is
/// one. Does nothing for a null section or file, or a null key with a value. 0 always, not the BOOL
/// of Win32.
VM_API BOOL WritePrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file);

/// The three for the default profile. GetProfileInt ignores its default: a missing value is 0.
VM_API DWORD GetProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer,
                              DWORD size);
VM_API UINT GetProfileInt(LPCSTR section, LPCSTR key, INT defaultValue);
VM_API BOOL WriteProfileString(LPCSTR section, LPCSTR key, LPCSTR value); ///< 0 always

// Sections [A\B] are the children of section A. Names are compared exactly here.
/// How many direct children `section` has.
VM_API DWORD GetProfileSubClassCount(LPCSTR section, LPCSTR file);
/// Copies the name of the direct child at `index`, in the order of the file, into `name` (of 256
/// bytes; a longer name is cut) and its length through `length`; either may be null. Writes nothing
/// when there is no such child. 0 always.
VM_API DWORD GetProfileEnumKey(LPCSTR section, DWORD index, LPSTR name, LPDWORD length,
                               LPCSTR file);
/// 1 when any line of the file begins with exactly `prefix`, else 0.
VM_API BOOL GetProfileVerifyKey(LPCSTR prefix, LPCSTR file);

/// Writes the file if it has changed and forgets it, so that the next access reads it again.
///
/// When the file cannot be opened for writing, standard error gets "IniProfile::WriteProfile failed
/// to create file to write!\n  <file>\n", here twice, for it is tried twice. When writing fails half
/// way, a message box shows the file's name with the title "WriteProfile: error during profile
/// write"; the file stays as it was, unless it had to be written in place (see docs/settings.md).
/// FlushProfile forgets the changes after both.
VM_API void FlushProfile(LPCSTR file);
/// Writes every file that has changed. To be called by the host now and then. What could not be
/// opened for writing is tried again by the next call; what failed half way is written again only
/// after another change.
VM_API void ServiceProfile();

/// Makes the lock. The start of the library calls it; a second call does nothing. Returns 1.
VM_API int InitProfileManager();
extern VM_API CRITICAL_SECTION profileCS;
