// One ini file: reading and writing it.
#include "files/IniProfile.h"

#include <cerrno>
#include <ctime>

#include <sys/stat.h>

#include <vmcore/files/fileapi.h>

#include "core/log.h"
#include "files/SafeFile.h"
#include "files/posixPath.h"
#include "platform/messagebox.h"

namespace vm {
namespace {

// Positions are 32 bits wide, and sizes are looked at as signed numbers.
constexpr DWORD kTooLarge = 0x80000000;
constexpr int kReadOnly = 2;

// Sixtieths of a second since the system started.
DWORD TickCount() {
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<DWORD>(now.tv_sec * 60 + now.tv_nsec * 60 / 1'000'000'000);
}

class OpenFile {
public:
    explicit OpenFile(const char* name)
        : m_file(CreateFile(name, kReadOnly, 0, nullptr, 0, 0, nullptr)) {}
    ~OpenFile() {
        if (m_file) CloseHandle(m_file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    HANDLE Get() const { return m_file; }

private:
    const HANDLE m_file;
};

bool ReadWhole(HANDLE file, char* buffer, DWORD size) {
    DWORD done = 0;
    for (DWORD read = 0; read < size; read += done)
        if (!ReadFile(file, buffer + read, size - read, &done, nullptr) || done == 0) return false;
    return true;
}

bool IsMissing(const char* name) {
    const auto path = PathForCreateFile(name);
    struct stat status;
    return !path || (stat(path->c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR));
}

} // namespace

void IniProfile::ReadProfile(const char* name) {
    m_lines.Clear();
    m_cachedSection.clear();
    m_cachedIndex = 0;
    m_cachedPlace.reset();
    m_unreadable = true; // until all of it is here
    m_unreadable = !ReadLines(name);
    if (m_unreadable)
        Log(LogModule::Files, "Profile not read, it will not be written: %s", m_name.c_str());
}

// False when there is a file, but its lines are not here.
bool IniProfile::ReadLines(const char* name) {
    const OpenFile file(name);
    if (!file.Get()) return IsMissing(name);
    DWORD high = 0;
    const DWORD size = GetFileSize(file.Get(), &high);
    if (high == 0xFFFFFFFF || (high == 0 && size == 0)) return true; // a pipe has no size
    if (high != 0 || size >= kTooLarge) return false;
    auto text = std::make_unique_for_overwrite<char[]>(size);
    if (!ReadWhole(file.Get(), text.get(), size)) return false;
    if (m_lines.Load(std::move(text), size)) ReportCut();
    return true;
}

void IniProfile::Write() {
    if (m_dirty) WriteProfile(m_name.c_str());
}

void IniProfile::WriteProfile(const char* name) {
    if (!name) return PrintError("Write profile request for ini without a filename ptr!\n");
    if (!*name) return PrintError("Write profile request for ini without a filename!\n");
    if (!m_dirty) return;
    const auto path = m_unreadable ? std::nullopt : PathForCreateFile(name);
    std::optional<SafeFile> file;
    if (path) file.emplace(*path);
    if (!file || !file->IsOpen()) {
        LogCreateFailure(name);
        return PrintError("IniProfile::WriteProfile failed to create file to write!\n  %s\n", name);
    }
    m_dirty = false;
    m_lines.ForEach([&file](std::string_view line) {
        file->Write(line);
        file->Write("\r\n");
    });
    if (!file->Commit())
        ShowMessageBox(nullptr, name, "WriteProfile: error during profile write", 1);
    m_lastWriteTick = TickCount();
}

// Cut lines lose text for good when the file is written.
void IniProfile::ReportCut() {
    if (m_cutFiles.insert(m_name).second)
        Log(LogModule::Files, "Profile line of more than 255 characters cut: %s", m_name.c_str());
}

} // namespace vm
