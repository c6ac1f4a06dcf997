#!/usr/bin/python3
"""The Librarian's dialog for banks on a server, driven with real keys against a server of the test's own."""

import logging
import pathlib
import shutil
import sys
import tempfile
import threading
import unittest

from urllib.parse import quote

from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.filesystems import AbstractedFS
from pyftpdlib.handlers import FTPHandler, ThrottledDTPHandler
from pyftpdlib.ioloop import IOLoop
from pyftpdlib.servers import FTPServer

from display import Display, Program, wait_for

USER, PASSWORD = "anna", "p@ss:w/1"

bundle = None   # Librarian.app
data = None     # the folder of the banks
display = None


class Server:
    """Serves a folder on a free port: at `rate` bytes a second when that is given; logins lead to `home`
    below it; listings are `names` when there are any. Replies are withheld that begin as `unanswered`
    does, which has a command before the reply."""

    def __init__(self, folder, rate=0, perm="elradfmw", home="/", names=(), unanswered=()):
        self.commands = ["connect"]
        owner = self

        class Files(AbstractedFS):
            def __init__(self, *arguments):
                super().__init__(*arguments)
                self.cwd = home

            def listdir(self, path):
                return list(names) or super().listdir(path)

        class Handler(FTPHandler):
            def pre_process_command(self, line, cmd, arg):
                owner.commands.append(line)
                super().pre_process_command(line, cmd, arg)

            def respond(self, resp, **options):
                command = owner.commands[-1].split(" ")[0]
                if not f"{command} {resp}".startswith(unanswered):
                    super().respond(resp, **options)

        Handler.authorizer = DummyAuthorizer()
        Handler.authorizer.add_user(USER, PASSWORD, str(folder), perm=perm)
        Handler.abstracted_fs = Files
        Handler.dtp_handler = type("Channel", (ThrottledDTPHandler,),
                                   {"read_limit": rate, "write_limit": rate})
        self.server = FTPServer(("127.0.0.1", 0), Handler, ioloop=IOLoop())
        self.address = "127.0.0.1:%d" % self.server.address[1]
        self.resume()

    def resume(self):
        self.pausing = threading.Event()
        self.thread = threading.Thread(target=self.serve, daemon=True)
        self.thread.start()

    def serve(self):
        while not self.pausing.is_set():
            self.server.serve_forever(timeout=0.05, blocking=False)

    def pause(self):
        """Leaves all connections open and says no more."""
        self.pausing.set()
        self.thread.join()

    def count(self, command):
        return len([each for each in self.commands if each.startswith(command)])

    def stop(self):
        self.pause()
        self.server.close_all()


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
        return server

    def open(self, server, password=PASSWORD, **environment):
        """The program with a bank, and the dialog with the login typed in and List pressed."""
        executable = bundle / "Contents/MacOS/Librarian"
        self.program = Program(display, executable, self.folder, self.banks / "patches.syx",
                               environment={"VMCORE_MESSAGEBOX": "", **environment})
        self.addCleanup(self.program.__exit__)
        self.program.expect("opened patches.syx .*")
        self.connect(server, password)

    def connect(self, server, password=PASSWORD):
        display.window("Librarian")
        display.key("ctrl+shift+f")
        self.program.expect("dialog ftp")
        self.dialog = display.window("Banks on a Server")
        for key, text in (("alt+s", server.address), ("alt+u", USER), ("alt+p", password)):
            self.fill(key, text)
        display.key("Return")

    def fill(self, key, text):
        display.key(key, "ctrl+a")
        display.run("xdotool", "type", "--delay", "0", text)

    def answer(self, question, title, key):
        self.program.expect(question)
        wait_for("the question", lambda: len(self.windows(title)) > 0)
        display.window(title)
        display.key(key)

    def ask(self, button, question, key):
        """Presses a button, and `key` at its question."""
        display.key(button)
        self.answer(question, "Banks on a Server", key)
        wait_for("the question to close", lambda: not self.windows("Banks on a Server"))

    def windows(self, title):
        found = display.run("xdotool", "search", "--onlyvisible", "--name", title, check=False)
        return [each for each in found.split() if each != self.dialog]

    def close(self):
        display.window("Banks on a Server")
        display.key("Escape")
        self.program.expect("ftp closed")

    def quit(self):
        self.close()
        display.window("Librarian")
        display.key("ctrl+q")
        self.program.expect("closed")
        self.assertEqual(self.program.wait(), 0, self.program.log())

    def profile(self):
        return "".join(each.read_text() for each in (self.folder / "config").iterdir())

    def test_banks_are_listed_fetched_and_deleted(self):
        server = self.serve()
        (self.remote / "screen.bmp").write_bytes(b"BM")
        self.open(server, QT_LOGGING_RULES="vmcore.net.ftp.info=true")
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
            self.ask("alt+e", "asks delete lead.syx", key)
            if not remains:
                self.program.expect("ftp deleted lead.syx")
            self.assertEqual((self.remote / "lead.syx").exists(), remains)
        self.fill("alt+m", "*.bmp")
        display.key("alt+f")  # bitmaps are stored as another kind of file
        self.program.expect(f"ftp fetched {self.banks}/screen.png")
        self.quit()
        self.assertIn(f"FtpServer={server.address}", self.profile())
        self.assertRegex(self.program.log(), "FTP > PASS ")  # so there would be something to hide
        written = (self.profile() + self.program.log()).lower()
        for spelled in (PASSWORD, quote(PASSWORD, safe="")):
            self.assertNotIn(spelled.lower(), written)

    def test_open_bank_is_uploaded_and_replaces_only_when_told(self):
        server = self.serve()
        self.open(server)
        self.program.expect("ftp listed 1, .*")
        display.key("alt+d")
        self.program.expect("ftp uploaded patches.syx")
        sent = self.remote / "patches.syx"
        self.assertEqual(sent.read_bytes(), (data / "patches.syx").read_bytes())
        sent.write_bytes(b"old")
        self.ask("alt+d", "asks replace patches.syx", "Return")
        display.key("alt+l")  # nothing else may run
        self.program.expect("ftp listed 2, .*")
        self.assertEqual(server.count("STOR"), 1)
        self.ask("alt+d", "asks replace patches.syx", "alt+y")
        self.program.expect("ftp uploaded patches.syx")
        self.assertEqual(sent.stat().st_size, 1152)
        self.fill("alt+s", "no server")
        display.key("alt+d")
        self.program.expect("ftp refused")
        self.quit()
        self.assertEqual(list(self.folder.rglob("*upload*")), [])

    def test_upload_asks_when_the_folder_is_not_shown_whole(self):
        for options, listed in (({"perm": "eradfmw"}, "ftp failed .*"),
                                ({"names": ["a" * 300, "patches.syx"]}, "ftp listed 0, .*")):
            server = self.serve(**options)
            self.open(server)
            self.program.expect(listed)
            self.ask("alt+d", "asks replace patches.syx", "Return")
            display.key("alt+l")
            self.program.expect(listed)
            self.assertEqual(server.count("STOR"), 0)
            self.quit()

    def test_every_operation_works_in_the_folder_that_is_shown(self):
        home = self.remote / "home"
        home.mkdir()
        shutil.copy(data / "voices.syx", home / "home.syx")
        (self.remote / "patches.syx").write_bytes(b"old")
        self.open(self.serve(home="/home"))
        self.program.expect("ftp listed 1, .*")
        for folder, other, sent, fetched in ((home, self.remote, "patches.syx", "home.syx"),
                                             (self.remote, home, "home.syx", "lead.syx")):
            if folder == self.remote:
                self.fill("alt+o", "..")
                display.key("Return")
                self.program.expect("ftp listed 2, .*")
            display.key("alt+d")
            self.program.expect(f"ftp uploaded {sent}")
            self.assertTrue((folder / sent).exists())
            self.ask("alt+e", f"asks delete {sent}", "alt+y")
            self.program.expect(f"ftp deleted {sent}")
            self.assertFalse((folder / sent).exists())
            self.assertTrue((other / sent).exists())
            display.key("alt+f")
            self.program.expect(f"ftp fetched {self.banks}/{fetched}")
        self.quit()

    def test_first_names_of_a_huge_folder_are_shown(self):
        self.open(self.serve(names=["%06d.syx" % i for i in range(100_001)]))
        self.program.expect("ftp listed 100000, left out 0")
        self.quit()

    def test_cancelled_deletion_shows_what_the_server_has(self):
        self.open(self.serve(unanswered="DELE 250"))
        self.program.expect("ftp listed 1, .*")
        self.ask("alt+e", "asks delete lead.syx", "alt+y")
        wait_for("the deletion", lambda: not (self.remote / "lead.syx").exists())
        display.key("alt+a")
        self.program.expect("ftp cancelled")
        self.program.expect("ftp listed 0, .*")
        self.quit()

    def test_abandoned_transfers_leave_nothing(self):
        server = self.serve(unanswered=("RETR 226", "STOR 226"))
        self.open(server)
        for key, sent, left in (("alt+f", "RETR", "*.new"), ("alt+d", "STOR", "*upload*")):
            self.program.expect("ftp listed 1, .*")
            display.key(key)
            wait_for(sent, lambda: server.count(sent) and list(self.folder.rglob(left)))
            server.pause()  # so that the transfer outlasts the dialog
            self.close()
            server.resume()
            self.assertEqual(list(self.folder.rglob(left)), [])
            self.connect(server)
        self.quit()

    def test_failures_are_told_in_words(self):
        self.open(self.serve(), password="wrong")
        self.program.expect(r"ftp failed Login denied \(530 .*")
        self.fill("alt+o", "none")
        self.fill("alt+p", PASSWORD)
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
