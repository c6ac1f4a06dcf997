// The record behind WM_DROPFILES: paths as the file system's bytes, in the order of the drop.
#pragma once

#include <string>
#include <vector>

namespace vm {

class PathList {
public:
    std::vector<std::string> paths;
};

} // namespace vm
