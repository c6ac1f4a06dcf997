// Windows, dialogs and menus, and the start of a program, against the toolkit used directly.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>

#include "parts.h"

namespace bench {

void Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace bench

// bench_windows [controls|children|dialog|menu|start]
int main(int argc, char** argv) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    CWinApp app;
    const std::string folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const struct {
        const char* name;
        std::function<void()> run;
    } parts[] = {
        {"controls", bench::BenchWindowWithControls},
        {"children", bench::BenchManyChildren},
        {"dialog", bench::BenchDialog},
        {"menu", bench::BenchMenu},
        {"start", [&] { bench::BenchStart(folder.c_str()); }},
    };
    for (const auto& part : parts)
        if (argc < 2 || std::strcmp(argv[1], part.name) == 0) part.run();
    return 0;
}
