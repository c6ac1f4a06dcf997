#include "PluginVerdicts.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>

#include <windows.h>

#include "Settings.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kSection = "LibrarianPlugIns";
constexpr std::size_t kRoom = 256;

// A path may hold what no key can.
std::string KeyOf(const std::string& path) {
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : path) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    char key[20];
    std::snprintf(key, sizeof key, "%016llx", static_cast<unsigned long long>(hash));
    return key;
}

// What a verdict is for: size, time and path. "" when there is no such file.
std::string Identity(const std::string& path) {
    std::error_code error;
    const auto size = fs::file_size(path, error);
    const auto time = error ? fs::file_time_type() : fs::last_write_time(path, error);
    if (error) return "";
    return std::to_string(size) + "|" + std::to_string(time.time_since_epoch().count()) + "|" +
           path + "|";
}

} // namespace

std::optional<std::string> RecallVerdict(const std::string& path) {
    char stored[kRoom] = {};
    ::GetProfileString(kSection, KeyOf(path).c_str(), "", stored, sizeof stored);
    const std::string verdict = stored;
    const std::string identity = Identity(path);
    if (identity.empty() || verdict.compare(0, identity.size(), identity) != 0) return std::nullopt;
    return verdict.substr(identity.size());
}

void RememberVerdict(const std::string& path, const std::string& problem) {
    const std::string key = KeyOf(path);
    const std::string identity = Identity(path);
    const std::string verdict = identity + problem;
    const bool fits = !identity.empty() && FitsProfile(key, verdict);
    ::WriteProfileString(kSection, key.c_str(), fits ? verdict.c_str() : nullptr);
}

void ForgetVerdict(const std::string& path) {
    ::WriteProfileString(kSection, KeyOf(path).c_str(), nullptr);
}
