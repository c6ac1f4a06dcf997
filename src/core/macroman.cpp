// The Mac Roman table and the conversions that use it.
#include "core/macroman.h"

#include <algorithm>
#include <array>

namespace vm {
namespace {

// The characters of the codes from 0x80 on; those below are ASCII. 0xDB is the euro sign and 0xF0 a
// private-use code point.
constexpr std::array<char16_t, 128> kUpperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, // 80
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8, // 88
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3, // 90
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, // 98
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF, // A0
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8, // A8
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, // B0
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8, // B8
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB, // C0
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153, // C8
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA, // D0
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02, // D8
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, // E0
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4, // E8
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC, // F0
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7, // F8
};

struct Entry {
    char16_t unit;
    unsigned char code;
};

// The same table ordered by character.
constexpr std::array<Entry, 128> kByUnit = [] {
    std::array<Entry, 128> entries{};
    for (unsigned i = 0; i < entries.size(); ++i)
        entries[i] = {kUpperHalf[i], static_cast<unsigned char>(0x80 + i)};
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.unit < b.unit; });
    return entries;
}();

bool IsPairAt(const QString& text, qsizetype i) {
    return i + 1 < text.size() && text[i].isHighSurrogate() && text[i + 1].isLowSurrogate();
}

} // namespace

char16_t MacRomanToUnicode(unsigned char code) {
    return code < 0x80 ? code : kUpperHalf[code - 0x80u];
}

std::optional<unsigned char> UnicodeToMacRoman(char16_t unit) {
    if (unit < 0x80) return static_cast<unsigned char>(unit);
    const auto entry =
        std::lower_bound(kByUnit.begin(), kByUnit.end(), unit,
                         [](const Entry& a, char16_t wanted) { return a.unit < wanted; });
    if (entry == kByUnit.end() || entry->unit != unit) return std::nullopt;
    return entry->code;
}

QString FromMacRoman(std::string_view text) {
    QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(),
                   [](char c) { return QChar(MacRomanToUnicode(static_cast<unsigned char>(c))); });
    return result;
}

std::optional<std::string> ToMacRoman(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar unit : text) {
        const std::optional<unsigned char> code = UnicodeToMacRoman(unit.unicode());
        if (!code) return std::nullopt;
        result.push_back(static_cast<char>(*code));
    }
    return result;
}

std::string ToMacRomanLossy(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        result.push_back(static_cast<char>(UnicodeToMacRoman(text[i].unicode()).value_or('?')));
        if (IsPairAt(text, i)) ++i;
    }
    return result;
}

std::optional<QString> FromAscii(std::string_view text) {
    const auto beyond = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    if (std::any_of(text.begin(), text.end(), beyond)) return std::nullopt;
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

std::optional<std::string> ToAscii(const QString& text) {
    std::string result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar unit : text) {
        if (unit.unicode() >= 0x80) return std::nullopt;
        result.push_back(static_cast<char>(unit.unicode()));
    }
    return result;
}

} // namespace vm
