// The text and the number of a native control, by its class.
#pragma once

#include <optional>

#include <QtCore/QString>

class QWidget;

namespace vm {

/// A button's title or another control's text; nothing for a view that is no control.
std::optional<QString> ControlText(const QWidget& control);
/// False for a view that is no control with a text.
bool SetControlText(QWidget& control, const QString& text);
bool IsButton(const QWidget& control);

/// The check state, the position, the current index plus 1, or the text as a number.
int ControlInteger(const QWidget& control);
void SetControlInteger(QWidget& control, int value);

} // namespace vm
