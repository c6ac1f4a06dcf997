// jack_peer CLIENT: another program at the JACK server of a test. Commands come in lines, each is
// answered by "ok" or "failed":
//   thru                        ports "in" and "out"; what comes in goes out in the same cycle
//   source PORT | sink PORT     a port; "hardware-source" and "hardware-sink" make physical ones
//   remove PORT
//   deactivate                  its ports take no connections, until
//   activate-after MS           that many milliseconds later
//   await-connection PORT
//   alias PORT TEXT
//   property PORT|. KEY TEXT    metadata of the port, or of the client; KEY without the usual prefix
#include <atomic>
#include <chrono>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>

#include <jack/jack.h>
#include <jack/metadata.h>
#include <jack/midiport.h>
#include <jack/uuid.h>

namespace {

struct Peer {
    jack_client_t* client = nullptr;
    std::map<std::string, jack_port_t*> ports;
    std::atomic<jack_port_t*> in = nullptr;
    std::atomic<jack_port_t*> out = nullptr;
};

int Process(jack_nframes_t frames, void* reference) {
    const auto& peer = *static_cast<const Peer*>(reference);
    if (!peer.in || !peer.out) return 0;
    void* const from = jack_port_get_buffer(peer.in, frames);
    void* const to = jack_port_get_buffer(peer.out, frames);
    jack_midi_clear_buffer(to);
    const uint32_t count = jack_midi_get_event_count(from);
    for (uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, from, i) == 0)
            jack_midi_event_write(to, event.time, event.buffer, event.size);
    }
    return 0;
}

jack_port_t* Register(Peer& peer, const std::string& name, unsigned long flags) {
    return peer.ports[name] =
               jack_port_register(peer.client, name.c_str(), JACK_DEFAULT_MIDI_TYPE, flags, 0);
}

jack_uuid_t ClientId(const Peer& peer) {
    jack_uuid_t id = {};
    char* const text =
        jack_get_uuid_for_client_name(peer.client, jack_get_client_name(peer.client));
    if (text) jack_uuid_parse(text, &id);
    jack_free(text);
    return id;
}

bool SetProperty(const Peer& peer, const std::string& port, const std::string& key,
                 const std::string& text) {
    const jack_uuid_t subject = port == "." ? ClientId(peer) : jack_port_uuid(peer.ports.at(port));
    const std::string name = "http://jackaudio.org/metadata/" + key;
    return jack_set_property(peer.client, subject, name.c_str(), text.c_str(), "text/plain") == 0;
}

bool MakeThru(Peer& peer) {
    jack_port_t* const in = Register(peer, "in", JackPortIsInput);
    jack_port_t* const out = Register(peer, "out", JackPortIsOutput);
    peer.in = in;
    peer.out = out;
    return in && out;
}

bool ActivateAfter(const Peer& peer, const std::string& milliseconds) {
    std::thread([client = peer.client, pause = std::chrono::milliseconds(std::stoi(milliseconds))] {
        std::this_thread::sleep_for(pause);
        jack_activate(client);
    }).detach();
    return true;
}

bool AwaitConnection(const jack_port_t* port) {
    for (int i = 0; i < 5000 && jack_port_connected(port) == 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return jack_port_connected(port) != 0;
}

bool Obey(Peer& peer, const std::string& line) {
    std::istringstream words(line);
    std::string command, port, key, text;
    words >> command >> port;
    if (command == "property") words >> key;
    std::getline(words >> std::ws, text);
    if (command == "thru") return MakeThru(peer);
    if (command == "source") return Register(peer, port, JackPortIsOutput);
    if (command == "sink") return Register(peer, port, JackPortIsInput);
    if (command == "hardware-source")
        return Register(peer, port, JackPortIsOutput | JackPortIsPhysical);
    if (command == "hardware-sink")
        return Register(peer, port, JackPortIsInput | JackPortIsPhysical);
    if (command == "remove") return jack_port_unregister(peer.client, peer.ports.at(port)) == 0;
    if (command == "deactivate") return jack_deactivate(peer.client) == 0;
    if (command == "activate-after") return ActivateAfter(peer, port);
    if (command == "await-connection") return AwaitConnection(peer.ports.at(port));
    if (command == "alias") return jack_port_set_alias(peer.ports.at(port), text.c_str()) == 0;
    return command == "property" && SetProperty(peer, port, key, text);
}

} // namespace

int main(int argc, char** argv) {
    Peer peer;
    if (argc == 2) peer.client = jack_client_open(argv[1], JackNoStartServer, nullptr);
    if (!peer.client || jack_set_process_callback(peer.client, Process, &peer) != 0 ||
        jack_activate(peer.client) != 0)
        return 1;
    std::cout << "ok" << std::endl;
    for (std::string line; std::getline(std::cin, line);)
        std::cout << (Obey(peer, line) ? "ok" : "failed") << std::endl;
    jack_client_close(peer.client);
}
