// The text and the number of a native control, by its class.
#pragma once

#include <optional>

#include <QtCore/QString>

class QLineEdit;
class QComboBox;
class QWidget;

namespace vm {

/// A button's title, a spin box's number without prefix and suffix, the title of the tab that is
/// shown, or another control's text; nothing for a view that is no control with a text.
std::optional<QString> ControlText(const QWidget& control);
/// False for a view that is no control with a text that can be set.
bool SetControlText(QWidget& control, const QString& text);
bool IsButton(const QWidget& control);

/// -1 for none, also while another text than the entry's has been typed.
int SelectedEntry(const QComboBox& combo);

/// The check state (2: neither), the position, the current index plus 1 of a combo box, a list or
/// tabs, or the text as a number.
int ControlInteger(const QWidget& control);
void SetControlInteger(QWidget& control, int value);

/// How much a user may type, 0 for as much as there is room for. What the program sets is not cut:
/// a longer text counts as the limit for as long as it is there.
void SetTextLimit(QLineEdit& line, int limit);
int TextLimit(const QLineEdit& line);

/// While one lives, what a control reports is the program's doing, not its user's.
class ProgramChange {
public:
    ProgramChange();
    ~ProgramChange();
    ProgramChange(const ProgramChange&) = delete;
    ProgramChange& operator=(const ProgramChange&) = delete;
    static bool InProgress();
};

} // namespace vm
