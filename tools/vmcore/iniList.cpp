// Lists of sections and entries, as text and as JSON.
#include "iniList.h"

#include <cstdint>

#include "core/log.h"

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

const char* Bool(bool value) {
    return value ? "true" : "false";
}

std::string EntryAsJson(const IniEntry& entry, bool blockFound) {
    return "{\"key\": " + JsonString(entry.key) + ", \"value\": " + JsonString(entry.value) +
           ", \"line\": " + std::to_string(entry.line) +
           ", \"found\": " + Bool(entry.found && blockFound) + "}";
}

std::string BlockAsJson(const IniText& text, const IniBlock& block) {
    std::string json = "{\"name\": " + JsonString(SectionName(block.header)) +
                       ", \"line\": " + std::to_string(block.line) +
                       ", \"found\": " + Bool(block.found) + ", \"entries\": [";
    const char* separator = "\n    ";
    for (const IniEntry& entry : text.EntriesOf(block)) {
        json += separator + EntryAsJson(entry, block.found);
        separator = ",\n    ";
    }
    return json + "]}";
}

} // namespace

std::string ListSections(const IniText& text) {
    std::string list;
    for (const IniBlock& block : text.Blocks())
        if (block.found) list.append(SectionName(block.header)) += '\n';
    return list;
}

std::string ListEntries(const IniText& text, std::string_view section) {
    std::string list;
    for (const IniBlock& block : text.Blocks()) {
        if (!OpensSection(block.header, section)) continue;
        for (const IniEntry& entry : text.EntriesOf(block))
            list.append(entry.key).append("=").append(entry.value) += '\n';
    }
    return list;
}

std::vector<std::size_t> HiddenEntries(const IniText& text, std::string_view section) {
    std::vector<std::size_t> lines;
    const IniBlock* const found = text.Find(section);
    for (const IniBlock& block : text.Blocks()) {
        if (!OpensSection(block.header, section)) continue;
        for (const IniEntry& entry : text.EntriesOf(block))
            if (!entry.found || &block != found) lines.push_back(entry.line);
    }
    return lines;
}

std::string ListAsJson(const IniText& text, std::optional<std::string_view> section) {
    std::string json = "{\"sections\": [";
    const char* separator = "\n  ";
    for (const IniBlock& block : text.Blocks()) {
        if (section && !OpensSection(block.header, *section)) continue;
        json += separator + BlockAsJson(text, block);
        separator = ",\n  ";
    }
    return json + "]}\n";
}

std::string JsonString(std::string_view text) {
    std::string json = "\"";
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text[0]);
        std::size_t length = Utf8Length(text);
        if (byte == '"' || byte == '\\')
            json.append("\\") += text[0];
        else if (length == 0 || byte < 0x20 || byte == 0x7F)
            json += Format("\\u%04x", unsigned{byte});
        else
            json += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + "\"";
}

} // namespace vm::tool
