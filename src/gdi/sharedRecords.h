// Which handles are records that the library shares with everybody.
#pragma once

#include <vmcore/gdi/syscolors.h>

namespace vm {

bool IsStockRecord(const void* handle);

} // namespace vm
