#include "SortWatch.h"

#include <algorithm>
#include <map>
#include <numeric>

#include <windows.h>

void SortWatch::Asked(int column, std::size_t data, const std::string& text, std::size_t count,
                      const DataOf& dataOf) {
    Look(dataOf);
    if (column != m_asked || data != dataOf(m_answers.size())) m_answers.clear();
    m_asked = column;
    if (data == dataOf(m_answers.size())) m_answers.emplace_back(data, text);
    m_isWhole = count > 1 && m_answers.size() == count;
}

// Has the list sorted since the last row was asked for?
void SortWatch::Look(const DataOf& dataOf) {
    if (!m_isWhole) return;
    const std::map<std::size_t, std::string> texts(m_answers.begin(), m_answers.end());
    bool isAscending = true;
    bool isDescending = true;
    for (std::size_t row = 1; row < m_answers.size(); ++row) {
        const auto above = texts.find(dataOf(row - 1));
        const auto below = texts.find(dataOf(row));
        if (above == texts.end() || below == texts.end()) isAscending = isDescending = false;
        if (!isAscending && !isDescending) break;
        const int order = macstricmp(above->second.c_str(), below->second.c_str());
        isAscending = isAscending && order <= 0;
        isDescending = isDescending && order >= 0;
    }
    Judge(isAscending, isDescending);
    m_isWhole = false;
    m_answers.clear();
}

// Of equal texts nothing can be seen: a second click on a column turns it round.
void SortWatch::Judge(bool isAscending, bool isDescending) {
    if (!isAscending && !isDescending) return;
    const bool turnsRound = m_asked == m_column && !m_isDescending;
    m_isDescending = isAscending && isDescending ? turnsRound : isDescending;
    m_column = m_asked;
}

std::vector<std::size_t> SortWatch::OrderOf(const std::vector<std::string>& texts) const {
    std::vector<std::size_t> order(texts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (m_column < 0) return order;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        const int compared = macstricmp(texts[a].c_str(), texts[b].c_str());
        return m_isDescending ? compared > 0 : compared < 0;
    });
    return order;
}
