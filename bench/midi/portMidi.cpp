// PortMidi on ALSA. It does not call: a thread looks for input every millisecond.
#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include <portmidi.h>

#include "figures.h"
#include "link.h"

namespace bench {
namespace {

constexpr int kInputEvents = 20'000;

enum class Way { In, Out };

PmDeviceID FindDevice(const std::string& name, Way way) {
    for (PmDeviceID i = 0; i < Pm_CountDevices(); ++i) {
        const PmDeviceInfo* info = Pm_GetDeviceInfo(i);
        const bool fits = way == Way::In ? info->input != 0 : info->output != 0;
        if (fits && std::string(info->name).find(name) != std::string::npos) return i;
    }
    throw NotMeasured("PortMidi has no device " + name);
}

/// Puts together what comes in pieces of four bytes.
class Assembler {
public:
    explicit Assembler(Receiver& receiver) : m_receiver(receiver) {}

    void Take(std::uint32_t message) {
        if (m_sysex.empty() && (message & 0xFF) != 0xF0) return m_receiver.OnShort(message);
        for (int shift = 0; shift < 32; shift += 8) {
            m_sysex.push_back(static_cast<std::uint8_t>(message >> shift));
            if (m_sysex.back() != 0xF7) continue;
            m_receiver.OnSysex(m_sysex);
            return m_sysex.clear();
        }
    }

private:
    Receiver& m_receiver;
    Bytes m_sysex;
};

class PortMidiLink final : public Link {
public:
    PortMidiLink(const std::string& system, Receiver& receiver) : m_assembler(receiver) {
        Pm_Initialize();
        const std::string name = WayBack(system);
        Pm_OpenInput(&m_in, FindDevice(name, Way::In), nullptr, kInputEvents, nullptr, nullptr);
        Pm_OpenOutput(&m_out, FindDevice(name, Way::Out), nullptr, 0, nullptr, nullptr, 0);
        if (!m_in || !m_out) throw NotMeasured("PortMidi cannot open " + name);
        Pm_SetFilter(m_in, 0); // none
        m_reader = std::thread([this] { Read(); });
    }
    ~PortMidiLink() override {
        m_isEnding = true;
        if (m_reader.joinable()) m_reader.join();
        Pm_Close(m_in);
        Pm_Close(m_out);
        Pm_Terminate();
    }
    PortMidiLink(const PortMidiLink&) = delete;
    PortMidiLink& operator=(const PortMidiLink&) = delete;

    void SendShort(std::uint32_t message) override {
        Pm_WriteShort(m_out, 0, static_cast<std::int32_t>(message));
    }
    void SendSysex(std::span<const Bytes> messages) override {
        for (const Bytes& message : messages)
            Pm_WriteSysEx(m_out, 0, const_cast<std::uint8_t*>(message.data())); // only read
    }

private:
    void Read() {
        std::array<PmEvent, 1024> events;
        while (!m_isEnding) {
            const int count = Pm_Read(m_in, events.data(), static_cast<int>(events.size()));
            for (int i = 0; i < count; ++i)
                m_assembler.Take(
                    static_cast<std::uint32_t>(events[static_cast<std::size_t>(i)].message));
            if (count <= 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    PortMidiStream* m_in = nullptr;
    PortMidiStream* m_out = nullptr;
    Assembler m_assembler;
    std::atomic<bool> m_isEnding = false;
    std::thread m_reader;
};

} // namespace

std::unique_ptr<Link> OpenPortMidi(const std::string& system, Receiver& receiver) {
    return std::make_unique<PortMidiLink>(system, receiver);
}

} // namespace bench
