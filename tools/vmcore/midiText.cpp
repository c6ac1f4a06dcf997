// How messages are shown.
#include "midiText.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace vm::tool {
namespace {

constexpr std::size_t kShownWhole = 12; // bytes of a message
constexpr std::size_t kShownOfLong = 8;

// The characters of the codes from 0x80 on.
constexpr std::u16string_view kUpperHalf =
    u"ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü†°¢£§•¶ß®©™´¨≠ÆØ∞±≤≥¥µ∂∑∏π∫ªºΩæø"
    u"¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ\uF8FFÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ";
static_assert(kUpperHalf.size() == 128);

void AppendUtf8(std::string& text, char16_t unit) {
    const auto add = [&text](unsigned byte) { text += static_cast<char>(byte); };
    if (unit < 0x80) return add(unit);
    if (unit < 0x800) {
        add(0xC0U | unit >> 6);
    } else {
        add(0xE0U | unit >> 12);
        add(0x80U | (unit >> 6 & 0x3FU));
    }
    add(0x80U | (unit & 0x3FU));
}

[[gnu::format(printf, 1, 2)]] std::string Printed(const char* format, ...) {
    std::array<char, 128> text;
    va_list values;
    va_start(values, format);
    std::vsnprintf(text.data(), text.size(), format, values);
    va_end(values);
    return text.data();
}

std::string NoteName(unsigned note) {
    constexpr const char* kNames[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                      "F#", "G",  "G#", "A",  "A#", "B"};
    return kNames[note % 12] + std::to_string(static_cast<int>(note / 12) - 1);
}

std::string ControllerName(unsigned number) {
    switch (number) {
    case 0:
        return "bank select";
    case 1:
        return "modulation";
    case 7:
        return "volume";
    case 10:
        return "pan";
    case 11:
        return "expression";
    case 64:
        return "sustain";
    case 120:
        return "all sound off";
    case 121:
        return "reset controllers";
    case 123:
        return "all notes off";
    default:
        return "controller " + std::to_string(number);
    }
}

std::string DescribedSystemMessage(unsigned status, unsigned data) {
    switch (status) {
    case 0xF1:
        return Printed("quarter frame, piece %u, value %u", data >> 4 & 7, data & 15);
    case 0xF8:
        return "clock";
    case 0xFA:
        return "start";
    case 0xFB:
        return "continue";
    case 0xFC:
        return "stop";
    case 0xFE:
        return "active sensing";
    case 0xFF:
        return "reset";
    default:
        return "unknown";
    }
}

std::string DescribedChannelMessage(unsigned kind, unsigned a, unsigned b) {
    switch (kind) {
    case 0x8:
        return NoteName(a) + ", velocity " + std::to_string(b);
    case 0x9:
        return NoteName(a) + ", velocity " + std::to_string(b);
    case 0xA:
        return NoteName(a) + ", pressure " + std::to_string(b);
    case 0xB:
        return ControllerName(a) + ", value " + std::to_string(b);
    case 0xE:
        return Printed("%+d", static_cast<int>(a + b * 128) - 8192);
    default:
        return std::to_string(a);
    }
}

} // namespace

std::string Utf8FromMacRoman(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        AppendUtf8(utf8, code < 0x80 ? code : kUpperHalf[code - 0x80U]);
    }
    return utf8;
}

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) text += Printed("%02X ", byte);
    if (!text.empty()) text.pop_back();
    return text;
}

std::string AbbreviatedHex(std::span<const std::uint8_t> bytes) {
    if (bytes.size() <= kShownWhole) return Hex(bytes);
    return Hex(bytes.first(kShownOfLong)) + " .. " + Hex(bytes.last(1));
}

MidiBytes BytesOf(std::uint32_t message) {
    const std::uint32_t status = message & 0xFF;
    const std::size_t length = status == 0xF1 ? 4 : status >= 0xF0 ? 1 : (status >> 5) == 6 ? 2 : 3;
    MidiBytes bytes;
    for (std::size_t i = 0; i < length; ++i)
        bytes.push_back(static_cast<std::uint8_t>(message >> (8 * i)));
    return bytes;
}

std::string Described(std::uint32_t message) {
    constexpr const char* kKinds[] = {"note off",       "note on",        "key pressure",
                                      "control change", "program change", "channel pressure",
                                      "pitch bend"};
    const unsigned status = message & 0xFF, a = message >> 8 & 0xFF, b = message >> 16 & 0xFF;
    if (status >= 0xF0) return DescribedSystemMessage(status, a);
    if (status < 0x80) return "unknown";
    return Printed("%s, channel %u, ", kKinds[(status >> 4) - 8], (status & 15) + 1) +
           DescribedChannelMessage(status >> 4, a, b);
}

std::string DescribedSysex(std::span<const std::uint8_t> bytes) {
    return "SysEx, " + FormatCount(bytes.size(), "byte") +
           (IsWholeSysex(bytes) ? "" : ", incomplete");
}

bool IsWholeSysex(std::span<const std::uint8_t> bytes) {
    return bytes.size() >= 2 && bytes.front() == 0xF0 && bytes.back() == 0xF7;
}

std::string FormatSeconds(double seconds) {
    if (seconds < 0.001) return Printed("%.0f us", seconds * 1e6);
    if (seconds < 1) return Printed("%.1f ms", seconds * 1e3);
    return Printed("%.1f s", seconds);
}

std::string FormatRate(double bytesPerSecond) {
    if (bytesPerSecond < 1e4) return Printed("%.0f B/s", bytesPerSecond);
    if (bytesPerSecond < 1e6) return Printed("%.1f kB/s", bytesPerSecond / 1e3);
    return Printed("%.1f MB/s", bytesPerSecond / 1e6);
}

std::string FormatCount(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace vm::tool
