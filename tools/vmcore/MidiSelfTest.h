// `vmcore midi selftest`: sends every kind of message through an output, and compares what arrives
// at an input that is connected to it.
#pragma once

#include <string>
#include <vector>

#include "MidiInbox.h"
#include "MidiOutput.h"
#include "Progress.h"
#include "midiKinds.h"

namespace vm::tool {

class MidiSelfTest {
public:
    MidiSelfTest(MidiOutput& output, MidiInbox& inbox, StopSignal& stop)
        : m_output(output), m_inbox(inbox), m_stop(stop) {}

    /// Prints a line for each kind. True when all are well. Throws Exit (kNo) when not even the first
    /// kind arrives, and at a request to stop.
    bool Run();

private:
    /// What came of one kind.
    struct Outcome {
        std::string problem = {};           ///< empty for none
        std::vector<double> latencies = {}; ///< in seconds
        double rate = 0;                    ///< bytes a second
    };

    Outcome TestShort(const MidiKind& kind);
    Outcome TestUndelivered(const MidiKind& kind);
    Outcome TestSysex(std::size_t size);
    std::string Ping(const ShortProbe& probe, Outcome& outcome);
    std::string Burst(const std::vector<ShortProbe>& probes, Outcome& outcome);
    std::string SendSysex(const MidiBytes& message, Outcome& outcome);
    std::string ExpectShort(const ShortProbe& probe, Clock::time_point& arrived);
    std::string ExpectNothingElse();
    std::string Send(const ShortProbe& probe);
    std::optional<MidiEvent> Next();
    void WaitUntilDone();
    void DropWhatComes();

    void Report(const std::string& kind, Outcome outcome, const char* remark = nullptr);

    MidiOutput& m_output;
    MidiInbox& m_inbox;
    StopSignal& m_stop;
    std::optional<Progress> m_progress;
    int m_kinds = 0;
    int m_failed = 0;
    bool m_hasArrived = false; ///< anything at all
};

/// Without names, the first output that has the name of an input. `speed` is 0 for the port's own.
void RunMidiSelfTest(std::string output, std::string input, unsigned speed);

} // namespace vm::tool
