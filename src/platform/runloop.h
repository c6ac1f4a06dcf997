// The stack of a thread's event loops: on the main thread the application's and the modal ones
// above it, and on any thread those that run for a given time.
#pragma once

#include <functional>

class QEventLoop;

namespace vm {

/// Runs an event loop until EndInnermostLoop, or not at all when `ended` already says so (an end
/// asked for before the start would be lost otherwise), while all loops are ending, and before there
/// is an application object. Throws what a handler threw.
void RunLoop(const std::function<bool()>& ended = {});

/// Ends the innermost of these loops; nothing without one.
void EndInnermostLoop();
/// Ends the calling thread's innermost loop of either kind; false without one.
bool EndLoopForException();

/// Ends all of them, and closes what runs a loop of the toolkit's own: the innermost returns first.
void EndAllLoops();
/// From EndAllLoops until the outermost loop has returned: nothing that waits for the user may start.
bool LoopsAreEnding();

/// A loop that is ended by name, whatever runs above it.
class ModalLoop {
public:
    ModalLoop() = default;
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    /// Runs until End; as RunLoop, and not at all when End was called before.
    void Run();
    /// The loop returns, when an inner one still runs as soon as that has returned.
    void End();

private:
    bool m_ended = false;
    QEventLoop* m_running = nullptr;
};

/// While it lives, EndAllLoops calls `close`: for message boxes and menus, which run loops of the
/// toolkit's own. On the thread of the loops only.
class ClosedWithLoops {
public:
    explicit ClosedWithLoops(std::function<void()> close);
    ~ClosedWithLoops();
    ClosedWithLoops(const ClosedWithLoops&) = delete;
    ClosedWithLoops& operator=(const ClosedWithLoops&) = delete;

private:
    friend void EndAllLoops();
    const std::function<void()> m_close;
    ClosedWithLoops* const m_outer;
};

int RunningLoops();

/// Runs what is pending on the calling thread's loop for `milliseconds`, waiting if idle; only
/// waits before there is an application object. Throws what a handler threw.
void RunLoopFor(int milliseconds);

} // namespace vm
