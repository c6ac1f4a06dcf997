// Messages to the items of a dialog, by the number of the item: the groups that act on the native
// control, through an object of its class, and what is forwarded to the item's object.
#include <vmcore/wnd/CWnd.h>

#include <string>

#include <vmcore/controls/CButton.h>
#include <vmcore/controls/CComboBox.h>
#include <vmcore/controls/CEdit.h>

#include "controls/listBoxMessages.h"
#include "core/log.h"
#include "platform/messagebox.h"
#include "wnd/views.h"

namespace {

constexpr UINT kBoxStyle = 1; // OK and Cancel

// The item as an object of the class that the message is for, whether it has one or not. Not attached,
// which would bind the view anew: what it reports meanwhile is for the object that it is bound to.
template <class Control>
LRESULT SendTo(QWidget& view, UINT message, WPARAM wParam, LPARAM lParam) {
    Control control;
    control.view = &view;
    const LRESULT result = control.DefWindowProc(message, wParam, lParam);
    control.view = nullptr;
    return result;
}

void ReportForwarded(int id, UINT message) {
    if (message == EM_LIMITTEXT) {
        vm::ShowMessageBox(nullptr, "Need a real CEdit for EM_LIMITTEXT to work", "Error",
                           kBoxStyle);
        return;
    }
    // Hosts know this box with the item's number in it.
    const std::string text = vm::Format("Wnd::SendDlgItemMessage does NOTHING for message=%d!", id);
    vm::ShowMessageBox(nullptr, text.c_str(), "Msg", kBoxStyle);
}

} // namespace

LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* item = GetDlgItem(id);
    if (!item || !vm::IsLiveView(item->view)) return 0;
    if (message == WM_SETTEXT) {
        item->SetWindowText(reinterpret_cast<const char*>(lParam));
        return 1;
    }
    if (message == WM_GETTEXT)
        return item->GetWindowText(reinterpret_cast<char*>(lParam), static_cast<int>(wParam));
    if (message >= BM_SETCHECK && message <= BM_CLICK)
        return SendTo<CButton>(*item->view, message, wParam, lParam);
    if (message >= LB_ADDSTRING && message <= LB_SELECTSTRING)
        return vm::SendToListBox(*item->view, message, wParam, lParam);
    if (message >= CB_ADDSTRING && message <= CB_LIMITTEXT)
        return SendTo<CComboBox>(*item->view, message, wParam, lParam);
    if (message > EM_LIMITTEXT && message <= EM_GETPASSWORDCHAR)
        return SendTo<CEdit>(*item->view, message, wParam, lParam);
    ReportForwarded(id, message);
    item = GetDlgItem(id); // the box ran a loop
    return item && vm::IsLiveView(item->view) ? item->WindowProc(message, wParam, lParam) : 0;
}

void CWnd::CheckDlgButton(int id, UINT state) {
    SendDlgItemMessage(id, BM_SETCHECK, state, 0);
}

UINT CWnd::IsDlgButtonChecked(int id) {
    return GetDlgItemInt(id);
}
