// Another program that uses the sequencer, with the buffers that programs have when they ask for
// nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/midi/alsa/AlsaLibrary.h"
#include "platform/midi/alsa/alsaEvents.h"

class AlsaPeer {
public:
    explicit AlsaPeer(const std::string& name);
    ~AlsaPeer();
    AlsaPeer(const AlsaPeer&) = delete;
    AlsaPeer& operator=(const AlsaPeer&) = delete;

    /// A port that others can send to and receive from.
    int AddPort(const std::string& name);
    void Rename(const std::string& name);

    /// To everybody who listens to the port. What the system answers.
    int Send(int port, std::vector<std::uint8_t> sysex);
    int SendEvent(int port, snd_seq_event_t event);

    /// The bytes of the next event that is sent to us; waits for it, empty after ten seconds.
    std::vector<std::uint8_t> Read();
    /// The bytes of System Exclusive events up to one that ends with F7.
    std::vector<std::uint8_t> ReadSysex();

private:
    const vm::AlsaLibrary& m_library;
    snd_seq_t* m_handle = nullptr;
};
