// Whole files and folders: move, copy, remove. Paths are translated already.
#pragma once

#include <filesystem>

namespace vm {

/// Links are followed: false for a link to nothing.
bool ItemExists(const std::filesystem::path& path);

/// Moves a file or folder, to another volume too. False when the target exists.
bool MoveItem(const std::filesystem::path& from, const std::filesystem::path& to);

/// Copies a file, a link as a link, or a folder with its contents, with times and permissions.
/// False when the target exists or lies inside the source; after a failure nothing is left of the
/// copy.
bool CopyItem(const std::filesystem::path& from, const std::filesystem::path& to);

/// Removes a file, a link (never what it points to) or a folder with its contents. False when there
/// was none.
bool RemoveItem(const std::filesystem::path& path);

/// Creates the folder and those above it. True when it is there afterwards.
bool MakeFolder(const std::filesystem::path& path);

} // namespace vm
