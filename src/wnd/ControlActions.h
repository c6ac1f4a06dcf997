// What a person does with a native control, as WM_COMMAND, WM_NOTIFY or WM_HSCROLL and WM_VSCROLL
// for the window object of the view or dialog that the control is in. The notification code is in
// the high word of wParam, the control's tag in the low one, its handle in lParam.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

/// What of a scroll bar was used.
enum class ScrollPart { DecrementPage, IncrementPage, Knob, Line };

/// Base of what receives control actions. A sender of the wrong class, or no window object, is
/// reported in a message box, and nothing is sent. An action may destroy its sender and this object.
class ControlActions {
public:
    void onButton(QWidget* sender);
    void onRadio(QWidget* sender);
    void onPopupMenu(QWidget* sender);
    void onCombi(QWidget* sender);
    void onEdit(QWidget* sender);
    void onSelChange(QWidget* sender);
    void onTab(QWidget* sender);
    /// `part` is for scroll bars; a slider sends its position whatever was used.
    void onScroll(QWidget* sender, ScrollPart part);
    void controlTextDidBeginEditing(QWidget* sender);
    void controlTextDidChange(QWidget* sender);
    void controlTextDidEndEditing(QWidget* sender);

protected:
    ControlActions() = default;
    ~ControlActions() = default;
    ControlActions(const ControlActions&) = delete;
    ControlActions& operator=(const ControlActions&) = delete;

    virtual CWnd* ActionTarget() const = 0;
    /// The name in the report of a missing window object: "CWnd not assigned to <name>".
    virtual const char* ActionsName() const = 0;

private:
    CWnd* TargetFor(bool senderFits, const char* misfit) const;
    void SendCommand(QWidget* sender, bool fits, const char* misfit, int notification);
};

} // namespace vm
