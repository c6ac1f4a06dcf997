// The files that a script becomes, as bytes: nothing here touches the disk, except that pictures are
// read from the paths in the script. Each writer says in the report what became of its resource and
// of each statement in it.
#pragma once

#include <string>
#include <vector>

#include "rc/report.h"
#include "rc/script.h"

namespace vm::rc {

struct OutputFile {
    std::string name; ///< "DLG_101.ui", without a folder
    std::string bytes;
};

struct WriteOptions {
    /// The menu that is the application's: its file is written a second time as MainMenu.ui, with the
    /// script's accelerators as shortcuts of its items. -1: none.
    int mainMenu = -1;
};

/// All files of the resources, each at most once: of resources with the same number and language the
/// first counts, and the report says so of the others. The name of the script, without its extension,
/// names the accelerators' source ("<name>Accelerators.h", ".cpp").
std::vector<OutputFile> WriteFiles(const std::vector<Resource>& resources,
                                   const std::string& scriptName, const WriteOptions& options,
                                   Report& report);

} // namespace vm::rc
