// A program started by a test, spoken to in lines. It ends with the test, whatever happens to that.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <sys/types.h>

class ChildProcess {
public:
    ChildProcess() = default;
    ~ChildProcess() { Kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Finds the program as a shell does. A program that cannot be run ends at once.
    void Start(const std::vector<std::string>& command);
    void Write(const std::string& line) const;
    /// The next line of its output; empty after ten seconds, or when it has ended.
    std::string ReadLine();

    bool IsRunning();
    void Signal(int number) const;
    void Stop(); ///< returns when it stands still; SIGCONT lets it go on
    /// For one that ends then.
    void EndInput();
    /// Asks it to end (SIGTERM), and makes it end after some seconds.
    void Terminate();
    void Kill();

private:
    void Reap(std::chrono::milliseconds limit);

    pid_t m_process = 0;
    int m_input = -1;
    int m_output = -1;
    std::string m_unread;
};
