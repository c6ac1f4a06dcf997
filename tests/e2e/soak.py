#!/usr/bin/python3
"""The Librarian driven at random for minutes, with real keys, clicks and window-manager requests, while
rules for its trace, its log and its resources are looked at after every action.

soak.py BUNDLE DATA OUT [--seconds N] [--seed N] [--sanitized]
An action's number and the seed decide what it does; when something breaks, what shows it goes to OUT. After each one, also after an action that was
given up in its middle, no dialog and no menu is open.
"""

import argparse
import collections
import logging
import pathlib
import random
import shutil
import string
import sys
import tempfile
import time
from dataclasses import dataclass
from typing import Callable

from display import LIMIT, Display, Program, Timeout, wait_for
from drag import FileDrag
from menufile import read_menus
from ping import Ping
from soakwatch import Broken, LogRules, Resources, Tail, TraceRules, rise, slope
from test_ftp import PASSWORD, USER, Server

GIVEN_UP = 0.1     # of all actions end in their middle
CLICK = 0.11       # seconds after which a button is clicked that a key has pressed
LARGE = 2000       # messages of the largest bank that is dropped

# After the first minute, or a third of a shorter drive, in which much still comes up the first time:
GROWTH = 1024      # kB a minute that resident memory may grow by
EARLY = 8192       # the same in a shorter drive
DESCRIPTORS = 4    # by how many the first and the last third of the drive may differ
THREADS = 3

WORDS = string.ascii_letters + string.digits
TYPED = WORDS + " ;=[]%'\"\\()&,+-"
MOVES = ["Up", "Down", "Left", "Right", "Home", "End", "Prior", "Next", "Tab", "shift+Tab"]
FILE_DIALOG = ("Save", "Open", "Folder")  # in titles: there only names are typed


class GivenUp(Exception):
    """The action's inputs are used up."""


@dataclass
class Action:
    name: str
    weight: int
    possible: Callable
    run: Callable


def always(_):
    return True


class Soak:
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
                       "VMCORE_MESSAGEBOX": "", "XDG_DOCUMENTS_DIR": str(self.folder)}
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
        """Ends the program by asking it to until it does, then looks at what it left."""
        self.inputs_left = None
        self.settle()

        def closed():
            if not self.dialogs():
                ask()
            else:
                self.display.key("alt+n")  # changes are not saved
            return self.has_ended(0.3)

        wait_for("the program to end", closed, 3 * LIMIT)
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
        self.ping.wait(self.main, self.program.process.pid)

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

    # Actions

    def choose_item(self, rng):
        menu = rng.choice(self.menus)
        items = [key for key, _, title in menu.items if key and title != "Quit"]
        self.key(f"alt+{menu.key}")
        if not self.appears():
            return  # another control has this key now
        self.key(rng.choice(items + ["1", "2"]))
        for _ in range(rng.randrange(3)):  # into a sub-menu, or into what came up
            self.key(rng.choice(["Down", "Right", "Return"]))
        if self.appears(0.2):
            self.fill_dialog(rng)

    def open_dialog(self, rng):
        self.key(rng.choice(["ctrl+p", "ctrl+i", "ctrl+shift+s", "ctrl+shift+f"]))
        if self.appears():
            self.fill_dialog(rng)

    def fill_dialog(self, rng):
        """Random input, then accepted, cancelled or closed."""
        if any(word in self.title(window) for window in self.dialogs() for word in FILE_DIALOG):
            self.type("".join(rng.choices(WORDS, k=5)))
        else:
            self.random_keys(rng, rng.randrange(12))
        rng.choice([lambda: self.key("Return"), lambda: self.key("Escape"),
                    lambda: self.close_dialog()])()

    def close_dialog(self):
        for window in self.dialogs()[-1:]:
            self.display.run("wmctrl", "-i", "-c", window, check=False)

    def random_keys(self, rng, count):
        for _ in range(count):
            if rng.random() < 0.5:
                self.key(rng.choice(MOVES + ["space"]))
            else:
                self.type("".join(rng.choices(TYPED, k=rng.randrange(1, 9))))

    def type_blindly(self, rng):
        self.random_keys(rng, rng.randrange(2, 15))
        self.key(rng.choice(["Return", "Escape", "F1", "F5", "ctrl+g", "ctrl+h", "ctrl+e", "ctrl+d"]))

    def find(self, rng):
        self.key("ctrl+f")
        self.type(rng.choice(["six", "timbre", "roland", "".join(rng.choices(TYPED, k=4))]))
        self.key(*rng.choices(["Return", "alt+n", "ctrl+g"], k=rng.randrange(4)), "Escape")

    def open_bank(self, key, name, part):
        """Opens a bank and selects its first message with this text, without knowing where it stands
        on the screen. False when the program is sending, and so stays with the bank it has."""
        begin = len(self.reported)
        self.key(key)
        if self.opens(begin) != f"opened {name}.syx":
            return False
        self.key("ctrl+f", "ctrl+a")
        self.type(part)
        self.wait_report(begin, f"found {part}: yes")
        self.key("Escape")
        return True

    def opens(self, begin):
        """The first words of how opening ended. Changes are not saved when that is asked."""

        def found():
            self.reported += self.report.lines()
            if self.dialogs():
                self.display.key("alt+n")
                self.rest()
            return next((line for line in self.reported[begin:]
                         if line.startswith(("opened ", "failed "))), None)

        return " ".join(wait_for("a bank to open", found).split()[:2])

    def send(self, _):
        if not self.open_bank("ctrl+2", "patches", "timbre"):
            return
        begin = len(self.reported)
        self.key("ctrl+Return")
        self.wait_report(begin, "sending")
        received = self.wait_report(begin, "received")
        if not received.endswith("identical"):
            raise Broken(received)

    def send_again_and_again(self, rng):
        for _ in range(rng.randrange(2, 6)):
            self.key("ctrl+Return", rng.choice(["Down", "Up", "Next"]))

    def edit_voice(self, rng):
        if not self.open_bank("ctrl+1", "voices", "six"):
            return
        self.key("ctrl+t")
        for _ in range(rng.randrange(3, 12)):
            self.key(rng.choice(MOVES[:6] + ["Tab"] * 4 + ["space", "alt+l", "alt+d", "alt+s"]))
        if rng.random() < 0.5:
            self.resize(rng)
        self.key(rng.choice(["ctrl+t", "alt+c", "ctrl+1", "ctrl+2"]))

    def drop(self, rng):
        self.count()
        paths = rng.choices(sorted(self.banks.iterdir()) + [self.banks, self.banks / "gone.syx"],
                            k=rng.choice([1, 1, 1, 3]))
        left, top, width, height = self.display.geometry(self.main)
        drag = FileDrag(self.display.environment["DISPLAY"], paths)
        drag.drop(self.main, left + width // 2, top + height // 2)
        drag.display.close()

    def ftp(self, rng):
        self.key("ctrl+shift+f")
        if not self.appears():
            return
        for key, text in (("alt+s", self.server.address), ("alt+u", USER), ("alt+p", PASSWORD)):
            self.key(key, "ctrl+a")
            self.type(text)
        self.key("Return")
        for _ in range(rng.randrange(1, 5)):
            self.wait_quietly(rng.random() / 4)
            self.key(rng.choice(["alt+l", "alt+f", "alt+d", "alt+a", "alt+e", "Return", "Escape"]))

    def wait_quietly(self, seconds):
        """The program goes on, and so do its rules."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.check_rules()
            time.sleep(0.02)

    def resize(self, rng):
        self.count()
        self.display.run("xdotool", "windowsize", self.main, str(rng.randrange(300, 1250)),
                         str(rng.randrange(200, 850)))

    def move(self, rng):
        self.count()
        self.display.run("xdotool", "windowmove", self.main, str(rng.randrange(-50, 400)),
                         str(rng.randrange(20, 300)))

    def minimise(self, _):
        self.count()
        self.display.run("xdotool", "windowminimize", self.main)
        wait_for("the window to go", lambda: self.main not in self.windows())
        self.display.run("wmctrl", "-i", "-a", self.main)
        wait_for("the window to come", lambda: self.main in self.windows())

    def maximise(self, _):
        for _ in range(2):
            self.count()
            self.display.run("wmctrl", "-i", "-r", self.main, "-b",
                             "toggle,maximized_vert,maximized_horz")

    def click(self, rng):
        self.pointer(rng, "click", "--repeat", rng.choice("12"), "--delay", "30",
                     rng.choice("1113"))

    def wheel(self, rng):
        self.pointer(rng, "click", "--repeat", str(rng.randrange(1, 15)), "--delay", "5",
                     rng.choice("45"))

    def start_again(self, rng):
        self.end(rng.choice([lambda: self.display.key("ctrl+q"),
                             lambda: self.display.close(self.main)]))
        self.start()

    def may_start_again(self):
        """Soon once, and then at long intervals: growth shows in a long life only."""
        age = time.monotonic() - self.born
        return age > (5 if len(self.lives) == 1 else 300)

    def actions(self):
        return [
            Action("choose a menu item", 12, always, self.choose_item),
            Action("open a dialog", 10, always, self.open_dialog),
            Action("type blindly", 8, always, self.type_blindly),
            Action("find", 5, always, self.find),
            Action("send and receive", 6, Soak.is_quiet, self.send),
            Action("send again and again", 3, always, self.send_again_and_again),
            Action("edit a voice", 6, always, self.edit_voice),
            Action("drop files", 5, always, self.drop),
            Action("banks on a server", 4, always, self.ftp),
            Action("resize", 4, always, self.resize),
            Action("move", 2, always, self.move),
            Action("minimise and restore", 2, always, self.minimise),
            Action("maximise and restore", 2, always, self.maximise),
            Action("click somewhere", 8, always, self.click),
            Action("turn the wheel", 4, always, self.wheel),
            Action("close and start again", 3, Soak.may_start_again, self.start_again),
        ]

    def is_quiet(self):
        """Nothing is being sent."""
        states = [line.split()[0] for line in self.reported
                  if line.startswith(("sending ", "received "))]
        return not states or states[-1] == "received"

    # The drive

    def run(self):
        actions = self.actions()
        self.began = time.monotonic()
        self.start()
        number, taken = 0, 0.0
        while time.monotonic() - self.began < self.seconds:
            number += 1
            self.perform(number, actions)
            if time.monotonic() - taken > self.seconds / 200:
                self.resources.take(time.monotonic() - self.born)
                taken = time.monotonic()
        self.end(lambda: self.display.close(self.main))
        self.server.stop()
        self.check_resources()

    def perform(self, number, actions):
        rng = random.Random(f"{self.seed}/{number}")
        possible = [each for each in actions if each.possible(self)]
        action = rng.choices(possible, [each.weight for each in possible])[0]
        self.inputs_left = rng.randrange(1, 8) if rng.random() < GIVEN_UP else None
        self.history.append(f"{number}: {action.name}")
        try:
            action.run(rng)
        except GivenUp:
            self.history[-1] += " (given up)"
        self.inputs_left = None
        self.settle()
        self.check_rules()
        self.trace.check_at_rest()
        self.done[action.name] += 1

    def warm_samples(self):
        groups = [life.behind(self.warm) for life in self.lives]
        return [group for group in groups if len(group) > 2]

    def check_resources(self):
        groups = self.warm_samples()
        if not groups:
            raise Broken("no life of the program was long enough to be measured")
        growth = slope(groups, 1)
        if growth > (GROWTH if self.seconds >= 300 else EARLY) and not self.sanitized:
            raise Broken(f"memory grows by {growth:.0f} kB a minute")
        for column, name, bound in ((2, "descriptors", DESCRIPTORS), (3, "threads", THREADS)):
            for group in groups:
                if rise(group, column) > bound:
                    raise Broken(f"{name} grow: {[sample[column] for sample in group]}")

    def keep(self, out):
        """What shows the state in which the drive failed."""
        out.mkdir(parents=True, exist_ok=True)
        self.display.run("import", "-window", "root", str(out / "screen.png"), check=False)
        for name in ("trace.jsonl", "log.txt", "report.txt"):
            shutil.copy(self.folder / name, out)
        print("windows:", *map(self.title, self.windows()), sep="\n  ")
        print("reported last:", *self.program.lines()[-8:], sep="\n  ")
        print(f"screen, trace, log and report are in {out}")

    def summary(self):
        seconds = time.monotonic() - self.began
        yield f"seed {self.seed}, {seconds:.0f} s, {sum(self.done.values())} actions:"
        for name, count in self.done.most_common():
            yield f"  {count:5} {name}"
        yield (f"messages {sum(self.messages.values())}, of them "
               f"{self.messages['WM_PAINT']} to paint (frames)")
        for life in self.lives:
            if not life.samples:
                continue
            first, last = life.samples[0], life.samples[-1]
            yield (f"lived {last[0]:.0f} s: memory {first[1]} to {last[1]} kB, "
                   f"descriptors {first[2]} to {last[2]}, threads {first[3]} to {last[3]}")
            tenth = max(1, len(life.samples) // 10)
            yield "  in MB: " + " ".join(f"{sample[1] / 1024:.1f}" for sample in life.samples[::tenth])
        groups = self.warm_samples()
        if groups:
            yield f"memory behind the first {self.warm:.0f} s: {slope(groups, 1):+.0f} kB a minute"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("bundle", type=pathlib.Path)
    parser.add_argument("data", type=pathlib.Path)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--sanitized", action="store_true", help="memory is not judged")
    options = parser.parse_args()
    logging.disable()
    folder = pathlib.Path(tempfile.mkdtemp(prefix="soak-"))
    try:
        with Display() as display:
            soak = Soak(options, display, folder)
            try:
                soak.run()
            except (Broken, Timeout, RuntimeError, OSError) as error:
                print(f"soak failed: {type(error).__name__}: {error}")
                print("the last actions:", *soak.history, sep="\n  ")
                soak.keep(options.out)
                return 1
            finally:
                print(*soak.summary(), sep="\n")
                soak.program.__exit__()
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
