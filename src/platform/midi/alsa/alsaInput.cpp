// Sources and their packets.
#include "platform/midi/alsa/alsaInput.h"

namespace vm {

void AlsaInput::Connect(AlsaAddress address, MidiId source) {
    std::lock_guard guard(m_lock);
    m_sources[address] = source;
}

void AlsaInput::Disconnect(AlsaAddress address) {
    std::lock_guard guard(m_lock);
    m_sources.erase(address);
}

std::optional<AlsaAddress> AlsaInput::AddressOf(MidiId source) const {
    std::lock_guard guard(m_lock);
    for (const auto& [address, each] : m_sources)
        if (each == source) return address;
    return std::nullopt;
}

void AlsaInput::OnGone(AlsaAddress gone) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_sources, [&](const auto& each) {
        const bool isGone = gone.Includes(each.first);
        if (isGone) m_filter.Lost(each.second);
        return isGone;
    });
}

void AlsaInput::OnLoss() {
    std::lock_guard guard(m_lock);
    for (const auto& [address, source] : m_sources) m_filter.Lost(source);
}

void AlsaInput::Read(const snd_seq_event_t& event, MidiTraffic& traffic) {
    const EventBytes message(event);
    const auto packet = message.Bytes().empty() ? SysexBytes(event) : message.Bytes();
    std::lock_guard guard(m_lock);
    const auto source = m_sources.find({event.source.client, event.source.port});
    if (packet.empty() || source == m_sources.end()) return;
    const auto verdict = m_filter.Judge(source->second, packet);
    if (verdict == TornSysexFilter::Verdict::Drop) return;
    const bool isAfterLoss = verdict == TornSysexFilter::Verdict::DeliverAfterLoss;
    traffic.Append(source->second, packet,
                   isAfterLoss ? MidiTraffic::Loss::Before : MidiTraffic::Loss::None);
}

} // namespace vm
