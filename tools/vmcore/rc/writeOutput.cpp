#include "rc/writeOutput.h"

#include <cstdio>
#include <utility>

namespace vm::rc {
namespace {

constexpr std::size_t kLongestName = 80;

bool IsLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

} // namespace

bool Output::Add(const std::string& name, std::string bytes) {
    if (!m_names.insert(name).second) return false;
    files.push_back({name, std::move(bytes)});
    return true;
}

void Output::Say(const Place& place, const std::string& what, const std::string& where,
                 const Notes& notes) {
    std::string how = where;
    const char* before = ": ";
    for (const std::string& note : notes) {
        how.append(before).append(note);
        before = "; ";
    }
    m_report.Add({place, notes.empty() ? Outcome::Converted : Outcome::Approximated, what, how});
}

void Output::LeaveOut(const Place& place, const std::string& what, const std::string& why) {
    m_report.Add({place, Outcome::LeftOut, what, why});
}

void Output::Miss(const Place& place, const std::string& what, const std::string& file) {
    m_report.Add({place, Outcome::LeftOut, what, "there is no file '" + file + "'", true});
}

std::string SymbolOf(const Id& id) {
    if (!id.symbol.empty()) return id.symbol;
    return id.number ? std::to_string(*id.number) : id.name;
}

std::string Described(const std::string& keyword, const Id& id) {
    const std::string symbol = SymbolOf(id);
    return symbol.empty() ? keyword : keyword + " " + symbol;
}

std::string Described(const Head& head) {
    return Described(head.keyword, head.id);
}

std::string Identifier(std::string_view text) {
    const bool needsLetter = text.empty() || (text[0] >= '0' && text[0] <= '9');
    std::string name(needsLetter ? 1 : 0, '_');
    for (const char c : text.substr(0, kLongestName)) name += IsLetterOrDigit(c) ? c : '_';
    return name;
}

std::string FileId(const Id& id) {
    return id.number ? std::to_string(*id.number) : Identifier(id.name);
}

bool HasNumber(const Id& id) {
    return id.number.has_value();
}

std::string PictureFile(const Id& id) {
    return "Bitmap_" + FileId(id) + ".png";
}

std::string UnlessThere(bool isThere, const std::string& path) {
    return isThere ? std::string() : "; there is no file '" + path + "'";
}

std::string Hexadecimal(std::uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
    return text;
}

} // namespace vm::rc
