// The rules of the ini format, on plain text: how bytes become lines, what is a header, an entry, a
// value, and where a new entry goes. docs/settings.md describes the format for people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include "files/ignoringCase.h"

namespace vm {

/// The longest line that a file can hold; longer ones are cut when they are read.
constexpr std::size_t kIniLineLimit = 255;

/// One line of a text: where it begins and how long it is, without its line end.
struct IniSpan {
    std::size_t offset;
    std::size_t length;
};

/// Splits the bytes of a file into lines and gives each to `take(IniSpan)`, in order. True when a
/// line was cut.
///  - A line ends with LF; what follows the last LF is no line. Every CR is dropped.
///  - Of a line longer than 255 characters the first 255 are one line, the next character is lost,
///    and the rest begins another line.
///  - Blanks at the end of a line are dropped (not tabs).
/// Lines are left where they are; only one with a CR inside is moved together, within itself.
template <class Take>
bool SplitIniLines(char* bytes, std::size_t size, Take&& take);

/// A header ends the section before it: '[' ... ']'.
constexpr bool EndsSection(std::string_view line) {
    return line.size() >= 2 && line.front() == '[' && line.back() == ']';
}

/// A header opens `section` when it begins with "[section]", in any case, whatever follows.
inline bool OpensSection(std::string_view line, std::string_view section) {
    return line.size() >= section.size() + 2 && line[0] == '[' && line[section.size() + 1] == ']' &&
           EqualIgnoringCase(line.substr(1, section.size()), section);
}

/// True for "key=...", without regard to case. Nothing may stand around the key.
inline bool IsEntry(std::string_view line, std::string_view key) {
    return line.size() > key.size() && line[key.size()] == '=' &&
           EqualIgnoringCase(line.substr(0, key.size()), key);
}

/// The value of an entry with this key, as it is read: up to the first ';' (or zero byte), without
/// blanks and tabs at the end. `limit` characters at most are looked at.
std::string_view ValueOf(std::string_view line, std::size_t keyLength, std::size_t limit);

/// The decimal number of a setting read as text; nothing when the text is blank or begins with
/// neither a digit nor a sign.
std::optional<int> NumberIn(const char* text);

/// The number at the start of `text`: 0 without one, the low 32 bits of a large one.
int DecimalValue(const char* text);

/// The name of the child in a header "[parent\child]", exactly spelled; nothing for any other line,
/// grandchildren included.
std::optional<std::string_view> ChildSection(std::string_view line, std::string_view parent);

/// Where a new entry goes in a section whose lines end before `end`: there, or before the section's
/// last line when that is empty and another section follows (the empty line then keeps the two
/// apart).
constexpr std::size_t InsertionPoint(std::size_t end, bool lastIsEmpty, bool sectionFollows) {
    return lastIsEmpty && sectionFollows ? end - 1 : end;
}

/// True when text with a line end in it is given: it would forge lines.
inline bool HoldsLineEnd(std::string_view text) {
    bool holds = false;
    for (const char c : text) holds |= c == '\n' || c == '\r';
    return holds;
}

// -------------------------------------------------------------------------------------------------

/// Drops the CRs of a line within itself; its new length.
std::size_t DropReturns(char* line, std::size_t length);

template <class Take>
bool SplitIniLines(char* bytes, std::size_t size, Take&& take) {
    bool cut = false;
    const auto emit = [&](std::size_t offset, std::size_t length) {
        while (length > 0 && bytes[offset + length - 1] == ' ') --length;
        take(IniSpan{offset, length});
    };
    std::size_t begin = 0;
    while (begin < size) {
        const void* found = std::memchr(bytes + begin, '\n', size - begin);
        if (!found) break;
        const std::size_t end = static_cast<std::size_t>(static_cast<const char*>(found) - bytes);
        std::size_t length = DropReturns(bytes + begin, end - begin);
        for (; length > kIniLineLimit; begin += kIniLineLimit + 1, length -= kIniLineLimit + 1) {
            cut = true;
            emit(begin, kIniLineLimit);
        }
        emit(begin, length);
        begin = end + 1;
    }
    return cut;
}

} // namespace vm
