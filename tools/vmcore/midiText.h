// MIDI messages and names as text. Plain functions; nothing here knows a port.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vm::tool {

using MidiBytes = std::vector<std::uint8_t>;

/// Device names are Mac Roman.
std::string Utf8FromMacRoman(std::string_view text);

/// "F0 43 00"
std::string Hex(std::span<const std::uint8_t> bytes);
/// All of a short message, else the beginning and the end with ".." between.
std::string AbbreviatedHex(std::span<const std::uint8_t> bytes);

/// The bytes of a packed short message as it is received: a quarter frame has four.
MidiBytes BytesOf(std::uint32_t message);

/// "note on, channel 1, C4, velocity 64": what a packed short message is.
std::string Described(std::uint32_t message);
/// "SysEx, 4104 bytes", and whether its end is missing.
std::string DescribedSysex(std::span<const std::uint8_t> bytes);
bool IsWholeSysex(std::span<const std::uint8_t> bytes);

std::string FormatSeconds(double seconds);                    ///< "21 us", "6.7 ms", "1.3 s"
std::string FormatRate(double bytesPerSecond);                ///< "3125 B/s", "9.8 MB/s"
std::string FormatCount(std::size_t count, const char* noun); ///< "1 message", "2 messages"

} // namespace vm::tool
