#!/usr/bin/python3
"""Every menu item and dialog of the Librarian, worked with real keys and mouse on a virtual display.

test_drive.py BUNDLE DATA OUT [--rounds N]
Screenshots of the dialogs go to OUT. Nothing waits for a time: a step waits for the lines of the
message trace and of the program's report, and for windows.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

from display import Display, Program, wait_for
from drag import FileDrag
from trace import Trace

EN_CHANGE, BN_CLICKED, CBN_SELCHANGE = 0x4, 0x66, 0x74
ABOUT = 57664  # the application's own command: no window gets it

# Menu's key, item's key, command. The other items are for the dialogs below.
ITEMS = {
    "alt+m": [("s", 1101), ("c", 1107), ("v", 1102), ("l", 1103)],
    "alt+e": [("c", 1605), ("n", 1604)],
    "alt+f": [("v", 1001), ("p", 1002)],
    "alt+v": [("h", 1202), ("t", 1203), ("x", 1201), ("d", 1204), ("m", 1205)] * 2,
}


class Drive:
    def __init__(self, bundle, data, out):
        self.bundle, self.data, self.out = bundle.resolve(), data.resolve(), out

    def run(self):
        folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        try:
            with Display() as self.display:
                self.start(folder, self.data / "patches.syx")
                for step in (self.menus, self.about, self.help, self.plugins, self.ports, self.details, self.ftp,
                             self.find, self.pointer, self.drop, self.window_manager, self.open_bank,
                             self.whole_banks, self.save, self.sheet, self.delete_and_quit):
                    step()
            self.check_every_item()
        finally:
            shutil.rmtree(folder, ignore_errors=True)

    def start(self, folder, bank):
        self.folder = folder
        self.trace = Trace(folder / "trace.jsonl")
        environment = {**self.trace.environment(), "VMCORE_MESSAGEBOX": "",
                       "XDG_DOCUMENTS_DIR": str(folder), **self.browser()}
        executable = self.bundle / "Contents/MacOS/Librarian"
        self.program = Program(self.display, executable, folder, bank, environment=environment)
        self.program.expect(r"opened .* 64 messages")
        self.program.plugins()
        self.main = self.display.window("Librarian")
        self.display.wait_drawn(self.main)
        self.windows_at_rest = self.visible_windows()

    def browser(self):
        """A browser that only writes down what it shall show."""
        self.shown = self.folder / "shown"
        script = self.folder / "bin/xdg-open"
        script.parent.mkdir()
        script.write_text(f'#!/bin/sh\necho "$1" >"{self.shown}"\n')
        script.chmod(0o755)
        return {"PATH": f"{script.parent}:{os.environ['PATH']}", "BROWSER": str(script)}

    # Steps that others are made of

    def visible_windows(self):
        return len(self.display.run("xdotool", "search", "--onlyvisible", "--pid",
                                    str(self.program.process.pid), check=False).split())

    def wait_at_rest(self):
        wait_for("all menus and dialogs to close",
                 lambda: self.visible_windows() == self.windows_at_rest)

    def choose(self, menu, item, command):
        self.open_menu(menu, command)
        self.display.key(item)
        self.trace.expect("WM_COMMAND", wParam=command)
        self.wait_at_rest()

    def open_menu(self, menu, command):
        self.display.window("Librarian")  # which a dialog may have left a moment ago
        self.trace.skip()
        self.display.key(menu)
        self.trace.expect("WM_UPDATECOMMANDUI", wParam=command)
        wait_for("the menu", lambda: self.visible_windows() > self.windows_at_rest)

    def open_dialog(self, keys, kind, title):
        """A dialog by the keys that open it; its window."""
        self.trace.skip()
        for key in keys:
            self.display.key(key)
        self.trace.expect("WM_INITDIALOG", **{"class": kind})
        window = self.display.window(title)
        self.display.wait_drawn(window)
        self.display.screenshot(window, self.out / f"{title.lower().replace(' ', '-')}.png")
        return window

    def type(self, text, kind):
        self.display.run("xdotool", "type", "--delay", "0", text)
        for _ in text:
            self.trace.expect("WM_COMMAND", high=EN_CHANGE, **{"class": kind})

    # The drive

    def menus(self):
        self.display.click(*self.first_row())
        self.program.expect("selected 1")
        for menu, items in ITEMS.items():
            for item, command in items:
                self.choose(menu, item, command)
        self.program.expect("opened patches.syx 64 messages")
        left, top, _, _ = self.display.geometry(self.main)
        for item, name in ((2, "voices"), (3, "patches")):  # the same with the mouse
            self.display.click(left + 20, top + 9)
            wait_for("the menu", lambda: self.visible_windows() > self.windows_at_rest)
            self.display.click(left + 60, top + 10 + 22 * item)
            self.program.expect(f"opened {name}.syx .*")
            self.wait_at_rest()

    def about(self):
        self.trace.skip()
        self.display.key("alt+h")
        wait_for("the menu", lambda: self.visible_windows() > self.windows_at_rest)
        window = self.open_dialog(["a"], "AboutDialog", "About Librarian")
        left, top, width, height = self.display.geometry(window)
        self.display.click(left + width - 50, top + height - 20)
        self.program.expect("about")
        self.wait_at_rest()

    def help(self):
        self.display.key("F1")
        self.program.expect("help")
        page = wait_for("the page", lambda: self.shown.exists() and self.shown.read_text().strip())
        assert page.endswith("/Resources/LibrarianHelp/index.html#DV_1"), page

    def plugins(self):
        self.trace.skip()
        self.display.key("alt+h")
        wait_for("the menu", lambda: self.visible_windows() > self.windows_at_rest)
        self.open_dialog(["p"], "PluginsDialog", "Plug-ins")
        self.display.key("Return")
        self.program.expect("plug-ins closed")
        self.wait_at_rest()
        self.display.key("ctrl+1")
        self.program.expect("opened voices.syx 1 messages")
        self.display.click(*self.first_row())
        self.program.expect("selected 1")
        for report in ("editor shows 1", "editor closed"):
            self.choose("alt+e", "v", 1701)
            self.program.expect(report)
        self.display.key("ctrl+2")
        self.program.expect("opened patches.syx 64 messages")

    def ports(self):
        self.open_dialog(["ctrl+p"], "PortsDialog", "MIDI Ports")
        self.display.key("alt+s")  # the check box
        self.trace.expect("WM_COMMAND", low=1003, high=BN_CLICKED)
        self.display.key("Escape")
        self.program.expect("ports cancelled")
        window = self.open_dialog(["ctrl+p"], "PortsDialog", "MIDI Ports")
        self.display.close(window)
        self.program.expect("ports cancelled")
        self.open_dialog(["ctrl+p"], "PortsDialog", "MIDI Ports")
        self.display.key("alt+s")
        self.trace.expect("WM_COMMAND", low=1003, high=BN_CLICKED)
        self.display.key("Return")
        self.program.expect("ports accepted")
        self.program.expect("slow .*")
        self.wait_at_rest()

    def details(self):
        self.open_dialog(["ctrl+i"], "DetailsDialog", "Bank Details")
        self.display.key("alt+a")
        self.type("Anna", "DetailsDialog")
        self.display.key("Tab")
        self.type("Pads", "DetailsDialog")
        self.display.key("Return")
        self.program.expect("details accepted")
        self.open_dialog(["ctrl+i"], "DetailsDialog", "Bank Details")
        self.open_dialog(["alt+b"], "CDialog", "Clear Details")
        self.display.key("Escape")
        wait_for("the question to close", lambda: not self.display.find("Clear Details"))
        self.open_dialog(["alt+b"], "CDialog", "Clear Details")
        self.display.key("Return")
        self.program.expect("cleared")
        self.display.window("Bank Details")
        self.display.key("alt+a")
        self.type("a;b", "DetailsDialog")
        self.display.key("Return")  # cannot be kept: a box, and the dialog stays
        self.program.expect("details refused")
        wait_for("the box", lambda: self.visible_windows() >= self.windows_at_rest + 2)
        self.display.key("Return")
        wait_for("the box to close", lambda: self.visible_windows() == self.windows_at_rest + 1)
        self.display.key("Escape")
        self.program.expect("details cancelled")
        self.wait_at_rest()

    def ftp(self):
        self.trace.skip()
        self.open_dialog(["alt+f", "t"], "FtpDialog", "Banks on a Server")
        self.type("no server", "FtpDialog")
        self.display.key("Return")
        self.program.expect("ftp refused")
        self.display.key("alt+c")
        self.program.expect("ftp closed")
        self.wait_at_rest()

    def find(self):
        self.display.key("ctrl+f")
        self.program.expect("find bar shown")
        self.type("timbre", "FindBar")
        self.program.expect("found timbre: yes")
        self.display.key("Return")
        self.program.expect("found timbre: yes")
        self.display.key("alt+n")
        self.program.expect("found timbre: yes")
        self.display.screenshot(self.main, self.out / "find-bar.png")
        self.display.key("Escape")
        self.program.expect("find bar hidden")

    def pointer(self):
        left, top, width, height = self.display.geometry(self.main)
        pane = left + 330, top + height - 250
        self.trace.skip()
        self.display.click(*pane)
        self.trace.expect("WM_LBUTTONDOWN", **{"class": "HexPane"})
        self.trace.expect("WM_LBUTTONUP", **{"class": "HexPane"})
        self.display.click(*pane, button=5)
        self.trace.expect("WM_MOUSEWHEEL", **{"class": "HexPane"})
        for _ in range(2):  # chosen with the keyboard, then with the mouse
            self.display.click(*pane, button=3)
            self.program.expect("context menu")
            wait_for("the menu", lambda: self.visible_windows() > self.windows_at_rest)
            self.display.key("Escape")
            self.trace.expect("WM_EXITMENULOOP")
            self.wait_at_rest()
        self.display.run("xdotool", "mousemove", str(left + 330), str(top + 150),
                         "click", "--repeat", "2", "--delay", "40", "1")  # a message of the list
        self.program.expect(r"sending \d+")
        self.program.expect(r"received \d+ identical")

    def drop(self):
        left, top, width, height = self.display.geometry(self.main)
        self.trace.skip()
        for name, count in (("voices", 1), ("patches", 64)):
            drag = FileDrag(self.display.environment["DISPLAY"], [self.data / f"{name}.syx"])
            assert drag.drop(self.main, left + width // 2, top + height // 2)
            self.program.expect(f"opened {name}.syx {count} messages")
            self.trace.expect("WM_DROPFILES", **{"class": "MainFrame"})
        drag = FileDrag(self.display.environment["DISPLAY"],
                        [self.data / name for name in ("voices.syx", "make_banks.py", "patches.syx")])
        assert drag.drop(self.main, left + width // 2, top + height // 2)
        self.program.expect("joined 2 files, 65 messages")
        self.display.window(r"^\*Joined bank.syx")
        self.display.key("ctrl+2")
        self.program.expect("asks save")
        wait_for("the question", lambda: self.visible_windows() > self.windows_at_rest)
        self.display.key("alt+n")
        self.program.expect("opened patches.syx 64 messages")

    def window_manager(self):
        self.trace.skip()
        self.display.run("xdotool", "windowminimize", self.main)
        self.trace.expect("WM_MOVE", wParam=1)
        self.display.run("wmctrl", "-i", "-a", self.main)
        self.trace.expect("WM_MOVE", wParam=0)
        self.display.window("Librarian")

    def save(self):
        for replaced in (False, True):
            self.display.key("ctrl+shift+s")
            self.program.expect("dialog save")
            window = self.display.window("Save Bank As")
            self.display.wait_drawn(window)
            self.display.wait_active(window)
            self.display.screenshot(window, self.out / "save-bank-as.png")
            self.display.key("ctrl+a")
            self.display.run("xdotool", "type", "--delay", "0", "mine")
            self.display.key("Return")
            if replaced:
                wait_for("the question", lambda: self.visible_windows() >= self.windows_at_rest + 2)
                self.display.key("alt+y")
            self.program.expect("saved bank mine.syx")
            self.wait_at_rest()
        saved = next(self.folder.rglob("mine.syx"))
        assert saved.read_bytes() == (self.data / "patches.syx").read_bytes()

    def open_bank(self):
        # Where the dialog begins: while it looks into the folders of a whole path, it changes what is typed.
        banks = self.folder / "Documents"
        banks.mkdir(exist_ok=True)
        shutil.copy(self.data / "voices.syx", banks)
        self.display.key("ctrl+o")
        self.program.expect("dialog open")
        window = self.display.window("Open Bank")
        self.display.wait_drawn(window)
        self.display.wait_active(window)
        self.display.run("xdotool", "type", "--delay", "0", "voices.syx")
        self.display.key("Return")
        self.program.expect("opened voices.syx 1 messages")
        self.wait_at_rest()
        self.display.key("ctrl+2")
        self.program.expect("opened patches.syx 64 messages")

    def sheet(self):
        self.open_menu("alt+f", 1007)
        self.display.key("d")
        self.program.expect("dialog sheet")
        self.display.wait_drawn(self.display.window("Patch Sheet as PDF"))
        self.display.key("ctrl+a")
        self.display.run("xdotool", "type", "--delay", "0", "sheet")
        self.display.key("Return")
        self.program.expect("sheet sheet.pdf")
        self.wait_at_rest()
        page = self.display.run("pdftotext", "-layout", next(self.folder.rglob("sheet.pdf")), "-")
        assert all(text in page for text in ("mine.syx", "64 messages", "57 Timbre A57")), page

    def whole_banks(self):
        self.choose("alt+m", "b", 1105)
        self.program.expect("bank: Sent 64 of 64 messages")
        self.display.key("ctrl+1")
        self.program.expect("opened voices.syx 1 messages")
        self.display.click(*self.first_row())
        self.program.expect("selected 1")
        self.display.key("ctrl+Return")  # slow by now: it arrives when the dialog is there
        self.program.expect("sending 4104")
        self.open_menu("alt+m", 1106)
        self.open_dialog(["r"], "ReceiveBankDialog", "Receive Bank")
        self.program.expect("taken 4104")
        self.display.key("alt+k")
        self.program.expect("received bank 1 messages")
        self.wait_at_rest()
        self.display.key("ctrl+2")
        self.program.expect("asks save")
        wait_for("the question", lambda: self.visible_windows() > self.windows_at_rest)
        self.display.key("alt+n")
        self.program.expect("opened patches.syx 64 messages")

    def delete_and_quit(self):
        self.display.click(*self.first_row())
        self.program.expect("selected 1")
        self.display.key("ctrl+d")
        self.program.expect("deleted 1, 63 left")
        self.quit("Escape", "kept open")
        self.display.key("ctrl+s")
        self.program.expect("saved bank mine.syx")
        self.display.key("ctrl+d")
        self.program.expect("deleted 1, 62 left")
        self.quit("alt+n", "closed")
        assert self.program.wait() == 0, self.program.log()

    def quit(self, key, answer):
        self.display.key("ctrl+q")
        self.program.expect("asks save")
        wait_for("the question", lambda: self.visible_windows() > self.windows_at_rest)
        self.display.key(key)
        self.program.expect(answer)

    def first_row(self):
        left, top = self.display.content(self.main, self.program)
        return left + 330, top + 64 + 36

    def check_every_item(self):
        """What the drive chose is what the menu file holds."""
        menu = (self.bundle / "Contents/Resources/MainMenu.ui").read_text()
        items = {int(tag) for tag in re.findall(r'name="tag"[^>]*><number>(\d+)<', menu)}
        missing = items - {ABOUT} - self.trace.commands()
        assert not missing, f"the drive never chose {sorted(missing)}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundle", type=pathlib.Path)
    parser.add_argument("data", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=1)
    parser.add_argument("--load", type=int, default=0, help="busy loops beside it")
    options = parser.parse_args()
    options.out.mkdir(parents=True, exist_ok=True)
    busy = [subprocess.Popen(["sh", "-c", "while :; do :; done"]) for _ in range(options.load)]
    try:
        for number in range(options.rounds):
            Drive(options.bundle, options.data, options.out).run()
            print(f"round {number + 1} of {options.rounds} went through", flush=True)
    finally:
        for process in busy:
            process.kill()


if __name__ == "__main__":
    main()
