// The system's sequencer library, opened at run time: where it is missing, the program still runs.
// Its headers are needed to build, the library itself is not.
#pragma once

#include <alsa/asoundlib.h>

// All functions of it that may be called, by their own names. What the headers define as macros or
// inline needs none of the library, except the macros that allocate on the stack: not to be used.
#define VMCORE_ALSA_FUNCTIONS(FUNCTION)                                                            \
    FUNCTION(snd_config_delete)                                                                    \
    FUNCTION(snd_config_load_string)                                                               \
    FUNCTION(snd_lib_error_set_local)                                                              \
    FUNCTION(snd_seq_client_id)                                                                    \
    FUNCTION(snd_seq_client_info_free)                                                             \
    FUNCTION(snd_seq_client_info_get_card)                                                         \
    FUNCTION(snd_seq_client_info_get_client)                                                       \
    FUNCTION(snd_seq_client_info_get_name)                                                         \
    FUNCTION(snd_seq_client_info_malloc)                                                           \
    FUNCTION(snd_seq_client_info_set_client)                                                       \
    FUNCTION(snd_seq_close)                                                                        \
    FUNCTION(snd_seq_connect_from)                                                                 \
    FUNCTION(snd_seq_connect_to)                                                                   \
    FUNCTION(snd_seq_create_simple_port)                                                           \
    FUNCTION(snd_seq_delete_simple_port)                                                           \
    FUNCTION(snd_seq_disconnect_from)                                                              \
    FUNCTION(snd_seq_event_input)                                                                  \
    FUNCTION(snd_seq_event_input_pending)                                                          \
    FUNCTION(snd_seq_event_output_direct)                                                          \
    FUNCTION(snd_seq_open_lconf)                                                                   \
    FUNCTION(snd_seq_poll_descriptors)                                                             \
    FUNCTION(snd_seq_port_info_free)                                                               \
    FUNCTION(snd_seq_port_info_get_capability)                                                     \
    FUNCTION(snd_seq_port_info_get_name)                                                           \
    FUNCTION(snd_seq_port_info_get_port)                                                           \
    FUNCTION(snd_seq_port_info_malloc)                                                             \
    FUNCTION(snd_seq_port_info_set_client)                                                         \
    FUNCTION(snd_seq_port_info_set_port)                                                           \
    FUNCTION(snd_seq_query_next_client)                                                            \
    FUNCTION(snd_seq_query_next_port)                                                              \
    FUNCTION(snd_seq_set_client_name)                                                              \
    FUNCTION(snd_seq_set_client_pool_input)                                                        \
    FUNCTION(snd_seq_set_client_pool_output)                                                       \
    FUNCTION(snd_seq_set_input_buffer_size)                                                        \
    FUNCTION(snd_strerror)

namespace vm {

struct AlsaLibrary {
#define VMCORE_ALSA_MEMBER(name) decltype(&::name) name = nullptr;
    VMCORE_ALSA_FUNCTIONS(VMCORE_ALSA_MEMBER)
#undef VMCORE_ALSA_MEMBER

    /// The library, opened by the first call and never closed; null where there is none.
    static const AlsaLibrary* Load();
};

} // namespace vm
