#!/usr/bin/python3
"""The Librarian as a screen reader sees it: through AT-SPI, on a session bus of the test's own."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from display import Display, Program, Timeout, stop, wait_for

bundle = None  # Librarian.app
data = None    # the folder of the banks
display = None
Atspi = None   # imported once its bus is there


class Bus:
    """A session bus that starts the accessibility bus on demand, for a `with` statement."""

    def __init__(self, environment):
        self.folder = tempfile.mkdtemp(prefix="bus-")
        os.chmod(self.folder, 0o700)
        self.environment = {**environment, "XDG_RUNTIME_DIR": self.folder}
        self.process = None

    def __enter__(self):
        try:
            self.process = subprocess.Popen(
                ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                env=self.environment, text=True)
            address = self.process.stdout.readline().strip()
            if not address:
                raise RuntimeError(f"no session bus (exit code {self.process.wait()})")
        except BaseException:
            self.__exit__()
            raise
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        return self

    def __exit__(self, *_):
        if self.process:
            stop(self.process)  # the accessibility bus ends with it
            self.process.stdout.close()
        shutil.rmtree(self.folder, ignore_errors=True)


def children(node):
    try:
        return [node.get_child_at_index(i) for i in range(node.get_child_count())]
    except Exception:  # it went meanwhile
        return []


def walk(node):
    """The node and all below it that are still there, parents first."""
    pending = [node]
    while pending:
        one = pending.pop(0)
        if one:
            yield one
            pending = children(one) + pending


def facts(node):
    try:
        return node.get_role_name(), node.get_name() or ""
    except Exception:
        return "gone", ""


def labels(node):
    """The names of what labels the node: a combo box is named by its text."""
    labelled = Atspi.RelationType.LABELLED_BY
    return [relation.get_target(0).get_name() for relation in node.get_relation_set()
            if relation.get_relation_type() == labelled]


class Accessibility(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        executable = bundle / "Contents/MacOS/Librarian"
        self.program = Program(display, executable, self.folder, data / "voices.syx",
                               environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                                            "VMCORE_MESSAGEBOX": ""})
        self.addCleanup(self.program.__exit__)
        self.program.expect(r"opened voices.syx \d+ messages")
        self.window = display.window("Librarian")
        self.application = wait_for("the program among the accessible ones", self.find_program)

    def find_program(self):
        desktop = Atspi.get_desktop(0)
        desktop.clear_cache()
        for application in children(desktop):
            if application and application.get_process_id() == self.program.process.pid:
                return application
        return None

    def find(self, role, name):
        self.application.clear_cache()
        for node in walk(self.application):
            found, own = facts(node)
            if found == role and (own == name or name in labels(node)):
                return node
        return None

    def expect(self, role, name):
        try:
            return wait_for(f"a {role} '{name}'", lambda: self.find(role, name))
        except Timeout as error:
            seen = [facts(node) for node in walk(self.application)]
            raise Timeout(f"{error}; there are {seen}") from None

    def has_state(self, node, state):
        node.clear_cache()
        return node.get_state_set().contains(state)

    def test_parts_of_the_window_have_names_and_roles(self):
        for role, name in (("table", "Messages"), ("image", "Bytes of the message"),
                           ("tree", "Instruments and banks"),
                           ("image", "Monitor of the MIDI input"),
                           ("image", "The message at a glance"), ("status bar", "Status")):
            with self.subTest(role):
                node = self.expect(role, name)
                self.assertTrue(self.has_state(node, Atspi.StateType.SHOWING))
                inside = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
                left, top, width, height = display.geometry(self.window)
                self.assertTrue(left <= inside.x and inside.x + inside.width <= left + width)
                self.assertTrue(top <= inside.y and inside.y + inside.height <= top + height)

    def test_header_is_named_by_what_it_shows(self):
        def header():
            self.application.clear_cache()
            names = [name for role, name in map(facts, walk(self.application)) if role == "label"]
            return next((name for name in names if "voices" in name.lower()), None)

        wait_for("the bank's name in the header", header)

    def test_menu_items_and_cells_can_be_reached(self):
        for role, name in (("menu item", "File"), ("menu item", "MIDI")):
            self.expect(role, name)
        rows = self.expect("table", "Messages")
        self.assertGreater(Atspi.Table.get_n_rows(rows), 0)
        self.assertTrue(Atspi.Table.get_accessible_at(rows, 0, 1).get_name())

    def test_controls_of_dialogs_have_their_labels_as_names(self):
        dialogs = {"ctrl+p": [("combo box", "Output:"), ("combo box", "Input:"),
                              ("check box", "Slow transfer: 1,000 bytes a second"),
                              ("push button", "OK"), ("push button", "Cancel")],
                   "ctrl+i": [("label", "voices.syx, 1 message"), ("text", "Author:"),
                              ("text", "Comment:"), ("push button", "Clear Both...")],
                   "ctrl+shift+s": [("text", "File name:"), ("push button", "Save")]}
        for key, controls in dialogs.items():
            display.key(key)
            for role, name in controls:
                with self.subTest(key, role=role, name=name):
                    self.expect(role, name)
            display.key("Escape")
            wait_for("the dialog to close", lambda last=controls[-1]: not self.find(*last))
        display.key("ctrl+f")  # the find bar, embedded in the window
        for role, name in (("text", "Find:"), ("push button", "Next"), ("push button", "Close")):
            self.expect(role, name)

    def test_focus_is_told(self):
        hexadecimal = self.expect("image", "Bytes of the message")
        self.assertTrue(self.has_state(hexadecimal, Atspi.StateType.FOCUSABLE))
        place = Atspi.Component.get_extents(hexadecimal, Atspi.CoordType.SCREEN)
        display.click(place.x + place.width // 2, place.y + place.height // 2)
        wait_for("the focus on the hex pane",
                 lambda: self.has_state(hexadecimal, Atspi.StateType.FOCUSED))
        display.key("Tab")
        wait_for("the focus on the tree",
                 lambda: self.has_state(self.expect("tree", "Instruments and banks"),
                                        Atspi.StateType.FOCUSED))
        display.key("Tab")
        wait_for("the focus on the list",
                 lambda: self.has_state(self.expect("table", "Messages"), Atspi.StateType.FOCUSED))


def import_atspi():
    import gi
    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi as module
    return module


if __name__ == "__main__":
    bundle, data = map(pathlib.Path, sys.argv[1:3])
    bundle, data = bundle.resolve(), data.resolve()
    with Display() as display, Bus(display.environment) as bus:
        display.environment = bus.environment
        os.environ.update(bus.environment)
        Atspi = import_atspi()
        result = unittest.main(argv=sys.argv[:1], exit=False, verbosity=2).result
    sys.exit(not result.wasSuccessful())
