"""What must hold at any time while a program is driven: the rules for its message trace and its log,
and what it may take of the system."""

import collections
import json
import os
import re
import statistics

PAGE = os.sysconf("SC_PAGE_SIZE") // 1024  # kB

# What the program logs in its everyday life. Anything else is a finding.
ALLOWED_LOG = [re.compile(pattern) for pattern in (
    r"vmcore\.app: (Plug-in loaded: .*|Initializing VMCore)",
    r"vmcore\.midi: (InitCoreMIDI - (enter|finished)|midi(In|Out)Open - successfully opened .*|"
    r"Failed to create MIDINetworkSession|calling MIDIPort(Dispose|DisconnectSource))",
    r"vmcore\.files: CreateFile\(RD/WR\) failed: .*(\.ini|/gone\.syx)",  # not there, or not yet
    r"vmcore\.app: Post or SendMessage sent to hWnd object not registered in ControlReference list",
    r"vmcore\.net: curl error #: \d+",  # transfers are cancelled
    r"QStandardPaths: XDG_RUNTIME_DIR not set, .*",
    r"Finished terminating VMCore",
)]


class Broken(Exception):
    """Something that must hold does not."""


class Tail:
    """The whole lines of a growing file, each once."""

    def __init__(self, path):
        self.path = path
        self.offset = 0

    def lines(self):
        if not self.path.exists():
            return []
        with open(self.path, "rb") as file:
            file.seek(self.offset)
            data = file.read()
        whole = data[: data.rfind(b"\n") + 1]
        self.offset += len(whole)
        return whole.decode(errors="replace").splitlines()


class LogRules:
    def __init__(self, path):
        self.tail = Tail(path)

    def check(self):
        for line in self.tail.lines():
            if not any(pattern.fullmatch(line) for pattern in ALLOWED_LOG):
                raise Broken(f"unexpected in the log: {line}")


class TraceRules:
    """Takes each outermost message with everything that was sent inside of it, in the order in which
    they were given."""

    def __init__(self, path):
        self.tail = Tail(path)
        self.open = []     # lines of messages whose outermost one has not answered yet
        self.alive = {}    # windows that were told of their creation, with their classes
        self.gone = set()  # of these, those that were destroyed
        self.made = set()  # classes of such windows
        self.counts = collections.Counter()

    def check(self):
        for text in self.tail.lines():
            line = json.loads(text)
            self.counts[line["message"]] += 1
            if "threw" in line:
                raise Broken(f"threw: {text}")
            self.open.append(line)
            if line["depth"] == 0:
                self.check_tree(sorted(self.open, key=lambda each: each["at"]))
                self.open = []

    def check_tree(self, lines):
        around = []
        for line in lines:
            if "undelivered" in line:
                self.check_undelivered(line)
                continue
            while around and around[-1]["at"] + around[-1]["ns"] <= line["at"]:
                around.pop()
            if line["depth"] != len(around):
                raise Broken(f"at depth {len(around)}: {line}")
            self.check_window(line, around)
            around.append(line)

    def check_window(self, line, around):
        window, kind = line["window"], line["class"]
        if line["message"] == "WM_CREATE":
            if self.alive.get(window) == kind:
                raise Broken(f"created twice: {line}")
            self.alive[window] = kind
            self.gone.discard(window)
            self.made.add(kind)
        elif line["message"] == "WM_DESTROY":  # the handle is gone by then
            self.forget(line, around)
        elif kind in self.made and self.alive.get(window) != kind:
            raise Broken(f"to a window that is not there: {line}")

    def check_undelivered(self, line):
        """A thread cannot know that the window has gone since it posted."""
        by_thread = line["sender"] == "post" and line.get("thread", line["pid"]) != line["pid"]
        if not by_thread or line["window"] not in self.gone:
            raise Broken(f"undelivered: {line}")

    def forget(self, line, around):
        """The window that its WM_CLOSE around this one names, else the last of its class."""
        kind = line["class"]
        closing = [each["window"] for each in around
                   if each["message"] == "WM_CLOSE" and each["class"] == kind]
        alive = [window for window, each in self.alive.items() if each == kind]
        if not alive:
            raise Broken(f"destroyed, and was never created: {line}")
        window = closing[-1] if closing and closing[-1] in alive else alive[-1]
        del self.alive[window]
        self.gone.add(window)

    def check_at_rest(self):
        """Without a dialog on the screen none is left in the program, and nothing is there twice."""
        self.check()
        twice = [kind for kind, count in collections.Counter(self.alive.values()).items()
                 if count > 1 or kind.endswith("Dialog")]
        if twice:
            raise Broken(f"windows that nobody sees: {twice}")


class Resources:
    """Memory, descriptors and threads of one process, taken while it is at rest."""

    def __init__(self, pid):
        self.folder = f"/proc/{pid}"
        self.samples = []  # seconds of its life, kB, descriptors, threads

    def take(self, age):
        with open(self.folder + "/statm", encoding="ascii") as file:
            resident = int(file.read().split()[1]) * PAGE
        self.samples.append((age, resident, len(os.listdir(self.folder + "/fd")),
                             len(os.listdir(self.folder + "/task"))))

    def behind(self, warm):
        """The samples after the first `warm` seconds."""
        return [sample for sample in self.samples if sample[0] >= warm]


def slope(groups, column):
    """What a column grows by in a minute: least squares over all groups of samples, each of which
    has a level of its own."""
    above = below = 0.0
    for samples in groups:
        age = statistics.fmean(sample[0] for sample in samples)
        level = statistics.fmean(sample[column] for sample in samples)
        above += sum((sample[0] - age) * (sample[column] - level) for sample in samples)
        below += sum((sample[0] - age) ** 2 for sample in samples)
    return 60 * above / below if below else 0.0


def rise(samples, column):
    """From the median of the first third to that of the last."""
    third = max(1, len(samples) // 3)
    return (statistics.median(sample[column] for sample in samples[-third:])
            - statistics.median(sample[column] for sample in samples[:third]))
