// Row numbers, kept as ranges: what is selected in a table.
#pragma once

#include <map>

namespace vm {

class RowSet {
public:
    void Add(int first, int last);
    void Remove(int first, int last);
    void Clear();

    bool Contains(int row) const;
    int Count() const { return m_count; } ///< of the rows
    int Last() const;                     ///< -1 for an empty set
    /// First and last row of each range, ascending; they do not touch.
    const std::map<int, int>& Ranges() const { return m_ranges; }

private:
    std::map<int, int> m_ranges;
    int m_count = 0;
};

} // namespace vm
