// Files that are downloaded to and uploaded from.
#include "net/localFiles.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/log.h"

namespace vm {

namespace {

// Does not wait for a reader, as opening a pipe would.
std::FILE* OpenForDownload(const std::string& path) {
    const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    const int descriptor = open(path.c_str(), flags | O_NONBLOCK, 0666);
    if (descriptor < 0) return nullptr;
    fcntl(descriptor, F_SETFL, 0);
    std::FILE* const file = fdopen(descriptor, "wb");
    if (!file) close(descriptor);
    return file;
}

} // namespace

bool DownloadFile::Open() {
    m_file.reset(OpenForDownload(m_path));
    if (!m_file) {
        NoteProblem("open");
        return false;
    }
    std::setvbuf(m_file.get(), nullptr, _IONBF,
                 0); // blocks are large, and a full disk shows at once
    return true;
}

std::size_t DownloadFile::Write(char* data, std::size_t size, std::size_t count, void* self) {
    DownloadFile& file = *static_cast<DownloadFile*>(self);
    if (!file.m_file && !file.Open()) return static_cast<std::size_t>(-1);
    const std::size_t written = std::fwrite(data, size, count, file.m_file.get());
    if (written < count) file.NoteProblem("write");
    return written;
}

bool DownloadFile::Close() {
    if (!m_file || std::fclose(m_file.release()) == 0) return true;
    NoteProblem("write");
    return false;
}

void DownloadFile::NoteProblem(const char* verb) {
    m_problem = Format("Couldnt %s '%s': %s", verb, m_path.c_str(), std::strerror(errno));
}

OpenFile OpenForUpload(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    struct stat status = {};
    const bool isOrdinary = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    std::FILE* const file = isOrdinary ? fdopen(descriptor, "rb") : nullptr;
    if (!file) close(descriptor);
    return OpenFile(file);
}

std::size_t ReadForUpload(char* buffer, std::size_t size, std::size_t count, void* file) {
    return std::fread(buffer, size, count, static_cast<std::FILE*>(file));
}

} // namespace vm
