#include "wnd/ControlActions.h"

#include <string>

#include <QtCore/QPointer>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>

#include <vmcore/controls/CSpinButtonCtrl.h>
#include <vmcore/wnd/CWnd.h>

#include "platform/messagebox.h"
#include "wnd/SpinArrows.h"
#include "wnd/views.h"

namespace vm {
namespace {

template <typename... Classes>
bool IsOneOf(const QWidget* sender) {
    return (... || (qobject_cast<const Classes*>(sender) != nullptr));
}

bool IsTextField(const QWidget* sender) {
    const auto* combo = qobject_cast<const QComboBox*>(sender);
    if (combo && combo->isEditable()) return true;
    return IsOneOf<QLineEdit, QPlainTextEdit, QTextEdit, QAbstractSpinBox>(sender);
}

int TagWord(const QWidget* sender) {
    return TagOf(sender) & 0xFFFF;
}

// The position that the knob of a scroll bar stands for in the range of the object.
int KnobPosition(const QScrollBar& bar, LONG lowest, LONG highest) {
    const double range = double(bar.maximum()) - bar.minimum();
    const double fraction = range > 0 ? (double(bar.value()) - bar.minimum()) / range : 0;
    return static_cast<int>(fraction * (double(highest) - lowest)) + lowest;
}

void SendScroll(CWnd& wnd, QWidget& sender, bool vertical, int code, int position) {
    wnd.WindowProc(vertical ? WM_VSCROLL : WM_HSCROLL, MAKELONG(code, position),
                   reinterpret_cast<LPARAM>(&sender));
}

void SendScrollBar(CWnd& wnd, QScrollBar& bar, ScrollPart part) {
    const bool vertical = bar.height() > bar.width();
    const LONG lowest = vertical ? wnd.vScrollMin : wnd.hScrollMin;
    const LONG highest = vertical ? wnd.vScrollMax : wnd.hScrollMax;
    switch (part) {
    case ScrollPart::DecrementPage:
        return SendScroll(wnd, bar, vertical, SB_PAGEDOWN, 0);
    case ScrollPart::IncrementPage:
        return SendScroll(wnd, bar, vertical, SB_LINEDOWN, 0);
    case ScrollPart::Knob:
        return SendScroll(wnd, bar, vertical, SB_THUMBTRACK, KnobPosition(bar, lowest, highest));
    case ScrollPart::Line:
        return;
    }
}

void SendSlider(CWnd& wnd, QAbstractSlider& slider) {
    SendScroll(wnd, slider, slider.orientation() == Qt::Vertical, SB_THUMBTRACK,
               PositionOf(slider));
}

} // namespace

int PositionOf(const QAbstractSlider& slider) {
    if (slider.orientation() == Qt::Horizontal) return slider.value();
    return slider.maximum() - slider.value();
}

CWnd* ControlActions::TargetFor(bool senderFits, const char* misfit) const {
    if (!senderFits) {
        ShowMessageBox(nullptr, misfit, "Internal Error", 1);
        return nullptr;
    }
    CWnd* const target = ActionTarget();
    if (!target) {
        const std::string text = std::string("CWnd not assigned to ") + ActionsName();
        ShowMessageBox(nullptr, text.c_str(), "Internal Error", 1);
    }
    return target;
}

void ControlActions::SendCommand(QWidget* sender, bool fits, const char* misfit, int notification) {
    CWnd* const target = TargetFor(fits, misfit);
    if (!target) return;
    target->WindowProc(WM_COMMAND, MAKELONG(TagWord(sender), notification),
                       reinterpret_cast<LPARAM>(sender));
}

void ControlActions::onButton(QWidget* sender) {
    SendCommand(sender, IsOneOf<QAbstractButton, QGroupBox>(sender),
                "onButton called by a non-NSButton control", BN_CLICKED);
}

void ControlActions::onRadio(QWidget* sender) {
    onButton(sender);
}

void ControlActions::onPopupMenu(QWidget* sender) {
    SendCommand(sender, IsOneOf<QComboBox>(sender),
                "onPopupMenu called by a non-NSPopUpButton control", CBN_SELCHANGE);
}

void ControlActions::onCombi(QWidget* sender) {
    onPopupMenu(sender);
}

void ControlActions::onEdit(QWidget* sender) {
    SendCommand(sender, IsTextField(sender), "onEdit called by a non-NSTextField object",
                EN_KILLFOCUS);
}

void ControlActions::onSelChange(QWidget* sender) {
    SendCommand(sender, IsOneOf<QAbstractItemView>(sender),
                "onSelChange called by a non-NSTableView object", LBN_SELCHANGE);
}

void ControlActions::onTab(QWidget* sender) {
    CWnd* const target = TargetFor(IsOneOf<QTabBar, QTabWidget>(sender),
                                   "onTab called by a non-NSSegmentedControl object");
    if (!target) return;
    const auto tag = static_cast<UINT>(TagWord(sender));
    NMHDR header{sender, tag, TCN_SELCHANGE};
    target->WindowProc(WM_NOTIFY, tag, reinterpret_cast<LPARAM>(&header));
}

void ControlActions::onScroll(QWidget* sender, ScrollPart part) {
    CWnd* const target = TargetFor(IsOneOf<QAbstractSlider>(sender),
                                   "onScroll called by a non-NSSlider/NSScroller object");
    if (!target) return;
    if (auto* bar = qobject_cast<QScrollBar*>(sender))
        SendScrollBar(*target, *bar, part);
    else
        SendSlider(*target, *static_cast<QAbstractSlider*>(sender));
}

void ControlActions::onSpin(QWidget* sender) {
    auto* arrows = dynamic_cast<SpinArrows*>(sender);
    CWnd* const target = TargetFor(arrows, "onSpin called by a non-CSpinButton control");
    if (!target) return;
    SendScroll(*target, *sender, !arrows->IsHorizontal(), SB_THUMBTRACK, arrows->Position());
}

bool ControlActions::MaySpin(QWidget* sender, int& delta) {
    const auto* arrows = dynamic_cast<SpinArrows*>(sender);
    CWnd* const target = TargetFor(arrows, "onSpin called by a non-CSpinButton control");
    if (!target) return false;
    const auto tag = static_cast<UINT>(TagWord(sender));
    NMUPDOWN record{{sender, tag, UDN_DELTAPOS}, arrows->Position(), delta};
    target->WindowProc(WM_NOTIFY, tag, reinterpret_cast<LPARAM>(&record));
    delta = record.iDelta;
    return delta != 0;
}

void ControlActions::controlTextDidBeginEditing(QWidget* sender) {
    SendCommand(sender, IsTextField(sender), "onEdit called by a non-NSTextField object",
                EN_SETFOCUS);
}

// Hosts handle either of the two.
void ControlActions::controlTextDidChange(QWidget* sender) {
    static const char kMisfit[] = "controlTextDidChange called by a non-NSTextField object";
    const QPointer<QWidget> alive = sender;
    CWnd* const target = TargetFor(IsTextField(sender), kMisfit);
    if (!target) return;
    for (const int notification : {EN_UPDATE, EN_CHANGE}) {
        if (!alive || !CWndListVerify(target)) return;
        target->WindowProc(WM_COMMAND, MAKELONG(TagWord(sender), notification),
                           reinterpret_cast<LPARAM>(sender));
    }
}

void ControlActions::controlTextDidEndEditing(QWidget* sender) {
    onEdit(sender);
}

} // namespace vm
