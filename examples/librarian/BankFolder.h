// The banks in one folder.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// The names of the files in `folder` with this extension (in lower case), sorted; empty for a folder
/// that cannot be read.
std::vector<std::string> FilesIn(const std::string& folder, const std::string& extension);

/// The names of at most `limit` .syx files in `folder`, sorted; empty for a folder that cannot be
/// read.
std::vector<std::string> BanksIn(const std::string& folder, std::size_t limit);

/// "/banks" for "/banks/voices.syx", and the name alone.
std::string FolderOf(const std::string& path);
std::string NameOf(const std::string& path);
