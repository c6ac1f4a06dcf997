// Which style bits of a control the library honours, by its window class.
#pragma once

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// What differs because of the control's style and extended style, each bit by its name. Bits that are
/// *missing* are for those who make the widget.
Notes StyleNotes(const Control& control);

} // namespace vm::rc
