// From doubles to the 32-bit numbers of the interfaces.
#pragma once

#include <algorithm>
#include <limits>

namespace vm {

/// Cut to a whole number; what an int cannot hold becomes the nearest that it can.
inline int Truncated(double value) {
    using Int = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<double>(value, Int::min(), Int::max()));
}

} // namespace vm
