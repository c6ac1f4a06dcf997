#include <vmcore/controls/CListBox.h>

#include <strings.h>

#include <algorithm>
#include <cstring>

#include <QtWidgets/QTableView>

#include <vmcore/core/strings.h>

#include "controls/listBoxEdit.h"
#include "controls/listBoxTable.h"
#include "controls/rowPlaces.h"
#include "core/guard.h"
#include "platform/messagebox.h"
#include "wnd/nativeControl.h"
#include "wnd/rects.h"
#include "wnd/views.h"

namespace {

constexpr UINT kBoxStyle = 1; // OK and Cancel

void Check(bool isThere) {
    if (!isThere) throw vm::PlatformError("NoSuchRow");
}

// The text of a row, or null.
const std::string* TextAt(const LBTableViewDelegate* rows, int index) {
    return rows && rows->Has(index) ? &rows->strings[static_cast<std::size_t>(index)] : nullptr;
}

} // namespace

CListBox::CListBox() : m_reserved4(0), tableView(nullptr) {
    redrawEnabled = TRUE;
    style = LBS_HASSTRINGS;
}

LBTableViewDelegate* CListBox::Rows() const {
    return view && view == tableView && vm::IsLiveView(view) ? LBTableViewDelegate::Of(tableView)
                                                             : nullptr;
}

BOOL CListBox::Create(DWORD createStyle, const RECT& rect, CWnd* parent, UINT id) {
    QTableView* table = vm::MakeListBoxView();
    vm::ListBoxTable& model = *vm::ListBoxTable::Of(table);
    model.SetMultiSelect((createStyle & LBS_MULTIPLESEL) != 0);
    model.Rows().wnd = this;
    const DWORD withStrings = createStyle | (style & LBS_HASSTRINGS);
    if (!vm::AdoptControl(*this, table, parent, rect, withStrings, id)) return FALSE;
    tableView = table;
    return TRUE;
}

int CListBox::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_SIZE) return CWnd::MessageMap(message, wParam, lParam);
    OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
    return 1;
}

void CListBox::Refresh(LBTableViewDelegate& rows) {
    rows.Table().NoteNumberOfRowsChanged();
    ReloadData();
}

const char* CListBox::Stored(const char* itemText) const {
    return itemText && style & LBS_HASSTRINGS ? itemText : "";
}

int CListBox::AddString(const char* itemText) {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    const vm::ListBoxEdit edit(*rows);
    rows->Insert(rows->Count(), Stored(itemText));
    Refresh(*rows);
    return rows->Count() - 1;
}

int CListBox::InsertString(int index, const char* itemText) {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    return vm::Guarded(vm::LogModule::Controls, "CListBox::InsertString()", LB_ERR, [&] {
        const vm::ListBoxEdit edit(*rows);
        Check(index == rows->Count() || rows->Has(index));
        rows->Insert(index, Stored(itemText));
        Refresh(*rows);
        return index;
    });
}

int CListBox::DeleteString(int index) {
    LBTableViewDelegate* rows = Rows();
    if (!rows || index > rows->Count()) return LB_ERR;
    return vm::Guarded(vm::LogModule::Controls, "CListBox::DeleteString()", LB_ERR, [&] {
        const vm::ListBoxEdit edit(*rows);
        Check(rows->Has(index));
        rows->Remove(index);
        Refresh(*rows);
        return index;
    });
}

void CListBox::ResetContent() {
    LBTableViewDelegate* rows = Rows();
    if (!rows) return;
    const vm::ListBoxEdit edit(*rows);
    rows->Clear();
    Refresh(*rows);
}

int CListBox::GetCount() const {
    const LBTableViewDelegate* rows = Rows();
    return rows ? rows->Count() : LB_ERR;
}

int CListBox::GetText(int index, char* buffer) const {
    const std::string* const found = TextAt(Rows(), index);
    if (buffer) std::strcpy(buffer, found ? found->c_str() : "");
    return found ? static_cast<int>(found->size()) : LB_ERR;
}

int CListBox::GetText(int index, CString& result) const {
    const std::string* const found = TextAt(Rows(), index);
    result = found ? found->c_str() : "";
    return found ? static_cast<int>(found->size()) : LB_ERR;
}

int CListBox::GetTextLen(int index) const {
    return GetText(index, static_cast<char*>(nullptr));
}

DWORD_PTR CListBox::GetItemData(int index) const {
    const LBTableViewDelegate* rows = Rows();
    return rows && rows->Has(index) ? rows->data[static_cast<std::size_t>(index)] : 0;
}

int CListBox::SetItemData(int index, DWORD_PTR data) {
    LBTableViewDelegate* rows = Rows();
    if (!rows || !rows->Has(index)) return 0;
    rows->data[static_cast<std::size_t>(index)] = data;
    return 1;
}

int CListBox::FindStringExact(int start, const char* wanted) const {
    const LBTableViewDelegate* rows = Rows();
    if (!rows || start < -1) return LB_ERR;
    const auto matches = [&](int row) {
        return macstricmp(TextAt(rows, row)->c_str(), wanted ? wanted : "") == 0;
    };
    const int count = rows->Count();
    const int before = std::min(start, count);
    for (int row = before + 1; row < count; ++row)
        if (matches(row)) return row;
    for (int row = 0; row < before; ++row)
        if (matches(row)) return row;
    return LB_ERR;
}

int CListBox::FindString(int start, const char* wanted) const {
    const LBTableViewDelegate* rows = Rows();
    if (!rows) return LB_ERR;
    const char* const prefix = wanted ? wanted : "";
    const std::size_t length = std::strlen(prefix);
    const int count = rows->Count();
    const int first = rows->Has(start) ? start + 1 : 0;
    for (int i = 0; i < count; ++i) {
        const int row = (first + i) % count;
        if (strncasecmp(TextAt(rows, row)->c_str(), prefix, length) == 0) return row;
    }
    return LB_ERR;
}

int CListBox::GetItemRect(int index, RECT* rect) const {
    const LBTableViewDelegate* rows = Rows();
    const QRect place = rows ? vm::RowRect(rows->Table(), index) : QRect();
    if (!rect || place.isNull()) return LB_ERR;
    *rect = vm::RectOf(place);
    return 0;
}

int CListBox::SetItemHeight(int, UINT) {
    return Rows() ? 1 : LB_ERR;
}

int CListBox::Dir(UINT, const char*) {
    return LB_ERR;
}

void CListBox::SetTabStops() {
    if (view && tableView)
        vm::ShowMessageBox(nullptr, "CListBox::SetTabStops( ) not implemented", "CListBox error",
                           kBoxStyle);
}

BOOL CListBox::SetTabStops(const int&) {
    vm::ShowMessageBox(nullptr, "CListBox::SetTabStops( const int& cxEachStop ) not implemented",
                       "CListBox error", kBoxStyle);
    return FALSE;
}

BOOL CListBox::SetTabStops(int count, const int* stops) {
    if (!view || !tableView || !stops) return FALSE;
    for (int i = 0; i < count; ++i) tabStops.Add(static_cast<DWORD>(stops[2 * i]));
    return TRUE;
}

void CListBox::SetRedraw(BOOL redraw) {
    CWnd::SetRedraw(redraw);
    if (redraw) ReloadData();
}

void CListBox::SetUserEdit(BOOL userEdit) {
    if (LBTableViewDelegate* rows = Rows()) rows->userEdit = userEdit != 0;
}

void CListBox::ReloadData() {
    LBTableViewDelegate* rows = Rows();
    if (redrawEnabled && rows) rows->Table().ReloadData();
}
