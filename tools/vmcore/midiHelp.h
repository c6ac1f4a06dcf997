// The texts of `vmcore midi ... --help`, at most 80 columns wide. For midi.cpp only.
#pragma once

namespace vm::tool {

constexpr const char* kOutPortHelp = "The output: its number or its name";
constexpr const char* kInPortHelp = "The input: its number or its name";
constexpr const char* kSpeedHelp = "Bytes a second; without it, the port's own speed";
constexpr const char* kSecondsHelp = "End after this time";
constexpr const char* kCountHelp = "End after this many messages";

constexpr const char* kMidiHelp =
    R"(The ports are those that every VMCore program sees, under the same names.
Numbers may change when something is plugged in; names stay. The environment
variable VMCORE_MIDI chooses the MIDI system ("alsa", "jack", "loopback";
without it, the first that is there). Names, speeds and pauses can be set in
'VMCore MIDI.ini' below $XDG_CONFIG_HOME (~/.config), or in the file that
VMCORE_MIDI_SETUP names: see midi.md in share/doc/vmcore-tools.

Exit status: 0 well; 1 the answer is no (no such port, a port that disappeared,
a failed test, stopped before the end); 2 a file cannot be read or written, or
wrong usage.)";

constexpr const char* kMidiListHelp =
    R"(Prints a line for each port: "out" or "in", number, name. A name belongs to what
is plugged in, if the set-up file or the MIDI system says so. The set-up file
wants the ports' own names in its sections [Port NAME]: --own prints those, by
leaving the file aside.

--json prints an object:
  {"ports": [{"direction": "out" or "in", "index": N, "name": ...}]})";

constexpr const char* kSendHelp =
    R"(Sends the SysEx messages of a file, one after the other, each once the one
before has left. Without --speed that is as fast as the set-up file says for the
port, else 3125 bytes a second, the speed of a MIDI cable.

Ctrl-C ends after the message on its way, so that no device is left in the
middle of one; Ctrl-C again ends at once.

Exit status 1 when there is no such port, when it disappeared, or when stopped;
2 for a file that cannot be read or holds anything but SysEx messages. The
message says at which byte (the first is byte 0).

  vmcore midi send voices.syx --port DX7)";

constexpr const char* kMidiReceiveHelp =
    R"(Appends the SysEx messages that arrive to a file, each as a whole as soon as it
is complete; everything else is ignored. Ends at Ctrl-C or as --seconds and
--count say, whichever is first. --request sends the messages of another file
once the input is open, such as a request for a dump.

Exit status 1 when there is no such port, or when fewer messages than --count
have come; 2 when a file cannot be read or written.

  vmcore midi receive --port DX7 --out voices.syx --count 1)";

constexpr const char* kMonitorHelp =
    R"(Prints a line for each message: seconds since the start, bytes in hexadecimal,
what it is. Long SysEx messages are abbreviated. What the library does not
deliver to programs does not appear: song position, song select, tune request.

  vmcore midi monitor --port 0)";

constexpr const char* kSelftestHelp =
    R"(Sends every kind of message through an output and compares what arrives at an
input. The two must be connected: by a cable, by the MIDI system, or because
they are the two ends of a loopback. Without --out and --in these are the first
output that has the name of an input, and that input.

Prints a line for each kind: whether all of it arrived unchanged and in order,
the median of the times from sending to arrival, the bytes a second (of short
messages sent in a burst; of SysEx until the send is done, thus at most
--speed). Song position, song select and tune request are right when they do not
arrive: the library does not deliver them. Of a quarter frame, which is
delivered with two bytes too many, two are compared.

At 3125 bytes a second the test takes half a minute. It sends notes, program
changes and a reset: keep other devices off the cable. Exit status 1 when
anything is not as it should be.)";

} // namespace vm::tool
