// The standard folders and their caches.
#include <vmcore/files/paths.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <string>

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace fs = std::filesystem;

char PreferencesPath[MAX_PATH];
char UserPreferencesPath[MAX_PATH];
char DocumentsPath[MAX_PATH];
char FontsPath[MAX_PATH];
char ApplicationsPath[MAX_PATH];
char ApplicationSupportPath[MAX_PATH];
char ApplicationSupportPathSystem[MAX_PATH];

namespace {

using Cache = char[MAX_PATH];

// Fills an empty cache, unless the path does not fit.
void Remember(Cache& cache, const std::string& path) {
    if (path.size() < sizeof cache) std::memcpy(cache, path.c_str(), path.size() + 1);
}

void LookUp(Cache& cache, const char* machineFolder) {
    if (!*cache) Remember(cache, machineFolder);
}

// A folder of the user, which is created; a failure leaves the cache empty for the next call.
void LookUp(Cache& cache, QStandardPaths::StandardLocation location, const char* below = "") {
    if (*cache) return;
    const QString folder = QStandardPaths::writableLocation(location);
    if (folder.isEmpty()) return;
    const std::string path = QFile::encodeName(folder).toStdString() + below;
    std::error_code error;
    fs::create_directories(path, error);
    if (fs::is_directory(path, error)) Remember(cache, path);
}

// At most size - 1 characters, the rest of them zero; the byte after them is not touched.
char* CopyOut(const Cache& cache, char* buffer, int size) {
    if (!buffer || size < 1) return buffer;
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    const std::size_t length = std::min(std::strlen(cache), room);
    std::memcpy(buffer, cache, length);
    std::memset(buffer + length, 0, room - length);
    return buffer;
}

char* CopyOutTerminated(const Cache& cache, char* buffer, int size) {
    CopyOut(cache, buffer, size);
    if (buffer && size > 0) buffer[size - 1] = 0;
    return buffer;
}

// Any thread may ask first, and a cache that is being filled is no path yet.
std::lock_guard<std::mutex> LockCaches() {
    static std::mutex s_lock;
    return std::lock_guard(s_lock);
}

} // namespace

char* GetPreferencesPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(PreferencesPath, "/etc/xdg");
    return CopyOutTerminated(PreferencesPath, buffer, size);
}

char* GetUserPreferencesPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(UserPreferencesPath, QStandardPaths::GenericConfigLocation);
    return CopyOutTerminated(UserPreferencesPath, buffer, size);
}

char* GetDocumentsPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(DocumentsPath, QStandardPaths::DocumentsLocation);
    return CopyOut(DocumentsPath, buffer, size);
}

char* GetFontsPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(FontsPath, QStandardPaths::GenericDataLocation, "/fonts");
    return CopyOut(FontsPath, buffer, size);
}

char* GetApplicationsPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(ApplicationsPath, "/opt");
    return CopyOut(ApplicationsPath, buffer, size);
}

char* GetApplicationSupportPath(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(ApplicationSupportPath, QStandardPaths::GenericDataLocation);
    return CopyOut(ApplicationSupportPath, buffer, size);
}

char* GetApplicationSupportPathSystem(char* buffer, int size) {
    const auto lock = LockCaches();
    LookUp(ApplicationSupportPathSystem, "/usr/local/share");
    return CopyOut(ApplicationSupportPathSystem, buffer, size);
}
