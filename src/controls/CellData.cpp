#include "controls/CellData.h"

#include <algorithm>

vm::ChildArray CellData::leafNode;

CellData::~CellData() {
    if (hChildItems != &leafNode) delete hChildItems;
}

void CellData::addChild(CellData& child) {
    if (hChildItems == &leafNode) hChildItems = new vm::ChildArray;
    hChildItems->Add(child);
}

namespace vm {

CellData* ChildArray::At(std::size_t index) const {
    return index < Size() ? m_nodes[m_taken + index] : nullptr;
}

// Numbers are distinct and grow: the distances in number to both ends bound the index, and while no
// child has been taken out of the middle they say it.
std::size_t ChildArray::IndexOf(const CellData& child) const {
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(m_taken);
    const auto fromFront = static_cast<std::ptrdiff_t>(child.m_number - (*first)->m_number);
    const auto fromBack = static_cast<std::ptrdiff_t>(m_nodes.back()->m_number - child.m_number);
    const auto size = static_cast<std::ptrdiff_t>(Size());
    const auto low = first + std::max<std::ptrdiff_t>(0, size - 1 - fromBack);
    const auto high = first + std::min(size, fromFront + 1);
    const auto found =
        std::lower_bound(low, high, child.m_number, [](const CellData* node, std::uint64_t number) {
            return node->m_number < number;
        });
    return static_cast<std::size_t>(found - first);
}

void ChildArray::Add(CellData& child) {
    child.m_number = m_nextNumber++;
    m_nodes.push_back(&child);
}

// The shorter side moves up. The gap at the beginning is closed when it is most of the list.
void ChildArray::Remove(const CellData& child) {
    const std::size_t index = IndexOf(child);
    const auto first = m_nodes.begin() + static_cast<std::ptrdiff_t>(m_taken);
    const auto gone = first + static_cast<std::ptrdiff_t>(index);
    if (index >= Size() / 2) {
        m_nodes.erase(gone);
        return;
    }
    std::move_backward(first, gone, gone + 1);
    if (++m_taken <= m_nodes.size() / 2) return;
    m_nodes.erase(m_nodes.begin(), m_nodes.begin() + static_cast<std::ptrdiff_t>(m_taken));
    m_taken = 0;
}

} // namespace vm
