// The rules of the ini format, on plain text.
#include "files/iniFormat.h"

#include <algorithm>
#include <cstdlib>

namespace vm {
namespace {

constexpr bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

const char* SkipSpace(const char* text) {
    while (IsSpace(*text)) ++text;
    return text;
}

} // namespace

std::size_t DropReturns(char* line, std::size_t length) {
    if (length > 0 && line[length - 1] == '\r') --length; // the usual place, and the only cheap one
    if (!std::memchr(line, '\r', length)) return length;
    return static_cast<std::size_t>(std::remove(line, line + length, '\r') - line);
}

std::string_view ValueOf(std::string_view line, std::size_t keyLength, std::size_t limit) {
    std::string_view value = line.substr(keyLength + 1, limit);
    value = value.substr(0, value.find(';'));
    value = value.substr(0, value.find('\0'));
    while (!value.empty() && (value.back() == ' ' || value.back() == '\t')) value.remove_suffix(1);
    return value;
}

int DecimalValue(const char* text) {
    text = SkipSpace(text);
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    std::uint32_t value = 0;
    for (; IsDigit(*text); ++text) value = value * 10 + static_cast<std::uint32_t>(*text - '0');
    return static_cast<int>(negative ? 0 - value : value);
}

std::optional<int> NumberIn(const char* text) {
    const char first = *SkipSpace(text);
    if (!IsDigit(first) && first != '-' && first != '+') return std::nullopt;
    return DecimalValue(text);
}

std::optional<std::string_view> ChildSection(std::string_view line, std::string_view parent) {
    const std::size_t separator = parent.size() + 1;
    if (line.size() < separator + 2 || line[0] != '[' || line.back() != ']') return std::nullopt;
    if (line.substr(1, parent.size()) != parent || line[separator] != '\\') return std::nullopt;
    const std::string_view child = line.substr(separator + 1, line.size() - separator - 2);
    if (child.find('\\') != std::string_view::npos) return std::nullopt;
    return child;
}

} // namespace vm
