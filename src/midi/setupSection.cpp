// How values of the MIDI set-up file are read.
#include "midi/setupSection.h"

#include <algorithm>
#include <charconv>

namespace vm {

namespace {
constexpr std::string_view kBlanks = " \t";
}

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::optional<std::uint32_t> SetupNumber(std::string_view text, SetupRange range) {
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) return std::nullopt;
    if (number < range.least || number > range.most) return std::nullopt;
    return number;
}

std::optional<SetupSection::Entry> SetupSection::Find(const std::string& key) const {
    for (const std::string& name : m_names)
        if (const auto value = m_lookUp(name, key))
            return Entry{name, std::string(TrimBlanks(*value))};
    return std::nullopt;
}

std::optional<std::string> SetupSection::Text(const std::string& key) const {
    std::optional<Entry> entry = Find(key);
    if (!entry) return std::nullopt;
    return std::move(entry->value);
}

std::optional<std::uint32_t> SetupSection::Number(const std::string& key, SetupRange range) const {
    const std::optional<Entry> entry = Find(key);
    if (!entry) return std::nullopt;
    const auto number = SetupNumber(entry->value, range);
    if (!number)
        Refuse(key, '"' + entry->value + "\" is no number from " + std::to_string(range.least) +
                        " to " + std::to_string(range.most));
    return number;
}

std::optional<std::vector<std::string>> SetupSection::List(const std::string& key) const {
    const std::optional<Entry> entry = Find(key);
    if (!entry) return std::nullopt;
    std::vector<std::string> parts;
    for (std::string_view rest = entry->value; !rest.empty();) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const std::string_view part = TrimBlanks(rest.substr(0, end));
        if (!part.empty()) parts.emplace_back(part);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return parts;
}

void SetupSection::Refuse(const std::string& key, std::string text) const {
    const std::optional<Entry> entry = Find(key);
    m_problems.push_back({entry ? entry->section : m_names.back(), key, std::move(text)});
}

} // namespace vm
