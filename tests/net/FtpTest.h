// What tests of FTP share: a dead proxy, short limits, a temporary folder, captured lines.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vmcore/net/CFtpConnection.h>
#include <vmcore/net/CFtpFileFind.h>

#include "net/ftpLimits.h"
#include "support/ChildProcess.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "support/Watchdog.h"

using Lines = std::vector<std::string>;

class FtpTest : public ::testing::Test {
protected:
    explicit FtpTest(std::chrono::seconds limit = std::chrono::seconds(60));
    ~FtpTest() override;

    /// A local path; there is no file of that name.
    std::string NewPath() { return m_home.Path() / ("local" + std::to_string(m_paths++)); }
    /// The path of a new local file.
    std::string NewFile(const std::string& bytes) {
        return m_home.Write("local" + std::to_string(m_paths++), bytes);
    }
    Lines TakeLog() { return m_log.TakeLog(); }

    Watchdog m_watchdog;
    TemporaryHome m_home;

private:
    const vm::FtpLimits m_limits = vm::CurrentFtpLimits();
    int m_paths = 0;
    LogCapture m_log;
};

/// Of another process on the loopback device, as other people write servers. It ends with the test.
class RealFtpServer {
public:
    /// "pyftpdlib", which knows "anna" with the password "s3 cret:x", and "vsftpd", which knows
    /// nobody. Throws when it does not start.
    explicit RealFtpServer(const std::string& program);

    const std::string& Address() const { return m_address; }
    /// Files on the server, as those who log in anonymously name them.
    bool Has(const std::string& name) const;
    std::string Read(const std::string& name) const { return m_home.Read("files/" + name); }
    void Write(const std::string& name, const std::string& bytes) const {
        m_home.Write("files/" + name, bytes);
    }

private:
    std::string LastLine(); ///< of what a server says that does not start

    TemporaryHome m_home;
    ChildProcess m_process;
    std::string m_address;
};

CFtpConnection ConnectionTo(const std::string& server, LPCSTR user = nullptr,
                            LPCSTR password = nullptr);
/// All names that the walk finds.
Lines NamesIn(CFtpFileFind& find);
std::string BytesIn(const std::string& path);
