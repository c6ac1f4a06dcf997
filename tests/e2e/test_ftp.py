#!/usr/bin/python3
"""The Librarian's dialog for banks on a server, driven with real keys against a server of the test's own."""

import logging
import pathlib
import shutil
import sys
import tempfile
import threading
import unittest

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler, ThrottledDTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import FTPServer

from display import Display, Program, wait_for

USER, PASSWORD = "anna", "p@ss:w/1"

bundle = None   # Librarian.app
data = None     # the folder of the banks
display = None


class Server:
    """Serves a folder on a free port, at `rate` bytes a second when that is given."""

    def __init__(self, folder, rate=0):
        authorizer = DummyAuthorizer()
        authorizer.add_user(USER, PASSWORD, str(folder), perm="elradfmw")
        channel = type("Channel", (ThrottledDTPHandler,), {"read_limit": rate, "write_limit": rate})
        handler = type("Handler", (FTPHandler,), {"authorizer": authorizer, "dtp_handler": channel})
        self.server = FTPServer(("127.0.0.1", 0), handler, ioloop=IOLoop())
        self.address = "127.0.0.1:%d" % self.server.address[1]
        self.stopping = threading.Event()
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while not self.stopping.is_set():
            self.server.serve_forever(timeout=0.05, blocking=False)
        self.server.close_all()

    def stop(self):
        self.stopping.set()
        self.thread.join()


class FtpTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.remote = self.folder / "remote"
        self.banks = self.folder / "banks"  # what is opened from and fetched into
        for folder in (self.remote, self.banks):
            folder.mkdir()
        shutil.copy(data / "voices.syx", self.remote / "lead.syx")
        (self.remote / "C:odd.syx").write_bytes(b"")
        (self.remote / "notes.txt").write_bytes(b"")
        shutil.copy(data / "patches.syx", self.banks)

    def serve(self, **options):
        server = Server(self.remote, **options)
        self.addCleanup(server.stop)
        return server.address

    def open(self, server, password=PASSWORD):
        """The program with a bank, and the dialog with the login typed in and List pressed."""
        executable = bundle / "Contents/MacOS/Librarian"
        self.program = Program(display, executable, self.folder, self.banks / "patches.syx",
                               environment={"VMCORE_MESSAGEBOX": ""})
        self.addCleanup(self.program.__exit__)
        self.program.expect("opened patches.syx .*")
        display.window("Librarian")
        display.key("ctrl+shift+f")
        self.program.expect("dialog ftp")
        self.dialog = display.window("Banks on a Server")
        for key, text in (("alt+s", server), ("alt+u", USER), ("alt+p", password)):
            display.key(key)
            display.run("xdotool", "type", "--delay", "0", text)
        display.key("Return")

    def answer(self, question, title, key):
        self.program.expect(question)
        wait_for("the question", lambda: len(self.windows(title)) > 0)
        display.window(title)
        display.key(key)

    def windows(self, title):
        found = display.run("xdotool", "search", "--onlyvisible", "--name", title, check=False)
        return [each for each in found.split() if each != self.dialog]

    def quit(self):
        display.window("Banks on a Server")
        display.key("Escape")
        self.program.expect("ftp closed")
        display.window("Librarian")
        display.key("ctrl+q")
        self.program.expect("closed")
        self.assertEqual(self.program.wait(), 0, self.program.log())

    def profile(self):
        return "".join(each.read_text() for each in (self.folder / "config").iterdir())

    def test_banks_are_listed_fetched_and_deleted(self):
        server = self.serve()
        self.open(server)
        self.program.expect("ftp listed 1, left out 1")
        display.key("alt+f")
        self.program.expect("opened lead.syx 1 messages")
        self.program.expect(f"ftp fetched {self.banks}/lead.syx")
        self.assertEqual((self.banks / "lead.syx").read_bytes(),
                         (data / "voices.syx").read_bytes())
        display.key("alt+f")  # there is one now: where to?
        self.answer("asks where lead.syx", "Save Fetched Bank As", "Escape")
        wait_for("the file dialog to close", lambda: not self.windows("Save Fetched Bank As"))
        display.window("Banks on a Server")
        for key, remains in (("Return", True), ("alt+y", False)):
            display.key("alt+e")
            self.answer("asks delete lead.syx", "Banks on a Server", key)
            wait_for("the question to close", lambda: not self.windows("Banks on a Server"))
            if not remains:
                self.program.expect("ftp deleted lead.syx")
            self.assertEqual((self.remote / "lead.syx").exists(), remains)
        self.quit()
        self.assertIn(f"FtpServer={server}", self.profile())
        self.assertNotIn(PASSWORD, self.profile() + self.program.log())

    def test_open_bank_is_uploaded_and_replaces_only_when_told(self):
        self.open(self.serve())
        self.program.expect("ftp listed 1, .*")
        display.key("alt+d")
        self.program.expect("ftp uploaded patches.syx")
        sent = self.remote / "patches.syx"
        self.assertEqual(sent.read_bytes(), (data / "patches.syx").read_bytes())
        for key, size in (("Return", 3), ("alt+y", 1152)):
            sent.write_bytes(b"old")
            display.key("alt+d")
            self.answer("asks replace patches.syx", "Banks on a Server", key)
            wait_for("the question to close", lambda: not self.windows("Banks on a Server"))
            if size != 3:
                self.program.expect("ftp uploaded patches.syx")
            self.assertEqual(sent.stat().st_size, size)
        self.quit()
        self.assertEqual(list(self.folder.rglob("*upload*")), [])

    def test_failures_are_told_in_words(self):
        self.open(self.serve(), password="wrong")
        self.program.expect(r"ftp failed Login denied \(530 .*")
        display.key("alt+o")
        display.run("xdotool", "type", "--delay", "0", "none")
        display.key("alt+p", "ctrl+a")
        display.run("xdotool", "type", "--delay", "0", PASSWORD)
        display.key("Return")
        self.program.expect(r"ftp failed .*\(550 .*")
        display.key("alt+d")  # into a folder that is not there yet
        self.program.expect("ftp uploaded patches.syx")
        self.assertTrue((self.remote / "none/patches.syx").exists())
        self.quit()

    def test_cancelled_and_closed_downloads_leave_nothing(self):
        (self.remote / "lead.syx").write_bytes(bytes(2_000_000))
        self.open(self.serve(rate=100_000))
        self.program.expect("ftp listed 1, .*")
        display.key("alt+f")
        self.program.expect("ftp moving")
        display.key("alt+a")
        self.program.expect("ftp cancelled")
        display.key("alt+f")
        self.program.expect("ftp moving")
        self.quit()
        self.assertEqual([each.name for each in self.banks.iterdir()], ["patches.syx"])


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1)).resolve()
    data = pathlib.Path(sys.argv.pop(1)).resolve()
    logging.disable()
    with Display() as display:
        unittest.main(verbosity=2)
