// BITMAP and ICON: Bitmap_<id>.png, from files of every kind that scripts name.
#pragma once

#include "rc/script.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// Whether the picture's file can be opened for reading, as far as its path tells.
bool IsThere(const Picture& picture);

/// `isProgramIcon` is for the report: what becomes of it there is WriteInfo's.
void WritePicture(const Picture& picture, bool isProgramIcon, Output& output);

} // namespace vm::rc
