// The length of messages, and what to do about torn ones.
#include "platform/midi/packets.h"

#include <algorithm>
#include <cstddef>

namespace vm {

namespace {

constexpr std::size_t kShortPacket = 3;

constexpr std::size_t MessageLength(std::uint8_t status) {
    if (status < 0x80 || status == 0xF0 || status == 0xF2) return kShortPacket;
    if (status < 0xF0) return (status >> 5) == 6 ? 2 : 3;
    return status == 0xF1 || status == 0xF3 ? 2 : 1;
}

} // namespace

std::span<const std::uint8_t> MessageInPacket(std::span<const std::uint8_t> packet) {
    if (packet.empty() || packet.size() > kShortPacket) return packet;
    return packet.first(std::min(packet.size(), MessageLength(packet.front())));
}

void TornSysexFilter::Lost(MidiId source) {
    m_states[source] = {};
}

// A torn message ends with F7, or where the next one begins. Other messages may come in between.
TornSysexFilter::Verdict TornSysexFilter::Judge(MidiId source,
                                                std::span<const std::uint8_t> packet) {
    const auto found = m_states.empty() ? m_states.end() : m_states.find(source);
    if (found == m_states.end() || packet.empty()) return Verdict::Deliver;
    State& state = found->second;
    const bool goesOn = packet.front() < 0x80 || packet.front() == 0xF7;
    if (goesOn && state.isInside) {
        state.isInside = packet.back() != 0xF7;
        return Verdict::Drop;
    }
    if (packet.front() == 0xF0) state.isInside = false;
    const Verdict verdict = state.isReported ? Verdict::Deliver : Verdict::DeliverAfterLoss;
    state.isReported = true;
    if (!state.isInside) m_states.erase(found);
    return verdict;
}

} // namespace vm
