// A script's resources as text, a line each, for comparison with what is expected.
#pragma once

#include <string>
#include <vector>

#include "rc/script.h"

namespace vm::rc {

std::string ModelText(const std::vector<Resource>& resources);

} // namespace vm::rc
