// Events. The lock that ResetEvent keeps and a wait releases is a recorded holder, guarded by an
// ordinary mutex: it may be given free by another thread than the one that took it.
#include <vmcore/app/sync.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <thread>

#include "core/log.h"

namespace vm {
namespace {

// Wake-ups are sent with the guard held: whoever waits may delete the event as soon as it is woken.
class EventCondition {
public:
    void Set(std::uint8_t& blocked) {
        std::unique_lock guard(m_guard);
        WaitUntilFree(guard);
        blocked = 0;
        Free();
    }

    void Reset(std::uint8_t& blocked) {
        std::unique_lock guard(m_guard);
        WaitUntilFree(guard);
        blocked = 1;
        m_holder = std::this_thread::get_id();
    }

    // False when the deadline came first.
    bool Wait(const std::uint8_t& blocked, DWORD milliseconds) {
        using namespace std::chrono;
        const auto deadline = steady_clock::now() + std::chrono::milliseconds(milliseconds);
        std::unique_lock guard(m_guard);
        Free();
        const auto signalled = [&] { return blocked == 0; };
        if (milliseconds != INFINITE) return m_changed.wait_until(guard, deadline, signalled);
        m_changed.wait(guard, signalled);
        return true;
    }

private:
    void WaitUntilFree(std::unique_lock<std::mutex>& guard) {
        m_changed.wait(guard, [this] {
            return m_holder == std::thread::id() || m_holder == std::this_thread::get_id();
        });
    }

    void Free() {
        m_holder = {};
        m_changed.notify_all();
    }

    std::mutex m_guard;
    std::condition_variable m_changed; // the flag or the holder
    std::thread::id m_holder;          // guarded by m_guard: between ResetEvent and its wait
};

// What an event's handle points to.
struct EventRecord {
    EventCondition* condition;
    std::uint8_t blocked; // guarded by the condition
    std::uint8_t manualReset;
    char name[256];
};
static_assert(offsetof(EventRecord, blocked) == 8 && offsetof(EventRecord, manualReset) == 9 &&
              offsetof(EventRecord, name) == 10);

EventRecord* RecordOf(HANDLE event) {
    return static_cast<EventRecord*>(event);
}

} // namespace
} // namespace vm

HANDLE CreateEvent(LPSECURITY_ATTRIBUTES, BOOL manualReset, BOOL initialState, LPCSTR name) {
    auto* record = static_cast<vm::EventRecord*>(std::calloc(1, sizeof(vm::EventRecord)));
    if (!record) return nullptr;
    record->blocked = initialState != 0;
    record->manualReset = manualReset != 0;
    if (name) std::strncpy(record->name, name, sizeof record->name - 1);
    record->condition = new (std::nothrow) vm::EventCondition;
    if (record->condition) return record;
    vm::Log(vm::LogModule::App, "Warning! CreateEvent failed to allocate an NSCondition!");
    std::free(record);
    return nullptr;
}

BOOL SetEvent(HANDLE event) {
    if (!event) return FALSE;
    vm::EventRecord* record = vm::RecordOf(event);
    record->condition->Set(record->blocked);
    return TRUE;
}

BOOL ResetEvent(HANDLE event) {
    if (!event) return FALSE;
    vm::EventRecord* record = vm::RecordOf(event);
    record->condition->Reset(record->blocked);
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE event, DWORD milliseconds) {
    if (!event) return WAIT_OBJECT_0;
    vm::EventRecord* record = vm::RecordOf(event);
    return record->condition->Wait(record->blocked, milliseconds) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

BOOL DeleteEvent(HANDLE event) {
    if (!event) return FALSE;
    vm::EventRecord* record = vm::RecordOf(event);
    delete record->condition;
    std::free(record);
    return TRUE;
}
