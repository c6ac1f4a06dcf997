// Mac Roman and ASCII: pure conversions between 8-bit text and the toolkit's strings. Text that is
// drawn, window text and MIDI device names are Mac Roman; interfaces that say ASCII mean 7 bits.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QtCore/QString>

namespace vm {

/// Every one of the 256 codes has its own character.
char16_t MacRomanToUnicode(unsigned char code);
/// The code of a character; nothing when Mac Roman does not have it.
std::optional<unsigned char> UnicodeToMacRoman(char16_t unit);

QString FromMacRoman(std::string_view text);
/// Strict: nothing when a character is not in Mac Roman.
std::optional<std::string> ToMacRoman(const QString& text);
/// Lossy: '?' for each character that is not in Mac Roman (one for a surrogate pair).
std::string ToMacRomanLossy(const QString& text);

/// Both strict: nothing when a character is beyond 7 bits.
std::optional<QString> FromAscii(std::string_view text);
std::optional<std::string> ToAscii(const QString& text);

} // namespace vm
