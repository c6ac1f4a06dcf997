#include "HexDump.h"

#include <algorithm>
#include <cstdio>

namespace {
constexpr std::size_t kBytesPerLine = 16;
}

int HexLineCount(const SysexBytes& message) {
    return static_cast<int>((message.size() + kBytesPerLine - 1) / kBytesPerLine);
}

HexLine MakeHexLine(const SysexBytes& message, int line) {
    const std::size_t first = static_cast<std::size_t>(line) * kBytesPerLine;
    const std::size_t last = std::min(first + kBytesPerLine, message.size());
    char text[24];
    std::snprintf(text, sizeof text, "%05zX", first);
    HexLine result{text, {}, {}};
    for (std::size_t i = first; i < last; ++i) {
        std::snprintf(text, sizeof text, i % 8 == 0 && i != first ? "  %02X" : " %02X", message[i]);
        result.bytes += text;
        const bool printable = message[i] >= 0x20 && message[i] < 0x7F;
        result.characters += printable ? static_cast<char>(message[i]) : '.';
    }
    result.bytes.resize(kBytesPerLine * 3 + 1, ' ');
    return result;
}
