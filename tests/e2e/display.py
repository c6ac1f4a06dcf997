"""A virtual X display with a window manager, and what a script does to windows on it.

Everything waits for what it wants to see, never for a time; a wait that takes too long raises
Timeout with the text of what was waited for.
"""

import os
import re
import signal
import subprocess
import time

LIMIT = 20.0  # seconds; generous, because a loaded machine may be slow
SETTLED = 0.3  # seconds for which a window keeps its place before it is clicked


class Timeout(Exception):
    pass


def wait_for(what, condition, limit=LIMIT):
    """Calls `condition` until it gives something true, and returns that."""
    end = time.monotonic() + limit
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Timeout(f"waited {limit:.0f} s for {what}")
        time.sleep(0.01)


def stop(process):
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


class Display:
    """Xvfb and openbox on a free display number, for a `with` statement."""

    def __init__(self, size="1280x900x24"):
        self.size = size
        self.processes = []
        self.environment = None

    def __enter__(self):
        try:
            number = self._start_server()
            self.environment = {**os.environ, "DISPLAY": f":{number}"}
            for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM"):
                self.environment.pop(name, None)
            self._start("openbox", "--sm-disable")
            wait_for("the window manager", self._has_window_manager)
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            stop(process)

    def _start(self, *command, **options):
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, env=self.environment, **options)
        self.processes.append(process)
        return process

    def _start_server(self):
        read_end, write_end = os.pipe()
        try:
            # Without -noreset the server starts over, and throws the window manager out, when a
            # question to it was the last client.
            server = self._start("Xvfb", "-displayfd", str(write_end), "-screen", "0", self.size,
                                 "-nolisten", "tcp", "-noreset", pass_fds=[write_end])
        finally:
            os.close(write_end)
        # Number and newline come in two writes; closing between them would end the server.
        with os.fdopen(read_end) as pipe:
            line = pipe.readline()
        if not line.endswith("\n"):
            raise RuntimeError(f"Xvfb did not start (exit code {server.wait()})")
        return line.strip()

    def _has_window_manager(self):
        return "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False)

    def run(self, *command, check=True):
        """The standard output of a program on this display."""
        result = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                                capture_output=True, text=True, timeout=LIMIT)
        if check and result.returncode != 0:
            raise RuntimeError(f"{' '.join(command)}: {result.stderr.strip()}")
        return result.stdout

    # Input

    def key(self, *keys):
        self.run("xdotool", "key", *keys)

    def click(self, x, y, button=1):
        # Without --sync, which waits in vain when the pointer is there already.
        self.run("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def click_in(self, window, x, y, button=1):
        """Clicks at a place inside the window."""
        left, top, _, _ = self.geometry(window)
        self.click(left + x, top + y, button)

    def menu(self, *keys):
        """Opens a menu with the first key and chooses with the others."""
        self.key(keys[0])
        for key in keys[1:]:
            time.sleep(0.15)  # the menu's own delay against accidental choice
            self.key(key)

    # Windows

    def window(self, title):
        """Waits for a window whose title contains `title`, activates it and returns its id."""
        found = wait_for(f"a window '{title}'", lambda: self.find(title))
        self.run("xdotool", "windowactivate", "--sync", found)
        return found

    def find(self, title):
        ids = self.run("xdotool", "search", "--onlyvisible", "--name", title, check=False).split()
        return ids[-1] if ids else None

    def geometry(self, window):
        """Left, top, width and height of the window's inside, on the screen."""
        text = self.run("xwininfo", "-id", window)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(re.search(name + r":\s+(-?\d+)", text).group(1)) for name in names)

    def content(self, window, program):
        """Left and top of what is below the menu bar, once the window manager has given the window its
        frame and the program has followed: for a moment both may agree on the size before that."""
        agreed, since = None, 0.0

        def place():
            nonlocal agreed, since
            left, top, width, height = self.geometry(window)
            sized = [line.split() for line in program.lines() if line.startswith("sized")]
            is_laid_out = self.frame(window) and sized and int(sized[-1][1]) == width
            now = (left, top + height - int(sized[-1][2])) if is_laid_out else None
            if now != agreed:
                agreed, since = now, time.monotonic()
            return now if time.monotonic() - since > SETTLED else None

        return wait_for("the window to be laid out", place)

    def wait_active(self, window):
        """Until what is typed goes to this window."""
        wait_for("the window to be active",
                 lambda: self.run("xdotool", "getactivewindow", check=False).strip() == str(window))

    def resize(self, window, width, height):
        self.run("xdotool", "windowsize", window, str(width), str(height))
        wait_for(f"the size {width}x{height}",
                 lambda: self.geometry(window)[2:] == (width, height))

    def frame(self, window):
        """The widths of the frame around the window: left, right, top and bottom."""
        extents = self.run("xprop", "-id", window, "_NET_FRAME_EXTENTS")  # empty before it has one
        return tuple(int(number) for number in re.findall(r"\d+", extents))

    def move(self, window, left, top):
        """Moves the window's frame."""
        frame = self.frame(window)
        self.run("xdotool", "windowmove", window, str(left + frame[0]), str(top + frame[2]))
        wait_for(f"the place {left},{top}",
                 lambda: self.geometry(window)[:2] == (left + frame[0], top + frame[2]))

    def close(self, window):
        """What the close button of the frame does: the window manager asks the window to close."""
        self.run("wmctrl", "-i", "-c", window)

    def close_by_button(self, window):
        """Clicks the close button at the right end of openbox's title bar."""
        left, top, width, _ = self.geometry(window)
        frame = self.frame(window)
        self.click(left + width + frame[1] - 9, top - frame[2] // 2)

    def screenshot(self, window, path, *options):
        self.run("import", *options, "-window", window, "-strip", str(path))

    def wait_still(self, window, other_than=None):
        """Waits until the window looks different from before and does not change any more; returns how it looks."""
        looks, since = None, 0.0

        def settled():
            nonlocal looks, since
            now = self.run("import", "-window", window, "-format", "%#", "info:-")
            if now != looks:
                looks, since = now, time.monotonic()
            return now if now != other_than and time.monotonic() - since > SETTLED else None

        return wait_for("the window to be still", settled)

    def wait_drawn(self, window):
        """Waits until the window shows more than plain areas; returns its number of colours."""

        def colors():
            count = self.run("import", "-window", window, "-format", "%k", "info:-")
            return int(count) if int(count) > 20 else 0

        return wait_for("the window to be drawn", colors)


class Program:
    """The Librarian on a display, with the report it writes."""

    def __init__(self, display, executable, folder, *arguments, environment=None):
        self.report_path = folder / "report.txt"
        self.report_path.write_text("")
        self.log_path = folder / "log.txt"
        self.taken = 0
        variables = {**(display.environment if display else os.environ),
                     "HOME": str(folder), "XDG_CONFIG_HOME": str(folder / "config"),
                     "XDG_DATA_HOME": str(folder / "data"), "VMCORE_MIDI": "loopback",
                     "VMCORE_MESSAGEBOX": "log", "LIBRARIAN_REPORT": str(self.report_path),
                     "QT_ENABLE_HIGHDPI_SCALING": "0", **(environment or {})}
        with open(self.log_path, "wb") as log:
            self.process = subprocess.Popen(
                [str(executable), *map(str, arguments)], stdin=subprocess.DEVNULL, stdout=log,
                stderr=subprocess.STDOUT, env=variables)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        stop(self.process)

    def log(self):
        return self.log_path.read_text(errors="replace")

    def lines(self):
        return self.report_path.read_text().splitlines()

    def plugins(self):
        """Waits until every plug-in has been tried; the line of the report that names the loaded ones."""
        lines = wait_for("the plug-ins", lambda: [line for line in self.lines() if line.startswith("plugins ")])
        return lines[-1]

    def expect(self, line):
        """Waits for a line of the report, behind the one expected last. It may hold a pattern."""
        pattern = re.compile(line)

        def found():
            lines = self.lines()
            for index in range(self.taken, len(lines)):
                if pattern.fullmatch(lines[index]):
                    self.taken = index + 1
                    return lines[index]
            if self.process.poll() is not None and lines == self.lines():
                raise RuntimeError(f"the program ended ({self.ending()}) without '{line}'; "
                                   f"report {lines}, log:\n{self.log()}")
            return None

        try:
            return wait_for(f"'{line}' in the report", found)
        except Timeout as error:
            raise Timeout(f"{error}; report {self.lines()}, log:\n{self.log()}") from None

    def ending(self):
        code = self.process.poll()
        return signal.Signals(-code).name if code is not None and code < 0 else f"exit code {code}"

    def wait(self):
        """The exit code, once the program has ended."""
        return self.process.wait(LIMIT)
