// Where the Tab key leads: the first control of a dialog or page, the one radio button of a group.
#pragma once

class QAbstractButton;
class QWidget;

namespace vm {

/// Gives the focus to the first control in `view` that the Tab key leads to, as the key does: the text of
/// a field is selected, also while the window is not active yet.
void FocusFirstTabStop(QWidget& view);

/// From now on the Tab key leads to this button and to no other of its group: called for the one that
/// is on. A button that excludes no others stays as it is.
void LeadTabTo(QAbstractButton& button);

} // namespace vm
