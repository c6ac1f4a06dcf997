// The selection of a list.
#include <vmcore/controls/CListCtrl.h>

#include <iterator>

#include <QtWidgets/QTableView>

#include "controls/LCTableViewDelegate.h"
#include "controls/listTable.h"
#include "platform/messagebox.h"

namespace {

constexpr int kAllRows = -1;

// The first selected row from `row` on, or -1.
int SelectedFrom(const std::map<int, int>& ranges, int row) {
    auto range = ranges.upper_bound(row);
    if (range != ranges.begin() && std::prev(range)->second >= row) return row;
    return range == ranges.end() ? -1 : range->first;
}

} // namespace

BOOL CListCtrl::SetItemState(int row, UINT state, UINT mask) {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return FALSE;
    if (!(mask & LVIS_SELECTED)) return TRUE;
    const vm::ProgramEdit edit(*rows);
    vm::ListTable& table = rows->Table();
    table.NoteNumberOfRowsChanged(); // rows inserted while redrawing is off can be selected, too
    const int first = row == kAllRows ? 0 : row;
    const int last = row == kAllRows ? table.rowCount() - 1 : row;
    table.SelectRows(first, last, (state & LVIS_SELECTED) != 0);
    return TRUE;
}

BOOL CListCtrl::SetItemState(int, const LVITEM*) {
    if (!Rows()) return FALSE;
    vm::ShowMessageBox(nullptr, "Not Implemented, are we using it?", "VMCore", 1);
    return TRUE;
}

UINT CListCtrl::GetItemState(int row, UINT) const {
    const LCTableViewDelegate* rows = Rows();
    const bool isSelected = rows && rows->Table().IsRowSelected(row);
    return isSelected ? UINT{LVIS_SELECTED} : 0;
}

UINT CListCtrl::GetSelectedCount() const {
    const LCTableViewDelegate* rows = Rows();
    return rows ? static_cast<UINT>(rows->Table().SelectedCount()) : 0;
}

POSITION CListCtrl::GetFirstSelectedItemPosition() const {
    std::vector<std::uint32_t>& selected = vm::Lists().SelectedRows;
    selected.clear();
    const LCTableViewDelegate* rows = Rows();
    if (!rows) return 0;
    for (const auto& [first, last] : rows->Table().SelectedRanges())
        for (int row = first; row <= last; ++row)
            selected.push_back(static_cast<std::uint32_t>(row));
    return selected.empty() ? 0 : 1;
}

int CListCtrl::GetNextSelectedItem(POSITION& position) const {
    const std::vector<std::uint32_t>& selected = vm::Lists().SelectedRows;
    if (!Rows() || position == 0 || position > selected.size()) return -1;
    const auto row = static_cast<int>(selected[position - 1]);
    position = position == selected.size() ? 0 : position + 1;
    return row;
}

int CListCtrl::GetNextItem(int row, UINT flags) const {
    const LCTableViewDelegate* rows = Rows();
    if (!rows || row < -1 || row >= rows->Count()) return -1;
    const int next = row + 1;
    if (flags & LVNI_SELECTED) return SelectedFrom(rows->Table().SelectedRanges(), next);
    return next < rows->Count() ? next : -1;
}
