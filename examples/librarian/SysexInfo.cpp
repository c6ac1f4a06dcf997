// The IDs are those of the MIDI Association's list; the formats are the ones that the makers
// document. A format that is not known here is "Dump" or "Message" with no checksum, never a guess.
#include "SysexInfo.h"

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace {

struct Maker {
    unsigned id; // one byte, or 0x00hhll as three bytes with kExtended
    const char* name;
};

constexpr unsigned kExtended = 0x1000000;

constexpr Maker kMakers[] = {
    {0x01, "Sequential"},
    {0x04, "Moog"},
    {0x06, "Lexicon"},
    {0x07, "Kurzweil"},
    {0x08, "Fender"},
    {0x0F, "Ensoniq"},
    {0x10, "Oberheim"},
    {0x11, "Apple"},
    {0x18, "E-mu"},
    {0x1C, "Eventide"},
    {0x26, "Ketron"},
    {0x29, "PPG"},
    {0x2F, "Elka"},
    {0x33, "Clavia"},
    {0x3E, "Waldorf"},
    {0x3F, "Quasimidi"},
    {0x40, "Kawai"},
    {0x41, "Roland"},
    {0x42, "Korg"},
    {0x43, "Yamaha"},
    {0x44, "Casio"},
    {0x47, "Akai"},
    {0x4C, "Sony"},
    {0x51, "Fostex"},
    {0x52, "Zoom"},
    {0x55, "Suzuki"},
    {0x7D, "Non-commercial"},
    {0x7E, "Universal"},
    {0x7F, "Universal (real time)"},
    {kExtended | 0x000E, "Alesis"},
    {kExtended | 0x001B, "Peavey"},
    {kExtended | 0x003B, "Mark of the Unicorn"},
    {kExtended | 0x0066, "Mackie"},
    {kExtended | 0x0105, "M-Audio"},
    {kExtended | 0x010C, "Line 6"},
    {kExtended | 0x201F, "TC Electronic"},
    {kExtended | 0x2029, "Focusrite/Novation"},
    {kExtended | 0x2032, "Behringer"},
    {kExtended | 0x2033, "Access"},
    {kExtended | 0x203C, "Elektron"},
    {kExtended | 0x206B, "Arturia"},
    {kExtended | 0x2076, "Teenage Engineering"},
    {kExtended | 0x211D, "Ableton"},
};

// The byte at `index`, or 0xFFFF (no data byte) behind the end.
unsigned ByteAt(const SysexBytes& message, std::size_t index) {
    return index < message.size() ? message[index] : 0xFFFF;
}

unsigned SumOf(const SysexBytes& message, std::size_t first, std::size_t last) {
    return std::accumulate(message.begin() + static_cast<std::ptrdiff_t>(first),
                           message.begin() + static_cast<std::ptrdiff_t>(last), 0u);
}

bool IsClosed(const SysexBytes& message) {
    return !message.empty() && message.back() == 0xF7;
}

// The three checksum rules in use. All cover the bytes from `first` to the one before the checksum,
// which stands before the closing byte.
enum class Rule { TwosComplement, Sum, ExclusiveOr };

ChecksumState Check(const SysexBytes& message, std::size_t first, Rule rule) {
    if (!IsClosed(message) || message.size() < first + 2) return ChecksumState::Wrong;
    const std::size_t at = message.size() - 2;
    unsigned expected = SumOf(message, first, at);
    if (rule == Rule::TwosComplement) expected = 0u - expected;
    if (rule == Rule::ExclusiveOr) {
        expected = 0;
        for (std::size_t i = first; i < at; ++i) expected ^= message[i];
    }
    return message[at] == (expected & 0x7F) ? ChecksumState::Right : ChecksumState::Wrong;
}

// F0 43 <substatus, channel> <format> <count: two 7-bit bytes> <data> <checksum> F7
void DescribeYamaha(const SysexBytes& message, SysexInfo& info) {
    const unsigned substatus = ByteAt(message, 2) >> 4;
    if (substatus == 1) info.kind = "Parameter change";
    if (substatus == 2) info.kind = "Dump request";
    if (substatus != 0 || message.size() < 6) return;
    const unsigned format = message[3];
    info.kind = format == 0 ? "Voice dump" : format == 9 ? "32-voice bank dump" : "Bulk dump";
    const std::size_t count = std::size_t{message[4]} << 7 | message[5];
    info.checksum = message.size() == count + 8 ? Check(message, 6, Rule::TwosComplement)
                                                : ChecksumState::Wrong;
}

// F0 41 <device> <model, zeros in front of newer ones> <command> <address and data> <checksum> F7
void DescribeRoland(const SysexBytes& message, SysexInfo& info) {
    std::size_t command = 3;
    while (ByteAt(message, command) == 0) ++command;
    ++command;
    switch (ByteAt(message, command)) {
    case 0x11:
        info.kind = "Data request";
        break;
    case 0x12:
        info.kind = "Data set";
        break;
    case 0x40:
        info.kind = "Want to send";
        break;
    case 0x41:
        info.kind = "Data request (handshake)";
        break;
    case 0x42:
        info.kind = "Data set (handshake)";
        break;
    case 0x43:
        info.kind = "Acknowledge";
        return;
    case 0x45:
        info.kind = "End of data";
        return;
    case 0x4E:
        info.kind = "Communication error";
        return;
    case 0x4F:
        info.kind = "Rejection";
        return;
    default:
        return;
    }
    info.checksum = Check(message, command + 1, Rule::TwosComplement);
}

// F0 42 <3, channel> <model> <function> ...
void DescribeKorg(const SysexBytes& message, SysexInfo& info) {
    switch (ByteAt(message, 4)) {
    case 0x10:
        info.kind = "Program request";
        break;
    case 0x40:
        info.kind = "Program dump";
        break;
    case 0x41:
        info.kind = "Parameter change";
        break;
    case 0x4C:
        info.kind = "All programs dump";
        break;
    case 0x50:
        info.kind = "All data dump";
        break;
    default:
        break;
    }
}

// F0 7E <device> <sub-ID 1> <sub-ID 2> ...
void DescribeUniversal(const SysexBytes& message, SysexInfo& info) {
    switch (ByteAt(message, 3)) {
    case 0x01:
        info.kind = "Sample dump header";
        break;
    case 0x02:
        info.kind = "Sample data";
        info.checksum = Check(message, 1, Rule::ExclusiveOr);
        break;
    case 0x03:
        info.kind = "Sample dump request";
        break;
    case 0x06:
        info.kind = ByteAt(message, 4) == 1 ? "Identity request" : "Identity reply";
        break;
    case 0x08:
        info.kind = "Tuning";
        if (ByteAt(message, 4) != 1) break;
        info.kind = "Tuning dump";
        info.checksum = Check(message, 1, Rule::ExclusiveOr);
        break;
    case 0x09:
        info.kind = "General MIDI mode";
        break;
    default:
        break;
    }
}

void DescribeRealTime(const SysexBytes& message, SysexInfo& info) {
    switch (ByteAt(message, 3)) {
    case 0x01:
        info.kind = "Time code";
        break;
    case 0x04:
        info.kind = ByteAt(message, 4) == 1 ? "Master volume" : "Device control";
        break;
    case 0x06:
        info.kind = "Machine control";
        break;
    case 0x08:
        info.kind = "Note tuning";
        break;
    default:
        break;
    }
}

// F0 00 20 33 01 <device> <command> ...; single dumps sum the bytes from the device on.
void DescribeAccess(const SysexBytes& message, SysexInfo& info) {
    if (ByteAt(message, 4) != 1 || ByteAt(message, 6) != 0x10) return;
    info.kind = "Single dump";
    info.checksum = Check(message, 5, Rule::Sum);
}

unsigned MakerId(const SysexBytes& message) {
    const unsigned first = ByteAt(message, 1);
    if (first != 0) return first;
    return kExtended | ByteAt(message, 2) << 8 | ByteAt(message, 3);
}

bool HasMakerId(const SysexBytes& message) {
    const std::size_t last = ByteAt(message, 1) == 0 ? 3 : 1;
    return ByteAt(message, last) < 0x80;
}

constexpr unsigned kAnyMaker = 0x7D; // from here on, IDs that belong to no maker

// ", model 16"; "" for what is no data byte.
std::string Numbered(const std::string& label, unsigned byte) {
    if (byte > 0x7F) return {};
    char digits[4];
    std::snprintf(digits, sizeof digits, " %02X", byte);
    return ", " + label + digits;
}

// Newer models have up to three zeros in front, which count.
std::string RolandModel(const SysexBytes& message) {
    std::string label = "model";
    std::size_t at = 3;
    for (; at < 6 && ByteAt(message, at) == 0; ++at) label += " 00";
    return Numbered(label, ByteAt(message, at));
}

unsigned Channel(const SysexBytes& message) {
    const unsigned byte = ByteAt(message, 2);
    return byte > 0x7F ? byte : byte & 0x0F;
}

} // namespace

std::string ManufacturerName(const SysexBytes& message) {
    if (!HasMakerId(message)) return "Unknown";
    const unsigned id = MakerId(message);
    const auto* maker = std::find_if(std::begin(kMakers), std::end(kMakers),
                                     [id](const Maker& candidate) { return candidate.id == id; });
    if (maker != std::end(kMakers)) return maker->name;
    char text[48];
    if (id & kExtended)
        std::snprintf(text, sizeof text, "Unknown (00 %02X %02X)", id >> 8 & 0xFF, id & 0xFF);
    else
        std::snprintf(text, sizeof text, "Unknown (%02X)", id);
    return text;
}

std::string InstrumentOf(const SysexBytes& message) {
    if (!HasMakerId(message)) return {};
    const unsigned id = MakerId(message);
    if (id >= kAnyMaker && id <= 0x7F) return {};
    const std::string maker = ManufacturerName(message);
    switch (id) {
    case 0x41:
        return maker + RolandModel(message) + Numbered("device", ByteAt(message, 2));
    case 0x42: // F0 42 <3, channel> <model>
        return maker + Numbered("model", ByteAt(message, 3)) + Numbered("device", Channel(message));
    case 0x43: // the model is not in it
        return maker + Numbered("device", Channel(message));
    case kExtended | 0x2033:
        return maker + Numbered("model", ByteAt(message, 4)) +
               Numbered("device", ByteAt(message, 5));
    default:
        return maker;
    }
}

SysexInfo DescribeSysex(const SysexBytes& message) {
    SysexInfo info{ManufacturerName(message), message.size() > 64 ? "Dump" : "Message"};
    if (!HasMakerId(message)) return info;
    switch (MakerId(message)) {
    case 0x41:
        DescribeRoland(message, info);
        break;
    case 0x42:
        DescribeKorg(message, info);
        break;
    case 0x43:
        DescribeYamaha(message, info);
        break;
    case 0x7E:
        DescribeUniversal(message, info);
        break;
    case 0x7F:
        DescribeRealTime(message, info);
        break;
    case kExtended | 0x2033:
        DescribeAccess(message, info);
        break;
    default:
        break;
    }
    if (!IsClosed(message)) info.kind += " (cut short)";
    return info;
}

const char* ChecksumText(ChecksumState state) {
    switch (state) {
    case ChecksumState::Right:
        return "OK";
    case ChecksumState::Wrong:
        return "Bad";
    case ChecksumState::None:
        break;
    }
    return "n/a";
}

std::size_t FirstDifference(const SysexBytes& sent, const SysexBytes& received) {
    const auto place =
        std::mismatch(sent.begin(), sent.end(), received.begin(), received.end()).first;
    return static_cast<std::size_t>(place - sent.begin());
}

std::string EchoText(const SysexBytes& sent, const SysexBytes& received) {
    char text[160];
    const int length = std::snprintf(
        text, sizeof text, "Sent %zu bytes, received %zu bytes: ", sent.size(), received.size());
    const std::size_t at = FirstDifference(sent, received);
    if (sent == received) return std::string(text) + "identical";
    if (at < sent.size() && at < received.size())
        std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                      "byte %zu differs (%02X, not %02X)", at + 1, received[at], sent[at]);
    else
        std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                      "they differ from byte %zu on", at + 1);
    return text;
}
