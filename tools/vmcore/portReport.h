// What `vmcore port scan` prints.
#pragma once

#include <cstddef>

#include "portFiles.h"
#include "portUses.h"

namespace vm::tool {

struct PortTotals {
    std::size_t uses[4] = {}; ///< by PortState
    std::size_t names[4] = {};
    std::size_t AllUses() const { return uses[0] + uses[1] + uses[2] + uses[3]; }
    std::size_t AllNames() const { return names[0] + names[1] + names[2] + names[3]; }
    bool IsAnythingMissing() const { return names[2] + names[3] > 0; }
};
PortTotals TotalsOf(const PortScan& scan);

/// A table for each state, the most used names first, and the percentages.
void PrintPortTable(const PortScan& scan, const PortFiles& files);
/// 'FILE:LINE: SEVERITY: STATE: NAME: TEXT' for each use, in the order of the files; what is there only
/// `withNotes`.
void PrintPortLines(const PortScan& scan, const PortFiles& files, bool withNotes);
void PrintPortJson(const PortScan& scan, const PortFiles& files);

} // namespace vm::tool
