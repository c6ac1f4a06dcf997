// Files of a script on disks that tell cases of letters apart.
#pragma once

#include <vector>

#include "rc/SourceFiles.h"

namespace vm::rc {

class DiskFiles : public SourceFiles {
public:
    /// `scriptFolder`: of the main script, where names in other files are looked for, too.
    explicit DiskFiles(std::vector<std::string> folders,
                       std::optional<std::string> scriptFolder = std::nullopt)
        : m_folders(std::move(folders)), m_scriptFolder(std::move(scriptFolder)) {}
    std::optional<std::string> Find(const std::string& name,
                                    const std::string* folder) const override;
    std::optional<std::string> Read(const std::string& path) const override;

private:
    std::vector<std::string> m_folders;
    std::optional<std::string> m_scriptFolder;
};

} // namespace vm::rc
