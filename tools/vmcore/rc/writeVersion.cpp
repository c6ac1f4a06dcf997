#include "rc/writeVersion.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "rc/uiXml.h"
#include "rc/writePicture.h"

namespace vm::rc {
namespace {

constexpr char kFile[] = "Version.plist";

// The keys that desktops know. Others keep their own.
constexpr std::array<std::pair<std::string_view, const char*>, 3> kKnown = {{
    {"FileVersion", "CFBundleVersion"},
    {"ProductVersion", "CFBundleShortVersionString"},
    {"LegalCopyright", "NSHumanReadableCopyright"},
}};
constexpr std::array<std::string_view, 3> kReserved = {"CFBundleName", "Executable file",
                                                       "CFBundleHelpBookName"};

std::string KeyOf(const std::string& name) {
    for (const auto& [known, key] : kKnown)
        if (known == name) return key;
    return name;
}

std::string Dotted(const std::vector<int>& numbers) {
    std::string text;
    for (const int number : numbers) text += (text.empty() ? "" : ".") + std::to_string(number);
    return text;
}

QString Escaped(const std::string& text) {
    return XmlText(text).toHtmlEscaped();
}

class Entries {
public:
    bool Add(const std::string& key, const std::string& value) {
        const auto same = [&](const auto& entry) { return entry.first == key; };
        if (std::any_of(m_entries.begin(), m_entries.end(), same)) return false;
        m_entries.emplace_back(key, value);
        return true;
    }
    std::string Text() const {
        QString text = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                      "<plist version=\"1.0\">\n<dict>\n");
        for (const auto& [key, value] : m_entries)
            text +=
                "\t<key>" + Escaped(key) + "</key>\n\t<string>" + Escaped(value) + "</string>\n";
        return (text + "</dict>\n</plist>\n").toStdString();
    }

private:
    std::vector<std::pair<std::string, std::string>> m_entries;
};

void TakeString(const VersionValue& value, Entries& entries, Output& output) {
    const std::string what = "VALUE " + value.key;
    const std::string key = KeyOf(value.key);
    if (std::find(kReserved.begin(), kReserved.end(), key) != kReserved.end())
        return output.LeaveOut(value.place, what, "vmcore_add_application writes this key");
    if (!entries.Add(key, value.text))
        return output.LeaveOut(value.place, what,
                               value.key != key && key.starts_with("CFBundle")
                                   ? "the number counts: FILEVERSION, PRODUCTVERSION"
                                   : "there is an earlier value of this key");
    Notes notes;
    if (value.key == "ProductName")
        notes.push_back("the program's name is BUNDLE_NAME of vmcore_add_application");
    output.Say(value.place, what, std::string(kFile) + ", " + key, notes);
}

void TakeVersion(const VersionInfo& version, Entries& entries, Output& output) {
    output.Say(version.head.place, Described(version.head), kFile);
    if (!version.fileVersion.empty()) entries.Add("CFBundleVersion", Dotted(version.fileVersion));
    if (!version.productVersion.empty())
        entries.Add("CFBundleShortVersionString", Dotted(version.productVersion));
    for (std::size_t i = 0; i < version.strings.size(); ++i)
        for (const VersionValue& value : version.strings[i].values) {
            if (i == 0)
                TakeString(value, entries, output);
            else
                output.LeaveOut(value.place, "VALUE " + value.key,
                                "of the languages the first counts");
        }
}

} // namespace

const Picture* ProgramIcon(const std::vector<const Picture*>& pictures) {
    const Picture* lowest = nullptr;
    std::set<std::string> files; // a bitmap of the same number may be there before the icon
    for (const Picture* picture : pictures) {
        const Id& id = picture->head.id;
        if (picture->kind == PictureKind::Cursor || !IsThere(*picture)) continue;
        if (!files.insert(PictureFile(id)).second) continue;
        if (picture->kind != PictureKind::Icon || !HasNumber(id)) continue;
        if (!lowest || id.number < lowest->head.id.number) lowest = picture;
    }
    return lowest;
}

void WriteInfo(const std::vector<const VersionInfo*>& versions, const Picture* icon,
               Output& output) {
    Entries entries;
    for (const VersionInfo* version : versions) {
        if (version == versions.front())
            TakeVersion(*version, entries, output);
        else
            output.LeaveOut(version->head.place, Described(version->head),
                            "there is an earlier VERSIONINFO");
    }
    const std::string iconFile = icon ? PictureFile(icon->head.id) : std::string();
    const bool hasIcon = output.Has(iconFile);
    if (hasIcon) entries.Add("CFBundleIconFile", iconFile);
    if (hasIcon || !versions.empty()) output.Add(kFile, entries.Text());
}

} // namespace vm::rc
