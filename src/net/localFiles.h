// The local ends of transfers.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace vm {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

/// The file that a download goes to. It is made with the first bytes.
class DownloadFile {
public:
    explicit DownloadFile(std::string path) : m_path(std::move(path)) {}

    /// What libcurl calls with each block, `self` being the object. Less than size * count is an
    /// error.
    static std::size_t Write(char* data, std::size_t size, std::size_t count, void* self);
    /// False when the bytes were not kept, which some file systems report only here.
    bool Close();
    /// What went wrong; empty when nothing did.
    const std::string& Problem() const { return m_problem; }

private:
    bool Open();
    void NoteProblem(const char* verb);

    std::string m_path;
    OpenFile m_file;
    std::string m_problem;
};

/// Null for what cannot be read and for what is no ordinary file; does not wait, as opening a pipe
/// would.
OpenFile OpenForUpload(const std::string& path);
/// What libcurl calls for the next block.
std::size_t ReadForUpload(char* buffer, std::size_t size, std::size_t count, void* file);

} // namespace vm
