// The order of a sorted list, on plain texts.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vm {

/// The comparison by which lists are sorted: case-blind as macstricmp, `a` with `b` ascending, `b`
/// with `a` descending.
int CListCtrlCompare(const char* a, const char* b, bool ascending);

/// `data` reordered so that its texts (texts[i] belongs to data[i]) are in the order of
/// CListCtrlCompare; equal texts keep their order.
std::vector<std::uintptr_t> SortedByText(const std::vector<std::uintptr_t>& data,
                                         const std::vector<std::string>& texts, bool ascending);

} // namespace vm
