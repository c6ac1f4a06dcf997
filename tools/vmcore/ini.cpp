// The commands below `vmcore ini`: their arguments, their help, and what each does.
#include "ini.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <vmcore/files/profile.h>

#include "command.h"
#include "iniCheck.h"
#include "iniEdit.h"
#include "iniFile.h"
#include "iniHelp.h"
#include "iniList.h"

namespace vm::tool {
namespace {

/// What the command line gave to whichever command it named.
struct Arguments {
    std::string file;
    std::vector<std::string> files;
    std::string section, key, value;
    bool force = false, json = false, notes = false, fix = false;
};

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void Get(const Arguments& given) {
    const std::string path = LibraryPath(given.file);
    const IniText text(ReadBytes(path));
    if (const auto value = Lookup(path, given.section, given.key)) return Print(*value + "\n");
    BlockOf(text, given.section, path);
    ThrowNoKey(path, given.section, given.key);
}

void RefuseLoss(const Arguments& given, const std::string& path) {
    const std::string loss = LossOnSave(ReadBytes(path)); // what cannot be read is not edited
    if (given.force || loss.empty()) return;
    throw Exit{kNo, "saving " + path + " would " + loss +
                        " (see 'vmcore ini check'; --force edits all the same)"};
}

void Set(const Arguments& given) {
    const std::string path = LibraryPath(given.file);
    const std::string reason = WhyNotHeld(given.section, given.key, given.value);
    if (!reason.empty()) throw Exit{kNo, "not set: " + reason};
    if (!IsMissing(path)) RefuseLoss(given, path);
    SetKey(path, given.section, given.key, given.value);
}

void Delete(const Arguments& given, bool wholeSection) {
    const std::string path = LibraryPath(given.file);
    RefuseLoss(given, path);
    if (wholeSection)
        DeleteSection(path, given.section);
    else
        DeleteKey(path, given.section, given.key);
}

void List(const Arguments& given, bool oneSection) {
    const std::string path = LibraryPath(given.file);
    const IniText text(ReadBytes(path));
    if (oneSection) BlockOf(text, given.section, path);
    std::optional<std::string_view> section;
    if (oneSection) section = given.section;
    if (given.json) return Print(ListAsJson(text, section));
    if (!oneSection) return Print(ListSections(text));
    Print(ListEntries(text, given.section));
    for (const std::size_t line : HiddenEntries(text, given.section))
        std::fprintf(stderr, "vmcore: %s:%zu: the library does not find this one\n",
                     given.file.c_str(), line);
}

// The file's bytes, repaired if that is asked for.
std::string BytesToCheck(const std::string& file, bool fix) {
    const std::string bytes = ReadBytes(file);
    if (!fix) return bytes;
    const IniRepair repair = RepairIni(bytes);
    if (repair.done.empty()) return bytes;
    ReplaceBytes(file, repair.bytes);
    for (const auto& [line, text] : repair.done) PrintLine(file, line, "fixed: " + text);
    return repair.bytes;
}

std::vector<Finding> FindingsOf(const std::string& file, bool fix) {
    if (IsTooLarge(file))
        return {{1, Severity::Error, "size", "2 GiB or more: the library does not read the file"}};
    return CheckIni(BytesToCheck(file, fix));
}

// The exit status for one file. The others are checked whatever it is.
int CheckFile(const std::string& file, const Arguments& given) {
    try {
        return PrintFindings(file, FindingsOf(file, given.fix), given.notes) ? 0 : kNo;
    } catch (const Exit& end) {
        std::fprintf(stderr, "vmcore: %s\n", end.message.c_str());
        return end.status;
    }
}

void Check(const Arguments& given) {
    int status = 0;
    for (const std::string& file : given.files) status = std::max(status, CheckFile(file, given));
    if (status != 0) throw Exit{status};
}

// -------------------------------------------------------------------------------------------------

using Shared = std::shared_ptr<Arguments>; // the callbacks keep it alive

CLI::Option* AddPositional(CLI::App* command, const char* name, std::string& target,
                           const char* text) {
    return command->add_option(name, target, text)->type_name("");
}

CLI::App* AddCommand(CLI::App& ini, const char* name, const char* text, const char* footer) {
    CLI::App* const command = ini.add_subcommand(name, text);
    command->footer(footer);
    return command;
}

void AddGet(CLI::App& ini, const Shared& given) {
    CLI::App* const command = AddCommand(ini, "get", "Print a value", kGetHelp);
    AddPositional(command, "FILE", given->file, kFileHelp)->required();
    AddPositional(command, "SECTION", given->section, kSectionHelp)->required();
    AddPositional(command, "KEY", given->key, kKeyHelp)->required();
    command->callback([given] { Get(*given); });
}

void AddSet(CLI::App& ini, const Shared& given) {
    CLI::App* const command = AddCommand(ini, "set", "Set a value", kSetHelp);
    AddPositional(command, "FILE", given->file, kNewFileHelp)->required();
    AddPositional(command, "SECTION", given->section, kSectionHelp)->required();
    AddPositional(command, "KEY", given->key, kKeyHelp)->required();
    AddPositional(command, "VALUE", given->value, "The new value; may be empty")->required();
    command->add_flag("--force", given->force, kForceHelp);
    command->callback([given] { Set(*given); });
}

void AddDelete(CLI::App& ini, const Shared& given) {
    CLI::App* const command = AddCommand(ini, "delete", "Delete a key or a section", kDeleteHelp);
    AddPositional(command, "FILE", given->file, kFileHelp)->required();
    AddPositional(command, "SECTION", given->section, kSectionHelp)->required();
    const CLI::Option* const key = AddPositional(command, "KEY", given->key, kKeyHelp);
    command->add_flag("--force", given->force, kForceHelp);
    command->callback([given, key] { Delete(*given, key->count() == 0); });
}

void AddList(CLI::App& ini, const Shared& given) {
    CLI::App* const command = AddCommand(ini, "list", "Print sections or entries", kListHelp);
    AddPositional(command, "FILE", given->file, kFileHelp)->required();
    const CLI::Option* const section =
        AddPositional(command, "SECTION", given->section, kSectionHelp);
    command->add_flag("--json", given->json, "Print everything as JSON");
    command->callback([given, section] { List(*given, section->count() != 0); });
}

void AddCheck(CLI::App& ini, const Shared& given) {
    CLI::App* const command = AddCommand(ini, "check", "Name what is wrong in files", kCheckHelp);
    command->add_option("FILE", given->files, "Files to check")->type_name("")->required();
    command->add_flag("--notes", given->notes, "Print notes too");
    command->add_flag("--fix", given->fix, "Repair what has one right answer, then check");
    command->callback([given] { Check(*given); });
}

} // namespace

void AddIniCommands(CLI::App& app) {
    CLI::App* const ini = app.add_subcommand("ini", "Read, edit and check ini files");
    ini->footer(kIniHelp);
    ini->require_subcommand(1);
    const auto given = std::make_shared<Arguments>();
    AddGet(*ini, given);
    AddSet(*ini, given);
    AddDelete(*ini, given);
    AddList(*ini, given);
    AddCheck(*ini, given);
    InitProfileManager();
}

} // namespace vm::tool
