#!/usr/bin/python3
"""The Librarian driven at random for minutes, with real keys, clicks and window-manager requests, while
rules for its trace, its log and its resources are looked at after every action.

soak.py BUNDLE DATA OUT [--seconds N] [--seed N] [--sanitized]
An action's number and the seed decide what it does; after each one, also after one that was given up in
its middle, no dialog and no menu is open. When something breaks, what shows it goes to OUT.
"""

import argparse
import logging
import pathlib
import random
import shutil
import sys
import tempfile
import time

from display import Display, Timeout
from soakactions import Actions
from soakdriver import GivenUp, QuitChosen
from soakwatch import Broken, rise, slope

GIVEN_UP = 0.1     # of all actions end in their middle

# Resident memory: from its start on most of it comes with what is used for the first time.
WHOLE = 32 * 1024  # kB that it may gain in a life
GROWTH = 256       # kB a minute behind the first minute, in drives of five minutes and more
DESCRIPTORS = 4    # by how many the first and the last third of the drive may differ
THREADS = 3


class Soak(Actions):
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
            self.run_action(action, rng)
        except QuitChosen:
            self.history[-1] += " (quit)"
            self.inputs_left = None
            self.look_back()
            self.start()
        self.check_rules()
        self.trace.check_at_rest()
        self.done[action.name] += 1

    def run_action(self, action, rng):
        try:
            action.run(rng)
        except GivenUp:
            self.history[-1] += " (given up)"
        self.inputs_left = None
        self.settle()

    def warm_samples(self):
        groups = [life.behind(self.warm) for life in self.lives]
        return [group for group in groups if len(group) > 2]

    def check_resources(self):
        groups = self.warm_samples()
        if not groups:
            raise Broken("no life of the program was long enough to be measured")
        if not self.sanitized:
            self.check_memory(groups)
        for column, name, bound in ((2, "descriptors", DESCRIPTORS), (3, "threads", THREADS)):
            for group in groups:
                if rise(group, column) > bound:
                    raise Broken(f"{name} grow: {[sample[column] for sample in group]}")

    def check_memory(self, groups):
        for life in self.lives:
            gain = life.samples[-1][1] - life.samples[0][1] if life.samples else 0
            if gain > WHOLE:
                raise Broken(f"memory gains {gain} kB")
        growth = slope(groups, 1)
        if self.seconds >= 300 and growth > GROWTH:
            raise Broken(f"memory grows by {growth:.0f} kB a minute")

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
