"""An X display as a benchmark sees it: keys and wheel notches go in, painted windows come out."""

import select
import time

from Xlib import X, XK, display as xdisplay
from Xlib.ext import damage, xtest
from Xlib.protocol import event

LIMIT = 60  # seconds


class Screen:
    def __init__(self):
        self.display = xdisplay.Display()
        self.display.damage_query_version()
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self.painted_by = {}
        self.display.sync()

    def events(self):
        """Events as they come, with the time of each."""
        end = time.perf_counter() + LIMIT
        while time.perf_counter() < end:
            while self.display.pending_events():
                received = self.display.next_event()
                yield time.perf_counter(), received
            select.select([self.display], [], [], 0.1)
        raise RuntimeError("the program did not paint")

    def new_window(self, least=200):
        """The next window to appear that is as wide as a main window, and the time of its first
        paint: until then it shows what the black root shows."""
        window = None
        for at, received in self.events():
            if received.type == X.MapNotify:
                geometry = received.window.get_geometry()
                if geometry.width >= least:
                    window = received.window
                    self.watch(window)
            if window and received.type == self.damaged() and self.is_drawn(window):
                return window, at

    def damaged(self):
        return self.display.extension_event.DamageNotify

    def watch(self, window):
        self.painted_by[window.id] = window.damage_create(damage.DamageReportNonEmpty)

    def is_drawn(self, window):
        self.forget_damage(window)
        geometry = window.get_geometry()
        column = window.get_image(geometry.width // 2, 0, 1, geometry.height, X.ZPixmap, 0xFFFFFF)
        return any(column.data)

    def forget_damage(self, window):
        self.display.damage_subtract(self.painted_by[window.id])
        self.display.flush()

    def wait_painted(self, window, is_due):
        """The time of the first paint for which `is_due` says so."""
        for at, received in self.events():
            if received.type != self.damaged() or received.drawable.id != window.id:
                continue
            self.forget_damage(window)
            if is_due():
                return at

    def focus(self, window):
        window.set_input_focus(X.RevertToParent, X.CurrentTime)
        self.display.sync()

    def key(self, *names):
        """Presses the keys together; the time at which that began."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in names]
        began = time.perf_counter()
        for code in codes:
            xtest.fake_input(self.display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self.display, X.KeyRelease, code)
        self.display.flush()
        return began

    def point(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        self.display.sync()

    def wheel(self, notches):
        for _ in range(notches):
            xtest.fake_input(self.display, X.ButtonPress, 5)
            xtest.fake_input(self.display, X.ButtonRelease, 5)
        self.display.flush()

    def close(self, window):
        """As a window manager asks a window to close."""
        protocols, delete = (self.display.intern_atom(name)
                             for name in ("WM_PROTOCOLS", "WM_DELETE_WINDOW"))
        message = event.ClientMessage(window=window, client_type=protocols,
                                      data=(32, [delete, X.CurrentTime, 0, 0, 0]))
        window.send_event(message, event_mask=0)
        self.display.flush()
