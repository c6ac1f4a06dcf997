#!/usr/bin/python3
"""The Librarian on a virtual display, driven with real keys, clicks and window-manager requests."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from display import LIMIT, Display, Program, wait_for

HEADER = 64    # the list begins below the header band
ROW_LEFT = 330  # a place in its rows, to the right of the tree
FIRST_ROW = 36  # from the list's top to the middle of its first row

bundle = None   # Librarian.app
data = None     # the folder of the banks
display = None


class LibrarianTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="librarian-"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def start(self, *arguments, bundle_path=None, environment=None):
        executable = (bundle_path or bundle) / "Contents/MacOS/Librarian"
        program = Program(display, executable, self.folder, *arguments, environment=environment)
        self.addCleanup(program.__exit__)
        return program

    def open(self, name="voices.syx", **options):
        """The program with a bank open, and its window."""
        program = self.start(data / name, **options)
        program.expect(rf"opened {name} \d+ messages")
        return program, display.window("Librarian")

    def select_first(self, program, window):
        left, top = self.content(program, window)
        display.click(left + ROW_LEFT, top + HEADER + FIRST_ROW)
        program.expect("selected 1")

    def content(self, program, window):
        return display.content(window, program)

    def expect_round_trip(self, program, size):
        program.expect(f"sending {size}")
        program.expect(f"sent {size}")
        program.expect(f"received {size} identical")

    def quit(self, program):
        display.key("ctrl+q")
        program.expect("closed")
        self.assertEqual(program.wait(), 0, program.log())


class Banks(LibrarianTest):
    def test_message_of_a_bank_comes_back_as_it_was_sent(self):
        program, window = self.open()
        self.select_first(program, window)
        display.key("ctrl+Return")
        self.expect_round_trip(program, 4104)
        display.menu("alt+m", "s")
        self.expect_round_trip(program, 4104)
        self.quit(program)

    def test_keys_select_and_send_from_the_hex_pane_too(self):
        program, window = self.open("patches.syx")
        self.select_first(program, window)
        display.key("Down", "Down")
        program.expect("selected 3")
        left, top = self.content(program, window)
        display.click(left + ROW_LEFT, top + 500)  # the hex pane takes the focus: its accelerators
        display.key("ctrl+l")
        self.expect_round_trip(program, 18)
        self.quit(program)

    def test_menus_open_the_bundled_banks_and_verify_them(self):
        program = self.start()
        program.expect("ready")
        display.window("Librarian")
        display.menu("alt+f", "p")
        program.expect("opened patches.syx 64 messages")
        display.key("ctrl+e")
        program.expect("verified 64 right, 0 bad, 0 without checksum")
        display.menu("alt+f", "v")
        program.expect("opened voices.syx 1 messages")
        display.menu("alt+h", "a")
        program.expect("dialog about")
        display.window("About Librarian")
        display.key("Return")
        program.expect("about")
        self.quit(program)

    def test_sorted_list_stays_sorted(self):
        shutil.copy(data / "patches.syx", self.folder)
        program = self.start(self.folder / "patches.syx")
        program.expect("opened patches.syx 64 messages")
        program.plugins()
        window = display.window("Librarian")
        left, top = self.content(program, window)
        display.click(left + 710, top + HEADER + 12)  # the header of the patches
        self.select_first(program, window)
        display.key("ctrl+d")
        program.expect("deleted 1, 63 left")
        program.expect("selected 9")  # Timbre A10
        wait_for("the mark of a changed bank", lambda: display.find(r"^\*patches.syx"))
        display.key("ctrl+1")  # the box answers by itself
        program.expect("saved bank patches.syx")
        program.expect("opened voices.syx 1 messages")
        display.key("ctrl+2")
        program.expect("opened patches.syx 64 messages")
        display.click(left + ROW_LEFT, top + HEADER + FIRST_ROW + 20)
        program.expect("selected 10")
        self.quit(program)

    def test_refused_bank_of_the_tree_can_be_chosen_again(self):
        shutil.copy(data / "voices.syx", self.folder)
        bank = self.folder / "a.syx"
        bank.write_bytes(b"\xF0\x43")
        program = self.start(self.folder / "voices.syx")
        program.expect("opened voices.syx 1 messages")
        left, top = self.content(program, display.window("Librarian"))
        display.click(left + 31, top + HEADER + 28)  # expands the folder
        for _ in range(2):
            display.click(left + 80, top + HEADER + 47)
            program.expect("failed a.syx: .*")
        bank.write_bytes(b"\xF0\x43\xF7")
        display.click(left + 80, top + HEADER + 47)
        program.expect("opened a.syx 1 messages")
        self.quit(program)

    def test_file_without_messages_is_reported_and_nothing_sent(self):
        text = self.folder / "text.syx"
        text.write_text("no messages here")
        program = self.start(text)
        program.expect("failed text.syx is no System Exclusive file: byte 0 is 6E instead of F0")
        display.window("Librarian")
        display.key("ctrl+Return")  # nothing is selected: the command is disabled
        self.quit(program)
        self.assertFalse([line for line in program.lines() if line.startswith("sending")])


class Windows(LibrarianTest):
    def test_window_shows_its_parts_and_follows_its_size(self):
        program, window = self.open("patches.syx")
        display.wait_drawn(window)
        _, _, width, height = display.geometry(window)
        display.resize(window, width + 180, height + 120)
        program.expect(rf"sized {width + 180} \d+")
        display.key("ctrl+h")
        program.expect("hex pane hidden")
        display.key("ctrl+h")
        program.expect("hex pane shown")
        self.quit(program)

    def test_close_button_asks_and_closes(self):
        program, window = self.open()
        display.close_by_button(window)
        program.expect("closed")
        self.assertEqual(program.wait(), 0, program.log())

    def test_close_is_refused_while_sending(self):
        program, window = self.open()
        display.menu("alt+m", "l")  # 1,000 bytes a second: four seconds for the bank
        program.expect("slow on")
        self.select_first(program, window)
        display.key("ctrl+Return")
        program.expect("sending 4104")
        display.close(window)
        program.expect("refused close")
        display.key("ctrl+q")
        program.expect("refused close")
        program.expect("received 4104 identical")
        display.close(window)
        program.expect("closed")
        self.assertEqual(program.wait(), 0, program.log())

    def test_quit_command_ends_the_program(self):
        program, _ = self.open()
        display.menu("alt+f", "q")
        program.expect("closed")
        self.assertEqual(program.wait(), 0, program.log())


class RememberedState(LibrarianTest):
    """What one run leaves to the next."""

    def profile(self):
        return self.folder / "config/Velmora Win.ini"

    def write_profile(self, *lines):
        self.profile().parent.mkdir(exist_ok=True)
        self.profile().write_text("".join(line + "\r\n" for line in lines))

    def stored(self, name="Velmora Win.ini"):
        return (self.folder / "config" / name).read_text().splitlines()

    def start_again(self):
        program = self.start()
        program.expect("ready")
        return program, display.window("Librarian")

    def test_window_and_recent_banks_come_back(self):
        program, window = self.open()
        display.key("ctrl+2")
        program.expect("opened patches.syx 64 messages")
        display.resize(window, 830, 620)
        display.move(window, 230, 170)
        program.expect("placed 230 170")
        place = display.geometry(window)
        self.quit(program)
        lines = self.stored()
        self.assertIn("[Librarian]", lines)
        self.assertIn("Left=230", lines)
        self.assertIn("Top=170", lines)
        self.assertIn(f"Folder={bundle}/Contents/Resources", lines)
        self.assertIn(f"Bank1={bundle}/Contents/Resources/patches.syx", lines)
        self.assertIn(f"Bank2={data}/voices.syx", lines)

        for _ in range(2):  # a place that drifts from run to run would show
            program, window = self.start_again()
            wait_for(f"the place {place}", lambda: display.geometry(window) == place)
            display.menu("alt+f", "2")
            program.expect("opened (voices|patches).syx .*")
            self.quit(program)
        self.assertIn(f"Bank2={data}/voices.syx", self.stored())

    def test_place_on_a_screen_that_is_gone_is_corrected(self):
        self.write_profile("[Librarian]", "Left=5000", "Top=-300", "Width=3000", "Height=500")
        program, window = self.start_again()

        def is_inside():
            left, top, width, height = display.geometry(window)
            frame = display.frame(window)
            return (len(frame) == 4 and left >= frame[0] and left + width + frame[1] <= 1280
                    and top >= frame[2] and top + height <= 510)

        wait_for("the window on the screen", is_inside)
        self.quit(program)

    def test_settings_are_written_while_the_program_runs(self):
        program, _ = self.open()
        program.expect("saved")
        program.process.kill()
        program.process.wait()
        self.assertIn(f"Bank1={data}/voices.syx", self.stored())

    def test_bank_that_is_gone_leaves_the_menu(self):
        bank = self.folder / "gone.syx"
        shutil.copy(data / "voices.syx", bank)
        program = self.start(bank)
        program.expect("opened gone.syx 1 messages")
        self.quit(program)
        self.assertIn(f"Bank1={bank}", self.stored())
        bank.unlink()
        program, _ = self.start_again()
        display.menu("alt+f", "1")
        program.expect("vanished gone.syx")
        self.quit(program)
        self.assertNotIn("gone.syx", "".join(self.stored()))

    def test_bank_of_the_last_folder_opens(self):
        for name in ("voices.syx", "patches.syx"):
            shutil.copy(data / name, self.folder)
        program = self.start(self.folder / "voices.syx")
        program.expect("opened voices.syx 1 messages")
        self.quit(program)
        program, _ = self.start_again()
        display.menu("alt+f", "f", "1")
        program.expect("opened patches.syx 64 messages")
        self.quit(program)

    def test_port_that_is_gone_stays_the_setting_until_another_is_chosen(self):
        self.write_profile("[Librarian]", "MidiOut=Gone Synth")
        program, window = self.open()
        self.select_first(program, window)
        display.key("ctrl+Return")
        self.expect_round_trip(program, 4104)
        self.quit(program)
        self.assertIn("MidiOut=Gone Synth", self.stored())
        program, _ = self.start_again()
        display.menu("alt+m", "o", "1")
        program.expect("output Loopback")
        self.quit(program)
        self.assertIn("MidiOut=Loopback", self.stored())
        self.assertNotIn("MidiIn", "".join(self.stored()))

    def test_instrument_opens_its_last_bank(self):
        program, _ = self.open()
        display.key("ctrl+2")
        program.expect("opened patches.syx 64 messages")
        self.quit(program)
        lines = self.stored("Velmora Preferences.ini")
        key = r"[Software\VMCore\Librarian\Instruments\Roland, model 16, device 10]"
        values = lines[lines.index(key) + 1:]
        self.assertEqual(values[:4],
                         ["Maker=Roland", "MakerType=2", "Messages=64", "MessagesType=1"])

        program, _ = self.start_again()
        display.menu("alt+i", "1")
        program.expect("opened voices.syx 1 messages")
        program.expect("selected 1")
        program.expect("described 32 six-operator voices: BRASS 1 to LEAD 4")
        self.quit(program)


class BrokenSurroundings(LibrarianTest):
    def copy_of_bundle(self):
        copy = self.folder / "Librarian.app"
        shutil.copytree(bundle, copy)
        return copy

    def check_runs_with_a_log_line(self, copy, pattern):
        program = self.start(data / "voices.syx", bundle_path=copy)
        program.expect("opened voices.syx 1 messages")
        window = display.window("Librarian")
        self.assertRegex(program.log(), pattern)
        display.close(window)
        program.expect("closed")
        self.assertEqual(program.wait(), 0, program.log())

    def test_missing_resources_leave_a_window_without_menus(self):
        copy = self.copy_of_bundle()
        shutil.rmtree(copy / "Contents/Resources")
        self.check_runs_with_a_log_line(copy, "MainMenu")

    def test_malformed_menu_file_leaves_a_window_without_menus(self):
        copy = self.copy_of_bundle()
        (copy / "Contents/Resources/MainMenu.ui").write_text("<ui><widget class='QMenuBar'")
        self.check_runs_with_a_log_line(copy, "MainMenu")

    def test_missing_plugins_leave_plain_descriptions(self):
        copy = self.copy_of_bundle()
        shutil.rmtree(copy / "Contents/PlugIns")
        program, window = self.open("patches.syx", bundle_path=copy)
        self.assertEqual(program.plugins(), "plugins none")
        self.select_first(program, window)
        self.quit(program)
        self.assertNotIn("described", "".join(program.lines()))

    def test_broken_plugin_is_refused_and_the_others_work(self):
        copy = self.copy_of_bundle()
        (copy / "Contents/PlugIns/Broken.so").write_text("no shared object")
        shutil.copy(copy / "Contents/MacOS/Librarian", copy / "Contents/PlugIns/NoPlugin.so")
        program, window = self.open("patches.syx", bundle_path=copy)
        self.assertEqual(program.plugins(), "plugins Voice editor, Patch memory, Six-operator voices")
        self.assertIn("Plug-in not loaded: Broken.so", program.log())
        self.assertIn("Plug-in not loaded: NoPlugin.so", program.log())
        self.select_first(program, window)
        program.expect("described Patch A11: Timbre A1")
        self.quit(program)

    def test_executable_outside_a_bundle_runs(self):
        bare = self.folder / "bare/Contents/MacOS"  # the folders of a bundle, but no .app above
        bare.mkdir(parents=True)
        shutil.copy(bundle / "Contents/MacOS/Librarian", bare.parent.parent / "Librarian")
        program = Program(display, bare.parent.parent / "Librarian", self.folder,
                          data / "voices.syx")
        self.addCleanup(program.__exit__)
        program.expect("opened voices.syx 1 messages")
        display.close(display.window("Librarian"))
        self.assertEqual(program.wait(), 0, program.log())

    def test_without_a_display_says_so_and_fails(self):
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        environment.update(HOME=str(self.folder), VMCORE_MIDI="loopback")
        result = subprocess.run([bundle / "Contents/MacOS/Librarian"], env=environment,
                                stdin=subprocess.DEVNULL, capture_output=True, text=True,
                                timeout=LIMIT)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertRegex(result.stderr, "(?i)display")


if __name__ == "__main__":
    bundle = pathlib.Path(sys.argv.pop(1)).resolve()
    data = pathlib.Path(sys.argv.pop(1)).resolve()
    with Display() as display:
        unittest.main(verbosity=2)
