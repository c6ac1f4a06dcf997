// The search through a folder behind a find handle.
#include <vmcore/files/fileapi.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include "core/ascii.h"
#include "files/pathTranslation.h"
#include "files/posixPath.h"

static_assert(offsetof(_WIN32_FIND_DATA, cFileName) == 44 && sizeof(_WIN32_FIND_DATA) == 300);

namespace vm {
namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

// What a find handle points to. The names are those of the start of the search, each ended by a
// zero, one after another: entries that come or go meanwhile disturb no other.
struct EnumerateShell {
    std::unique_ptr<DIR, CloseFolder> folder; // close-on-exec
    std::vector<char> names;
    std::size_t next = 0;
};

bool IsSelfOrParent(const char* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

// Which names a pattern asks for.
class NameFilter {
public:
    explicit NameFilter(const FindPattern& pattern)
        : m_active(pattern.filtered), m_upper(pattern.extension), m_lower(pattern.extension) {
        for (char& c : m_upper) c = AsciiUpper(c);
        for (char& c : m_lower) c = AsciiLower(c);
    }
    bool Takes(std::string_view name) const {
        if (!m_active) return true;
        const std::string_view extension = ExtensionOf(name);
        return extension == m_upper || extension == m_lower;
    }

private:
    bool m_active;
    std::string m_upper;
    std::string m_lower;
};

// The names in the folder's own order, as far as it can be read.
std::vector<char> List(DIR* folder, const NameFilter& filter) {
    std::vector<char> names;
    while (const dirent* entry = readdir(folder)) {
        const std::size_t length = std::strlen(entry->d_name);
        if (IsSelfOrParent(entry->d_name) || !filter.Takes({entry->d_name, length})) continue;
        names.insert(names.end(), entry->d_name, entry->d_name + length + 1);
    }
    return names;
}

bool FillNext(EnumerateShell& shell, _WIN32_FIND_DATA& data) {
    if (shell.next >= shell.names.size()) return false;
    const std::string_view name = shell.names.data() + shell.next;
    shell.next += name.size() + 1;
    struct stat status;
    if (!IsAscii(name) || fstatat(dirfd(shell.folder.get()), name.data(), &status, 0) != 0)
        return false;
    data.cFileName[name.copy(data.cFileName, sizeof data.cFileName - 1)] = 0;
    data.dwFileAttributes = S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0;
    return true;
}

EnumerateShell* ShellOf(HANDLE find) {
    return static_cast<EnumerateShell*>(find);
}

} // namespace
} // namespace vm

HANDLE FindFirstFile(LPCSTR pattern, LPWIN32_FIND_DATA data) {
    const auto path = vm::PosixPath(pattern, false);
    if (!path) return nullptr;
    const vm::FindPattern parsed = vm::ParseFindPattern(*path);
    if (!vm::IsAscii(parsed.directory)) return nullptr;
    auto shell = std::make_unique<vm::EnumerateShell>();
    shell->folder.reset(opendir(parsed.directory.c_str()));
    if (!shell->folder) return nullptr;
    shell->names = vm::List(shell->folder.get(), vm::NameFilter(parsed));
    return vm::FillNext(*shell, *data) ? shell.release() : nullptr;
}

BOOL FindNextFile(HANDLE find, LPWIN32_FIND_DATA data) {
    return find && vm::FillNext(*vm::ShellOf(find), *data);
}

BOOL FindClose(HANDLE find) {
    delete vm::ShellOf(find);
    return TRUE;
}
