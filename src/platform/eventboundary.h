// The border between the toolkit's event loop and the library: an exception of a host's handler
// must not travel through the toolkit. It is kept, the loop is ended, and whoever runs the loop
// throws it again.
#pragma once

#include <utility>

#include "platform/messageSender.h"

namespace vm {

/// Keeps the exception in flight and ends the thread's innermost event loop. On the main thread of a
/// foreign program, whose loop cannot throw it, it is logged instead: "exception in a handler: <what>".
/// Call it in a catch block only.
void KeepException();

/// Throws the kept exception again, if there is one. For the code that ran an event loop.
void RethrowKept();

template <class Body>
void AtEventBoundary(Body&& body) {
    const SenderScope sender(Sender::Event);
    try {
        std::forward<Body>(body)();
    } catch (...) {
        KeepException();
    }
}

} // namespace vm
