#include "app/instances.h"

#include <algorithm>
#include <cstring>

#include <vmcore/app/lifecycle.h>

#include "app/appState.h"

namespace vm {

void RegisterInstance(const void* handle, const char* name) {
    App().InstanceList.push_back(handle);
    App().InstanceName.emplace_back(name ? name : "");
}

} // namespace vm

void AfxRegisterInstance(void* handle, const char* name) {
    vm::RegisterInstance(handle, name);
}
void AfxRegisterInstance(const void* handle, const char* name) {
    vm::RegisterInstance(handle, name);
}

char* AfxGetInstanceName(const void* handle, char* buffer) {
    if (!buffer) return nullptr;
    buffer[0] = '\0';
    const vm::AppState& app = vm::App();
    const auto found = std::find(app.InstanceList.begin(), app.InstanceList.end(), handle);
    if (found != app.InstanceList.end()) {
        const std::size_t index = static_cast<std::size_t>(found - app.InstanceList.begin());
        std::strcpy(buffer, app.InstanceName[index].c_str());
    }
    return buffer;
}
