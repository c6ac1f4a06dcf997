// The arguments of `vmcore port`, and the two passes over the files.
#include "port.h"

#include <cstdio>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "command.h"
#include "iniFile.h"
#include "portFiles.h"
#include "portHelp.h"
#include "portReport.h"
#include "portUses.h"

namespace vm::tool {
namespace {

struct Arguments {
    std::string folder;
    bool lines = false;
    bool notes = false;
    bool json = false;
    bool strict = false;
};

// The whole file, or nothing, which is then in the list of trouble.
std::string ReadSource(const std::string& path, PortFiles& files) {
    try {
        return ReadBytes(path);
    } catch (const Exit& end) {
        files.trouble.push_back(end.message);
        return {};
    }
}

void ScanAll(PortScan& scan, PortFiles& files) {
    for (const std::string& path : files.sources) scan.Learn(ReadSource(path, files));
    PortFiles ignored; // what cannot be read was named by the first pass
    for (const std::string& path : files.sources) scan.Count(path, ReadSource(path, ignored));
}

void Report(const Arguments& given, const PortScan& scan, const PortFiles& files) {
    if (given.json)
        PrintPortJson(scan, files);
    else if (given.lines)
        PrintPortLines(scan, files, given.notes);
    else
        PrintPortTable(scan, files);
    std::fflush(stdout);
    for (const std::string& path : files.tooLarge)
        std::fprintf(stderr, "vmcore: %s: more than 16 MB, left out\n", path.c_str());
    for (const std::string& what : files.trouble)
        std::fprintf(stderr, "vmcore: %s\n", what.c_str());
}

void Scan(const Arguments& given) {
    PortFiles files = FindPortFiles(given.folder);
    if (files.sources.empty() && files.trouble.empty())
        throw Exit{kTrouble, "no C++ file in " + given.folder};
    PortScan scan(given.lines);
    ScanAll(scan, files);
    Report(given, scan, files);
    if (!files.trouble.empty()) throw Exit{kTrouble};
    if (given.strict && TotalsOf(scan).IsAnythingMissing()) throw Exit{kNo};
}

} // namespace

void AddPortCommands(CLI::App& app) {
    CLI::App* const port = app.add_subcommand("port", "Look at sources that are to be ported");
    port->footer(kPortHelp);
    port->require_subcommand(1);
    CLI::App* const scan =
        port->add_subcommand("scan", "Name what a tree of sources uses, and what is missing");
    scan->footer(kPortScanHelp);
    const auto given = std::make_shared<Arguments>(); // the callback keeps it alive
    scan->add_option("DIR", given->folder, "The tree, or one file")->type_name("")->required();
    scan->add_flag("--lines", given->lines, "Print every use, as compilers do");
    scan->add_flag("--notes", given->notes, "With --lines: also what is there");
    scan->add_flag("--json", given->json, "Print JSON; with --lines with all places");
    scan->add_flag("--strict", given->strict, "Exit with 1 when something is missing");
    scan->callback([given] { Scan(*given); });
}

} // namespace vm::tool
