// The row store of a list and what it does when asked: the cells' texts come from the list's own
// window object, and what the user does goes to the list's parent.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include <vmcore/core/types.h>

#include "controls/rowTable.h"
#include "controls/rowText.h"

class CListCtrl;

namespace vm {
class ListTable;
}

/// The delegate and data source of a list's table view; part of its ListTable.
class LCTableViewDelegate final : public vm::RowKeeper {
public:
    explicit LCTableViewDelegate(vm::ListTable& table) : m_table(table) {}
    LCTableViewDelegate(const LCTableViewDelegate&) = delete;
    LCTableViewDelegate& operator=(const LCTableViewDelegate&) = delete;
    /// The delegate of a table view; null when it is no list's.
    static LCTableViewDelegate* Of(const QTableView* view);

    CListCtrl* wnd = nullptr; ///< the list that it serves

    // The rows, in double-ended queues: a million take 20 bytes each, and rows come and go at both
    // ends without the others being moved.
    std::deque<vm::RowText> strings; ///< the rows' own texts
    std::deque<std::uintptr_t> data; ///< item data: as many as the table shows rows
    std::deque<std::uint32_t> images;

    vm::ListTable& Table() const { return m_table; }
    int Count() const override { return static_cast<int>(data.size()); }
    /// The list: `wnd`, else the object that the table view is registered for; null for neither.
    CWnd* Object() const override;
    /// What the list answers for a cell.
    std::string DisplayText(int column, std::uintptr_t itemData) const;

    void sortDescriptorsDidChange(int column, bool ascending);
    void selectionDidChange() override;
    void doubleClick() override;

private:
    std::vector<std::string> DisplayTexts(int column,
                                          const std::vector<std::uintptr_t>& rows) const;
    void Notify(UINT code);

    vm::ListTable& m_table;
};

namespace vm {

/// What all lists share. Main thread only.
struct ListState {
    int sortCol = 0;
    bool sortAscending = true;
    CWnd* sortWnd = nullptr;
    std::vector<std::uint32_t> SelectedRows; // of the iteration that runs
};
ListState& Lists();

} // namespace vm
