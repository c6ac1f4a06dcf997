// Sessions, which only make connections.
#include <vmcore/net/CInternetSession.h>

#include <cstdio>

#include <vmcore/net/CFtpConnection.h>

CInternetSession::CInternetSession(LPCSTR agent) {
    if (agent) std::snprintf(m_agent, sizeof m_agent, "%s", agent);
}

CFtpConnection* CInternetSession::GetFtpConnection(LPCSTR server, LPCSTR user, LPCSTR password,
                                                   int port, bool passive) {
    return new CFtpConnection(this, server, user, password, 0, port, passive);
}
