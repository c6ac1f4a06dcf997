// The functions of libjack, found at run time: a machine without it runs the program all the same.
// Nothing is linked; the headers give the types.
#pragma once

#include <jack/jack.h>
#include <jack/metadata.h>
#include <jack/midiport.h>
#include <jack/uuid.h>

namespace vm {

// Those that every version has, then those that only newer ones have (null without).
#define VM_JACK_FUNCTIONS(X)                                                                       \
    X(activate)                                                                                    \
    X(client_close)                                                                                \
    X(client_name_size)                                                                            \
    X(client_open)                                                                                 \
    X(connect)                                                                                     \
    X(free)                                                                                        \
    X(get_client_name)                                                                             \
    X(get_ports)                                                                                   \
    X(midi_clear_buffer)                                                                           \
    X(midi_event_get)                                                                              \
    X(midi_event_reserve)                                                                          \
    X(midi_get_event_count)                                                                        \
    X(midi_max_event_size)                                                                         \
    X(on_info_shutdown)                                                                            \
    X(on_shutdown)                                                                                 \
    X(port_by_name)                                                                                \
    X(port_connected_to)                                                                           \
    X(port_flags)                                                                                  \
    X(port_get_aliases)                                                                            \
    X(port_get_buffer)                                                                             \
    X(port_name)                                                                                   \
    X(port_name_size)                                                                              \
    X(port_register)                                                                               \
    X(port_unregister)                                                                             \
    X(set_error_function)                                                                          \
    X(set_info_function)                                                                           \
    X(set_port_registration_callback)                                                              \
    X(set_process_callback)
#define VM_JACK_NEWER_FUNCTIONS(X)                                                                 \
    X(get_property)                                                                                \
    X(get_uuid_for_client_name)                                                                    \
    X(get_version_string)                                                                          \
    X(port_uuid)                                                                                   \
    X(set_port_rename_callback)                                                                    \
    X(set_property_change_callback)                                                                \
    X(uuid_parse)

/// `jack.connect` is jack_connect, and so on.
struct JackLibrary {
#define VM_JACK_MEMBER(name) decltype(&::jack_##name) name = nullptr;
    VM_JACK_FUNCTIONS(VM_JACK_MEMBER)
    VM_JACK_NEWER_FUNCTIONS(VM_JACK_MEMBER)
#undef VM_JACK_MEMBER

    /// Loaded by the first call and never unloaded; null where there is none. Its messages to
    /// standard error are off.
    static const JackLibrary* Get();
};

/// True when the server that the library would connect to takes connections. Never waits: a server
/// that has hung counts as one that answers.
bool JackServerAnswers(const JackLibrary& jack);

} // namespace vm
