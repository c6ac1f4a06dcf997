#include "platform/NativeApplication.h"

#include <algorithm>
#include <clocale>
#include <filesystem>

#include <QtGui/QPixmapCache>
#include <QtWidgets/QApplication>

#include "core/log.h"
#include "platform/display.h"
#include "platform/eventboundary.h"
#include "platform/mainqueue.h"
#include "platform/runloop.h"

namespace vm {
namespace {

// The toolkit keeps references to both for as long as its application object lives.
struct Arguments {
    int count;
    char** values;
};

// The style keeps a picture of each control in every size that it has had, up to five times as much
// by itself: a program whose windows are resized would seem to grow for an hour.
constexpr int kPictureCache = 2048; // kB

// Leaked on purpose, as every application object made here: static destructors of a host may still
// touch its windows.
void MakeApplication(int argc, char** argv) {
    static char s_name[] = "application";
    static char* s_names[] = {s_name, nullptr};
    auto* arguments = argc > 0 && argv ? new Arguments{argc, argv} : new Arguments{1, s_names};
    new QApplication(arguments->count, arguments->values);
    // The toolkit switches the user's locale on; numbers in texts and files keep the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmapCache::setCacheLimit(kPictureCache);
}

std::vector<std::string> FilesOfCommandLine() {
    std::vector<std::string> files;
    for (const QString& argument : QCoreApplication::arguments().mid(1)) {
        if (argument.startsWith(QLatin1Char('-'))) continue;
        std::error_code error;
        const std::filesystem::path path = argument.toStdString();
        const std::filesystem::path absolute = std::filesystem::absolute(path, error);
        files.push_back((error ? path : absolute).string());
    }
    return files;
}

} // namespace

NativeApplication& NativeApplication::Shared() {
    static auto* const s_application = new NativeApplication;
    return *s_application;
}

bool NativeApplication::Prepare(int argc, char** argv) {
    if (qobject_cast<QApplication*>(QCoreApplication::instance())) return true;
    const std::string why = PrepareDisplay();
    if (!why.empty()) {
        Log(LogModule::Platform, "cannot open a display: %s", why.c_str());
        return false;
    }
    MakeApplication(argc, argv);
    return true;
}

int NativeApplication::Main(int argc, char** argv, ApplicationDelegate* delegate) {
    if (!Prepare(argc, argv)) return 1;
    m_terminating = false;
    m_windowClosed = false;
    m_delegate = delegate;
    AtEventBoundary([&] { Launch(); });
    RethrowKept();
    if (!m_terminating && !m_delegate->hasApplication() && m_windows.empty()) {
        Log(LogModule::Platform, "no application object and no window: nothing to run");
        return 1;
    }
    // A program that is one dialog has shown it by now: nobody could reach it any more.
    if (m_windowClosed && m_windows.empty()) AtEventBoundary([this] { Terminate(); });
    Run();
    return 0;
}

void NativeApplication::Launch() {
    m_delegate->applicationWillFinishLaunching();
    m_delegate->applicationDidFinishLaunching();
    for (const std::string& file : FilesOfCommandLine()) m_delegate->openFile(file);
}

void NativeApplication::Run() {
    RunLoop([this] { return m_terminating; });
}

// The host may open a dialog to answer; what asks again meanwhile waits for that answer.
bool NativeApplication::MayTerminate() {
    if (!m_delegate) return true;
    struct Asking {
        explicit Asking(bool& flag) : asking(flag) { asking = true; }
        ~Asking() { asking = false; }
        bool& asking;
    } asking(m_asking);
    return m_delegate->applicationShouldTerminate() == ApplicationDelegate::Reply::Now;
}

void NativeApplication::Terminate() {
    if (m_terminating || m_asking || !MayTerminate()) return;
    m_terminating = m_delegate != nullptr; // a foreign program goes on, and so may ask again
    if (m_delegate) m_delegate->applicationWillTerminate();
    EndAllLoops();
}

void NativeApplication::AddWindow(NativeWindow* window) {
    m_windows.push_back(window);
}

void NativeApplication::RemoveWindow(NativeWindow* window) {
    m_windows.erase(std::remove(m_windows.begin(), m_windows.end(), window), m_windows.end());
    if (m_mainWindow == window) m_mainWindow = nullptr;
    m_windowClosed = true;
}

NativeWindow* NativeApplication::MainWindow() const {
    return m_mainWindow;
}

} // namespace vm
