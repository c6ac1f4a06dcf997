// VERSIONINFO: Version.plist, entries for the bundle's Info.plist (INFO of vmcore_add_application).
#pragma once

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

void WriteVersion(const VersionInfo& version, Output& output);

} // namespace vm::rc
