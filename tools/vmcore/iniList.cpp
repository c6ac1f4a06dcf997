// Lists of sections and entries, as text and as JSON.
#include "iniList.h"

#include "json.h"

namespace vm::tool {
namespace {

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

} // namespace vm::tool
