"""The Librarian as the soak drives it: started and ended, given input, brought back to rest."""

import collections
import shutil
import time

from display import LIMIT, Program, Timeout, wait_for
from menufile import read_menus
from ping import Ping
from soakwatch import Broken, LogRules, Resources, Tail, TraceRules
from test_ftp import Server

CLICK = 0.11  # seconds after which a button is clicked that a key has pressed
LARGE = 2000  # messages of the largest bank that is dropped


class GivenUp(Exception):
    """The action's inputs are used up."""


class QuitChosen(Exception):
    """A key or a click that was meant for something else ended the program, as it may."""


class Driver:
    def __init__(self, options, display, folder):
        self.bundle, self.data = options.bundle.resolve(), options.data.resolve()
        self.seconds, self.seed, self.sanitized = options.seconds, options.seed, options.sanitized
        self.warm = min(60, self.seconds / 3)
        self.display, self.folder = display, folder
        self.ping = Ping(display.environment["DISPLAY"])
        self.menus = [menu for menu in read_menus(self.bundle / "Contents/Resources/MainMenu.ui")
                      if menu.key]
        self.done = collections.Counter()
        self.history = collections.deque(maxlen=20)
        self.messages = collections.Counter()
        self.lives = []
        self.inputs_left = None
        self.make_files()
        self.server = Server(self.remote)

    # Surroundings

    def make_files(self):
        self.banks, self.remote = self.folder / "banks", self.folder / "remote"
        for folder in (self.banks, self.remote):
            folder.mkdir()
        for name in ("voices", "patches"):
            shutil.copy(self.data / f"{name}.syx", self.banks)
        shutil.copy(self.data / "voices.syx", self.remote / "lead.syx")
        message = bytes.fromhex("f0411042121001") + bytes(40) + b"\xf7"
        (self.banks / "large.syx").write_bytes(message * LARGE)
        (self.banks / "cut.syx").write_bytes(message + message[:20] + b"\x90\x40" + message)
        (self.banks / "empty.syx").write_bytes(b"")
        (self.banks / "text.txt").write_text("no messages here")

    def start(self):
        trace = self.folder / "trace.jsonl"
        trace.unlink(missing_ok=True)
        environment = {"VMCORE_TRACE": "messages", "VMCORE_TRACE_FILE": str(trace),
                       "VMCORE_MESSAGEBOX": "", "XDG_DOCUMENTS_DIR": str(self.folder),
                       "BROWSER": "true"}
        self.program = Program(self.display, self.bundle / "Contents/MacOS/Librarian", self.folder,
                               self.banks / "patches.syx", environment=environment)
        self.program.expect(r"opened .*")
        self.reported = []
        self.report = Tail(self.program.report_path)
        self.trace, self.log = TraceRules(trace), LogRules(self.program.log_path)
        self.resources = Resources(self.program.process.pid)
        self.lives.append(self.resources)
        self.main = self.display.window("Librarian")
        self.display.wait_drawn(self.main)
        self.born = time.monotonic()
        self.settle()

    def end(self, ask):
        """Ends the program by asking it to until it does."""
        self.inputs_left = None
        self.settle()

        def closed():
            if not self.dialogs():
                ask()
            else:
                self.display.key("alt+n")  # changes are not saved
            return self.has_ended(0.3)

        wait_for("the program to end", closed, 3 * LIMIT)
        self.look_back()

    def look_back(self):
        """At a life that has ended."""
        if self.program.wait() != 0:
            raise Broken(f"ended with {self.program.ending()}:\n{self.program.log()[-4000:]}")
        self.check_rules()
        self.messages += self.trace.counts

    def has_ended(self, limit):
        try:
            return wait_for("its end", lambda: self.program.process.poll() is not None, limit)
        except Timeout:
            return False

    # Input, counted so that an action can end in its middle

    def count(self):
        if self.inputs_left is None:
            return
        if self.inputs_left == 0:
            raise GivenUp
        self.inputs_left -= 1

    def key(self, *keys):
        for key in keys:
            self.count()
            self.display.key(key)

    def type(self, text):
        self.count()
        self.display.run("xdotool", "type", "--delay", "0", "--", text)

    def pointer(self, rng, *commands):
        """Goes to a place in the main window and does something there."""
        self.count()
        left, top, width, height = self.display.geometry(self.main)
        self.display.run("xdotool", "mousemove", str(left + rng.randrange(width)),
                         str(top + rng.randrange(height)), *commands)

    # States

    def windows(self):
        found = self.display.run("xdotool", "search", "--onlyvisible", "--pid",
                                 str(self.program.process.pid), check=False)
        return found.split()

    def dialogs(self):
        return [each for each in self.windows() if each != self.main]

    def title(self, window):
        return self.display.run("xdotool", "getwindowname", window, check=False).strip()

    def rest(self):
        process = self.program.process
        self.ping.wait(self.main, process.pid, lambda: process.poll() is not None)
        if process.poll() == 0:
            raise QuitChosen

    def appears(self, limit=1.0):
        """Whether a menu or a dialog comes up."""
        try:
            return bool(wait_for("a window", self.dialogs, limit))
        except Timeout:
            return False

    def settle(self):
        """Closes every menu and dialog; the main window is there and has the focus."""
        tries = 0

        def settled():
            nonlocal tries
            if self.program.process.poll() is not None:
                raise Broken(f"ended by itself: {self.program.ending()}\n{self.program.log()[-4000:]}")
            self.rest()
            windows = self.windows()
            if windows == [self.main]:
                time.sleep(CLICK)
                return self.windows() == [self.main]
            tries += 1
            if self.main not in windows:
                self.display.run("wmctrl", "-i", "-a", self.main, check=False)
            elif tries % 5 == 0:
                self.display.run("wmctrl", "-i", "-c", windows[-1], check=False)
            else:
                self.display.run("xdotool", "key", "Return" if tries % 7 == 0 else "Escape")
            return False

        wait_for("dialogs and menus to close", settled, 2 * LIMIT)
        self.display.run("xdotool", "windowactivate", "--sync", self.main)

    def check_rules(self):
        self.reported += self.report.lines()
        self.log.check()
        self.trace.check()

    def wait_report(self, begin, *beginnings):
        """Waits for a line of the report behind line `begin` with one of these beginnings."""

        def found():
            self.reported += self.report.lines()
            return next((line for line in self.reported[begin:] if line.startswith(beginnings)), None)

        return wait_for(f"{beginnings} in the report", found)
