// Finding files of a script, whatever the case of their names.
#include "rc/DiskFiles.h"

#include <filesystem>

#include "command.h"
#include "iniFile.h"
#include "rc/token.h"

namespace fs = std::filesystem;

namespace vm::rc {
namespace {

// The entry of the folder with this name, in other letters if need be; the first by name of several.
std::optional<fs::path> Entry(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::exists(folder / name, error)) return folder / name;
    std::optional<fs::path> found;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string here = entry->path().filename().string();
        if (here.size() == name.size() && SameWord(here, name) &&
            (!found || here < found->filename().string()))
            found = folder / here;
    }
    return found;
}

std::optional<std::string> FindIn(const fs::path& folder, const std::string& name) {
    fs::path path = folder;
    for (const fs::path& part : fs::path(name)) {
        if (part == "." || part.empty()) continue;
        if (part == ".." || part == "/") {
            path /= part;
            continue;
        }
        const auto entry = Entry(path, part.string());
        if (!entry) return std::nullopt;
        path = *entry;
    }
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    return path.string();
}

} // namespace

std::optional<std::string> DiskFiles::Find(const std::string& name,
                                           const std::string* folder) const {
    if (name.empty() || name.find('\0') != std::string::npos) return std::nullopt;
    if (folder)
        if (auto found = FindIn(*folder, name)) return found;
    if (folder && m_scriptFolder)
        if (auto found = FindIn(*m_scriptFolder, name)) return found;
    for (const std::string& other : m_folders)
        if (auto found = FindIn(other, name)) return found;
    return std::nullopt;
}

std::optional<std::string> DiskFiles::Read(const std::string& path) const {
    try {
        return tool::ReadBytes(path);
    } catch (const tool::Exit&) {
        return std::nullopt;
    }
}

} // namespace vm::rc
