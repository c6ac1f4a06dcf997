// Where a transfer begins in MFC programs. It holds a name and makes connections; see CFtpConnection.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CFtpConnection;

/// The order of the fields is part of the binary interface.
class VM_API CInternetSession {
public:
    /// Keeps at most 255 characters of the name; null keeps none. Nothing is sent to a server.
    explicit CInternetSession(LPCSTR agent = nullptr);
    CInternetSession(const CInternetSession&) = delete;
    CInternetSession& operator=(const CInternetSession&) = delete;

    /// A new connection object, which the caller deletes; never null. Nothing is contacted: wrong
    /// names show with the first transfer. A null text is an empty one. `port` and `passive` are
    /// stored and not used: write the port behind the host's name.
    CFtpConnection* GetFtpConnection(LPCSTR server, LPCSTR user = nullptr,
                                     LPCSTR password = nullptr, int port = 0, bool passive = false);

private:
    char m_agent[256] = {};
    CString m_unused[2]; // part of the object's size
};
