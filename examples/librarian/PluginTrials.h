// The trials of several plug-ins, one after the other on a thread of their own: one that hangs keeps
// nobody waiting.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <afxwin.h>

#include "PluginTrial.h"

struct PluginVerdict {
    std::string path;
    TrialResult result;
};

/// Main thread only.
class PluginTrials {
public:
    PluginTrials() = default;
    ~PluginTrials();
    PluginTrials(const PluginTrials&) = delete;
    PluginTrials& operator=(const PluginTrials&) = delete;

    /// Begins. `message` is posted to `target` for each verdict: ask Take. FALSE while others run, and
    /// when no thread can be made.
    BOOL Start(CWnd* target, UINT message, const std::vector<std::string>& paths);
    /// The next verdict, in the order of the paths; FALSE when there is none yet.
    BOOL Take(PluginVerdict& verdict);
    /// Until the last verdict is taken.
    BOOL AreRunning() const { return m_state != nullptr; }

    /// Ends the one that runs and begins no more. What was found out before can still be taken; nothing
    /// is posted any more.
    void Stop();

private:
    struct State;
    using SharedState = std::shared_ptr<State>;
    static UINT Run(LPVOID state);

    SharedState m_state; // the thread has one, too
};
