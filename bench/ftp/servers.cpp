#include "servers.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

sockaddr_in Loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int FreePort() {
    const int probe = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof address;
    if (bind(probe, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        getsockname(probe, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw std::runtime_error("no free port");
    close(probe);
    return ntohs(address.sin_port);
}

int Start(const std::vector<std::string>& words) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const int process = fork();
    if (process < 0) throw std::runtime_error("cannot fork");
    if (process > 0) return process;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    for (int i = 0; i < 3; ++i) dup2(nothing, i);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

std::string PythonServer(const std::string& root, int port) {
    return "import logging; logging.basicConfig(level=logging.ERROR)\n"
           "from pyftpdlib.authorizers import DummyAuthorizer\n"
           "from pyftpdlib.handlers import FTPHandler\n"
           "from pyftpdlib.servers import FTPServer\n"
           "users = DummyAuthorizer()\n"
           "users.add_anonymous('" +
           root +
           "', perm='elradfmwMT')\n"
           "FTPHandler.authorizer = users\n"
           "FTPServer(('127.0.0.1', " +
           std::to_string(port) + "), FTPHandler).serve_forever()\n";
}

std::string VsftpdSettings(const std::string& root, int port) {
    return "listen=YES\nlisten_address=127.0.0.1\nlisten_port=" + std::to_string(port) +
           "\nbackground=NO\nrun_as_launching_user=YES\nanonymous_enable=YES\nno_anon_password="
           "YES\n"
           "write_enable=YES\nanon_upload_enable=YES\nanon_mkdir_write_enable=YES\n"
           "anon_other_write_enable=YES\nanon_world_readable_only=NO\nanon_umask=022\n"
           "allow_writeable_chroot=YES\nseccomp_sandbox=NO\nanon_root=" +
           root + "\nsecure_chroot_dir=" + root + "\n";
}

void WaitForAnswer(int port) {
    const sockaddr_in address = Loopback(port);
    for (int i = 0; i < 500; ++i) {
        const int probe = socket(AF_INET, SOCK_STREAM, 0);
        char greeting = 0;
        const bool answers =
            connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
            recv(probe, &greeting, 1, 0) == 1;
        close(probe);
        if (answers) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    throw std::runtime_error("a server does not answer");
}

} // namespace

void Run(const std::vector<std::string>& words) {
    int status = 0;
    if (waitpid(Start(words), &status, 0) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(words.front() + " failed");
}

Folder::Folder() : m_path("/dev/shm/vmcore-ftp-XXXXXX") {
    if (!mkdtemp(m_path.data())) throw std::runtime_error("no folder in memory");
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

Server::Server(ServerKind kind, const std::string& root, const std::string& configuration)
    : m_port(FreePort()) {
    const bool isPython = kind == ServerKind::Pyftpdlib;
    std::ofstream(configuration) << (isPython ? PythonServer(root, m_port)
                                              : VsftpdSettings(root, m_port));
    m_process = Start(isPython ? std::vector<std::string>{"/usr/bin/python3", configuration}
                               : std::vector<std::string>{"/usr/sbin/vsftpd", configuration});
    WaitForAnswer(m_port);
}

Server::~Server() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

} // namespace bench
