// FTP servers of the benchmark's own, on loopback, and the folder that they serve.
#pragma once

#include <string>
#include <vector>

namespace bench {

/// Runs a program to its end, without output, and throws when it fails.
void Run(const std::vector<std::string>& words);

/// Both keep nothing behind.
class Folder {
public:
    Folder(); ///< in memory
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

enum class ServerKind { Vsftpd, Pyftpdlib };

class Server {
public:
    /// Returns when it answers. Anonymous users may write into every folder below `root`.
    Server(ServerKind kind, const std::string& root, const std::string& configuration);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    std::string Host() const { return "127.0.0.1:" + std::to_string(m_port); }

private:
    int m_port;
    int m_process;
};

} // namespace bench
