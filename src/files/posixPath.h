// Names as the file functions use them.
#pragma once

#include <optional>
#include <string>

namespace vm {

/// The folder whose sub-folders are the volumes of colon-separated names; without a final slash.
std::string VolumesRoot();

/// The translated name; nothing for a null or empty name and one of more than 255 bytes.
std::optional<std::string> PosixPath(const char* name, bool isDirectory);

/// The path that CreateFile opens for this name, bare ones in CurrentDirectory; nothing when it is
/// too long.
std::optional<std::string> PathForCreateFile(const char* name);

/// The line that CreateFile logs when a file cannot be created.
void LogCreateFailure(const char* name);

} // namespace vm
