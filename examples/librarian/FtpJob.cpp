#include "FtpJob.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include <afxinet.h>

#include "RemoteBanks.h"

namespace {

constexpr auto kPatience = std::chrono::milliseconds(1500); // progress is asked once a second

bool IsThere(const std::string& path) {
    return OpenFile(path.c_str(), nullptr, OF_EXIST) != HFILE_ERROR;
}

// A name beside `path` that no file has.
std::string UnusedName(const std::string& path) {
    std::string name = path + ".new";
    for (int i = 2; IsThere(name); ++i) name = path + ".new" + std::to_string(i);
    return name;
}

FtpResult Failure(const std::string& error) {
    return {FtpEnding::Failed, error, {}};
}

FtpResult Ended(const CFtpConnection& ftp, BOOL worked) {
    if (worked) return {FtpEnding::Done, {}, {}};
    const std::string error = ftp.GetLastErrorText();
    return Failure(error.empty() ? "no reason is known" : error);
}

// What came of a listing that broke off is in it, too.
FtpResult List(CFtpConnection& ftp) {
    CFtpFileFind find(&ftp);
    BOOL more = find.FindFile();
    FtpResult result = Ended(ftp, !*ftp.GetLastErrorText());
    while (more) {
        more = find.FindNextFile();
        const std::string name = find.GetFileName();
        if (!name.empty() && (result.listed.empty() || result.listed.back() != name))
            result.listed.push_back(name);
    }
    return result;
}

FtpResult Fetch(CFtpConnection& ftp, const FtpRequest& request) {
    const std::string fresh = UnusedName(request.path);
    FtpResult result = Ended(ftp, ftp.GetFile(request.name.c_str(), fresh.c_str()));
    if (result.ending != FtpEnding::Done) {
        if (IsThere(fresh)) DeleteFile(fresh.c_str());
        return result;
    }
    if (!IsThere(fresh)) return Failure("the file is empty");
    if (request.mayReplace && IsThere(request.path)) DeleteFile(request.path.c_str());
    if (MoveFile(fresh.c_str(), request.path.c_str())) return result;
    DeleteFile(fresh.c_str());
    return Failure(request.path + " cannot be written");
}

FtpResult Upload(CFtpConnection& ftp, const FtpRequest& request) {
    FtpResult before;
    if (!request.mayReplace) {
        before = List(ftp);
        if (before.ending != FtpEnding::Done && !SaysNothingThere(before.error)) return before;
        const auto end = before.listed.end();
        before.ending = FtpEnding::Exists;
        if (std::find(before.listed.begin(), end, request.name) != end) return before;
    }
    FtpResult result = Ended(ftp, ftp.PutFile(request.path.c_str(), request.name.c_str()));
    result.listed = std::move(before.listed);
    return result;
}

FtpResult Perform(CFtpConnection& ftp, const FtpRequest& request) {
    switch (request.task) {
    case FtpTask::List:
        return List(ftp);
    case FtpTask::Fetch:
        return Fetch(ftp, request);
    case FtpTask::Upload:
        return Upload(ftp, request);
    case FtpTask::Delete:
        return Ended(ftp, ftp.Remove(request.name.c_str()));
    }
    return {};
}

} // namespace

// What both threads know.
struct FtpJob::State {
    const FtpRequest request;
    std::atomic<bool> isCancelled{false};

    mutable std::mutex lock; // of the rest
    std::condition_variable over;
    CWnd* target;
    const UINT message;
    FtpProgress progress;
    FtpResult result;
    bool isOver = false;

    State(CWnd* window, UINT number, const FtpRequest& wanted)
        : request(wanted), target(window), message(number) {}

    // With the lock held: a target that is going away takes the lock first.
    void Tell() const {
        if (target) target->PostMessage(message);
    }

    static BOOL CALLBACK OnProgress(void* context, long long done, long long total) {
        State& state = *static_cast<State*>(context);
        const std::lock_guard<std::mutex> guard(state.lock);
        state.progress = {done, total};
        state.Tell();
        return !state.isCancelled;
    }

    FtpResult Work() {
        CInternetSession session("Librarian");
        const std::unique_ptr<CFtpConnection> ftp(session.GetFtpConnection(request.host.c_str()));
        // Without a folder files would come from that of the login and listings from the root.
        ftp->SetCurrentDirectory(request.folder.empty() ? "./" : request.folder.c_str());
        ftp->SetProgressProc(OnProgress, this);
        FtpResult ended = Perform(*ftp, request);
        if (ended.ending == FtpEnding::Failed && isCancelled) ended.ending = FtpEnding::Cancelled;
        return ended;
    }

    void End(FtpResult ended) {
        if (request.task == FtpTask::Upload) DeleteFile(request.path.c_str());
        const std::lock_guard<std::mutex> guard(lock);
        result = std::move(ended);
        isOver = true;
        over.notify_all();
        Tell();
    }
};

FtpJob::~FtpJob() {
    Stop();
}

BOOL FtpJob::Start(CWnd* target, UINT message, const FtpRequest& request) {
    if (m_state) return FALSE;
    auto state = std::make_shared<State>(target, message, request);
    auto forThread = std::make_unique<SharedState>(state);
    if (!AfxBeginThread(Run, forThread.get())) return FALSE;
    forThread.release();
    m_state = std::move(state);
    return TRUE;
}

UINT FtpJob::Run(LPVOID shared) {
    const std::unique_ptr<SharedState> state(static_cast<SharedState*>(shared));
    (*state)->End((*state)->Work());
    return 0;
}

FtpProgress FtpJob::Progress() const {
    if (!m_state) return {};
    const std::lock_guard<std::mutex> guard(m_state->lock);
    return m_state->progress;
}

BOOL FtpJob::TakeResult(FtpResult& result) {
    if (!m_state) return FALSE;
    {
        const std::lock_guard<std::mutex> guard(m_state->lock);
        if (!m_state->isOver) return FALSE;
        result = std::move(m_state->result);
    }
    m_state.reset();
    return TRUE;
}

void FtpJob::Cancel() {
    if (m_state) m_state->isCancelled = true;
}

void FtpJob::Stop() {
    if (!m_state) return;
    Cancel();
    {
        std::unique_lock<std::mutex> guard(m_state->lock);
        m_state->target = nullptr;
        m_state->over.wait_for(guard, kPatience, [this] { return m_state->isOver; });
    }
    m_state.reset();
}
