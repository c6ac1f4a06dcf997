// Whole files and folders, on the standard library's file system.
#include "files/fileManager.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string>

#include <fcntl.h>

namespace fs = std::filesystem;

namespace vm {
namespace {

// A path that ends with a slash would name what a link points to.
fs::path WithoutFinalSlash(const fs::path& path) {
    std::string bytes = path.string();
    while (bytes.size() > 1 && bytes.back() == '/') bytes.pop_back();
    return bytes;
}

bool IsThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

bool LiesWithin(const fs::path& path, const fs::path& folder) {
    const fs::path inner = fs::weakly_canonical(path);
    const fs::path outer = fs::canonical(folder);
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first ==
           outer.end();
}

void CopyTree(const fs::path& from, const fs::path& to) {
    const fs::file_status status = fs::symlink_status(from);
    if (fs::is_symlink(status)) {
        fs::copy_symlink(from, to);
        return;
    }
    if (fs::is_directory(status)) {
        fs::create_directory(to);
        for (const auto& entry : fs::directory_iterator(from))
            CopyTree(entry.path(), to / entry.path().filename());
        fs::permissions(to, status.permissions());
    } else {
        fs::copy_file(from, to);
    }
    fs::last_write_time(to, fs::last_write_time(from));
}

} // namespace

bool ItemExists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool CopyItem(const fs::path& source, const fs::path& target) {
    const fs::path from = WithoutFinalSlash(source);
    const fs::path to = WithoutFinalSlash(target);
    if (!IsThere(from) || IsThere(to)) return false;
    try {
        if (fs::is_directory(fs::symlink_status(from)) && LiesWithin(to, from)) return false;
        CopyTree(from, to);
        return true;
    } catch (const fs::filesystem_error&) {
        RemoveItem(to);
        return false;
    }
}

bool MoveItem(const fs::path& source, const fs::path& target) {
    const fs::path from = WithoutFinalSlash(source);
    const fs::path to = WithoutFinalSlash(target);
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno == EXDEV) return CopyItem(from, to) && RemoveItem(from);
    // Not every file system can refuse to replace.
    if ((errno != EINVAL && errno != ENOSYS) || IsThere(to)) return false;
    return std::rename(from.c_str(), to.c_str()) == 0;
}

bool RemoveItem(const fs::path& path) {
    std::error_code error;
    const auto removed = fs::remove_all(WithoutFinalSlash(path), error);
    return !error && removed > 0;
}

bool MakeFolder(const fs::path& path) {
    const fs::path folder = WithoutFinalSlash(path);
    std::error_code error;
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
}

} // namespace vm
