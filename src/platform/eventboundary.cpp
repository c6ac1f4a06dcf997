#include "platform/eventboundary.h"

#include <exception>

#include "core/log.h"
#include "platform/mainqueue.h"
#include "platform/runloop.h"

namespace vm {
namespace {

thread_local std::exception_ptr s_kept;

// By the time that the foreign loop comes here, whoever runs a loop of the library, or launches the
// application, has thrown it.
void LogKept(void*) {
    try {
        RethrowKept();
    } catch (const std::exception& error) {
        Log(LogModule::Platform, "exception in a handler: %s", error.what());
    } catch (...) {
        LogText(LogModule::Platform, "exception in a handler");
    }
}

} // namespace

void KeepException() {
    if (!s_kept) s_kept = std::current_exception();
    if (!EndLoopForException() && IsMainThread()) PostToMain({LogKept, nullptr, nullptr});
}

void RethrowKept() {
    if (!s_kept) return;
    std::exception_ptr kept;
    std::swap(kept, s_kept);
    std::rethrow_exception(kept);
}

} // namespace vm
