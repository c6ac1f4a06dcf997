#!/usr/bin/python3
"""Drives the Librarian through a user's session on a virtual display and shows what came out."""

import argparse
import pathlib
import sys
import tempfile

from display import Display, Program, Timeout

LIST_LEFT, LIST_TOP = 330, 64  # a place in the list, which begins below the header band
ROW = 36       # from the list's top to the middle of its first row


def step(number, text):
    print(f"{number}. {text}", flush=True)


def outcome(text):
    print(f"   {text}", flush=True)


def send(program):
    outcome(program.expect(r"sending \d+"))
    outcome(program.expect(r"sent \d+"))
    outcome(program.expect(r"received \d+ identical"))


def drive(display, program, picture):
    step(1, "open the bank given on the command line")
    outcome(program.expect("ready"))
    outcome(program.expect(r"opened .* \d+ messages"))
    window = display.window("Librarian")

    step(2, "click the first message")
    left, top = display.content(window, program)
    display.click(left + LIST_LEFT, top + LIST_TOP + ROW)
    outcome(program.expect("selected 1"))

    step(3, "send it with Ctrl+Return")
    display.key("ctrl+Return")
    send(program)

    step(4, "open the bundled patches with the menu File and select the next message with Down")
    display.menu("alt+f", "p")
    outcome(program.expect("opened patches.syx 64 messages"))
    display.click(left + LIST_LEFT, top + LIST_TOP + ROW)
    outcome(program.expect("selected 1"))
    display.key("Down")
    outcome(program.expect("selected 2"))

    step(5, "send it with the menu MIDI")
    display.menu("alt+m", "s")
    send(program)

    step(6, "play the test chord, which the monitor shows as it comes back")
    display.menu("alt+m", "c")
    outcome(program.expect("chord"))
    outcome(program.expect("chord played"))

    step(7, f"save a picture of the window: {picture}")
    colors = display.wait_drawn(window)
    display.screenshot(window, picture)
    outcome(f"{colors} colours")

    step(8, "close the window with the button of its frame")
    display.close_by_button(window)
    outcome(program.expect("closed"))
    code = program.wait()
    outcome(f"exit code {code}")
    if code != 0:
        raise RuntimeError(f"the program ended with {program.ending()}:\n{program.log()}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bundle", type=pathlib.Path, required=True)
    parser.add_argument("--file", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    arguments.out.mkdir(parents=True, exist_ok=True)
    picture = arguments.out / "librarian.png"
    executable = arguments.bundle / "Contents/MacOS/Librarian"
    try:
        with tempfile.TemporaryDirectory() as home, Display() as display, \
                Program(display, executable, pathlib.Path(home), arguments.file) as program:
            drive(display, program, picture)
    except (Timeout, RuntimeError, OSError) as error:
        print(f"demo failed: {error}", file=sys.stderr)
        return 1
    print("All steps did what they should.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
