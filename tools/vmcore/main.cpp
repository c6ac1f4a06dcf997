// The program `vmcore`: puts the subcommands together and turns their ends into an exit status. Each
// subsystem adds its own, see ini.h, midi.h, rc/rc.h and ui.h.
#include <cstdio>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "command.h"
#include "core/log.h"
#include "ini.h"
#include "midi.h"
#include "rc/rc.h"
#include "ui.h"

namespace {

constexpr const char* kFooter =
    R"('vmcore COMMAND --help' and 'vmcore COMMAND SUBCOMMAND --help' say more.

Exit status: 0 well; 1 the answer is no, or an edit was refused or failed; 2 a
file cannot be read, or wrong usage. Messages go to standard error.)";

// The commands look at the outcome and say it in their own words. What the library warns of, such as
// a mistake in a set-up file, is the user's to know.
void ShowWarning(vm::Outlet, const std::string& line) {
    constexpr std::string_view kBeginning = "Warning! ";
    if (line.starts_with(kBeginning))
        std::fprintf(stderr, "vmcore: %s\n", line.c_str() + kBeginning.size());
}

int Run(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : vm::tool::kTrouble;
    } catch (const vm::tool::Exit& end) {
        if (!end.message.empty()) std::fprintf(stderr, "vmcore: %s\n", end.message.c_str());
        return end.status;
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Looks at and edits what VMCore programs work with.", "vmcore");
    app.set_version_flag("--version", VMCORE_VERSION, "Print the version and exit");
    app.footer(kFooter);
    app.require_subcommand(1);
    vm::tool::AddIniCommands(app);
    vm::tool::AddMidiCommands(app);
    vm::tool::AddRcCommand(app);
    vm::tool::AddUiCommands(app);
    vm::SetLineSink(ShowWarning);
    const int status = Run(app, argc, argv);
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
    std::perror("vmcore: standard output");
    return vm::tool::kTrouble;
}
