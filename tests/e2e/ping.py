"""Asks a window of a program whether the program has come as far as this question (_NET_WM_PING)."""

from Xlib import X, display as xdisplay
from Xlib.protocol import event

from display import wait_for


class Ping:
    def __init__(self, name):
        self.display = xdisplay.Display(name)
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.StructureNotifyMask | X.SubstructureNotifyMask)
        self.number = 0

    def wait(self, window):
        """Returns once the program has taken all input that was made before. Twice, because its
        answer goes out before what it took with the same look at its connection is worked off."""
        for _ in range(2):
            self.number += 1
            target = self.display.create_resource_object("window", int(window))
            self.send(target)
            wait_for("an answer to a ping", self.is_answered)

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
