#include "controls/listBoxMessages.h"

#include <strings.h>

#include <cstring>

#include <QtWidgets/QTableView>

#include "controls/listBoxTable.h"

namespace vm {
namespace {

// The first row behind `after`, at the end on from the top, that begins with `prefix`.
int FindPrefix(const LBTableViewDelegate& rows, int after, const char* prefix) {
    const int count = rows.Count();
    const int start = rows.Has(after) ? after + 1 : 0;
    const std::size_t length = std::strlen(prefix);
    for (int i = 0; i < count; ++i) {
        const int row = (start + i) % count;
        const std::string& text = rows.strings[static_cast<std::size_t>(row)];
        if (strncasecmp(text.c_str(), prefix, length) == 0) return row;
    }
    return LB_ERR;
}

} // namespace

// Not attached, which would bind the view anew.
TransientListBox::TransientListBox(QWidget& view) {
    m_box.view = &view;
    m_box.tableView = qobject_cast<QTableView*>(&view);
    const CWnd* bound = GetControlReference(&view);
    if (bound) m_box.style = bound->style;
}

TransientListBox::~TransientListBox() {
    m_box.view = nullptr;
}

LRESULT SendToListBox(QWidget& view, UINT message, WPARAM wParam, LPARAM lParam) {
    ListBoxTable* table = ListBoxTable::Of(&view);
    if (!table) return LB_ERR;
    TransientListBox box(view);
    const int index = static_cast<int>(wParam);
    auto* text = reinterpret_cast<char*>(lParam);
    switch (message) {
    case LB_ADDSTRING:
        return box->AddString(text);
    case LB_INSERTSTRING:
        return box->InsertString(index, text);
    case LB_DELETESTRING:
        return box->DeleteString(index);
    case LB_RESETCONTENT:
        return box->ResetContent(), 0;
    case LB_GETCOUNT:
        return box->GetCount();
    case LB_GETCURSEL:
        return box->GetCurSel();
    case LB_SETCURSEL:
        return box->SetCurSel(index);
    case LB_GETTEXT:
        return box->GetText(index, text);
    case LB_GETTEXTLEN:
        return box->GetText(index, static_cast<char*>(nullptr));
    case LB_FINDSTRING:
        return FindPrefix(table->Rows(), index, text ? text : "");
    case LB_SELECTSTRING:
        return box->SelectString(index, text);
    default:
        return LB_ERR;
    }
}

} // namespace vm
