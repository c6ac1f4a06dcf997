// What a program gets of the files that its user chose. Pure, but for questions to the file system.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vm {

std::string_view FolderOf(std::string_view path); ///< "/" for what lies in the root
std::string_view NameOf(std::string_view path);

/// `path` with ".extension", unless its name has an extension.
std::string WithExtension(std::string path, std::string_view extension);

/// Whether the file functions open just this file when they are given this path: see Win2PosixPath.
bool IsUsablePath(const std::string& path);
/// A path for saving that ends in ".bmp" is the one that the file functions write to.
std::string SavedAs(const std::string& path);

/// One path as it is; several as the folder that they have in common and their names below it. Each
/// is ended by a zero, all by one more.
std::string SelectionList(const std::vector<std::string>& paths);

} // namespace vm
