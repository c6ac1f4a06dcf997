#!/usr/bin/python3
"""test_alsa.py VM_CACHE PROGRAM LIBRARY

Runs the sequencer tests of PROGRAM in a virtual machine, where LIBRARY is the sequencer library, and
checks what came out of the machine's serial MIDI card.
"""

import pathlib
import subprocess
import sys
import tempfile
import unittest

VM = pathlib.Path(__file__).resolve().parents[2] / "vm/vm.py"
cache = program = library = None


def dump(length, seed):
    """The message that the test of the serial card sends."""
    inside = bytes((i * 7 + i // 128 + seed) & 0x7F for i in range(1, length - 1))
    return b"\xF0" + inside + b"\xF7"


class Sequencer(unittest.TestCase):
    def test_cases_and_wire(self):
        with tempfile.TemporaryDirectory() as folder:
            wire = pathlib.Path(folder) / "wire"
            status = subprocess.run(
                [sys.executable, VM, "--cache", cache, "--virtual-time", "--wire", wire,
                 "--library", library, program, *arguments]).returncode
            self.assertEqual(status, 0)
            self.assertTrue(dump(10240, 1) in wire.read_bytes(), "the message is not on the wire")


if __name__ == "__main__":
    cache, program, library, *arguments = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
