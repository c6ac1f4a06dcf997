// Knows nothing of the library: it comes with the first plug-in, behind it in the order in which
// the loader looks symbols up. Attaching it from either plug-in must reach its own entry points and
// neither plug-in's.
#include <cstdio>

#include <dlfcn.h>

namespace {

template <class Function>
Function Symbol(void* library, const char* name) {
    return reinterpret_cast<Function>(dlsym(library, name));
}

int Fail(const char* who, const char* what) {
    std::fprintf(stderr, "failed: %s: %s\n", who, what);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return Fail("arguments", "two plug-ins are needed");
    void* libraries[2];
    for (int i = 0; i < 2; ++i) {
        libraries[i] = dlopen(argv[i + 1], RTLD_NOW | RTLD_GLOBAL);
        if (!libraries[i]) return Fail(argv[i + 1], dlerror());
    }
    for (void* library : libraries)
        if (!Symbol<int (*)()>(library, "AttachLibrary")())
            return Fail(argv[1], "the library did not attach");
    for (void* library : libraries)
        if (Symbol<int (*)()>(library, "CallsOfEntryPoints")() != 0)
            return Fail(Symbol<const char* (*)()>(library, "PlugInLetter")(),
                        "called in place of the library's own entry point");
    return 0;
}
