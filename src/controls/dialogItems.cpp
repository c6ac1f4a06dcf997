// Messages to the items of a dialog, by the number of the item: the groups that act straight on the
// native control, and what is forwarded to the item's object.
#include <vmcore/wnd/CWnd.h>

#include <cstring>
#include <string>

#include <vmcore/controls/CButton.h>
#include <vmcore/controls/CComboBox.h>
#include <vmcore/controls/CEdit.h>

#include "controls/listItems.h"
#include "core/log.h"
#include "core/macroman.h"
#include "platform/messagebox.h"
#include "wnd/controlText.h"
#include "wnd/views.h"

namespace {

constexpr UINT kBoxStyle = 1; // OK and Cancel

// The list box messages, and as many of the combo box, in the same order.
enum class ListMessage {
    Add,
    Insert,
    Delete,
    Reset,
    Count,
    GetSelection,
    SetSelection,
    GetText,
    GetTextLength,
    Find,
    Select
};

QString TextOf(LPARAM parameter) {
    const auto* text = reinterpret_cast<const char*>(parameter);
    return vm::FromMacRoman(text ? text : "");
}

LRESULT CopyText(const vm::ListItems& items, int index, LPARAM buffer) {
    const std::optional<QString> text = items.Text(index);
    if (!text) return LB_ERR;
    const std::string bytes = vm::ToMacRomanLossy(*text);
    if (buffer) std::strcpy(reinterpret_cast<char*>(buffer), bytes.c_str());
    return static_cast<LRESULT>(bytes.size());
}

LRESULT SelectFound(const vm::ListItems& items, int found) {
    if (found >= 0) items.Select(found);
    return found;
}

LRESULT AnswerList(const vm::ListItems& items, ListMessage message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case ListMessage::Add:
        return items.Insert(-1, TextOf(lParam));
    case ListMessage::Insert:
        return items.Insert(index, TextOf(lParam));
    case ListMessage::Delete:
        return items.Remove(index) ? items.Count() : LB_ERR;
    case ListMessage::Reset:
        return items.Clear(), 0;
    case ListMessage::Count:
        return items.Count();
    case ListMessage::GetSelection:
        return items.Selected();
    case ListMessage::SetSelection:
        return items.Select(index) ? index : LB_ERR;
    case ListMessage::GetText:
        return CopyText(items, index, lParam);
    case ListMessage::GetTextLength:
        return CopyText(items, index, 0);
    case ListMessage::Find:
        return items.Find(index, TextOf(lParam));
    case ListMessage::Select:
        return SelectFound(items, items.Find(index, TextOf(lParam)));
    }
    return LB_ERR;
}

// Where a list box answers otherwise than a combo box.
LRESULT AnswerListBox(const vm::ListItems& items, ListMessage message, WPARAM wParam,
                      LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case ListMessage::Insert:
        return index < 0 ? LB_ERR : items.Insert(index, TextOf(lParam));
    case ListMessage::Delete:
        return items.Remove(index) ? index : LB_ERR;
    case ListMessage::SetSelection:
        return items.Select(index), index;
    case ListMessage::Select:
        return SelectFound(items, items.FindWhole(index, TextOf(lParam))), LB_ERR;
    default:
        return AnswerList(items, message, wParam, lParam);
    }
}

LRESULT SendToListBox(QWidget& view, UINT number, WPARAM wParam, LPARAM lParam) {
    const std::optional<vm::ListItems> items = vm::ListItems::Of(&view);
    return items ? AnswerListBox(*items, static_cast<ListMessage>(number), wParam, lParam) : LB_ERR;
}

// The item as an object of the class that the message is for, whether it has one or not.
template <class Control>
LRESULT SendTo(QWidget& view, UINT message, WPARAM wParam, LPARAM lParam) {
    Control control;
    control.SubclassWindow(&view);
    const LRESULT result = control.DefWindowProc(message, wParam, lParam);
    control.UnsubclassWindow();
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

static_assert(LB_SELECTSTRING - LB_ADDSTRING == static_cast<UINT>(ListMessage::Select));

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
        return SendToListBox(*item->view, message - LB_ADDSTRING, wParam, lParam);
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
