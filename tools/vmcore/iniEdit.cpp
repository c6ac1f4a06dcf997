// Set, delete, and whether it worked.
#include "iniEdit.h"

#include <algorithm>
#include <vector>

#include <vmcore/files/profile.h>

#include "command.h"
#include "iniFile.h"
#include "iniText.h"

namespace vm::tool {
namespace {

constexpr std::size_t kBufferSize = 2 * kIniLineLimit;

[[noreturn]] void NotWritten(const std::string& path) {
    throw Exit{kNo, "cannot write " + path + ": " + WhyNotWritten(path)};
}

std::string Named(const std::string& section) {
    return "section [" + section + "]";
}

// Keys are compared by the library's rule, by which a key may hold a '='.
std::vector<IniLine> EntriesWith(const std::string& path, const IniText& text,
                                 const std::string& section, const std::string& key) {
    std::vector<IniLine> entries;
    for (const IniLine& line : text.LinesOf(BlockOf(text, section, path)))
        if (IsEntry(line.text, key)) entries.push_back(line);
    return entries;
}

void Write(const std::string& path, const std::string& section, const char* key,
           const char* value) {
    WritePrivateProfileString(section.c_str(), key, value, path.c_str());
    FlushProfile(path.c_str()); // the next look-up reads the file again
}

} // namespace

const IniBlock& BlockOf(const IniText& text, const std::string& section, const std::string& path) {
    if (const IniBlock* block = text.Find(section)) return *block;
    throw Exit{kNo, path + " has no " + Named(section)};
}

void ThrowNoKey(const std::string& path, const std::string& section, const std::string& key) {
    throw Exit{kNo, Named(section) + " of " + path + " has no key " + key};
}

std::optional<std::string> Lookup(const std::string& path, const std::string& section,
                                  const std::string& key) {
    const auto read = [&](const char* defaultValue) {
        char buffer[kBufferSize];
        const DWORD length = GetPrivateProfileString(section.c_str(), key.c_str(), defaultValue,
                                                     buffer, sizeof buffer, path.c_str());
        return std::string(buffer, length);
    };
    std::string value = read("a");
    if (value != read("b")) return std::nullopt; // what is missing reads as the default
    return value;
}

std::string WhyNotHeld(std::string_view section, std::string_view key, std::string_view value) {
    const std::string header = '[' + std::string(section) + ']';
    const std::string entry = std::string(key) + '=' + std::string(value);
    if (HoldsLineEnd(header) || HoldsLineEnd(entry)) return "a line end would begin another line";
    if (value.find(';') != std::string_view::npos) return "a value ends at its first ';'";
    if (value.ends_with(' ') || value.ends_with('\t'))
        return "blanks and tabs at the end of a value are not read";
    if (std::max(header.size(), entry.size()) > kIniLineLimit)
        return "the line would have " + std::to_string(std::max(header.size(), entry.size())) +
               " characters, of which " + std::to_string(kIniLineLimit) + " are read";
    if (KindOf(entry) == LineKind::Header) return "the line would be taken for a header";
    return {};
}

std::string LossOnSave(std::string_view bytes) {
    if (bytes.substr(bytes.rfind('\n') + 1).find_first_not_of(" \t\r") != std::string_view::npos)
        return "lose the last line, which has no line end";
    std::string copy(bytes);
    if (SplitIniLines(copy.data(), copy.size(), [](IniSpan) {}))
        return "cut lines of more than " + std::to_string(kIniLineLimit) + " characters";
    return {};
}

void SetKey(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value) {
    Write(path, section, key.c_str(), value.c_str());
    if (Lookup(path, section, key) != value) NotWritten(path);
}

void DeleteKey(const std::string& path, const std::string& section, const std::string& key) {
    const IniText before(ReadBytes(path));
    const std::vector<IniLine> entries = EntriesWith(path, before, section, key);
    if (entries.empty()) ThrowNoKey(path, section, key);
    const auto canGo = [&key](const IniLine& line) { return line.text.size() > key.size() + 1; };
    if (std::none_of(entries.begin(), entries.end(), canGo))
        throw Exit{kNo, key +
                            " has an empty value: the library never deletes such an entry (set it "
                            "to something first, or delete the section)"};
    Write(path, section, key.c_str(), nullptr);
    const IniText after(ReadBytes(path));
    const std::vector<IniLine> left = EntriesWith(path, after, section, key);
    if (left.size() == entries.size()) NotWritten(path);
    if (!left.empty())
        throw Exit{kNo, "deleted, but " + path + " has another " + key + " on line " +
                            std::to_string(left[0].number)};
}

void DeleteSection(const std::string& path, const std::string& section) {
    {
        const IniText before(ReadBytes(path));
        BlockOf(before, section, path);
    }
    Write(path, section, nullptr, nullptr);
    const IniText after(ReadBytes(path));
    const auto lines = after.LinesOf(BlockOf(after, section, path));
    if (std::any_of(lines.begin(), lines.end(), [](const IniLine& l) { return !l.text.empty(); }))
        NotWritten(path);
}

} // namespace vm::tool
