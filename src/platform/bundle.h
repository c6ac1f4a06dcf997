// A bundle: Name.app/Contents/{MacOS/<executable>,Resources/,PlugIns/,Info.plist}. A bare
// executable is a bundle without a path.
#pragma once

#include <optional>
#include <string>

namespace vm {

class Bundle {
public:
    /// The bundle whose executable is this process. Made once, never freed.
    static Bundle* Main();
    /// The bundle at `path` (a folder), or null when there is no folder. Owned by the library.
    static Bundle* AtPath(const std::string& path);
    /// The bundle of the module (program or plug-in) that holds `address`; null for no module.
    static Bundle* ForAddress(const void* address);

    /// The bundle folder; empty for a bare executable.
    const std::string& Path() const { return m_path; }
    const std::string& ExecutablePath() const { return m_executablePath; }
    std::string ResourcePath() const; ///< Contents/Resources; beside a bare executable, its folder
    std::string PlugInPath() const;   ///< Contents/PlugIns; beside a bare executable, its folder
    /// The string value of a key of Info.plist; nothing when it is missing.
    std::optional<std::string> InfoString(const char* key) const;

private:
    Bundle(std::string path, std::string executablePath);

    std::string m_path;
    std::string m_executablePath;
};

} // namespace vm
