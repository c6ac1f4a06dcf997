#include "controls/menuUpdate.h"

#include <cstring>

#include <QtCore/QPointer>
#include <QtGui/QAction>
#include <QtWidgets/QMenu>

#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "controls/menuActions.h"
#include "controls/menuState.h"
#include "wnd/CWndNSView.h"
#include "wnd/responder.h"
#include "wnd/views.h"

namespace vm {
namespace {

constexpr int kAlwaysEnabledTag = 1;
constexpr char kNoText[] = "\1"; // what no handler sets

CWnd* FirstResponder() {
    CWndView* view = FirstResponderView();
    return view ? ObjectOf(view) : nullptr;
}

CWnd* ResponderOrMain() {
    CWnd* responder = FirstResponder();
    return responder ? responder : AfxGetMainWnd();
}

// The menu's title counts only in a dialog.
UpdateSituation SituationOf(const QMenu* menu, int tag, const CWnd* popupOwner) {
    const int dialogs = App().displayDlg;
    return {popupOwner != nullptr,
            App().isPluginEnvironment,
            dialogs,
            Menus().trackPopupMenu > 0,
            tag,
            dialogs > 0 ? menu->title().toStdString() : ""};
}

// Asks `target` and the windows above it; false when none of them knows the command. A handler may
// end its own window or those above.
bool AskUpwards(CWnd* target, int id, MacCmdUI& state) {
    for (CWnd* wnd = target; wnd && CWndListVerify(wnd);) {
        LRESULT extra = 0;
        if (wnd->OnCmdMsg(static_cast<UINT>(id), 0, &extra,
                          reinterpret_cast<AFX_CMDHANDLERINFO*>(static_cast<CCmdUI*>(&state))))
            return true;
        if (!CWndListVerify(wnd)) return false;
        CWnd* parent = wnd->GetParent();
        if (parent == wnd) return false;
        wnd = parent;
    }
    return false;
}

void SetChecked(QAction* item, bool checked) {
    if (checked) item->setCheckable(true);
    if (item->isCheckable()) item->setChecked(checked);
}

// What nobody handles cannot be chosen; items that do something else than send a command can.
void DisableCommand(QAction* item) {
    if (std::strcmp(MenuActionOf(item), "winCmd") == 0) item->setEnabled(false);
}

// The handler may also take the item out of its menu.
void AskForState(const QPointer<QAction>& item, int id, CWnd* target) {
    if (id == 0) return;
    BYTE enabled = 0;
    BYTE second = 0;
    SHORT mark = 0;
    char text[256];
    std::strcpy(text, kNoText);
    MacCmdUI state(id, enabled, second, mark, text);
    const bool isKnown = AskUpwards(target, id, state);
    if (!item) return;
    if (!isKnown) return DisableCommand(item);
    item->setEnabled(enabled != 0);
    SetChecked(item, mark != 0);
    if (std::strcmp(text, kNoText) != 0) item->setText(QString::fromUtf8(text));
}

} // namespace

UpdateRule RuleFor(const UpdateSituation& situation) {
    if (situation.hasPopupOwner) return UpdateRule::AskPopupOwner;
    const bool inDialog = situation.displayedDialogs > 0;
    if (situation.pluginEnvironment)
        return inDialog || situation.trackingPopup ? UpdateRule::AskResponder : UpdateRule::Leave;
    if (inDialog) {
        if (situation.tag == 0) return UpdateRule::Leave;
        const bool isPopup = situation.menuTitle.empty() || situation.menuTitle == "popup:";
        return isPopup ? UpdateRule::Enable : UpdateRule::Disable;
    }
    if (situation.tag == kAlwaysEnabledTag) return UpdateRule::Enable;
    return UpdateRule::AskResponderOrMain;
}

void UpdateMenuItem(QMenu* menu, QAction* item, CWnd* popupOwner) {
    const int tag = MenuItemTag(item);
    switch (RuleFor(SituationOf(menu, tag, popupOwner))) {
    case UpdateRule::Leave:
        return;
    case UpdateRule::Enable:
        return item->setEnabled(true);
    case UpdateRule::Disable:
        return item->setEnabled(false);
    case UpdateRule::AskPopupOwner:
        return AskForState(item, tag, popupOwner);
    case UpdateRule::AskResponder:
        if (CWnd* responder = FirstResponder()) AskForState(item, tag, responder);
        return;
    case UpdateRule::AskResponderOrMain:
        CWnd* target = ResponderOrMain();
        return target ? AskForState(item, tag, target) : item->setEnabled(false);
    }
}

} // namespace vm
