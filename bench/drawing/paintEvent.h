// Contestants in a real paint event of a window of 1000 x 700.
#pragma once

#include <string>
#include <vector>

#include <harness.h>

#include "scenes.h"

namespace bench {

/// Microseconds that each contestant's paint handler takes, ours first.
std::vector<Figure> ComparePaintEvents(int rounds, const Scene& scene);

} // namespace bench
