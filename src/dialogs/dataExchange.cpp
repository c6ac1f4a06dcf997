#include <vmcore/dialogs/dataExchange.h>

#include <cstdlib>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QTableView>

#include <vmcore/app/messages.h>
#include <vmcore/controls/CListBox.h>
#include <vmcore/controls/CListCtrl.h>
#include <vmcore/controls/CTreeCtrl.h>
#include <vmcore/wnd/CWnd.h>

#include "controls/TCOutlineViewDataSource.h"
#include "controls/listBoxMessages.h"
#include "controls/listBoxTable.h"
#include "controls/listTable.h"
#include "controls/outlineView.h"
#include "controls/treeItems.h"
#include "core/log.h"
#include "wnd/CWndNSView.h"
#include "wnd/controlText.h"
#include "wnd/radioButtons.h"
#include "wnd/views.h"

namespace {

constexpr int kLongestNumber = 255;

// The live view of an item, or null.
QWidget* ItemView(const CDataExchange* exchange, int id) {
    HWND view = exchange ? exchange->PrepareCtrl(id) : nullptr;
    return vm::IsLiveView(view) ? view : nullptr;
}

template <class Integer>
void ExchangeInteger(const CDataExchange* exchange, int id, Integer& value, int offset = 0) {
    QWidget* view = ItemView(exchange, id);
    if (!view) return;
    if (exchange->m_bSaveAndValidate)
        value = static_cast<Integer>(vm::ControlInteger(*view) - offset);
    else
        vm::SetControlInteger(*view, value + offset);
}

// A number as the control's text.
template <class Number, class Parse>
void ExchangeNumber(const CDataExchange* exchange, int id, Number& value,
                    const std::string& written, Parse parse) {
    if (!ItemView(exchange, id)) return;
    if (!exchange->m_bSaveAndValidate)
        return exchange->m_pDlgWnd->SetDlgItemText(id, written.c_str());
    char text[kLongestNumber + 1] = "";
    exchange->m_pDlgWnd->GetDlgItemText(id, text, sizeof text);
    value = static_cast<Number>(parse(text));
}

// A table view that nobody has made one yet becomes the list's or list box's.
template <class Table, class Control>
void BindRows(Control& control, QTableView& view) {
    control.tableView = &view;
    if (!view.model()) new Table(&view);
    if (Table* rows = Table::Of(&view))
        rows->Rows().wnd = &control;
    else
        vm::Log(vm::LogModule::Dialogs, "DDX_Control: the rows of table %d are of another control",
                control.GetDlgCtrlID());
}

void BindTable(CWnd& control, QWidget& view) {
    auto* table = qobject_cast<QTableView*>(&view);
    if (!table) return;
    if (auto* list = dynamic_cast<CListCtrl*>(&control)) BindRows<vm::ListTable>(*list, *table);
    if (auto* box = dynamic_cast<CListBox*>(&control)) BindRows<vm::ListBoxTable>(*box, *table);
}

void BindTree(CWnd& control, QWidget& view) {
    auto* tree = dynamic_cast<CTreeCtrl*>(&control);
    auto* outline = dynamic_cast<vm::OutlineView*>(&view);
    if (!tree || !outline) return;
    tree->tableView = outline;
    if (!outline->model()) new TCOutlineViewDataSource(outline);
    if (auto* items = TCOutlineViewDataSource::Of(outline)) vm::ServeTree(*items, *tree);
}

} // namespace

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

HWND CDataExchange::PrepareCtrl(int nIDC) const {
    const CWnd* item = m_pDlgWnd ? m_pDlgWnd->GetDlgItem(nIDC) : nullptr;
    return item ? item->view : nullptr;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) const {
    return PrepareCtrl(nIDC);
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (!pDX || !pDX->m_pDlgWnd || pDX->m_bSaveAndValidate) return;
    QWidget* view = ItemView(pDX, nIDC);
    if (!view || GetControlReference(view) != &rControl) RemoveControlReference(&rControl);
    rControl.view = view;
    if (!view) return;
    rControl.parentWnd = pDX->m_pDlgWnd;
    if (GetControlReference(view) != &rControl) SetControlReference(view, &rControl);
    if (auto* own = dynamic_cast<CWndView*>(view)) own->wnd = &rControl;
    BindTable(rControl, *view);
    BindTree(rControl, *view);
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    ExchangeInteger(pDX, nIDC, value);
}
void DDX_Check(CDataExchange* pDX, int nIDC, BOOL& value) {
    ExchangeInteger(pDX, nIDC, value);
}

void DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    const auto* first = qobject_cast<QAbstractButton*>(ItemView(pDX, nIDC));
    const auto buttons = first ? vm::RadioButtonsFrom(*first) : QList<QAbstractButton*>();
    if (buttons.isEmpty()) return;
    if (pDX->m_bSaveAndValidate)
        value = vm::IndexOfChecked(buttons);
    else
        vm::CheckOnly(buttons, buttons.value(value));
}

void DDX_Slider(CDataExchange* pDX, int nIDC, int& value) {
    ExchangeInteger(pDX, nIDC, value);
}
void DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index) {
    ExchangeInteger(pDX, nIDC, index, 1);
}

void DDX_Text(CDataExchange* pDX, int nIDC, BYTE& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%d", value), std::atoi);
}
void DDX_Text(CDataExchange* pDX, int nIDC, SHORT& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%d", value), std::atoi);
}
void DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%d", value), std::atoi);
}
void DDX_Text(CDataExchange* pDX, int nIDC, UINT& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%u", value), std::atoi);
}
void DDX_Text(CDataExchange* pDX, int nIDC, long& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%ld", value), std::atol);
}
void DDX_Text(CDataExchange* pDX, int nIDC, float& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%f", static_cast<double>(value)), std::atof);
}
void DDX_Text(CDataExchange* pDX, int nIDC, double& value) {
    ExchangeNumber(pDX, nIDC, value, vm::Format("%f", value), std::atof);
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    if (!ItemView(pDX, nIDC)) return;
    CWnd* item = pDX->m_pDlgWnd->GetDlgItem(nIDC);
    if (pDX->m_bSaveAndValidate)
        item->GetWindowText(value);
    else
        item->SetWindowText(value);
}

void DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index) {
    QWidget* view = ItemView(pDX, nIDC);
    if (!view) return;
    vm::TransientListBox box(*view);
    if (pDX->m_bSaveAndValidate)
        index = box->GetCurSel();
    else
        box->SetCurSel(index);
}

void DDX_LBString(CDataExchange* pDX, int nIDC, CString& value) {
    QWidget* view = ItemView(pDX, nIDC);
    if (!view) return;
    vm::TransientListBox box(*view);
    if (pDX->m_bSaveAndValidate)
        box->GetText(box->GetCurSel(), value);
    else
        box->SelectString(-1, value);
}

void DDV_MaxChars(CDataExchange*, const CString&, int) {}

void DDV_MinMaxInt(CDataExchange*, int value, int minVal, int maxVal) {
    if (minVal <= value && value <= maxVal) return;
    const std::string text =
        vm::Format("Warning! DDV_MinMaxInt value out of range!! value=%d, min=%d, max=%d", value,
                   minVal, maxVal);
    OutputDebugString(text.c_str());
}
