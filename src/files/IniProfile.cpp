// One ini file: its settings.
#include "files/IniProfile.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/log.h"

namespace vm {
namespace {

constexpr std::size_t kNumberBuffer = 31;
constexpr std::size_t kNameBuffer = 256;

// As much of `text` as fits, with a zero behind; how much that is. `size` is not 0.
DWORD CopyOut(std::string_view text, LPSTR buffer, DWORD size) {
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = 0;
    return static_cast<DWORD>(length);
}

} // namespace

IniProfile::IniProfile(std::string name, std::set<std::string>& cutFiles)
    : m_name(std::move(name)), m_cutFiles(cutFiles) {
    ReadProfile(m_name.c_str());
}

IniProfile::~IniProfile() {
    Write();
}

DWORD IniProfile::GetPrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue,
                                          LPSTR buffer, DWORD size) {
    if (!section || !key || !defaultValue || !buffer || size == 0) return 0;
    buffer[0] = 0;
    if (m_lines.IsEmpty()) ReadProfile(m_name.c_str());
    const std::string_view name = key;
    const auto entry = FindEntry(section, name);
    return CopyOut(entry ? ValueOf(*entry, name.size(), size - 1) : defaultValue, buffer, size);
}

int IniProfile::GetPrivateProfileInt(LPCSTR section, LPCSTR key, int defaultValue) {
    char text[kNumberBuffer] = {};
    GetPrivateProfileString(section, key, "", text, sizeof text);
    return NumberIn(text).value_or(defaultValue);
}

std::optional<std::string_view> IniProfile::FindEntry(std::string_view section,
                                                      std::string_view key) {
    const auto header = FindSection(section);
    if (!header) return std::nullopt;
    const auto entry = m_lines.FindEntry(*header, key, key.size() + 1);
    if (!entry) return std::nullopt;
    return m_lines.At(*entry);
}

// The search starts where the section was last found, or not found, and writes leave that number
// alone: hosts depend on what they then find, and what not.
std::optional<IniLines::Place> IniProfile::FindSection(std::string_view section) {
    const bool isCached = OpensSection(m_cachedSection, section);
    const bool isSame = isCached && m_cachedSection.size() == section.size() + 2;
    if (isSame && m_cachedPlace) return m_cachedPlace;
    const std::size_t start = isCached ? m_cachedIndex : 0;
    if (!isSame) m_cachedSection.assign(1, '[').append(section).append(1, ']');
    const std::size_t count = m_lines.Count();
    m_cachedPlace = start < count ? m_lines.FindHeader(section, start) : std::nullopt;
    m_cachedIndex = m_cachedPlace ? m_lines.IndexOf(*m_cachedPlace) : std::max(start, count);
    return m_cachedPlace;
}

void IniProfile::WritePrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR value) {
    if (!section || (!key && value)) return;
    if (!CanHold(section, key ? key : "", value ? value : "")) return;
    m_cachedPlace.reset();
    if (value) return Set(section, key, value);
    const auto header = m_lines.FindHeader(section, 0);
    if (!header) return;
    if (!key) {
        m_lines.RemoveContents(*header);
        m_dirty = true;
        return;
    }
    // An entry without a value is not deleted.
    const auto entry = m_lines.FindEntry(*header, key, std::strlen(key) + 2);
    if (!entry) return;
    m_lines.Remove(*entry);
    m_dirty = true;
}

void IniProfile::Set(std::string_view section, std::string_view key, std::string_view value) {
    m_entry.assign(key).append(1, '=').append(value);
    if (std::max(m_entry.size(), section.size() + 2) > kIniLineLimit) ReportCut();
    m_dirty = true;
    const auto header = m_lines.FindHeader(section, 0);
    if (!header) return m_lines.AppendSection(section, m_entry);
    const auto entry = m_lines.FindEntry(*header, key, key.size() + 1);
    if (entry)
        m_lines.Replace(*entry, m_entry);
    else
        m_lines.Insert(*header, m_entry);
}

bool IniProfile::CanHold(std::string_view section, std::string_view key,
                         std::string_view value) const {
    if (HoldsLineEnd(section) || HoldsLineEnd(key) || HoldsLineEnd(value)) {
        Log(LogModule::Files, "Profile names and values can't hold line ends: %s", m_name.c_str());
        return false;
    }
    const std::size_t longest = std::max(section.size() + 2, key.size() + 1 + value.size());
    if (longest <= IniLines::kLongestLine) return true;
    Log(LogModule::Files, "Profile line too long: %s", m_name.c_str());
    return false;
}

DWORD IniProfile::GetProfileSubClassCount(std::string_view section) const {
    DWORD count = 0;
    m_lines.ForEachChild(section, [&count](std::string_view) { return ++count != 0; });
    return count;
}

void IniProfile::GetProfileEnumKey(std::string_view section, DWORD index, LPSTR name,
                                   LPDWORD length) const {
    m_lines.ForEachChild(section, [&](std::string_view child) {
        if (index-- != 0) return true;
        const std::string_view fitting = child.substr(0, kNameBuffer - 1);
        if (name) CopyOut(fitting, name, kNameBuffer);
        if (length) *length = static_cast<DWORD>(fitting.size());
        return false;
    });
}

} // namespace vm
