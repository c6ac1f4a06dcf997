// An FTP server in the test's process that does what a script says, faults above all. It serves one
// connection at a time, on a thread of its own.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

class FtpSession;

/// What the server does for a command. The session ends when it throws, as Hang and Drop do.
using FtpAnswer = std::function<void(FtpSession&)>;
/// By command; "" is for the greeting. Commands without an entry are served as they should be.
using FtpScript = std::map<std::string, FtpAnswer>;

/// A port that leaves every attempt to connect unanswered, as behind a firewall.
class SilentPort {
public:
    SilentPort();
    ~SilentPort();
    SilentPort(const SilentPort&) = delete;
    SilentPort& operator=(const SilentPort&) = delete;

    int Number() const;

private:
    int m_listener;
    std::vector<int> m_fillers;
};

class ScriptedFtpServer {
public:
    explicit ScriptedFtpServer(FtpScript script = {}, std::string file = {},
                               std::string listing = {});
    ~ScriptedFtpServer();
    ScriptedFtpServer(const ScriptedFtpServer&) = delete;
    ScriptedFtpServer& operator=(const ScriptedFtpServer&) = delete;

    std::string Address() const; ///< "127.0.0.1:<port>"
    void Stop();                 ///< drops the connection and answers no more

    std::vector<std::string> Commands(); ///< so far, of all connections, which begin with "connect"
    std::size_t Received();              ///< bytes uploaded

private:
    friend class FtpSession;

    void Serve();
    void Note(const std::string& command);

    const FtpScript m_script;
    const std::string m_file;
    const std::string m_listing;
    int m_listener;
    int m_stop; // readable from Stop on
    std::mutex m_lock;
    std::vector<std::string> m_commands; // guarded by m_lock
    std::size_t m_received = 0;          // guarded by m_lock
    std::thread m_thread;
};

/// One connection, as the answers see it. Everything throws when the client has left.
class FtpSession {
public:
    FtpSession(ScriptedFtpServer& server, int control);
    ~FtpSession();
    FtpSession(const FtpSession&) = delete;
    FtpSession& operator=(const FtpSession&) = delete;

    void Run();

    const std::string& File() const { return m_server.m_file; }
    const std::string& Listing() const { return m_server.m_listing; }
    const std::string& Argument() const { return m_argument; }

    void Write(std::string_view bytes); ///< on the control connection
    int Listen();                       ///< for data, on the port that is returned
    void OpenData();                    ///< waits for the client's data connection
    void WriteData(std::string_view bytes);
    void ReadData(std::size_t bytes = ~std::size_t{}); ///< or until the end
    void CloseData();

    void Wait(std::chrono::milliseconds time);
    [[noreturn]] void Hang(); ///< until the client leaves
    [[noreturn]] void Drop(); ///< closes all connections

private:
    void Answer(const std::string& command);
    std::string ReadLine();
    void Poll(int socket, short events, int milliseconds = -1);
    void WriteTo(int socket, std::string_view bytes);
    std::size_t ReadFrom(int socket, char* buffer, std::size_t size);

    ScriptedFtpServer& m_server;
    int m_control;
    int m_listener = -1;
    int m_data = -1;
    std::string m_unread;
    std::string m_argument;
};
