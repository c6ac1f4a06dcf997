// The plug-ins, and the editor that one of them may bring for the selected message.
#include <cstdio>

#include "BankFolder.h"
#include "FrameIds.h"
#include "MainFrame.h"
#include "PluginVerdicts.h"
#include "PluginsDialog.h"
#include "Report.h"
#include "resource.h"

namespace {

std::string PluginFolder() {
    char folder[MAX_PATH] = {};
    return AfxApplicationPath(folder, sizeof folder) > 0 ? FolderOf(folder) + "/PlugIns" : "";
}

std::string HexOf(const SysexBytes& message) {
    std::string text;
    char digits[4];
    for (const BYTE byte : message) {
        std::snprintf(digits, sizeof digits, " %02X", byte);
        text += digits;
    }
    return text;
}

} // namespace

void MainFrame::LoadPlugins() {
    const std::vector<std::string> unknown = m_plugins.LoadAll(PluginFolder(), RecallVerdict);
    if (!m_trials.Start(this, WM_PLUGIN_TRIED, unknown))
        for (const std::string& path : unknown) m_plugins.Decide(path, "it cannot be tried");
    PluginsChanged();
}

void MainFrame::OnPluginTried() {
    PluginVerdict verdict;
    while (m_trials.Take(verdict)) {
        if (verdict.result.wasTried) RememberVerdict(verdict.path, verdict.result.problem);
        m_plugins.Decide(verdict.path, verdict.result.problem);
        PluginsChanged();
    }
    SettingsChanged();
    const bool hasRefused = !m_plugins.Refused().empty();
    if (!m_trials.AreRunning() && (m_bank.messages.empty() || hasRefused))
        SetStatus("Ready" + PluginWords());
}

// What they know is shown; the last trial is reported.
void MainFrame::PluginsChanged() {
    m_plugins.Describe(m_bank);
    m_list.Invalidate();
    if (m_selected >= 0) ShowSelected();
    if (m_pluginsShown) m_pluginsShown->ShowFiles();
    const std::string names = m_plugins.Names();
    if (!m_trials.AreRunning()) Report("plugins %s", names.empty() ? "none" : names.c_str());
}

// The window goes away: what was found out is kept for the next time.
void MainFrame::StopTrials() {
    m_trials.Stop();
    PluginVerdict verdict;
    while (m_trials.Take(verdict))
        if (verdict.result.wasTried) RememberVerdict(verdict.path, verdict.result.problem);
}

std::string MainFrame::PluginWords() const {
    const std::string names = m_plugins.Names();
    const std::string refused = m_plugins.Refused();
    return (names.empty() ? "" : ". Plug-ins: " + names) +
           (refused.empty() ? "" : ". Not loaded: " + refused);
}

// Those that must not be loaded can be tried once more, unless others are being tried.
void MainFrame::OnPlugins() {
    PluginsDialog dialog(this, m_plugins, [this] {
        if (m_trials.AreRunning()) return;
        for (const PluginFile& plugin : m_plugins.Files())
            if (!plugin.problem.empty()) ForgetVerdict(PluginFolder() + "/" + plugin.file);
        LoadPlugins();
    });
    m_pluginsShown = &dialog;
    dialog.DoModal();
    m_pluginsShown = nullptr;
    Report("plug-ins closed");
}

void MainFrame::MakeEditorPane() {
    m_editor.send = [this](const SysexBytes& message) { return SendEdit(message); };
    m_editor.store = [this](const SysexBytes& message) { return StoreEdit(message); };
    m_editor.closed = [this] {
        if (!m_made) return;
        m_edited = -1;
        LayOut();
        m_list.SetFocus();
        Report("editor closed");
    };
    m_editor.Create("", "", WS_CHILD, CRect(0, 0, 10, 10), this, IDC_EDITOR);
    m_editor.ShowWindow(SW_HIDE);
}

const LibrarianEditor* MainFrame::SelectedEditor() const {
    if (m_selected < 0) return nullptr;
    return m_plugins.EditorFor(m_bank.messages[static_cast<std::size_t>(m_selected)].bytes);
}

// Opens the editor in the place of the hex pane, or closes it.
void MainFrame::OnEditVoice() {
    if (m_editor.IsOpen()) {
        if (m_editor.MayLeave()) m_editor.Close();
        return;
    }
    const LibrarianEditor* const editor = SelectedEditor();
    if (!editor) return;
    if (!m_editor.Open(*editor)) {
        SetStatus("The editor cannot be opened");
        return;
    }
    LayOut();
    ShowInEditor();
}

void MainFrame::ShowInEditor() {
    m_edited = m_selected;
    m_editor.ShowMessage(m_bank.messages[static_cast<std::size_t>(m_edited)].bytes);
    Report("editor shows %d", m_edited + 1);
}

// The editor goes with the selection, unless the user wants to stay with changes, or nobody can edit
// what is selected.
void MainFrame::FollowSelection() {
    if (!m_editor.IsOpen() || m_selected < 0 || m_selected == m_edited) return;
    if (!m_editor.MayLeave()) {
        SetStatus("The editor stays with message " + std::to_string(m_edited + 1));
        return;
    }
    if (SelectedEditor() == m_editor.Editor())
        ShowInEditor();
    else
        m_editor.Close();
}

int MainFrame::SendEdit(const SysexBytes& message) {
    if (m_midi.IsSending()) return 0;
    if (!m_midi.Send(message)) {
        SetStatus("There is no MIDI output to send to");
        return -1;
    }
    SetTimer(kMidiTimer, kMidiTimerInterval);
    Report("edit sent%s", HexOf(message).c_str());
    return 1;
}

bool MainFrame::StoreEdit(const SysexBytes& message) {
    const auto index = static_cast<std::size_t>(m_edited);
    if (m_edited < 0 || index >= m_bank.messages.size()) return false;
    m_bank.messages[index].bytes = message;
    m_bank.messages[index].info = DescribeSysex(message);
    m_plugins.Describe(m_bank);
    m_changed = true;
    ShowTitle();
    m_list.Invalidate();
    if (m_edited == m_selected) {
        m_hex.ShowMessage(message);
        m_detail.ShowMessage(m_bank.messages[index]);
    }
    m_header.ShowBank(m_bank);
    SetStatus("Stored in message " + std::to_string(m_edited + 1) + "; the bank is not saved yet");
    Report("stored %d", m_edited + 1);
    return true;
}
