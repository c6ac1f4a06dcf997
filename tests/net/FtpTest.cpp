#include "FtpTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

FtpTest::FtpTest(std::chrono::seconds limit) : m_watchdog(limit) {
    for (const char* name : {"ftp_proxy", "all_proxy"}) // which is never to be asked
        setenv(name, "http://127.0.0.1:1", 1);
    vm::CurrentFtpLimits() = {1'000, 4, 1, 2, 8 << 20};
}

FtpTest::~FtpTest() {
    vm::CurrentFtpLimits() = m_limits;
}

RealFtpServer::RealFtpServer(const std::string& program) {
    const std::string folder = m_home.Path() / "files";
    fs::create_directory(folder);
    m_process.Start({"/usr/bin/python3", "-W", "ignore", FTP_SERVER, program, folder});
    const std::string port = m_process.ReadLine();
    if (std::atoi(port.c_str()) <= 0)
        throw std::runtime_error("the FTP server " + program + " does not start: " + LastLine());
    m_address = "127.0.0.1:" + port;
}

std::string RealFtpServer::LastLine() {
    std::string last;
    for (std::string line; !(line = m_process.ReadLine()).empty();) last = line;
    return last;
}

bool RealFtpServer::Has(const std::string& name) const {
    return fs::exists(m_home.Path() / "files" / name);
}

CFtpConnection ConnectionTo(const std::string& server, LPCSTR user, LPCSTR password) {
    return {nullptr, server.c_str(), user, password};
}

Lines NamesIn(CFtpFileFind& find) {
    Lines names;
    std::string before;
    for (BOOL more = TRUE; more; before = find.GetFileName()) {
        more = find.FindNextFile();
        if (find.GetFileName() != before) names.push_back(find.GetFileName());
    }
    return names;
}

std::string BytesIn(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
