#include "controls/listBoxMessages.h"

#include <QtWidgets/QTableView>

#include "controls/listBoxTable.h"

namespace vm {
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
    if (!ListBoxTable::Of(&view)) return LB_ERR;
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
        return box->GetTextLen(index);
    case LB_FINDSTRING:
        return box->FindString(index, text);
    case LB_SELECTSTRING:
        return box->SelectString(index, text);
    default:
        return LB_ERR;
    }
}

} // namespace vm
