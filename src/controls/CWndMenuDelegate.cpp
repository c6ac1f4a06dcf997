#include "controls/CWndMenuDelegate.h"

#include <QtWidgets/QMenu>

#include <vmcore/controls/CMenu.h>
#include <vmcore/wnd/CWnd.h>

#include "controls/menuActions.h"
#include "controls/menuRegistry.h"
#include "controls/menuUpdate.h"

CWndMenuDelegate::~CWndMenuDelegate() {
    if (isGone) *isGone = true;
    vm::ForgetDelegate(this);
}

int CWndMenuDelegate::numberOfItemsInMenu(const QMenu* nativeMenu) const {
    return static_cast<int>(nativeMenu->actions().size());
}

bool CWndMenuDelegate::updateItem(QMenu* nativeMenu, QAction* item, int, bool) {
    if (!wnd || CWndListVerify(wnd)) vm::UpdateMenuItem(nativeMenu, item, wnd);
    return true;
}

void CWndMenuDelegate::menuDidClose(QMenu*) {
    if (wnd) wnd->SendMessage(WM_EXITMENULOOP, 0, 0);
}

void CWndMenuDelegate::menuWasFreed() {
    menuRef = nullptr;
    if (menu) menu->m_hMenu = nullptr;
}

namespace vm {

CWndMenuDelegate& ApplicationMenuDelegate() {
    static auto* const s_menuDelegate = new CWndMenuDelegate(nullptr);
    return *s_menuDelegate;
}

void AssignMenuDelegate(QMenu* menu) {
    AssignDelegate(menu, &ApplicationMenuDelegate());
}

} // namespace vm
