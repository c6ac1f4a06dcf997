// Where the set-up file lies, when it has changed, and what stands in it.
#include "midi/SetupFile.h"

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

#include <vmcore/files/paths.h>
#include <vmcore/files/profile.h>

#include "core/log.h"
#include "files/posixPath.h"

namespace vm {

namespace {

// No value holds a line end.
constexpr const char* kMissing = "\n";

std::string NamedPath(const char* name) {
    std::error_code error;
    std::string path = std::filesystem::absolute(name, error).string();
    if (error || !std::filesystem::exists(path, error))
        Log(LogModule::Midi, "Warning! VMCORE_MIDI_SETUP names no file: %s", name);
    return path;
}

std::string DefaultPath() {
    char folder[MAX_PATH] = {};
    GetUserPreferencesPath(folder, sizeof folder);
    return *folder ? std::string(folder) + "/VMCore MIDI.ini" : std::string();
}

} // namespace

SetupFile SetupFile::OfUser() {
    const char* const name = std::getenv("VMCORE_MIDI_SETUP");
    if (name && !*name) return {};
    std::string path = name ? NamedPath(name) : DefaultPath();
    if (path.empty() || PathForCreateFile(path.c_str()) == path) return SetupFile(std::move(path));
    std::error_code error;
    if (name || std::filesystem::exists(path, error))
        Log(LogModule::Midi, "Warning! MIDI set-up files can't have such a path: %s", path.c_str());
    return {};
}

SetupFile::Stamp SetupFile::Look() const {
    struct stat status = {};
    if (m_path.empty() || stat(m_path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    return {status.st_mtim.tv_sec, status.st_mtim.tv_nsec, status.st_size, status.st_ino};
}

bool SetupFile::HasChanged() {
    const Stamp stamp = Look();
    if (stamp == m_stamp) return false;
    m_stamp = stamp;
    if (stamp != Stamp()) FlushProfile(m_path.c_str()); // what was read before is forgotten
    return true;
}

std::optional<std::string> SetupFile::LookUp(const std::string& section,
                                             const std::string& key) const {
    if (!m_stamp || *m_stamp == Stamp()) return std::nullopt;
    char value[MAX_PATH] = {};
    GetPrivateProfileString(section.c_str(), key.c_str(), kMissing, value, sizeof value,
                            m_path.c_str());
    if (std::string_view(value) == kMissing) return std::nullopt;
    return value;
}

} // namespace vm
