// BITMAP and ICON: Bitmap_<id>.png, from files of every kind that scripts name.
#pragma once

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

void WritePicture(const Picture& picture, Output& output);

} // namespace vm::rc
