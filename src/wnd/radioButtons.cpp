#include "wnd/radioButtons.h"

#include <algorithm>
#include <climits>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QButtonGroup>

#include <vmcore/wnd/CWnd.h>

#include "wnd/controlText.h"
#include "wnd/views.h"

namespace vm {
namespace {

bool IsRadioButton(const QAbstractButton& button) {
    const QButtonGroup* group = button.group();
    return button.isCheckable() && (button.autoExclusive() || (group && group->exclusive()));
}

// Those of `buttons` with tags from `first` to `last`, by their tags.
QList<QAbstractButton*> Tagged(QList<QAbstractButton*> buttons, int first, int last) {
    const auto isOther = [&](const QAbstractButton* button) {
        return TagOf(button) < first || TagOf(button) > last;
    };
    buttons.erase(std::remove_if(buttons.begin(), buttons.end(), isOther), buttons.end());
    std::stable_sort(
        buttons.begin(), buttons.end(),
        [](const QAbstractButton* a, const QAbstractButton* b) { return TagOf(a) < TagOf(b); });
    return buttons;
}

QList<QAbstractButton*> RadioItems(HWND dialog, int first, int last) {
    QList<QAbstractButton*> items;
    if (!IsLiveView(dialog)) return items;
    for (auto* button : dialog->findChildren<QAbstractButton*>())
        if (IsRadioButton(*button)) items += button;
    return Tagged(items, first, last);
}

} // namespace

QList<QAbstractButton*> RadioGroupOf(const QAbstractButton& button) {
    if (const QButtonGroup* group = button.group())
        return group->exclusive() ? group->buttons() : QList<QAbstractButton*>();
    QList<QAbstractButton*> buttons;
    if (!button.autoExclusive() || !button.parentWidget()) return buttons;
    for (QObject* child : button.parentWidget()->children()) {
        auto* other = qobject_cast<QAbstractButton*>(child);
        if (other && other->autoExclusive() && !other->group()) buttons += other;
    }
    return buttons;
}

QList<QAbstractButton*> RadioButtonsFrom(const QAbstractButton& first) {
    return Tagged(RadioGroupOf(first), TagOf(&first), INT_MAX);
}

// The one that goes on comes last: those before it may keep it off.
void CheckOnly(const QList<QAbstractButton*>& buttons, const QAbstractButton* on) {
    for (QAbstractButton* button : buttons)
        if (button != on) SetControlInteger(*button, 0);
    for (QAbstractButton* button : buttons)
        if (button == on) SetControlInteger(*button, 1);
}

int IndexOfChecked(const QList<QAbstractButton*>& buttons) {
    const auto on = std::find_if(buttons.begin(), buttons.end(),
                                 [](const QAbstractButton* button) { return button->isChecked(); });
    return on == buttons.end() ? -1 : static_cast<int>(on - buttons.begin());
}

} // namespace vm

void CWnd::CheckRadioButton(int first, int last, int check) {
    const auto buttons = vm::RadioItems(view, first, last);
    const auto on = std::find_if(buttons.begin(), buttons.end(), [check](const auto* button) {
        return vm::TagOf(button) == check;
    });
    vm::CheckOnly(buttons, on == buttons.end() ? nullptr : *on);
}

int CWnd::GetCheckedRadioButton(int first, int last) const {
    const auto buttons = vm::RadioItems(view, first, last);
    const int index = vm::IndexOfChecked(buttons);
    return index < 0 ? 0 : vm::TagOf(buttons[index]);
}
