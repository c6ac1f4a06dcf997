// POSIX, because neither the library nor the language starts a program and says how it ended.
#include "PluginTrial.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <windows.h>

#include "LibrarianPlugin.h"

namespace {

constexpr const char* kOption = "--try-plug-in"; // seconds, path
constexpr int kTimeLimit = 5;
constexpr DWORD kLook = 5; // milliseconds

// Exit codes that a plug-in which ends the process itself will hardly use.
enum Ending : int { kReturned = 101, kNoEntry, kThrew };

// However the process was started, each of these ends it, and leaves nothing behind.
void DieOfSignals() {
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM, SIGTERM}) {
        std::signal(number, SIG_DFL);
        sigset_t one;
        sigemptyset(&one);
        sigaddset(&one, number);
        sigprocmask(SIG_UNBLOCK, &one, nullptr);
    }
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
}

// The link itself may lead elsewhere when something else runs the program, such as a debugging tool.
std::string ThisProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

Ending Try(const char* path) {
    const HMODULE library = LoadLibrary(path);
    if (!library) return kReturned; // the program will find out the same, unharmed
    const auto entry =
        reinterpret_cast<LibrarianPluginEntry>(GetProcAddress(library, LIBRARIAN_PLUGIN_ENTRY));
    if (!entry) return kNoEntry;
    try {
        entry();
    } catch (...) {
        return kThrew;
    }
    return kReturned;
}

std::string TextOfEnding(int status, int seconds) {
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM)
        return "it does not return within " + std::to_string(seconds) + " seconds";
    if (WIFSIGNALED(status)) {
        const char* name = sigabbrev_np(WTERMSIG(status));
        return "it crashes (SIG" + std::string(name ? name : "?") + ")";
    }
    switch (WEXITSTATUS(status)) {
    case kReturned:
        return "";
    case kNoEntry:
        return "it has no entry " LIBRARIAN_PLUGIN_ENTRY;
    case kThrew:
        return "its entry throws";
    default:
        return "it ends the program (exit code " + std::to_string(WEXITSTATUS(status)) + ")";
    }
}

// False when somebody else has waited for it.
bool WaitFor(pid_t child, int& status, const std::atomic<bool>& isStopped) {
    while (true) {
        const pid_t ended = waitpid(child, &status, WNOHANG);
        if (ended == child) return true;
        if (ended < 0 && errno != EINTR) return false;
        if (isStopped) kill(child, SIGKILL);
        Sleep(kLook);
    }
}

} // namespace

std::optional<int> TrialAskedFor(int argc, char** argv) {
    if (argc != 4 || std::strcmp(argv[1], kOption) != 0) return std::nullopt;
    DieOfSignals();
    alarm(static_cast<unsigned>(std::atoi(argv[2])));
    return Try(argv[3]);
}

TrialResult TryPlugin(const std::string& path, const std::string& program, int seconds,
                      const std::atomic<bool>& isStopped) {
    std::string arguments[] = {program, kOption, std::to_string(seconds), path};
    char* const argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                          arguments[3].data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), nullptr, nullptr, argv, environ);
    if (error != 0) return {"it cannot be tried: " + std::generic_category().message(error), false};
    int status = 0;
    if (!WaitFor(child, status, isStopped)) return {"it cannot be tried: no process", false};
    return {TextOfEnding(status, seconds), !isStopped};
}

TrialResult TryPlugin(const std::string& path, const std::atomic<bool>& isStopped) {
    return TryPlugin(path, ThisProgram(), kTimeLimit, isStopped);
}
