// Replacing a file as a whole.
#include "files/SafeFile.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/log.h"

namespace vm {
namespace {

constexpr std::size_t kBufferSize = 256 * 1024;

template <class Call>
auto Retried(Call&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

// Where the links lead; the path itself when that does not exist.
std::string WithoutLinks(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) ? resolved : path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

bool IsLink(const std::string& path) {
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

// A name that is free, most likely; the caller tries again when it is not.
std::string TemporaryName(const std::string& folder) {
    static std::atomic<unsigned> s_count{0};
    const unsigned part = std::random_device()();
    return folder + Format("/.vmcore-%u-%u-%08x", static_cast<unsigned>(getpid()), s_count++, part);
}

// The name of the new contents of this one file, for the moment before they are put in place. It is
// always the same, so that what a killed process leaves there is taken away by the next save. Only
// whole files get it, so it does not matter whose contents a process then moves.
std::string PassingName(const std::string& folder, const std::string& path) {
    return folder + Format("/.vmcore-%016zx", std::hash<std::string>()(path));
}

// The folder does not want a new file, or cannot have one; a full disk is not among these.
bool FolderForbids(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

bool IsOrdinary(int descriptor) {
    struct stat status = {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            Retried([&] { return write(descriptor, bytes.data(), bytes.size()); });
        if (count < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// The name of a file is on the disk when its folder is. Not every file system can do this.
void SyncFolder(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

} // namespace

SafeFile::SafeFile(const std::string& path)
    : m_path(WithoutLinks(path)), m_folder(FolderOf(m_path)) {
    m_target = Retried([&] { return open(m_path.c_str(), O_WRONLY | O_CLOEXEC); });
    if (m_target >= 0) {
        if (!IsOrdinary(m_target) || (!OpenBeside() && FolderForbids(errno)) || !KeepOwner())
            WriteInPlace();
        m_failed = m_descriptor < 0; // there is no room for a new file; the old one stays
    } else if (IsLink(m_path)) {     // to nothing: there is nothing to lose either
        m_target = open(m_path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        if (m_target >= 0) WriteInPlace();
    } else if (errno == ENOENT) {
        OpenBeside();
    }
}

SafeFile::~SafeFile() {
    Close();
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

// Opens the file that takes the new contents.
bool SafeFile::OpenBeside() {
    m_descriptor = open(m_folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0644);
    if (m_descriptor >= 0) return true;
    // Not every file system has files without a name.
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL) return false;
    return OpenNamed();
}

bool SafeFile::OpenNamed() {
    do {
        m_temporary = TemporaryName(m_folder);
        m_descriptor = open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    } while (m_descriptor < 0 && (errno == EEXIST || errno == EINTR));
    if (m_descriptor < 0) m_temporary.clear();
    return m_descriptor >= 0;
}

// Gives the new file the permissions and the owner of the old one. False when that is not allowed.
bool SafeFile::KeepOwner() {
    if (m_descriptor < 0) return true;
    struct stat old = {};
    struct stat mine = {};
    if (fstat(m_target, &old) != 0 || fstat(m_descriptor, &mine) != 0) return false;
    const bool sameOwner = old.st_uid == mine.st_uid && old.st_gid == mine.st_gid;
    if (!sameOwner && fchown(m_descriptor, old.st_uid, old.st_gid) != 0) return false;
    return fchmod(m_descriptor, old.st_mode & 07777) == 0;
}

void SafeFile::WriteInPlace() {
    if (m_descriptor >= 0) close(m_descriptor);
    m_descriptor = std::exchange(m_target, -1);
    m_inPlace = true;
    m_failed = IsOrdinary(m_descriptor) && ftruncate(m_descriptor, 0) != 0;
}

void SafeFile::Close() {
    if (m_descriptor >= 0) close(m_descriptor);
    if (m_target >= 0) close(m_target);
    m_descriptor = m_target = -1;
}

void SafeFile::Write(std::string_view bytes) {
    m_buffer.append(bytes);
    if (m_buffer.size() >= kBufferSize) Flush();
}

void SafeFile::Flush() {
    if (!m_failed && !WriteAll(m_descriptor, m_buffer)) m_failed = true;
    m_buffer.clear();
}

bool SafeFile::Commit() {
    Flush();
    if (!m_failed && !m_inPlace) m_failed = !Replace();
    Close();
    return !m_failed;
}

bool SafeFile::Replace() {
    if (Retried([&] { return fsync(m_descriptor); }) != 0) return false;
    const bool isUnnamed = m_temporary.empty();
    int result;
    do {
        if (isUnnamed && !GiveName()) return false;
        result = std::rename(m_temporary.c_str(), m_path.c_str());
    } while (result != 0 && errno == ENOENT && isUnnamed); // somebody else saves this file just now
    if (result != 0) return false;
    m_temporary.clear();
    SyncFolder(m_folder);
    return true;
}

bool SafeFile::GiveName() {
    const std::string file = Format("/proc/self/fd/%d", m_descriptor);
    const std::string name = PassingName(m_folder, m_path);
    for (;;) {
        if (linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) break;
        if (errno != EEXIST || (unlink(name.c_str()) != 0 && errno != ENOENT)) return false;
    }
    m_temporary = name;
    return true;
}

} // namespace vm
