// The application as the desktop sees it: one per process, over the toolkit's application object,
// which a foreign program may have made. Tells a delegate about launch and termination. Main
// thread.
#pragma once

#include <string>
#include <vector>

class QWidget;

namespace vm {

class NativeWindow;

/// What the application asks and tells its owner.
class ApplicationDelegate {
public:
    enum class Reply { Cancel, Now };

    virtual ~ApplicationDelegate() = default;
    /// Whether the host has made its application object.
    virtual bool hasApplication() const = 0;
    virtual void applicationWillFinishLaunching() = 0;
    virtual void applicationDidFinishLaunching() = 0;
    virtual bool openFile(const std::string& name) = 0;
    virtual Reply applicationShouldTerminate() = 0;
    virtual void applicationWillTerminate() = 0;
};

class NativeApplication {
public:
    static NativeApplication& Shared();

    /// Makes the toolkit's application object unless the process has one. False, with a log line,
    /// when there is no display to open.
    bool Prepare(int argc, char** argv);
    /// Launches (telling the delegate), opens the files of the command line, runs until Terminate
    /// was allowed, and tells the delegate. Returns 0; 1 when Prepare fails, or when there is
    /// neither an application object nor a window after the launch, so that nothing could end the
    /// loop.
    int Main(int argc, char** argv, ApplicationDelegate* delegate);
    /// Runs the loop alone, until it is ended.
    void Run();
    /// Asks the delegate and, when it allows it, ends the application: all loops end, also one that
    /// has not started yet. Nothing while the delegate is being asked already.
    void Terminate();

    ApplicationDelegate* Delegate() const { return m_delegate; }

    // The application's windows, kept by NativeWindow.
    void AddWindow(NativeWindow* window);
    void RemoveWindow(NativeWindow* window);
    const std::vector<NativeWindow*>& Windows() const { return m_windows; }
    /// The window that is active, or was last; null when none was or it is gone or hidden.
    NativeWindow* MainWindow() const;
    void SetMainWindow(NativeWindow* window) { m_mainWindow = window; }

private:
    NativeApplication() = default;
    void Launch();
    bool MayTerminate();

    std::vector<NativeWindow*> m_windows;
    NativeWindow* m_mainWindow = nullptr;
    ApplicationDelegate* m_delegate = nullptr;
    bool m_terminating = false;
    bool m_windowClosed = false; // some window is gone again
    bool m_asking = false;       // the delegate is being asked whether to terminate
};

} // namespace vm
