// Downloads, uploads and deletions. Each builds an address, asks for it, and is done with the server.
#include <vmcore/net/CFtpConnection.h>

#include <cerrno>
#include <cstring>
#include <optional>
#include <string>

#include <sys/stat.h>

#include "core/log.h"
#include "files/posixPath.h"
#include "net/FtpAccess.h"
#include "net/FtpTransfer.h"
#include "net/ftpAddress.h"
#include "net/localFiles.h"

using vm::FtpAccess;
using vm::FtpTransfer;

namespace {

void LogFailure(CFtpConnection& connection, const std::string& line) {
    FtpAccess::SetError(connection, line);
    vm::LogText(vm::LogModule::Net, line);
}

// The path from the folder of the login; nothing, and why is logged, for one that is refused.
std::optional<std::string> RemoteFile(CFtpConnection& connection, LPCSTR name) {
    const vm::FtpTexts texts = FtpAccess::Texts(connection);
    const std::string why = vm::WhyFileRefused(texts, name);
    if (why.empty()) return vm::RemotePath(texts.directory, name);
    FtpAccess::Refuse(connection, why);
    return std::nullopt;
}

std::optional<std::string> LocalFile(CFtpConnection& connection, LPCSTR name) {
    std::optional<std::string> path = vm::PosixPath(name, false);
    if (!path) FtpAccess::Refuse(connection, "the local file's name is empty or longer than 255");
    return path;
}

std::string WireUrl(const CFtpConnection& connection, const std::string& remotePath) {
    return vm::FtpUrl(FtpAccess::Texts(connection).server, vm::EscapedPath(remotePath));
}

BOOL Receive(CFtpConnection& connection, FtpTransfer& transfer, const std::string& path) {
    vm::DownloadFile file(path);
    transfer.Set(CURLOPT_WRITEFUNCTION, &vm::DownloadFile::Write);
    transfer.Set(CURLOPT_WRITEDATA, &file);
    transfer.UseLogin();
    const CURLcode code = transfer.Perform();
    if (code != CURLE_OK) vm::Log(vm::LogModule::Net, "curl error #: %d", code);
    const bool isKept = file.Close();
    if (!file.Problem().empty()) LogFailure(connection, file.Problem());
    return code == CURLE_OK && isKept;
}

BOOL Send(FtpTransfer& transfer, std::FILE* file, off_t size) {
    transfer.Set(CURLOPT_READFUNCTION, &vm::ReadForUpload);
    transfer.Set(CURLOPT_UPLOAD, 1L);
    transfer.UseLogin();
    transfer.Set(CURLOPT_READDATA, file);
    transfer.Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(size));
    transfer.Set(CURLOPT_FTP_CREATE_MISSING_DIRS, 1L);
    const CURLcode code = transfer.Perform();
    if (code != CURLE_OK)
        vm::Log(vm::LogModule::Net, "curl_easy_perform() failed: %s", transfer.Reason(code));
    return code == CURLE_OK;
}

} // namespace

CFtpConnection::CFtpConnection(CInternetSession* session, LPCSTR server, LPCSTR user,
                               LPCSTR password, DWORD_PTR context, int port, bool passive)
    : m_server(server), m_user(user), m_password(password), m_session(session), m_context(context),
      m_port(port), m_passive(passive) {}

BOOL CFtpConnection::SetCurrentDirectory(LPCSTR directory) {
    if (!directory) {
        m_directory = "";
    } else if (std::strcmp(directory, ".") != 0) {
        if (!m_directory.IsEmpty()) m_directory += "/";
        m_directory += directory;
    }
    return TRUE;
}

BOOL CFtpConnection::GetFile(LPCSTR remote, LPCSTR local, BOOL) {
    const std::optional<std::string> remotePath = RemoteFile(*this, remote);
    const std::optional<std::string> path = remotePath ? LocalFile(*this, local) : std::nullopt;
    if (!path) return FALSE;
    FtpTransfer transfer(*this, WireUrl(*this, *remotePath));
    if (transfer.IsReady()) return Receive(*this, transfer, *path);
    LogFailure(*this, "Internal Error! Failed to create curl");
    return FALSE;
}

BOOL CFtpConnection::PutFile(LPCSTR local, LPCSTR remote, DWORD, DWORD_PTR) {
    const std::optional<std::string> remotePath = RemoteFile(*this, remote);
    const std::optional<std::string> path = remotePath ? LocalFile(*this, local) : std::nullopt;
    if (!path) return FALSE;
    struct stat status = {};
    if (stat(path->c_str(), &status) != 0) {
        LogFailure(*this, vm::Format("Couldnt open '%s': %s", path->c_str(), std::strerror(errno)));
        return FALSE;
    }
    const vm::OpenFile file = vm::OpenForUpload(*path);
    if (!file) {
        LogFailure(*this, vm::Format("Internal Error: Failed to open file %s for upload!", local));
        return FALSE;
    }
    FtpTransfer transfer(*this, WireUrl(*this, *remotePath));
    if (transfer.IsReady()) return Send(transfer, file.get(), status.st_size);
    LogFailure(*this, "Internal error! Failed to create curl");
    return FALSE;
}

// Not at the file's own address: after the deletion libcurl would look for the file there.
BOOL CFtpConnection::Remove(LPCSTR name) {
    const std::optional<std::string> remotePath = RemoteFile(*this, name);
    if (!remotePath) return FALSE;
    FtpTransfer transfer(*this, WireUrl(*this, ""));
    return transfer.IsReady() && transfer.Delete(*remotePath);
}

BOOL CFtpConnection::CreateDirectory(LPCSTR) {
    return TRUE;
}

void CFtpConnection::Close() {}

void CFtpConnection::SetProgressProc(FTPPROGRESSPROC proc, void* context) {
    m_progress = proc;
    m_progressContext = context;
}

LPCSTR CFtpConnection::GetLastErrorText() const {
    return m_lastError;
}
