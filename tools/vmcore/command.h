// What the subcommands of `vmcore` share: how one ends other than well.
#pragma once

#include <string>

namespace vm::tool {

constexpr int kNo = 1;      ///< the answer is no: missing, refused, not written, something found
constexpr int kTrouble = 2; ///< a file that cannot be read, or wrong usage

/// Thrown by a subcommand; the program ends with this status. `message`, unless empty, goes to
/// standard error as "vmcore: <message>".
struct Exit {
    int status;
    std::string message = {};
};

} // namespace vm::tool
