// Where the menu module hands over what it cannot decide itself: the commands of chosen items go to
// whoever routes commands for the application.
#pragma once

class QAction;
class QMenu;

namespace vm {

/// Called with every chosen item that carries an action ("winCmd", "about", "preferences",
/// "terminate"; see MenuActionOf). Set once by the application at launch.
using MenuActionTarget = void (*)(QAction* item);
void SetMenuActionTarget(MenuActionTarget target);

/// The action of an item: "winCmd" for every item with a command ID that names no other; "" for
/// none, and for an item with a sub-menu.
const char* MenuActionOf(const QAction* item);
/// The command ID of an item, 0 for none. That of an item with a sub-menu sends nothing, but its
/// state is asked for.
int MenuItemTag(const QAction* item);

/// The application's main menu, loaded from MainMenu.ui of the bundle on first use; null when there
/// is none. Its items are the menus of the menu bar.
QMenu* MainMenu();

/// Whether HideMainMenu and ShowMainMenu leave the menu bar shown.
bool MenuBarShown();

/// Assigns the update mechanism to a menu and all its sub-menus: each item's state is asked before
/// the menu shows. Called at launch for the main menu.
void AssignMenuDelegate(QMenu* menu);

} // namespace vm
