// MENU and MENUEX: MENU_<id>.ui, and of the application's own menu MainMenu.ui besides.
#pragma once

#include <map>
#include <string>

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// Commands and the keys that choose them, as Qt writes keys: "Ctrl+Shift+F5".
using Shortcuts = std::map<int, std::string>;

/// `shortcuts` are for the items of the main menu only.
void WriteMenu(const Menu& menu, bool isMainMenu, const Shortcuts& shortcuts, Output& output);

/// The key that the text of an item names behind its tab, as Qt writes it; empty when it names none.
std::string KeysOf(const std::string& text);

} // namespace vm::rc
