// A queue of byte records between two threads, for use on real-time threads: neither side ever
// waits, locks or allocates.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace vm {

/// One thread pushes, one thread takes. A record lies in one piece.
class RecordRing {
public:
    struct Record {
        std::uint32_t tag;
        std::span<const std::uint8_t> bytes; ///< valid until Pop
    };

    explicit RecordRing(std::size_t capacity); ///< a power of two

    /// False when there is no room, with `reserve` bytes to spare.
    bool Push(std::uint32_t tag, std::span<const std::uint8_t> bytes, std::size_t reserve = 0);
    std::optional<Record> Front();
    void Pop(); ///< after Front gave one

    /// Where the next record will lie, and up to where all have been taken. Ever growing.
    std::uint64_t Written() const { return m_written.load(std::memory_order_acquire); }
    std::uint64_t Taken() const { return m_taken.load(std::memory_order_acquire); }

private:
    struct Header {
        std::uint32_t size;
        std::uint32_t tag;
    };
    static std::size_t Space(std::size_t size);
    std::uint8_t* At(std::uint64_t position) { return m_bytes.get() + position % m_capacity; }

    const std::size_t m_capacity;
    const std::unique_ptr<std::uint8_t[]> m_bytes;
    alignas(64) std::atomic<std::uint64_t> m_written = 0;
    alignas(64) std::atomic<std::uint64_t> m_taken = 0;
};

} // namespace vm
