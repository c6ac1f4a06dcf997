#include "AlsaPeer.h"

#include <poll.h>

#include <gmock/gmock.h>

AlsaPeer::AlsaPeer(const std::string& name) : m_library(*vm::AlsaLibrary::Load()) {
    snd_config_t* configuration = nullptr;
    m_library.snd_config_load_string(&configuration, "seq.hw { type hw }", 0);
    EXPECT_EQ(m_library.snd_seq_open_lconf(&m_handle, "hw", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK,
                                           configuration),
              0);
    m_library.snd_config_delete(configuration);
    Rename(name);
}

AlsaPeer::~AlsaPeer() {
    m_library.snd_seq_close(m_handle);
}

int AlsaPeer::AddPort(const std::string& name) {
    return m_library.snd_seq_create_simple_port(
        m_handle, name.c_str(),
        SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ | SND_SEQ_PORT_CAP_WRITE |
            SND_SEQ_PORT_CAP_SUBS_WRITE,
        SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
}

void AlsaPeer::Rename(const std::string& name) {
    EXPECT_EQ(m_library.snd_seq_set_client_name(m_handle, name.c_str()), 0);
}

int AlsaPeer::Send(int port, std::vector<std::uint8_t> sysex) {
    return SendEvent(port, vm::EventFromSysex(sysex));
}

int AlsaPeer::SendEvent(int port, snd_seq_event_t event) {
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(port));
    snd_seq_ev_set_subs(&event);
    snd_seq_ev_set_direct(&event);
    return m_library.snd_seq_event_output_direct(m_handle, &event);
}

std::vector<std::uint8_t> AlsaPeer::Read() {
    constexpr int kLimit = 10'000; // milliseconds
    pollfd descriptor = {};
    m_library.snd_seq_poll_descriptors(m_handle, &descriptor, 1, POLLIN);
    for (;;) {
        snd_seq_event_t* event = nullptr;
        if (m_library.snd_seq_event_input(m_handle, &event) < 0) {
            if (poll(&descriptor, 1, kLimit) <= 0) return {};
            continue;
        }
        const vm::EventBytes message(*event);
        const auto bytes = message.Bytes().empty() ? vm::SysexBytes(*event) : message.Bytes();
        if (!bytes.empty()) return {bytes.begin(), bytes.end()};
    }
}

std::vector<std::uint8_t> AlsaPeer::ReadSysex() {
    std::vector<std::uint8_t> message;
    do {
        const std::vector<std::uint8_t> piece = Read();
        if (piece.empty()) return message;
        message.insert(message.end(), piece.begin(), piece.end());
    } while (message.back() != 0xF7);
    return message;
}
