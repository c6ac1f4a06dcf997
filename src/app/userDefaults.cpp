#include "app/userDefaults.h"

#include <map>
#include <mutex>
#include <string>

#include <vmcore/app/lifecycle.h>

namespace vm {
namespace {

struct UserDefaults {
    std::mutex lock;
    std::map<std::string, bool> values; // guarded by lock
};

UserDefaults& Defaults() {
    static auto* const s_defaults = new UserDefaults;
    return *s_defaults;
}

} // namespace

void SetUserDefault(const char* name, bool value) {
    UserDefaults& defaults = Defaults();
    std::lock_guard guard(defaults.lock);
    defaults.values[name] = value;
}

} // namespace vm

bool VMUserDefaultBool(const char* name) {
    vm::UserDefaults& defaults = vm::Defaults();
    std::lock_guard guard(defaults.lock);
    const auto found = defaults.values.find(name ? name : "");
    return found != defaults.values.end() && found->second;
}
