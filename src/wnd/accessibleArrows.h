// What a screen reader is told about arrows that count: a number in a range.
#pragma once

class QAccessibleInterface;

namespace vm {

class SpinArrows;

QAccessibleInterface* MakeAccessible(SpinArrows& arrows); ///< the caller's
void TellPosition(SpinArrows& arrows);

} // namespace vm
