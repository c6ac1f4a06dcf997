// Files of this computer that banks are written to. What is there already is not lost when that fails,
// and two jobs, of one program or of several, never write the same file.
#pragma once

#include <string>

bool IsThere(const std::string& path);
bool IsFolder(const std::string& path);

/// Where the file functions put a file of this path: a bitmap becomes ".png".
std::string StoredPath(const std::string& path);

/// A path for one job alone: `path`, something that no other call returns, `extension`.
std::string PathForJob(const std::string& path, const std::string& extension);

/// Where the links lead that `path` goes through, also when no file is there yet.
std::string BehindLinks(const std::string& path);

/// Gives `fresh` the permissions, the group and, as far as that is allowed, the owner of `path`. Nothing
/// happens when that is not there.
void KeepAccess(const std::string& path, const std::string& fresh);

/// Nothing happens when it is not there.
void RemoveFile(const std::string& path);

/// Moves the file `fresh` to `path`. What is there is replaced when it may be, unless it is a folder or
/// read-only, and leaves its permissions; it is still there after a failure. Says why it failed; "" when
/// it has not.
std::string PutInPlace(const std::string& fresh, const std::string& path, bool mayReplace);
