#include "platform/display.h"

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>

namespace vm {
namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool NeedsXServer(const std::string& platform) {
    return platform.empty() || platform.compare(0, 3, "xcb") == 0;
}

// Connects as the toolkit will. The X library is the toolkit's own, so it is opened at run time.
bool XServerAnswers() {
    void* library = dlopen("libxcb.so.1", RTLD_LAZY);
    if (!library) return true; // cannot tell
    using Connect = void* (*)(const char*, int*);
    using HasError = int (*)(void*);
    using Disconnect = void (*)(void*);
    const auto connect = reinterpret_cast<Connect>(dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(dlsym(library, "xcb_disconnect"));
    bool answers = true;
    if (connect && hasError && disconnect) {
        void* connection = connect(nullptr, nullptr);
        answers = hasError(connection) == 0;
        disconnect(connection);
    }
    dlclose(library);
    return answers;
}

} // namespace

std::string PrepareDisplay() {
    const std::string platform = Variable("QT_QPA_PLATFORM");
    if (!NeedsXServer(platform)) return {};
    const std::string display = Variable("DISPLAY");
    if (display.empty()) return "DISPLAY is not set";
    if (!XServerAnswers()) return "the X server of DISPLAY=" + display + " does not answer";
    if (platform.empty()) setenv("QT_QPA_PLATFORM", "xcb", 1);
    return {};
}

} // namespace vm
