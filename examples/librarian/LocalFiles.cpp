#include "LocalFiles.h"

#include <algorithm>
#include <atomic>
#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include "BankFolder.h"

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40; // as the system allows

// What the others may do, of a group that could not be kept.
mode_t WithoutGroup(mode_t mode) {
    return (mode & ~S_IRWXG & ~S_ISGID) | (mode & S_IRWXO) << 3;
}

} // namespace

bool IsThere(const std::string& path) {
    return OpenFile(path.c_str(), nullptr, OF_EXIST) != HFILE_ERROR;
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(StoredPath(path), error);
}

std::string StoredPath(const std::string& path) {
    char buffer[MAX_PATH] = {};
    if (path.size() >= sizeof buffer) return path; // refused by all of them
    std::copy(path.begin(), path.end(), buffer);
    Win2PosixPath(buffer, false);
    return buffer;
}

std::string PathForJob(const std::string& path, const std::string& extension) {
    static std::atomic<unsigned> s_count{0};
    return path + "." + std::to_string(getpid()) + "-" + std::to_string(++s_count) + extension;
}

std::string BehindLinks(const std::string& path) {
    std::error_code error;
    const fs::path whole = fs::canonical(path, error);
    if (!error) return whole.string();
    fs::path file = path; // of a link that leads nowhere, and of no file
    std::error_code notLink;
    for (int i = 0; i < kMostLinks && fs::is_symlink(file, notLink); ++i)
        file = file.parent_path() / fs::read_symlink(file, notLink);
    return file.string();
}

void KeepAccess(const std::string& path, const std::string& fresh) {
    struct stat old = {};
    if (stat(path.c_str(), &old) != 0) return;
    const bool keepsGroup = chown(fresh.c_str(), old.st_uid, old.st_gid) == 0 ||
                            chown(fresh.c_str(), static_cast<uid_t>(-1), old.st_gid) == 0;
    const mode_t mode = old.st_mode & ALLPERMS;
    chmod(fresh.c_str(), keepsGroup ? mode : WithoutGroup(mode));
}

void RemoveFile(const std::string& path) {
    if (IsThere(path)) DeleteFile(path.c_str());
}

std::string PutInPlace(const std::string& fresh, const std::string& path, bool mayReplace) {
    // DeleteFile would take a folder's contents along.
    if (IsFolder(path)) return NameOf(path) + " is a folder";
    const std::string failure = path + " cannot be written";
    const std::string stored = StoredPath(path);
    if (IsThere(path) && access(stored.c_str(), W_OK) != 0) return NameOf(path) + " is read-only";
    KeepAccess(stored, StoredPath(fresh));
    const std::string old = mayReplace && IsThere(path) ? PathForJob(path, ".old") : "";
    if (!old.empty() && !MoveFile(path.c_str(), old.c_str())) return failure;
    const BOOL isMoved = MoveFile(fresh.c_str(), path.c_str());
    if (!old.empty() && isMoved) RemoveFile(old);
    if (!old.empty() && !isMoved) MoveFile(old.c_str(), path.c_str());
    return isMoved ? "" : failure;
}
