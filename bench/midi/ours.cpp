// The library, used as hosts do.
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <vmcore/midi/mmsystem.h>

#include "figures.h"
#include "link.h"

namespace bench {
namespace {

constexpr DWORD kUnlimited = 100'000'000; // bytes a second

void CALLBACK OnMidi(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR) {
    auto& receiver = *reinterpret_cast<Receiver*>(instance);
    if (message == MIM_DATA) return receiver.OnShort(static_cast<DWORD>(param1));
    const auto* header = reinterpret_cast<const MIDIHDR*>(param1);
    receiver.OnSysex({header->lpData, header->dwBytesRecorded});
}

template <typename Caps>
UINT FindDevice(const std::string& name, UINT count, MMRESULT (*fill)(UINT, Caps*, UINT)) {
    for (UINT i = 0; i < count; ++i) {
        Caps caps = {};
        fill(i, &caps, sizeof caps);
        if (std::string(caps.szPname).find(name) != std::string::npos) return i;
    }
    throw NotMeasured("VMCore has no MIDI device " + name);
}

bool IsDone(MIDIHDR& header) {
    return (std::atomic_ref<DWORD>(header.dwFlags).load(std::memory_order_acquire) & MHDR_DONE) !=
           0;
}

class OurLink final : public Link {
public:
    OurLink(const std::string& system, Receiver& receiver) {
        setenv("VMCORE_MIDI", system.c_str(), 1);
        setenv("VMCORE_MIDI_SETUP", "", 1); // the user's speeds are of no interest here
        initCoreMIDI();
        const std::string name = WayBack(system);
        midiOutOpen(&m_out, FindDevice(name, midiOutGetNumDevs(), midiOutGetDevCaps), 0, 0, 0);
        midiOutSetMaxSysExSpeed(m_out, kUnlimited);
        midiInOpen(&m_in, FindDevice(name, midiInGetNumDevs(), midiInGetDevCaps),
                   reinterpret_cast<DWORD_PTR>(&OnMidi), reinterpret_cast<DWORD_PTR>(&receiver),
                   CALLBACK_FUNCTION);
        if (!m_out || !m_in) throw NotMeasured("VMCore cannot open " + name);
        midiOutShortMsg(m_out, 0xF8); // the first one makes the connection
    }
    ~OurLink() override {
        midiInClose(m_in);
        destroyCoreMIDI();
    }
    OurLink(const OurLink&) = delete;
    OurLink& operator=(const OurLink&) = delete;

    void SendShort(std::uint32_t message) override { midiOutShortMsg(m_out, message); }

    void SendSysex(std::span<const Bytes> messages) override {
        std::vector<MIDIHDR> headers(messages.size());
        for (std::size_t i = 0; i < messages.size(); ++i) {
            headers[i].lpData = const_cast<BYTE*>(messages[i].data()); // only read
            headers[i].dwBufferLength = static_cast<DWORD>(messages[i].size());
            midiOutLongMsg(m_out, &headers[i], sizeof headers[i]);
        }
        while (!IsDone(headers.back())) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

private:
    HMIDIOUT m_out = nullptr;
    HMIDIIN m_in = nullptr;
};

} // namespace

std::unique_ptr<Link> OpenOurs(const std::string& system, Receiver& receiver) {
    return std::make_unique<OurLink>(system, receiver);
}

} // namespace bench
