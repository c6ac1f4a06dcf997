#include "dialogs/fileFilter.h"

#include <algorithm>
#include <cstring>

#include "core/macroman.h"

namespace vm {
namespace {

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "*.*" is every file, also those without a dot.
std::vector<std::string> SplitPatterns(std::string_view list) {
    std::vector<std::string> patterns;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        const std::string_view pattern = Trimmed(list.substr(0, end));
        if (pattern == "*.*" || pattern == "*") return {};
        if (!pattern.empty()) patterns.emplace_back(pattern);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return patterns;
}

bool IsPlain(QChar character) {
    return character.unicode() < 0x80 &&
           (character.isLetterOrNumber() ||
            QStringLiteral("_.,*?+#-[]@{}!$%&=^~").contains(character));
}

} // namespace

std::string FilterWithZeros(const char* bars) {
    std::string zeros = bars ? bars : "";
    std::replace(zeros.begin(), zeros.end(), '|', '\0');
    return zeros += '\0';
}

std::vector<FileFilter> ParseFilter(const char* pairs) {
    std::vector<FileFilter> filters;
    while (pairs && *pairs) {
        const char* const patterns = pairs + std::strlen(pairs) + 1;
        filters.push_back({pairs, SplitPatterns(patterns)});
        pairs = *patterns ? patterns + std::strlen(patterns) + 1 : nullptr;
    }
    return filters;
}

QString ToolkitFilter(const FileFilter& filter) {
    QString name = FromMacRoman(filter.name.c_str()).trimmed();
    const qsizetype list = name.lastIndexOf(u'(');
    if (list >= 0 && name.endsWith(u')') && name.indexOf(u'*', list) >= 0)
        name = name.left(list).trimmed();
    QStringList patterns;
    for (const std::string& pattern : filter.patterns) {
        QString safe = FromMacRoman(pattern.c_str());
        for (QChar& character : safe)
            if (!IsPlain(character)) character = u'?';
        patterns += safe;
    }
    return name + QStringLiteral(" (") +
           (patterns.empty() ? QStringLiteral("*") : patterns.join(u' ')) + u')';
}

std::string ExtensionOf(const FileFilter& filter) {
    for (const std::string& pattern : filter.patterns)
        if (pattern.starts_with("*.") && pattern.find_first_of("*?[", 1) == std::string::npos)
            return pattern.substr(2);
    return {};
}

} // namespace vm
