// What a System Exclusive message says about itself: who made the instrument, what kind of message
// it is, and whether its checksum is right. Pure functions on bytes; no window, no file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <vmcore/core/types.h>

using SysexBytes = std::vector<BYTE>;

enum class ChecksumState {
    None, ///< the format carries none, or is not known here
    Right,
    Wrong,
};

struct SysexInfo {
    std::string manufacturer;
    std::string kind;
    ChecksumState checksum = ChecksumState::None;
};

/// `message` from 0xF0 to 0xF7; a message cut short is described as far as it goes.
SysexInfo DescribeSysex(const SysexBytes& message);

/// The name registered for the ID that follows 0xF0 (one byte, or 0 and two bytes); "Unknown (<ID
/// in hex>)" for others, "Unknown" when the ID is not there.
std::string ManufacturerName(const SysexBytes& message);

/// The instrument that a message is meant for, as far as its maker's format tells: "Roland, model 16,
/// device 10", "Yamaha, device 00", "Moog". Numbers are hexadecimal. "" for a message that is meant
/// for any maker's instruments, and without an ID.
std::string InstrumentOf(const SysexBytes& message);

/// "OK", "Bad" or "n/a".
const char* ChecksumText(ChecksumState state);

/// Compares what was sent with what came back: "Sent 8 bytes, received 8 bytes: identical", or the
/// first difference.
std::string EchoText(const SysexBytes& sent, const SysexBytes& received);
/// The index of the first difference, a missing byte included; sent.size() when all that was sent
/// came back first.
std::size_t FirstDifference(const SysexBytes& sent, const SysexBytes& received);
