// Scripts with an administrator's rights, through polkit's pkexec, which asks the user.
#include <vmcore/files/library.h>

#include <cerrno>
#include <string>
#include <system_error>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "core/ascii.h"
#include "core/log.h"

namespace vm {
namespace {

// What a program expects at its start: no signal blocked, none ignored, whatever the host did.
class CleanSignals {
public:
    CleanSignals() {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~CleanSignals() { posix_spawnattr_destroy(&m_attributes); }
    CleanSignals(const CleanSignals&) = delete;
    CleanSignals& operator=(const CleanSignals&) = delete;

    const posix_spawnattr_t* Get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

// Nothing to read: the script must not wait for input that nobody knows of.
class NoInput {
public:
    NoInput() {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    ~NoInput() { posix_spawn_file_actions_destroy(&m_actions); }
    NoInput(const NoInput&) = delete;
    NoInput& operator=(const NoInput&) = delete;

    const posix_spawn_file_actions_t* Get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

// Runs `command` in a shell of the administrator's until it has ended; 0, or why pkexec could not be
// started.
int RunAsAdministrator(std::string command) {
    std::string arguments[] = {"pkexec", "/bin/sh", "-c"};
    char* const argv[] = {arguments[0].data(), arguments[1].data(), arguments[2].data(),
                          command.data(), nullptr};
    const CleanSignals signals;
    const NoInput input;
    pid_t child;
    const int error = posix_spawnp(&child, argv[0], input.Get(), signals.Get(), argv, environ);
    if (error != 0) return error;
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return 0;
}

} // namespace
} // namespace vm

int ExecuteScriptFile(const char* path) {
    if (!path || !vm::IsAscii(path)) return 1;
    const int error = vm::RunAsAdministrator(std::string("/bin/bash ") + path);
    if (error != 0)
        vm::Log(vm::LogModule::Files, "ExecuteScriptFile: cannot start pkexec: %s",
                std::generic_category().message(error).c_str());
    return 0;
}
