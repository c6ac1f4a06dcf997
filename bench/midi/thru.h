// A JACK server of the benchmark's own, with a program on it that sends back what it is sent.
#pragma once

#include <optional>
#include <string>

#include "child.h"

namespace bench {

class JackGraph {
public:
    JackGraph(); ///< throws NotMeasured where there is no jackd

private:
    std::optional<Child> m_server, m_thru;
};

/// The program that sends back. Runs until SIGTERM; false when it cannot.
bool RunThru();

} // namespace bench
