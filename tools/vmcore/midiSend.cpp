// One message after the other.
#include "midiSend.h"

#include "Progress.h"
#include "command.h"

namespace vm::tool {
namespace {

constexpr auto kLookAgain = std::chrono::milliseconds(1);

class Sender {
public:
    Sender(MidiOutput& output, const Port& port, const SyxFile& file, StopSignal& stop)
        : m_output(output), m_port(port), m_file(file), m_stop(stop) {}

    void Run() {
        for (const std::string_view message : m_file.Messages()) {
            m_output.Begin({message.begin(), message.end()});
            WaitUntilDone();
            if (!m_output.IsThere()) End("output '" + m_port.name + "' has disappeared");
            ++m_sent;
            m_bytes += message.size();
            if (m_stop.Requests() > 0) End("stopped");
        }
    }

private:
    void WaitUntilDone() {
        while (!m_output.IsDone()) {
            m_stop.Wait(Clock::now() + kLookAgain);
            if (m_stop.Requests() > 1) End("stopped inside a message");
            m_progress.Show(State());
        }
    }

    std::string State() const {
        const std::size_t count = m_file.Messages().size();
        std::string state = "message " + std::to_string(m_sent + 1) + " of " +
                            std::to_string(count) + ", byte " + std::to_string(m_bytes) + " of " +
                            std::to_string(m_file.Size());
        return m_stop.Requests() > 0 ? state + "; stopping after it (Ctrl-C: at once)" : state;
    }

    [[noreturn]] void End(const std::string& why) const {
        throw Exit{kNo, why + ": " + std::to_string(m_sent) + " of " +
                            FormatCount(m_file.Messages().size(), "message") + " sent"};
    }

    MidiOutput& m_output;
    const Port& m_port;
    const SyxFile& m_file;
    StopSignal& m_stop;
    Progress m_progress;
    std::size_t m_sent = 0;
    std::size_t m_bytes = 0;
};

} // namespace

void SendMessages(MidiOutput& output, const Port& port, const SyxFile& file, StopSignal& stop) {
    Sender(output, port, file, stop).Run();
}

void SendFile(const std::string& file, const std::string& port, unsigned speed) {
    const SyxFile messages(file);
    StopSignal stop;
    MidiOutput output;
    const MidiSession session;
    const Port found = FindPort(PortDirection::Out, port);
    output.Open(found, speed);
    SendMessages(output, found, messages, stop);
}

} // namespace vm::tool
