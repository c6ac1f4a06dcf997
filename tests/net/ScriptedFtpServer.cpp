#include "ScriptedFtpServer.h"

#include <array>
#include <stdexcept>
#include <utility>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "ftpScripts.h"

namespace {

struct SessionEnd {};

sockaddr_in Loopback(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

int PortOf(int socket) {
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

int NewSocket() {
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

int NewListener(int backlog) {
    const int listener = NewSocket();
    const sockaddr_in address = Loopback(0);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, backlog) != 0)
        throw std::runtime_error("no loopback port for the FTP server");
    return listener;
}

void CloseSocket(int& socket) {
    if (socket >= 0) close(std::exchange(socket, -1));
}

} // namespace

// The system leaves connections to a full backlog unanswered: it is full when one is not made at once.
SilentPort::SilentPort() : m_listener(NewListener(0)) {
    const sockaddr_in address = Loopback(PortOf(m_listener));
    pollfd connected = {-1, POLLOUT, 0};
    do {
        connected.fd = m_fillers.emplace_back(NewSocket());
        connect(connected.fd, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    } while (poll(&connected, 1, 50) > 0);
}

SilentPort::~SilentPort() {
    for (int& filler : m_fillers) CloseSocket(filler);
    close(m_listener);
}

int SilentPort::Number() const {
    return PortOf(m_listener);
}

ScriptedFtpServer::ScriptedFtpServer(FtpScript script, std::string file, std::string listing)
    : m_script(std::move(script)), m_file(std::move(file)), m_listing(std::move(listing)),
      m_listener(NewListener(16)), m_stop(eventfd(0, EFD_CLOEXEC)), m_thread([this] { Serve(); }) {}

ScriptedFtpServer::~ScriptedFtpServer() {
    Stop();
    m_thread.join();
    close(m_listener);
    close(m_stop);
}

std::string ScriptedFtpServer::Address() const {
    return "127.0.0.1:" + std::to_string(PortOf(m_listener));
}

void ScriptedFtpServer::Stop() {
    eventfd_write(m_stop, 1);
}

std::vector<std::string> ScriptedFtpServer::Commands() {
    std::lock_guard guard(m_lock);
    return m_commands;
}

std::size_t ScriptedFtpServer::Received() {
    std::lock_guard guard(m_lock);
    return m_received;
}

void ScriptedFtpServer::Note(const std::string& command) {
    std::lock_guard guard(m_lock);
    m_commands.push_back(command);
}

void ScriptedFtpServer::Serve() {
    for (;;) {
        std::array<pollfd, 2> wanted = {{{m_listener, POLLIN, 0}, {m_stop, POLLIN, 0}}};
        poll(wanted.data(), wanted.size(), -1);
        if (wanted[1].revents) return;
        FtpSession session(*this, accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC));
        Note("connect");
        try {
            session.Run();
        } catch (const SessionEnd&) {
        }
    }
}

FtpSession::FtpSession(ScriptedFtpServer& server, int control)
    : m_server(server), m_control(control) {
    const int isOn = 1; // else a reply waits for the client to confirm the one before
    setsockopt(m_control, IPPROTO_TCP, TCP_NODELAY, &isOn, sizeof isOn);
}

FtpSession::~FtpSession() {
    for (int* socket : {&m_control, &m_listener, &m_data}) CloseSocket(*socket);
}

void FtpSession::Run() {
    Answer("");
    for (;;) {
        const std::string line = ReadLine();
        m_server.Note(line);
        const std::size_t blank = std::min(line.find(' '), line.size());
        m_argument = line.substr(std::min(blank + 1, line.size()));
        Answer(line.substr(0, blank));
    }
}

void FtpSession::Answer(const std::string& command) {
    for (const FtpScript* script : {&m_server.m_script, &GoodServer()})
        if (const auto found = script->find(command); found != script->end())
            return found->second(*this);
    Write("500 Unknown.\r\n");
}

// Throws when the test ends the server.
void FtpSession::Poll(int socket, short events, int milliseconds) {
    std::array<pollfd, 2> wanted = {{{m_server.m_stop, POLLIN, 0}, {socket, events, 0}}};
    poll(wanted.data(), wanted.size(), milliseconds);
    if (wanted[0].revents) throw SessionEnd();
}

void FtpSession::WriteTo(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        Poll(socket, POLLOUT);
        const ssize_t count = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count < 0) throw SessionEnd();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::size_t FtpSession::ReadFrom(int socket, char* buffer, std::size_t size) {
    Poll(socket, POLLIN);
    const ssize_t count = recv(socket, buffer, size, 0);
    if (count < 0) throw SessionEnd();
    return static_cast<std::size_t>(count);
}

std::string FtpSession::ReadLine() {
    std::size_t end = 0;
    while ((end = m_unread.find("\r\n")) == std::string::npos) {
        std::array<char, 1024> buffer;
        const std::size_t count = ReadFrom(m_control, buffer.data(), buffer.size());
        if (count == 0) throw SessionEnd();
        m_unread.append(buffer.data(), count);
    }
    const std::string line = m_unread.substr(0, end);
    m_unread.erase(0, end + 2);
    return line;
}

void FtpSession::Write(std::string_view bytes) {
    WriteTo(m_control, bytes);
}

int FtpSession::Listen() {
    CloseSocket(m_listener);
    m_listener = NewListener(4);
    return PortOf(m_listener);
}

void FtpSession::OpenData() {
    Poll(m_listener, POLLIN);
    CloseSocket(m_data);
    m_data = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
}

void FtpSession::WriteData(std::string_view bytes) {
    WriteTo(m_data, bytes);
}

void FtpSession::ReadData(std::size_t bytes) {
    std::vector<char> buffer(64 * 1024);
    while (bytes > 0) {
        const std::size_t count = ReadFrom(m_data, buffer.data(), std::min(bytes, buffer.size()));
        if (count == 0) return;
        bytes -= count;
        std::lock_guard guard(m_server.m_lock);
        m_server.m_received += count;
    }
}

void FtpSession::CloseData() {
    CloseSocket(m_data);
}

void FtpSession::Wait(std::chrono::milliseconds time) {
    Poll(-1, 0, static_cast<int>(time.count()));
}

void FtpSession::Hang() {
    std::array<char, 1024> ignored;
    while (ReadFrom(m_control, ignored.data(), ignored.size()) > 0) {
    }
    throw SessionEnd();
}

void FtpSession::Drop() {
    throw SessionEnd();
}
