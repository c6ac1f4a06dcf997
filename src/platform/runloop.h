// The stack of a thread's event loops: on the main thread the application's and the modal ones
// above it, and on any thread those that run for a given time.
#pragma once

#include <functional>

namespace vm {

/// Runs an event loop until EndInnermostLoop, or not at all when `ended` already says so (an end
/// asked for before the start would be lost otherwise) and before there is an application object.
/// Throws what a handler threw.
void RunLoop(const std::function<bool()>& ended = {});

/// Ends the innermost of these loops; nothing without one.
void EndInnermostLoop();
/// Ends the calling thread's innermost loop of either kind.
void EndLoopForException();

/// Ends all of them: the innermost returns first.
void EndAllLoops();

int RunningLoops();

/// Runs what is pending on the calling thread's loop for `milliseconds`, waiting if idle; only
/// waits before there is an application object. Throws what a handler threw.
void RunLoopFor(int milliseconds);

} // namespace vm
