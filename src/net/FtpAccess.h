// What this module reads and writes of a connection that its hosts do not.
#pragma once

#include <string>

#include <vmcore/net/CFtpConnection.h>

#include "core/log.h"
#include "net/ftpRequest.h"

namespace vm {

struct FtpAccess {
    static FtpTexts Texts(const CFtpConnection& connection) {
        return {static_cast<const char*>(connection.m_server),
                static_cast<const char*>(connection.m_directory),
                static_cast<const char*>(connection.m_user),
                static_cast<const char*>(connection.m_password)};
    }
    static void SetError(CFtpConnection& connection, const std::string& why) {
        connection.m_lastError = why.c_str();
    }
    static void Refuse(CFtpConnection& connection, const std::string& why) {
        SetError(connection, why);
        Log(LogModule::Net, "FTP: %s", why.c_str());
    }
    static bool HasProgress(const CFtpConnection& connection) {
        return connection.m_progress != nullptr;
    }
    static bool Progress(const CFtpConnection& connection, long long done, long long total) {
        return connection.m_progress(connection.m_progressContext, done, total);
    }
};

} // namespace vm
