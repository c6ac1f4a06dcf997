#include "wnd/tabStops.h"

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>

#include "wnd/radioButtons.h"

namespace vm {
namespace {

bool IsTabStop(const QWidget& view, const QWidget& within) {
    return within.isAncestorOf(&view) && view.focusPolicy() & Qt::TabFocus && view.isEnabled() &&
           view.isVisibleTo(&within);
}

QWidget* FirstTabStop(const QWidget& within) {
    QWidget* view = within.nextInFocusChain();
    while (view && view != &within && !IsTabStop(*view, within)) view = view->nextInFocusChain();
    return view == &within ? nullptr : view;
}

// The toolkit does so only in a window that is active.
void SelectTextOf(QWidget& field) {
    if (auto* line = qobject_cast<QLineEdit*>(&field)) line->selectAll();
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(&field)) spin->selectAll();
    const auto* combo = qobject_cast<QComboBox*>(&field);
    if (combo && combo->lineEdit()) combo->lineEdit()->selectAll();
}

} // namespace

void FocusFirstTabStop(QWidget& view) {
    QWidget* const first = FirstTabStop(view);
    if (!first) return;
    first->setFocus(Qt::TabFocusReason);
    SelectTextOf(*first);
}

void LeadTabTo(QAbstractButton& button) {
    for (QAbstractButton* other : RadioGroupOf(button)) {
        const int policy = other->focusPolicy() & ~Qt::TabFocus;
        other->setFocusPolicy(
            static_cast<Qt::FocusPolicy>(other == &button ? policy | Qt::TabFocus : policy));
    }
}

} // namespace vm
