// The profile functions: one lock around one manager.
#include <vmcore/files/profile.h>

#include <string>
#include <vector>

#include "files/ProfileManager.h"
#include "files/profile.h"
#include "platform/messagebox.h"

CRITICAL_SECTION profileCS;

namespace vm {
namespace {

class ProfileLock {
public:
    ProfileLock() { EnterCriticalSection(&profileCS); }
    ~ProfileLock() { LeaveCriticalSection(&profileCS); }
    ProfileLock(const ProfileLock&) = delete;
    ProfileLock& operator=(const ProfileLock&) = delete;
};

// The manager outlives every static object of a host; what it holds is written at the end of the
// process.
ProfileManager& Manager() {
    struct ClearAtExit {
        ~ClearAtExit() {
            try {
                ClearProfiles();
            } catch (...) { // must never escape a destructor that runs at exit
            }
        }
    };
    static auto* s_manager = new ProfileManager;
    static const ClearAtExit s_clear;
    return *s_manager;
}

template <class Operation>
auto Locked(Operation&& operation) {
    const ProfileLock lock;
    return operation(Manager());
}

// Runs an operation that writes files, and reports what went wrong once the lock is free again.
template <class Operation>
void Writing(Operation&& operation) {
    const std::vector<std::string> failed = Locked([&](ProfileManager& manager) {
        operation(manager);
        return manager.TakeFailedWrites();
    });
    for (const std::string& name : failed)
        ShowMessageBox(nullptr, name.c_str(), "WriteProfile: error during profile write", 1);
}

} // namespace

void DeleteProfileLock() {
    DeleteCriticalSection(&profileCS);
}

void ClearProfiles() {
    Writing([](ProfileManager& manager) { manager.ClearAll(); });
}

} // namespace vm

int InitProfileManager() {
    if (!profileCS.lock) InitializeCriticalSection(&profileCS);
    return 1;
}

DWORD GetPrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer,
                              DWORD size, LPCSTR file) {
    if (!file) return 0;
    return vm::Locked([&](vm::ProfileManager& manager) {
        return manager.GetIniProfile(file).GetPrivateProfileString(section, key, defaultValue,
                                                                   buffer, size);
    });
}

UINT GetPrivateProfileInt(LPCSTR section, LPCSTR key, INT defaultValue, LPCSTR file) {
    if (!file) return static_cast<UINT>(defaultValue);
    return vm::Locked([&](vm::ProfileManager& manager) {
        return static_cast<UINT>(
            manager.GetIniProfile(file).GetPrivateProfileInt(section, key, defaultValue));
    });
}

BOOL WritePrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) {
    if (!file) return 0;
    vm::Locked([&](vm::ProfileManager& manager) {
        manager.GetIniProfile(file).WritePrivateProfileString(section, key, value);
    });
    return 0;
}

DWORD GetProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer, DWORD size) {
    return vm::Locked([&](vm::ProfileManager& manager) {
        return manager.GetProfileString(section, key, defaultValue, buffer, size);
    });
}

UINT GetProfileInt(LPCSTR section, LPCSTR key, INT) {
    return vm::Locked([&](vm::ProfileManager& manager) {
        return static_cast<UINT>(manager.GetProfileInt(section, key));
    });
}

BOOL WriteProfileString(LPCSTR section, LPCSTR key, LPCSTR value) {
    vm::Locked(
        [&](vm::ProfileManager& manager) { manager.WriteProfileString(section, key, value); });
    return 0;
}

DWORD GetProfileSubClassCount(LPCSTR section, LPCSTR file) {
    if (!section || !file) return 0;
    return vm::Locked([&](vm::ProfileManager& manager) {
        return manager.GetIniProfile(file).GetProfileSubClassCount(section);
    });
}

DWORD GetProfileEnumKey(LPCSTR section, DWORD index, LPSTR name, LPDWORD length, LPCSTR file) {
    if (!section || !file) return 0;
    vm::Locked([&](vm::ProfileManager& manager) {
        manager.GetIniProfile(file).GetProfileEnumKey(section, index, name, length);
    });
    return 0;
}

BOOL GetProfileVerifyKey(LPCSTR prefix, LPCSTR file) {
    if (!prefix || !file) return 0;
    return vm::Locked([&](vm::ProfileManager& manager) {
        return manager.GetIniProfile(file).VerifyKey(prefix) ? TRUE : FALSE;
    });
}

void FlushProfile(LPCSTR file) {
    if (!file) return;
    vm::Writing([file](vm::ProfileManager& manager) { manager.FlushProfile(file); });
}

void ServiceProfile() {
    vm::Writing([](vm::ProfileManager& manager) { manager.Flush(); });
}
