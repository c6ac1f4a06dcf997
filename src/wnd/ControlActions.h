// What a person does with a native control, as WM_COMMAND, WM_NOTIFY or WM_HSCROLL and WM_VSCROLL
// for the window object of the view or dialog that the control is in. The notification code is in
// the high word of wParam, the control's tag in the low one, its handle in lParam.
#pragma once

#include <vmcore/core/types.h>

class CWnd;
class QAbstractSlider;

namespace vm {

/// What of a scroll bar was used.
enum class ScrollPart { DecrementPage, IncrementPage, Knob, Line };

/// Where a slider's knob is: a vertical one counts from its top end, which is 0.
int PositionOf(const QAbstractSlider& slider);

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
    /// Arrows at a new position, as a slider's knob.
    void onSpin(QWidget* sender);
    /// Asks with UDN_DELTAPOS, which may change `delta`; false when the step is refused.
    bool MaySpin(QWidget* sender, int& delta);
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
