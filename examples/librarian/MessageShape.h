// What the detail pane draws of a message: its data as columns. Pure.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "SysexInfo.h"

/// The bytes behind F0 and the maker's number, without F7: at most `columns` values, each the largest
/// of those that share its column.
SysexBytes ShapeOf(const SysexBytes& message, std::size_t columns);

/// "1 byte", "18 bytes".
std::string CountOfBytes(std::size_t count);
