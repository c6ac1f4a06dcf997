// The place beside the running executable.
#include <vmcore/files/paths.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "core/ascii.h"
#include "files/pathTranslation.h"
#include "platform/bundle.h"

VM_API NSBundle* AfxGetNSBundle();

DWORD GetModuleFileName(LPCSTR name, char* buffer, DWORD size) {
    if (!buffer || size == 0) return 0;
    buffer[0] = 0;
    const NSBundle* bundle = name ? AfxGetNSBundle() : nullptr;
    if (!bundle || bundle->ExecutablePath().empty() || !vm::IsAscii(bundle->ExecutablePath()))
        return 0;
    const std::string path = vm::ModuleFileName(bundle->ExecutablePath(), name);
    const std::size_t length = std::min<std::size_t>(path.size(), size - 1);
    std::memcpy(buffer, path.data(), length);
    buffer[length] = 0;
    return static_cast<DWORD>(length);
}
