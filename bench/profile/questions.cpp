#include "questions.h"

#include <algorithm>
#include <cstdio>

namespace bench {
namespace {

std::string Numbered(const char* prefix, std::size_t number) {
    char text[32];
    std::snprintf(text, sizeof(text), "%s%07zu", prefix, number);
    return text;
}

} // namespace

Query Questions::Ask(std::size_t entry, const std::string& value) const {
    const Entry& asked = m_file.entries[entry];
    return {m_file.sections[asked.section], asked.key, asked.spelled, value};
}

Batch Questions::First() const {
    Batch batch;
    batch.Add(Ask(m_file.entries.size() / 2));
    return batch;
}

Batch Questions::OneInEachSection() const {
    Batch batch;
    for (std::size_t i = 0; i < m_file.entries.size(); ++i)
        if (i == 0 || m_file.entries[i].section != m_file.entries[i - 1].section) batch.Add(Ask(i));
    return batch;
}

Batch Questions::HitsAmong(std::size_t first, std::size_t count, std::size_t step) {
    Batch batch;
    for (std::size_t i = 0; i < kQuestions; ++i) batch.Add(Ask(first + Random(count) * step));
    return batch;
}

Batch Questions::HitsInOneSection() {
    const std::uint32_t section = m_file.entries[m_file.entries.size() / 2].section;
    const auto isOf = [section](const Entry& entry) { return entry.section == section; };
    const auto first = std::find_if(m_file.entries.begin(), m_file.entries.end(), isOf);
    const auto last = std::find_if_not(first, m_file.entries.end(), isOf);
    return HitsAmong(static_cast<std::size_t>(first - m_file.entries.begin()),
                     static_cast<std::size_t>(last - first), 1);
}

Batch Questions::MissingKeys() {
    Batch batch;
    for (std::size_t i = 0; i < kQuestions; ++i) {
        Query query = Ask(RandomEntry());
        query.key = query.spelled = query.key + 'x';
        batch.Add(query);
    }
    return batch;
}

Batch Questions::MissingSections() {
    Batch batch;
    for (std::size_t i = 0; i < kQuestions; ++i) {
        Query query = Ask(RandomEntry());
        query.section += 'x';
        batch.Add(query);
    }
    return batch;
}

Batch Questions::Changes(std::size_t count) {
    Batch batch;
    for (std::size_t i = 0; i < count; ++i)
        batch.Add(Ask(RandomEntry(), Numbered("other_", ++m_values)));
    return batch;
}

Batch Questions::Additions() {
    Batch batch;
    const std::size_t count = std::min(m_file.entries.size() / 2, kQuestions);
    for (std::size_t i = 0; i < count; ++i) {
        const std::string key = Numbered("added_", i);
        batch.Add({RandomSection(), key, key, "value_0000001"});
    }
    return batch;
}

std::size_t CountFound(Store& store, const Batch& batch) {
    std::size_t found = 0;
    for (std::size_t i = 0; i < batch.size(); ++i) found += store.Get(batch, i) > 0 ? 1 : 0;
    return found;
}

} // namespace bench
