#include "LocalFiles.h"

#include <algorithm>
#include <atomic>
#include <filesystem>

#include <unistd.h>
#include <windows.h>

#include "BankFolder.h"

bool IsThere(const std::string& path) {
    return OpenFile(path.c_str(), nullptr, OF_EXIST) != HFILE_ERROR;
}

bool IsFolder(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(StoredPath(path), error);
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

void RemoveFile(const std::string& path) {
    if (IsThere(path)) DeleteFile(path.c_str());
}

std::string PutInPlace(const std::string& fresh, const std::string& path, bool mayReplace) {
    // DeleteFile would take a folder's contents along.
    if (IsFolder(path)) return NameOf(path) + " is a folder";
    const std::string failure = path + " cannot be written";
    const std::string old = mayReplace && IsThere(path) ? PathForJob(path, ".old") : "";
    if (!old.empty() && !MoveFile(path.c_str(), old.c_str())) return failure;
    const BOOL isMoved = MoveFile(fresh.c_str(), path.c_str());
    if (!old.empty() && isMoved) RemoveFile(old);
    if (!old.empty() && !isMoved) MoveFile(old.c_str(), path.c_str());
    return isMoved ? "" : failure;
}
