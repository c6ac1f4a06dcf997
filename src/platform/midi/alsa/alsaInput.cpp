// Assembly of what arrives.
#include "platform/midi/alsa/alsaInput.h"

#include <algorithm>

namespace vm {

namespace {

constexpr std::uint8_t kSysexBegin = 0xF0;
constexpr std::uint8_t kSysexEnd = 0xF7;

// Up to and with the next end, or up to the next beginning, whichever comes first.
std::size_t LengthOfPart(std::span<const std::uint8_t> bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == kSysexEnd) return i + 1;
        if (bytes[i] == kSysexBegin && i > 0) return i;
    }
    return bytes.size();
}

} // namespace

void AlsaInput::Connect(AlsaAddress address, MidiId source) {
    std::lock_guard guard(m_lock);
    m_sources[address] = Source{source};
}

void AlsaInput::Disconnect(AlsaAddress gone) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_sources, [gone](const auto& each) { return gone.Includes(each.first); });
}

std::optional<AlsaAddress> AlsaInput::AddressOf(MidiId source) const {
    std::lock_guard guard(m_lock);
    for (const auto& [address, each] : m_sources)
        if (each.id == source) return address;
    return std::nullopt;
}

void AlsaInput::DropUnfinished() {
    std::lock_guard guard(m_lock);
    for (auto& [address, source] : m_sources) source.unfinished.clear();
}

void AlsaInput::Read(const snd_seq_event_t& event, MidiTraffic& traffic) {
    std::lock_guard guard(m_lock);
    const auto found = m_sources.find({event.source.client, event.source.port});
    if (found == m_sources.end()) return;
    const EventBytes message(event);
    if (!message.Bytes().empty())
        traffic.Append(found->second.id, message.Bytes());
    else
        ReadSysex(found->second, SysexBytes(event), traffic);
}

void AlsaInput::ReadSysex(Source& source, std::span<const std::uint8_t> piece,
                          MidiTraffic& traffic) {
    std::vector<std::uint8_t>& message = source.unfinished;
    while (!piece.empty()) {
        const auto part = piece.first(LengthOfPart(piece));
        piece = piece.subspan(part.size());
        if (part.front() == kSysexBegin && !message.empty()) {
            traffic.Append(source.id, message); // receivers see that it has no end
            message.clear();
        }
        if (message.empty() && part.front() != kSysexBegin) continue; // the end of a lost one
        message.insert(message.end(), part.begin(), part.end());
        if (part.back() != kSysexEnd) continue;
        traffic.Append(source.id, message);
        message.clear();
    }
}

} // namespace vm
