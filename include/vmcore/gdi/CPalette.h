// Palettes are not supported: a class to construct, so that ported declarations compile.
#pragma once

#include <vmcore/core/export.h>

class VM_API CPalette {
public:
    CPalette();
    ~CPalette();
};
