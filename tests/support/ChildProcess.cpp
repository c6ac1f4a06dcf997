#include "support/ChildProcess.h"

#include <array>
#include <csignal>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds kReadLimit{10};
constexpr std::chrono::seconds kEndLimit{5};

[[noreturn]] void Become(std::vector<char*>& arguments, int input, int output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

void ChildProcess::Start(const std::vector<std::string>& command) {
    Kill();
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::array<int, 2> toChild = {}, fromChild = {};
    if (pipe2(toChild.data(), O_CLOEXEC) != 0 || pipe2(fromChild.data(), O_CLOEXEC) != 0) return;
    m_process = fork();
    if (m_process == 0) Become(arguments, toChild[0], fromChild[1]);
    close(toChild[0]);
    close(fromChild[1]);
    m_input = toChild[1];
    m_output = fromChild[0];
    m_unread.clear();
}

void ChildProcess::Write(const std::string& line) const {
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = write(m_input, text.data(), text.size());
}

std::string ChildProcess::ReadLine() {
    const auto until = std::chrono::steady_clock::now() + kReadLimit;
    std::size_t end = 0;
    while ((end = m_unread.find('\n')) == std::string::npos) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            until - std::chrono::steady_clock::now());
        pollfd wanted = {m_output, POLLIN, 0};
        if (left.count() <= 0 || poll(&wanted, 1, static_cast<int>(left.count())) <= 0) return {};
        std::array<char, 4096> buffer;
        const ssize_t count = read(m_output, buffer.data(), buffer.size());
        if (count <= 0) return {};
        m_unread.append(buffer.data(), static_cast<std::size_t>(count));
    }
    std::string line = m_unread.substr(0, end);
    m_unread.erase(0, end + 1);
    return line;
}

bool ChildProcess::IsRunning() {
    if (m_process > 0 && waitpid(m_process, nullptr, WNOHANG) == m_process) m_process = 0;
    return m_process > 0;
}

void ChildProcess::Signal(int number) const {
    if (m_process > 0) kill(m_process, number);
}

void ChildProcess::Stop() {
    Signal(SIGSTOP);
    int status = 0;
    if (m_process > 0 && waitpid(m_process, &status, WUNTRACED) == m_process && !WIFSTOPPED(status))
        m_process = 0; // it had ended
}

void ChildProcess::EndInput() {
    if (m_input >= 0) close(std::exchange(m_input, -1));
    Reap(kEndLimit);
    Kill();
}

void ChildProcess::Terminate() {
    Signal(SIGTERM);
    Signal(SIGCONT); // for one that was stopped
    Reap(kEndLimit);
    Kill();
}

void ChildProcess::Kill() {
    Signal(SIGKILL);
    Reap(kEndLimit);
    for (int* handle : {&m_input, &m_output}) {
        if (*handle >= 0) close(*handle);
        *handle = -1;
    }
}

void ChildProcess::Reap(std::chrono::milliseconds limit) {
    const auto until = std::chrono::steady_clock::now() + limit;
    while (IsRunning() && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}
