"""What the soak does to the Librarian. Each action leaves it in any state; the driver brings it to rest."""

import string
import time
from dataclasses import dataclass
from typing import Callable

from display import wait_for
from drag import FileDrag
from soakdriver import Driver
from soakwatch import Broken
from test_ftp import PASSWORD, USER

WORDS = string.ascii_letters + string.digits
TYPED = WORDS + " ;=[]%'\"\\()&,+-"
MOVES = ["Up", "Down", "Left", "Right", "Home", "End", "Prior", "Next", "Tab", "shift+Tab"]
FILE_DIALOG = ("Save", "Open", "Folder")  # in titles: there only names are typed


@dataclass
class Action:
    name: str
    weight: int
    possible: Callable
    run: Callable


def always(_):
    return True


class Actions(Driver):
    def choose_item(self, rng):
        menu = rng.choice(self.menus)
        items = [key for key, _, title in menu.items if key and title != "Quit"]
        if not self.choose(menu, rng.choice(items + ["1", "2"])):
            return
        for _ in range(rng.randrange(3)):  # into a sub-menu, or into what came up
            self.key(rng.choice(["Down", "Right", "Return"]))
        if self.dialogs():
            self.fill_dialog(rng)

    def open_dialog(self, rng):
        menu, key = rng.choice([(menu, key) for menu in self.menus
                                for key, _, title in menu.items if title.endswith("...")])
        if self.choose(menu, key) and self.dialogs():
            self.fill_dialog(rng)

    def choose(self, menu, key):
        """False when another control has the menu's key now."""
        self.key(f"alt+{menu.key}")
        if not self.appears():
            return False
        self.key(key)
        self.rest()
        return True

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
            Action("send and receive", 6, Actions.is_quiet, self.send),
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
            Action("close and start again", 12, Actions.may_start_again, self.start_again),
        ]

    def is_quiet(self):
        """Nothing is being sent."""
        states = [line.split()[0] for line in self.reported
                  if line.startswith(("sending ", "received "))]
        return not states or states[-1] == "received"
