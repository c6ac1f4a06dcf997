// The files that the commands are given: their names and their bytes.
#pragma once

#include <string>
#include <string_view>

namespace vm::tool {

/// The absolute path under which the library opens exactly this file. Throws Exit when it would
/// take the name for another file's or refuse it.
std::string LibraryPath(const std::string& file);

bool IsMissing(const std::string& file);
/// 2 GiB or more: the library reads nothing of such a file.
bool IsTooLarge(const std::string& file);

/// Throws Exit (kTrouble) for a file that cannot be read or is too large.
std::string ReadBytes(const std::string& file);

/// Replaces the file as a whole; mode and owner stay. Throws Exit (kTrouble) when that fails.
void ReplaceBytes(const std::string& file, std::string_view bytes);

/// Why a file has not been written, as well as that can be said afterwards.
std::string WhyNotWritten(const std::string& file);

} // namespace vm::tool
