// What every modal dialog is, whoever made its window: one that is counted, in front of the window
// that the user is in.
#pragma once

class QWidget;

namespace vm {

/// Counted for the state of the menus while it lives; the first one in a foreign program hides that's
/// main menu.
class DisplayedDialog {
public:
    DisplayedDialog();
    ~DisplayedDialog();
    DisplayedDialog(const DisplayedDialog&) = delete;
    DisplayedDialog& operator=(const DisplayedDialog&) = delete;
};

/// The window that the user is in; null when the application shows none.
QWidget* ActiveWindow();

} // namespace vm
