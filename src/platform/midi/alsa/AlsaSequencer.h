// One open client of the sequencer: the library's calls in C++, without any policy. Results are 0 or
// more, or a negated errno.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/midi/alsa/AlsaLibrary.h"
#include "platform/midi/alsa/alsaEndpoints.h"
#include "platform/midi/alsa/alsaEvents.h"
#include "platform/midi/alsa/alsaKernel.h"

namespace vm {

/// Events are read by one thread only; all other calls need a common lock, which may be held
/// meanwhile.
class AlsaSequencer {
public:
    /// Null when the system refuses, which is logged.
    static std::unique_ptr<AlsaSequencer> Open(const AlsaLibrary& library, const char* clientName);
    ~AlsaSequencer();
    AlsaSequencer(const AlsaSequencer&) = delete;
    AlsaSequencer& operator=(const AlsaSequencer&) = delete;

    int Client() const { return m_client; }
    int Descriptor() const { return m_descriptor; } ///< to wait for events with
    std::vector<AlsaPort> Ports() const;            ///< of all clients
    std::optional<AlsaInputPool> InputPoolOf(int client) const;

    /// Other programs do not see these ports.
    int CreateOutputPort(const char* name);
    int CreateInputPort(const char* name);
    void DeletePort(int port);
    int ConnectTo(int outputPort, AlsaAddress destination);
    int ConnectFrom(int inputPort, AlsaAddress source);
    void DisconnectFrom(int inputPort, AlsaAddress source);

    /// Sends at once and to this destination only.
    int Send(int outputPort, AlsaAddress destination, snd_seq_event_t event);
    /// The next event, valid until the next call, or null with the reason in `result`: -EAGAIN when
    /// there is none, -ENOSPC when events have been lost.
    const snd_seq_event_t* ReadEvent(int& result);
    bool HasMoreEvents() const; ///< read from the system already

private:
    AlsaSequencer(const AlsaLibrary& library, snd_seq_t* handle);
    void SetUp(const char* clientName);
    void AppendPorts(snd_seq_client_info_t& client, std::vector<AlsaPort>& ports) const;

    const AlsaLibrary& m_library;
    snd_seq_t* const m_handle;
    const int m_client;
    int m_descriptor = -1;
};

} // namespace vm
