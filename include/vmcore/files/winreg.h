// The registry functions, on one ini file: "Velmora Preferences.ini" in the user's preferences
// folder. A key is a section named by its path, a value an entry with a companion for its type:
//
//     HKEY key;
//     RegCreateKey(HKEY_CURRENT_USER, "Software\\Acme\\Editor", &key);
//     DWORD port = 7;
//     RegSetValueEx(key, "Port", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&port), 4);
//     RegCloseKey(key);
//
//     [Software\Acme\Editor]
//     Port=7
//     PortType=1
//
// What differs from Win32 and what hosts rely on:
//  - All roots share one name space. A sub-key is joined to its parent's path without a separator:
//    below an open key write "\\Sub".
//  - There are two types, with numbers of their own. Values are entries of an ini file: text ends at
//    its first ';' and a line holds 255 characters.
//  - A missing value is no error: it reads as an empty string. A key exists when its section or one
//    below it does; RegCreateKey alone writes nothing.
//  - Changes reach the disk as those of every profile do (ServiceProfile).
//
// Any thread, but a handle belongs to one thread at a time. A handle is freed by RegCloseKey.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/security.h>
#include <vmcore/core/types.h>
#include <vmcore/files/fileapi.h>

using HKEY = struct HKEY__*; ///< a root, or a key made by RegOpenKeyEx or RegCreateKey
using PHKEY = HKEY*;
using REGSAM = DWORD;

/// Handles up to 128 are roots.
inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(UINT_PTR{1});
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(UINT_PTR{2});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(UINT_PTR{3});
inline const HKEY HKEY_USERS = reinterpret_cast<HKEY>(UINT_PTR{4});
inline const HKEY HKEY_CURRENT_CONFIG = reinterpret_cast<HKEY>(UINT_PTR{5});

constexpr DWORD REG_DWORD = 1; ///< 32 bits; not Win32's 4
constexpr DWORD REG_SZ = 2;    ///< a string; not Win32's 1

// Accepted and not used.
constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
constexpr REGSAM KEY_QUERY_VALUE = 1;
constexpr REGSAM KEY_SET_VALUE = 2;
constexpr REGSAM KEY_READ = 0x20019;
constexpr REGSAM KEY_WRITE = 0x20006;
constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

constexpr LONG ERROR_SUCCESS = 0;

/// The registry file's name below the user's preferences folder, "/Velmora Preferences.ini". A host
/// may replace it before the first use.
extern VM_API CString VelmoraPreferences;

/// Opens the key parent's path + `subKey` when a section of that name or below it exists; of the
/// name only `subKey` itself is looked for, exactly as it is spelled. 0, or -1 (0xFFFFFFFF) when it
/// is missing, and `result` is untouched.
VM_API LONG RegOpenKeyEx(HKEY parent, LPCSTR subKey, DWORD options, REGSAM access, PHKEY result);
/// A handle for parent's path + `subKey`; the file is not touched. 0.
VM_API LONG RegCreateKey(HKEY parent, LPCSTR subKey, PHKEY result);
/// The same; the other arguments are not used and `disposition` is not written. 0.
VM_API LONG RegCreateKeyEx(HKEY parent, LPCSTR subKey, DWORD reserved, LPSTR keyClass,
                           DWORD options, REGSAM access, LPSECURITY_ATTRIBUTES security,
                           PHKEY result, LPDWORD disposition);
/// Frees the handle; nothing for a root. 0.
VM_API LONG RegCloseKey(HKEY key);

// These answer 1, and do nothing more than is said, for a handle below 128.

/// Reads a value (a null `name` means the key's default value) and its type; REG_SZ when it was
/// never set. A string takes at most *size bytes with its zero, and *size becomes its length with
/// it; a number takes 4 bytes, which `data` must have room for whenever it may be a number. For any
/// other stored type only the first byte of `data` is set, to 0, as it is in every case. `type` and
/// `size` may be null; without a size no string is read. 0.
VM_API LONG RegQueryValueEx(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                            LPDWORD size);
/// Sets a value and its type: a string of at most `size` bytes (255 when that is 0, and never more),
/// or the 32 bits at `data`. Any other type shows the message box "RegSetValueEx - undefined storage
/// type" ("Error") and is stored with an empty text. 0. Text that holds a line end is refused as
/// every profile value is.
VM_API LONG RegSetValueEx(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                          DWORD size);

/// The name of the direct sub-key at `index`, in the order of the file: `name` has 256 bytes, its
/// length goes to `nameLength`. 0 also past the last one, and `name` is then untouched: count with
/// RegQueryInfoKey. A `keyClass` that is not null is one more step of the path.
VM_API LONG RegEnumKeyEx(HKEY key, DWORD index, LPSTR name, LPDWORD nameLength, LPDWORD reserved,
                         LPSTR keyClass, LPDWORD classLength, FILETIME* lastWriteTime);
/// Counts the direct sub-keys into `subKeys` and writes 256 to `maxSubKeyLength`; both may be null.
/// Nothing else is written. `keyClass` as above. 0.
VM_API LONG RegQueryInfoKey(HKEY key, LPSTR keyClass, LPDWORD classLength, LPDWORD reserved,
                            LPDWORD subKeys, LPDWORD maxSubKeyLength, LPDWORD maxClassLength,
                            LPDWORD values, LPDWORD maxValueNameLength, LPDWORD maxValueLength,
                            LPDWORD securityDescriptor, FILETIME* lastWriteTime);
