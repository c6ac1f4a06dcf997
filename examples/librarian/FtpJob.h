// One operation on an FTP server, on a thread of its own. Banks arrive, and are sent, as files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <afxwin.h>

enum class FtpTask { List, Fetch, Upload, Delete };

struct FtpRequest {
    FtpTask task = FtpTask::List;
    std::string host;   ///< with the login: see WithLogin
    std::string folder; ///< "" for that of the login
    std::string name;   ///< on the server
    /// Of this computer. A fetched bank is there as a whole or not at all. Of an upload a copy, which is
    /// deleted at the end.
    std::string path;
    bool mayReplace = false; ///< what is at `path`, or on the server
};

/// Exists and Unknown: an upload that may not replace was not begun, because the file is there, or because
/// the server does not say whether it is.
enum class FtpEnding { Done, Failed, Cancelled, Exists, Unknown };

/// A list box with more names keeps the user waiting.
constexpr std::size_t kMostListed = 100'000;

struct FtpResult {
    FtpEnding ending = FtpEnding::Failed;
    std::string error; ///< of a failure, in words
    /// What is in the folder: from List, and from an Upload that may not replace.
    std::vector<std::string> listed;
    bool isCut = false; ///< the folder has more than kMostListed
};

struct FtpProgress {
    long long done = 0;   ///< bytes
    long long total = -1; ///< -1 while it is not known
};

/// Main thread only.
class FtpJob {
public:
    FtpJob() = default;
    ~FtpJob();
    FtpJob(const FtpJob&) = delete;
    FtpJob& operator=(const FtpJob&) = delete;

    /// Begins. `message` is posted to `target` when something has changed: ask TakeResult, then
    /// Progress. FALSE while another operation runs, and when no thread can be made; an upload's copy is
    /// deleted then.
    BOOL Start(CWnd* target, UINT message, const FtpRequest& request);
    BOOL IsRunning() const { return m_state != nullptr; }
    FtpProgress Progress() const;
    /// FALSE until the operation is over. The next may begin then.
    BOOL TakeResult(FtpResult& result);

    /// Makes the operation end soon; its result comes as usual.
    void Cancel();
    /// Cancels, and waits three seconds at most: a thread that takes longer, because the server keeps it
    /// waiting, ends on its own; its unfinished file is removed at once. Nothing is posted any more.
    void Stop();

private:
    struct State;
    using SharedState = std::shared_ptr<State>;
    static UINT Run(LPVOID state);

    SharedState m_state; // the thread has one, too
};
