// What trials of plug-ins have shown, in the settings, so that an unchanged file is tried once only.
#pragma once

#include <optional>
#include <string>

/// The problem ("" for none) that was found with the file; nothing when it was not tried, or has
/// another size or time by now.
std::optional<std::string> RecallVerdict(const std::string& path);
/// A path that is too long for the settings is not remembered.
void RememberVerdict(const std::string& path, const std::string& problem);
void ForgetVerdict(const std::string& path);
