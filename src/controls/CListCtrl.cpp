#include <vmcore/controls/CListCtrl.h>

#include <algorithm>
#include <cstring>

#include <QtWidgets/QTableView>

#include "controls/LCTableViewDelegate.h"
#include "controls/RowView.h"
#include "controls/listTable.h"
#include "core/macroman.h"
#include "wnd/nativeControl.h"
#include "wnd/views.h"

namespace {

QString Heading(const char* text) {
    return vm::FromMacRoman(text ? text : "");
}

// Inserts before `index`, or appends.
template <class Values, class T>
void InsertAt(Values& values, std::size_t index, T value) {
    const std::size_t place = std::min(index, values.size());
    values.insert(values.begin() + static_cast<std::ptrdiff_t>(place), std::move(value));
}

template <class Values>
void RemoveAt(Values& values, std::size_t index) {
    if (index < values.size()) values.erase(values.begin() + static_cast<std::ptrdiff_t>(index));
}

template <class Values>
typename Values::value_type ValueAt(const Values& values, int index) {
    const auto place = static_cast<std::size_t>(index);
    return index >= 0 && place < values.size() ? values[place] : typename Values::value_type{};
}

// What a record says about a row; what it does not say is empty or 0.
struct RowValues {
    explicit RowValues(const LVITEM& item)
        : text(item.mask & LVIF_TEXT ? item.pszText : nullptr),
          image(item.mask & LVIF_IMAGE ? static_cast<std::uint32_t>(item.iImage) : 0),
          data(item.mask & LVIF_PARAM ? item.lParam : 0) {}

    vm::RowText text;
    std::uint32_t image;
    std::uintptr_t data;
};

int TextCount(const LCTableViewDelegate& rows) {
    return static_cast<int>(rows.strings.size());
}

int AppendRow(LCTableViewDelegate& rows, RowValues& values) {
    rows.strings.push_back(std::move(values.text));
    rows.images.push_back(values.image);
    rows.data.push_back(values.data);
    return TextCount(rows) - 1;
}

// Without a text bit no text is added: `strings` is one shorter than `data` from then on.
void InsertRowBefore(LCTableViewDelegate& rows, const LVITEM& item, RowValues& values) {
    const auto index = static_cast<std::size_t>(item.iItem);
    InsertAt(rows.data, index, values.data);
    InsertAt(rows.images, index, values.image);
    if (item.mask & LVIF_TEXT) InsertAt(rows.strings, index, std::move(values.text));
}

} // namespace

CListCtrl::CListCtrl() : tableView(nullptr), needsReload(0) {}

LCTableViewDelegate* CListCtrl::Rows() const {
    return view && view == tableView && vm::IsLiveView(view) ? LCTableViewDelegate::Of(tableView)
                                                             : nullptr;
}

BOOL CListCtrl::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    auto* table = new vm::RowView;
    auto* rows = new vm::ListTable(table);
    rows->Rows().wnd = this;
    if (createStyle & LVS_SINGLESEL) rows->SetMultiSelect(false);
    if (!vm::AdoptControl(*this, table, parent, rect, createStyle, id)) return FALSE;
    tableView = table;
    return TRUE;
}

void CListCtrl::Refresh() {
    LCTableViewDelegate* rows = Rows();
    if (!redrawEnabled)
        needsReload = 1;
    else if (rows)
        rows->Table().ReloadData();
}

int CListCtrl::InsertColumn(int column, const char* heading, int, int width, int) {
    LCTableViewDelegate* rows = Rows();
    return rows ? rows->Table().AppendColumn(column, Heading(heading), width) : -1;
}

int CListCtrl::InsertColumn(int column, const LVCOLUMN* record) {
    return InsertColumn(column, record->pszText, record->fmt, record->cx, record->iSubItem);
}

BOOL CListCtrl::DeleteColumn(int column) {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return FALSE;
    const vm::ProgramEdit edit(*rows);
    rows->Table().RemoveColumn(column);
    return TRUE;
}

int CListCtrl::GetColumnWidth(int column) const {
    LCTableViewDelegate* rows = Rows();
    return rows ? rows->Table().ColumnWidth(column) : -1;
}

BOOL CListCtrl::SetColumnWidth(int column, int width) {
    LCTableViewDelegate* rows = Rows();
    return rows && rows->Table().SetColumnWidth(column, width);
}

void CListCtrl::SortAgain() {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return;
    const vm::ProgramEdit edit(*rows);
    rows->Table().SortAgain();
}

int CListCtrl::InsertItem(const LVITEM* item) {
    if (!view || !tableView) return 0;
    LCTableViewDelegate* rows = Rows();
    if (!rows) return -1;
    const vm::ProgramEdit edit(*rows);
    const bool appends = item->iItem < 0 || TextCount(*rows) <= item->iItem;
    RowValues values(*item);
    if (!appends) InsertRowBefore(*rows, *item, values);
    const int row = appends ? AppendRow(*rows, values) : item->iItem;
    Refresh();
    return row;
}

int CListCtrl::InsertItem(int row, const char* itemText) {
    return InsertItem(LVIF_TEXT, row, itemText, 0, 0, 0, 0);
}

int CListCtrl::InsertItem(int row, const char* itemText, int image) {
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, row, itemText, 0, 0, image, 0);
}

int CListCtrl::InsertItem(UINT mask, int row, const char* itemText, UINT state, UINT stateMask,
                          int image, LPARAM lParam) {
    std::string copy = itemText ? itemText : "";
    const LVITEM item{mask, row, 0, state, stateMask, copy.data(), 0, image, lParam};
    return InsertItem(&item);
}

BOOL CListCtrl::DeleteItem(int row) {
    LCTableViewDelegate* rows = Rows();
    if (!rows || row < 0 || row >= TextCount(*rows)) return FALSE;
    const vm::ProgramEdit edit(*rows);
    const auto index = static_cast<std::size_t>(row);
    RemoveAt(rows->strings, index);
    RemoveAt(rows->data, index);
    RemoveAt(rows->images, index);
    Refresh();
    return static_cast<BOOL>(row);
}

BOOL CListCtrl::DeleteAllItems() {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return FALSE;
    const vm::ProgramEdit edit(*rows);
    rows->strings.clear();
    rows->data.clear();
    rows->images.clear();
    Refresh();
    return TRUE;
}

int CListCtrl::GetItemCount() const {
    if (!view || !tableView) return 0;
    const LCTableViewDelegate* rows = Rows();
    return rows ? TextCount(*rows) : -1;
}

BOOL CListCtrl::GetItem(LVITEM* item) const {
    const LCTableViewDelegate* rows = Rows();
    if (!rows || item->iItem < 0 || item->iItem >= TextCount(*rows)) return FALSE;
    if (item->mask & LVIF_PARAM) item->lParam = ValueAt(rows->data, item->iItem);
    if (item->mask & LVIF_IMAGE)
        item->iImage = static_cast<int>(ValueAt(rows->images, item->iItem));
    if (item->mask & LVIF_TEXT && item->pszText)
        std::strcpy(item->pszText, rows->strings[static_cast<std::size_t>(item->iItem)].Get());
    return TRUE;
}

std::uintptr_t CListCtrl::GetItemData(int row) const {
    const LCTableViewDelegate* rows = Rows();
    return rows ? ValueAt(rows->data, row) : 0;
}

BOOL CListCtrl::SetItemData(int row, std::uintptr_t data) {
    LCTableViewDelegate* rows = Rows();
    if (!rows || row < 0 || row >= rows->Count()) return FALSE;
    const vm::ProgramEdit edit(*rows);
    rows->data[static_cast<std::size_t>(row)] = data;
    Refresh();
    return TRUE;
}

// The handler that answers may destroy the list.
CString CListCtrl::GetItemText(int row, int subItem) const {
    const LCTableViewDelegate* rows = Rows();
    if (!rows || row < 0 || row >= rows->Count()) return {};
    return rows->DisplayText(subItem, ValueAt(rows->data, row)).c_str();
}

int CListCtrl::GetItemText(int row, int subItem, char* buffer, int size) const {
    if (!buffer || size <= 0) return 0;
    const CString shown = GetItemText(row, subItem);
    const int length = std::min(static_cast<int>(shown.GetLength()), size - 1);
    std::memcpy(buffer, static_cast<const char*>(shown), static_cast<std::size_t>(length));
    buffer[length] = '\0';
    return length;
}

BOOL CListCtrl::SetItemText(int row, int, const char* itemText) {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return FALSE;
    if (!itemText || row < 0 || row >= TextCount(*rows)) return TRUE;
    const vm::ProgramEdit edit(*rows);
    rows->strings[static_cast<std::size_t>(row)] = vm::RowText(itemText);
    rows->Table().ReloadData();
    return TRUE;
}

BOOL CListCtrl::RedrawItems(int first, int last) {
    LCTableViewDelegate* rows = Rows();
    if (!rows || last < first) return FALSE;
    rows->Table().ReloadRows(first, last);
    return TRUE;
}

BOOL CListCtrl::EnsureVisible(int row, BOOL) {
    LCTableViewDelegate* rows = Rows();
    if (!rows) return FALSE;
    rows->Table().ScrollToRow(row);
    return TRUE;
}

void CListCtrl::SetRedraw(BOOL redraw) {
    CWnd::SetRedraw(redraw);
    if (redraw) ReloadData();
}

void CListCtrl::Invalidate(BOOL erase) {
    ReloadData();
    CWnd::Invalidate(erase);
    if (Rows()) tableView->viewport()->update();
}

CWnd* CListCtrl::SetFocus() {
    return tableView ? CWnd::SetFocus() : nullptr;
}

// The selection belongs to row numbers and survives the reload.
void CListCtrl::ReloadData() {
    LCTableViewDelegate* rows = Rows();
    if (!redrawEnabled || !rows) return;
    const vm::ProgramEdit edit(*rows);
    needsReload = 0;
    rows->Table().ReloadData();
}
