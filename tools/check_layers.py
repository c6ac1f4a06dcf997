#!/usr/bin/python3
"""check_layers.py SOURCE_FOLDER

Fails when a module of the library includes one above it. SOURCE_FOLDER is the project's.
"""

import pathlib
import re
import sys

# From the bottom up.
MODULES = ["core", "platform", "app", "files", "midi", "net", "gdi", "wnd", "controls", "dialogs"]

# The sources that put the modules together: start-up, shutdown and the application's events.
COMPOSITION = {"app/lifecycle", "app/CWinApp", "app/CWinAppDelegate"}

# Headers that are open to modules below theirs, and why. Keep the list short: each entry is a circle
# that somebody has to keep in mind.
OPEN_TO = {
    "vmcore/wnd/CWnd.h": {"app", "gdi"},  # messages and paint contexts are for windows
    "vmcore/controls/CMenu.h": {"wnd"},   # every window holds a menu
    "vmcore/controls/CStatic.h": {"wnd"}, # the text of a status bar
    "vmcore/controls/CSpinButtonCtrl.h": {"wnd"},  # the record that arrows send before a step
    "controls/menuActions.h": {"wnd"},    # windows show the main menu and hand on its commands
    "controls/interfaceFile.h": {"app"},  # AfxLoadNib
}

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]((?:vmcore/)?(\w+)/[^>"]+)[>"]', re.MULTILINE)


def violations(source, folder):
    relative = source.relative_to(folder)
    module = relative.parts[0]
    if module not in MODULES or str(relative.with_suffix("")) in COMPOSITION:
        return
    for name, included in INCLUDE.findall(source.read_text()):
        if included not in MODULES or module in OPEN_TO.get(name, ()):
            continue
        if MODULES.index(included) > MODULES.index(module):
            yield f"{relative} includes {name}, which is above {module}"


def main():
    folder = pathlib.Path(sys.argv[1]).resolve() / "src"
    sources = sorted(path for path in folder.rglob("*") if path.suffix in (".h", ".cpp"))
    problems = [text for source in sources for text in violations(source, folder)]
    print("\n".join(problems) or f"{len(sources)} sources keep the order of the modules")
    return 1 if problems or not sources else 0


if __name__ == "__main__":
    sys.exit(main())
