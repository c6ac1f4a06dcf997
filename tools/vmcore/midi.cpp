// The commands below `vmcore midi`: their arguments and what each calls.
#include "midi.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "MidiSelfTest.h"
#include "midiHelp.h"
#include "midiPorts.h"
#include "midiReceive.h"
#include "midiSend.h"

namespace vm::tool {
namespace {

/// What the command line gave to whichever command it named.
struct Arguments {
    std::string file, port, output, input;
    unsigned speed = 0;
    bool json = false, own = false;
    ReceiveLimits limits;
    DumpRequest request;
};
using Shared = std::shared_ptr<Arguments>; // the callbacks keep it alive

void List(const Arguments& given) {
    if (given.own) setenv("VMCORE_MIDI_SETUP", "", 1);
    const MidiSession session;
    const std::string list = given.json ? ListPortsAsJson() : ListPorts();
    std::fwrite(list.data(), 1, list.size(), stdout);
}

// Empty, or what is wrong with an argument.
std::string CheckCount(const std::string& text) {
    unsigned count = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, count);
    return error == std::errc() && rest == end && count > 0
               ? ""
               : "'" + text + "' is no number from 1 to 4294967295";
}

std::string CheckTime(const std::string& text) {
    constexpr double kTooLong = 1e9;
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == 0 && seconds >= 0 && seconds < kTooLong
               ? ""
               : "'" + text + "' is no number of seconds";
}

CLI::App* AddCommand(CLI::App& midi, const char* name, const char* text, const char* footer) {
    CLI::App* const command = midi.add_subcommand(name, text);
    command->footer(footer);
    return command;
}

CLI::Option* AddName(CLI::App* command, const char* name, std::string& target, const char* type,
                     const char* text) {
    return command->add_option(name, target, text)->type_name(type);
}

void AddSpeed(CLI::App* command, unsigned& target) {
    command->add_option("--speed", target, kSpeedHelp)->type_name("N")->check(CheckCount);
}

void AddLimits(CLI::App* command, ReceiveLimits& limits) {
    command->add_option("--seconds", limits.seconds, kSecondsHelp)
        ->type_name("S")
        ->check(CheckTime);
    command->add_option("--count", limits.count, kCountHelp)->type_name("N")->check(CheckCount);
}

void AddList(CLI::App& midi, const Shared& given) {
    CLI::App* const command = AddCommand(midi, "list", "Print the ports", kMidiListHelp);
    command->add_flag("--json", given->json, "Print them as JSON");
    command->add_flag("--own", given->own, "Print the ports' own names");
    command->callback([given] { List(*given); });
}

void AddSend(CLI::App& midi, const Shared& given) {
    CLI::App* const command = AddCommand(midi, "send", "Send a file of SysEx messages", kSendHelp);
    AddName(command, "FILE", given->file, "", "The file (.syx)")->required();
    AddName(command, "--port", given->port, "PORT", kOutPortHelp)->required();
    AddSpeed(command, given->speed);
    command->callback([given] { SendFile(given->file, given->port, given->speed); });
}

void AddReceive(CLI::App& midi, const Shared& given) {
    CLI::App* const command =
        AddCommand(midi, "receive", "Append SysEx messages to a file", kMidiReceiveHelp);
    AddName(command, "--port", given->port, "PORT", kInPortHelp)->required();
    AddName(command, "--out", given->file, "FILE", "The file; it is created when it is missing")
        ->required();
    AddLimits(command, given->limits);
    CLI::Option* const request = AddName(command, "--request", given->request.file, "FILE",
                                         "Send this file of SysEx messages first");
    CLI::Option* const to =
        AddName(command, "--to", given->request.port, "PORT", "The output for --request");
    request->needs(to);
    to->needs(request);
    AddSpeed(command, given->request.speed);
    command->callback(
        [given] { Receive(given->port, given->file, given->limits, given->request); });
}

void AddMonitor(CLI::App& midi, const Shared& given) {
    CLI::App* const command =
        AddCommand(midi, "monitor", "Print the messages that arrive", kMonitorHelp);
    AddName(command, "--port", given->port, "PORT", kInPortHelp)->required();
    AddLimits(command, given->limits);
    command->callback([given] { Monitor(given->port, given->limits); });
}

void AddSelftest(CLI::App& midi, const Shared& given) {
    CLI::App* const command =
        AddCommand(midi, "selftest", "Send every kind of message in a loop", kSelftestHelp);
    CLI::Option* const out = AddName(command, "--out", given->output, "PORT", kOutPortHelp);
    CLI::Option* const in = AddName(command, "--in", given->input, "PORT", kInPortHelp);
    out->needs(in);
    in->needs(out);
    AddSpeed(command, given->speed);
    command->callback([given] { RunMidiSelfTest(given->output, given->input, given->speed); });
}

} // namespace

void AddMidiCommands(CLI::App& app) {
    CLI::App* const midi = app.add_subcommand("midi", "List, use and test MIDI ports");
    midi->footer(kMidiHelp);
    midi->require_subcommand(1);
    const auto given = std::make_shared<Arguments>();
    AddList(*midi, given);
    AddSend(*midi, given);
    AddReceive(*midi, given);
    AddMonitor(*midi, given);
    AddSelftest(*midi, given);
}

} // namespace vm::tool
