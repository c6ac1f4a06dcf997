// Files of a script on disks that tell cases of letters apart.
#pragma once

#include <vector>

#include "rc/SourceFiles.h"

namespace vm::rc {

class DiskFiles : public SourceFiles {
public:
    explicit DiskFiles(std::vector<std::string> folders) : m_folders(std::move(folders)) {}
    std::optional<std::string> Find(const std::string& name,
                                    const std::string* folder) const override;
    std::optional<std::string> Read(const std::string& path) const override;

private:
    std::vector<std::string> m_folders;
};

} // namespace vm::rc
