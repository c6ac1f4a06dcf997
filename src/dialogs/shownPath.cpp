#include "dialogs/shownPath.h"

#include <filesystem>
#include <utility>
#include <vector>

#include <QtCore/QDir>
#include <QtCore/QFile>

namespace fs = std::filesystem;

namespace vm {
namespace {

std::vector<std::string> EntriesShownAs(const QString& name, const std::string& folder) {
    std::vector<std::string> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::string bytes = entry->path().filename().string();
        if (QFile::decodeName(bytes.c_str()) == name) found.push_back(std::move(bytes));
    }
    return found;
}

} // namespace

std::optional<std::string> PathShownAs(const QString& shown) {
    std::string path; // of the components so far
    const char* slash = "";
    for (const QString& name : QDir::cleanPath(shown).split(u'/')) {
        path += std::exchange(slash, "/");
        std::vector<std::string> entries;
        if (name.contains(QChar::ReplacementCharacter)) entries = EntriesShownAs(name, path);
        if (entries.size() > 1) return std::nullopt;
        path += entries.empty() ? QFile::encodeName(name).toStdString() : entries.front();
    }
    return path;
}

} // namespace vm
