// The server's ports: which there are, and what is known about them.
#include <algorithm>
#include <array>

#include "platform/midi/jack/JackSession.h"

namespace vm {

namespace {
constexpr char kPrettyName[] = "http://jackaudio.org/metadata/pretty-name";
constexpr char kConnected[] = "http://jackaudio.org/metadata/connected";

std::string ClientOf(const std::string& port) {
    return port.substr(0, port.find(':'));
}
} // namespace

std::optional<std::vector<FoundEndpoint>> JackSession::ChangedEndpoints() {
    const bool haveChanged = m_havePortsChanged.exchange(false);
    std::vector<std::string> names = PortNames();
    if (!haveChanged && names == m_names) return std::nullopt;
    m_names = std::move(names);
    ForgetClients();
    std::vector<JackPort> ports;
    for (const std::string& name : m_names)
        if (auto port = Describe(name)) ports.push_back(*std::move(port));
    return DescribeJackPorts(ports);
}

std::vector<std::string> JackSession::PortNames() const {
    std::vector<std::string> names;
    const char** const ports = m_jack.get_ports(m_out.client, nullptr, JACK_DEFAULT_MIDI_TYPE, 0);
    for (const char** port = ports; port && *port; ++port)
        if (!IsOwn(*port)) names.push_back(*port);
    if (ports) m_jack.free(ports);
    return names;
}

bool JackSession::IsOwn(const std::string& port) const {
    const std::string client = ClientOf(port);
    return client == m_out.name || client == m_in.name;
}

/// Nothing for a port that has gone meanwhile.
std::optional<JackPort> JackSession::Describe(const std::string& name) {
    jack_port_t* const port = m_jack.port_by_name(m_out.client, name.c_str());
    if (!port) return std::nullopt;
    const int flags = m_jack.port_flags(port);
    JackPort found{name};
    found.direction = flags & JackPortIsOutput ? MidiDirection::Input : MidiDirection::Output;
    found.isPhysical = (flags & JackPortIsPhysical) != 0;
    found.secondAlias = SecondAlias(port);
    if (!found.isPhysical) found.clientPrettyName = ClientPrettyName(name);
    if (m_jack.port_uuid) {
        found.prettyName = Property(m_jack.port_uuid(port), kPrettyName);
        found.connectedTo = Property(m_jack.port_uuid(port), kConnected);
    }
    return found;
}

std::string JackSession::SecondAlias(const jack_port_t* port) const {
    const auto size = static_cast<std::size_t>(m_jack.port_name_size());
    std::string first(size, '\0'), second(size, '\0');
    const std::array<char*, 2> aliases = {first.data(), second.data()};
    const int count = m_jack.port_get_aliases(port, aliases.data());
    return count > 1 ? std::string(second.c_str()) : std::string();
}

std::string JackSession::Property(jack_uuid_t subject, const char* key) const {
    char* value = nullptr;
    char* type = nullptr;
    if (!m_jack.get_property || m_jack.get_property(subject, key, &value, &type) != 0) return {};
    const std::string text = value ? value : "";
    m_jack.free(value);
    m_jack.free(type);
    return text;
}

std::string JackSession::ClientPrettyName(const std::string& port) {
    const auto [client, isNew] = m_clientIds.try_emplace(ClientOf(port));
    if (isNew) client->second = AskForId(client->first);
    return client->second ? Property(*client->second, kPrettyName) : std::string();
}

// This is the one question here that the server itself has to answer.
std::optional<jack_uuid_t> JackSession::AskForId(const std::string& client) const {
    if (!m_jack.get_uuid_for_client_name || !m_jack.uuid_parse) return std::nullopt;
    char* const text = m_jack.get_uuid_for_client_name(m_out.client, client.c_str());
    jack_uuid_t id = {};
    const bool isKnown = text && m_jack.uuid_parse(text, &id) == 0;
    m_jack.free(text);
    return isKnown ? std::optional(id) : std::nullopt;
}

// One that comes back has another identifier.
void JackSession::ForgetClients() {
    std::erase_if(m_clientIds, [this](const auto& each) {
        return std::ranges::find(m_names, each.first, ClientOf) == m_names.end();
    });
}

} // namespace vm
