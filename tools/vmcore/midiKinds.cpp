// The table of the self-test.
#include "midiKinds.h"

#include <algorithm>

namespace vm::tool {
namespace {

constexpr MidiKind kKinds[] = {
    {"note off", 0x80},
    {"note on", 0x90},
    {"key pressure", 0xA0},
    {"control change", 0xB0},
    {"program change", 0xC0},
    {"channel pressure", 0xD0},
    {"pitch bend", 0xE0},
    {"quarter frame", 0xF1},
    {"song position", 0xF2, false},
    {"song select", 0xF3, false},
    {"tune request", 0xF6, false},
    {"clock", 0xF8},
    {"start", 0xFA},
    {"continue", 0xFB},
    {"stop", 0xFC},
    {"active sensing", 0xFE},
    {"reset", 0xFF},
};
constexpr std::size_t kSizes[] = {2, 3, 4, 5, 16, 17, 256, 257, 1024, 4096, 16'384, 65'536};
constexpr std::uint32_t kProbes = 16;

unsigned LengthOf(std::uint8_t status) {
    if (status >= 0xF8 || status == 0xF6) return 1;
    return (status >> 5) == 6 || status == 0xF1 || status == 0xF3 ? 2 : 3;
}

} // namespace

std::span<const MidiKind> ShortKinds() {
    return kKinds;
}

// Of the four bytes of a quarter frame, two are whatever follows it.
std::vector<ShortProbe> ProbesOf(const MidiKind& kind) {
    const unsigned length = LengthOf(kind.status);
    const std::uint32_t bits = 0xFFFFFFU >> (8 * (3 - length));
    std::vector<ShortProbe> probes;
    for (std::uint32_t i = 0; i < kProbes; ++i) {
        const std::uint32_t status = kind.status < 0xF0 ? kind.status + i : kind.status;
        const std::uint32_t data = (0x10 + i) << 8 | (0x7F - i) << 16;
        probes.push_back({(status | data) & bits, kind.status == 0xF1 ? bits : 0xFFFFFFFF, length});
    }
    return probes;
}

std::span<const std::size_t> SysexSizes() {
    return kSizes;
}

MidiBytes SysexOf(std::size_t size) {
    constexpr std::uint8_t kForTests = 0x7D; // the maker's number that is nobody's
    MidiBytes bytes(size);
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<std::uint8_t>((i * 7 + i / 128 + size) & 0x7F);
    bytes.front() = 0xF0;
    if (size > 2) bytes[1] = kForTests;
    bytes.back() = 0xF7;
    return bytes;
}

std::string DifferenceOf(std::span<const std::uint8_t> sent,
                         std::span<const std::uint8_t> arrived) {
    const auto [a, b] = std::ranges::mismatch(sent, arrived);
    if (a == sent.end() && b == arrived.end()) return {};
    const std::string sizes = FormatCount(arrived.size(), "byte") + " instead of " +
                              std::to_string(sent.size()) + " arrived";
    if (a == sent.end() || b == arrived.end()) return sizes;
    const std::string place = "byte " + std::to_string(a - sent.begin()) + " is " + Hex({&*b, 1}) +
                              " instead of " + Hex({&*a, 1});
    return sent.size() == arrived.size() ? place : sizes + ", " + place;
}

} // namespace vm::tool
