// What words stand for.
#include "rc/token.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>

#include "core/ascii.h"
#include "rc/codePages.h"

namespace vm::rc {
namespace {

int DigitOf(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    const char upper = AsciiUpper(c);
    return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : 99;
}

// Puts a string's characters together. Escapes may be halves of a character: they wait for the next.
class TextBuilder {
public:
    TextBuilder(int codePage, bool wide) : m_codePage(codePage), m_wide(wide) {}
    void Add(char c) {
        Flush();
        m_text += c;
    }
    void AddEscaped(unsigned value) {
        if (!m_wide) {
            m_bytes += static_cast<char>(value);
            return;
        }
        m_bytes += static_cast<char>(value & 0xFF);
        m_bytes += static_cast<char>(value >> 8);
    }
    std::string Finish() {
        Flush();
        return std::move(m_text);
    }

private:
    void Flush() {
        if (m_bytes.empty()) return;
        m_text += ToUtf8(m_bytes, m_wide ? kUtf16 : BytePage()).text;
        m_bytes.clear();
    }
    // Escapes in a script of Unicode are those of the time before it.
    int BytePage() const {
        if (m_codePage != kUtf8) return m_codePage;
        return LooksLikeUtf8(m_bytes) ? kUtf8 : kDefaultCodePage;
    }
    std::string m_text;
    std::string m_bytes;
    const int m_codePage;
    const bool m_wide;
};

unsigned Digits(std::string_view text, std::size_t& at, int base, std::size_t most) {
    unsigned value = 0;
    for (std::size_t n = 0; n < most && at < text.size() && DigitOf(text[at]) < base; ++n)
        value = value * static_cast<unsigned>(base) + static_cast<unsigned>(DigitOf(text[at++]));
    return value;
}

// `at` is behind the backslash.
void AddEscape(std::string_view text, std::size_t& at, bool wide, TextBuilder& builder) {
    const char c = text[at];
    if (DigitOf(c) < 8)
        return builder.AddEscaped(Digits(text, at, 8, wide ? 6 : 3) & (wide ? 0xFFFF : 0xFF));
    ++at;
    const bool isHex = (c == 'x' || c == 'X') && at < text.size() && DigitOf(text[at]) < 16;
    if (isHex) return builder.AddEscaped(Digits(text, at, 16, wide ? 4 : 2));
    switch (c) {
    case 'a':
        return builder.Add('\b'); // as compilers of resources have it
    case 'n':
        return builder.Add('\n');
    case 'r':
        return builder.Add('\r');
    case 't':
        return builder.Add('\t');
    case '"':
    case '\\':
        return builder.Add(c);
    default:
        builder.Add('\\');
        builder.Add(c);
    }
}

int BaseOf(std::string_view& text, bool wide) {
    const char second = text.size() > 1 && text[0] == '0' ? AsciiUpper(text[1]) : '\0';
    if (second == 'X' || second == 'O') {
        text.remove_prefix(2);
        return second == 'X' ? 16 : 8;
    }
    return wide && text.size() > 1 && text[0] == '0' ? 8 : 10;
}

} // namespace

std::string SpellingOf(const Token* first, const Token* last) {
    std::string spelling;
    unsigned call = 0;
    for (const Token* token = first; token != last; ++token) {
        if (token->call != 0 && token->call == call) continue;
        call = token->call;
        if (!spelling.empty() && !token->glued) spelling += ' ';
        spelling += token->Spelling();
    }
    return spelling;
}

std::string PartSpellingOf(const Token* first, const Token* last) {
    std::string spelling;
    const std::string* before = nullptr;
    for (const Token* token = first; token != last; ++token) {
        const std::string& part = token->part.empty() ? token->Spelling() : token->part;
        if (before && *before == part && !token->part.empty()) continue;
        before = &part;
        if (!spelling.empty() && !token->glued) spelling += ' ';
        spelling += part;
    }
    return spelling;
}

bool NumberOf(std::string_view text, bool wide, unsigned long long& value) {
    while (!text.empty() && (AsciiUpper(text.back()) == 'L' || AsciiUpper(text.back()) == 'U'))
        text.remove_suffix(1);
    const int base = BaseOf(text, wide);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    if (text.empty() || stop != end || error != std::errc()) return false;
    return wide || value <= std::numeric_limits<std::uint32_t>::max();
}

std::string_view Inside(const Token& string) {
    std::string_view text = string.text;
    text.remove_prefix(text.find('"') + 1);
    text.remove_suffix(1);
    return text;
}

std::string TextOf(const Token& string) {
    const bool wide = string.text[0] != '"';
    const std::string_view text = Inside(string);
    TextBuilder builder(string.codePage, wide);
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at++];
        if (c == '\\' && at < text.size()) {
            AddEscape(text, at, wide, builder);
            continue;
        }
        if (c == '"') ++at; // the second of two
        builder.Add(c);
    }
    return builder.Finish();
}

bool SameWord(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return AsciiUpper(x) == AsciiUpper(y); });
}

std::string Upper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), AsciiUpper);
    return result;
}

std::string Lower(std::string_view text) {
    return AsciiLowered(std::string(text));
}

} // namespace vm::rc
