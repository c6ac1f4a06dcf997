// From the text that the toolkit shows for a path back to its bytes: those of names in no encoding
// are lost in the text, and are looked for in their folders.
#pragma once

#include <optional>
#include <string>

class QString;

namespace vm {

/// The path of the file or folder that an absolute path is shown for, or of one that could be made
/// there. Null when several are shown alike: which one was meant cannot be known.
std::optional<std::string> PathShownAs(const QString& shown);

} // namespace vm
