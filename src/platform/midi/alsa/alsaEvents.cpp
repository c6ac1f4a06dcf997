// The sequencer's events have a type for every status and the data already taken apart.
#include "platform/midi/alsa/alsaEvents.h"

#include <algorithm>
#include <charconv>

namespace vm {

namespace {

struct SystemType {
    std::uint8_t status;
    snd_seq_event_type_t type;
};
// With the length that the status has on the wire: one byte.
constexpr SystemType kOneByteTypes[] = {
    {0xF6, SND_SEQ_EVENT_TUNE_REQUEST}, {0xF8, SND_SEQ_EVENT_CLOCK}, {0xFA, SND_SEQ_EVENT_START},
    {0xFB, SND_SEQ_EVENT_CONTINUE},     {0xFC, SND_SEQ_EVENT_STOP},  {0xFE, SND_SEQ_EVENT_SENSING},
    {0xFF, SND_SEQ_EVENT_RESET},
};

constexpr int kPitchCentre = 8192;

int Both(int low, int high) {
    return low | high << 7;
}

snd_seq_event_t EventOfType(snd_seq_event_type_t type) {
    snd_seq_event_t event = {};
    event.type = type;
    snd_seq_ev_set_direct(&event);
    return event;
}

snd_seq_event_t NoteEvent(snd_seq_event_type_t type, int channel, int note, int velocity) {
    snd_seq_event_t event = EventOfType(type);
    event.data.note.channel = static_cast<unsigned char>(channel);
    event.data.note.note = static_cast<unsigned char>(note);
    event.data.note.velocity = static_cast<unsigned char>(velocity);
    return event;
}

snd_seq_event_t ControlEvent(snd_seq_event_type_t type, int channel, int control, int value) {
    snd_seq_event_t event = EventOfType(type);
    event.data.control.channel = static_cast<unsigned char>(channel);
    event.data.control.param = static_cast<unsigned int>(control);
    event.data.control.value = value;
    return event;
}

std::optional<snd_seq_event_t> ChannelEvent(std::uint8_t status, int first, int second) {
    const int channel = status & 0x0F;
    switch (status >> 4) {
    case 0x8:
        return NoteEvent(SND_SEQ_EVENT_NOTEOFF, channel, first, second);
    case 0x9:
        return NoteEvent(SND_SEQ_EVENT_NOTEON, channel, first, second);
    case 0xA:
        return NoteEvent(SND_SEQ_EVENT_KEYPRESS, channel, first, second);
    case 0xB:
        return ControlEvent(SND_SEQ_EVENT_CONTROLLER, channel, first, second);
    case 0xC:
        return ControlEvent(SND_SEQ_EVENT_PGMCHANGE, channel, 0, first);
    case 0xD:
        return ControlEvent(SND_SEQ_EVENT_CHANPRESS, channel, 0, first);
    case 0xE:
        return ControlEvent(SND_SEQ_EVENT_PITCHBEND, channel, 0,
                            Both(first, second) - kPitchCentre);
    default:
        return std::nullopt;
    }
}

std::optional<snd_seq_event_t> SystemEvent(std::uint8_t status, int first, int second) {
    if (status == 0xF1) return ControlEvent(SND_SEQ_EVENT_QFRAME, 0, 0, first);
    if (status == 0xF2) return ControlEvent(SND_SEQ_EVENT_SONGPOS, 0, 0, Both(first, second));
    if (status == 0xF3) return ControlEvent(SND_SEQ_EVENT_SONGSEL, 0, 0, first);
    const auto* found = std::ranges::find(kOneByteTypes, status, &SystemType::status);
    if (found == std::end(kOneByteTypes)) return std::nullopt;
    return EventOfType(found->type);
}

} // namespace

std::string AddressText(AlsaAddress address) {
    return std::to_string(address.client) + ":" + std::to_string(address.port);
}

AlsaAddress AddressFromText(const std::string& text) {
    AlsaAddress address;
    const char* const end = text.data() + text.size();
    const auto client = std::from_chars(text.data(), end, address.client);
    if (client.ec != std::errc() || client.ptr == end || *client.ptr != ':') return {};
    const auto port = std::from_chars(client.ptr + 1, end, address.port);
    return port.ec == std::errc() && port.ptr == end ? address : AlsaAddress{};
}

std::optional<snd_seq_event_t> EventFromShortMessage(std::span<const std::uint8_t> message) {
    if (message.empty()) return std::nullopt;
    const auto data = [&](std::size_t at) { return at < message.size() ? message[at] & 0x7F : 0; };
    const std::uint8_t status = message[0];
    if (status == 0xF0) return EventFromSysex(message);
    return status < 0xF0 ? ChannelEvent(status, data(1), data(2))
                         : SystemEvent(status, data(1), data(2));
}

snd_seq_event_t EventFromSysex(std::span<const std::uint8_t> piece) {
    snd_seq_event_t event = EventOfType(SND_SEQ_EVENT_SYSEX);
    snd_seq_ev_set_variable(&event, static_cast<unsigned int>(piece.size()),
                            const_cast<std::uint8_t*>(piece.data())); // it is only read
    return event;
}

EventBytes::EventBytes(const snd_seq_event_t& event) {
    AddChannelMessage(event);
    if (m_length == 0) AddSystemMessage(event);
}

void EventBytes::Add(int byte) {
    m_bytes[m_length++] = static_cast<std::uint8_t>(byte);
}

void EventBytes::AddMessage(int status, int first, int second) {
    Add(status);
    Add(first & 0x7F);
    Add(second & 0x7F);
}

// `control` and the one before it choose a parameter; 6 and 38 set it.
void EventBytes::AddParameter(int channel, int control, const snd_seq_ev_ctrl_t& change) {
    const auto parameter = static_cast<int>(change.param);
    AddMessage(0xB0 | channel, control, parameter >> 7);
    AddMessage(0xB0 | channel, control - 1, parameter);
    AddMessage(0xB0 | channel, 6, change.value >> 7);
    AddMessage(0xB0 | channel, 38, change.value);
}

void EventBytes::AddChannelMessage(const snd_seq_event_t& event) {
    const snd_seq_ev_note_t& note = event.data.note;
    const snd_seq_ev_ctrl_t& control = event.data.control;
    const auto number = static_cast<int>(control.param);
    const int channel = note.channel & 0x0F; // at the same place in both
    switch (event.type) {
    case SND_SEQ_EVENT_NOTEOFF:
        return AddMessage(0x80 | channel, note.note, note.velocity);
    case SND_SEQ_EVENT_NOTEON:
        return AddMessage(0x90 | channel, note.note, note.velocity);
    case SND_SEQ_EVENT_KEYPRESS:
        return AddMessage(0xA0 | channel, note.note, note.velocity);
    case SND_SEQ_EVENT_CONTROLLER:
        return AddMessage(0xB0 | channel, number, control.value);
    case SND_SEQ_EVENT_PGMCHANGE:
        Add(0xC0 | channel);
        return Add(control.value & 0x7F);
    case SND_SEQ_EVENT_CHANPRESS:
        Add(0xD0 | channel);
        return Add(control.value & 0x7F);
    case SND_SEQ_EVENT_PITCHBEND:
        return AddMessage(0xE0 | channel, control.value + kPitchCentre,
                          (control.value + kPitchCentre) >> 7);
    case SND_SEQ_EVENT_CONTROL14:
        if (number >= 32) return AddMessage(0xB0 | channel, number, control.value);
        AddMessage(0xB0 | channel, number, control.value >> 7);
        return AddMessage(0xB0 | channel, number + 32, control.value);
    case SND_SEQ_EVENT_NONREGPARAM:
        return AddParameter(channel, 99, control);
    case SND_SEQ_EVENT_REGPARAM:
        return AddParameter(channel, 101, control);
    default:
        return;
    }
}

void EventBytes::AddSystemMessage(const snd_seq_event_t& event) {
    const int value = event.data.control.value;
    switch (event.type) {
    case SND_SEQ_EVENT_QFRAME:
        Add(0xF1);
        return Add(value & 0x7F);
    case SND_SEQ_EVENT_SONGPOS:
        return AddMessage(0xF2, value, value >> 7);
    case SND_SEQ_EVENT_SONGSEL:
        Add(0xF3);
        return Add(value & 0x7F);
    default:
        const auto* found = std::ranges::find(kOneByteTypes, event.type, &SystemType::type);
        if (found != std::end(kOneByteTypes)) Add(found->status);
    }
}

std::span<const std::uint8_t> SysexBytes(const snd_seq_event_t& event) {
    if (event.type != SND_SEQ_EVENT_SYSEX || !snd_seq_ev_is_variable(&event)) return {};
    return {static_cast<const std::uint8_t*>(event.data.ext.ptr), event.data.ext.len};
}

} // namespace vm
