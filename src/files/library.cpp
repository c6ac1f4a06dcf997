// The Win32 names for the dynamic loader.
#include <vmcore/files/library.h>

#include <optional>
#include <string>

#include <dlfcn.h>

#include "core/log.h"
#include "files/posixPath.h"
#include "platform/messagebox.h"

HMODULE LoadLibrary(const char* name) {
    // To the loader no name at all would be the program itself.
    const bool isNamed = name && *name;
    const std::optional<std::string> path = isNamed ? vm::PosixPath(name, false) : std::nullopt;
    void* library = path ? dlopen(path->c_str(), RTLD_LAZY | RTLD_GLOBAL | RTLD_NODELETE) : nullptr;
    if (library) return library;
    vm::Log(vm::LogModule::Files, "Dylib open failure for: %s",
            path.value_or(name ? name : "").c_str());
    const char* error = path ? dlerror() : nullptr; // the loader was not asked for a longer name
    if (error) vm::Log(vm::LogModule::Files, "Dylib error = %s", error);
    return nullptr;
}

void* GetProcAddress(HMODULE library, const char* symbol) {
    if (!library || !symbol) return nullptr;
    dlerror(); // forgets what an earlier call left
    void* address = dlsym(library, symbol);
    if (address) return address;
    if (const char* error = dlerror())
        vm::ShowMessageBox(nullptr, std::string(error).c_str(), "Internal Error! Finding symbol...",
                           1);
    return nullptr;
}

int FreeLibrary(HMODULE library) {
    if (!library) return 0;
    dlclose(library);
    return 1;
}
