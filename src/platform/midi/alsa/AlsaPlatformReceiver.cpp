// The thread: it opens the sequencer, reads what arrives, calls the receivers without any lock of
// ours, and follows what the system announces.
#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <sys/eventfd.h>

#include "core/log.h"
#include "platform/midi/alsa/AlsaPlatform.h"

namespace vm {

namespace {

// A device announces itself piece by piece, with names that are not final at first.
constexpr std::chrono::milliseconds kQuietTime{30};
constexpr AlsaAddress kAnnouncements{SND_SEQ_CLIENT_SYSTEM, SND_SEQ_PORT_SYSTEM_ANNOUNCE};

bool IsAnnouncement(const snd_seq_event_t& event) {
    return event.source.client == kAnnouncements.client && event.source.port == kAnnouncements.port;
}

} // namespace

void AlsaPlatform::Run() {
    if (Open()) {
        while (IsRunning()) {
            WaitForEvents();
            ReadEvents();
            m_ports.Deliver(m_arrived);
            m_arrived.Clear();
            ReadEndpointsIfDue();
        }
    }
    Close();
}

bool AlsaPlatform::Open() {
    const AlsaLibrary* library = AlsaLibrary::Load();
    if (!library) Log(LogModule::Midi, "Error! cannot open the ALSA library");
    auto sequencer = library ? AlsaSequencer::Open(*library, m_clientName.c_str()) : nullptr;
    std::lock_guard guard(m_lock);
    if (m_state != State::Starting) return false;
    m_state = sequencer ? State::Running : State::Failed;
    m_stateChanged.notify_all();
    if (!sequencer) return false;
    m_sequencer = std::move(sequencer);
    m_inputPort = m_sequencer->CreateInputPort("MIDI IN Port");
    m_sequencer->ConnectFrom(m_inputPort, kAnnouncements);
    ReadEndpoints();
    return true;
}

void AlsaPlatform::Close() {
    std::lock_guard guard(m_lock);
    m_sequencer.reset();
}

bool AlsaPlatform::IsRunning() {
    std::lock_guard guard(m_lock);
    return m_state == State::Running;
}

void AlsaPlatform::WaitForEvents() const {
    pollfd descriptors[] = {{m_sequencer->Descriptor(), POLLIN, 0}, {m_wake, POLLIN, 0}};
    int limit = -1;
    if (m_readAt) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            *m_readAt - std::chrono::steady_clock::now());
        limit = static_cast<int>(std::max<std::chrono::milliseconds::rep>(0, left.count()));
    }
    poll(descriptors, std::size(descriptors), limit);
}

void AlsaPlatform::ReadEvents() {
    do {
        int result = 0;
        const snd_seq_event_t* event = m_sequencer->ReadEvent(result);
        if (event && IsAnnouncement(*event))
            OnAnnouncement(*event);
        else if (event)
            m_input.Read(*event, m_arrived);
        else if (result == -ENOSPC)
            OnLoss();
        else
            return OnReadFailed(result);
    } while (m_sequencer->HasMoreEvents());
}

void AlsaPlatform::OnAnnouncement(const snd_seq_event_t& event) {
    const snd_seq_addr_t& about = event.data.addr;
    if (about.client == m_sequencer->Client()) return;
    switch (event.type) {
    case SND_SEQ_EVENT_CLIENT_EXIT:
        return OnGone({about.client, AlsaAddress::kAllPorts});
    case SND_SEQ_EVENT_PORT_EXIT:
        return OnGone({about.client, about.port});
    case SND_SEQ_EVENT_PORT_START:
    case SND_SEQ_EVENT_PORT_CHANGE:
    case SND_SEQ_EVENT_CLIENT_CHANGE: {
        std::lock_guard guard(m_lock);
        m_isStale = true;
        m_readAt = std::chrono::steady_clock::now() + kQuietTime;
        return;
    }
    default:
        return;
    }
}

// At once: the address may be somebody else's soon.
void AlsaPlatform::OnGone(AlsaAddress gone) {
    std::lock_guard guard(m_lock);
    m_keys.Forget(gone);
    m_input.OnGone(gone);
    std::erase_if(m_routes, [gone](const Route& route) { return gone.Includes(route.second); });
    if (m_state == State::Running) ReadEndpoints();
}

// The queue was full and is empty now; announcements may have been in it, too.
void AlsaPlatform::OnLoss() {
    Log(LogModule::Midi, "Error! MIDI input was not read in time: messages have been lost");
    m_input.OnLoss();
    std::lock_guard guard(m_lock);
    m_routes.clear();
    m_isStale = true;
    m_readAt = std::chrono::steady_clock::now();
}

void AlsaPlatform::OnReadFailed(int error) {
    if (error == -EAGAIN || error == -EINTR) return; // nothing more to read
    Log(LogModule::Midi, "Error! cannot read from the ALSA sequencer: %d", error);
    std::lock_guard guard(m_lock);
    if (m_state == State::Running) m_state = State::Failed;
}

void AlsaPlatform::ReadEndpointsIfDue() {
    if (!m_readAt || *m_readAt > std::chrono::steady_clock::now()) return;
    m_readAt.reset();
    std::lock_guard guard(m_lock);
    if (m_state == State::Running) ReadEndpoints();
}

} // namespace vm
