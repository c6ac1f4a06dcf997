// The compiler of resource scripts, from bytes to files: code pages, preprocessor, parser, languages,
// writers. Every include is answered from nothing; "self.rc" is the input itself. Pictures are not read.
#include <algorithm>
#include <set>
#include <string>

#include "rc/compile.h"
#include "rc/writers.h"
#include "target.h"

using fuzz::Require;

namespace {

class NoFiles : public vm::rc::SourceFiles {
public:
    explicit NoFiles(std::string_view self) : m_self(self) {}
    std::optional<std::string> Find(const std::string& name, const std::string*) const override {
        return name;
    }
    std::optional<std::string> Read(const std::string& path) const override {
        return path == "self.rc" ? m_self : std::string();
    }

private:
    const std::string m_self;
};

// An input is small: what it may grow to is, too.
vm::rc::CompileSettings SmallSettings() {
    vm::rc::CompileSettings settings;
    vm::rc::Limits& limits = settings.preprocessor.limits;
    limits.expandedTokens = 20'000;
    limits.tokens = 50'000;
    limits.tokenBytes = 4'096;
    limits.sourceBytes = 200'000;
    limits.includeDepth = 8;
    limits.includes = 50;
    settings.language = vm::rc::Language{7, 1};
    return settings;
}

void CheckPlace(const vm::rc::Place& place) {
    Require(!place.file.empty(), "a place names its file");
}

void CheckReport(const vm::rc::Report& report) {
    for (const vm::rc::Finding& finding : report.Findings()) {
        CheckPlace(finding.place);
        Require(finding.outcome == vm::rc::Outcome::Converted || !finding.how.empty(),
                "what is not converted has a reason");
    }
    const std::string text = report.Text();
    Require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) ==
                report.Findings().size(),
            "every finding is one line");
}

void CheckFiles(vm::rc::Compiled& compiled) {
    for (vm::rc::Resource& resource : compiled.resources)
        if (auto* const picture = std::get_if<vm::rc::Picture>(&resource)) picture->path.clear();
    std::set<std::string> names;
    for (const auto& file : vm::rc::WriteFiles(compiled.resources, "a", {}, compiled.report)) {
        Require(file.name.find('/') == std::string::npos && !file.name.empty() &&
                    file.name[0] != '.',
                "files stay in their folder");
        Require(names.insert(file.name).second, "each file is written once");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const NoFiles files(fuzz::Text(data, size));
    try {
        vm::rc::Compiled compiled = vm::rc::CompileScript(
            "a.rc", std::string(fuzz::Text(data, size)), files, SmallSettings());
        CheckFiles(compiled);
        CheckReport(compiled.report);
    } catch (const vm::rc::SyntaxError& error) {
        CheckPlace(error.place);
        Require(error.place.line > 0 && !error.text.empty(), "an error says where and what");
    }
    return 0;
}
