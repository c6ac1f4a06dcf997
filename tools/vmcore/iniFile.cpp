// Names and bytes of ini files, on POSIX.
#include "iniFile.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "command.h"
#include "files/SafeFile.h"
#include "files/posixPath.h"

namespace fs = std::filesystem;

namespace vm::tool {
namespace {

constexpr std::uintmax_t kTooLarge = std::uintmax_t{1} << 31;

[[noreturn]] void Unreadable(const std::string& file, const char* reason) {
    throw Exit{kTrouble, "cannot read " + file + ": " + reason};
}

struct Descriptor {
    ~Descriptor() {
        if (number >= 0) close(number);
    }
    const int number;
};

void RefuseOtherThanFile(int descriptor, const std::string& file) {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) Unreadable(file, std::strerror(errno));
    if (S_ISDIR(status.st_mode)) Unreadable(file, "it is a folder");
    if (!S_ISREG(status.st_mode)) Unreadable(file, "it is no ordinary file");
}

} // namespace

std::string LibraryPath(const std::string& file) {
    std::error_code error;
    const std::string path = fs::absolute(file, error).string();
    if (file.empty() || error) throw Exit{kTrouble, "this is no file name: '" + file + "'"};
    const auto opened = PathForCreateFile(path.c_str());
    if (opened == path) return path;
    if (!opened) throw Exit{kTrouble, "the library takes paths of at most 255 bytes, not " + path};
    throw Exit{kTrouble, "the library would take " + path + " for " + *opened +
                             " (':' and '\\' separate folders, \".bmp\" means \".png\")"};
}

bool IsMissing(const std::string& file) {
    return access(file.c_str(), F_OK) != 0 && errno == ENOENT;
}

bool IsTooLarge(const std::string& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    return !error && size >= kTooLarge;
}

std::string ReadBytes(const std::string& file) {
    // A pipe must not make us wait.
    const Descriptor descriptor{open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (descriptor.number < 0) Unreadable(file, std::strerror(errno));
    RefuseOtherThanFile(descriptor.number, file);
    if (IsTooLarge(file)) Unreadable(file, "it has 2 GiB or more");
    std::string bytes;
    char buffer[64 * 1024];
    ssize_t count;
    while ((count = read(descriptor.number, buffer, sizeof buffer)) > 0)
        bytes.append(buffer, static_cast<std::size_t>(count));
    if (count < 0) Unreadable(file, std::strerror(errno));
    return bytes;
}

void ReplaceBytes(const std::string& file, std::string_view bytes) {
    SafeFile safe(file);
    if (!safe.IsOpen()) throw Exit{kTrouble, "cannot write " + file + ": " + std::strerror(errno)};
    safe.Write(bytes);
    if (!safe.Commit()) throw Exit{kTrouble, "cannot write " + file + ": " + WhyNotWritten(file)};
}

std::string WhyNotWritten(const std::string& file) {
    if (access(file.c_str(), W_OK) == 0) return "writing failed, is the disk full?";
    if (errno != ENOENT) return std::strerror(errno);
    const std::string folder = fs::path(file).parent_path();
    if (access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) == 0)
        return "writing failed, is the disk full?";
    return folder + ": " + std::strerror(errno);
}

} // namespace vm::tool
