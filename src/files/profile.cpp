// The profile functions: one lock around one manager.
#include <vmcore/files/profile.h>

#include <atomic>
#include <utility>

#include "files/ProfileManager.h"
#include "files/profile.h"
#include "platform/messagebox.h"

CRITICAL_SECTION profileCS;

namespace vm {
namespace {

// Of a copy, for the end of the library takes the lock away from profileCS while threads may hold it.
class ProfileLock {
public:
    ProfileLock() : m_section(profileCS) { EnterCriticalSection(&m_section); }
    ~ProfileLock() { LeaveCriticalSection(&m_section); }
    ProfileLock(const ProfileLock&) = delete;
    ProfileLock& operator=(const ProfileLock&) = delete;

private:
    CRITICAL_SECTION m_section;
};

/// The lock of an ended library: threads may still be in it. The next start takes it again.
RecursiveLock* s_retired = nullptr;

// Never deleted: static objects of hosts still use it when the process ends.
std::atomic<ProfileManager*> s_manager = nullptr;

ProfileManager& Manager() {
    if (!s_manager) s_manager = new ProfileManager;
    return *s_manager;
}

// Made when the library is loaded, and destroyed after what hosts have made since.
struct ClearAtExit {
    ~ClearAtExit() {
        try {
            if (s_manager) ClearProfiles();
        } catch (...) { // must never escape a destructor that runs at exit
        }
    }
} s_clearAtExit;

// Message boxes wait until the lock is free: a thread that shows one waits for the main thread.
template <class Operation>
auto Locked(Operation&& operation) {
    const DelayedMessageBoxes boxes;
    const ProfileLock lock;
    return operation(Manager());
}

} // namespace

void DeleteProfileLock() {
    const ProfileLock lock;
    if (profileCS.lock) s_retired = std::exchange(profileCS.lock, nullptr);
}

void ClearProfiles() {
    Locked([](ProfileManager& manager) { manager.ClearAll(); });
}

} // namespace vm

int InitProfileManager() {
    if (profileCS.lock) return 1;
    profileCS.lock = std::exchange(vm::s_retired, nullptr);
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
    vm::Locked([file](vm::ProfileManager& manager) { manager.FlushProfile(file); });
}

void ServiceProfile() {
    vm::Locked([](vm::ProfileManager& manager) { manager.Flush(); });
}
