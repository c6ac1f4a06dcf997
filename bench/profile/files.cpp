#include "files.h"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unordered_set>

namespace bench {
namespace {

constexpr std::size_t kLongestLine = 255;

[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...) {
    char text[512];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof(text), format, values);
    va_end(values);
    return text;
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") + 1 - first);
}

/// Collects what can be asked, line by line.
class EntryReader {
public:
    explicit EntryReader(IniFile& file) : m_file(file) {}
    void Read() {
        const std::string_view text = m_file.text;
        for (std::size_t start = 0, end; (end = text.find('\n', start)) != text.npos;
             start = end + 1)
            ReadLine(text.substr(start, end - start));
    }

private:
    void ReadLine(std::string_view line) {
        const std::string_view trimmed = Trimmed(line);
        if (trimmed.empty() || trimmed[0] == ';' || trimmed[0] == '#') return;
        if (trimmed[0] == '[' && trimmed.back() == ']')
            EnterSection(trimmed.substr(1, trimmed.size() - 2));
        else if (m_inside && line.size() <= kLongestLine)
            ReadEntry(line);
    }
    void EnterSection(std::string_view name) {
        m_inside = m_sections.insert(LowerCase(name)).second && name.size() < kLongestLine - 1;
        m_name = name;
        m_keys.clear();
    }
    void ReadEntry(std::string_view line) {
        const std::size_t equals = line.find('=');
        if (equals == line.npos) return;
        const std::string_view value = line.substr(equals + 1);
        if (Trimmed(value.substr(0, value.find(';'))).empty()) return;
        const std::string_view spelled = line.substr(0, equals);
        const std::string_view key = Trimmed(spelled);
        if (!m_keys.insert(LowerCase(key)).second) return;
        if (m_keys.size() == 1) m_file.sections.emplace_back(m_name);
        m_file.entries.push_back({static_cast<std::uint32_t>(m_file.sections.size() - 1),
                                  std::string(key), std::string(spelled)});
    }

    IniFile& m_file;
    std::unordered_set<std::string> m_sections;
    std::unordered_set<std::string> m_keys; ///< of this section
    std::string_view m_name;
    bool m_inside = false;
};

IniFile MakeFile(const std::string& name, std::string text) {
    IniFile file{name, std::move(text), {}, {}};
    EntryReader(file).Read();
    return file;
}

std::string BrowserPattern(int family, int version, int system) {
    static const char* const kSystems[] = {"X11? *Linux x86_64*", "X11? *Linux aarch64*",
                                           "*Plan 9 from Bell Labs*", "*Haiku R1 x86_64*"};
    return Format("Mozilla/5.0 (%s) AppleWebKit/*.%02d (KHTML, like Gecko*) *Finch%02d/%d.%d* "
                  "Safari/*.%02d*",
                  kSystems[system], version % 60, family, version, system, version % 60);
}

std::string BrowserSection(int family, int version, int system) {
    static const char* const kNames[] = {"Linux", "Linux", "Plan 9", "Haiku"};
    static const char* const kAbilities[] = {"Frames",   "IFrames",          "Tables",
                                             "Cookies",  "BackgroundSounds", "JavaScript",
                                             "VBScript", "JavaApplets",      "ActiveXControls"};
    std::string text = "\n[" + BrowserPattern(family, version, system) + "]\n";
    text += Format("Parent=Finch %d.0 for family %02d\nComment=Finch %d.%d, the browser of the "
                   "small birds, as it presents itself on %s\n",
                   version, family, version, system, kNames[system]);
    text += Format("Browser=Finch%02d\nVersion=%d.%d\nMajorVer=%d\nMinorVer=%d\nPlatform=%s\n",
                   family, version, system, version, system, kNames[system]);
    for (const char* ability : kAbilities)
        text += Format("%s=%s\n", ability, (family + version) % 3 != 0 ? "true" : "false");
    return text + Format("CssVersion=%d\n", 1 + version % 3);
}

} // namespace

IniFile GridFile(int sections, int keys) {
    std::string text;
    std::uint32_t random = 1;
    for (int section = 0; section < sections; ++section) {
        text += Format("%s[section_%05d]\n", section > 0 ? "\n" : "", section);
        for (int key = 0; key < keys; ++key) {
            random = random * 1664525 + 1013904223;
            text += Format("setting_%05d=value_%07u\n", key, random >> 9);
        }
    }
    return MakeFile(Format("%dx%d", sections, keys), std::move(text));
}

IniFile BrowsersFile() {
    std::string text;
    for (int line = 0; line < 20; ++line)
        text += ";;; Abilities of browsers by the pattern of their names, longest pattern first.\n";
    text += "\n[Abilities_Version]\nVersion=5031\nReleased=Mon, 05 Jan 2026 10:00:00 +0000\n";
    for (int family = 0; family < 15; ++family) {
        text += Format("\n;;;;;;;;;;;;;;;;;;;;;;;;;;;;;;; Finch family %02d\n", family);
        for (int version = 1; version <= 30; ++version)
            for (int system = 0; system < 4; ++system)
                text += BrowserSection(family, version, system);
    }
    return MakeFile("browsers", std::move(text));
}

IniFile DataFile(const std::string& name) {
    return MakeFile(name, ReadText(BENCH_DATA_DIR "/" + name + ".ini"));
}

Folder::Folder() {
    constexpr std::uintmax_t kRoom = 512U << 20;
    std::error_code error;
    const auto memory = std::filesystem::space("/dev/shm", error);
    const bool room = !error && memory.available >= kRoom;
    m_path = (room ? "/dev/shm" : std::filesystem::temp_directory_path().string()) +
             "/bench_profile_XXXXXX";
    if (mkdtemp(m_path.data()) == nullptr) {
        std::perror(m_path.c_str());
        std::exit(1);
    }
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string Folder::NewName() {
    return m_path + Format("/%06d.ini", m_names++);
}

void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary).write(text.data(), static_cast<long>(text.size()));
}

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (text.empty()) {
        std::fprintf(stderr, "bench_profile: cannot read %s\n", path.c_str());
        std::exit(1);
    }
    return text;
}

} // namespace bench
