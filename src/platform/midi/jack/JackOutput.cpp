// One output port's queue, and what a process cycle takes of it.
#include "platform/midi/jack/JackOutput.h"

#include <algorithm>
#include <cstring>

namespace vm {

namespace {

constexpr std::size_t kRingSize = 64 * 1024;
constexpr std::size_t kRoomForShortMessages = 8 * 1024;
// Servers drop the whole cycle when their buffer of 32 KB overflows, administration included.
constexpr std::size_t kCycleBudget = 28'000;
constexpr std::size_t kCostOfEvent = 32;
constexpr std::chrono::milliseconds kLookAgain{20};

std::uint64_t NewConnection() {
    static std::atomic<std::uint64_t> s_last = 0;
    return ++s_last;
}

} // namespace

JackOutput::JackOutput(jack_port_t* port, std::uint64_t firstCycle)
    : m_connection(NewConnection()), m_port(port), m_firstCycle(firstCycle), m_ring(kRingSize) {}

int JackOutput::Send(std::span<const std::uint8_t> bytes, std::chrono::milliseconds limit) {
    const Clock::time_point until = Clock::now() + limit;
    int result = kMidiOk;
    while (!bytes.empty() && result == kMidiOk) {
        const auto piece = bytes.first(std::min(bytes.size(), kLargestPiece));
        result = Push(piece, until);
        bytes = bytes.subspan(piece.size());
    }
    return result;
}

int JackOutput::Push(std::span<const std::uint8_t> bytes, Clock::time_point until) {
    Lock lock(m_lock);
    while (!m_isClosed) {
        if (m_ring.Push(0, bytes)) {
            m_stalledAt = kNotStalled;
            if (m_waiting > 0) m_room.Post(); // there may be room for one more
            return kMidiOk;
        }
        if (m_stalledAt == m_ring.Taken()) return kMidiSendFailed;
        if (Clock::now() >= until) {
            m_stalledAt = m_ring.Taken();
            return kMidiSendFailed;
        }
        WaitForRoom(lock, until);
    }
    return kMidiUnknownEndpoint;
}

void JackOutput::WaitForRoom(Lock& lock, Clock::time_point until) {
    lock.unlock();
    ++m_waiting;
    m_room.WaitFor(std::min<std::chrono::nanoseconds>(until - Clock::now(), kLookAgain));
    --m_waiting;
    lock.lock();
}

int JackOutput::WritePiece(std::span<const std::uint8_t> piece, SysexMark& end) {
    std::lock_guard guard(m_lock);
    const bool isContinued = end.connection != 0;
    if (m_isClosed || (isContinued && end.connection != m_connection)) return kMidiUnknownEndpoint;
    if (!m_ring.Push(0, piece, kRoomForShortMessages)) return kMidiBusy;
    end = {m_connection, m_ring.Written()};
    return kMidiOk;
}

int JackOutput::HasLeft(const SysexMark& end) {
    std::lock_guard guard(m_lock);
    if (end.connection != m_connection) return kMidiUnknownEndpoint;
    if (m_ring.Taken() >= end.position) return kMidiOk;
    return m_isClosed ? kMidiUnknownEndpoint : kMidiBusy;
}

void JackOutput::Close() {
    std::lock_guard guard(m_lock);
    m_isClosed = true;
    m_room.Post();
}

void JackOutput::Process(const JackLibrary& jack, jack_nframes_t frames, std::uint64_t cycle) {
    void* const buffer = jack.port_get_buffer(m_port, frames);
    if (!buffer) return;
    jack.midi_clear_buffer(buffer);
    if (cycle < m_firstCycle) return;
    Drain(jack, buffer);
    if (m_waiting > 0) m_room.Post();
}

// A refused reservation would make the library write to standard error, hence the question before.
void JackOutput::Drain(const JackLibrary& jack, void* buffer) {
    std::size_t budget = kCycleBudget;
    while (const auto record = m_ring.Front()) {
        const std::size_t size = record->bytes.size();
        if (size + kCostOfEvent > budget || jack.midi_max_event_size(buffer) < size) return;
        jack_midi_data_t* const event = jack.midi_event_reserve(buffer, 0, size);
        if (!event) return;
        std::memcpy(event, record->bytes.data(), size);
        m_ring.Pop();
        budget -= size + kCostOfEvent;
    }
}

} // namespace vm
