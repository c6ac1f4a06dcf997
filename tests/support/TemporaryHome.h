// A fresh folder, removed at the end, that every standard folder of the user points into while the
// object lives.
#pragma once

#include <filesystem>
#include <map>
#include <string>

class TemporaryHome {
public:
    TemporaryHome();
    ~TemporaryHome();
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    /// Writes `bytes` to a file below the folder and returns its path.
    std::string Write(const std::string& name, const std::string& bytes) const;
    std::string Read(const std::string& name) const;

private:
    std::filesystem::path m_path;
    std::map<std::string, std::string> m_saved;
};
