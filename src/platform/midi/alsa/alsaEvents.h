// MIDI bytes as the sequencer's events, and back: pure functions.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include <alsa/asoundlib.h>

namespace vm {

/// Where the sequencer finds a port. Numbers are given anew whenever a device or program appears.
struct AlsaAddress {
    int client = 0;
    int port = 0; ///< kAllPorts stands for the client itself
    static constexpr int kAllPorts = -1;

    auto operator<=>(const AlsaAddress&) const = default;
    bool Includes(AlsaAddress other) const {
        return client == other.client && (port == kAllPorts || port == other.port);
    }
};

/// "128:0", and back. What is no such text gives the address 0:0, which no endpoint has.
std::string AddressText(AlsaAddress address);
AlsaAddress AddressFromText(const std::string& text);

/// The event for one short message, without addresses. Bytes after its last are ignored, missing
/// ones count as 0, and the top bits of data bytes do not count. Nothing for bytes that begin no
/// message: data, F4, F5, F7, F9, FD. F0 is a System Exclusive message of these few bytes, which
/// must outlive the event.
std::optional<snd_seq_event_t> EventFromShortMessage(std::span<const std::uint8_t> message);

/// A piece of a System Exclusive message as it is; the bytes must outlive the event.
snd_seq_event_t EventFromSysex(std::span<const std::uint8_t> piece);

/// The messages that an event stands for: one, or up to four controller changes for an event with
/// 14 bits or a parameter number. Empty for events that are no MIDI, and for System Exclusive.
class EventBytes {
public:
    explicit EventBytes(const snd_seq_event_t& event);
    std::span<const std::uint8_t> Bytes() const { return std::span(m_bytes).first(m_length); }

private:
    void Add(int byte);
    void AddMessage(int status, int first, int second);
    void AddParameter(int channel, int control, const snd_seq_ev_ctrl_t& change);
    void AddChannelMessage(const snd_seq_event_t& event);
    void AddSystemMessage(const snd_seq_event_t& event);

    std::array<std::uint8_t, 12> m_bytes = {};
    std::size_t m_length = 0;
};

/// The bytes of a System Exclusive event, which are the event's; empty for all others.
std::span<const std::uint8_t> SysexBytes(const snd_seq_event_t& event);

} // namespace vm
