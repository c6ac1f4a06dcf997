// An FTP server, a folder on it and who asks: what the transfers of MFC programs go through.
//
//     CInternetSession session("Librarian");
//     std::unique_ptr<CFtpConnection> ftp(session.GetFtpConnection("ftp.example.org", "anna", "pw"));
//     ftp->SetCurrentDirectory("Banks");
//     if (!ftp->GetFile("Strings.syx", "/tmp/Strings.syx")) Complain(ftp->GetLastErrorText());
//
// What hosts should know (docs/ftp.md has the faults of servers, one by one):
//  - There is no lasting connection. Each call connects, logs in, does its work and leaves; nothing
//    is contacted before.
//  - The host may be written "server:2121" and "user:password@server", percent-escaped where RFC 3986
//    wants it. It is handed on as it is, everything else is escaped.
//  - User and password are sent only when both are non-empty; without, the login is anonymous.
//    Remove sends none but those written into the host.
//  - Paths are relative to the folder that the login leads to. Names are the server's bytes; a '/' in
//    one leads into a folder.
//  - A control character (below 32, and 127) in any text, a name that is null, empty or ends with '/',
//    and texts that make an address of more than 255 characters, counted in plain text, are refused: 0
//    and a log line that begins with "FTP: ". Nothing is sent then.
//  - No server can hold a call for ever: it has 20 seconds for the connection and login, 60 for each
//    answer, and a transfer ends when less than a byte a second arrives for 60 seconds.
//  - Passwords are never logged. The conversation with the server, without them, is logged under
//    "vmcore.net.ftp" when that category is on.
//
// Every call blocks its thread until the end. An object belongs to one thread at a time; different
// objects may work at once. Do not end an object while it works, nor from its own progress procedure.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class CInternetSession;

/// Answers whether to go on. `done` and `total` are bytes; `total` is -1 when the server does not say,
/// and for listings. `context` is the one given with the procedure.
using FTPPROGRESSPROC = BOOL(CALLBACK*)(void* context, long long done, long long total);

namespace vm {
struct FtpAccess;
}

/// The order of the fields is part of the binary interface.
class VM_API CFtpConnection {
public:
    /// Made by CInternetSession::GetFtpConnection.
    CFtpConnection(CInternetSession* session, LPCSTR server, LPCSTR user, LPCSTR password,
                   DWORD_PTR context = 0, int port = 0, bool passive = false);
    CFtpConnection(const CFtpConnection&) = delete;
    CFtpConnection& operator=(const CFtpConnection&) = delete;

    /// Appends '/' and `directory` to the current one, or takes it when that is empty. "." changes
    /// nothing, null leads back to the folder of the login; ".." and a leading '/' mean here what the
    /// server takes them for. 1 always: the server is not asked.
    BOOL SetCurrentDirectory(LPCSTR directory);

    /// Downloads a file: 1, or 0 and "curl error #: <code>" in the log. `local` is translated by
    /// Win2PosixPath. The local file is opened, and an old one lost, with the first bytes that arrive:
    /// an empty remote file makes none, and a transfer that breaks off leaves what came until
    /// then. Where that matters, download to another name and rename. The last parameter is not used:
    /// a file that is there is replaced. A server that announces no size can end early unnoticed.
    BOOL GetFile(LPCSTR remote, LPCSTR local, BOOL failIfExists = TRUE);

    /// Uploads a file, making folders that are missing: 1, or 0 and one of the lines
    /// "Couldnt open '<path>': <why>", "Internal Error: Failed to open file <local> for upload!" (also
    /// for what is no ordinary file) and "curl_easy_perform() failed: <why>". What a failed upload
    /// leaves on the server is the server's choice. `flags` and `context` are not used: transfers are
    /// binary.
    BOOL PutFile(LPCSTR local, LPCSTR remote, DWORD flags = 2, DWORD_PTR context = 1);

    /// Deletes a file with DELE, under the login that the host's name holds, or anonymously: 1 or 0.
    BOOL Remove(LPCSTR name);

    /// 1, and nothing is done: PutFile makes the folders it needs.
    BOOL CreateDirectory(LPCSTR name);
    void Close(); ///< nothing to do

    // Additions to MFC's interface.

    /// From now on `proc` is called during transfers and listings, on their thread and at most 50 times
    /// a second, once a second while nothing moves; FALSE ends the transfer, which then fails (a
    /// listing keeps what has arrived). An exception ends it too and leaves the call that transfers.
    /// Null for none.
    void SetProgressProc(FTPPROGRESSPROC proc, void* context);

    /// Why the last operation failed, in English, with the server's own words; "" after a success.
    /// Listings set it too, but succeed with whatever arrived. Valid until the next operation.
    LPCSTR GetLastErrorText() const;

private:
    friend struct vm::FtpAccess;

    CString m_server;
    CString m_directory; // without '/' around it as long as the host gives none
    CString m_user;
    CString m_password;
    [[maybe_unused]] CInternetSession* m_session;
    [[maybe_unused]] DWORD_PTR m_context;
    [[maybe_unused]] int m_port;
    [[maybe_unused]] bool m_passive;

    FTPPROGRESSPROC m_progress = nullptr;
    void* m_progressContext = nullptr;
    CString m_lastError;
};
