// Changes through the library's own profile functions, whose outcome is looked at afterwards: they
// report nothing themselves.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "iniText.h"

namespace vm::tool {

/// What the library reads; nothing for a missing key or section. `path` as LibraryPath gives it, like
/// everywhere here.
std::optional<std::string> Lookup(const std::string& path, const std::string& section,
                                  const std::string& key);

/// Throws Exit (kNo) when the file, whose text is given, has no such section.
const IniBlock& BlockOf(const IniText& text, const std::string& section, const std::string& path);
[[noreturn]] void ThrowNoKey(const std::string& path, const std::string& section,
                             const std::string& key);

/// Why the library would not read this value back as it is; empty when it would.
std::string WhyNotHeld(std::string_view section, std::string_view key, std::string_view value);

/// What saving would do to the text of a file, as in "would ..."; empty when it loses nothing.
std::string LossOnSave(std::string_view bytes);

// Each throws Exit (kNo) when it has not come to what it is named after.
void SetKey(const std::string& path, const std::string& section, const std::string& key,
            const std::string& value);
void DeleteKey(const std::string& path, const std::string& section, const std::string& key);
void DeleteSection(const std::string& path, const std::string& section);

} // namespace vm::tool
