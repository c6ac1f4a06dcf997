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
    if (wnd && CWndListVerify(wnd)) return wnd->view ? wnd : nullptr;
    return GetControlReference(m_table.View());
}

// The wire is asked after this, by the same signal.
void LBTableViewDelegate::selectionDidChange() {
    const bool isDone = !userEdit || Notify(LBN_SELCHANGE);
    QTableView* view = m_table.View();
    if (view->property(vm::kReportsItselfProperty).toBool() != isDone)
        view->setProperty(vm::kReportsItselfProperty, isDone);
}

void LBTableViewDelegate::doubleClick() {
    if (userEdit && !Notify(LBN_DBLCLK)) NotifyAround(LBN_DBLCLK);
}

LPARAM LBTableViewDelegate::Handle() const {
    return reinterpret_cast<LPARAM>(m_table.View());
}

bool LBTableViewDelegate::Notify(int code) {
    CWnd* list = Object();
    CWnd* parent = list ? list->GetParent() : nullptr;
    if (!parent) return false;
    const vm::ResourceHandleScope resources(list->resourceBundle);
    parent->WindowProc(WM_COMMAND, MAKELONG(m_table.Tag(), code), Handle());
    return true;
}

void LBTableViewDelegate::NotifyAround(int code) {
    CWnd* const dialog = vm::ObjectAround(*m_table.View());
    if (dialog) dialog->WindowProc(WM_COMMAND, MAKELONG(m_table.Tag(), code), Handle());
}
