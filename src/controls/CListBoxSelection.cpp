// The selection of a list box.
#include <vmcore/controls/CListBox.h>

#include <algorithm>

#include "controls/listBoxEdit.h"
#include "controls/listBoxTable.h"

namespace {
constexpr int kAllRows = -1;
}

int CListBox::GetCurSel() const {
    LBTableViewDelegate* rows = Rows();
    return rows ? rows->Table().SelectedRow() : LB_ERR;
}

int CListBox::SetCurSel(int index) {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    const vm::ListBoxEdit edit(*rows);
    rows->Table().SelectOnly(index);
    return index;
}

int CListBox::GetSel(int index) const {
    LBTableViewDelegate* rows = Rows();
    return rows ? rows->Table().IsRowSelected(index) : LB_ERR;
}

int CListBox::SetSel(int index, BOOL select) {
    LBTableViewDelegate* rows = Rows();
    if (!rows || index >= rows->Count()) return LB_ERR;
    const vm::ListBoxEdit edit(*rows);
    const int first = index == kAllRows ? 0 : index;
    const int last = index == kAllRows ? rows->Count() - 1 : index;
    rows->Table().SelectRows(first, last, select != 0);
    return index;
}

int CListBox::GetSelCount() const {
    LBTableViewDelegate* rows = Rows();
    return rows ? rows->Table().SelectedCount() : LB_ERR;
}

int CListBox::GetSelItems(int most, int* out) const {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    int written = 0;
    for (const auto& [first, last] : rows->Table().SelectedRanges())
        for (int row = first; row <= last && written < most; ++row) out[written++] = row;
    return written;
}

int CListBox::SelItemRange(BOOL select, int, int last) {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    const vm::ListBoxEdit edit(*rows);
    rows->Table().SelectRows(0, std::min(last, rows->Count() - 1), select != 0);
    return 0;
}

int CListBox::SelectString(int start, const char* wanted) {
    const LBTableViewDelegate* rows = Rows();
    if (!rows || !wanted || style & LBS_MULTIPLESEL || start >= rows->Count()) return LB_ERR;
    for (int row = std::max(start, -1) + 1; row < rows->Count(); ++row) {
        if (rows->strings[static_cast<std::size_t>(row)] != wanted) continue;
        SetSel(row, TRUE);
        break;
    }
    return LB_ERR;
}

int CListBox::GetTopIndex() const {
    return GetCurSel();
}

int CListBox::SetTopIndex(int index) {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    rows->Table().ScrollToRow(index);
    return index;
}

void CListBox::SetMultiSelect(BOOL multiple) {
    if (LBTableViewDelegate* rows = Rows()) rows->Table().SetMultiSelect(multiple != 0);
}
