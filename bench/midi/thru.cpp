#include "thru.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <jack/jack.h>
#include <jack/midiport.h>
#include <unistd.h>

#include "link.h"

namespace bench {
namespace {

struct Thru {
    jack_client_t* client;
    jack_port_t* in;
    jack_port_t* out;
};

int Process(jack_nframes_t frames, void* argument) {
    const auto& thru = *static_cast<Thru*>(argument);
    void* const in = jack_port_get_buffer(thru.in, frames);
    void* const out = jack_port_get_buffer(thru.out, frames);
    jack_midi_clear_buffer(out);
    const std::uint32_t count = jack_midi_get_event_count(in);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event = {};
        if (jack_midi_event_get(&event, in, i) != 0) continue;
        jack_midi_data_t* const copy = jack_midi_event_reserve(out, event.time, event.size);
        if (copy) std::memcpy(copy, event.buffer, event.size);
    }
    return 0;
}

jack_client_t* OpenClient(const char* name) {
    for (int i = 0; i < 500; ++i) {
        jack_client_t* const client = jack_client_open(name, JackNoStartServer, nullptr);
        if (client) return client;
        usleep(10'000); // the server is starting
    }
    return nullptr;
}

} // namespace

// A synchronous server: the other kind loses MIDI events by itself.
JackGraph::JackGraph() {
    constexpr char kServer[] = "vmcore-bench"; // one name: a killed server keeps its place for it
    setenv("JACK_DEFAULT_SERVER", kServer, 1);
    m_server.emplace(std::vector<std::string>{"jackd", "-n", kServer, "-r", "-S", "-d", "dummy",
                                              "-r", "48000", "-p", "64"});
    m_thru.emplace(OwnProgram({"thru"}));
    if (m_thru->ReadLine() != "ready") throw NotMeasured("jackd does not run here");
}

bool RunThru() {
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigprocmask(SIG_BLOCK, &ends, nullptr); // in all threads to come
    jack_set_error_function([](const char*) {});
    Thru thru = {};
    const std::string name = WayBack("jack");
    thru.client = OpenClient(name.c_str());
    if (!thru.client) return false;
    thru.in = jack_port_register(thru.client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    thru.out = jack_port_register(thru.client, "out", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    jack_set_process_callback(thru.client, Process, &thru);
    if (!thru.in || !thru.out || jack_activate(thru.client) != 0) return false;
    std::puts("ready");
    std::fflush(stdout);
    int signal = 0;
    sigwait(&ends, &signal);
    jack_client_close(thru.client); // the server would wait for one that just dies
    return true;
}

} // namespace bench
