// ftp_ours get|put HOST FOLDER REMOTE LOCAL [COUNT]
// What a program written with the library does: one transfer, or COUNT of them, with the numbers from
// 0 on behind both names.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include <afxinet.h>

namespace {

bool Transfer(CFtpConnection& ftp, bool isGet, const std::string& remote,
              const std::string& local) {
    return isGet ? ftp.GetFile(remote.c_str(), local.c_str())
                 : ftp.PutFile(local.c_str(), remote.c_str());
}

} // namespace

int main(int count, char** words) {
    if (count < 6) return 2;
    CInternetSession session("ftp_ours");
    const std::unique_ptr<CFtpConnection> ftp(session.GetFtpConnection(words[2]));
    ftp->SetCurrentDirectory(words[3]);
    const bool isGet = std::strcmp(words[1], "get") == 0;
    const std::string remote = words[4];
    const std::string local = words[5];
    if (count == 6) return Transfer(*ftp, isGet, remote, local) ? 0 : 1;
    for (int i = 0; i < std::atoi(words[6]); ++i)
        if (!Transfer(*ftp, isGet, remote + std::to_string(i), local + std::to_string(i))) return 1;
    return 0;
}
