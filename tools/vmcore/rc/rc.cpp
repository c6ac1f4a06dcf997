// The arguments of `vmcore rc`, what it prints and what it writes.
#include "rc/rc.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command.h"
#include "iniFile.h"
#include "rc/DiskFiles.h"
#include "rc/codePages.h"
#include "rc/compile.h"
#include "rc/outputs.h"
#include "rc/rcHelp.h"
#include "rc/selectLanguage.h"
#include "rc/writers.h"

namespace fs = std::filesystem;

namespace vm::tool {
namespace {

struct Arguments {
    std::string file, out, language, reportFile, depfile, depfileTarget, names;
    std::vector<std::string> folders, defines;
    int codePage = 0;
    int mainMenu = -1;
    bool quiet = false, list = false;
};

bool IsName(const std::string& name) {
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
    return name.find_first_of(letters) == 0 &&
           name.find_first_not_of(letters + "0123456789") == std::string::npos;
}

std::pair<std::string, std::string> Definition(const std::string& text) {
    const std::size_t equals = text.find('=');
    const std::string name = text.substr(0, equals);
    if (!IsName(name))
        throw Exit{kTrouble, "this is no name to define: '" + name + "' (see --help)"};
    return {name, equals == std::string::npos ? "1" : text.substr(equals + 1)};
}

rc::CompileSettings SettingsOf(const Arguments& given) {
    rc::CompileSettings settings;
    for (const std::string& define : given.defines)
        settings.preprocessor.defines.push_back(Definition(define));
    settings.preprocessor.codePage = given.codePage;
    const bool isBytes = given.codePage != rc::kUtf16 && given.codePage != rc::kUtf16BigEndian;
    if (given.codePage != 0 && (!isBytes || !rc::IsCodePage(given.codePage)))
        throw Exit{kTrouble, "this system has no code page " + std::to_string(given.codePage) +
                                 " (see --help)"};
    if (given.language.empty()) return settings;
    settings.language = rc::LanguageNamed(given.language);
    if (!settings.language)
        throw Exit{kTrouble, "this is no language: '" + given.language + "' (see --help)"};
    return settings;
}

rc::Compiled CompileFile(const Arguments& given, const rc::CompileSettings& settings) {
    const rc::DiskFiles files(given.folders, rc::FolderOf(given.file));
    try {
        return rc::CompileScript(given.file, ReadBytes(given.file), files, settings);
    } catch (const rc::SyntaxError& error) {
        std::fprintf(stderr, "%s:%d:%d: error: %s\n", rc::OneLine(error.place.file).c_str(),
                     error.place.line, error.place.column, rc::OneLine(error.text).c_str());
        throw Exit{kNo};
    }
}

std::string Quiet(const rc::Report& report) {
    rc::Report quiet;
    for (const rc::Finding& finding : report.Findings())
        if (finding.outcome != rc::Outcome::Converted) quiet.Add(finding);
    return quiet.Text();
}

void PrintReport(const Arguments& given, const rc::Report& report) {
    const std::string text = given.quiet ? Quiet(report) : report.Text();
    std::printf("%s%s: %s\n", text.c_str(), given.file.c_str(), report.Summary().c_str());
}

rc::OutputFile Named(const std::string& path, std::string bytes) {
    return {fs::path(path).filename().string(), std::move(bytes)};
}

void PutFile(const std::string& path, std::string bytes) {
    const std::string folder = fs::path(path).parent_path().string();
    rc::PutFiles(folder.empty() ? "." : folder, {Named(path, std::move(bytes))});
}

void WriteDependencies(const Arguments& given, const rc::Compiled& compiled,
                       const std::vector<rc::OutputFile>& outputs) {
    if (given.depfile.empty()) return;
    std::vector<std::string> inputs = compiled.filesRead;
    for (const std::string& path : rc::FilesNamed(compiled.resources)) inputs.push_back(path);
    std::vector<std::string> targets;
    for (const rc::OutputFile& file : outputs)
        targets.push_back((fs::path(given.out) / file.name).string());
    if (!given.depfileTarget.empty()) targets = {given.depfileTarget};
    PutFile(given.depfile, rc::DependencyRule(targets, inputs));
}

std::string NamesOf(const std::vector<rc::OutputFile>& outputs) {
    std::string names;
    for (const rc::OutputFile& file : outputs) names += file.name + "\n";
    return names;
}

void Compile(const Arguments& given) {
    if (given.out.empty() && !given.list)
        throw Exit{kTrouble, "--out says where the files go (or --list; see --help)"};
    rc::Compiled compiled = CompileFile(given, SettingsOf(given));
    rc::WriteOptions options;
    options.mainMenu = given.mainMenu;
    const std::string name = fs::path(given.file).stem().string();
    const auto outputs = rc::WriteFiles(compiled.resources, name, options, compiled.report);
    if (given.list) {
        std::printf("%s", NamesOf(outputs).c_str());
        return;
    }
    rc::PutFiles(given.out, outputs);
    if (!given.names.empty()) PutFile(given.names, NamesOf(outputs));
    WriteDependencies(given, compiled, outputs);
    const std::string all = compiled.report.Text() + compiled.report.Summary() + "\n";
    if (!given.reportFile.empty()) PutFile(given.reportFile, all);
    PrintReport(given, compiled.report);
    if (compiled.report.IsFileMissing())
        throw Exit{kNo, "a file that " + given.file + " names is not there: see the report"};
}

void AddOptions(CLI::App& rc, Arguments& given) {
    rc.add_option("FILE", given.file, "The script")->type_name("")->required();
    rc.add_option("--out", given.out, "Folder for the files, a bundle's Resources")
        ->type_name("RESOURCES");
    // One at a time: what follows may be the script.
    rc.add_option("--include", given.folders, "Where to look for files, too; may be repeated")
        ->type_name("DIR")
        ->allow_extra_args(false);
    rc.add_option("--define", given.defines, "A macro; without a value it is 1; may be repeated")
        ->type_name("NAME[=VALUE]")
        ->allow_extra_args(false);
    rc.add_option("--codepage", given.codePage, "Of files that do not say theirs")->type_name("N");
    rc.add_option("--language", given.language, "Of several the one to take: german, 0x407 or 7,1")
        ->type_name("LANGUAGE");
    rc.add_option("--main-menu", given.mainMenu,
                  "Number of the menu to write as MainMenu.ui too, with its shortcuts")
        ->type_name("ID");
}

} // namespace

void AddRcCommand(CLI::App& app) {
    CLI::App* const rc = app.add_subcommand("rc", "Compile a resource script");
    rc->footer(kRcHelp);
    const auto given = std::make_shared<Arguments>(); // the callback keeps it alive
    AddOptions(*rc, *given);
    rc->add_option("--report", given->reportFile, "Write the whole report to this file, too")
        ->type_name("FILE");
    rc->add_option("--depfile", given->depfile, "Write what the files depend on, for make or ninja")
        ->type_name("FILE");
    rc->add_option("--depfile-target", given->depfileTarget,
                   "What depends on them for make or ninja, in place of the files")
        ->type_name("NAME");
    rc->add_option("--names", given->names, "Write the names of the files to this one, too")
        ->type_name("FILE");
    rc->add_flag("--quiet", given->quiet, "Print only what is approximated or left out");
    rc->add_flag("--list", given->list, "Print the names of the files and write nothing");
    rc->callback([given] {
        try {
            Compile(*given);
        } catch (const std::bad_alloc&) {
            throw Exit{kNo, given->file + " takes more memory than there is"};
        }
    });
}

} // namespace vm::tool
