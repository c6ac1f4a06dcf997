// What the menu module has one of, and the few operations that its files share. Main thread only.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QMenu>

#include <vmcore/core/types.h>

#include "controls/menuActions.h"

namespace vm {

class Bundle;

/// Bits of the presentation options.
enum PresentationOption : unsigned { kHideDock = 0x2, kHideMenuBar = 0x8 };

struct MenuState {
    MenuActionTarget actionTarget = nullptr;
    int trackPopupMenu = 0; // above 0 while a pop-up menu is tracked
    unsigned presentationOptions = 0;
    QPointer<QMenu> mainMenu;
    const Bundle* triedBundle = nullptr; // looked for the main menu here, in vain
};

MenuState& Menus();

/// Makes `menu` the application's main menu, in place of what the bundle has.
void SetMainMenu(QMenu* menu);

/// Matches the key presses of the whole application against the items of the main menu from now on.
void InstallMenuShortcuts();

} // namespace vm
