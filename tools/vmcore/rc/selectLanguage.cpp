// Languages: their names, and which is taken.
#include "rc/selectLanguage.h"

#include <algorithm>
#include <map>

#include "rc/constants.h"
#include "rc/token.h"

namespace vm::rc {
namespace {

// The number of a word: "9", "0x09", "english" with the prefix "LANG_".
std::optional<int> PartNamed(std::string_view word, const std::string& prefix) {
    while (!word.empty() && word.front() == ' ') word.remove_prefix(1);
    while (!word.empty() && word.back() == ' ') word.remove_suffix(1);
    unsigned long long number = 0;
    if (NumberOf(word, false, number) && number <= 0xFFFF) return static_cast<int>(number);
    const std::string upper = Upper(word);
    auto value = ConstantValue(upper.starts_with(prefix) ? upper : prefix + upper);
    if (!value) return std::nullopt;
    return static_cast<int>(*value);
}

std::string KeyOf(const Head& head) {
    std::string type = head.keyword;
    if (type.ends_with("EX") && (type == "DIALOGEX" || type == "MENUEX"))
        type.resize(type.size() - 2);
    return type + ' ' + (head.id.number ? '#' + std::to_string(*head.id.number) : head.id.name);
}

std::string KeyOf(const Head& head, const StringEntry& entry) {
    return head.keyword + ' ' + std::to_string(entry.id.number.value_or(0));
}

const Head& HeadOf(const Resource& resource) {
    return std::visit([](const auto& value) -> const Head& { return value.head; }, resource);
}

// The lower the better.
int RankOf(Language language, const std::optional<Language>& asked) {
    if (asked && language == *asked) return 0;
    if (asked && language.primary == asked->primary) return 1;
    return language.primary == 0 ? 2 : 3;
}

class Selection {
public:
    Selection(const std::optional<Language>& asked, Report& report)
        : m_asked(asked), m_report(report) {}
    void Consider(const Resource& resource);
    /// Whether the resource stays; texts in other languages have been taken out of it.
    bool Keep(Resource& resource);

private:
    void Offer(const std::string& key, Language language);
    bool KeepStrings(StringTable& table);
    void LeftOut(const Place& place, const std::string& what, Language language, Language instead);

    const std::optional<Language>& m_asked;
    Report& m_report;
    std::map<std::string, Language> m_best;
};

void Selection::Offer(const std::string& key, Language language) {
    const auto [best, isFirst] = m_best.try_emplace(key, language);
    if (!isFirst && RankOf(language, m_asked) < RankOf(best->second, m_asked))
        best->second = language;
}

void Selection::Consider(const Resource& resource) {
    const Head& head = HeadOf(resource);
    const auto* const table = std::get_if<StringTable>(&resource);
    if (!table) return Offer(KeyOf(head), head.language);
    for (const StringEntry& entry : table->strings) Offer(KeyOf(head, entry), head.language);
}

void Selection::LeftOut(const Place& place, const std::string& what, Language language,
                        Language instead) {
    m_report.Add({place, Outcome::LeftOut, what,
                  "language " + LanguageText(language) + "; taken: " + LanguageText(instead)});
}

bool Selection::Keep(Resource& resource) {
    if (auto* const table = std::get_if<StringTable>(&resource)) return KeepStrings(*table);
    const Head& head = HeadOf(resource);
    const Language best = m_best.at(KeyOf(head));
    if (best == head.language) return true;
    LeftOut(head.place, head.keyword + " " + head.id.symbol, head.language, best);
    return false;
}

bool Selection::KeepStrings(StringTable& table) {
    std::vector<StringEntry>& strings = table.strings;
    const auto other =
        std::stable_partition(strings.begin(), strings.end(), [&](const StringEntry& entry) {
            return m_best.at(KeyOf(table.head, entry)) == table.head.language;
        });
    if (other == strings.end()) return true;
    for (auto entry = other; entry != strings.end(); ++entry)
        LeftOut(entry->place, "STRING " + entry->id.symbol, table.head.language,
                m_best.at(KeyOf(table.head, *entry)));
    strings.erase(other, strings.end());
    return !strings.empty();
}

} // namespace

std::optional<Language> LanguageNamed(std::string_view name) {
    const std::size_t comma = name.find(',');
    const auto primary = PartNamed(name.substr(0, comma), "LANG_");
    if (!primary) return std::nullopt;
    if (comma == std::string_view::npos) return Language{*primary & 0x3FF, *primary >> 10};
    const auto sub = PartNamed(name.substr(comma + 1), "SUBLANG_");
    if (!sub || *sub > 0x3F || *primary > 0x3FF) return std::nullopt;
    return Language{*primary, *sub};
}

std::string LanguageText(Language language) {
    std::string text = std::to_string(language.primary) + "," + std::to_string(language.sub);
    for (const Constant& constant : LanguageConstants()) {
        if (!constant.name.starts_with("LANG_")) break;
        if (static_cast<int>(constant.value) == language.primary)
            return text + " (" + Lower(constant.name.substr(5)) + ")";
    }
    return text;
}

std::vector<Resource> SelectLanguage(std::vector<Resource> resources,
                                     const std::optional<Language>& asked, Report& report) {
    Selection selection(asked, report);
    for (const Resource& resource : resources) selection.Consider(resource);
    std::erase_if(resources, [&](Resource& resource) { return !selection.Keep(resource); });
    return resources;
}

} // namespace vm::rc
