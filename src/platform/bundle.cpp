#include "platform/bundle.h"

#include <filesystem>
#include <map>
#include <mutex>

#include <dlfcn.h>
#include <link.h>

#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>

namespace fs = std::filesystem;

namespace vm {
namespace {

// The folder of Name.app for .../Name.app/Contents/MacOS/<executable>, else empty.
std::string BundleFolderOf(const fs::path& executable) {
    const fs::path macos = executable.parent_path();
    const fs::path contents = macos.parent_path();
    if (macos.filename() != "MacOS" || contents.filename() != "Contents") return {};
    return contents.parent_path().string();
}

std::string RunningExecutable() {
    std::error_code error;
    const fs::path path = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

// The file of the module that holds `address`; nothing when no module does.
std::string ModuleOf(const void* address) {
    Dl_info info{};
    void* entry = nullptr;
    if (!dladdr1(address, &info, &entry, RTLD_DL_LINKMAP) || !info.dli_fname) return {};
    // The program has no name there but the one it was called by, which may be no path.
    const auto* module = static_cast<const link_map*>(entry);
    if (module && !*module->l_name) return RunningExecutable();
    std::error_code error;
    const fs::path path = fs::canonical(info.dli_fname, error);
    return error ? std::string() : path.string();
}

// The executable of a bundle folder: the first regular file of Contents/MacOS.
std::string ExecutableIn(const fs::path& bundle) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(bundle / "Contents/MacOS", error))
        if (entry.is_regular_file(error)) return entry.path().string();
    return {};
}

// The string that follows <key>name</key> in the property list's dictionary.
std::optional<std::string> PlistString(const std::string& file, const char* name) {
    QFile source(QFile::decodeName(file.c_str()));
    if (!source.open(QIODevice::ReadOnly)) return std::nullopt;
    QXmlStreamReader reader(&source);
    if (!reader.readNextStartElement() || !reader.readNextStartElement()) return std::nullopt;
    bool found = false; // the key stood before the element that comes next
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("key")) {
            found = reader.readElementText() == QLatin1String(name);
        } else if (!found) {
            reader.skipCurrentElement(); // keys inside it belong to it
        } else {
            if (reader.name() != QLatin1String("string")) return std::nullopt;
            const QString text = reader.readElementText();
            return reader.hasError() ? std::nullopt : std::optional(text.toStdString());
        }
    }
    return std::nullopt;
}

} // namespace

Bundle::Bundle(std::string path, std::string executablePath)
    : m_path(std::move(path)), m_executablePath(std::move(executablePath)) {}

Bundle* Bundle::Main() {
    static auto* const s_main = [] {
        const std::string executable = RunningExecutable();
        return new Bundle(BundleFolderOf(executable), executable);
    }();
    return s_main;
}

Bundle* Bundle::AtPath(const std::string& path) {
    std::error_code error;
    const fs::path folder = fs::canonical(path, error);
    if (error || !fs::is_directory(folder, error)) return nullptr;
    static std::mutex s_lock;
    static auto* const s_bundles = new std::map<std::string, Bundle*>;
    std::lock_guard guard(s_lock);
    Bundle*& bundle = (*s_bundles)[folder.string()];
    if (!bundle) bundle = new Bundle(folder.string(), ExecutableIn(folder));
    return bundle;
}

Bundle* Bundle::ForAddress(const void* address) {
    const std::string module = ModuleOf(address);
    if (module.empty()) return nullptr;
    const std::string folder = BundleFolderOf(module);
    if (!folder.empty()) return AtPath(folder);
    static std::mutex s_lock;
    static auto* const s_modules = new std::map<std::string, Bundle*>;
    std::lock_guard guard(s_lock);
    Bundle*& bundle = (*s_modules)[module];
    if (!bundle) bundle = new Bundle({}, module);
    return bundle;
}

std::string Bundle::ResourcePath() const {
    if (!m_path.empty()) return m_path + "/Contents/Resources";
    return fs::path(m_executablePath).parent_path().string();
}

std::string Bundle::PlugInPath() const {
    if (!m_path.empty()) return m_path + "/Contents/PlugIns";
    return fs::path(m_executablePath).parent_path().string();
}

std::optional<std::string> Bundle::InfoString(const char* key) const {
    if (m_path.empty()) return std::nullopt;
    return PlistString(m_path + "/Contents/Info.plist", key);
}

} // namespace vm
