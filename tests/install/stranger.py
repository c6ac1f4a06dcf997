"""What a stranger does with an installation: uses its programs, and builds what the README shows.

`Programs` and `Development` are mixed into test cases that say where things are installed.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/e2e"))

from display import Program  # noqa: E402
from trace import Trace  # noqa: E402


def run(*command, **options):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True,
                            stdin=subprocess.DEVNULL, timeout=100, **options)
    output = result.stdout + result.stderr
    if result.returncode != 0:
        output = re.sub(r"^\.+ /.*\n", "", output, flags=re.M)  # the headers read, see below
        raise AssertionError(f"{command} gave {result.returncode}:\n{output}")
    return output


def blocks(page, section, language):
    """The code blocks in this language in a section of a page."""
    text = (ROOT / page).read_text()
    part = re.search(rf"^## {section}$(.*?)(?=^## |\Z)", text, re.M | re.S)[1]
    return re.findall(rf"^```{language}\n(.*?)^```$", part, re.M | re.S)


def cache(build):
    return (pathlib.Path(build) / "CMakeCache.txt").read_text()


def sanitizers(build):
    """The compiler's flags: a program of a sanitized library is sanitized itself."""
    for line in cache(build).splitlines():
        if line.startswith("VMCORE_SANITIZE:") and not line.endswith("="):
            return [f"-fsanitize={line.split('=', 1)[1]}"]
    return []


class Installation:
    """`prefix`, `environment` (what the loader and pkg-config need besides) and `flags` of the compiler
    belong to it."""

    prefix = pathlib.Path("/usr")
    environment = {}
    flags = []

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vmcore-stranger-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def start(self, executable, *arguments, environment=None):
        program = Program(None, executable, self.folder, *arguments, environment={
            **self.environment, "QT_QPA_PLATFORM": "offscreen", **(environment or {})})
        self.addCleanup(program.__exit__)
        return program


class Programs(Installation):
    def test_tool_runs_without_display(self):
        tool, file = self.prefix / "bin/vmcore", self.folder / "tool.ini"
        environment = {"HOME": str(self.folder), "PATH": "/usr/bin"}
        run(tool, "ini", "set", file, "Window", "Left", "120", env=environment)
        self.assertEqual("120\n", run(tool, "ini", "get", file, "Window", "Left", env=environment))
        page = re.search(r"(\S+\.md) in\s+(share/\S+[^.\s])", run(tool, "midi", "--help", env=environment))
        self.assertTrue((self.prefix / page[2] / page[1]).is_file())
        self.assertIn("Loopback", run(tool, "midi", "list", env={**environment, "VMCORE_MIDI": "loopback"}))

    def test_librarian_opens_a_bank(self):
        bank = ROOT / "examples/librarian/data/voices.syx"
        librarian = self.start(self.prefix / "bin/vmcore-librarian", bank)
        librarian.expect("ready")
        librarian.expect(r"opened voices.syx \d+ messages")
        self.assertRegex(librarian.plugins(), "plugins .+, .+")
        self.assertNotIn("MainMenu", librarian.log())


class Development(Installation):
    def write(self, name, text):
        (self.folder / name).write_text(text)

    def write_host(self, in_init_instance=""):
        [host, *_] = blocks("README.md", "A program", "cpp")
        create = re.search(r".*m_frame\.Create.*\n", host)[0]
        self.write("hello.cpp", host.replace(create, create + in_init_instance))

    def build(self, section):
        """Builds what the section's CMake lines say; everything installed goes below `stage`."""
        [lines] = blocks("README.md", section, "cmake")
        [menu] = blocks("docs/interface-files.md", "Menus", "xml")
        project = "cmake_minimum_required(VERSION 3.25)\nproject(hello LANGUAGES CXX)\n"
        if "find_package" not in lines:
            project += "find_package(VMCore REQUIRED)\n"
        self.write("MainMenu.ui", menu)
        self.write("CMakeLists.txt", project + lines)
        run("cmake", "-S", self.folder, "-B", self.folder / "build",
            f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={self.compiler}",
            "-DCMAKE_CXX_FLAGS=" + " ".join(["-H", *self.flags]))  # -H lists what is read
        self.check_headers(run("cmake", "--build", self.folder / "build", "--verbose"))

    def check_headers(self, listing):
        self.assertRegex(listing, "/include/(VMCore/)?afxwin.h")  # in a build folder those of the sources
        for name in ("/qt6/", "/Qt", "alsa/", "jack/", "curl/"):
            self.assertNotIn(name, listing)

    def start_traced(self, executable):
        trace = Trace(self.folder / "trace.jsonl")
        return self.start(executable, environment=trace.environment()), trace

    def test_readme_program_with_cmake(self):
        self.write_host()
        self.build("A program")
        bundle = self.folder / "build/hello.app/Contents"
        self.assertTrue((bundle / "Resources/MainMenu.ui").is_file())
        _, trace = self.start_traced(bundle / "MacOS/hello")
        trace.expect("WM_ACTIVATE", **{"class": "Frame"})  # its window is shown

    def build_with_pkg_config(self):
        command = re.search(r"`(c\+\+ hello\.cpp [^`]*)`", (ROOT / "README.md").read_text())[1]
        command = command.replace("c++", self.compiler, 1)
        self.check_headers(run("sh", "-c", " ".join([command, "-H -o hello", *self.flags]),
                               cwd=self.folder, env={**os.environ, **self.environment}))
        return self.start_traced(self.folder / "hello")

    def test_readme_program_with_pkg_config(self):
        self.write_host()
        _, trace = self.build_with_pkg_config()
        trace.expect("WM_ACTIVATE", **{"class": "Frame"})  # its window is shown

    def test_example_with_a_worker_ends_while_it_works(self):
        [example] = blocks("docs/threading.md", "An example", "cpp")
        self.write("hello.cpp", example.replace(
            "SetTitle(title);", "SetTitle(title); if (percent == 3) PostMessage(WM_CLOSE);"))
        program, trace = self.build_with_pkg_config()
        self.assertEqual(0, program.wait(), program.log())
        trace.expect("WM_USER+1", wParam=3, sender="post")

    def test_plugin_of_a_foreign_program(self):
        [module] = blocks("docs/plug-ins.md", "In a foreign program", "cpp")
        self.write("foreign.cpp", module)
        self.check_headers(run(
            "sh", "-c", " ".join([self.compiler, "-Wall -Werror -fPIC -shared -Wl,-z,defs -H foreign.cpp -o foreign.so",
                                  "$(pkg-config --cflags --libs vmcore)", *self.flags]),
            cwd=self.folder, env={**os.environ, **self.environment}))

    def test_readme_plugin_in_an_installed_program(self):
        plugin, loading = blocks("README.md", "A plug-in", "cpp")
        self.write("panel.cpp", plugin)
        click = "m_frame.GetWindow(0)->PostMessage(WM_LBUTTONDOWN);"
        self.write_host(f"{loading}{click} m_frame.PostMessage(WM_CLOSE);\n")
        self.build("A plug-in")
        run("cmake", "--install", self.folder / "build", "--prefix", self.folder / "stage")
        program, trace = self.start_traced(self.folder / "stage/bin/hello")
        self.assertEqual(0, program.wait(), program.log())
        trace.expect("WM_LBUTTONDOWN", result=1, **{"class": "Panel"})
        self.assertIn("Hello from the plug-in", program.log())
