// The control whose number a pair of arrows counts, as an interface file names it.
#pragma once

class QWidget;

namespace vm {

class SpinArrows;

/// The property with the object name of the buddy. `buddyNumber` and `buddyKeys`, true unless the file
/// says otherwise: the buddy shows the number, and its arrow keys step. `buddyAlign`, "left" or "right":
/// the arrows take that end of the buddy.
inline constexpr char kBuddyProperty[] = "buddy";

void SetBuddyOf(SpinArrows& arrows, QWidget& buddy);

} // namespace vm
