// Where the files of a script come from: see DiskFiles.h, or nothing at all.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vm::rc {

class SourceFiles {
public:
    virtual ~SourceFiles() = default;
    /// The path of the file that a script names, whatever the case of its letters and with '\' for
    /// '/': looked for in `folder` (of the file that names it) and in that of the main script, both
    /// not at all when null, then in the folders of includes.
    virtual std::optional<std::string> Find(const std::string& name,
                                            const std::string* folder) const = 0;
    /// Nothing when it cannot be read.
    virtual std::optional<std::string> Read(const std::string& path) const = 0;
};

/// "res\\app.ico" and "res\app.ico" are res/app.ico.
std::string PortablePath(std::string_view name);
/// "" of a file in the working folder.
std::string FolderOf(const std::string& path);

} // namespace vm::rc
