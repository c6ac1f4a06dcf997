// Files of System Exclusive messages: one after the other, nothing between.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vm::tool {

struct SyxMessages {
    std::vector<std::string_view> messages; ///< from F0 to F7; parts of the file's bytes
    std::string problem;                    ///< why the bytes are no such file, and where
};

/// Either messages, or a problem.
SyxMessages SplitSyx(std::string_view bytes);

class SyxFile {
public:
    /// Throws Exit (kTrouble) when the file cannot be read or holds anything else.
    explicit SyxFile(const std::string& file);
    SyxFile(const SyxFile&) = delete;
    SyxFile& operator=(const SyxFile&) = delete;

    const std::vector<std::string_view>& Messages() const { return m_messages; }
    std::size_t Size() const { return m_bytes.size(); }

private:
    std::string m_bytes;
    std::vector<std::string_view> m_messages;
};

} // namespace vm::tool
