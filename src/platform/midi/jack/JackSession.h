// One connection to a running server, up to its end: two clients, one with all outputs, one with all
// inputs, so that what loops through the server arrives within the same cycle.
#pragma once

#include <array>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/midi/endpointTable.h"
#include "platform/midi/jack/JackLibrary.h"
#include "platform/midi/jack/JackOutput.h"
#include "platform/midi/jack/RecordRing.h"
#include "platform/midi/jack/Semaphore.h"
#include "platform/midi/jack/jackNames.h"

namespace vm {

/// What the process callback has received: records tagged with their source. One of no bytes stands
/// for what is missing there.
struct JackInbox {
    JackInbox(std::shared_ptr<Semaphore> wakeUp, std::size_t size)
        : ring(size), arrived(std::move(wakeUp)) {}

    RecordRing ring;
    std::atomic<bool> overflowed = false; ///< the receiver resets it
    const std::shared_ptr<Semaphore> arrived;
};

struct JackInput {
    jack_port_t* port;
    MidiId source;
    bool isTorn; ///< the next record is a mark of loss; in the process callback only
};

/// Ports that a process callback goes through. One thread changes them.
template <typename Port>
class JackPortSlots {
public:
    bool Add(Port* port);
    void Remove(Port* port);
    template <typename Use>
    void ForEach(Use use);

private:
    static constexpr std::size_t kMost = 512;

    std::array<std::atomic<Port*>, kMost> m_slots = {};
    std::atomic<std::size_t> m_used = 0; // no port is behind these
};

template <typename Port>
bool JackPortSlots<Port>::Add(Port* port) {
    for (std::size_t i = 0; i < kMost; ++i) {
        if (m_slots[i]) continue;
        m_slots[i] = port;
        if (i >= m_used) m_used = i + 1;
        return true;
    }
    return false;
}

template <typename Port>
void JackPortSlots<Port>::Remove(Port* port) {
    for (std::atomic<Port*>& slot : m_slots)
        if (slot == port) slot = nullptr;
}

template <typename Port>
template <typename Use>
void JackPortSlots<Port>::ForEach(Use use) {
    const std::size_t used = m_used;
    for (std::size_t i = 0; i < used; ++i)
        if (Port* const port = m_slots[i]) use(*port);
}

/// For the manager thread, except where another is named.
class JackSession {
public:
    /// Null without a server. `changed` is called on threads of the library when ports may have
    /// come or gone, and when the server has died.
    static std::shared_ptr<JackSession> Open(const JackLibrary& jack, const std::string& name,
                                             std::shared_ptr<Semaphore> arrived,
                                             std::function<void()> changed);
    /// Leaves the server, or what is left of it. One that hangs is left to a thread of its own.
    static void Close(std::shared_ptr<JackSession> session);

    bool HasDied() const { return m_hasDied; } ///< any thread
    const std::shared_ptr<JackInbox>& Inbox() const { return m_inbox; }

    /// The endpoints when they may have changed since the last call.
    std::optional<std::vector<FoundEndpoint>> ChangedEndpoints();

    /// Null when the server refuses. What is opened is used in the process callback until closed.
    std::shared_ptr<JackOutput> OpenOutput(const std::string& address);
    std::shared_ptr<JackInput> OpenInput(MidiId source, const std::string& address, bool isTorn);
    void CloseOutput(std::shared_ptr<JackOutput> output);
    void CloseInput(std::shared_ptr<JackInput> input);
    /// Waits until what has been opened really is connected; not for ever.
    void AwaitInputs() const;

    /// Unregisters what the process callbacks have let go of. False when some are still to come.
    bool Tidy();

private:
    struct Client {
        jack_client_t* client = nullptr;
        std::string name;
        std::atomic<std::uint64_t> cycles = 0; ///< begun so far
    };
    struct Retired {
        jack_port_t* port;
        Client* client;
        std::uint64_t cycle; ///< it may have been in use in this one
        std::shared_ptr<void> holder;
    };

    JackSession(const JackLibrary& jack, std::shared_ptr<Semaphore> arrived,
                std::function<void()> changed);
    bool OpenClients(const std::string& name);
    bool OpenClient(Client& client, const std::string& name, JackProcessCallback process);
    void WatchPorts();
    void CloseClients();
    void NoteDeath();
    void NotePortChange();
    static int ProcessOutputs(jack_nframes_t frames, void* self);
    static int ProcessInputs(jack_nframes_t frames, void* self);
    bool Receive(JackInput& input, jack_nframes_t frames);
    void Keep(JackInput& input, std::span<const std::uint8_t> bytes);

    std::vector<std::string> PortNames() const;
    bool IsOwn(const std::string& port) const;
    std::optional<JackPort> Describe(const std::string& name);
    std::string SecondAlias(const jack_port_t* port) const;
    std::string Property(jack_uuid_t subject, const char* key) const;
    std::string ClientPrettyName(const std::string& port);
    std::optional<jack_uuid_t> AskForId(const std::string& client) const;
    void ForgetClients();
    jack_port_t* Register(Client& client, const std::string& address, unsigned long flags);
    bool Connect(jack_port_t* own, const char* source, const char* destination) const;
    void Retire(jack_port_t* port, Client& client, std::shared_ptr<void> holder);

    const JackLibrary& m_jack;
    const std::shared_ptr<Semaphore> m_arrived;
    std::shared_ptr<JackInbox> m_inbox; // once there is a server
    const std::function<void()> m_changed;
    std::atomic<bool> m_hasDied = false;
    std::atomic<bool> m_havePortsChanged = true;
    Client m_out, m_in;
    JackPortSlots<JackOutput> m_outputs;
    JackPortSlots<JackInput> m_inputs;

    std::uint64_t m_connectedCycle = 0; // these: the manager thread's
    std::vector<std::string> m_names;
    std::map<std::string, std::optional<jack_uuid_t>> m_clientIds; // of those who have ports
    std::vector<Retired> m_retired;
};

} // namespace vm
