// STRINGTABLE: Strings.ini, which AfxLoadString reads.
#pragma once

#include <vector>

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

void WriteStrings(const std::vector<const StringTable*>& tables, Output& output);

} // namespace vm::rc
