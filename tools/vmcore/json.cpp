// JSON strings.
#include "json.h"

#include <cstddef>
#include <cstdio>

namespace vm::tool {
namespace {

std::size_t LengthByFirstByte(unsigned byte) {
    if (byte < 0x80) return 1;
    if (byte < 0xC2) return 0;
    return byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : byte < 0xF5 ? 4 : 0;
}

// How many bytes the UTF-8 character at the start of `text` has; 0 when there is none.
std::size_t Utf8Length(std::string_view text) {
    const auto byte = [text](std::size_t i) {
        return unsigned{static_cast<unsigned char>(text[i])};
    };
    const std::size_t length = LengthByFirstByte(byte(0));
    if (length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80) return 0;
    if (length < 3) return length;
    // Overlong forms, surrogates, and what lies beyond the last code point.
    const unsigned two = byte(0) << 8 | byte(1);
    const bool valid = two >= 0xE0A0 && (two < 0xEDA0 || two >= 0xEE80) &&
                       (two < 0xF000 || two >= 0xF090) && two < 0xF490;
    return valid ? length : 0;
}

std::string Escape(unsigned char byte) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", unsigned{byte});
    return text;
}

} // namespace

std::string JsonString(std::string_view text) {
    std::string json = "\"";
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text[0]);
        std::size_t length = Utf8Length(text);
        if (byte == '"' || byte == '\\')
            json.append("\\") += text[0];
        else if (length == 0 || byte < 0x20 || byte == 0x7F)
            json += Escape(byte);
        else
            json += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + "\"";
}

} // namespace vm::tool
