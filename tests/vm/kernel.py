#!/usr/bin/python3
"""kernel.py CACHE_FOLDER

Puts the distribution's kernel and its MIDI modules into the cache: downloaded as packages, unpacked,
never installed. Needs no root. Does nothing when the cache is complete.
"""

import fcntl
import hashlib
import lzma
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import zlib

# Debian's name, then Ubuntu's: both stand for the newest kernel that has sound.
META_PACKAGES = ("linux-image-amd64", "linux-image-generic")
# What else an image package may have put its modules into.
SIBLINGS = ("linux-modules-", "linux-modules-extra-")

# The sequencer, and what plays the hardware: virtual cards, a card on a serial port, and a USB bus
# whose devices are described by files.
MODULES = ("snd-seq", "snd-hrtimer", "snd-seq-midi", "snd-seq-dummy", "snd-virmidi",
           "snd-serial-u16550", "dummy_hcd", "usb_f_midi", "snd-usb-audio")


class Failed(Exception):
    pass


def run(*command, **options):
    result = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE, **options)
    if result.returncode != 0:
        raise Failed(f"{' '.join(map(str, command))}: {result.stderr.decode(errors='replace')}")
    return result.stdout


# Packages

class Packages:
    """Answers from the system's package lists."""

    def __init__(self):
        # As root, apt would like to fetch as a user that cannot write where we want it.
        self.options = ["-o", "APT::Sandbox::User=root"] if os.geteuid() == 0 else []

    def update_into(self, folder):
        """Uses fresh lists in `folder` from now on: a user without rights can make those."""
        for name in ("lists/partial", "archives/partial"):
            (folder / name).mkdir(parents=True)
        self.options += ["-o", f"Dir::State::lists={folder}/lists", "-o", f"Dir::Cache={folder}"]
        run("apt-get", "-qq", *self.options, "update")

    def depends_of(self, package):
        text = subprocess.run(["apt-cache", *self.options, "depends", "--important", package],
                              capture_output=True, text=True).stdout
        return re.findall(r"^\s*Depends: (\S+)$", text, re.MULTILINE)

    def exists(self, package):
        return subprocess.run(["apt-cache", *self.options, "show", package],
                              capture_output=True).returncode == 0

    def of_kernel(self):
        """The image of the distribution's current kernel, and the packages with its modules."""
        for image in sum(map(self.depends_of, META_PACKAGES), []):
            release = re.fullmatch(r"linux-image-(\d.*)", image)
            if release:
                return [image] + [sibling + release[1] for sibling in SIBLINGS
                                  if self.exists(sibling + release[1])]
        raise Failed(f"the package lists know none of {', '.join(META_PACKAGES)}")

    def unpack_kernel(self, folder):
        run("apt-get", "-qq", *self.options, "download", *self.of_kernel(), cwd=folder)
        for package in sorted(folder.glob("*.deb")):
            run("dpkg-deb", "-x", package, folder / "root")
            package.unlink()


def unpack_kernel(folder):
    packages = Packages()
    try:
        packages.unpack_kernel(folder)
    except Failed:  # no lists, or outdated ones
        packages.update_into(folder / "apt")
        packages.unpack_kernel(folder)


# Compression

def decompressed(data, what):
    if data[:6] == b"\xfd7zXZ\0":
        return lzma.LZMADecompressor(lzma.FORMAT_XZ).decompress(data)
    if data[:2] == b"\x1f\x8b":
        return zlib.decompressobj(wbits=31).decompress(data)
    if data[:4] == b"\x28\xb5\x2f\xfd":
        result = subprocess.run(["zstd", "-qdc"], input=data, capture_output=True)
        if result.stdout:  # it complains about what follows the compressed data
            return result.stdout
    raise Failed(f"{what}: unknown compression {data[:4].hex()}")


def unpacked_kernel(image):
    """The ELF file inside a compressed kernel image, at the place its header names."""
    number = lambda at, size: int.from_bytes(image[at:at + size], "little")
    begin = (number(0x1F1, 1) + 1) * 512 + number(0x248, 4)
    return decompressed(image[begin:begin + number(0x24C, 4)], "kernel image")


# Modules

SIGNATURE_END = b"~Module signature appended~\n"


def unsigned(data):
    """A module without its signature, which the kernel need not have and takes long to check."""
    if not data.endswith(SIGNATURE_END):
        return data
    end = len(data) - len(SIGNATURE_END)
    return data[:end - 12 - int.from_bytes(data[end - 4:end], "big")]


def module_name(file_name):
    return file_name.split(".ko")[0].replace("-", "_")


class Modules:
    """The module files under a folder, by name, with what they need."""

    def __init__(self, folder):
        self.files = {module_name(path.name): path for path in folder.rglob("*.ko*")}
        builtin = next(folder.rglob("modules.builtin")).read_text().split()
        self.builtin = {module_name(os.path.basename(line)) for line in builtin}

    def content(self, name):
        path = self.files.get(name)
        if not path:
            raise Failed(f"the kernel has no module {name}")
        data = path.read_bytes()
        return unsigned(data if data[:4] == b"\x7fELF" else decompressed(data, path))

    def needed_by(self, data):
        found = re.search(rb"\0depends=([^\0]*)\0", b"\0" + data)
        names = found[1].decode().split(",") if found and found[1] else []
        return [module_name(name) for name in names]

    def write(self, wanted, folder):
        """Writes the modules and all they need; the file `order` lists them as they can be loaded."""
        order = []

        def add(name):
            if name in order or (name in self.builtin and name not in self.files):
                return
            data = self.content(name)
            for other in self.needed_by(data):
                add(other)
            (folder / f"{name}.ko").write_bytes(data)
            order.append(name)

        for name in wanted:
            add(module_name(name))
        (folder / "order").write_text("\n".join(order) + "\n")


def build_cache(cache):
    with tempfile.TemporaryDirectory(dir=cache) as name:
        folder = pathlib.Path(name)
        unpack_kernel(folder)
        root = folder / "root"
        new = folder / "new"
        (new / "modules").mkdir(parents=True)
        image = next(root.glob("boot/vmlinuz-*"))
        (new / "vmlinux").write_bytes(unpacked_kernel(image.read_bytes()))
        Modules(root).write(MODULES, new / "modules")
        new.rename(cache / "kernel")


def prepare(cache):
    """The folder with `vmlinux` and `modules`, which is made when it is missing or out of date."""
    cache.mkdir(parents=True, exist_ok=True)
    kernel = cache / "kernel"
    stamp = hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()
    with open(cache / "lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        made_by = kernel / "made-by"
        if not made_by.is_file() or made_by.read_text() != stamp:
            shutil.rmtree(kernel, ignore_errors=True)
            build_cache(cache)
            made_by.write_text(stamp)
    return kernel


def main():
    try:
        print(prepare(pathlib.Path(sys.argv[1]).resolve()))
    except Failed as problem:
        sys.exit(f"kernel.py: {problem}")


if __name__ == "__main__":
    main()
