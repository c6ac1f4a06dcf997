// Questions that the kernel answers and the sequencer library has no function for. The kernel's
// headers and the library's cannot be included together.
#pragma once

#include <optional>
#include <string>

namespace vm {

/// A sound card as its driver describes it.
struct AlsaCardInfo {
    std::string id;
    std::string driver;
    std::string name;
    std::string longName;
};

/// Nothing when there is no such card, or it may not be asked.
std::optional<AlsaCardInfo> QueryAlsaCard(int card);

/// How many cells of its input pool a program has, and how many of them wait for events. An event
/// takes one, and one more for every `kAlsaCellBytes` of a System Exclusive message.
struct AlsaInputPool {
    int size = 0; ///< 0: the client takes events without queueing them, or it is not known
    int free = 0;
};
inline constexpr int kAlsaCellBytes = 28;

/// `sequencer` is the descriptor of an open client. Nothing when there is no such client.
std::optional<AlsaInputPool> QueryAlsaInputPool(int sequencer, int client);

/// Whether the sequencer's device is there and may be used.
bool IsAlsaSequencerOpenable();

} // namespace vm
