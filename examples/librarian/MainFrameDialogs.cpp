// What the dialogs and the pop-up menu are for.
#include <afxdlgs.h>

#include "BankFolder.h"
#include "Dialogs.h"
#include "FtpDialog.h"
#include "MainFrame.h"
#include "Report.h"
#include "resource.h"

namespace {

int IndexOf(const std::vector<std::string>& names, const std::string& name) {
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == name) return static_cast<int>(i);
    return -1;
}

} // namespace

// With the first search: the start of the program does not wait for it.
void MainFrame::MakeFindBar() {
    m_find.find = [this](const std::string& wanted, bool next) {
        return FindMessage(wanted, next);
    };
    m_find.closed = [this] {
        LayOut();
        m_list.SetFocus();
    };
    m_find.Open(this);
}

void MainFrame::OnPorts() {
    ShowPorts();
    PortsDialog dialog(this, m_outputs, m_inputs);
    dialog.output = IndexOf(m_outputs, m_midi.OutputName());
    dialog.input = IndexOf(m_inputs, m_midi.InputName());
    dialog.slow = m_slow;
    const bool accepted = dialog.DoModal() == IDOK;
    Report("ports %s", accepted ? "accepted" : "cancelled");
    if (!accepted) return;
    if (dialog.output >= 0) OnOutput(dialog.output);
    if (dialog.input >= 0) OnInput(dialog.input);
    if ((dialog.slow != 0) != m_slow) OnSlow();
}

void MainFrame::OnDetails() {
    if (m_bank.messages.empty()) return;
    const std::string summary = m_bank.name + ", " + std::to_string(m_bank.messages.size()) +
                                (m_bank.messages.size() == 1 ? " message" : " messages");
    DetailsDialog dialog(this, summary, LoadBankDetails(m_bank.name));
    const bool accepted = dialog.DoModal() == IDOK;
    Report("details %s", accepted ? "accepted" : "cancelled");
    if (!accepted) return;
    StoreBankDetails(m_bank.name, dialog.Details());
    SettingsChanged();
    SetStatus("Noted details of " + m_bank.name);
}

// Into the user's documents, unless another folder is chosen. FALSE when the user or the disk decided
// otherwise.
BOOL MainFrame::OnSaveAs() {
    if (m_bank.messages.empty()) return FALSE;
    char documents[MAX_PATH] = {};
    GetDocumentsPath(documents, sizeof documents);
    CFileDialog dialog(FALSE, "syx", m_bank.name.c_str(), OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR,
                       "System Exclusive (*.syx)|*.syx|All files (*.*)|*.*||", this);
    dialog.m_ofn.lpstrTitle = "Save Bank As";
    dialog.m_ofn.lpstrInitialDir = documents;
    Report("dialog save");
    if (dialog.DoModal() != IDOK) {
        Report("save cancelled");
        return FALSE;
    }
    std::string error;
    const std::string path = static_cast<const char*>(dialog.GetPathName());
    if (!WriteBank(path, m_bank, error)) {
        SetStatus(error);
        Report("not saved %s", NameOf(path).c_str());
        return FALSE;
    }
    m_bankPath = path;
    m_bank.name = NameOf(path);
    m_changed = false;
    RememberBank(path);
    ShowTitle();
    SetStatus("Saved " + m_bank.name);
    Report("saved bank %s", m_bank.name.c_str());
    return TRUE;
}

void MainFrame::OnFtp() {
    LocalBanks banks;
    banks.openName = [this] { return m_bank.name; };
    banks.folder = [this] { return FolderForBanks(); };
    banks.open = [this](const std::string& path) { return OpenBank(path); };
    banks.writeCopy = [this](const std::string& path, std::string& error) {
        return WriteBank(path, m_bank, error);
    };
    FtpDialog(this, std::move(banks)).DoModal();
    SettingsChanged();
    Report("ftp closed");
}

// Over the bytes: commands for the selected message. The commands arrive afterwards,
// as from the main menu.
BOOL MainFrame::OnContextMenu(const CPoint& point) {
    CMenu commands;
    if (!commands.LoadMenu(IDR_MESSAGE_MENU)) return FALSE;
    Report("context menu");
    commands.TrackPopupMenu(0, point.x, point.y, this, nullptr);
    return TRUE;
}
