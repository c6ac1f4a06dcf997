// The row store of a list and what it does when asked: the cells' texts come from the list's own
// window object, and what the user does goes to the list's parent.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <vmcore/core/types.h>

class CListCtrl;
class CWnd;
class QTableView;

namespace vm {
class ListTable;
}

/// The delegate and data source of a list's table view; part of its ListTable.
class LCTableViewDelegate {
public:
    explicit LCTableViewDelegate(vm::ListTable& table) : m_table(table) {}
    LCTableViewDelegate(const LCTableViewDelegate&) = delete;
    LCTableViewDelegate& operator=(const LCTableViewDelegate&) = delete;
    /// The delegate of a table view; null when it is no list's.
    static LCTableViewDelegate* Of(const QTableView* view);

    CListCtrl* wnd = nullptr;         ///< the list that it serves
    std::vector<std::string> strings; ///< the rows' own texts
    std::vector<std::uintptr_t> data; ///< item data: as many as the table shows rows
    std::vector<std::uint32_t> images;
    bool userEdit = true; ///< notifications are sent only while it is set

    vm::ListTable& Table() const { return m_table; }
    /// The list: `wnd`, else the object that the table view is registered for; null for neither.
    CWnd* List() const;
    /// What the list answers for a cell.
    std::string DisplayText(int column, std::uintptr_t itemData) const;

    void sortDescriptorsDidChange(int column, bool ascending);
    void selectionDidChange();
    void doubleClick();

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

/// Holds notifications back while the program changes a list.
class ProgramEdit {
public:
    explicit ProgramEdit(LCTableViewDelegate& rows)
        : m_rows(rows), m_before(std::exchange(rows.userEdit, false)) {}
    ~ProgramEdit() { m_rows.userEdit = m_before; }
    ProgramEdit(const ProgramEdit&) = delete;
    ProgramEdit& operator=(const ProgramEdit&) = delete;

private:
    LCTableViewDelegate& m_rows;
    bool m_before;
};

} // namespace vm
