"""The Librarian from outside, as its user meets it: its start against that of a bare program of the
toolkit, a large bank opened by a key, its list turned page by page. A paint counts when it has
reached the screen.

main.py BUNDLE BARE
"""

import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

from screen import Screen

STARTS = 21
OPENINGS = 5
PAGES = 300
WINDOW = ("1060", "760")  # as large as the Librarian's first one
MESSAGES, SIZE = 64000, 160  # 10 MB


def report(name, ours, unit, peer="-", theirs=None):
    figures = f"{theirs:.2f}\t{theirs / ours:.2f}" if theirs else "-\t-"
    print(f"{name}\t{ours:.2f}\t{unit}\t{peer}\t{figures}", flush=True)


class Run:
    """A program on the screen, from its start on."""

    def __init__(self, screen, program, home, *arguments):
        self.screen = screen
        self.lines = home / "report.txt"
        self.lines.write_text("")
        environment = {**os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home / "config"),
                       "VMCORE_MIDI": "loopback", "LIBRARIAN_REPORT": str(self.lines)}
        began = time.perf_counter()
        self.process = subprocess.Popen([str(program), *arguments], env=environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        self.window, painted = screen.new_window()
        self.start = (painted - began) * 1000

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.screen.close(self.window)
        self.process.wait(20)

    def has_reported(self, beginning):
        return any(line.startswith(beginning) for line in self.reported())

    def reported(self):
        return self.lines.read_text().splitlines()


def measure_start(screen, ours, bare, home):
    figures = {(ours,): [], (bare, *WINDOW): []}
    for _ in range(STARTS + 1):  # the first one fills caches and writes the settings
        for (program, *arguments), values in figures.items():
            with Run(screen, program, home, *arguments) as run:
                values.append(run.start)
    medians = [statistics.median(values[1:]) for values in figures.values()]
    report("librarian-start-to-first-window", medians[0], "ms", "QWidget program of that size", medians[1])


def large_bundle(bundle, folder):
    """A copy whose second bank is large."""
    copy = folder / "Librarian.app"
    shutil.copytree(bundle, copy)
    message = bytes.fromhex("f0411042121001") + bytes(i % 100 for i in range(SIZE - 8)) + b"\xf7"
    (copy / "Contents/Resources/patches.syx").write_bytes(message * MESSAGES)
    return copy / "Contents/MacOS/Librarian"


def open_bank(screen, run):
    began = screen.key("Control_L", "2")
    painted = screen.wait_painted(run.window, lambda: run.has_reported("opened patches.syx"))
    return (painted - began) * 1000


def pages_a_second(screen, run, turn):
    """Turns a page when the one before is on the screen."""
    began = time.perf_counter()
    for page in range(PAGES):
        turn(page)
    return PAGES / (time.perf_counter() - began)


def turn_by_key(screen, run):
    selected = len(run.reported())

    def turn(page):
        screen.key("Next")
        screen.wait_painted(run.window, lambda: len(run.reported()) > selected + page)

    return pages_a_second(screen, run, turn)


def turn_by_wheel(screen, run):
    geometry = run.window.get_geometry()
    screen.point(geometry.x + geometry.width // 2, geometry.y + geometry.height // 3)

    def turn(_):
        screen.wheel(6)
        screen.wait_painted(run.window, lambda: True)

    return pages_a_second(screen, run, turn)


def measure_large_bank(screen, program, home):
    openings, keys, wheel = [], [], []
    for _ in range(OPENINGS):
        with Run(screen, program, home) as run:
            screen.focus(run.window)
            openings.append(open_bank(screen, run))
            keys.append(turn_by_key(screen, run))
            wheel.append(turn_by_wheel(screen, run))
    report("librarian-open-64000-messages", statistics.median(openings), "ms")
    report("librarian-pages-by-key", statistics.median(keys), "1/s")
    report("librarian-wheel-frames", statistics.median(wheel), "1/s")


def main():
    bundle, bare = (pathlib.Path(argument) for argument in sys.argv[1:3])
    folder = pathlib.Path(tempfile.mkdtemp(prefix="bench-librarian-"))
    try:
        screen = Screen()
        measure_start(screen, bundle / "Contents/MacOS/Librarian", bare, folder)
        measure_large_bank(screen, large_bundle(bundle, folder), folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    main()
