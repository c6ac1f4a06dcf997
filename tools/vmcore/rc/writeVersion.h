// VERSIONINFO and the program's icon: Version.plist, entries for the bundle's Info.plist (INFO of
// vmcore_add_application).
#pragma once

#include <vector>

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// The icon that Windows shows for a program: that with the lowest number, as far as its file is there.
/// Null without one.
const Picture* ProgramIcon(const std::vector<const Picture*>& pictures);

/// Of several versions the first counts; `icon` may be null. Call it after the pictures' files are there.
void WriteInfo(const std::vector<const VersionInfo*>& versions, const Picture* icon,
               Output& output);

} // namespace vm::rc
