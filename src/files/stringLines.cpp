#include "files/stringLines.h"

#include <charconv>
#include <cstdint>
#include <optional>

#include "files/iniFormat.h"

namespace vm {
namespace {

constexpr std::size_t kLongestValue = 230; // with the longest key below the limit of a line
constexpr std::size_t kLongestPart = 4;    // of a character
constexpr char kSection[] = "Strings";
constexpr char kHexDigits[] = "0123456789ABCDEF";

std::string Hexadecimal(char c) {
    const auto code = static_cast<unsigned char>(c);
    return {'\\', 'x', kHexDigits[code >> 4], kHexDigits[code & 15]};
}

std::string Escaped(char c) {
    switch (c) {
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return c == ';' || static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? Hexadecimal(c)
                                                                              : std::string(1, c);
    }
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// A blank at either end would be lost.
std::string WithSafeEnds(std::string value) {
    if (value.ends_with(' ')) value.replace(value.size() - 1, 1, "\\x20");
    if (value.starts_with(' ')) value.replace(0, 1, "\\x20");
    return value;
}

std::vector<std::string> Values(std::string_view text) {
    std::vector<std::string> values(1);
    for (const char c : text) {
        const bool isFull = values.back().size() + kLongestPart > kLongestValue;
        if (isFull && !IsContinuation(c)) values.emplace_back();
        values.back() += Escaped(c);
    }
    for (std::string& value : values) value = WithSafeEnds(std::move(value));
    return values;
}

std::optional<char> HexadecimalAt(std::string_view text) {
    unsigned code = 0;
    if (text.size() < 2) return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + 2, code, 16);
    if (error != std::errc() || end != text.data() + 2) return std::nullopt;
    return static_cast<char>(code);
}

// What follows a backslash; taken off `rest`. An unknown escape is what it looks like.
std::string Unescaped(std::string_view& rest) {
    const char kind = rest.empty() ? '\\' : rest.front();
    if (!rest.empty()) rest.remove_prefix(1);
    if (kind == 'n') return "\n";
    if (kind == 'r') return "\r";
    if (kind == 't') return "\t";
    if (kind == '\\') return "\\";
    const auto code = kind == 'x' ? HexadecimalAt(rest) : std::nullopt;
    if (!code) return {'\\', kind};
    rest.remove_prefix(2);
    return std::string(1, *code);
}

std::string TextOfValue(std::string_view value) {
    std::string text;
    while (!value.empty()) {
        const char c = value.front();
        value.remove_prefix(1);
        text += c == '\\' ? Unescaped(value) : std::string(1, c);
    }
    return text;
}

struct Key {
    unsigned id = 0;
    unsigned part = 0;
};

std::optional<unsigned> Number(std::string_view text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<Key> KeyOf(std::string_view name) {
    const std::size_t dot = name.find('.');
    const auto id = Number(name.substr(0, dot));
    const auto part = dot == std::string_view::npos ? 0 : Number(name.substr(dot + 1));
    if (!id || !part) return std::nullopt;
    return Key{*id, *part};
}

// The lines of the section, one after the other.
class Reader {
public:
    void Take(std::string_view line) {
        if (EndsSection(line)) m_isInside = OpensSection(line, kSection);
        const std::size_t equals = line.find('=');
        if (!m_isInside || equals == std::string_view::npos) return;
        if (const auto key = KeyOf(line.substr(0, equals)))
            TakeValue(*key, ValueOf(line, equals, line.size()));
    }
    StringTexts texts;

private:
    void TakeValue(const Key& key, std::string_view value) {
        if (key.part == 0) {
            m_next = {key.id, texts.contains(key.id) ? 0U : 1U};
            texts.try_emplace(key.id, TextOfValue(value));
        } else if (key.id == m_next.id && key.part == m_next.part) {
            texts[key.id] += TextOfValue(value);
            ++m_next.part;
        }
    }
    bool m_isInside = false;
    Key m_next; // the line that would go on
};

} // namespace

std::vector<std::string> StringLines(unsigned id, std::string_view text) {
    std::vector<std::string> lines;
    for (const std::string& value : Values(text)) {
        const std::string part = lines.empty() ? "" : "." + std::to_string(lines.size());
        lines.push_back(std::to_string(id) + part + "=" + value);
    }
    return lines;
}

StringTexts ParseStringTexts(std::string bytes) {
    Reader reader;
    SplitIniLines(bytes.data(), bytes.size(), [&](const IniSpan& span) {
        reader.Take(std::string_view(bytes).substr(span.offset, span.length));
    });
    return std::move(reader.texts);
}

} // namespace vm
