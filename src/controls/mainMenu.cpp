// The application's main menu, what its items and those of all other menus do when chosen, and
// whether the menu bar is shown.
#include <unordered_set>

#include <QtCore/QCoreApplication>
#include <QtCore/QVariant>
#include <QtGui/QAction>

#include <vmcore/app/CWinApp.h>
#include <vmcore/controls/CMenu.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "controls/interfaceFile.h"
#include "controls/menuActions.h"
#include "controls/menuRegistry.h"
#include "controls/menuState.h"
#include "core/log.h"
#include "platform/bundle.h"
#include "wnd/NativeWindow.h"
#include "wnd/views.h"

namespace vm {
namespace {

// The names live for ever: MenuActionOf hands out pointers to them.
const char* KeptName(const std::string& name) {
    static auto* const s_names = new std::unordered_set<std::string>;
    return s_names->insert(name).first->c_str();
}

// What has the properties of an item in an interface file: of one with a sub-menu, that.
const QObject* Carrier(const QAction* item) {
    if (const QMenu* sub = item->menu()) return sub;
    return item;
}

void ApplyPresentationOptions() {
    CWnd* main = App().MainApp ? AfxGetMainWnd() : nullptr;
    ShowMenuBarOf(main && MenuBarShown() ? main->nsWindow : nullptr);
}

void LoadMainMenu() {
    const Bundle* bundle = ResourceBundle();
    if (Menus().triedBundle == bundle) return;
    Menus().triedBundle = bundle;
    if (InterfaceFileExists("MainMenu"))
        SetMainMenu(LoadMenuFile("MainMenu"));
    else if (!bundle->Path().empty()) // a bare executable has no menus to miss
        Log(LogModule::Controls, "MainMenu.ui is not in %s", bundle->ResourcePath().c_str());
}

} // namespace

MenuState& Menus() {
    static auto* const s_state = new MenuState;
    return *s_state;
}

void SetMainMenu(QMenu* menu) {
    Menus().mainMenu = menu;
    if (!menu) return;
    KeepMenu(menu);
    AssignMenuDelegate(menu);
    InstallMenuShortcuts();
}

QMenu* MainMenu() {
    if (!Menus().mainMenu && QCoreApplication::instance()) LoadMainMenu();
    return Menus().mainMenu;
}

void SetMenuActionTarget(MenuActionTarget target) {
    Menus().actionTarget = target;
}

int MenuItemTag(const QAction* item) {
    return Carrier(item)->property(kTagProperty).toInt();
}

const char* MenuActionOf(const QAction* item) {
    const std::string action = Carrier(item)->property("action").toString().toStdString();
    if (!action.empty()) return KeptName(action);
    return !item->menu() && MenuItemTag(item) != 0 ? "winCmd" : "";
}

bool MenuBarShown() {
    return (Menus().presentationOptions & kHideMenuBar) == 0;
}

} // namespace vm

void HideMainMenu() {
    vm::Menus().presentationOptions |= vm::kHideDock | vm::kHideMenuBar;
    vm::ApplyPresentationOptions();
}

void ShowMainMenu() {
    vm::Menus().presentationOptions ^= vm::kHideDock | vm::kHideMenuBar;
    vm::ApplyPresentationOptions();
}
