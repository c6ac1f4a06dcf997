// Loads libjack, and looks for its server without its help.
#include "platform/midi/jack/JackLibrary.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vm {

namespace {

std::optional<JackLibrary> Load() {
    void* const library = dlopen("libjack.so.0", RTLD_NOW | RTLD_LOCAL);
    if (!library) return std::nullopt;
    JackLibrary jack;
#define VM_JACK_LOAD(name)                                                                         \
    jack.name = reinterpret_cast<decltype(jack.name)>(dlsym(library, "jack_" #name));
#define VM_JACK_DEMAND(name)                                                                       \
    if (!jack.name) return std::nullopt;
    VM_JACK_FUNCTIONS(VM_JACK_LOAD)
    VM_JACK_NEWER_FUNCTIONS(VM_JACK_LOAD)
    VM_JACK_FUNCTIONS(VM_JACK_DEMAND)
#undef VM_JACK_LOAD
#undef VM_JACK_DEMAND
    jack.set_error_function([](const char*) {});
    jack.set_info_function([](const char*) {});
    return jack;
}

std::string Environment(const char* name, const char* otherwise = "") {
    const char* value = std::getenv(name);
    return value && *value ? value : otherwise;
}

bool IsPipeWire(const JackLibrary& jack) {
    const char* version = jack.get_version_string ? jack.get_version_string() : nullptr;
    return version && std::string_view(version).find("PipeWire") != std::string_view::npos;
}

std::string PipeWireSocket() {
    const std::string name = Environment("PIPEWIRE_REMOTE", "pipewire-0");
    if (name.front() == '/') return name;
    const std::string folder = Environment("XDG_RUNTIME_DIR", "/run/pipewire");
    return Environment("PIPEWIRE_RUNTIME_DIR", folder.c_str()) + "/" + name;
}

std::string JackSocket() {
    const std::string user =
        std::getenv("JACK_PROMISCUOUS_SERVER") ? "" : std::to_string(getuid()) + "_";
    return "/dev/shm/jack_" + Environment("JACK_DEFAULT_SERVER", "default") + "_" + user + "0";
}

bool TakesConnections(const std::string& socketPath) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, socketPath.c_str(), socketPath.size() + 1);
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (handle < 0) return false;
    const int result = connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    const bool isFull = result != 0 && errno == EAGAIN; // of others who are waiting for it
    close(handle);
    return result == 0 || isFull;
}

} // namespace

const JackLibrary* JackLibrary::Get() {
    static const std::optional<JackLibrary> s_jack = Load();
    return s_jack ? &*s_jack : nullptr;
}

bool JackServerAnswers(const JackLibrary& jack) {
    return TakesConnections(IsPipeWire(jack) ? PipeWireSocket() : JackSocket());
}

} // namespace vm
