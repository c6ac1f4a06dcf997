// A file handle and its descriptor: one number in two types.
#pragma once

#include <climits>

#include <vmcore/core/types.h>

namespace vm {

/// -1 for what cannot be a file: null, and a pointer (an event's handle, for example).
inline int DescriptorOf(HANDLE file) {
    const auto value = reinterpret_cast<std::intptr_t>(file);
    return value > 0 && value <= INT_MAX ? static_cast<int>(value) : -1;
}

inline HANDLE HandleOf(int descriptor) {
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(descriptor));
}

} // namespace vm
