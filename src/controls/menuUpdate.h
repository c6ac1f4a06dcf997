// How an item gets its state before its menu shows: the rule that says whom to ask, on plain data,
// and the update itself.
#pragma once

#include <string>

#include <vmcore/core/types.h>

class CWnd;
class QAction;

namespace vm {

struct UpdateSituation {
    bool hasPopupOwner; ///< the menu is tracked for a window
    bool pluginEnvironment;
    int displayedDialogs;
    bool trackingPopup; ///< some pop-up menu is tracked
    int tag;
    std::string menuTitle;
};

enum class UpdateRule {
    Leave, ///< the item stays as it is
    Enable,
    Disable,
    AskPopupOwner,
    AskResponder,       ///< the first responder; without one the item stays as it is
    AskResponderOrMain, ///< without one the main window; without that the item is disabled
};

UpdateRule RuleFor(const UpdateSituation& situation);

/// Refreshes one item; `popupOwner` is the window that the menu is tracked for, null for none.
void UpdateMenuItem(QMenu* menu, QAction* item, CWnd* popupOwner);

} // namespace vm
