// Counts the allocations of the whole process, the toolkit's included.
#pragma once

#include <cstddef>
#include <functional>

namespace bench {

/// How often memory is asked for while `body` runs.
std::size_t AllocationsIn(const std::function<void()>& body);

} // namespace bench
