#pragma once

#include <cstdio>

/// Kilobytes of this process that are in memory.
inline long ResidentKilobytes() {
    long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
        std::fclose(file);
    }
    return pages * 4;
}
