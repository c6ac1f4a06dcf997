// What is wrong with or surprising about an ini file. Pure functions on the bytes of the file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "finding.h"

namespace vm::tool {

/// In the order of the lines. A file that the library has written has no more than notes.
std::vector<Finding> CheckIni(std::string_view bytes);

struct IniRepair {
    struct Step {
        std::size_t line;
        std::string text;
    };
    std::string bytes; ///< of the repaired file
    std::vector<Step> done;
};
/// Repairs what has one right answer: drops a byte-order mark, ends the last line. Leaves a mark
/// alone when the section that it hides stands in the file a second time.
IniRepair RepairIni(std::string_view bytes);

} // namespace vm::tool
