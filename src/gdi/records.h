// Allocation of the records behind the GDI handles, and the one record that hosts do not see.
#pragma once

#include <cstddef>
#include <cstdlib>

#include <vmcore/core/types.h>

namespace vm {

/// A zeroed record, `extra` bytes longer than its type; null without memory. Freed with free().
template <class T>
T* NewRecord(std::size_t extra = 0) {
    return static_cast<T*>(std::calloc(1, sizeof(T) + extra));
}

/// The record of a region: its shapes in the order of their creation, each a block of 32-bit words.
struct RegionRecord {
    int count;
    int capacity;
    LONG** shapes;
};

} // namespace vm
