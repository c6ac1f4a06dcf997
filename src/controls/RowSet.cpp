#include "controls/RowSet.h"

#include <algorithm>
#include <iterator>

namespace vm {

// The ranges that it touches become one with it.
void RowSet::Add(int first, int last) {
    if (first > last) return;
    auto next = m_ranges.lower_bound(first);
    if (next != m_ranges.begin() && std::prev(next)->second + 1 >= first) --next;
    while (next != m_ranges.end() && next->first <= last + 1) {
        first = std::min(first, next->first);
        last = std::max(last, next->second);
        m_count -= next->second - next->first + 1;
        next = m_ranges.erase(next);
    }
    m_ranges.emplace_hint(next, first, last);
    m_count += last - first + 1;
}

// What of a range lies outside stays.
void RowSet::Remove(int first, int last) {
    if (first > last) return;
    auto next = m_ranges.lower_bound(first);
    if (next != m_ranges.begin() && std::prev(next)->second >= first) --next;
    while (next != m_ranges.end() && next->first <= last) {
        const auto [start, end] = *next;
        next = m_ranges.erase(next);
        if (start < first) m_ranges.emplace(start, first - 1);
        if (end > last) m_ranges.emplace(last + 1, end);
        m_count -= std::min(end, last) - std::max(start, first) + 1;
    }
}

void RowSet::Clear() {
    m_ranges.clear();
    m_count = 0;
}

bool RowSet::Contains(int row) const {
    const auto after = m_ranges.upper_bound(row);
    return after != m_ranges.begin() && row <= std::prev(after)->second;
}

int RowSet::Last() const {
    return m_ranges.empty() ? -1 : m_ranges.rbegin()->second;
}

} // namespace vm
