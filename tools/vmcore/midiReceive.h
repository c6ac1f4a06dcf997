// `vmcore midi receive` and `vmcore midi monitor`.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace vm::tool {

/// When to end without a request to stop.
struct ReceiveLimits {
    std::optional<double> seconds;
    std::optional<std::size_t> count; ///< of messages
};

/// What to send once the input is open, for example a request for a dump.
struct DumpRequest {
    std::string file; ///< empty for none
    std::string port;
    unsigned speed = 0;
};

/// Appends whole System Exclusive messages to `file`. Throws Exit: kNo when fewer than the wanted
/// number have come in time, kTrouble when the file cannot be written.
void Receive(const std::string& port, const std::string& file, const ReceiveLimits& limits,
             const DumpRequest& request);

/// Prints a line for every message.
void Monitor(const std::string& port, const ReceiveLimits& limits);

} // namespace vm::tool
