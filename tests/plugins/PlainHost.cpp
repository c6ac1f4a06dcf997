// A program of the toolkit's own kind that knows nothing of the library: that comes with the plug-ins
// that it loads. `plain_host CASE PLUG-IN...` runs one case; what is wrong goes to standard error.
#include <cstdio>
#include <cstring>
#include <string>

#include <dlfcn.h>

#include <QtCore/QEventLoop>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>

namespace {

int s_failures = 0;
QStringList s_log;

void Check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "failed: %s\n", what);
    ++s_failures;
}

void KeepLine(QtMsgType, const QMessageLogContext&, const QString& line) {
    std::fprintf(stderr, "%s\n", qPrintable(line));
    s_log << line;
}

struct Seen {
    int clicks, paints, destroyed, saves, delivered, chosen;
};

class PlugIn {
public:
    explicit PlugIn(const char* path) : m_library(dlopen(path, RTLD_NOW | RTLD_GLOBAL)) {
        if (!m_library) std::fprintf(stderr, "%s\n", dlerror());
    }
    template <class... Arguments>
    int Call(const char* name, Arguments... arguments) const {
        using Function = int (*)(Arguments...);
        const auto function =
            m_library ? reinterpret_cast<Function>(dlsym(m_library, name)) : nullptr;
        Check(function, name);
        return function ? function(arguments...) : 0;
    }
    void Unload() { dlclose(m_library); }
    const Seen& What() const {
        return *reinterpret_cast<const Seen* (*)()>(dlsym(m_library, "WhatWasSeen"))();
    }

private:
    void* m_library;
};

void RunUntil(const std::function<bool()>& done) {
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (done()) loop.quit();
    });
    poll.start(1);
    loop.exec();
}

// The program's window: a menu with a shortcut, and a place for the plug-in.
struct Window : QMainWindow {
    Window() {
        setCentralWidget(new QWidget);
        centralWidget()->setFocusPolicy(Qt::StrongFocus);
        menuBar()->addMenu("Host");
        resize(400, 300);
        show();
        Activate();
    }
    void Activate() {
        activateWindow();
        centralWidget()->setFocus();
        RunUntil([this] { return centralWidget()->hasFocus(); });
    }
    void keyPressEvent(QKeyEvent*) override { ++keys; }
    QPushButton* Button() const { return findChild<QPushButton*>("button"); }
    int keys = 0;
};

void ChooseFirstItem() {
    QWidget* const menu = QApplication::activePopupWidget();
    if (!menu) return QTimer::singleShot(1, ChooseFirstItem);
    for (const int key : {Qt::Key_Down, Qt::Key_Return}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(menu, &press);
    }
}

void Windows(PlugIn& plugIn) {
    for (int round = 1; round <= 2; ++round) {
        auto* window = new Window;
        Check(plugIn.Call("Start", 1), "start");
        Check(plugIn.Call("Open", window->centralWidget()), "open in a foreign widget");
        RunUntil([&] { return plugIn.What().paints >= round; });
        window->Button()->click();
        Check(plugIn.What().clicks == round, "a click reaches the plug-in's dialog");
        QTimer::singleShot(0, ChooseFirstItem);
        plugIn.Call("TrackMenu");
        RunUntil([&] { return plugIn.What().chosen == round; });
        plugIn.Call("SendFromWorker");
        RunUntil([&] { return plugIn.What().delivered == 2 * round; });
        delete window;
        Check(plugIn.Call("ViewsAreGone"), "the views went with the window");
        Check(plugIn.What().destroyed == round, "and the object that wants to know heard of it");
    }
    Window window;
    plugIn.Call("Open", window.centralWidget());
    const Seen& seen = plugIn.What();
    plugIn.Unload();
    window.Button()->click();
    Check(seen.clicks == 3, "a plug-in that is unloaded under its windows stays");
}

void PressSave() {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_S, Qt::ControlModifier);
    QWidget* const focus = QApplication::focusWidget();
    QCoreApplication::sendEvent(focus ? focus : QApplication::activeWindow(), &press);
}

QMenuBar* PlugInsMenuBar() {
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->windowTitle() == "Plug-in's frame") return window->findChild<QMenuBar*>();
    return nullptr;
}

bool PlugInsMenuIsShown() {
    const QMenuBar* bar = PlugInsMenuBar();
    return bar && bar->isVisible();
}

const PlugIn* s_nesting = nullptr;

void Dialogs(const PlugIn& plugIn) {
    Window window;
    s_nesting = &plugIn;
    plugIn.Call("Start", 1);
    Check(plugIn.Call("OpenFrame"), "a window of the plug-in's own");
    Check(PlugInsMenuIsShown(), "with its menu");
    QWidget* const frame = PlugInsMenuBar()->window();
    RunUntil([&] { return QApplication::activeWindow() == frame; });
    PressSave();
    Check(plugIn.What().saves == 1, "and its keys");
    window.Activate();
    PressSave();
    Check(window.keys == 1 && plugIn.What().saves == 1, "the program's keys are its own");
    const auto inner = [] { Check(!PlugInsMenuIsShown(), "the menu is hidden in both dialogs"); };
    static void (*const s_inner)() = inner;
    const auto outer = [] {
        Check(s_nesting->Call("RunDialog", s_inner) == 7, "a dialog over a dialog");
        Check(!PlugInsMenuIsShown(), "and until both have closed");
    };
    Check(plugIn.Call("RunDialog", static_cast<void (*)()>(outer)) == 7, "a modal dialog");
    Check(PlugInsMenuIsShown(), "the menu is back");
    Check(window.menuBar()->isVisible(), "and the program's never went");
}

void NoBundle(const PlugIn& plugIn) {
    plugIn.Call("Start", 0);
    Check(plugIn.Call("NothingIsKnownWithoutBundle"), "neutral values without a bundle");
    const char* const lines[] = {
        "AfxApplicationName called with DVBundle not set",
        "AfxApplicationPath called with DVBundle not set",
        "DVBundle not set",
        "DV Plugin Internal error: failed to create full path in CDialog::DoModal()",
    };
    for (const char* line : lines) Check(s_log.filter(line).size() >= 1, line);
}

void Failures(const PlugIn& plugIn) {
    Window window;
    plugIn.Call("Start", 1);
    plugIn.Call("Open", window.centralWidget());
    plugIn.Call("ThrowWhenClicked");
    window.Button()->click();
    RunUntil([] { return !s_log.filter("of the plug-in").isEmpty(); });
    for (int i = 0; i < 2; ++i)
        Check(plugIn.Call("QuitFromDialog") == 2, "asking to quit ends the plug-in's dialog");
    Check(plugIn.Call("RunDialog", static_cast<void (*)()>(nullptr)) == 7, "and the next one runs");
    Check(window.isVisible(), "and the program goes on");
}

void Apart(const PlugIn& first, const PlugIn& second) {
    for (const PlugIn* plugIn : {&first, &second}) plugIn->Call("Start", 1);
    for (const PlugIn* plugIn : {&first, &second})
        Check(plugIn->Call("NamesAreItsOwn"), "names that both plug-ins have");
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    QApplication application(argc, argv);
    qInstallMessageHandler(KeepLine);
    PlugIn first(argv[2]);
    const PlugIn second(argv[3]);
    const std::string name = argv[1];
    if (name == "windows") Windows(first);
    if (name == "dialogs") Dialogs(first);
    if (name == "nobundle") NoBundle(first);
    if (name == "failures") Failures(first);
    if (name == "apart") Apart(first, second);
    Check(QCoreApplication::instance() == &application, "the application object is the program's");
    return s_failures;
}
