// Where an iteration of a collection is.
#pragma once

#include <cstdint>

/// A place in an iteration; 0 is the end.
using POSITION = std::uintptr_t;
