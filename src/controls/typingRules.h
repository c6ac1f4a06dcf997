// The rules for what a user types into a text, of one line or many.
#pragma once

#include <QtCore/QString>

#include "wnd/TextRules.h"

namespace vm {

/// The property of interface files that names a rule: "digits", "upper" or "lower".
inline constexpr char kTypingProperty[] = "typing";

/// Of a QLineEdit, QPlainTextEdit or QTextEdit. What the program sets passes. False for other views.
bool SetTypingRules(QWidget& edit, const TypingRules& rules);

/// By the rule's name. False for an unknown one, too.
bool SetTypingRule(QWidget& edit, const QString& name);

} // namespace vm
