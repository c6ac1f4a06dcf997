// The search through a folder behind a find handle.
#include <vmcore/files/fileapi.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "core/ascii.h"
#include "files/pathTranslation.h"
#include "files/posixPath.h"

namespace fs = std::filesystem;

static_assert(offsetof(_WIN32_FIND_DATA, cFileName) == 44 && sizeof(_WIN32_FIND_DATA) == 300);

namespace vm {
namespace {

// What a find handle points to.
struct EnumerateShell {
    std::vector<std::string> listing;
    std::vector<std::string> filtered;
    char directory[MAX_PATH];
    char upperExtension[8];
    char lowerExtension[8];
    DWORD next;
};

// The names in the folder, in its own order; empty when it cannot be read.
std::vector<std::string> List(const std::string& folder) {
    std::vector<std::string> names;
    if (!IsAscii(folder)) return names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    return names;
}

// A search at its start; the pattern has fewer than 256 bytes.
EnumerateShell* NewSearch(const FindPattern& pattern) {
    auto* shell = new EnumerateShell{};
    pattern.directory.copy(shell->directory, sizeof shell->directory - 1);
    std::transform(pattern.extension.begin(), pattern.extension.end(), shell->upperExtension,
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::transform(pattern.extension.begin(), pattern.extension.end(), shell->lowerExtension,
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    shell->listing = List(pattern.directory);
    shell->filtered = shell->listing;
    if (pattern.filtered)
        std::erase_if(shell->filtered, [shell](const std::string& name) {
            const std::string_view extension = ExtensionOf(name);
            return extension != shell->upperExtension && extension != shell->lowerExtension;
        });
    return shell;
}

bool FillNext(EnumerateShell& shell, _WIN32_FIND_DATA& data) {
    if (shell.next >= shell.filtered.size()) return false;
    const std::string& name = shell.filtered[shell.next++];
    if (!IsAscii(name)) return false;
    std::error_code error;
    const fs::file_status status = fs::status(std::string(shell.directory) + "/" + name, error);
    if (!fs::exists(status)) return false;
    data.cFileName[name.copy(data.cFileName, sizeof data.cFileName - 1)] = 0;
    data.dwFileAttributes = fs::is_directory(status) ? FILE_ATTRIBUTE_DIRECTORY : 0;
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
    vm::EnumerateShell* shell = vm::NewSearch(vm::ParseFindPattern(*path));
    if (vm::FillNext(*shell, *data)) return shell;
    delete shell;
    return nullptr;
}

BOOL FindNextFile(HANDLE find, LPWIN32_FIND_DATA data) {
    return find && vm::FillNext(*vm::ShellOf(find), *data);
}

BOOL FindClose(HANDLE find) {
    delete vm::ShellOf(find);
    return TRUE;
}
