// Loads libcurl, whichever of the distribution's two builds is there.
#include "net/CurlLibrary.h"

#include <optional>

#include <dlfcn.h>

#include "core/log.h"

namespace vm {
namespace {

void* Open() {
    for (const char* name : {"libcurl.so.4", "libcurl-gnutls.so.4"})
        if (void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL)) return library;
    Log(LogModule::Net, "FTP: %s", dlerror());
    return nullptr;
}

std::optional<CurlLibrary> Load() {
    void* const library = Open();
    if (!library) return std::nullopt;
    CurlLibrary curl;
#define VM_CURL_LOAD(name)                                                                         \
    curl.name = reinterpret_cast<decltype(curl.name)>(dlsym(library, "curl_" #name));              \
    if (!curl.name) return std::nullopt;
    VM_CURL_FUNCTIONS(VM_CURL_LOAD)
#undef VM_CURL_LOAD
    return curl;
}

} // namespace

const CurlLibrary* CurlLibrary::Get() {
    static const std::optional<CurlLibrary> s_curl = Load();
    return s_curl ? &*s_curl : nullptr;
}

} // namespace vm
