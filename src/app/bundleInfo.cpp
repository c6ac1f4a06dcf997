// Names, paths and interface files of the bundle that the host has set.
#include <vmcore/app/lifecycle.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include <QtWidgets/QApplication>

#include <vmcore/app/messages.h>

#include "app/appState.h"
#include "controls/interfaceFile.h"
#include "core/ascii.h"
#include "core/log.h"
#include "platform/bundle.h"
#include "platform/messagebox.h"

namespace {

constexpr std::size_t kLongestName = 255; // every buffer for a name holds 256 bytes

int CopyInfoString(const char* key, const char* withoutBundle, char* buffer) {
    if (!buffer) return 0;
    buffer[0] = '\0';
    const vm::Bundle* bundle = vm::App().DVBundle;
    if (!bundle) {
        OutputDebugString(withoutBundle);
        return 0;
    }
    std::string value = bundle->InfoString(key).value_or("");
    if (!vm::IsAscii(value)) return 0;
    if (value.size() > kLongestName) value.resize(kLongestName);
    std::strcpy(buffer, value.c_str());
    return static_cast<int>(value.size());
}

// The bundle's path, cut to the buffer, then the folder inside it; for a bare executable its
// folder.
int CopyBundlePath(const vm::Bundle& bundle, const char* folder, char* buffer, int size) {
    if (size <= 0) return 0;
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    std::string path = bundle.Path().substr(0, room);
    if (path.empty()) {
        path = bundle.ExecutablePath().substr(0, room);
        path.erase(std::min(path.rfind('/'), path.size()));
    } else if (path.size() + std::strlen(folder) <= room) {
        path += folder;
    }
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return static_cast<int>(path.size());
}

} // namespace

void AfxSetDVBundle(NSBundle* bundle) {
    vm::App().DVBundle = bundle ? bundle : vm::Bundle::Main();
}
NSBundle* AfxGetDVBundle() {
    return vm::App().DVBundle;
}
NSBundle* AfxGetNSBundle() {
    return vm::App().DVBundle;
}

NSBundle* VMBundleWithPath(const char* path) {
    return path ? vm::Bundle::AtPath(path) : nullptr;
}
NSBundle* VMBundleForAddress(const void* address) {
    return vm::Bundle::ForAddress(address);
}

int AfxApplicationName(char* buffer, int) {
    return CopyInfoString("CFBundleName", "AfxApplicationName called with DVBundle not set",
                          buffer);
}

// The spelling of this log line is what hosts' log filters know.
int AfxApplicationCodeName(char* buffer, int) {
    return CopyInfoString("Executable file", "AfxApplicatoniCodeName called with DVBundle not set",
                          buffer);
}

const char* AfxGetAppName() {
    vm::AppState& app = vm::App();
    if (!app.AppName[0]) AfxApplicationName(app.AppName, sizeof app.AppName);
    return app.AppName;
}

const char* AfxGetAppCodeName() {
    vm::AppState& app = vm::App();
    if (!app.AppCodeName[0]) AfxApplicationCodeName(app.AppCodeName, sizeof app.AppCodeName);
    return app.AppCodeName;
}

int AfxApplicationPath(char* buffer, int size) {
    if (!buffer) return 0;
    if (const vm::Bundle* bundle = vm::App().DVBundle)
        return CopyBundlePath(*bundle, "/Contents/MacOS", buffer, size);
    OutputDebugString("AfxApplicationPath called with DVBundle not set");
    return 0;
}

int AfxResourcePath(char* buffer, int size) {
    if (!buffer) return 0;
    if (const vm::Bundle* bundle = vm::App().DVBundle)
        return CopyBundlePath(*bundle, "/Contents/Resources", buffer, size);
    vm::ShowMessageBox(nullptr, "DVBundle not set", "AfxResourcePath", 1);
    return 0;
}

void* AfxGetNibRef() {
    return new std::vector<void*>;
}
void AfxReleaseNibRef(void* ref) {
    delete static_cast<std::vector<void*>*>(ref);
}

BOOL AfxLoadNib(void* owner, const char* name) {
    if (!name || !vm::IsAscii(name)) return FALSE;
    // A view cannot be made before the application object.
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return FALSE;
    return vm::LoadInterfaceFile(owner, name) ? TRUE : FALSE;
}
