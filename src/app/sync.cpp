// Critical sections: a recursive lock behind a pointer.
#include <vmcore/app/sync.h>

#include <mutex>
#include <new>

namespace vm {

class RecursiveLock {
public:
    std::recursive_mutex mutex;
};

} // namespace vm

void InitializeCriticalSection(LPCRITICAL_SECTION section) {
    section->lock = new (std::nothrow) vm::RecursiveLock;
}

void EnterCriticalSection(LPCRITICAL_SECTION section) {
    if (section->lock) section->lock->mutex.lock();
}

void LeaveCriticalSection(LPCRITICAL_SECTION section) {
    if (section->lock) section->lock->mutex.unlock();
}

void DeleteCriticalSection(LPCRITICAL_SECTION section) {
    delete section->lock;
    section->lock = nullptr;
}
