#include "controls/LCTableViewDelegate.h"

#include <algorithm>
#include <cstring>

#include <QtWidgets/QTableView>

#include <vmcore/controls/CListCtrl.h>

#include "app/appState.h"
#include "controls/listSort.h"
#include "controls/listTable.h"

BYTE calledDoubleClick = 0;

namespace vm {
ListState& Lists() {
    static auto* const s_state = new ListState;
    return *s_state;
}

} // namespace vm

LCTableViewDelegate* LCTableViewDelegate::Of(const QTableView* view) {
    vm::ListTable* table = vm::ListTable::Of(view);
    return table ? &table->Rows() : nullptr;
}

CWnd* LCTableViewDelegate::Object() const {
    if (CWndListVerify(wnd) && wnd->view == m_table.View()) return wnd;
    return GetControlReference(m_table.View());
}

std::string LCTableViewDelegate::DisplayText(int column, std::uintptr_t itemData) const {
    CWnd* list = Object();
    if (!list) return {};
    LV_DISPTEXT record{};
    record.column = column;
    record.itemData = itemData;
    list->WindowProc(WM_GETDISPLAYTEXT, 0, reinterpret_cast<LPARAM>(&record));
    return {record.text, strnlen(record.text, sizeof record.text)};
}

std::vector<std::string>
LCTableViewDelegate::DisplayTexts(int column, const std::vector<std::uintptr_t>& rows) const {
    std::vector<std::string> texts;
    texts.reserve(rows.size());
    for (std::uintptr_t itemData : rows) texts.push_back(DisplayText(column, itemData));
    return texts;
}

// The texts are asked for on a copy: the host may change the list while it answers, and then the rows
// stay where they are.
void LCTableViewDelegate::sortDescriptorsDidChange(int column, bool ascending) {
    if (column < 0) return;
    vm::Lists().sortCol = column;
    vm::Lists().sortAscending = ascending;
    vm::Lists().sortWnd = Object();
    const std::vector<std::uintptr_t> before(data.begin(), data.end());
    if (before.size() > 1) {
        const auto sorted = vm::SortedByText(before, DisplayTexts(column, before), ascending);
        if (std::equal(data.begin(), data.end(), before.begin(), before.end()))
            std::copy(sorted.begin(), sorted.end(), data.begin());
    }
    m_table.ReloadData();
}

void LCTableViewDelegate::selectionDidChange() {
    if (userEdit) Notify(LVN_ITEMCHANGED);
}

void LCTableViewDelegate::doubleClick() {
    calledDoubleClick = 1;
    if (userEdit) Notify(NM_DBLCLK);
}

void LCTableViewDelegate::Notify(UINT code) {
    CWnd* list = Object();
    CWnd* parent = list ? list->GetParent() : nullptr;
    if (!parent) return;
    const int row = m_table.SelectedRow();
    NMLISTVIEW record{};
    record.hdr.hwndFrom = list->view;
    record.hdr.idFrom = static_cast<UINT>(m_table.Tag());
    record.hdr.code = code;
    record.iItem = row;
    const auto index = static_cast<std::size_t>(row);
    record.lParam = row >= 0 && index < data.size() ? data[index] : 0;
    const vm::ResourceHandleScope resources(list->resourceBundle);
    parent->WindowProc(WM_NOTIFY, record.hdr.idFrom, reinterpret_cast<LPARAM>(&record));
}
