// The self-test: short messages one by one and in a burst, long ones of all sizes.
#include "MidiSelfTest.h"

#include <algorithm>
#include <cstdio>

#include "command.h"

namespace vm::tool {
namespace {

constexpr auto kPatience = std::chrono::seconds(1); // for one message
constexpr auto kSilence = std::chrono::milliseconds(200);
constexpr std::size_t kRepeatedSize = 1024; // long messages up to it are sent several times
constexpr int kRepeats = 5;
constexpr int kBursts = 4; // of all the probes of a kind
constexpr ShortProbe kMarker{0x007F7F9F, 0xFFFFFFFF, 3};

double Seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string TextOf(const MidiEvent& event) {
    return AbbreviatedHex(event.sysex.empty() ? BytesOf(event.message) : event.sysex);
}

std::string HexOf(const ShortProbe& probe) {
    MidiBytes bytes;
    for (unsigned i = 0; i < probe.byteCount; ++i)
        bytes.push_back(static_cast<std::uint8_t>(probe.sent >> (8 * i)));
    return Hex(bytes);
}

} // namespace

bool MidiSelfTest::Run() {
    std::printf("%-22s %-7s %10s %12s\n", "kind", "result", "latency", "rate");
    for (const MidiKind& kind : ShortKinds()) {
        m_progress.emplace().Show(kind.name);
        if (kind.isDelivered)
            Report(kind.name, TestShort(kind));
        else
            Report(kind.name, TestUndelivered(kind), "not delivered, as documented");
        if (!m_hasArrived) throw Exit{kNo, "nothing arrives: are the two connected?"};
    }
    for (const std::size_t size : SysexSizes()) {
        const std::string name = "SysEx, " + std::to_string(size) + " bytes";
        m_progress.emplace().Show(name);
        Report(name, TestSysex(size));
    }
    std::printf("%d of %d kinds ok\n", m_kinds - m_failed, m_kinds);
    return m_failed == 0;
}

void MidiSelfTest::Report(const std::string& kind, Outcome outcome, const char* remark) {
    ++m_kinds;
    m_progress.reset();
    if (!outcome.problem.empty()) {
        ++m_failed;
        std::printf("%-22s %-7s %s\n", kind.c_str(), "failed", outcome.problem.c_str());
        DropWhatComes();
    } else if (remark) {
        std::printf("%-22s %-7s %s\n", kind.c_str(), "ok", remark);
    } else {
        std::printf("%-22s %-7s %10s %12s\n", kind.c_str(), "ok",
                    FormatSeconds(Median(outcome.latencies)).c_str(),
                    FormatRate(outcome.rate).c_str());
    }
    std::fflush(stdout);
}

MidiSelfTest::Outcome MidiSelfTest::TestShort(const MidiKind& kind) {
    Outcome outcome;
    const std::vector<ShortProbe> probes = ProbesOf(kind);
    for (const ShortProbe& probe : probes) {
        outcome.problem = Ping(probe, outcome);
        if (!outcome.problem.empty()) return outcome;
    }
    outcome.problem = Burst(probes, outcome);
    if (outcome.problem.empty()) outcome.problem = ExpectNothingElse();
    return outcome;
}

MidiSelfTest::Outcome MidiSelfTest::TestUndelivered(const MidiKind& kind) {
    Outcome outcome;
    outcome.problem = Send(ProbesOf(kind).front());
    if (outcome.problem.empty()) outcome.problem = ExpectNothingElse();
    return outcome;
}

MidiSelfTest::Outcome MidiSelfTest::TestSysex(std::size_t size) {
    Outcome outcome;
    const MidiBytes message = SysexOf(size);
    for (int i = 0; i < (size <= kRepeatedSize ? kRepeats : 1); ++i) {
        outcome.problem = SendSysex(message, outcome);
        if (!outcome.problem.empty()) return outcome;
    }
    outcome.problem = ExpectNothingElse();
    return outcome;
}

std::string MidiSelfTest::Ping(const ShortProbe& probe, Outcome& outcome) {
    const Clock::time_point begin = Clock::now();
    Clock::time_point arrived;
    std::string problem = Send(probe);
    if (problem.empty()) problem = ExpectShort(probe, arrived);
    outcome.latencies.push_back(Seconds(arrived - begin));
    return problem;
}

// In order, and none lost.
std::string MidiSelfTest::Burst(const std::vector<ShortProbe>& probes, Outcome& outcome) {
    std::vector<ShortProbe> all;
    for (int i = 0; i < kBursts; ++i) all.insert(all.end(), probes.begin(), probes.end());
    const Clock::time_point begin = Clock::now();
    Clock::time_point arrived;
    for (const ShortProbe& probe : all)
        if (std::string problem = Send(probe); !problem.empty()) return problem;
    for (std::size_t i = 0; i < all.size(); ++i)
        if (std::string problem = ExpectShort(all[i], arrived); !problem.empty())
            return "message " + std::to_string(i + 1) + " of a burst of " +
                   std::to_string(all.size()) + ": " + problem;
    outcome.rate = static_cast<double>(all.size() * all[0].byteCount) / Seconds(arrived - begin);
    return {};
}

std::string MidiSelfTest::SendSysex(const MidiBytes& message, Outcome& outcome) {
    const Clock::time_point begin = Clock::now();
    m_output.Begin(message);
    WaitUntilDone();
    outcome.rate = static_cast<double>(message.size()) / Seconds(Clock::now() - begin);
    const std::optional<MidiEvent> event = Next();
    if (!event)
        return m_output.IsThere() ? "nothing arrived within a second of the end of the send"
                                  : "the output has disappeared";
    if (event->sysex.empty()) return "arrived as " + TextOf(*event);
    outcome.latencies.push_back(Seconds(event->time - begin));
    return DifferenceOf(message, event->sysex);
}

// Looks more often at first: the time counts.
void MidiSelfTest::WaitUntilDone() {
    constexpr Clock::duration kOften = std::chrono::microseconds(10);
    constexpr Clock::duration kSeldom = std::chrono::milliseconds(1);
    const Clock::time_point begin = Clock::now();
    while (!m_output.IsDone()) {
        const Clock::time_point now = Clock::now();
        m_stop.Wait(now + std::clamp((now - begin) / 16, kOften, kSeldom));
        if (m_stop.Requests() > 0) throw Exit{kNo, "stopped"};
    }
}

std::string MidiSelfTest::Send(const ShortProbe& probe) {
    const int error = m_output.SendShort(probe.sent);
    return error == 0 ? "" : "sending " + HexOf(probe) + " gave error " + std::to_string(error);
}

std::string MidiSelfTest::ExpectShort(const ShortProbe& probe, Clock::time_point& arrived) {
    const std::optional<MidiEvent> event = Next();
    if (!event) return HexOf(probe) + " did not arrive within a second";
    arrived = event->time;
    if (event->sysex.empty() && (event->message & probe.mask) == probe.sent) return {};
    return HexOf(probe) + " arrived as " + TextOf(*event);
}

// A message behind all others must be the next one.
std::string MidiSelfTest::ExpectNothingElse() {
    std::string problem = Send(kMarker);
    if (!problem.empty()) return problem;
    const std::optional<MidiEvent> event = Next();
    if (!event) return "a note after it did not arrive within a second";
    if (event->sysex.empty() && event->message == kMarker.sent) return {};
    return TextOf(*event) + " arrived too";
}

std::optional<MidiEvent> MidiSelfTest::Next() {
    std::optional<MidiEvent> event = m_inbox.Next(Clock::now() + kPatience);
    if (m_stop.Requests() > 0) throw Exit{kNo, "stopped"};
    if (event) m_hasArrived = true;
    return event;
}

void MidiSelfTest::DropWhatComes() {
    while (m_inbox.Next(Clock::now() + kSilence)) {
    }
}

// -------------------------------------------------------------------------------------------------

namespace {

void UseFirstPair(std::string& output, std::string& input) {
    const std::vector<Port> inputs = PortsOf(PortDirection::In);
    for (const Port& out : PortsOf(PortDirection::Out))
        for (const Port& in : inputs)
            if (in.name == out.name) {
                output = std::to_string(out.index);
                input = std::to_string(in.index);
                return;
            }
    throw Exit{kNo, "no output has the name of an input: choose with --out and --in"};
}

} // namespace

void RunMidiSelfTest(std::string output, std::string input, unsigned speed) {
    StopSignal stop;
    MidiOutput out;
    const MidiSession session;
    if (output.empty()) UseFirstPair(output, input);
    const Port outPort = FindPort(PortDirection::Out, output);
    const Port inPort = FindPort(PortDirection::In, input);
    out.Open(outPort, speed);
    MidiInbox inbox(inPort, stop);
    std::printf("output %u '%s' to input %u '%s'\n", outPort.index, outPort.name.c_str(),
                inPort.index, inPort.name.c_str());
    if (!MidiSelfTest(out, inbox, stop).Run()) throw Exit{kNo};
}

} // namespace vm::tool
