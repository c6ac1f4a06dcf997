#include "controls/LBTableViewDelegate.h"

#include <QtWidgets/QTableView>

#include <vmcore/controls/CListBox.h>

#include "app/appState.h"
#include "controls/listBoxTable.h"
#include "wnd/controlWiring.h"
#include "wnd/views.h"

LBTableViewDelegate* LBTableViewDelegate::Of(const QTableView* view) {
    vm::ListBoxTable* table = vm::ListBoxTable::Of(view);
    return table ? &table->Rows() : nullptr;
}

void LBTableViewDelegate::Insert(int row, const char* text) {
    strings.emplace(strings.begin() + row, text);
    data.insert(data.begin() + row, std::uintptr_t{0});
}

void LBTableViewDelegate::Remove(int row) {
    strings.erase(strings.begin() + row);
    data.erase(data.begin() + row);
}

void LBTableViewDelegate::Clear() {
    strings.clear();
    data.clear();
}

CWnd* LBTableViewDelegate::Object() const {
    if (CWndListVerify(wnd) && wnd->view == m_table.View()) return wnd;
    return GetControlReference(m_table.View());
}

// The wire is asked after this, by the same signal, and also when the handler throws.
void LBTableViewDelegate::selectionDidChange() {
    CWnd* const list = Object();
    const bool isDone = !userEdit || (list && list->GetParent());
    QTableView* view = m_table.View();
    if (view->property(vm::kReportsItselfProperty).toBool() != isDone)
        view->setProperty(vm::kReportsItselfProperty, isDone);
    if (userEdit && isDone) Notify(*list, LBN_SELCHANGE);
}

void LBTableViewDelegate::doubleClick() {
    if (!userEdit) return;
    CWnd* const list = Object();
    if (list && list->GetParent())
        Notify(*list, LBN_DBLCLK);
    else
        NotifyAround(LBN_DBLCLK);
}

LPARAM LBTableViewDelegate::Handle() const {
    return reinterpret_cast<LPARAM>(m_table.View());
}

void LBTableViewDelegate::Notify(CWnd& list, int code) {
    const vm::ResourceHandleScope resources(list.resourceBundle);
    list.GetParent()->WindowProc(WM_COMMAND, MAKELONG(m_table.Tag(), code), Handle());
}

void LBTableViewDelegate::NotifyAround(int code) {
    CWnd* const dialog = vm::ObjectAround(*m_table.View());
    if (dialog) dialog->WindowProc(WM_COMMAND, MAKELONG(m_table.Tag(), code), Handle());
}
