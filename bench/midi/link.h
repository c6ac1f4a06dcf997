// A way out through a MIDI library and back in: what is measured of each library in the same words.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace bench {

using Bytes = std::vector<std::uint8_t>;
using Nanoseconds = std::int64_t;

Nanoseconds Now();
Nanoseconds ProcessTime(); ///< of the processor, all threads of this process

/// A short message that tells `number` from 2^18 others.
std::uint32_t Numbered(std::uint32_t number);
/// A System Exclusive message that tells `number` from 2^14 others.
Bytes NumberedSysex(std::size_t length, std::uint32_t number);

/// Notes what arrives, on whatever thread that is.
class Receiver {
public:
    enum class Stamps { No, Yes };
    Receiver(std::size_t shortMessages, Stamps stamps);
    explicit Receiver(std::span<const Bytes> sysex);

    void OnShort(std::uint32_t message); ///< status byte lowest
    void OnSysex(std::span<const std::uint8_t> message);
    void OnBytes(std::span<const std::uint8_t> message); ///< one or the other

    /// Messages that arrived whole; one that arrived twice counts once.
    std::size_t Count() const { return m_count.load(std::memory_order_acquire); }
    Nanoseconds ArrivedAt(std::size_t number) const { return m_arrivedAt[number]; } ///< 0: not
    Nanoseconds LastArrival() const { return m_lastArrival; }

private:
    void Note(std::size_t number, Nanoseconds time);

    const bool m_stamps;
    const std::span<const Bytes> m_sysex;
    std::vector<Nanoseconds> m_arrivedAt;
    std::atomic<Nanoseconds> m_lastArrival = 0;
    std::atomic<std::size_t> m_count = 0;
};

class Link {
public:
    virtual ~Link() = default;
    virtual void SendShort(std::uint32_t message) = 0;
    /// One after the other, as fast as the library does it. Returns when all have been given away;
    /// `messages` stay valid until the link is gone.
    virtual void SendSysex(std::span<const Bytes> messages) = 0;
};

/// The MIDI systems: "jack", "alsa", and the library's own "loopback".
std::unique_ptr<Link> OpenOurs(const std::string& system, Receiver& receiver);
std::unique_ptr<Link> OpenRtMidi(const std::string& system, Receiver& receiver);
std::unique_ptr<Link> OpenPortMidi(const std::string& system, Receiver& receiver);
/// `side` is one of Sides(system). Throws NotMeasured.
std::unique_ptr<Link> OpenLink(const std::string& side, const std::string& system,
                               Receiver& receiver);
/// Ours, then its peers.
std::vector<std::string> Sides(const std::string& system);

/// What the port that leads back is called: every library adds to it.
std::string WayBack(const std::string& system);

} // namespace bench
