// Posts and carried calls share one queue, so that calls from one thread keep their order. The
// queue is taken over as a batch: a handler that posts for ever leaves timers and events their
// turn, and a nested loop goes on with the rest of the batch.
#include "platform/mainqueue.h"

#include <atomic>
#include <mutex>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

#include <pthread.h>
#include <unistd.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QObject>

#include "core/guard.h"
#include "platform/eventboundary.h"

namespace vm {
namespace {

const QEvent::Type kWakeEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

class QueueObject : public QObject {
public:
    bool event(QEvent* event) override;
};

struct QueueState {
    std::mutex lock;
    std::vector<MainCall> pending; // guarded by lock
    bool wakePending = false;      // guarded by lock: a wake-up is under way
    QueueObject* object = nullptr; // guarded by lock; lives on the main thread
    std::vector<MainCall> batch;   // main thread: taken over from pending
    std::size_t cursor = 0;        // main thread: the next call of the batch

    std::atomic<bool> mainRecorded = false;
    std::atomic<pthread_t> mainThread{}; // may be recorded again while threads ask
};

// Leaked on purpose: threads may post until the process ends.
QueueState& State() {
    static QueueState* const s_state = new QueueState;
    return *s_state;
}

// With state.lock held.
QueueObject* EnsureObject(QueueState& state) {
    if (state.object) return state.object;
    QCoreApplication* application = QCoreApplication::instance();
    if (!application && !IsMainThread()) return nullptr;
    state.object = new QueueObject;
    if (application) state.object->moveToThread(application->thread());
    return state.object;
}

// With state.lock held: the object to wake, or null when a wake-up is under way or cannot be yet.
QueueObject* Awaited(QueueState& state) {
    if (state.wakePending) return nullptr;
    QueueObject* object = EnsureObject(state);
    if (object) state.wakePending = true;
    return object;
}

// Has the main thread's loop call Drain. Without the lock: the main thread takes it at once.
void Wake(QueueObject* object) {
    if (object) QCoreApplication::postEvent(object, new QEvent(kWakeEvent));
}

bool TakeBatch(QueueState& state) {
    std::unique_lock guard(state.lock);
    state.wakePending = false;
    if (state.cursor == state.batch.size()) {
        state.batch.clear();
        state.cursor = 0;
        std::swap(state.batch, state.pending);
    }
    const bool more = state.batch.size() - state.cursor > 1 || !state.pending.empty();
    QueueObject* const object = more ? Awaited(state) : nullptr;
    guard.unlock();
    // A call may open a nested loop: this wake-up lets that loop go on with the rest.
    Wake(object);
    return state.cursor < state.batch.size();
}

void Drain() {
    QueueState& state = State();
    if (!TakeBatch(state)) return;
    while (state.cursor < state.batch.size()) {
        const MainCall call = state.batch[state.cursor++];
        call.run(call.argument);
    }
}

bool QueueObject::event(QEvent* event) {
    if (event->type() != kWakeEvent) return QObject::event(event);
    AtEventBoundary([] { Drain(); });
    return true;
}

struct CarriedCall {
    MainCall call;
    std::exception_ptr failure;
    std::binary_semaphore done{0};
};

void RunCarried(void* argument) {
    auto* carried = static_cast<CarriedCall*>(argument);
    try {
        carried->call.run(carried->call.argument);
    } catch (...) {
        carried->failure = std::current_exception();
    }
    carried->done.release();
}

} // namespace

void PostToMain(MainCall call) {
    QueueState& state = State();
    QueueObject* object = nullptr;
    {
        std::lock_guard guard(state.lock);
        state.pending.push_back(call);
        object = Awaited(state);
    }
    Wake(object);
}

void CallOnMain(MainCall call) {
    if (IsMainThread()) {
        call.run(call.argument);
        return;
    }
    CarriedCall carried{call, nullptr};
    PostToMain({RunCarried, nullptr, &carried});
    carried.done.acquire();
    if (carried.failure) std::rethrow_exception(carried.failure);
}

void RecordMainThread() {
    QueueState& state = State();
    QueueObject* object = nullptr;
    {
        std::lock_guard guard(state.lock);
        state.mainThread = pthread_self();
        state.mainRecorded.store(true, std::memory_order_release);
        if (EnsureObject(state) && !state.pending.empty()) object = Awaited(state);
    }
    Wake(object);
}

bool IsMainThread() {
    const QueueState& state = State();
    if (state.mainRecorded.load(std::memory_order_acquire))
        return pthread_equal(state.mainThread, pthread_self()) != 0;
    return getpid() == gettid();
}

void RunPostedCalls() {
    Drain();
}

} // namespace vm
