// Walking through the tree.
#include "portFiles.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vm::tool {
namespace {

namespace fs = std::filesystem;

std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool IsSource(const std::string& extension) {
    constexpr auto known = std::to_array<std::string_view>(
        {".c", ".cc", ".cpp", ".cxx", ".h", ".hh", ".hpp", ".hxx", ".inl"});
    return std::find(known.begin(), known.end(), extension) != known.end();
}

bool IsLeftOut(const fs::path& folder) {
    constexpr auto known = std::to_array<std::string_view>(
        {".git", ".svn", ".hg", ".bzr", "cvs", "_darcs", ".vs", ".vscode", "build", "debug",
         "release", "ipch", "obj", "node_modules"});
    const std::string name = LowerCase(folder.filename().string());
    std::error_code ignored;
    return std::find(known.begin(), known.end(), name) != known.end() ||
           name.starts_with("cmake-build-") || name.starts_with("build-") ||
           fs::exists(folder / "CMakeCache.txt", ignored);
}

class Walk {
public:
    explicit Walk(PortFiles& files) : m_files(files) {}

    void Folder(const fs::path& folder) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error))
            Entry(*entry);
        if (error) Trouble(folder, error);
    }

    void File(const fs::path& path) {
        const std::string extension = LowerCase(path.extension().string());
        if (extension == ".rc") ++m_files.resourceScripts;
        if (!IsSource(extension)) return;
        std::error_code error;
        const std::uintmax_t size = fs::file_size(path, error);
        if (error) return Trouble(path, error);
        (size > kLargestPortFile ? m_files.tooLarge : m_files.sources).push_back(path.string());
    }

private:
    void Entry(const fs::directory_entry& entry) {
        std::error_code error;
        if (entry.is_directory(error) && !entry.is_symlink(error)) {
            if (!IsLeftOut(entry.path())) Folder(entry.path());
        } else if (entry.is_regular_file(error)) {
            File(entry.path());
        }
    }

    void Trouble(const fs::path& path, const std::error_code& error) {
        m_files.trouble.push_back(path.string() + ": " + error.message());
    }

    PortFiles& m_files;
};

} // namespace

PortFiles FindPortFiles(const std::string& path) {
    PortFiles files;
    std::error_code error;
    if (fs::is_directory(path, error))
        Walk(files).Folder(path);
    else if (fs::is_regular_file(path, error))
        Walk(files).File(path);
    else
        files.trouble.push_back(path + ": " + (error ? error.message() : "no folder and no file"));
    std::sort(files.sources.begin(), files.sources.end());
    std::sort(files.trouble.begin(), files.trouble.end());
    return files;
}

} // namespace vm::tool
