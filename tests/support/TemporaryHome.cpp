#include "support/TemporaryHome.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {
constexpr const char* kVariables[] = {"HOME",           "XDG_CONFIG_HOME", "XDG_DATA_HOME",
                                      "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "VMCORE_VOLUMES"};
}

TemporaryHome::TemporaryHome() {
    std::string pattern = (fs::temp_directory_path() / "vmcore-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    m_path = pattern;
    for (const char* name : kVariables) {
        if (const char* value = std::getenv(name)) m_saved[name] = value;
        const fs::path folder = std::string(name) == "HOME" ? m_path : m_path / name;
        fs::create_directories(folder);
        fs::permissions(folder, fs::perms::owner_all);
        setenv(name, folder.c_str(), 1);
    }
}

TemporaryHome::~TemporaryHome() {
    for (const char* name : kVariables) {
        const auto saved = m_saved.find(name);
        if (saved == m_saved.end())
            unsetenv(name);
        else
            setenv(name, saved->second.c_str(), 1);
    }
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string TemporaryHome::Write(const std::string& name, const std::string& bytes) const {
    const fs::path path = m_path / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path.string();
}

std::string TemporaryHome::Read(const std::string& name) const {
    std::ifstream file(m_path / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
