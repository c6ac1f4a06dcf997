// Which radio buttons belong together.
#pragma once

#include <QtCore/QList>

class QAbstractButton;

namespace vm {

/// The buttons of which one is on at a time, `button` among them; none for one that stands alone.
QList<QAbstractButton*> RadioGroupOf(const QAbstractButton& button);
/// The same in the order of their tags, from that of `first` on.
QList<QAbstractButton*> RadioButtonsFrom(const QAbstractButton& first);

/// Puts one of them on and the others off; all off for null.
void CheckOnly(const QList<QAbstractButton*>& buttons, const QAbstractButton* on);
/// The index of the first that is on; -1 for none.
int IndexOfChecked(const QList<QAbstractButton*>& buttons);

} // namespace vm
