// portNames INCLUDE_FOLDER DIFFERENCES MISSING OUTPUT
//
// Part of the build: writes the names that `vmcore port` knows as a C++ source. What is there comes from the
// public headers; what differs and what is missing are the two hand-written tables as they stand.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>

#include "portDeclarations.h"

namespace {

namespace fs = std::filesystem;
using vm::tool::PortClass;
using vm::tool::PortDeclarations;

std::string Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

// What declares no names that programs bring along: what the library stands on, the marks of exports, and the
// entries of message maps that are there as errors only.
bool HasNames(const fs::path& header) {
    const fs::path name = header.filename();
    return name != "native.h" && name != "export.h" && name != "messageMapMissing.h";
}

bool IsOfInterfaces(const std::string& member) {
    return std::isupper(static_cast<unsigned char>(member[0])) != 0 || member.starts_with("m_");
}

void AddAll(std::set<std::string>& lines, char kind, const auto& names) {
    for (const std::string& name : names) lines.insert(std::string(1, kind) + " " + name);
}

void AddClass(std::set<std::string>& lines, const std::string& name, const PortClass& made) {
    std::string line = "c " + name;
    for (const std::string& base : made.bases) line += " " + base;
    lines.insert(line);
    for (const std::string& member : made.members)
        if (IsOfInterfaces(member)) lines.insert("m " + name + "::" + member);
    for (const std::string& value : made.values) lines.insert("m " + name + "::" + value);
}

std::set<std::string> NamesOf(const fs::path& folder) {
    PortDeclarations found;
    std::set<std::string> lines;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".h") continue;
        if (entry.path().parent_path() == folder)
            lines.insert("h " + entry.path().filename().string());
        if (HasNames(entry.path()))
            found.Add(vm::tool::PortSource(Read(entry.path())), PortDeclarations::Public);
    }
    AddAll(lines, 't', found.types);
    AddAll(lines, 'd', found.macros);
    AddAll(lines, 'f', found.functions);
    AddAll(lines, 'f', found.prototypes);
    AddAll(lines, 'k', found.constants);
    for (const auto& [name, made] : found.classes)
        if (name.size() > 1 && (name[0] == 'C' || name == "Array")) AddClass(lines, name, made);
    return lines;
}

void WriteText(std::ostream& out, const std::string& line) {
    out << "    R\"~(" << line << ")~\",\n";
}

void WriteTable(std::ostream& out, const char* name, const auto& lines) {
    out << "const std::vector<std::string_view> " << name << " = {\n";
    for (const std::string& line : lines) WriteText(out, line);
    out << "};\n\n";
}

std::vector<std::string> LinesOf(const fs::path& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line[0] != '#') lines.push_back(line);
    return lines;
}

// 'NAMES | what differs | what to do' becomes 'NAMES | what differs; what to do'.
std::string JoinCure(std::string line) {
    const std::size_t at = line.rfind(" | ");
    if (at == std::string::npos) return line;
    return line.ends_with(" | none") ? line.substr(0, at) : line.replace(at, 3, "; ");
}

std::vector<std::string> DifferencesOf(const fs::path& path) {
    std::vector<std::string> lines = LinesOf(path);
    std::transform(lines.begin(), lines.end(), lines.begin(), JoinCure);
    return lines;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 5) throw std::runtime_error("four arguments are needed");
    std::ofstream out(argv[4]);
    out << "// Made by portNames.\n#include \"portTables.h\"\n\nnamespace vm::tool {\n\n";
    WriteTable(out, "kPortThere", NamesOf(argv[1]));
    WriteTable(out, "kPortDifferences", DifferencesOf(argv[2]));
    WriteTable(out, "kPortMissing", LinesOf(argv[3]));
    out << "} // namespace vm::tool\n";
    return out.flush() ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "portNames: %s\n", error.what());
    return 1;
}
