#include "Report.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <windows.h>

namespace {

HANDLE OpenForAppending(const char* path) {
    HANDLE file = CreateFile(path, GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (!file) file = CreateFile(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file) SetFilePointer(file, 0, nullptr, FILE_END);
    return file;
}

} // namespace

void Report(const char* format, ...) {
    const char* path = std::getenv("LIBRARIAN_REPORT");
    if (!path || !*path) return;
    char line[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line - 1, format, arguments);
    va_end(arguments);
    std::strcat(line, "\n");
    const HANDLE file = OpenForAppending(path);
    if (!file) return;
    WriteFile(file, line, static_cast<DWORD>(std::strlen(line)), nullptr, nullptr);
    CloseHandle(file);
}
