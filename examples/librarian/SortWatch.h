// By which column the user has sorted a list. The list control does not say so, but before it sorts it
// asks for the column's text of every row, from the top, and the order of the rows after that tells the
// direction. Pure.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class SortWatch {
public:
    /// The item data of a row.
    using DataOf = std::function<std::size_t(std::size_t row)>;

    /// The list asks for a text; `count` is how many rows it has.
    void Asked(int column, std::size_t data, const std::string& text, std::size_t count,
               const DataOf& dataOf);
    /// Call it before the rows change.
    void Look(const DataOf& dataOf);

    int Column() const { return m_column; } ///< -1: rows are as they came
    /// The indices of these texts of the column in the order of their rows.
    std::vector<std::size_t> OrderOf(const std::vector<std::string>& texts) const;

private:
    void Judge(bool isAscending, bool isDescending);

    int m_column = -1;
    bool m_isDescending = false;

    int m_asked = -1;                                           // the column that is asked for
    std::vector<std::pair<std::size_t, std::string>> m_answers; // data and text, from the top
    bool m_isWhole = false;                                     // every row was asked for
};
