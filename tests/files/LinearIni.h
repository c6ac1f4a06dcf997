// The profile store as it is described, with nothing clever: one array of lines, scanned from its
// start. What the real one is compared with.
#pragma once

#include <cctype>
#include <string>
#include <vector>

class LinearIni {
public:
    /// A loop over the characters, as the format's description goes.
    explicit LinearIni(const std::string& bytes) {
        std::string line;
        const std::string whole = bytes.substr(0, bytes.rfind('\n') + 1);
        for (const char c : whole) {
            if (c == '\r') continue;
            if (c != '\n' && line.size() < 255) {
                line += c;
                continue;
            }
            while (!line.empty() && line.back() == ' ') line.pop_back();
            lines.push_back(line);
            line.clear();
        }
    }

    std::string Saved() const {
        std::string bytes;
        for (const std::string& line : lines) bytes += line + "\r\n";
        return bytes;
    }

    std::string Get(const std::string& section, const std::string& key,
                    const std::string& defaultValue, std::size_t size) {
        const std::string header = "[" + section + "]";
        std::size_t at = 0;
        if (cachedIndex != 0 && Begins(cachedSection, header)) at = cachedIndex;
        cachedSection = header;
        if (at < lines.size())
            while (at < lines.size() && !Begins(lines[at], header)) ++at;
        cachedIndex = at;
        for (++at; at < lines.size() && !IsEnd(lines[at]); ++at)
            if (IsEntry(lines[at], key, 1)) {
                std::string value = lines[at].substr(key.size() + 1, size - 1);
                value = value.substr(0, value.find_first_of(std::string(";\0", 2)));
                while (!value.empty() && (value.back() == ' ' || value.back() == '\t'))
                    value.pop_back();
                return value;
            }
        return defaultValue.substr(0, size - 1);
    }

    void ForgetSection() { cachedIndex = 0; }

    void Set(const std::string& section, const std::string& key, const std::string& value) {
        const std::string entry = key + "=" + value;
        const std::size_t header = Find(section);
        if (header == lines.size()) {
            lines.insert(lines.end(), {"", "[" + section + "]", entry});
            return;
        }
        for (std::size_t at = header + 1; at < lines.size(); ++at) {
            if (IsEnd(lines[at])) {
                lines.insert(lines.begin() + long(lines[at - 1].empty() ? at - 1 : at), entry);
                return;
            }
            if (IsEntry(lines[at], key, 1)) {
                lines[at] = entry;
                return;
            }
        }
        lines.push_back(entry);
    }

    void DeleteKey(const std::string& section, const std::string& key) {
        for (std::size_t at = Find(section) + 1; at < lines.size() && !IsEnd(lines[at]); ++at)
            if (IsEntry(lines[at], key, 2)) {
                lines.erase(lines.begin() + long(at));
                return;
            }
    }

    void DeleteSection(const std::string& section) {
        const std::size_t header = Find(section);
        if (header == lines.size()) return;
        std::size_t last = header + 1;
        while (last < lines.size() && !IsEnd(lines[last])) ++last;
        for (--last; last > header; --last)
            if (!lines[last].empty()) lines.erase(lines.begin() + long(last));
    }

    /// The names of the direct children.
    std::vector<std::string> Children(const std::string& section) const {
        std::vector<std::string> names;
        const std::string begin = "[" + section + "\\";
        for (const std::string& line : lines) {
            if (line.compare(0, begin.size(), begin) != 0 || line.back() != ']') continue;
            const std::string name = line.substr(begin.size(), line.size() - begin.size() - 1);
            if (name.find('\\') == std::string::npos) names.push_back(name);
        }
        return names;
    }

    bool Verify(const std::string& prefix) const {
        for (const std::string& line : lines)
            if (line.compare(0, prefix.size(), prefix) == 0) return true;
        return false;
    }

private:
    static bool Begins(const std::string& line, const std::string& prefix) {
        if (line.size() < prefix.size()) return false;
        for (std::size_t i = 0; i < prefix.size(); ++i)
            if (std::toupper(static_cast<unsigned char>(line[i])) !=
                std::toupper(static_cast<unsigned char>(prefix[i])))
                return false;
        return true;
    }
    static bool IsEnd(const std::string& line) {
        return !line.empty() && line.front() == '[' && line.back() == ']';
    }
    static bool IsEntry(const std::string& line, const std::string& key, std::size_t longer) {
        return line.size() >= key.size() + longer && Begins(line, key) && line[key.size()] == '=';
    }
    std::size_t Find(const std::string& section) const {
        std::size_t at = 0;
        while (at < lines.size() && !Begins(lines[at], "[" + section + "]")) ++at;
        return at;
    }

    std::vector<std::string> lines;
    std::string cachedSection;
    std::size_t cachedIndex = 0;
};
