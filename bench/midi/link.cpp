#include "link.h"

#include <algorithm>

#include <time.h>

#include "figures.h"

namespace bench {
namespace {

Nanoseconds Read(clockid_t clock) {
    timespec time = {};
    clock_gettime(clock, &time);
    return Nanoseconds{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

} // namespace

Nanoseconds Now() {
    return Read(CLOCK_MONOTONIC);
}

Nanoseconds ProcessTime() {
    return Read(CLOCK_PROCESS_CPUTIME_ID);
}

std::uint32_t Numbered(std::uint32_t number) {
    return (0xB0 | (number >> 14 & 0x0F)) | (number & 0x7F) << 8 | (number >> 7 & 0x7F) << 16;
}

Bytes NumberedSysex(std::size_t length, std::uint32_t number) {
    Bytes bytes(length);
    for (std::size_t i = 0; i < length; ++i)
        bytes[i] = static_cast<std::uint8_t>((i * 7 + i / 128 + number) & 0x7F);
    bytes.front() = 0xF0;
    bytes[1] = static_cast<std::uint8_t>(number & 0x7F);
    bytes[2] = static_cast<std::uint8_t>(number >> 7 & 0x7F);
    bytes.back() = 0xF7;
    return bytes;
}

Receiver::Receiver(std::size_t shortMessages, Stamps stamps)
    : m_stamps(stamps == Stamps::Yes), m_arrivedAt(shortMessages) {}

Receiver::Receiver(std::span<const Bytes> sysex)
    : m_stamps(true), m_sysex(sysex), m_arrivedAt(sysex.size()) {}

void Receiver::OnShort(std::uint32_t message) {
    if ((message & 0xF0) != 0xB0) return;
    const std::size_t number =
        (message & 0x0F) << 14 | (message >> 16 & 0x7F) << 7 | (message >> 8 & 0x7F);
    Note(number, m_stamps ? Now() : 1);
}

void Receiver::OnSysex(std::span<const std::uint8_t> message) {
    if (message.size() < 4) return;
    const std::size_t number = message[1] | std::size_t{message[2]} << 7;
    if (number < m_sysex.size() && std::ranges::equal(message, m_sysex[number]))
        Note(number, Now());
}

void Receiver::OnBytes(std::span<const std::uint8_t> message) {
    if (message.size() != 3 || message[0] == 0xF0) return OnSysex(message);
    OnShort(message[0] | std::uint32_t{message[1]} << 8 | std::uint32_t{message[2]} << 16);
}

void Receiver::Note(std::size_t number, Nanoseconds time) {
    if (number >= m_arrivedAt.size() || m_arrivedAt[number] != 0) return;
    m_arrivedAt[number] = time;
    m_lastArrival.store(time, std::memory_order_relaxed);
    m_count.store(Count() + 1, std::memory_order_release);
}

std::unique_ptr<Link> OpenLink(const std::string& side, const std::string& system,
                               Receiver& receiver) {
    if (side == "RtMidi") return OpenRtMidi(system, receiver);
    if (side == "PortMidi") return OpenPortMidi(system, receiver);
    return OpenOurs(system, receiver);
}

// Debian's PortMidi knows ALSA only.
std::vector<std::string> Sides(const std::string& system) {
    if (system == "jack") return {"VMCore", "RtMidi"};
    if (system == "alsa") return {"VMCore", "RtMidi", "PortMidi"};
    return {"VMCore"};
}

std::string WayBack(const std::string& system) {
    if (system == "jack") return "bench-thru";
    return system == "alsa" ? "Midi Through" : "Loopback";
}

} // namespace bench
