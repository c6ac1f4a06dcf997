// The Win32 names for filling and copying memory. Sizes are in bytes; blocks are written as they are,
// whatever object is there.
#pragma once

#include <cstddef>
#include <cstring>

#include <vmcore/core/types.h>

inline void ZeroMemory(void* dst, std::size_t size) { ///< all bytes 0
    std::memset(dst, 0, size);
}
inline void FillMemory(void* dst, std::size_t size, BYTE value) { ///< all bytes `value`
    std::memset(dst, value, size);
}
inline void CopyMemory(void* dst, const void* src, std::size_t size) { ///< the two do not overlap
    std::memcpy(dst, src, size);
}
inline void MoveMemory(void* dst, const void* src, std::size_t size) { ///< the two may overlap
    std::memmove(dst, src, size);
}
