// The manager thread: the only one that asks the server for something. In every round it brings
// about what is wanted: a server, the list of its ports, a port of ours for every endpoint in use.
#include <algorithm>
#include <csignal>
#include <thread>
#include <utility>

#include "core/log.h"
#include "platform/midi/jack/JackPlatform.h"

namespace vm {

namespace {
constexpr std::chrono::seconds kAttemptEvery{1};
constexpr std::chrono::seconds kKeepUnused{1};
constexpr std::chrono::milliseconds kTidySoon{20};
constexpr std::chrono::milliseconds kRetrySoon{20};
constexpr std::chrono::seconds kRetryLater{1};
constexpr std::chrono::hours kNothingToDo{1};
// Closing cancels the library's notification thread, which takes its locks with it when it is just
// told that another program goes: as all do when a server ends. Afterwards it has ended by itself.
constexpr std::chrono::milliseconds kLetServerGo{500};

// The library writes to sockets of servers that have gone. It blocks the signal by itself only on
// the thread that opens the first client of the process, which may be one of the program's. Threads
// that this one starts, the library's among them, do as this one.
void BlockPipeSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}
} // namespace

void JackPlatform::Manage() {
    BlockPipeSignals();
    Lock lock(m_lock);
    while (IsUp()) {
        const std::uint64_t asked = m_asked;
        m_isManagerWoken = false;
        lock.unlock();
        const Clock::duration pause = Round();
        lock.lock();
        m_served = asked;
        if (m_state == State::Starting) m_state = State::Running;
        m_changed.notify_all();
        m_managerWoken.wait_for(lock, pause, [this] { return m_isManagerWoken || !IsUp(); });
    }
    lock.unlock();
    CloseSession();
}

/// How long there is nothing to do unless somebody wakes the manager.
JackPlatform::Clock::duration JackPlatform::Round() {
    if (m_session && m_session->HasDied()) CloseSession();
    if (!m_session && Clock::now() >= m_nextAttempt) OpenSession();
    if (!m_session) return std::max(Clock::duration::zero(), m_nextAttempt - Clock::now());
    UpdateEndpoints();
    m_retryAt = Clock::now() + kNothingToDo;
    OpenMissingOutputs();
    OpenMissingInputs();
    const bool isUnusedLeft = CloseUnusedInputs();
    Clock::duration pause = isUnusedLeft ? kKeepUnused : Clock::duration(kNothingToDo);
    if (!m_session->Tidy()) pause = kTidySoon;
    return std::clamp(m_retryAt - Clock::now(), Clock::duration::zero(), pause);
}

void JackPlatform::OpenSession() {
    m_session = JackSession::Open(*m_jack, m_clientName, m_arrived, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->WakeManager();
    });
    m_nextAttempt = Clock::now() + kAttemptEvery;
    if (!m_session) return;
    if (std::exchange(m_hasLostServer, false)) Log(LogModule::Midi, "The JACK server is back");
    std::lock_guard guard(m_lock);
    m_inbox = m_session->Inbox();
    m_arrived->Post();
}

// Senders are told first: the rest may take its time.
void JackPlatform::CloseSession() {
    if (!m_session) return;
    {
        std::lock_guard guard(m_lock);
        m_endpoints.Clear();
        m_hasLostServer = IsUp() && m_session->HasDied();
    }
    CloseGone();
    if (m_hasLostServer) Log(LogModule::Midi, "The JACK server has stopped");
    if (m_session->HasDied()) std::this_thread::sleep_for(kLetServerGo);
    JackSession::Close(std::exchange(m_session, nullptr));
    m_nextAttempt = Clock::now() + kAttemptEvery;
}

void JackPlatform::UpdateEndpoints() {
    std::optional<std::vector<FoundEndpoint>> found = m_session->ChangedEndpoints();
    if (!found) return;
    {
        std::lock_guard guard(m_lock);
        m_endpoints.Update(*std::move(found));
    }
    CloseGone();
}

/// Closes our ports whose endpoints are not in the table any more.
void JackPlatform::CloseGone() {
    std::map<MidiId, Output> outputs;
    std::vector<std::shared_ptr<JackInput>> inputs;
    {
        std::lock_guard guard(m_lock);
        std::erase_if(m_outputs, [&](const auto& each) {
            if (m_endpoints.Find(each.first)) return false;
            return outputs.insert(each).second;
        });
        std::erase_if(m_inputs, [&](const auto& each) {
            if (m_endpoints.Find(each.first)) return false;
            inputs.push_back(each.second.input);
            m_torn.insert(each.first);
            return true;
        });
        std::erase_if(m_refusals, [&](const auto& each) { return !m_endpoints.Find(each.first); });
    }
    for (const auto& [id, output] : outputs) {
        m_session->CloseOutput(output);
        m_sender.End(id);
    }
    for (const auto& input : inputs) m_session->CloseInput(input);
}

/// With the lock held. One that has been refused waits for its time.
void JackPlatform::AddMissing(MidiId endpoint, std::vector<Missing>& missing) {
    const EndpointTable::Endpoint* const found = m_endpoints.Find(endpoint);
    if (!found) return;
    const auto refusal = m_refusals.find(endpoint);
    if (refusal != m_refusals.end() && refusal->second.retryAt > Clock::now())
        m_retryAt = std::min(m_retryAt, refusal->second.retryAt);
    else
        missing.push_back({endpoint, found->address});
}

/// With the lock held.
void JackPlatform::NoteRefusal(MidiId endpoint) {
    const Clock::time_point now = Clock::now();
    Refusal& refusal = m_refusals.try_emplace(endpoint, Refusal{now, now}).first->second;
    refusal.retryAt = now + (refusal.MayEnd() ? kRetrySoon : Clock::duration(kRetryLater));
    m_retryAt = std::min(m_retryAt, refusal.retryAt);
}

void JackPlatform::OpenMissingOutputs() {
    std::vector<Missing> missing;
    {
        std::lock_guard guard(m_lock);
        for (const MidiId id : m_wanted)
            if (!m_outputs.contains(id)) AddMissing(id, missing);
    }
    for (const auto& [id, address] : missing) {
        Output output = m_session->OpenOutput(address);
        std::lock_guard guard(m_lock);
        if (!output) {
            NoteRefusal(id);
            continue;
        }
        m_refusals.erase(id);
        m_outputs[id] = std::move(output);
    }
}

void JackPlatform::OpenMissingInputs() {
    std::vector<Missing> missing;
    std::set<MidiId> torn;
    {
        std::lock_guard guard(m_lock);
        for (const MidiId id : m_ports.ConnectedSources())
            if (!m_inputs.contains(id)) AddMissing(id, missing);
        torn = m_torn;
    }
    std::map<MidiId, Input> opened;
    for (const auto& [id, address] : missing)
        if (auto input = m_session->OpenInput(id, address, torn.contains(id)))
            opened[id].input = std::move(input);
    if (!opened.empty()) m_session->AwaitInputs();
    std::lock_guard guard(m_lock);
    for (const auto& [id, address] : missing) {
        if (!opened.contains(id)) {
            NoteRefusal(id);
            continue;
        }
        m_refusals.erase(id);
        m_torn.erase(id);
    }
    m_inputs.merge(opened);
}

/// True when there are some that are still kept.
bool JackPlatform::CloseUnusedInputs() {
    std::vector<std::shared_ptr<JackInput>> closing;
    bool isUnusedLeft = false;
    {
        std::lock_guard guard(m_lock);
        NoteUnusedInputs();
        const Clock::time_point before = Clock::now() - kKeepUnused;
        std::erase_if(m_inputs, [&](const auto& each) {
            const Input& input = each.second;
            const bool isOver = input.unusedSince && *input.unusedSince <= before;
            if (isOver) closing.push_back(input.input);
            isUnusedLeft |= input.unusedSince && !isOver;
            return isOver;
        });
    }
    for (const auto& input : closing) m_session->CloseInput(input);
    return isUnusedLeft;
}

void JackPlatform::NoteUnusedInputs() {
    const std::vector<MidiId> used = m_ports.ConnectedSources();
    for (auto& [source, input] : m_inputs) {
        if (std::ranges::binary_search(used, source))
            input.unusedSince.reset();
        else if (!input.unusedSince)
            input.unusedSince = Clock::now();
    }
}

} // namespace vm
