// The delegate of a native menu: refreshes its items before it shows, and tells the window that a
// pop-up menu was opened for when it closes. A plain object, because every CWnd has one, also those
// made before the toolkit is up.
#pragma once

#include <vmcore/core/types.h>

class CMenu;
class CWnd;
class QAction;

class CWndMenuDelegate {
public:
    explicit CWndMenuDelegate(CMenu* owner) : menu(owner) {}
    ~CWndMenuDelegate();
    CWndMenuDelegate(const CWndMenuDelegate&) = delete;
    CWndMenuDelegate& operator=(const CWndMenuDelegate&) = delete;

    int numberOfItemsInMenu(const QMenu* nativeMenu) const;
    /// Refreshes the item at `index`; always true.
    bool updateItem(QMenu* nativeMenu, QAction* item, int index, bool shouldCancel);
    void menuDidClose(QMenu* nativeMenu);
    /// The native menu of the owner is gone.
    void menuWasFreed();

    QMenu* menuRef = nullptr; ///< what an interface file's menu is handed over in
    CMenu* menu;              ///< the owner; null for the application's delegate
    bool* isGone = nullptr;   ///< set when the delegate ends while it tracks a menu
    CWnd* wnd = nullptr;      ///< only while a pop-up menu is tracked for this window
};
