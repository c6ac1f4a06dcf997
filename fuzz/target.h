// What every fuzz target shares: the function that libFuzzer and the replay call, and how a target
// says what must hold. The input is text, so that a corpus can be written and read by people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the process when `rule` does not hold, which is a finding.
inline void Require(bool holds, const char* rule) {
    if (holds) return;
    std::fprintf(stderr, "broken rule: %s\n", rule);
    std::abort();
}

} // namespace fuzz
