// What a message map costs against a switch written by hand: MessageMap alone, and a message on its
// whole way through SendMessage.
#include <cstdlib>
#include <string>

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>

#include "harness.h"
#include "messageMap/windows.h"

namespace {

constexpr int kRounds = 21;

struct Row {
    const char* name;
    UINT message;
    WPARAM wParam;
};
constexpr Row kRows[] = {
    {"first-message", WM_PAINT, 0},
    {"first-command", WM_COMMAND, bench::kFirstCommand},
    {"last-command", WM_COMMAND, bench::kLastCommand},
    {"unhandled-message", WM_MOUSEENTER, 0},
    {"unhandled-command", WM_COMMAND, bench::kLastCommand + 1},
};

template <class Call>
void Bench(const std::string& name, int count, Call call) {
    const auto mapped = bench::MakeMapped();
    const auto switched = bench::MakeSwitched();
    const auto time = [&](CWnd& wnd) {
        return bench::NanosecondsPer(count, [&] {
            for (int i = 0; i < count; ++i) call(wnd);
        });
    };
    const bench::Pair pair = bench::Compare(
        kRounds, [&] { return time(*mapped); }, [&] { return time(*switched); });
    bench::Report(name, pair.ours, "ns", "a switch", pair.peer);
}

} // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const QApplication application(argc, argv);
    CWinApp app;
    for (const Row& row : kRows) {
        Bench(std::string("map-") + row.name, 2000000,
              [&](CWnd& wnd) { wnd.MessageMap(static_cast<int>(row.message), row.wParam, 0); });
        Bench(std::string("send-") + row.name, 500000,
              [&](CWnd& wnd) { wnd.SendMessage(row.message, row.wParam, 0); });
    }
    return 0;
}
