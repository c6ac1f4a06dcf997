"""Whether a program has worked off all input that was made before."""

import time

from Xlib import X, display as xdisplay
from Xlib.protocol import event

from display import wait_for

QUIET = 0.01  # seconds that the main thread sleeps without a break


class Ping:
    """Asks a window (_NET_WM_PING), which is answered once the program has read what came before, and
    then waits until its main thread has nothing left to do."""

    def __init__(self, name):
        self.display = xdisplay.Display(name)
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.StructureNotifyMask | X.SubstructureNotifyMask)
        self.number = 0
        # A busy machine may hold a key down for longer than its user would.
        self.display.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOff)

    def wait(self, window, pid, has_ended=lambda: False):
        self.number += 1
        target = self.display.create_resource_object("window", int(window))
        self.send(target)
        wait_for("an answer to a ping", lambda: has_ended() or self.is_answered())
        wait_for("the program to rest", lambda: has_ended() or rests(pid))

    def send(self, target):
        protocols, ping = (self.display.intern_atom(name)
                           for name in ("WM_PROTOCOLS", "_NET_WM_PING"))
        message = event.ClientMessage(window=target, client_type=protocols,
                                      data=(32, [ping, self.number, target.id, 0, 0]))
        target.send_event(message, event_mask=0)
        self.display.flush()

    def is_answered(self):
        while self.display.pending_events():
            received = self.display.next_event()
            if received.type == X.ClientMessage and received.data[1][1] == self.number:
                return True
        return False


def rests(pid):
    before = main_thread(pid)
    time.sleep(QUIET)
    return before == main_thread(pid) and before[0] in "SZ"


def main_thread(pid):
    """Its state, and how long it has run."""
    folder = f"/proc/{pid}/task/{pid}"
    with open(folder + "/stat", encoding="utf-8") as stat:
        state = stat.read().rpartition(")")[2].split()[0]
    with open(folder + "/schedstat", encoding="ascii") as times:
        return state, times.read().split()[0]
