// The registry functions: keys are sections of one ini file, values entries with a companion.
#include <vmcore/files/winreg.h>

#include <algorithm>
#include <cstring>
#include <string>

#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>

#include "core/log.h"
#include "files/iniFormat.h"
#include "platform/messagebox.h"

CString VelmoraPreferences = "/Velmora Preferences.ini";

namespace vm {
namespace {

// The two bounds differ by one: a handle of 128 is a root to those that open keys, and not rejected
// by those that use them.
constexpr UINT_PTR kLastRoot = 128;
constexpr UINT_PTR kFirstAccepted = 128;
constexpr LONG kRejected = 1;
constexpr LONG kMissing = -1;
constexpr std::size_t kValueLimit = 255;

bool IsRoot(HKEY key) {
    return reinterpret_cast<UINT_PTR>(key) <= kLastRoot;
}
bool IsRejected(HKEY key) {
    return reinterpret_cast<UINT_PTR>(key) < kFirstAccepted;
}

CString* PathObject(HKEY key) {
    return reinterpret_cast<CString*>(key);
}

std::string PathOf(HKEY key) {
    return IsRoot(key) ? std::string() : std::string(static_cast<LPCSTR>(*PathObject(key)));
}

std::string WithClass(HKEY key, LPCSTR keyClass) {
    return keyClass ? PathOf(key) + "\\" + keyClass : PathOf(key);
}

HKEY NewKey(HKEY parent, LPCSTR subKey) {
    const std::string path = PathOf(parent) + (subKey ? subKey : "");
    return reinterpret_cast<HKEY>(new CString(path.c_str()));
}

std::string RegistryFile() {
    char folder[MAX_PATH] = {};
    GetUserPreferencesPath(folder, sizeof folder);
    return std::string(folder) + static_cast<LPCSTR>(VelmoraPreferences);
}

const char* ValueName(LPCSTR name) {
    return name ? name : "Default";
}
std::string TypeName(LPCSTR name) {
    return std::string(ValueName(name)) + "Type";
}

// The text of a value as it is stored.
std::string StoredText(DWORD type, const BYTE* data, DWORD size) {
    if (type == REG_SZ) {
        const std::size_t limit =
            size == 0 ? kValueLimit : std::min<std::size_t>(size, kValueLimit);
        const char* text = reinterpret_cast<const char*>(data);
        return data ? std::string(text, strnlen(text, limit)) : std::string();
    }
    if (type == REG_DWORD) {
        int number = 0;
        if (data) std::memcpy(&number, data, sizeof number);
        return std::to_string(number);
    }
    ShowMessageBox(nullptr, "RegSetValueEx - undefined storage type", "Error", 1);
    return {};
}

} // namespace
} // namespace vm

LONG RegOpenKeyEx(HKEY parent, LPCSTR subKey, DWORD, REGSAM, PHKEY result) {
    const std::string file = vm::RegistryFile();
    const std::string header = std::string("[") + (subKey ? subKey : "");
    const bool exists = GetProfileVerifyKey((header + "]").c_str(), file.c_str()) ||
                        GetProfileVerifyKey((header + "\\").c_str(), file.c_str());
    if (!exists || !result) return vm::kMissing;
    *result = vm::NewKey(parent, subKey);
    return ERROR_SUCCESS;
}

LONG RegCreateKey(HKEY parent, LPCSTR subKey, PHKEY result) {
    if (result) *result = vm::NewKey(parent, subKey);
    return ERROR_SUCCESS;
}

LONG RegCreateKeyEx(HKEY parent, LPCSTR subKey, DWORD, LPSTR, DWORD, REGSAM, LPSECURITY_ATTRIBUTES,
                    PHKEY result, LPDWORD) {
    return RegCreateKey(parent, subKey, result);
}

LONG RegCloseKey(HKEY key) {
    if (!vm::IsRoot(key)) delete vm::PathObject(key);
    return ERROR_SUCCESS;
}

LONG RegQueryValueEx(HKEY key, LPCSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (data) data[0] = 0;
    if (vm::IsRejected(key)) return vm::kRejected;
    const std::string file = vm::RegistryFile();
    const std::string section = vm::PathOf(key);
    const char* entry = vm::ValueName(name);
    const DWORD stored =
        GetPrivateProfileInt(section.c_str(), vm::TypeName(name).c_str(), REG_SZ, file.c_str());
    if (type) *type = stored;
    if (stored == REG_SZ && data && size) {
        GetPrivateProfileString(section.c_str(), entry, "", reinterpret_cast<char*>(data), *size,
                                file.c_str());
        *size = static_cast<DWORD>(std::strlen(reinterpret_cast<char*>(data))) + 1;
    } else if (stored == REG_DWORD) {
        const UINT number = GetPrivateProfileInt(section.c_str(), entry, 0, file.c_str());
        if (data) std::memcpy(data, &number, sizeof number);
        if (size) *size = sizeof number;
    }
    return ERROR_SUCCESS;
}

LONG RegSetValueEx(HKEY key, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (vm::IsRejected(key)) return vm::kRejected;
    const std::string file = vm::RegistryFile();
    const std::string section = vm::PathOf(key);
    const std::string text = vm::StoredText(type, data, size);
    const std::string number = std::to_string(static_cast<int>(type));
    WritePrivateProfileString(section.c_str(), vm::ValueName(name), text.c_str(), file.c_str());
    if (vm::HoldsLineEnd(text)) return ERROR_SUCCESS; // refused, so the type stays as well
    WritePrivateProfileString(section.c_str(), vm::TypeName(name).c_str(), number.c_str(),
                              file.c_str());
    return ERROR_SUCCESS;
}

LONG RegEnumKeyEx(HKEY key, DWORD index, LPSTR name, LPDWORD nameLength, LPDWORD, LPSTR keyClass,
                  LPDWORD, FILETIME*) {
    if (vm::IsRejected(key)) return vm::kRejected;
    GetProfileEnumKey(vm::WithClass(key, keyClass).c_str(), index, name, nameLength,
                      vm::RegistryFile().c_str());
    return ERROR_SUCCESS;
}

LONG RegQueryInfoKey(HKEY key, LPSTR keyClass, LPDWORD, LPDWORD, LPDWORD subKeys,
                     LPDWORD maxSubKeyLength, LPDWORD, LPDWORD, LPDWORD, LPDWORD, LPDWORD,
                     FILETIME*) {
    if (vm::IsRejected(key)) return vm::kRejected;
    if (subKeys)
        *subKeys = GetProfileSubClassCount(vm::WithClass(key, keyClass).c_str(),
                                           vm::RegistryFile().c_str());
    if (maxSubKeyLength) *maxSubKeyLength = 256;
    return ERROR_SUCCESS;
}
