// The run-loop queue of the main thread: calls posted from any thread run on it in order, also
// inside a nested (modal) loop.
#pragma once

namespace vm {

/// A call for the main thread: one function and one argument, so that posting allocates nothing.
struct MainCall {
    void (*run)(void* argument);
    void (*drop)(void* argument); ///< instead of run, when the process ends first; may be null
    void* argument;
};

/// Appends the call. Works before the run loop starts and before the application object exists; the
/// calls run once it does.
void PostToMain(MainCall call);

/// Posts the call and waits until it has run. On the main thread it runs at once.
void CallOnMain(MainCall call);

/// Records the calling thread as the main thread. The first thread that asks is it until then.
void RecordMainThread();
bool IsMainThread();

/// Runs what is queued now, without the event loop. Tests only need it; the loop calls it by
/// itself.
void RunPostedCalls();

} // namespace vm
