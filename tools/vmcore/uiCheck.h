// What is wrong with an interface file. Pure functions on the bytes of the file: neither widgets nor
// a display.
#pragma once

#include <string_view>
#include <vector>

#include "finding.h"

namespace vm::tool {

struct UiReport {
    bool isInterfaceFile;          ///< else there is one finding, which says why
    std::vector<Finding> findings; ///< in the order of the lines
};

UiReport CheckUi(std::string_view bytes);

} // namespace vm::tool
