#include "Plugins.h"

#include <algorithm>
#include <cstring>

#include <windows.h>

#include "BankFile.h"
#include "BankFolder.h"

namespace {

constexpr std::size_t kMostVoices = 1000; // of one message

bool IsComplete(const LibrarianEditor* editor) {
    return editor && editor->canEdit && editor->create && editor->resize && editor->show &&
           editor->leave && editor->destroy;
}

const LibrarianEditor* EditorOf(const LibrarianPluginRecord& record) {
    if (record.version != LIBRARIAN_EDITOR_VERSION) return nullptr;
    return reinterpret_cast<const LibrarianEditorRecord&>(record).editor;
}

using VoiceFunction = decltype(LibrarianVoicesRecord::voice);

VoiceFunction VoicesOf(const LibrarianPluginRecord& record) {
    if (record.version != LIBRARIAN_VOICES_VERSION) return nullptr;
    return reinterpret_cast<const LibrarianVoicesRecord&>(record).voice;
}

bool IsComplete(const LibrarianPluginRecord& record) {
    if (!record.name) return false;
    if (record.version == LIBRARIAN_EDITOR_VERSION) return IsComplete(EditorOf(record));
    return record.describe && (record.version == LIBRARIAN_PLUGIN_VERSION || VoicesOf(record));
}

// Why a record is of no use, "" when it is.
std::string ProblemOf(const LibrarianPluginRecord* record) {
    if (!record) return "its entry returned nothing";
    if (record->version < LIBRARIAN_PLUGIN_VERSION || record->version > LIBRARIAN_VOICES_VERSION)
        return "it has version " + std::to_string(record->version) + ", which is none of 1 to " +
               std::to_string(LIBRARIAN_VOICES_VERSION);
    return IsComplete(*record) ? "" : "its record is incomplete";
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

template <std::size_t Size>
std::string TextIn(const char (&buffer)[Size]) {
    return {buffer, strnlen(buffer, Size)};
}

std::vector<std::string> NamesOfVoices(const LibrarianPluginRecord& plugin,
                                       const SysexBytes& message) {
    std::vector<std::string> names;
    const VoiceFunction voice = VoicesOf(plugin);
    LibrarianMessageText text = {};
    while (voice && names.size() < kMostVoices &&
           voice(message.data(), message.size(), names.size(), &text)) {
        names.push_back(TextIn(text.patch));
        text = {};
    }
    return names;
}

void DescribeWith(const LibrarianPluginRecord& plugin, BankMessage& message) {
    LibrarianMessageText text = {};
    if (!plugin.describe || !plugin.describe(message.bytes.data(), message.bytes.size(), &text))
        return;
    message.info.kind = TextIn(text.kind);
    message.patch = TextIn(text.patch);
    message.voices = NamesOfVoices(plugin, message.bytes);
}

} // namespace

std::vector<std::string> Plugins::LoadAll(const std::string& folder, const Check& check) {
    std::vector<std::string> unknown;
    for (const std::string& file : FilesIn(folder, ".so")) {
        PluginFile& plugin = FileNamed(file);
        if (!plugin.name.empty()) continue;
        const std::string path = folder + "/" + file;
        const std::optional<std::string> problem = check ? check(path) : "";
        plugin.isAwaited = !problem;
        if (problem)
            Take(plugin, path, *problem);
        else
            unknown.push_back(path);
    }
    return unknown;
}

void Plugins::Decide(const std::string& path, const std::string& problem) {
    Take(FileNamed(NameOf(path)), path, problem);
}

void Plugins::Take(PluginFile& plugin, const std::string& path, const std::string& problem) {
    plugin.isAwaited = false;
    plugin.problem = problem.empty() ? Load(path, plugin.name) : problem;
    const std::string line = plugin.problem.empty()
                                 ? "Plug-in loaded: " + plugin.name
                                 : "Plug-in not loaded: " + plugin.file + ": " + plugin.problem;
    OutputDebugString(line.c_str());
}

PluginFile& Plugins::FileNamed(const std::string& file) {
    const auto known = std::find_if(m_files.begin(), m_files.end(),
                                    [&](const PluginFile& plugin) { return plugin.file == file; });
    if (known != m_files.end()) return *known;
    m_files.push_back({file, "", "", false});
    return m_files.back();
}

std::string Plugins::Load(const std::string& path, std::string& name) {
    const HMODULE library = LoadLibrary(path.c_str());
    if (!library) return "it cannot be opened";
    const auto entry =
        reinterpret_cast<LibrarianPluginEntry>(GetProcAddress(library, LIBRARIAN_PLUGIN_ENTRY));
    if (!entry) return "it has no entry " LIBRARIAN_PLUGIN_ENTRY;
    const LibrarianPluginRecord* const record = entry();
    std::string problem = ProblemOf(record);
    if (!problem.empty()) return problem;
    name = record->name;
    m_records.push_back(record);
    return "";
}

std::string Plugins::Names() const {
    std::vector<std::string> names;
    for (const LibrarianPluginRecord* record : m_records) names.emplace_back(record->name);
    return Joined(names);
}

std::string Plugins::Refused() const {
    std::vector<std::string> files;
    for (const PluginFile& plugin : m_files)
        if (!plugin.problem.empty() && !plugin.isAwaited) files.push_back(plugin.file);
    return Joined(files);
}

bool Plugins::AreAwaited() const {
    return std::any_of(m_files.begin(), m_files.end(),
                       [](const PluginFile& plugin) { return plugin.isAwaited; });
}

void Plugins::Describe(Bank& bank) const {
    for (BankMessage& message : bank.messages)
        for (const LibrarianPluginRecord* record : m_records) DescribeWith(*record, message);
}

const LibrarianEditor* Plugins::EditorFor(const SysexBytes& message) const {
    for (const LibrarianPluginRecord* record : m_records) {
        const LibrarianEditor* const editor = EditorOf(*record);
        if (editor && editor->canEdit(message.data(), message.size())) return editor;
    }
    return nullptr;
}
