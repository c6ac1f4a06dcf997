// Every script of the folder `scripts`, as NAME.rc, against NAME.report: its resources, the report and
// the summary, or the error. A first line "// options: ..." of a script is its command line. To write
// the reports anew after a change, and look at the difference:
//     VMCORE_RC_REPORTS=write build/dev/tests/tools/test_tools_rc --gtest_filter='Scripts.*'
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <gtest/gtest.h>

#include "modelText.h"
#include "rc/DiskFiles.h"
#include "rc/compile.h"
#include "rc/selectLanguage.h"
#include "rc/writers.h"

namespace fs = std::filesystem;

namespace vm::rc {
namespace {

const fs::path kScripts = VMCORE_RC_SCRIPTS;

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What is written of it, too, for a script with the option "--out".
bool IsWritten(const std::string& bytes) {
    return bytes.starts_with("// options: --out");
}

// "// options: --define A=1 --codepage 932 --language 7,1"
CompileSettings OptionsOf(const std::string& bytes) {
    CompileSettings settings;
    const std::string beginning = "// options: ";
    if (!bytes.starts_with(beginning)) return settings;
    std::istringstream words(
        bytes.substr(beginning.size(), bytes.find_first_of("\r\n") - beginning.size()));
    for (std::string option, value; words >> option >> value;) {
        const std::size_t equals = value.find('=');
        if (option == "--define")
            settings.preprocessor.defines.emplace_back(value.substr(0, equals),
                                                       value.substr(equals + 1));
        if (option == "--codepage") settings.preprocessor.codePage = std::stoi(value);
        if (option == "--language") settings.language = LanguageNamed(value);
    }
    return settings;
}

std::string Answer(const std::string& name) {
    const std::string bytes = ReadAll(name);
    try {
        Compiled compiled = CompileScript(name, bytes, DiskFiles({"inc"}, ""), OptionsOf(bytes));
        if (IsWritten(bytes)) WriteFiles(compiled.resources, name, {}, compiled.report);
        return ModelText(compiled.resources) + "--\n" + compiled.report.Text() +
               compiled.report.Summary() + "\n";
    } catch (const SyntaxError& error) {
        return error.place.file + ":" + std::to_string(error.place.line) + ":" +
               std::to_string(error.place.column) + ": error: " + error.text + "\n";
    }
}

std::vector<std::string> ScriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kScripts))
        if (entry.path().extension() == ".rc") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

class Scripts : public testing::TestWithParam<std::string> {};

TEST_P(Scripts, BecomeTheirReport) {
    fs::current_path(kScripts); // paths in reports are as they were given
    const std::string answer = Answer(GetParam() + ".rc");
    const fs::path report = kScripts / (GetParam() + ".report");
    const char* const mode = std::getenv("VMCORE_RC_REPORTS");
    if (mode && std::string(mode) == "write") std::ofstream(report, std::ios::binary) << answer;
    EXPECT_EQ(ReadAll(report), answer);
}

INSTANTIATE_TEST_SUITE_P(, Scripts, testing::ValuesIn(ScriptNames()),
                         [](const auto& test) { return test.param; });

} // namespace
} // namespace vm::rc
