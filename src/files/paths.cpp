// Names and folders of this process: where the volumes and the standard folders lie, the current
// directories, and the string helpers that stand beside them.
#include <vmcore/files/paths.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <pwd.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "files/pathTranslation.h"
#include "files/posixPath.h"
#include "platform/messagebox.h"

namespace fs = std::filesystem;

char CurrentDirectory[MAX_PATH];

namespace vm {
namespace {

constexpr DWORD kNoType = 0x3F3F3F3F;
constexpr UINT kOkCancel = 1;

std::string UserName() {
    if (const char* user = std::getenv("USER"); user && *user) return user;
    const passwd* entry = getpwuid(getuid());
    return entry ? entry->pw_name : "";
}

// The first four bytes of the attribute, the type code; 0 when it is not there.
DWORD TypeFromAttribute(const char* path, const char* attribute) {
    unsigned char info[32];
    if (getxattr(path, attribute, info, sizeof info) < 4) return 0;
    return DWORD{info[0]} << 24 | DWORD{info[1]} << 16 | DWORD{info[2]} << 8 | DWORD{info[3]};
}

} // namespace

std::string VolumesRoot() {
    if (const char* root = std::getenv("VMCORE_VOLUMES"); root && *root) {
        std::string path = root;
        while (path.ends_with('/')) path.pop_back();
        return path;
    }
    const std::string user = UserName();
    const std::string mounted = "/run/media/" + user;
    std::error_code ignored;
    return fs::is_directory(mounted, ignored) ? mounted : "/media/" + user;
}

std::optional<std::string> PosixPath(const char* name, bool isDirectory) {
    char path[MAX_PATH] = {};
    if (!name || !*name || std::strlen(name) >= sizeof path) return std::nullopt;
    std::strcpy(path, name);
    Win2PosixPath(path, isDirectory);
    return path;
}

} // namespace vm

void Win2PosixPath(char* path, bool isDirectory) {
    if (!path) return;
    const bool namesVolume = *path != '/' && std::strchr(path, ':');
    const vm::TranslatedPath result =
        vm::TranslatePath(path, isDirectory, namesVolume ? vm::VolumesRoot() : std::string());
    std::memcpy(path, result.path.c_str(), result.path.size() + 1);
    if (result.failed)
        vm::ShowMessageBox(nullptr, "CFURLGetFileSystemRepresentation - error creating POSIX name",
                           "Error", vm::kOkCancel);
}

void Win2MacPath(char* path, bool isDirectory) {
    Win2PosixPath(path, isDirectory);
}

void ctop(char* text) {
    const std::size_t length = std::strlen(text) % 256;
    std::memmove(text + 1, text, length);
    text[0] = static_cast<char>(length);
}

void ptoc(unsigned char* text) {
    const std::size_t length = text[0];
    std::memmove(text, text + 1, length);
    text[length] = 0;
}

DWORD MacFileType(LPCSTR name) {
    const auto path = vm::PosixPath(name, false);
    if (!path) return vm::kNoType;
    for (const char* attribute :
         {"hfs.type", "osx.com.apple.FinderInfo", "user.com.apple.FinderInfo"})
        if (const DWORD type = vm::TypeFromAttribute(path->c_str(), attribute)) return type;
    return vm::kNoType;
}

int FSSpecToPath(FSSpec*, char*, int) {
    return vm::ShowMessageBox(nullptr, "FSSpecToPath should never be called", "Internal Error",
                              vm::kOkCancel);
}

BOOL SetCurrentDirectory(LPCSTR directory) {
    char copy[MAX_PATH] = {};
    if (directory) std::strncpy(copy, directory, sizeof copy - 1);
    std::memcpy(CurrentDirectory, copy, sizeof copy);
    Win2PosixPath(CurrentDirectory, true);
    return TRUE;
}

DWORD GetCurrentDirectory(DWORD size, char* buffer) {
    if (!buffer || size == 0) return 0;
    std::error_code error;
    const std::string path = fs::current_path(error).string();
    const std::size_t length = std::min<std::size_t>(path.size(), size - 1);
    std::memcpy(buffer, path.data(), length);
    buffer[length] = 0;
    return static_cast<DWORD>(length);
}
