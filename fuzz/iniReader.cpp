// The lines of an ini file against a plain list of them: the input is a file, a zero byte, and then
// look-ups and changes, one a line: a letter, then section, key and value between tabs.
#include <algorithm>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "../tests/files/LinearIni.h"
#include "files/IniLines.h"
#include "target.h"

using fuzz::Require;

namespace {

struct Step {
    char kind = 0;
    std::string section;
    std::string key;
    std::string value;
};

Step StepOf(const std::string& line) {
    Step step;
    std::istringstream words(line.substr(1));
    step.kind = line[0];
    std::getline(words, step.section, '\t');
    std::getline(words, step.key, '\t');
    std::getline(words, step.value, '\r');
    return step;
}

std::string LookUp(vm::IniLines& lines, const Step& step) {
    const auto header = lines.FindHeader(step.section, 0);
    if (!header) return "default";
    const auto entry = lines.FindEntry(*header, step.key, step.key.size() + 1);
    return entry ? std::string(vm::ValueOf(lines.At(*entry), step.key.size(), 100)) : "default";
}

void Set(vm::IniLines& lines, const Step& step) {
    const std::string text = step.key + "=" + step.value;
    const auto header = lines.FindHeader(step.section, 0);
    if (!header) return lines.AppendSection(step.section, text);
    if (const auto entry = lines.FindEntry(*header, step.key, step.key.size() + 1))
        lines.Replace(*entry, text);
    else
        lines.Insert(*header, text);
}

void DeleteKey(vm::IniLines& lines, const Step& step) {
    const auto header = lines.FindHeader(step.section, 0);
    if (!header) return;
    if (const auto entry = lines.FindEntry(*header, step.key, step.key.size() + 2))
        lines.Remove(*entry);
}

void DeleteSection(vm::IniLines& lines, const Step& step) {
    if (const auto header = lines.FindHeader(step.section, 0)) lines.RemoveContents(*header);
}

void Run(const Step& step, vm::IniLines& lines, LinearIni& plain) {
    switch (step.kind) {
    case 's':
        Set(lines, step);
        return plain.Set(step.section, step.key, step.value);
    case 'd':
        DeleteKey(lines, step);
        return plain.DeleteKey(step.section, step.key);
    case 'x':
        DeleteSection(lines, step);
        return plain.DeleteSection(step.section);
    case 'v':
        return Require(lines.AnyBeginsWith(step.section) == plain.Verify(step.section),
                       "prefixes are found");
    default:
        plain.ForgetSection();
        Require(LookUp(lines, step) == plain.Get(step.section, step.key, "default", 101),
                "a look-up gives what a scan gives");
    }
}

std::string Saved(const vm::IniLines& lines) {
    std::string bytes;
    lines.ForEach([&bytes](std::string_view line) { bytes.append(line).append("\r\n"); });
    return bytes;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(fuzz::Text(data, size));
    const std::size_t end = std::min(input.find('\0'), input.size());
    auto text = std::make_unique<char[]>(end);
    std::memcpy(text.get(), input.data(), end);
    vm::IniLines lines;
    lines.Load(std::move(text), end);
    LinearIni plain(input.substr(0, end));
    Require(Saved(lines) == plain.Saved(), "the lines are those of the file");

    std::istringstream steps(end < input.size() ? input.substr(end + 1) : std::string());
    for (std::string line; std::getline(steps, line);)
        if (!line.empty()) Run(StepOf(line), lines, plain);
    Require(Saved(lines) == plain.Saved(), "changes leave the same lines");
    return 0;
}
