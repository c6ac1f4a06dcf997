#include "controls/listSort.h"

#include <algorithm>
#include <numeric>

#include <vmcore/core/strings.h>

namespace vm {
namespace {

constexpr unsigned char kSignBit = 0x80;

unsigned char UpperCase(unsigned char c) {
    return c >= 'a' && c <= 'z' ? static_cast<unsigned char>(c - 'a' + 'A') : c;
}

// A key whose plain byte order is macstricmp's: upper case, and signed bytes made unsigned. The end
// of the text counts as 0, which is more than a byte from 0x80 on, so it is part of the key.
std::string SortKey(const std::string& text) {
    std::string key;
    key.reserve(text.size() + 1);
    for (char c : text)
        key += static_cast<char>(UpperCase(static_cast<unsigned char>(c)) ^ kSignBit);
    key += static_cast<char>(kSignBit);
    return key;
}

} // namespace

int CListCtrlCompare(const char* a, const char* b, bool ascending) {
    return ascending ? macstricmp(a, b) : macstricmp(b, a);
}

std::vector<std::uintptr_t> SortedByText(const std::vector<std::uintptr_t>& data,
                                         const std::vector<std::string>& texts, bool ascending) {
    std::vector<std::string> keys(data.size());
    for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = SortKey(texts[i]);
    std::vector<std::size_t> order(data.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return ascending ? keys[a] < keys[b] : keys[b] < keys[a];
    });
    std::vector<std::uintptr_t> sorted(data.size());
    for (std::size_t i = 0; i < order.size(); ++i) sorted[i] = data[order[i]];
    return sorted;
}

} // namespace vm
