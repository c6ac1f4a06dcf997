// ASCII, whatever the locale: the toolkit's start-up switches the user's locale on, and toupper()
// would then change bytes beyond ASCII in a single-byte one.
#pragma once

#include <string>
#include <string_view>

namespace vm {

constexpr char AsciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string AsciiLowered(std::string text) {
    for (char& c : text) c = AsciiLower(c);
    return text;
}

/// Every byte below 128.
constexpr bool IsAscii(std::string_view text) {
    for (const char c : text)
        if ((c & 0x80) != 0) return false;
    return true;
}

} // namespace vm
