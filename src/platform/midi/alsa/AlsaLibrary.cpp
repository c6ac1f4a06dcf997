// Opening the library.
#include "platform/midi/alsa/AlsaLibrary.h"

#include <dlfcn.h>

namespace vm {

namespace {

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

AlsaLibrary* OpenLibrary() {
    void* library = dlopen("libasound.so.2", RTLD_NOW | RTLD_LOCAL);
    if (!library) return nullptr;
    static AlsaLibrary s_functions;
#define VMCORE_ALSA_FIND(name)                                                                     \
    if (!Find(library, #name, s_functions.name)) return nullptr;
    VMCORE_ALSA_FUNCTIONS(VMCORE_ALSA_FIND)
#undef VMCORE_ALSA_FIND
    return &s_functions;
}

} // namespace

const AlsaLibrary* AlsaLibrary::Load() {
    static const AlsaLibrary* const s_library = OpenLibrary();
    return s_library;
}

} // namespace vm
