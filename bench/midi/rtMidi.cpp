// RtMidi on JACK or ALSA.
#include <RtMidi.h>

#include "figures.h"
#include "link.h"

namespace bench {
namespace {

void Open(RtMidi& midi, const std::string& name) {
    for (unsigned i = 0; i < midi.getPortCount(); ++i) {
        if (midi.getPortName(i).find(name) == std::string::npos) continue;
        return midi.openPort(i);
    }
    throw NotMeasured("RtMidi has no port " + name);
}

void OnMessage(double, Bytes* message, void* receiver) {
    static_cast<Receiver*>(receiver)->OnBytes(*message);
}

class RtMidiLink final : public Link {
public:
    RtMidiLink(const std::string& system, Receiver& receiver)
        : m_in(Api(system), "bench-in"), m_out(Api(system), "bench-out") {
        m_in.ignoreTypes(false, false, false);
        m_in.setCallback(OnMessage, &receiver);
        Open(m_in, WayBack(system));
        Open(m_out, WayBack(system));
    }

    void SendShort(std::uint32_t message) override {
        const unsigned char bytes[] = {static_cast<unsigned char>(message),
                                       static_cast<unsigned char>(message >> 8),
                                       static_cast<unsigned char>(message >> 16)};
        m_out.sendMessage(bytes, sizeof bytes);
    }

    void SendSysex(std::span<const Bytes> messages) override {
        for (const Bytes& message : messages) m_out.sendMessage(&message);
    }

private:
    static RtMidi::Api Api(const std::string& system) {
        return system == "jack" ? RtMidi::UNIX_JACK : RtMidi::LINUX_ALSA;
    }

    RtMidiIn m_in;
    RtMidiOut m_out;
};

} // namespace

std::unique_ptr<Link> OpenRtMidi(const std::string& system, Receiver& receiver) try {
    return std::make_unique<RtMidiLink>(system, receiver);
} catch (const RtMidiError& error) {
    throw NotMeasured("RtMidi: " + error.getMessage());
}

} // namespace bench
