// The program's own malloc stands before the C library's for every library that is loaded; operator
// new ends there too.
#include "allocations.h"

#include <atomic>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}

namespace {

std::atomic<std::size_t> s_count = 0;

void Count() {
    s_count.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

extern "C" {
__attribute__((visibility("default"))) void* malloc(std::size_t size) {
    Count();
    return __libc_malloc(size);
}
__attribute__((visibility("default"))) void* calloc(std::size_t count, std::size_t size) {
    Count();
    return __libc_calloc(count, size);
}
__attribute__((visibility("default"))) void* realloc(void* memory, std::size_t size) {
    Count();
    return __libc_realloc(memory, size);
}
}

namespace bench {

std::size_t AllocationsIn(const std::function<void()>& body) {
    const std::size_t before = s_count;
    body();
    return s_count - before;
}

} // namespace bench
