#include "Plugins.h"

#include <algorithm>
#include <cstring>

#include <windows.h>

#include "BankFile.h"

namespace {

std::vector<std::string> SharedObjectsIn(const std::string& folder) {
    std::vector<std::string> files;
    const std::string pattern = folder + "/*.so";
    if (pattern.size() >= MAX_PATH) return files;
    WIN32_FIND_DATA entry = {};
    const HANDLE find = FindFirstFile(pattern.c_str(), &entry);
    for (BOOL more = find != INVALID_HANDLE_VALUE; more; more = FindNextFile(find, &entry))
        files.emplace_back(entry.cFileName);
    FindClose(find);
    std::sort(files.begin(), files.end());
    return files;
}

// The record behind the plug-in's entry; null, and why, when it is none of this version.
const LibrarianPluginRecord* RecordOf(HMODULE library, std::string& problem) {
    problem = "it has no entry " LIBRARIAN_PLUGIN_ENTRY;
    const auto entry =
        reinterpret_cast<LibrarianPluginEntry>(GetProcAddress(library, LIBRARIAN_PLUGIN_ENTRY));
    if (!entry) return nullptr;
    const LibrarianPluginRecord* record = entry();
    if (!record || record->version != LIBRARIAN_PLUGIN_VERSION) {
        problem = record ? "it has version " + std::to_string(record->version) + ", not " +
                               std::to_string(LIBRARIAN_PLUGIN_VERSION)
                         : "its entry returned nothing";
        return nullptr;
    }
    problem = "its record is incomplete";
    return record->name && record->describe ? record : nullptr;
}

template <std::size_t Size>
std::string TextIn(const char (&buffer)[Size]) {
    return {buffer, strnlen(buffer, Size)};
}

void DescribeWith(const LibrarianPluginRecord& plugin, BankMessage& message) {
    LibrarianMessageText text = {};
    if (!plugin.describe(message.bytes.data(), message.bytes.size(), &text)) return;
    message.info.kind = TextIn(text.kind);
    message.patch = TextIn(text.patch);
}

} // namespace

void Plugins::LoadAll(const std::string& folder) {
    for (const std::string& file : SharedObjectsIn(folder)) Load(folder, file);
}

void Plugins::Load(const std::string& folder, const std::string& file) {
    std::string problem = "it cannot be opened";
    const LibrarianPluginRecord* record = nullptr;
    if (const HMODULE library = LoadLibrary((folder + "/" + file).c_str()))
        record = RecordOf(library, problem);
    if (!record) {
        OutputDebugString(("Plug-in not loaded: " + file + ": " + problem).c_str());
        return;
    }
    OutputDebugString((std::string("Plug-in loaded: ") + record->name).c_str());
    m_records.push_back(record);
}

std::string Plugins::Names() const {
    std::string names;
    for (const LibrarianPluginRecord* record : m_records)
        names += (names.empty() ? "" : ", ") + std::string(record->name);
    return names;
}

void Plugins::Describe(Bank& bank) const {
    for (BankMessage& message : bank.messages)
        for (const LibrarianPluginRecord* record : m_records) DescribeWith(*record, message);
}
