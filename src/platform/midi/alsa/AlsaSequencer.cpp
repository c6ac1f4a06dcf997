// Calls of the sequencer library.
#include "platform/midi/alsa/AlsaSequencer.h"

#include <poll.h>

#include "core/log.h"

namespace vm {

namespace {

// The most that the kernel grants. A queue of that size holds 46 KB of System Exclusive data.
constexpr std::size_t kPoolCells = 2000;
// An event that does not fit would never be read, and nothing after it.
constexpr std::size_t kInputBufferBytes = kPoolCells * sizeof(snd_seq_event_t);

// The sequencer of the kernel, whatever the configuration files say.
constexpr char kConfiguration[] = "seq.hw { type hw }";

/// Keeps the library from writing to standard error while it lives.
class QuietErrors {
public:
    explicit QuietErrors(const AlsaLibrary& library)
        : m_library(library), m_before(library.snd_lib_error_set_local(Ignore)) {}
    ~QuietErrors() { m_library.snd_lib_error_set_local(m_before); }
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    static void Ignore(const char*, int, const char*, int, const char*, va_list) {}

    const AlsaLibrary& m_library;
    const snd_local_error_handler_t m_before;
};

int OpenHandle(const AlsaLibrary& library, snd_seq_t*& handle) {
    const QuietErrors quiet(library);
    snd_config_t* configuration = nullptr;
    int result = library.snd_config_load_string(&configuration, kConfiguration, 0);
    if (result < 0) return result;
    result = library.snd_seq_open_lconf(&handle, "hw", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK,
                                        configuration);
    library.snd_config_delete(configuration);
    return result;
}

} // namespace

std::unique_ptr<AlsaSequencer> AlsaSequencer::Open(const AlsaLibrary& library,
                                                   const char* clientName) {
    snd_seq_t* handle = nullptr;
    const int result = OpenHandle(library, handle);
    if (result < 0) {
        Log(LogModule::Midi, "Error! cannot open the ALSA sequencer: %s",
            library.snd_strerror(result));
        return nullptr;
    }
    std::unique_ptr<AlsaSequencer> sequencer(new AlsaSequencer(library, handle));
    sequencer->SetUp(clientName);
    return sequencer;
}

AlsaSequencer::AlsaSequencer(const AlsaLibrary& library, snd_seq_t* handle)
    : m_library(library), m_handle(handle), m_client(library.snd_seq_client_id(handle)) {}

AlsaSequencer::~AlsaSequencer() {
    m_library.snd_seq_close(m_handle);
}

void AlsaSequencer::SetUp(const char* clientName) {
    m_library.snd_seq_set_client_name(m_handle, clientName);
    m_library.snd_seq_set_client_pool_input(m_handle, kPoolCells);
    m_library.snd_seq_set_client_pool_output(m_handle, kPoolCells);
    m_library.snd_seq_set_input_buffer_size(m_handle, kInputBufferBytes);
    pollfd descriptor = {};
    if (m_library.snd_seq_poll_descriptors(m_handle, &descriptor, 1, POLLIN) == 1)
        m_descriptor = descriptor.fd;
}

std::vector<AlsaPort> AlsaSequencer::Ports() const {
    std::vector<AlsaPort> ports;
    snd_seq_client_info_t* allocated = nullptr;
    if (m_library.snd_seq_client_info_malloc(&allocated) < 0) return ports;
    const std::unique_ptr<snd_seq_client_info_t, decltype(&::snd_seq_client_info_free)> client(
        allocated, m_library.snd_seq_client_info_free);
    m_library.snd_seq_client_info_set_client(client.get(), -1);
    while (m_library.snd_seq_query_next_client(m_handle, client.get()) >= 0)
        AppendPorts(*client, ports);
    return ports;
}

void AlsaSequencer::AppendPorts(snd_seq_client_info_t& client, std::vector<AlsaPort>& ports) const {
    snd_seq_port_info_t* allocated = nullptr;
    if (m_library.snd_seq_port_info_malloc(&allocated) < 0) return;
    const std::unique_ptr<snd_seq_port_info_t, decltype(&::snd_seq_port_info_free)> port(
        allocated, m_library.snd_seq_port_info_free);
    const int number = m_library.snd_seq_client_info_get_client(&client);
    m_library.snd_seq_port_info_set_client(port.get(), number);
    m_library.snd_seq_port_info_set_port(port.get(), -1);
    while (m_library.snd_seq_query_next_port(m_handle, port.get()) >= 0)
        ports.push_back({{number, m_library.snd_seq_port_info_get_port(port.get())},
                         m_library.snd_seq_client_info_get_card(&client),
                         m_library.snd_seq_client_info_get_name(&client),
                         m_library.snd_seq_port_info_get_name(port.get()),
                         m_library.snd_seq_port_info_get_capability(port.get())});
}

std::optional<AlsaInputPool> AlsaSequencer::InputPoolOf(int client) const {
    return QueryAlsaInputPool(m_descriptor, client);
}

int AlsaSequencer::CreateOutputPort(const char* name) {
    return m_library.snd_seq_create_simple_port(
        m_handle, name, SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_NO_EXPORT,
        SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
}

int AlsaSequencer::CreateInputPort(const char* name) {
    return m_library.snd_seq_create_simple_port(
        m_handle, name, SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_NO_EXPORT,
        SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
}

void AlsaSequencer::DeletePort(int port) {
    m_library.snd_seq_delete_simple_port(m_handle, port);
}

int AlsaSequencer::ConnectTo(int outputPort, AlsaAddress destination) {
    return m_library.snd_seq_connect_to(m_handle, outputPort, destination.client, destination.port);
}

int AlsaSequencer::ConnectFrom(int inputPort, AlsaAddress source) {
    return m_library.snd_seq_connect_from(m_handle, inputPort, source.client, source.port);
}

void AlsaSequencer::DisconnectFrom(int inputPort, AlsaAddress source) {
    m_library.snd_seq_disconnect_from(m_handle, inputPort, source.client, source.port);
}

int AlsaSequencer::Send(int outputPort, AlsaAddress destination, snd_seq_event_t event) {
    snd_seq_ev_set_source(&event, static_cast<unsigned char>(outputPort));
    snd_seq_ev_set_dest(&event, static_cast<unsigned char>(destination.client),
                        static_cast<unsigned char>(destination.port));
    return m_library.snd_seq_event_output_direct(m_handle, &event);
}

const snd_seq_event_t* AlsaSequencer::ReadEvent(int& result) {
    snd_seq_event_t* event = nullptr;
    result = m_library.snd_seq_event_input(m_handle, &event);
    return result < 0 ? nullptr : event;
}

bool AlsaSequencer::HasMoreEvents() const {
    return m_library.snd_seq_event_input_pending(m_handle, 0) > 0;
}

} // namespace vm
