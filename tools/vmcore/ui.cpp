// The arguments of `vmcore ui` and what it prints. The checks are in uiCheck.h.
#include "ui.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "command.h"
#include "iniFile.h"
#include "uiCheck.h"
#include "uiHelp.h"

namespace vm::tool {
namespace {

struct Arguments {
    std::vector<std::string> files;
    bool notes = false;
};

int Check(const std::string& file, bool withNotes) {
    const UiReport report = CheckUi(ReadBytes(file));
    if (PrintFindings(file, report.findings, withNotes)) return 0;
    return report.isInterfaceFile ? kNo : kTrouble;
}

// The exit status for one file. The others are checked whatever it is.
int CheckFile(const std::string& file, bool withNotes) {
    try {
        return Check(file, withNotes);
    } catch (const Exit& end) {
        std::fprintf(stderr, "vmcore: %s\n", end.message.c_str());
        return end.status;
    }
}

void CheckAll(const Arguments& given) {
    int status = 0;
    for (const std::string& file : given.files)
        status = std::max(status, CheckFile(file, given.notes));
    if (status != 0) throw Exit{status};
}

} // namespace

void AddUiCommands(CLI::App& app) {
    CLI::App* const ui = app.add_subcommand("ui", "Check interface files");
    ui->footer(kUiHelp);
    ui->require_subcommand(1);
    CLI::App* const check = ui->add_subcommand("check", "Name what is wrong in files");
    check->footer(kUiCheckHelp);
    const auto given = std::make_shared<Arguments>(); // the callback keeps it alive
    check->add_option("FILE", given->files, "Files to check")->type_name("")->required();
    check->add_flag("--notes", given->notes, "Print notes too");
    check->callback([given] { CheckAll(*given); });
}

} // namespace vm::tool
