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
#include <sys/file.h>
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
// always the same, so that what a killed process leaves there is taken away by the next save.
std::string PassingName(const std::string& folder, const std::string& path) {
    return folder + Format("/.vmcore-%016zx", std::hash<std::string>()(path));
}

// The folder takes no new file, so that the old one has to be written itself.
bool FolderForbids(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

bool IsFull(int error) {
    return error == ENOSPC || error == EDQUOT;
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

// Keeps other processes from putting their files in place in this folder meanwhile, where it can be
// opened at all, and makes the change last. A killed process leaves no lock.
class FolderLock {
public:
    explicit FolderLock(const std::string& folder)
        : m_descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (m_descriptor >= 0) Retried([this] { return flock(m_descriptor, LOCK_EX); });
    }
    ~FolderLock() {
        if (m_descriptor >= 0) close(m_descriptor);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    void Sync() const { // not every file system can do this
        if (m_descriptor >= 0) fsync(m_descriptor);
    }

private:
    int m_descriptor;
};

} // namespace

SafeFile::SafeFile(const std::string& path)
    : m_path(WithoutLinks(path)), m_folder(FolderOf(m_path)) {
    m_target = Retried([&] { return open(m_path.c_str(), O_WRONLY | O_CLOEXEC); });
    if (m_target >= 0)
        OpenForOld();
    else if (errno == ENOENT && !IsLink(m_path))
        OpenBeside();
    else if (errno == ENOENT) // a link to nothing: there is nothing to lose either
        m_target =
            Retried([&] { return open(m_path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644); });
    if (m_target >= 0 && m_descriptor < 0 && !m_failed) WriteInPlace();
}

// Opens what the new contents of an existing file go to: a new file, or nothing when the old one has
// to be written itself. Without room for a new file the save has failed already; without any other
// thing that it takes, the file counts as one that cannot be opened.
void SafeFile::OpenForOld() {
    if (!IsOrdinary(m_target)) return;
    if (OpenBeside()) {
        if (!KeepOwner()) CloseBeside();
    } else if (IsFull(errno)) {
        m_failed = true;
    } else if (!FolderForbids(errno)) {
        Close();
    }
}

SafeFile::~SafeFile() {
    CloseBeside();
    Close();
}

void SafeFile::CloseBeside() {
    if (m_descriptor >= 0 && !m_inPlace) close(std::exchange(m_descriptor, -1));
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
    m_temporary.clear();
}

// Opens the file that takes the new contents. Not every file system has files without a name, and not
// every process can give them one.
bool SafeFile::OpenBeside() {
    if (access("/proc/self/fd", X_OK) != 0) return OpenNamed();
    m_descriptor =
        Retried([this] { return open(m_folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0644); });
    if (m_descriptor >= 0) return true;
    return (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL) && OpenNamed();
}

bool SafeFile::OpenNamed() {
    do {
        m_temporary = TemporaryName(m_folder);
        m_descriptor = open(m_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    } while (m_descriptor < 0 && (errno == EEXIST || errno == EINTR));
    if (m_descriptor < 0) m_temporary.clear();
    return m_descriptor >= 0;
}

// Gives the new file the permissions and the owner of the old one. False when that is not allowed.
bool SafeFile::KeepOwner() {
    struct stat old = {};
    struct stat mine = {};
    if (fstat(m_target, &old) != 0 || fstat(m_descriptor, &mine) != 0) return false;
    const bool sameOwner = old.st_uid == mine.st_uid && old.st_gid == mine.st_gid;
    if (!sameOwner && fchown(m_descriptor, old.st_uid, old.st_gid) != 0) return false;
    return fchmod(m_descriptor, old.st_mode & 07777) == 0;
}

void SafeFile::WriteInPlace() {
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
    if (!m_failed) m_failed = m_inPlace ? !Finish(m_descriptor) : !Replace();
    if (m_inPlace && m_descriptor >= 0 && close(std::exchange(m_descriptor, -1)) != 0)
        m_failed = true; // some file systems say only now that they could not write
    Close();
    return !m_failed;
}

// On the disk. What is no ordinary file has nothing to wait for.
bool SafeFile::Finish(int descriptor) {
    return !IsOrdinary(descriptor) || Retried([=] { return fsync(descriptor); }) == 0;
}

bool SafeFile::Replace() {
    if (!Finish(m_descriptor)) return false;
    const FolderLock folder(m_folder);
    if (m_temporary.empty() && !GiveName()) return false;
    if (std::rename(m_temporary.c_str(), m_path.c_str()) != 0) {
        // What something is mounted on, and others' files in shared folders, cannot be replaced.
        return m_target >= 0 && (errno == EBUSY || FolderForbids(errno)) && CopyInPlace();
    }
    m_temporary.clear();
    folder.Sync();
    return true;
}

bool SafeFile::CopyInPlace() {
    if (lseek(m_descriptor, 0, SEEK_SET) != 0 || ftruncate(m_target, 0) != 0) return false;
    std::string buffer(kBufferSize, 0);
    for (;;) {
        const ssize_t count =
            Retried([&] { return read(m_descriptor, buffer.data(), buffer.size()); });
        if (count == 0) return Finish(m_target);
        if (count < 0 || !WriteAll(m_target, {buffer.data(), static_cast<std::size_t>(count)}))
            return false;
    }
}

bool SafeFile::GiveName() {
    const std::string file = Format("/proc/self/fd/%d", m_descriptor);
    const std::string name = PassingName(m_folder, m_path);
    unlink(name.c_str()); // left there by a process that was killed
    if (linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
        return false;
    m_temporary = name;
    return true;
}

} // namespace vm
