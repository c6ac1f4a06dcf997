#!/usr/bin/python3
"""test_midi.py PROGRAM

Runs `vmcore midi` on the loopback, without a display: exit statuses, what is printed where, what
becomes of files. The loopback lives in one process, so `receive` sends what it receives itself.
"""

import json
import os
import pathlib
import pty
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

program = None

STUDIO = """
[Loopback]
Wires=1>2, 4>5
[Loopback Device 1]
Name=UM-2
Entities=2
[Loopback Port 1]
Kind=out
Name=MIDI 1
Device=1
[Loopback Port 2]
Kind=in
Name=MIDI 1
Device=1
[Loopback Port 3]
Kind=out
[Loopback Port 4]
Kind=out
Name=Twin
[Loopback Port 5]
Kind=in
Name=Twin
[Loopback Port 6]
Kind=in
Name=Twin
[Port UM-2 MIDI 1|out]
Connected=DX7, Fl\u00fcgel
"""


def sysex(length, seed=0):
    return bytes([0xF0, *((i * 7 + i // 128 + seed) & 0x7F for i in range(length - 2)), 0xF7])


class Midi(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-midi-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.setup = self.folder / "setup.ini"
        self.file = self.folder / "a.syx"

    def environment(self, setup=None):
        hidden = ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "VMCORE_MIDI_SETUP")
        kept = {name: value for name, value in os.environ.items() if name not in hidden}
        if setup is not None:
            self.setup.write_text(setup)
            kept["VMCORE_MIDI_SETUP"] = str(self.setup)
        return kept | {"VMCORE_MIDI": "loopback", "XDG_CONFIG_HOME": str(self.folder / "config")}

    def command(self, *arguments):
        return [program, "midi", *map(str, arguments)]

    def run_midi(self, *arguments, setup=None, full=False):
        """`full`: no byte can be written to a file, as on a full disk."""
        limit = (lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (0, 0))) if full else None
        return subprocess.run(self.command(*arguments), timeout=60, cwd=self.folder,
                              env=self.environment(setup), stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, preexec_fn=limit,
                              restore_signals=not full)

    def start(self, *arguments, setup=None, stderr=subprocess.PIPE):
        process = subprocess.Popen(self.command(*arguments), cwd=self.folder,
                                   env=self.environment(setup), stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=stderr)
        self.addCleanup(process.stdout.close)
        if process.stderr:
            self.addCleanup(process.stderr.close)
        return process

    def expect(self, status, output, *arguments, message="", **options):
        """`message`: a part of what stands on standard error, or all of it when empty."""
        result = self.run_midi(*arguments, **options)
        with self.subTest(arguments=arguments):
            self.assertEqual((status, output), (result.returncode, result.stdout), result.stderr)
            if message:
                self.assertIn(message, result.stderr)
            else:
                self.assertEqual("", result.stderr)

    def test_list(self):
        self.expect(0, "out 0  Loopback\nin  0  Loopback\n", "list")
        self.expect(0, "out 0  DX7, Fl\u00fcgel\nout 1  <no ascii name>\nout 2  Twin\n"
                    "in  0  UM-2 MIDI 1\nin  1  Twin\nin  2  Twin\n", "list", setup=STUDIO)
        ports = json.loads(self.run_midi("list", "--json", setup=STUDIO).stdout)["ports"]
        self.assertEqual({"direction": "out", "index": 0, "name": "DX7, Fl\u00fcgel"}, ports[0])
        self.assertEqual({"direction": "in", "index": 2, "name": "Twin"}, ports[5])
        self.expect(0, "", "list", setup="[Loopback]\nWires=\n")
        self.assertEqual([], json.loads(self.run_midi("list", "--json",
                                                      setup="[Loopback]\nWires=\n").stdout)["ports"])

    def test_list_own_names(self):
        plugged = "[Port Loopback]\nConnected=DX7\n"
        self.expect(0, "out 0  DX7\nin  0  DX7\n", "list", setup=plugged)
        self.expect(0, "out 0  Loopback\nin  0  Loopback\n", "list", "--own", setup=plugged)

    def test_mistakes_in_the_setup_are_shown(self):
        self.file.write_bytes(sysex(4))
        self.expect(0, "", "send", "a.syx", "--port", 0, setup="[Port Loopback]\nSpeed=fast\n",
                    message=f"vmcore: {self.setup}: [Port Loopback] Speed: \"fast\" is no number")
        self.expect(0, "in  0  x\n", "list", setup="[Loopback Port 1]\nKind=up\n"
                    "[Loopback Port 2]\nKind=in\nName=x\n",
                    message="[Loopback Port 1] Kind: \"up\" is neither out")

    def test_receives_what_was_sent(self):
        sent = b"".join(sysex(length, length) for length in (2, 3, 4, 31, 32, 33, 300, 70000))
        self.file.write_bytes(sent)
        (self.folder / "b.syx").write_bytes(b"before")
        self.expect(0, "", "receive", "--port", "UM-2 MIDI 1", "--out", "b.syx", "--count", 8,
                    "--request", "a.syx", "--to", "DX7, Fl\u00fcgel", "--speed", 1000000,
                    "--seconds", 20, setup=STUDIO, message="vmcore: receiving from 'UM-2 MIDI 1'")
        self.assertEqual(b"before" + sent, (self.folder / "b.syx").read_bytes())

    def test_receive_ends(self):
        self.file.write_bytes(sysex(100))
        loop = ("receive", "--port", 0, "--out", "b.syx", "--request", "a.syx", "--to", 0)
        self.expect(1, "", *loop, "--count", 2, "--seconds", 0.1,
                    message="vmcore: 1 of 2 messages received\n")
        self.expect(0, "", *loop, "--seconds", 0.1, message="Ctrl-C ends\n")
        self.expect(2, "", *loop, "--count", 1, message="cannot write b.syx: File too large",
                    full=True)
        self.assertEqual(sysex(100) * 2, (self.folder / "b.syx").read_bytes())

    def test_receive_keeps_everything_until_it_is_stopped(self):
        self.file.write_bytes(sysex(5000))
        for name in (signal.SIGINT, signal.SIGTERM):
            got = self.folder / f"{name}.syx"
            process = self.start("receive", "--port", 0, "--out", got, "--request", "a.syx",
                                 "--to", 0, "--speed", 1000000)
            self.wait_until(lambda: got.exists() and got.stat().st_size == 5000)
            process.send_signal(name)
            self.assertEqual(0, process.wait(20))
            self.assertEqual(sysex(5000), got.read_bytes())

    def wait_until(self, condition):
        end = time.monotonic() + 20
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.001)

    def read_until(self, descriptor, text):
        seen = b""
        while text not in seen:
            seen += os.read(descriptor, 1000)
        return seen

    def send_on_terminal(self, speed, interrupts):
        """Sends three messages of 30 bytes; Ctrl-C whenever one of the texts is seen."""
        self.file.write_bytes(sysex(30) * 3)
        terminal, slave = pty.openpty()
        self.addCleanup(os.close, terminal)
        process = self.start("send", "a.syx", "--port", 0, "--speed", speed, stderr=slave)
        os.close(slave)
        for text in interrupts:
            self.read_until(terminal, text)
            process.send_signal(signal.SIGINT)
        status = process.wait(20)
        seen = b""
        try:
            while True:
                seen += os.read(terminal, 1000)
        except OSError:  # the other end is closed
            return status, seen

    def test_interrupted_send_completes_its_message(self):
        status, seen = self.send_on_terminal(20, [b"message 1 of 3, byte 0 of 90"])
        self.assertEqual(1, status)
        self.assertIn(b"vmcore: stopped: 1 of 3 messages sent", seen)

    def test_second_interrupt_does_not_wait(self):
        status, seen = self.send_on_terminal(1, [b"message 1 of 3", b"stopping after it"])
        self.assertEqual(1, status)
        self.assertIn(b"vmcore: stopped inside a message: 0 of 3 messages sent", seen)

    def test_send(self):
        self.file.write_bytes(sysex(50) * 3)
        begin = time.monotonic()
        self.expect(0, "", "send", "a.syx", "--port", "Loopback", "--speed", 1000)
        self.assertGreaterEqual(time.monotonic() - begin, 0.15)

    def test_send_refuses_other_files(self):
        for content, problem in ((b"", "it is empty"), (b"MThd", "byte 0 is 4D, where"),
                                 (sysex(9) + b"\xf0\x01\x80\xf7", "byte 11 is 80, inside the SysEx "
                                  "message that begins at byte 9"),
                                 (sysex(9)[:-1], "the SysEx message that begins at byte 0 has no end (F7)")):
            self.file.write_bytes(content)
            self.expect(2, "", "send", "a.syx", "--port", 0,
                        message="vmcore: a.syx is no file of SysEx messages: " + problem)
        self.expect(2, "", "send", "b.syx", "--port", 0, message="cannot read b.syx: No such file")
        self.expect(2, "", "receive", "--port", 0, "--out", "none/b.syx",
                    message="cannot write none/b.syx: No such file")

    def test_ports_that_are_not_there(self):
        self.file.write_bytes(sysex(9))
        send = ("send", "a.syx", "--port")
        self.expect(1, "", *send, 1, message="there is no output 1, but 1 output (see")
        self.expect(1, "", *send, 3, message="there is no output 3, but 3 outputs", setup=STUDIO)
        self.expect(1, "", *send, "DX7", message="there is no output called 'DX7'", setup=STUDIO)
        self.expect(0, "", *send, "Twin", setup=STUDIO)
        self.expect(1, "", "monitor", "--port", "Twin", setup=STUDIO,
                    message="more than one input is called 'Twin': give one of the numbers 1, 2")
        self.expect(1, "", "selftest", setup="[Loopback Port 1]\nKind=out\nName=x\n",
                    message="no output has the name of an input")

    def test_monitor_ends(self):
        self.expect(0, "", "monitor", "--port", 0, "--seconds", 0,
                    message="vmcore: listening to 'Loopback'")
        process = self.start("monitor", "--port", 0)
        self.read_until(process.stderr.fileno(), b"Ctrl-C ends\n")
        process.send_signal(signal.SIGINT)
        self.assertEqual((0, b""), (process.wait(20), process.stdout.read()))

    def test_selftest(self):
        result = self.run_midi("selftest", "--speed", 10000000)
        self.assertEqual((0, ""), (result.returncode, result.stderr), result.stdout)
        lines = result.stdout.splitlines()
        self.assertEqual("output 0 'Loopback' to input 0 'Loopback'", lines[0])
        self.assertEqual("29 of 29 kinds ok", lines[-1])
        self.assertRegex(result.stdout, r"(?m)^note on +ok +[0-9.]+ [um]s +[0-9.]+ [kM]?B/s$")
        self.assertRegex(result.stdout, r"(?m)^song select +ok +not delivered, as documented$")
        self.assertRegex(result.stdout, r"(?m)^SysEx, 65536 bytes +ok ")
        result = self.run_midi("selftest", "--speed", 10000000, "--out", 2, "--in", 1, setup=STUDIO)
        self.assertEqual(0, result.returncode, result.stdout)

    def test_selftest_fails_without_a_wire(self):
        broken = STUDIO.replace("Wires=1>2, 4>5", "Wires=4>2")
        result = self.run_midi("selftest", "--out", "Twin", "--in", 1, setup=broken)
        self.assertEqual(1, result.returncode)
        self.assertIn("failed  80 10 7F did not arrive within a second\n", result.stdout)
        self.assertEqual("vmcore: nothing arrives: are the two connected?\n", result.stderr)

    def test_usage(self):
        for arguments in ((), ("send",), ("send", "a.syx"), ("receive", "--port", "0"),
                          ("send", "a.syx", "--port", "0", "--speed", "0"),
                          ("receive", "--port", "0", "--out", "b", "--count", "0"),
                          ("receive", "--port", "0", "--out", "b", "--to", "0"),
                          ("selftest", "--in", "0"), ("burn",)):
            result = self.run_midi(*arguments)
            self.assertEqual((2, ""), (result.returncode, result.stdout), arguments)
            self.assertIn("--help", result.stderr)
        for arguments in (("--help",), ("send", "--help"), ("selftest", "--help")):
            result = self.run_midi(*arguments)
            self.assertEqual((0, ""), (result.returncode, result.stderr), arguments)
            self.assertLessEqual(max(map(len, result.stdout.splitlines())), 80, arguments)


if __name__ == "__main__":
    program = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(verbosity=2)
