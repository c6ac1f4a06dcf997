"""Drops files on a window as a file manager does: the source's side of the X drag-and-drop protocol
(XDND, version 5)."""

from Xlib import X, display as xdisplay
from Xlib.protocol import event

from display import wait_for

VERSION = 5


class FileDrag:
    def __init__(self, name, paths):
        self.display = xdisplay.Display(name)
        self.root = self.display.screen().root
        self.source = self.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.uris = "".join(f"file://{path}\r\n" for path in paths).encode()

    def atom(self, name):
        return self.display.intern_atom(name)

    def drop(self, window, x, y):
        """Drops at a point of the screen; whether the window took it."""
        self.target = self.display.create_resource_object("window", int(window))
        self.source.set_selection_owner(self.atom("XdndSelection"), X.CurrentTime)
        self.send("XdndEnter", VERSION << 24, self.atom("text/uri-list"), 0, 0)
        self.send("XdndPosition", 0, x << 16 | y, X.CurrentTime, self.atom("XdndActionCopy"))
        status = self.wait("XdndStatus")
        if not status.data[1][1] & 1:
            self.send("XdndLeave", 0, 0, 0, 0)
            return False
        self.send("XdndDrop", 0, X.CurrentTime, 0, 0)
        return bool(self.wait("XdndFinished").data[1][1] & 1)

    def send(self, name, *data):
        message = event.ClientMessage(window=self.target, client_type=self.atom(name),
                                      data=(32, [self.source.id, *data]))
        self.target.send_event(message, event_mask=0)
        self.display.flush()

    def wait(self, name):
        """The answer with this name; gives the files out when they are asked for on the way."""
        wanted = self.atom(name)
        while True:
            received = wait_for(name, self.next_event)
            if received.type == X.SelectionRequest:
                self.give(received)
            elif received.type == X.ClientMessage and received.client_type == wanted:
                return received

    def next_event(self):
        return self.display.next_event() if self.display.pending_events() else None

    def give(self, request):
        request.requestor.change_property(request.property, request.target, 8, self.uris)
        answer = event.SelectionNotify(time=request.time, requestor=request.requestor,
                                       selection=request.selection, target=request.target,
                                       property=request.property)
        request.requestor.send_event(answer)
        self.display.flush()
