// Window text and the texts and numbers of dialog items. Hosts' texts are 8-bit Roman. A control
// shows line feeds; only GetWindowText and SetWindowText know carriage returns, an item's text goes
// in and out as it stands.
#include <vmcore/wnd/CWnd.h>

#include <algorithm>
#include <cstring>
#include <string>

#include <QtWidgets/QWidget>

#include "core/guard.h"
#include "core/macroman.h"
#include "platform/messagebox.h"
#include "wnd/CWndNSView.h"
#include "wnd/NativeWindow.h"
#include "wnd/accessibleView.h"
#include "wnd/controlText.h"
#include "wnd/views.h"

namespace {

std::string WithoutReturns(const char* text) {
    std::string copy(text);
    copy.erase(std::remove(copy.begin(), copy.end(), '\r'), copy.end());
    return copy;
}

std::string WithReturns(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\n') result += '\r';
        result += c;
    }
    return result;
}

// The text as hosts read it, or nothing for a view that has none.
std::optional<std::string> HostText(const QWidget& view) {
    const std::optional<QString> text = vm::ControlText(view);
    if (!text) return std::nullopt;
    const std::string bytes = vm::ToMacRomanLossy(*text);
    return vm::IsButton(view) ? bytes : WithReturns(bytes);
}

std::string ItemText(const QWidget& item) {
    return vm::ToMacRomanLossy(vm::ControlText(item).value_or(QString()));
}

int CopyOut(const std::string& text, char* buffer, int size) {
    if (buffer && size > 0) std::strncpy(buffer, text.c_str(), static_cast<std::size_t>(size) - 1);
    return static_cast<int>(text.size());
}

QWidget* ItemView(CWnd& wnd, int id) {
    const CWnd* item = wnd.GetDlgItem(id);
    return item && vm::IsLiveView(item->view) ? item->view : nullptr;
}

} // namespace

void CWnd::SetWindowText(const char* newText) {
    if (!view || !newText) return;
    vm::Guarded(vm::LogModule::Wnd, "CWnd::SetWindowText()", [&] {
        if (nsWindow) {
            nsWindow->setWindowTitle(vm::FromMacRoman(newText));
        } else if (isCustomNSView()) {
            text = newText;
            vm::TellName(static_cast<CWndView&>(vm::LiveView(view)));
        } else {
            vm::SetControlText(vm::LiveView(view), vm::FromMacRoman(WithoutReturns(newText)));
        }
    });
}

void CWnd::GetWindowText(CString& result) const {
    if (!view) return;
    if (nsWindow) {
        result = vm::ToMacRomanLossy(nsWindow->windowTitle()).c_str();
    } else if (isCustomNSView()) {
        result = static_cast<const char*>(text);
    } else if (vm::IsLiveView(view)) {
        if (const std::optional<std::string> own = HostText(*view)) result = own->c_str();
    }
}

int CWnd::GetWindowText(char* buffer, int size) const {
    if (!view) return 0;
    CString result;
    GetWindowText(result);
    return CopyOut(static_cast<const char*>(result), buffer, size);
}

int GetWindowText(HWND window, char* buffer, int size) {
    if (!vm::IsLiveView(window)) return 0;
    if (vm::IsContentView(window))
        return CopyOut(vm::ToMacRomanLossy(vm::WindowOf(window)->windowTitle()), buffer, size);
    if (const std::optional<QString> text = vm::ControlText(*window)) // line feeds as they are
        return CopyOut(vm::ToMacRomanLossy(*text), buffer, size);
    vm::ShowMessageBox(nullptr, "Add NSView support to fn GetWindowText", "Msg", 1);
    return 0;
}

int CWnd::GetWindowTextLength() const {
    if (nsWindow) return static_cast<int>(nsWindow->windowTitle().size());
    if (!vm::IsLiveView(view) || isCustomNSView()) return 0;
    return static_cast<int>(vm::ControlText(*view).value_or(QString()).size());
}

int CWnd::GetDlgItemText(int id, char* buffer, int size) {
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::GetDlgItemText()", 0, [&] {
        const QWidget* item = ItemView(*this, id);
        return item ? CopyOut(ItemText(*item), buffer, size) : 0;
    });
}

int CWnd::GetDlgItemText(int id, CString& result) {
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::GetDlgItemText()", 0, [&] {
        const QWidget* item = ItemView(*this, id);
        if (!item) return 0;
        result = ItemText(*item).c_str();
        return result.GetLength();
    });
}

void CWnd::SetDlgItemText(int id, const char* newText) {
    vm::Guarded(vm::LogModule::Wnd, "CWnd::SetDlgItemText()", [&] {
        QWidget* item = ItemView(*this, id);
        if (item && newText) vm::SetControlText(*item, vm::FromMacRoman(newText));
    });
}

UINT CWnd::GetDlgItemInt(int id, BOOL* ok, BOOL) {
    const QWidget* item = view ? ItemView(*this, id) : nullptr;
    if (ok) *ok = item != nullptr;
    return item ? static_cast<UINT>(vm::ControlInteger(*item)) : 0;
}

void CWnd::SetDlgItemInt(int id, UINT value, BOOL) {
    if (QWidget* item = view ? ItemView(*this, id) : nullptr)
        vm::SetControlInteger(*item, static_cast<int>(value));
}
