#!/usr/bin/python3
"""vm.py [OPTIONS] PROGRAM [ARGUMENTS...]

Runs PROGRAM as root in an emulated machine whose kernel has the sound sequencer, virtual MIDI cards,
a MIDI card on a serial port and a USB bus for devices made of files, all of which the machine that
builds need not have. Prints what the program prints; the exit status is the program's, or 125 when
the machine gave none. Dynamically linked programs bring their libraries along.
"""

import argparse
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

import kernel

PARAMETERS = {
    "snd_virmidi": "enable=1,1 midi_devs=2,1",
    "snd_serial_u16550": "port=0x2f8 irq=3 outs=1 ins=1",
    "dummy_hcd": "num=2",
}

# Nothing that only takes time; the second serial port is left to the sound driver.
COMMAND_LINE = ("console=ttyS0 quiet loglevel=3 panic=-1 reboot=t nokaslr mitigations=off "
                "rodata=off tsc=reliable no_timer_check random.trust_cpu=on cryptomgr.notests "
                "8250.nr_uarts=1 pnpacpi=off rdinit=/init")

# busybox stands for every command; the modules' folder has their order and parameters.
INIT = """#!/bin/busybox sh
echo; echo VM-BEGIN
/bin/busybox --install -s /bin
mount -t devtmpfs dev /dev; mount -t proc proc /proc; mount -t sysfs sys /sys
while read -r module parameters; do
    insmod "/modules/$module.ko" $parameters || echo "insmod $module failed"
done </modules/order
mount -t configfs config /sys/kernel/config
export HOME=/tmp TERM=dumb VMCORE_VM=1
cd /tmp
sh /command </dev/null
status=$?
echo; echo "VM-EXIT $status"
reboot -f
"""


# Files of the machine: an archive in the format that kernels unpack at their start.

class Archive:
    def __init__(self):
        self.bytes = bytearray()
        self.names = set()

    def add(self, name, content=b"", mode=0o100755):
        if name in self.names:
            return
        if "/" in name:
            self.add(name.rpartition("/")[0], mode=0o040755)
        self.names.add(name)
        fields = (len(self.names), mode, 0, 0, 1, 0, len(content), 0, 0, 0, 0, len(name) + 1, 0)
        self.bytes += b"070701" + "".join(f"{field:08x}" for field in fields).encode()
        self._add_padded(name.encode() + b"\0", 2)
        self._add_padded(content, 0)

    def add_file(self, name, path):
        self.add(name, pathlib.Path(path).read_bytes())

    def end(self):
        self.add("TRAILER!!!", mode=0)
        return bytes(self.bytes)

    def _add_padded(self, data, offset):
        """The header before a name ends two bytes after a multiple of four."""
        self.bytes += data + b"\0" * (-(len(data) + offset) % 4)


def libraries_of(program):
    """Where the dynamic linker looks for them -> where they are. Empty for static programs."""
    listing = subprocess.run(["ldd", program], capture_output=True, text=True).stdout
    missing = re.findall(r"^\s*(\S+) => not found", listing, re.MULTILINE)
    if missing:
        raise kernel.Failed(f"{program} needs {', '.join(missing)}")
    found = dict(re.findall(r"^\s*(\S+) => (/\S+) \(", listing, re.MULTILINE))
    linker = re.search(r"^\s*(/\S+) \(", listing, re.MULTILINE)
    return {f"lib/{name}": path for name, path in found.items()} | (
        {linker[1].lstrip("/"): linker[1]} if linker else {})


def initial_files(options, kernel_folder):
    archive = Archive()
    for folder in ("dev", "proc", "sys", "tmp"):
        archive.add(folder, mode=0o040755)
    archive.add("init", INIT.encode())
    archive.add_file("bin/busybox", shutil.which("busybox"))
    order = (kernel_folder / "modules/order").read_text().split()
    archive.add("modules/order",
                "".join(f"{name} {PARAMETERS.get(name, '')}\n" for name in order).encode())
    for name in order:
        archive.add_file(f"modules/{name}.ko", kernel_folder / f"modules/{name}.ko")
    archive.add_file("test", options.program)
    loaded = [(f"lib/{pathlib.Path(path).name}", path) for path in options.library]
    for program in [options.program, *options.library]:
        loaded += libraries_of(program).items()
    loaded += [(path.lstrip("/"), path) for path in options.file]
    for name, path in loaded:
        archive.add_file(name, path)
    command = ["exec", "env", "LD_LIBRARY_PATH=/lib", *options.env, "/test", *options.arguments]
    archive.add("command", shlex.join(command).encode())
    return archive.end()


def emulate(options, kernel_folder, folder):
    """Runs the machine to its end and returns what it printed."""
    (folder / "initrd").write_bytes(initial_files(options, kernel_folder))
    # Counted instructions as the clock: the same in every run, and waiting takes no time.
    time = ["-icount", "shift=2,sleep=off"] if options.virtual_time else []
    try:
        subprocess.run(
            ["qemu-system-x86_64", "-M", "pc", "-accel", "tcg", "-cpu", "qemu64",
             "-m", str(options.memory), "-smp", "1", "-nodefaults", "-no-user-config",
             "-display", "none", "-monitor", "none", "-no-reboot", *time,
             "-kernel", kernel_folder / "vmlinux", "-initrd", folder / "initrd",
             "-append", COMMAND_LINE, "-serial", f"file:{folder}/console",
             "-serial", f"file:{options.wire}" if options.wire else "null"],
            stdin=subprocess.DEVNULL, timeout=options.timeout)
    except subprocess.TimeoutExpired:
        print(f"vm.py: stopped after {options.timeout} s", file=sys.stderr)
    except FileNotFoundError:
        raise kernel.Failed("qemu-system-x86_64 is missing: run scripts/setup")
    return (folder / "console").read_bytes().decode(errors="replace").replace("\r", "")


def run_program(options):
    with tempfile.TemporaryDirectory() as name:
        console = emulate(options, kernel.prepare(options.cache.resolve()), pathlib.Path(name))
    before, _, output = console.partition("\nVM-BEGIN\n")
    output, _, status = output.rpartition("\nVM-EXIT ")
    number = re.match(r"\d+", status)
    if not number:
        print(before, output, status, "vm.py: the machine gave no result", sep="\n")
        return 125
    print(output, end="")
    return int(number[0])


def parse_options():
    parser = argparse.ArgumentParser()
    parser.add_argument("--cache", type=pathlib.Path, required=True, help="where the kernel is kept")
    parser.add_argument("--library", action="append", default=[],
                        help="a library that the program loads itself")
    parser.add_argument("--file", action="append", default=[],
                        help="a file that the program reads, at the same place there")
    parser.add_argument("--env", action="append", default=[], help="NAME=VALUE for the program")
    parser.add_argument("--wire", help="a file for what the serial MIDI card sends")
    parser.add_argument("--virtual-time", action="store_true",
                        help="the machine's time does not depend on this one's load")
    parser.add_argument("--memory", type=int, default=512, help="MiB")
    parser.add_argument("--timeout", type=int, default=280, help="seconds")
    parser.add_argument("program")
    parser.add_argument("arguments", nargs=argparse.REMAINDER)
    return parser.parse_args()


def main():
    try:
        sys.exit(run_program(parse_options()))
    except kernel.Failed as problem:
        print(f"vm.py: {problem}", file=sys.stderr)
        sys.exit(125)


if __name__ == "__main__":
    main()
