#include "FtpJob.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "FtpTasks.h"
#include "LocalFiles.h"

namespace {

// Progress is asked once a second, and leave of the server is taken then.
constexpr auto kPatience = std::chrono::seconds(3);

// The file that is gone when the operation is over: one that arrives, or the copy that is sent.
std::string TemporaryFor(const FtpRequest& request) {
    if (request.task == FtpTask::Fetch) return PathForJob(request.path, ".new");
    return request.task == FtpTask::Upload ? request.path : "";
}

} // namespace

// What both threads know.
struct FtpJob::State {
    const FtpRequest request;
    const std::string temporary;
    std::atomic<bool> isCancelled{false};

    mutable std::mutex lock; // of the rest
    std::condition_variable over;
    CWnd* target;
    const UINT message;
    FtpProgress progress;
    FtpResult result;
    bool isOver = false;

    State(CWnd* window, UINT number, const FtpRequest& wanted)
        : request(wanted), temporary(TemporaryFor(wanted)), target(window), message(number) {}

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
        ftp->SetCurrentDirectory(FolderForAll(request.folder).c_str());
        ftp->SetProgressProc(OnProgress, this);
        FtpResult ended = Perform(*ftp, request, temporary);
        if (ended.ending != FtpEnding::Done && isCancelled) ended.ending = FtpEnding::Cancelled;
        return ended;
    }

    void End(FtpResult ended) {
        RemoveFile(temporary);
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
    auto state = std::make_shared<State>(target, message, request);
    auto forThread = std::make_unique<SharedState>(state);
    if (m_state || !AfxBeginThread(Run, forThread.get())) {
        RemoveFile(state->temporary);
        return FALSE;
    }
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
    RemoveFile(m_state->temporary);
    m_state.reset();
}
