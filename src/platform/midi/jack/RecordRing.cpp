// Records begin at multiples of eight bytes, so that a header never lies across the end. Where a
// record would, the rest of the ring is left out.
#include "platform/midi/jack/RecordRing.h"

#include <cstring>

namespace vm {

namespace {
constexpr std::uint32_t kLeftOut = 0xFFFFFFFF; // instead of a size
}

RecordRing::RecordRing(std::size_t capacity)
    : m_capacity(capacity), m_bytes(std::make_unique<std::uint8_t[]>(capacity)) {}

std::size_t RecordRing::Space(std::size_t size) {
    constexpr std::size_t kAlignment = sizeof(Header);
    return sizeof(Header) + (size + kAlignment - 1) / kAlignment * kAlignment;
}

bool RecordRing::Push(std::uint32_t tag, std::span<const std::uint8_t> bytes, std::size_t reserve) {
    std::uint64_t written = m_written.load(std::memory_order_relaxed);
    const std::size_t untilEnd = m_capacity - written % m_capacity;
    const std::size_t space = Space(bytes.size());
    const std::size_t leftOut = space > untilEnd ? untilEnd : 0;
    const std::uint64_t used = written - m_taken.load(std::memory_order_acquire);
    if (used + leftOut + space + reserve > m_capacity) return false;
    if (leftOut > 0) {
        const Header header{kLeftOut, 0};
        std::memcpy(At(written), &header, sizeof header);
        written += leftOut;
    }
    const Header header{static_cast<std::uint32_t>(bytes.size()), tag};
    std::memcpy(At(written), &header, sizeof header);
    if (!bytes.empty()) std::memcpy(At(written) + sizeof header, bytes.data(), bytes.size());
    m_written.store(written + space, std::memory_order_release);
    return true;
}

std::optional<RecordRing::Record> RecordRing::Front() {
    std::uint64_t taken = m_taken.load(std::memory_order_relaxed);
    if (taken == m_written.load(std::memory_order_acquire)) return std::nullopt;
    Header header;
    std::memcpy(&header, At(taken), sizeof header);
    if (header.size == kLeftOut) { // a record follows: both were written at once
        taken += m_capacity - taken % m_capacity;
        m_taken.store(taken, std::memory_order_release);
        std::memcpy(&header, At(taken), sizeof header);
    }
    return Record{header.tag, {At(taken) + sizeof header, header.size}};
}

void RecordRing::Pop() {
    const std::uint64_t taken = m_taken.load(std::memory_order_relaxed);
    Header header;
    std::memcpy(&header, At(taken), sizeof header);
    m_taken.store(taken + Space(header.size), std::memory_order_release);
}

} // namespace vm
