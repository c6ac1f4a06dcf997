// One item of a tree, and the list of an item's children. An item handle of hosts is the pointer of
// its node; whether it still stands for one, the tree's data source knows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class CellData;

namespace vm {

/// Children in the order in which they were added. An index is found without a walk: every child has
/// a number that grows along the list, whatever has been taken out since.
class ChildArray {
public:
    std::size_t Size() const { return m_nodes.size() - m_taken; }
    CellData* At(std::size_t index) const;            ///< null beyond the end
    std::size_t IndexOf(const CellData& child) const; ///< of one that is in the list
    void Add(CellData& child);
    void Remove(const CellData& child); ///< one that is in the list; fast at both ends

private:
    std::vector<CellData*> m_nodes;
    std::size_t m_taken = 0; // entries at the beginning that are gone
    std::uint64_t m_nextNumber = 0;
};

} // namespace vm

class CellData {
public:
    explicit CellData(CellData* parent) : hParentItem(parent) {}
    ~CellData(); ///< does not free the children
    CellData(const CellData&) = delete;
    CellData& operator=(const CellData&) = delete;

    /// Shared by all nodes that never had a child.
    static vm::ChildArray leafNode;

    std::uintptr_t data = 0;
    std::string str;       ///< Mac Roman
    CellData* hParentItem; ///< null also for items directly below the top row
    int nCheck = 0;
    int nImage = 0;
    int nSelImage = 0;
    unsigned nState = 0;
    vm::ChildArray* hChildItems = &leafNode;

    CellData* childAtIndex(std::size_t index) const { return hChildItems->At(index); }
    std::size_t numberOfChildren() const { return hChildItems->Size(); }
    void addChild(CellData& child);

private:
    friend class vm::ChildArray;
    std::uint64_t m_number = 0; // in the parent's list
};
