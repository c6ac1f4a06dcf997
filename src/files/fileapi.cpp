// Files by handle, and whole files and folders by name.
#include <vmcore/files/fileapi.h>

#include <cerrno>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <vmcore/files/paths.h>

#include "core/ascii.h"
#include "core/log.h"
#include "files/descriptor.h"
#include "files/fileManager.h"
#include "files/pathTranslation.h"
#include "files/posixPath.h"

namespace vm {
namespace {

constexpr DWORD kCreate = 1; // bit 0 of a disposition
constexpr DWORD kFailed = 0xFFFFFFFF;

// The descriptor, never 0, or -1.
int OpenDescriptor(const char* path, int flags) {
    int descriptor;
    do descriptor = open(path, flags | O_CLOEXEC, 0644);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor != 0) return descriptor;
    const int moved = fcntl(0, F_DUPFD_CLOEXEC, 3);
    close(0);
    return moved;
}

int ModeOfAccess(DWORD access) {
    switch (access & 3) {
    case 1:
        return O_WRONLY;
    case 3:
        return O_RDWR;
    default:
        return O_RDONLY;
    }
}

// The path that CreateFile means; the name itself when it is too long to be translated.
std::string PathToOpen(LPCSTR name) {
    std::string path = name ? name : "";
    if (IsBareName(path) && *CurrentDirectory) path = std::string(CurrentDirectory) + "/" + path;
    return PosixPath(path.c_str(), false).value_or(path);
}

// Repeats a call that a signal interrupted, stores its count and says whether it worked.
template <class Call>
BOOL Transfer(LPDWORD done, Call&& call) {
    ssize_t count;
    do count = call();
    while (count < 0 && errno == EINTR);
    if (done) *done = count < 0 ? kFailed : static_cast<DWORD>(count);
    return count >= 0;
}

// Both names translated and given to `operation`; 0 when either is no name.
template <class Operation>
BOOL WithTwoPaths(LPCSTR from, LPCSTR to, Operation&& operation) {
    const auto fromPath = PosixPath(from, false);
    const auto toPath = PosixPath(to, false);
    return fromPath && toPath && operation(*fromPath, *toPath);
}

std::optional<std::string> AsciiFolder(LPCSTR name) {
    if (!name || !IsAscii(name)) return std::nullopt;
    return PosixPath(name, true);
}

} // namespace

std::optional<std::string> PathForCreateFile(const char* name) {
    std::string path = PathToOpen(name);
    if (path.empty() || path.size() >= MAX_PATH) return std::nullopt;
    return path;
}

void LogCreateFailure(const char* name) {
    Log(LogModule::Files, "CreateFile(ALWAYS) failed: %s", PathToOpen(name).c_str());
}

} // namespace vm

HANDLE CreateFile(LPCSTR name, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD,
                  HANDLE, int, bool) {
    const std::string path = vm::PathToOpen(name);
    const bool create = (disposition & vm::kCreate) != 0;
    const int flags = create ? O_WRONLY | O_CREAT | O_TRUNC : vm::ModeOfAccess(access);
    const bool fits = path.size() < MAX_PATH;
    const int descriptor = fits ? vm::OpenDescriptor(path.c_str(), flags) : -1;
    if (descriptor > 0) return vm::HandleOf(descriptor);
    if (create)
        vm::LogCreateFailure(name);
    else
        vm::Log(vm::LogModule::Files, "CreateFile(RD/WR) failed: %s", path.c_str());
    return nullptr;
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD done, LPOVERLAPPED) {
    const int descriptor = vm::DescriptorOf(file);
    return vm::Transfer(done, [&] { return read(descriptor, buffer, count); });
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD count, LPDWORD done, LPOVERLAPPED) {
    const int descriptor = vm::DescriptorOf(file);
    return vm::Transfer(done, [&] { return write(descriptor, buffer, count); });
}

DWORD SetFilePointer(HANDLE file, LONG low, LPLONG, DWORD method) {
    const int origin = method == FILE_CURRENT ? SEEK_CUR : method == FILE_END ? SEEK_END : SEEK_SET;
    return static_cast<DWORD>(lseek(vm::DescriptorOf(file), low, origin));
}

DWORD GetFileSize(HANDLE file, LPDWORD high) {
    const int descriptor = vm::DescriptorOf(file);
    const off_t position = lseek(descriptor, 0, SEEK_CUR);
    const off_t size = lseek(descriptor, 0, SEEK_END);
    if (position >= 0) lseek(descriptor, position, SEEK_SET);
    if (high) *high = static_cast<DWORD>(size >> 32);
    return static_cast<DWORD>(size);
}

BOOL CloseHandle(HANDLE file) {
    const int descriptor = vm::DescriptorOf(file);
    if (descriptor > 0) close(descriptor);
    return TRUE;
}

HFILE OpenFile(LPCSTR name, LPOFSTRUCT, UINT style) {
    if (style != OF_READ && style != OF_EXIST) return HFILE_ERROR;
    const auto path = vm::PosixPath(name, false);
    return path && vm::ItemExists(*path) ? 0 : HFILE_ERROR;
}

BOOL MoveFile(LPCSTR from, LPCSTR to) {
    return vm::WithTwoPaths(from, to, vm::MoveItem);
}

BOOL CopyFile(LPCSTR from, LPCSTR to, BOOL) {
    return vm::WithTwoPaths(from, to, vm::CopyItem);
}

BOOL DeleteFile(LPCSTR name) {
    const auto path = vm::PosixPath(name, false);
    return path && vm::RemoveItem(*path);
}

BOOL CreateDirectory(LPCSTR name, LPSECURITY_ATTRIBUTES) {
    const auto path = vm::AsciiFolder(name);
    return path && vm::MakeFolder(*path);
}

BOOL RemoveDirectory(LPCSTR name) {
    const auto path = vm::AsciiFolder(name);
    return path && vm::RemoveItem(*path);
}

void DirectoryCopy(LPCSTR source, LPCSTR targetParent, LPCSTR targetName, DIRECTORYCOPYPROC) {
    const std::string target =
        std::string(targetParent ? targetParent : "") + "/" + (targetName ? targetName : "");
    const auto from = vm::AsciiFolder(source);
    const auto to = vm::AsciiFolder(target.c_str());
    if (from && to && vm::CopyItem(*from, *to)) return;
    vm::Log(vm::LogModule::Files,
            "Dravik internal error: in DirectoryCopy NSFileManager failed to copy the folder");
    vm::Log(vm::LogModule::Files, "Source and destination folders:");
    vm::LogText(vm::LogModule::Files, from.value_or(source ? source : ""));
    vm::LogText(vm::LogModule::Files, to.value_or(target));
}
