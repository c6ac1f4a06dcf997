#include "child.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

// Libraries may print lines of their own.
constexpr char kFigure[] = "figure";
constexpr char kReason[] = "reason";

[[noreturn]] void Become(std::vector<std::string>& command, int output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(output, STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO); // logs
    std::vector<char*> arguments;
    for (std::string& word : command) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

std::string Joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

} // namespace

Child::Child(std::vector<std::string> command) {
    int ends[2];
    if (pipe(ends) != 0) throw NotMeasured("there are no pipes");
    m_process = fork();
    if (m_process == 0) {
        close(ends[0]);
        Become(command, ends[1]);
    }
    close(ends[1]);
    m_output = ends[0];
}

Child::~Child() {
    close(m_output);
    if (m_process <= 0) return;
    kill(m_process, SIGTERM);
    for (int i = 0; i < 200; ++i) {
        if (waitpid(m_process, nullptr, WNOHANG) == m_process) return;
        usleep(10'000);
    }
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

std::optional<std::string> Child::ReadLine() {
    std::string line;
    char character = 0;
    while (read(m_output, &character, 1) == 1) {
        if (character == '\n') return line;
        line += character;
    }
    return std::nullopt;
}

bool Child::Succeeded() {
    int status = 0;
    const bool ended = waitpid(m_process, &status, 0) == m_process;
    m_process = -1;
    return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::vector<std::string> OwnProgram(const std::vector<std::string>& arguments) {
    std::vector<std::string> command = arguments;
    command.insert(command.begin(), std::filesystem::read_symlink("/proc/self/exe").string());
    return command;
}

Figures Measure(const std::vector<std::string>& arguments) {
    Child child(OwnProgram(arguments));
    Figures figures;
    std::string reason = "failed: " + Joined(arguments);
    while (const std::optional<std::string> line = child.ReadLine()) {
        std::istringstream words(*line);
        std::string mark, name;
        words >> mark;
        if (mark == kFigure && words >> name)
            words >> figures[name];
        else if (mark == kReason)
            std::getline(words >> std::ws, reason);
    }
    if (!child.Succeeded()) throw NotMeasured(reason);
    return figures;
}

void Tell(const Figures& figures) {
    for (const auto& [name, value] : figures)
        std::printf("%s %s %.17g\n", kFigure, name.c_str(), value);
    std::fflush(stdout);
}

void Tell(const NotMeasured& reason) {
    std::printf("%s %s\n", kReason, reason.what());
    std::fflush(stdout);
}

} // namespace bench
