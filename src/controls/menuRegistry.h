// What the library knows of each native menu: the delegate that refreshes its items, and which
// CMenu objects hold it. A menu that was held and is no longer is freed, unless it is the sub-menu
// of another one or the application's main menu. Also the preparation of menu items. Main thread
// only.
#pragma once

#include <vmcore/core/types.h>

class CWndMenuDelegate;
class QAction;

namespace vm {

/// Sets `delegate` as the delegate of the menu and of all its sub-menus, in place of another, and
/// prepares their items.
void AssignDelegate(QMenu* menu, CWndMenuDelegate* delegate);
/// Null when the menu never had one.
CWndMenuDelegate* DelegateOf(const QMenu* menu);
/// The delegate that belongs to no CMenu.
CWndMenuDelegate& ApplicationMenuDelegate();
/// Gives the delegate's menus to the application's delegate.
void ForgetDelegate(const CWndMenuDelegate* delegate);
/// Has the menu's delegate refresh one item.
void UpdateItem(QMenu* menu, QAction* item);

/// Notes that the delegate's CMenu holds the menu. When the toolkit frees the menu first, the CMenu
/// is told.
void HoldMenu(QMenu* menu, CWndMenuDelegate* holder);
/// The end of HoldMenu. `ReleaseMenu` frees a menu that nobody else holds; `LetGoOfMenu` leaves it
/// to the caller.
void ReleaseMenu(QMenu* menu, const CWndMenuDelegate* holder);
void LetGoOfMenu(QMenu* menu, const CWndMenuDelegate* holder);
/// The menu is never freed by ReleaseMenu.
void KeepMenu(QMenu* menu);

/// Appends or inserts: the menu owns the item, and a sub-menu that comes with it.
void InsertItem(QMenu* menu, QAction* before, QAction* item);
/// Takes the item out of the menu and frees it when it is the menu's own.
void RemoveItem(QMenu* menu, QAction* item);

void SetItemTag(QAction* item, int tag);
/// Names the item's action ("winCmd") in place of one it had.
void SetItemAction(QAction* item, const char* action);
/// Has a chosen item sent to the menu action target, and its shortcut left to the library. Once per
/// item; more calls do nothing.
void PrepareItem(QAction* item);

} // namespace vm
