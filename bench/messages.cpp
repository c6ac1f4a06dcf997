// Message passing and the memory of a window object, against the toolkit's own event passing.
#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <malloc.h>

#include <QtCore/QEvent>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include "harness.h"

using bench::Compare;
using bench::NanosecondsPer;
using bench::Pair;
using bench::Report;

namespace {

constexpr UINT kMessage = WM_USER + 1;
constexpr int kRounds = 11;
const QEvent::Type kEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

class Target : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        if (message != static_cast<int>(kMessage)) return CWnd::MessageMap(message, wParam, lParam);
        ++count;
        return 1;
    }
    std::atomic<long> count = 0;
};

class Receiver : public QObject {
public:
    bool event(QEvent* event) override {
        if (event->type() != kEvent) return QObject::event(event);
        ++count;
        return true;
    }
    std::atomic<long> count = 0;
};

// Runs `work` on a thread of its own and the event loop until `done` holds after it.
void RunBeside(const std::function<void()>& work, const std::function<bool()>& done) {
    QEventLoop loop;
    std::thread worker([&] {
        work();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    worker.join();
    while (!done()) QCoreApplication::processEvents();
}

void BenchSend(Target& target) {
    constexpr int kSends = 1000000;
    Receiver receiver;
    const auto ours = [&] {
        return NanosecondsPer(kSends, [&] {
            for (int i = 0; i < kSends; ++i) target.SendMessage(kMessage, 1, 2);
        });
    };
    const auto peer = [&] {
        return NanosecondsPer(kSends, [&] {
            for (int i = 0; i < kSends; ++i) {
                QEvent event(kEvent);
                QCoreApplication::sendEvent(&receiver, &event);
            }
        });
    };
    const Pair pair = Compare(kRounds, ours, peer);
    Report("send-main-thread", pair.ours, "ns", "QCoreApplication::sendEvent", pair.peer);
}

// The same ten windows among no others and among 9,990 more, in turn.
void BenchSendAmongMany(CWnd& parent) {
    constexpr int kSends = 500000;
    std::vector<std::unique_ptr<Target>> windows;
    const auto resize = [&](std::size_t count) {
        for (; windows.size() > count; windows.pop_back()) windows.back()->DestroyWindow();
        while (windows.size() < count) {
            windows.push_back(std::make_unique<Target>());
            windows.back()->Create("", "", 0, RECT{0, 0, 10, 10}, &parent,
                                   static_cast<UINT>(windows.size()));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const auto sendAmong = [&](std::size_t count) {
        resize(count);
        const auto send = [&] {
            for (int i = 0; i < kSends; ++i)
                windows[static_cast<std::size_t>(i) % 10]->SendMessage(kMessage);
        };
        send(); // the caches have seen other windows
        return NanosecondsPer(kSends, send);
    };
    const Pair pair = Compare(
        5, [&] { return sendAmong(10000); }, [&] { return sendAmong(10); });
    Report("send-among-10000-windows", pair.ours, "ns", "among 10 windows", pair.peer);
    resize(0);
}

// From a worker, until the main thread has handled all: the time per message, as a rate.
void BenchPost(Target& target) {
    constexpr int kPosts = 200000;
    Receiver receiver;
    const auto rate = [](std::atomic<long>& count, const std::function<void()>& post) {
        count = 0;
        const double ns = NanosecondsPer(kPosts, [&] {
            RunBeside(
                [&] {
                    for (int i = 0; i < kPosts; ++i) post();
                },
                [&] { return count == kPosts; });
        });
        return 1e3 / ns;
    };
    const Pair pair = Compare(
        kRounds, [&] { return rate(target.count, [&] { target.PostMessage(kMessage, 1, 2); }); },
        [&] {
            return rate(receiver.count,
                        [&] { QCoreApplication::postEvent(&receiver, new QEvent(kEvent)); });
        });
    Report("post-from-thread", pair.ours, "million/s", "QCoreApplication::postEvent", pair.peer,
           bench::Better::Higher);
}

void BenchRoundTrip(Target& target) {
    constexpr int kTrips = 3000;
    Receiver receiver;
    const auto time = [](const std::function<void()>& trip) {
        double ns = 0;
        RunBeside(
            [&] {
                ns = NanosecondsPer(kTrips, [&] {
                    for (int i = 0; i < kTrips; ++i) trip();
                });
            },
            [] { return true; });
        return ns / 1000;
    };
    const Pair pair = Compare(
        kRounds, [&] { return time([&] { target.SendMessage(kMessage); }); },
        [&] {
            return time([&] {
                QMetaObject::invokeMethod(
                    &receiver, [&] { ++receiver.count; }, Qt::BlockingQueuedConnection);
            });
        });
    Report("send-from-thread", pair.ours, "us", "Qt::BlockingQueuedConnection", pair.peer);
    Report("send-from-thread-peer-spread", pair.peerSpread * 100, "% of its median");
}

// A worker's posts to a window behind an open modal loop: all inside it, in order.
void CheckModalLoop(Target& target) {
    constexpr int kPosts = 10000;
    target.count = 0;
    std::thread worker([&] {
        for (int i = 0; i < kPosts; ++i) target.PostMessage(kMessage, static_cast<WPARAM>(i));
    });
    QEventLoop modal;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (target.count == kPosts) modal.quit();
    });
    QTimer::singleShot(10000, &modal, &QEventLoop::quit);
    poll.start(1);
    modal.exec();
    worker.join();
    Report("posts-delivered-in-modal-loop", static_cast<double>(target.count.load()), "of 10000");
}

void BenchMemory() {
    constexpr int kWindows = 10000;
    std::vector<std::unique_ptr<CWnd>> windows;
    windows.reserve(kWindows);
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < kWindows; ++i) windows.push_back(std::make_unique<CWnd>());
    const auto after = mallinfo2().uordblks;
    Report("memory-per-CWnd", static_cast<double>(after - before) / kWindows, "bytes");
    Report("sizeof-CWnd", static_cast<double>(sizeof(CWnd)), "bytes");
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    CWinApp app;
    CWnd parent;
    parent.Create("", "bench", 0x10000, RECT{60, 60, 260, 260}, nullptr, 0);
    Target target;
    target.Create("", "", 0, RECT{0, 0, 10, 10}, &parent, 1);
    BenchSend(target);
    BenchSendAmongMany(parent);
    BenchPost(target);
    BenchRoundTrip(target);
    CheckModalLoop(target);
    BenchMemory();
    target.DestroyWindow();
    parent.DestroyWindow();
    return 0;
}
