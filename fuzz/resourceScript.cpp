// The compiler of resource scripts, from bytes to resources: code pages, preprocessor, parser,
// languages. Every include is answered from nothing; "self.rc" is the input itself.
#include <algorithm>
#include <string>

#include "rc/compile.h"
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

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const NoFiles files(fuzz::Text(data, size));
    try {
        const vm::rc::Compiled compiled = vm::rc::CompileScript(
            "a.rc", std::string(fuzz::Text(data, size)), files, SmallSettings());
        for (const vm::rc::Finding& finding : compiled.report.Findings()) {
            CheckPlace(finding.place);
            Require(finding.outcome == vm::rc::Outcome::Converted || !finding.how.empty(),
                    "what is not converted has a reason");
        }
        const std::string text = compiled.report.Text();
        Require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) ==
                    compiled.report.Findings().size(),
                "every finding is one line");
    } catch (const vm::rc::SyntaxError& error) {
        CheckPlace(error.place);
        Require(error.place.line > 0 && !error.text.empty(), "an error says where and what");
    }
    return 0;
}
