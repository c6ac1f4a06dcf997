#include "child.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

constexpr char kMark[] = "figure"; // libraries may print lines of their own

[[noreturn]] void Become(std::vector<std::string>& command, int output) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(output, STDOUT_FILENO);
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

std::string Child::ReadLine() {
    std::string line;
    char character = 0;
    while (read(m_output, &character, 1) == 1 && character != '\n') line += character;
    return line;
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
    for (std::string line = child.ReadLine(); !line.empty(); line = child.ReadLine()) {
        std::istringstream words(line);
        std::string mark, name;
        double value = 0;
        if (words >> mark >> name >> value && mark == kMark) figures[name] = value;
    }
    if (!child.Succeeded()) throw NotMeasured("failed: " + Joined(arguments));
    return figures;
}

void Tell(const Figures& figures) {
    for (const auto& [name, value] : figures)
        std::printf("%s %s %.17g\n", kMark, name.c_str(), value);
    std::fflush(stdout);
}

} // namespace bench
