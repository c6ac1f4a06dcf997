// Life of the two clients, and the ports opened in them. What happens on the server's real-time
// thread is in JackSessionProcess.cpp, what is known about the ports in JackSessionPorts.cpp.
#include "platform/midi/jack/JackSession.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "platform/midi/limitedThread.h"

namespace vm {

namespace {

// What arrives during 170 ms at the greatest rate that a period of 64 frames allows.
constexpr std::size_t kInboxSize = 4 * 1024 * 1024;
constexpr std::chrono::seconds kCloseLimit{2};
constexpr std::chrono::milliseconds kConnectLimit{100};
constexpr std::size_t kLongestPortName = 200;
// A new connection holds from the next cycle on, and our own may be about to begin.
constexpr std::uint64_t kCyclesToConnect = 2;

} // namespace

JackSession::JackSession(const JackLibrary& jack, std::shared_ptr<Semaphore> arrived,
                         std::function<void()> changed)
    : m_jack(jack), m_arrived(std::move(arrived)), m_changed(std::move(changed)) {}

std::shared_ptr<JackSession> JackSession::Open(const JackLibrary& jack, const std::string& name,
                                               std::shared_ptr<Semaphore> arrived,
                                               std::function<void()> changed) {
    std::shared_ptr<JackSession> session(
        new JackSession(jack, std::move(arrived), std::move(changed)));
    if (session->OpenClients(name)) return session;
    if (session->m_out.client) Close(std::move(session));
    return nullptr;
}

bool JackSession::OpenClients(const std::string& name) {
    const std::string in = " in";
    const auto longest = static_cast<std::size_t>(m_jack.client_name_size()) - 1 - in.size();
    const std::string base = name.substr(0, longest);
    if (!OpenClient(m_out, base, ProcessOutputs)) return false;
    m_inbox = std::make_shared<JackInbox>(m_arrived, kInboxSize);
    return OpenClient(m_in, base + in, ProcessInputs);
}

// An xrun callback is left out on purpose: with one, closing has been seen to hang.
bool JackSession::OpenClient(Client& client, const std::string& name, JackProcessCallback process) {
    jack_status_t status = {};
    client.client = m_jack.client_open(name.c_str(), JackNoStartServer, &status);
    if (!client.client) return false;
    client.name = m_jack.get_client_name(client.client);
    m_jack.on_shutdown(
        client.client, [](void* self) { static_cast<JackSession*>(self)->NoteDeath(); }, this);
    m_jack.on_info_shutdown(
        client.client,
        [](jack_status_t, const char*, void* self) {
            static_cast<JackSession*>(self)->NoteDeath();
        },
        this);
    if (m_jack.set_process_callback(client.client, process, this) != 0) return false;
    if (&client == &m_out) WatchPorts();
    return m_jack.activate(client.client) == 0;
}

void JackSession::WatchPorts() {
    const auto note = [](void* self) { static_cast<JackSession*>(self)->NotePortChange(); };
    static constexpr auto s_note = note;
    m_jack.set_port_registration_callback(
        m_out.client, [](jack_port_id_t, int, void* self) { s_note(self); }, this);
    if (m_jack.set_port_rename_callback)
        m_jack.set_port_rename_callback(
            m_out.client,
            [](jack_port_id_t, const char*, const char*, void* self) { s_note(self); }, this);
    if (m_jack.set_property_change_callback)
        m_jack.set_property_change_callback(
            m_out.client,
            [](jack_uuid_t, const char*, jack_property_change_t, void* self) { s_note(self); },
            this);
}

void JackSession::Close(std::shared_ptr<JackSession> session) {
    LimitedThread closing;
    if (!closing.Start([session] { session->CloseClients(); })) session->CloseClients();
    closing.End(kCloseLimit);
}

void JackSession::CloseClients() {
    for (Client* each : {&m_in, &m_out})
        if (each->client) m_jack.client_close(std::exchange(each->client, nullptr));
}

// Both kinds of shutdown callbacks may come, for both clients.
void JackSession::NoteDeath() {
    if (!m_hasDied.exchange(true)) m_changed();
}

void JackSession::NotePortChange() {
    m_havePortsChanged = true;
    m_changed();
}

std::shared_ptr<JackOutput> JackSession::OpenOutput(const std::string& address) {
    jack_port_t* const port = Register(m_out, address, JackPortIsOutput);
    if (!port) return nullptr;
    const bool isConnected = Connect(port, m_jack.port_name(port), address.c_str());
    auto output = std::make_shared<JackOutput>(port, m_out.cycles + kCyclesToConnect);
    if (isConnected && m_outputs.Add(output.get())) return output;
    m_jack.port_unregister(m_out.client, port);
    return nullptr;
}

std::shared_ptr<JackInput> JackSession::OpenInput(MidiId source, const std::string& address,
                                                  bool isTorn) {
    jack_port_t* const port = Register(m_in, address, JackPortIsInput);
    if (!port) return nullptr;
    auto input = std::make_shared<JackInput>(JackInput{port, source, isTorn});
    if (m_inputs.Add(input.get())) {
        if (Connect(port, address.c_str(), m_jack.port_name(port))) {
            m_connectedCycle = m_in.cycles + kCyclesToConnect;
            return input;
        }
        CloseInput(std::move(input));
        return nullptr;
    }
    m_jack.port_unregister(m_in.client, port);
    return nullptr;
}

// Our ports are called as what they lead to, in one piece: the colon stands behind the client.
jack_port_t* JackSession::Register(Client& client, const std::string& address,
                                   unsigned long flags) {
    if (m_hasDied) return nullptr;
    std::string name = address.substr(0, kLongestPortName);
    std::ranges::replace(name, ':', ' ');
    while (m_jack.port_by_name(client.client, (client.name + ":" + name).c_str())) name += '+';
    return m_jack.port_register(client.client, name.c_str(), JACK_DEFAULT_MIDI_TYPE, flags, 0);
}

// A patch bay may have been faster. Whatever the result is, it counts when the ports are connected.
bool JackSession::Connect(jack_port_t* own, const char* source, const char* destination) const {
    if (m_jack.connect(m_out.client, source, destination) == 0) return true;
    const bool isOutput = (m_jack.port_flags(own) & JackPortIsOutput) != 0;
    return !m_hasDied && m_jack.port_connected_to(own, isOutput ? destination : source) != 0;
}

void JackSession::CloseOutput(std::shared_ptr<JackOutput> output) {
    output->Close();
    m_outputs.Remove(output.get());
    Retire(output->Port(), m_out, output);
}

void JackSession::CloseInput(std::shared_ptr<JackInput> input) {
    m_inputs.Remove(input.get());
    Retire(input->port, m_in, input);
}

void JackSession::Retire(jack_port_t* port, Client& client, std::shared_ptr<void> holder) {
    m_retired.push_back({port, &client, client.cycles, std::move(holder)});
}

bool JackSession::Tidy() {
    std::erase_if(m_retired, [this](const Retired& each) {
        if (each.client->cycles <= each.cycle) return false;
        m_jack.port_unregister(each.client->client, each.port);
        return true;
    });
    return m_retired.empty();
}

void JackSession::AwaitInputs() const {
    const auto until = std::chrono::steady_clock::now() + kConnectLimit;
    while (m_in.cycles < m_connectedCycle && !m_hasDied && std::chrono::steady_clock::now() < until)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace vm
