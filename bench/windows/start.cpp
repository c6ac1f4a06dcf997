// A program with one window, started again and again.
#include <string>
#include <vector>

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>

#include "harness.h"
#include "parts.h"

namespace bench {
namespace {

struct Run {
    double milliseconds; // from its start to its first paint
    double kilobytes;    // resident, a while later
};

Run Start(const std::string& program) {
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.start(QString::fromStdString(program), {});
    while (!process.canReadLine() && process.waitForReadyRead(10000)) {
    }
    const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    process.readLine();
    process.waitForFinished(10000);
    return {elapsed, process.readLine().toDouble()};
}

} // namespace

void BenchStart(const char* folder) {
    const std::string host = std::string(folder) + "/windows_host";
    const std::string bare = std::string(folder) + "/windows_bare";
    Start(host); // the files are in memory
    Start(bare);
    const auto measure = [](const std::string& program, double Run::*figure) {
        return [=] { return Start(program).*figure; };
    };
    const Pair time =
        Compare(15, measure(host, &Run::milliseconds), measure(bare, &Run::milliseconds));
    Report("start-to-first-paint", time.ours, "ms", "QWidget program", time.peer);
    const Pair memory = Compare(5, measure(host, &Run::kilobytes), measure(bare, &Run::kilobytes));
    Report("resident-with-one-window", memory.ours, "kB", "QWidget program", memory.peer);
}

} // namespace bench
