// What `vmcore ui --help` says.
#pragma once

namespace vm::tool {

constexpr const char* kUiHelp =
    R"(Interface files are the .ui files in a bundle's Resources folder: MainMenu.ui,
MENU_<id>.ui and DLG_<id>.ui. They are read as text: no display is needed.

  vmcore ui check *.app/Contents/Resources/*.ui)";

constexpr const char* kUiCheckHelp =
    R"(Prints 'FILE:LINE: SEVERITY: KIND: TEXT' for each finding, in the order of the
lines. A file whose root is a QMenuBar or a QMenu is a menu, any other a dialog.
  error    tag (no number), refused (by the library: more than 4 MB, 64 elements in
           each other, or 1,000 rows or columns of a table or grid)
  warning  no tag (a control's commands have the number 0, nothing finds it; a
           menu item does nothing), duplicate tag (the first view is found; two
           menu items with different texts send the same command), unknown
           delegate, unknown action
  note     With --notes: no tag 1, no tag 2 (a dialog without OK or Cancel
           button), tag 1 (such a menu item is always enabled)

Labels, group boxes, button boxes and other containers need no tag, nor do
menus.

Exit status: 0 no errors and no warnings; 1 some; 2 a file cannot be read or is
no interface file.)";

} // namespace vm::tool
