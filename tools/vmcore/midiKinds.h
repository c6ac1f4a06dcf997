// The messages of the self-test: each kind as it is sent, and what the library says arrives.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "midiText.h"

namespace vm::tool {

/// A short message, packed, and what is delivered for it.
struct ShortProbe {
    std::uint32_t sent;
    std::uint32_t mask; ///< the bits that must arrive as they were sent
    unsigned byteCount;
};

struct MidiKind {
    const char* name;
    std::uint8_t status;
    bool isDelivered = true;
};

/// Every kind of short message that there is. Three of them are never delivered.
std::span<const MidiKind> ShortKinds();

/// Sixteen messages of the kind: one a channel, or one a value.
std::vector<ShortProbe> ProbesOf(const MidiKind& kind);

/// Sizes from the shortest message to one of 64 KB, some around those of transports' pieces.
std::span<const std::size_t> SysexSizes();
/// A message of that many bytes whose inside tells it from others.
MidiBytes SysexOf(std::size_t size);

/// Empty, or how the bytes that arrived are not those that were sent.
std::string DifferenceOf(std::span<const std::uint8_t> sent, std::span<const std::uint8_t> arrived);

} // namespace vm::tool
