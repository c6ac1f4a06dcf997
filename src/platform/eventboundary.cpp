#include "platform/eventboundary.h"

#include <exception>

#include "platform/runloop.h"

namespace vm {
namespace {
thread_local std::exception_ptr s_kept;
}

void KeepException() {
    if (!s_kept) s_kept = std::current_exception();
    EndLoopForException();
}

void RethrowKept() {
    if (!s_kept) return;
    std::exception_ptr kept;
    std::swap(kept, s_kept);
    std::rethrow_exception(kept);
}

} // namespace vm
